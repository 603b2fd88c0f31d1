// Areas and routes in message bodies, shared by the set commands and the
// answer to the area query (which carries the set commands' bodies): the keys
// of the area objects, and the body of each kind's set command.
#pragma once

#include <json/value.h>

#include "jt808/bytes.h"
#include "jt808/codec.h"
#include "text/json.h"

namespace jt808::areas {

namespace key {
constexpr const char *kSetup = "Setup", *kCount = "Count", *kItem = "Item", *kId = "ID", *kAttr = "ATTR",
                     *kLat = "WD", *kLng = "JD", *kRadius = "Radius", *kName = "ANAME", *kStart = "BTM",
                     *kEnd = "ETM", *kMaxSpeed = "MSPD", *kDuration = "OSTM", *kNightSpeed = "NMSPD",
                     *kLeftLat = "LWD", *kLeftLng = "LJD", *kRightLat = "RWD", *kRightLng = "RJD",
                     *kPointCount = "PCT", *kPoints = "PAR";
}  // namespace key

// Attribute bits that decide which fields follow: the time range, and the
// speed limit (with the night speed of the 2019 edition).
constexpr uint32_t kBitByTime = 0x0001, kBitSpeedLimit = 0x0002;

// The kinds, numbered as the area query numbers them.
enum Kind : int { kCircle = 1, kRectangle = 2, kPolygon = 3, kRoute = 4 };

// Times of an area object: twelve digits as a set command carries them, or
// written out ("2026-01-15 00:00:00") as a terminal answers a query.
enum class TimeForm { kDigits, kWritten };

// The times of an area, when its attribute says it has them.
void WriteTimes(Writer& w, const Json::Value& area, uint32_t attr);
void ReadTimes(Reader& r, Json::Value& area, uint32_t attr, TimeForm form);
// The area name of the 2019 edition: a word of length, then the text.
void WriteName(Writer& w, const Json::Value& area, Edition edition);
void ReadName(Reader& r, Json::Value& area, Edition edition);

// The body of a kind's set command: circles and rectangles as a list after
// the setup byte, a polygon or a route alone.
void WriteBody(Writer& w, Kind kind, const Json::Value& param, Edition edition);
Json::Value ReadBody(Reader& r, Kind kind, Edition edition, TimeForm form);

// Routes, from areas_routes.cpp.
void WriteRoute(Writer& w, const Json::Value& route, Edition edition);
Json::Value ReadRoute(Reader& r, Edition edition, TimeForm form);

}  // namespace jt808::areas
