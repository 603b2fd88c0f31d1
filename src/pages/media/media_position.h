// One item of a terminal's stored media list, as a media search reply
// carries it, and the position text the search list shows for it.
#pragma once

#include <cstdint>
#include <string>

#include <json/value.h>

namespace media {
struct MediaItem {
  int id = 0;             // "MDID"
  int channel = 0;        // "CHID"
  int type = 0;           // "METY"
  int event = 0;          // "EVCO"
  uint32_t alarms = 0;    // "Flag": alarm flag word
  uint32_t status = 0;    // "STA": status bits
  int longitude = 0;      // "JD", degrees x 10^6
  int latitude = 0;       // "WD"
  int altitude = 0;       // "GAODU", metres
  int speed = 0;          // "SPD", tenths of km/h
  int direction = 0;      // "HS"
  std::string time;       // "DTM", as the terminal sent it
};

// An item of the reply's "Item" array; a missing member reads as 0 (the time as "").
MediaItem ReadMediaItem(const Json::Value& item);

// The status bits 0 to 22 as texts (the text of the bit's state), joined the host's way.
std::string StatusText(uint32_t status);

// The host's short position text, or in check mode the alarms, the status,
// latitude, longitude, altitude, speed and direction.
std::string PositionText(const MediaItem& item, bool detailed);
}  // namespace media
