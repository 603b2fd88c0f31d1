// The world the fuzz targets run in: the UI loop on a manual clock, an
// in-memory host store, a small plain fleet and the English language file. No
// network threads and no real time: a reply is handed to a page through the
// base's own callback and message path, then the loop runs what it posted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "command/base_dlg.h"

namespace fuzzworld {
// Devices of the plain fleet: ids 1..kDevices, numbers "9" + (1000 + id).
constexpr int kDevices = 4;

// Sets the world up once per process.
void Init();
// Forgets what an input left behind that would pile up over a run: the log's lines.
void EndInput();
// The number of a fleet device chosen by a byte.
std::string DeviceIdno(uint8_t pick);
// A network status chosen by a byte: mostly 0, sometimes offline or timeout.
int32_t Status(uint8_t pick);
}  // namespace fuzzworld

// Hands a page one reply as the network thread does for a request the page
// sent (the page's table holds the request, the callback parses and posts),
// then dispatches what the page posted, as the UI thread does.
class BaseDlgAccess {
 public:
  static void Deliver(CBaseDlg& page, bool get, int32_t status, const char* reply, const std::string& devIdno);
};
