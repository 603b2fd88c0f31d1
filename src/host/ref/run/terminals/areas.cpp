// Area terminals: each device keeps its circle, rectangle and polygon areas
// by id. A circle or rectangle set updates (replaces every area of the kind),
// appends (adds, an id already held is replaced) or modifies (replaces only
// ids already held); a polygon set adds or replaces its one polygon. A 2013
// terminal keeps no night speed and no area name.
#include <json/value.h>

#include <map>

#include "host/ref/run/terminals.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kSetCircles = 0x8600, kSetRectangles = 0x8602, kSetPolygon = 0x8604;
enum Setup : int { kUpdate = 0, kAppend = 1, kModify = 2 };
constexpr const char *kKeySetup = "Setup", *kKeyItem = "Item", *kKeyId = "ID";
// Keys only the 2019 edition carries.
constexpr const char* k2019Keys[] = {"NMSPD", "ANAME"};

using Areas = std::map<uint32_t, Json::Value>;
// A device's areas, by the command that sets them.
DeviceState<std::map<int, Areas>> g_areas;

// An area as this terminal keeps it; nullopt when it is no area.
std::optional<Json::Value> Kept(const Json::Value& item, bool edition2019) {
  if (!item.isObject() || !txt::JsonToInt(item[kKeyId])) return std::nullopt;
  Json::Value kept = item;
  if (!edition2019) {
    for (const char* key : k2019Keys) kept.removeMember(key);
  }
  return kept;
}

uint32_t IdOf(const Json::Value& area) { return static_cast<uint32_t>(*txt::JsonToInt(area[kKeyId])); }

Answer SetList(const TerminalRequest& r) {
  if (!r.param.isObject()) return Reply({}, kResultMessageError);
  const int setup = txt::JsonMemberInt(r.param, kKeySetup, -1);
  const Json::Value& items = r.param[kKeyItem];
  if (setup < kUpdate || setup > kModify || !(items.isNull() || items.isArray())) return Reply({}, kResultMessageError);
  std::vector<Json::Value> kept;
  for (const Json::Value& item : items) {
    auto area = Kept(item, Is2019(r.devIdno));
    if (!area) return Reply({}, kResultMessageError);
    kept.push_back(std::move(*area));
  }
  Areas& areas = g_areas[r.devIdno][r.command];
  if (setup == kUpdate) areas.clear();
  for (Json::Value& area : kept) {
    const uint32_t id = IdOf(area);
    if (setup == kModify && !areas.count(id)) continue;
    areas[id] = std::move(area);
  }
  return Reply({});
}

Answer SetPolygon(const TerminalRequest& r) {
  auto area = Kept(r.param, Is2019(r.devIdno));
  if (!area) return Reply({}, kResultMessageError);
  g_areas[r.devIdno][r.command][IdOf(*area)] = std::move(*area);
  return Reply({});
}

const RegisterResponder kCircles{kSetCircles, SetList};
const RegisterResponder kRectangles{kSetRectangles, SetList};
const RegisterResponder kPolygon{kSetPolygon, SetPolygon};
}  // namespace

std::map<uint32_t, Json::Value> StoredAreas(const std::string& devIdno, int setCommand) {
  auto lock = Locked();
  const auto* kinds = g_areas.Find(devIdno);
  if (!kinds) return {};
  auto it = kinds->find(setCommand);
  return it == kinds->end() ? Areas{} : it->second;
}

}  // namespace hostref::terminals
