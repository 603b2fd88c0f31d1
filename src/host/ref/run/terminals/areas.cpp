// Area terminals: each device keeps its circle, rectangle and polygon areas
// and its routes by id. A circle or rectangle set updates (replaces every
// area of the kind), appends (adds, an id already held is replaced) or
// modifies (replaces only ids already held); a polygon or route set adds or
// replaces its one area. A delete removes the ids listed, or every area of
// the kind with "Count" 0. A 2013 terminal keeps no night speed and no area
// name, and does not know the area query (a 2019 command); the stored-area
// list the platform relays answers from any terminal.
#include <json/value.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <vector>

#include "host/ref/run/terminals.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kSetCircles = 0x8600, kSetRectangles = 0x8602, kSetPolygon = 0x8604, kSetRoute = 0x8606;
constexpr int kDeleteCircles = 0x8601, kDeleteRectangles = 0x8603, kDeletePolygons = 0x8605, kDeleteRoutes = 0x8607;
constexpr int kQueryAreas = 0x8608, kStoredList = 0x86FE;
// Kinds 1-4 of the query and the list, by the command that sets them.
constexpr int kKindCommands[] = {kSetCircles, kSetRectangles, kSetPolygon, kSetRoute};
// Areas per reply packet of a kind whose set command carries a list.
constexpr Json::ArrayIndex kAreasPerPacket = 10;
enum Setup : int { kUpdate = 0, kAppend = 1, kModify = 2 };
constexpr const char *kKeySetup = "Setup", *kKeyItem = "Item", *kKeyId = "ID", *kKeyCount = "Count",
                     *kKeyKind = "ATPYE", *kKeyIds = "IDS", *kKeyType = "Type", *kKeyStart = "BTM", *kKeyEnd = "ETM";
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

// A polygon or a route: one area, added or replaced by id.
Answer SetPolygon(const TerminalRequest& r) {
  auto area = Kept(r.param, Is2019(r.devIdno));
  if (!area) return Reply({}, kResultMessageError);
  g_areas[r.devIdno][r.command][IdOf(*area)] = std::move(*area);
  return Reply({});
}

// Deletes by the ids listed, or every area of the kind.
Answer Delete(const TerminalRequest& r) {
  if (!r.param.isObject() || !txt::JsonToInt(r.param[kKeyCount])) return Reply({}, kResultMessageError);
  Areas& areas = g_areas[r.devIdno][r.command - 1];
  if (txt::JsonMemberInt(r.param, kKeyCount, 0) == 0) {
    areas.clear();
    return Reply({});
  }
  for (const Json::Value& item : r.param[kKeyItem]) {
    const auto id = txt::JsonToInt(item[kKeyId]);
    if (!id) return Reply({}, kResultMessageError);
    areas.erase(static_cast<uint32_t>(*id));
  }
  return Reply({});
}

// "YYMMDDhhmmss" of a set command as the platform writes a terminal's time back: "20YY-MM-DD hh:mm:ss".
std::string TimeBack(const std::string& text) {
  if (text.size() != 12) return text;
  return "20" + text.substr(0, 2) + "-" + text.substr(2, 2) + "-" + text.substr(4, 2) + " " + text.substr(6, 2) + ":" +
         text.substr(8, 2) + ":" + text.substr(10, 2);
}

// The ids asked for: all when the text is empty.
std::vector<uint32_t> AskedIds(const Areas& areas, const std::string& text) {
  std::vector<uint32_t> ids;
  if (text.empty()) {
    for (const auto& [id, area] : areas) ids.push_back(id);
    return ids;
  }
  size_t start = 0;
  while (start <= text.size()) {
    const size_t comma = std::min(text.find(',', start), text.size());
    const std::string piece = text.substr(start, comma - start);
    char* end = nullptr;
    const unsigned long id = std::strtoul(piece.c_str(), &end, 10);
    if (!piece.empty() && *end == '\0' && areas.count(static_cast<uint32_t>(id))) ids.push_back(static_cast<uint32_t>(id));
    start = comma + 1;
  }
  return ids;
}

// The areas asked for, in packets: lists of ten for circles and rectangles, one area for polygons and routes.
Answer Query(const TerminalRequest& r) {
  if (!Is2019(r.devIdno)) return Reply({}, kResultUnsupported);
  const int kind = txt::JsonMemberInt(r.param, kKeyKind, 0);
  if (!r.param.isObject() || kind < 1 || kind > 4) return Reply({}, kResultMessageError);
  const int command = kKindCommands[kind - 1];
  const Areas& areas = g_areas[r.devIdno][command];
  const bool lists = command == kSetCircles || command == kSetRectangles;
  Json::Value packets(Json::arrayValue);
  for (uint32_t id : AskedIds(areas, txt::JsonMemberString(r.param, kKeyIds))) {
    if (packets.empty() || !lists || packets[packets.size() - 1][kKeyItem].size() == kAreasPerPacket) {
      Json::Value packet(Json::objectValue);
      if (lists) packet[kKeySetup] = 0;
      packet[kKeyItem] = Json::Value(Json::arrayValue);
      packets.append(packet);
    }
    Json::Value area = areas.at(id);
    for (const char* key : {kKeyStart, kKeyEnd}) area[key] = TimeBack(txt::JsonMemberString(area, key));
    Json::Value& packet = packets[packets.size() - 1];
    packet[kKeyItem].append(area);
    packet[kKeyCount] = static_cast<int>(packet[kKeyItem].size());
  }
  Json::Value body(Json::objectValue);
  body[kKeyKind] = kind;
  body[kKeyCount] = static_cast<int>(packets.size());
  body[kKeyItem] = packets;
  return Reply(body);
}

// Every area and route the terminal holds, by kind.
Answer StoredList(const TerminalRequest& r) {
  Json::Value items(Json::arrayValue);
  for (int kind = 1; kind <= 4; ++kind) {
    for (const auto& [id, area] : g_areas[r.devIdno][kKindCommands[kind - 1]]) {
      Json::Value item(Json::objectValue);
      item[kKeyId] = id;
      item[kKeyType] = kind;
      items.append(item);
    }
  }
  Json::Value body(Json::objectValue);
  body[kKeyCount] = static_cast<int>(items.size());
  body[kKeyItem] = items;
  return Reply(body);
}

const RegisterResponder kCircles{kSetCircles, SetList};
const RegisterResponder kRectangles{kSetRectangles, SetList};
const RegisterResponder kPolygon{kSetPolygon, SetPolygon};
const RegisterResponder kRoute{kSetRoute, SetPolygon};
const RegisterResponder kDeleteCircleAreas{kDeleteCircles, Delete};
const RegisterResponder kDeleteRectangleAreas{kDeleteRectangles, Delete};
const RegisterResponder kDeletePolygonAreas{kDeletePolygons, Delete};
const RegisterResponder kDeleteRouteAreas{kDeleteRoutes, Delete};
const RegisterResponder kQuery{kQueryAreas, Query};
const RegisterResponder kList{kStoredList, StoredList};
}  // namespace

std::map<uint32_t, Json::Value> StoredAreas(const std::string& devIdno, int setCommand) {
  auto lock = Locked();
  const auto* kinds = g_areas.Find(devIdno);
  if (!kinds) return {};
  auto it = kinds->find(setCommand);
  return it == kinds->end() ? Areas{} : it->second;
}

}  // namespace hostref::terminals
