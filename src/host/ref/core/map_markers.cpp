// The user's map markers and lines (CVMgrMyMapInfomation), built from the
// fleet's "markers" and "lines" when a fleet loads (format in docs/fleet.md):
// the host's record with decimal degree texts, the name beside it, and for a
// polygon whose lists do not fit the record's texts (or that asks for it)
// the lists out of line. Map types lie a fixed step from GPS.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "host/hostcore.h"
#include "host/ref/core/fleet.h"

namespace hostcore_detail {
namespace {

constexpr size_t kTextBytes = sizeof(_tagGPSMapMarkerEx::szJingDu);
// A marker of map type n lies this many millionths of a degree east and north of GPS.
constexpr int64_t kMapShiftMicro = 500;
constexpr int kMapTypeGps = -1;

struct Shape {
  const char* name;
  int32_t type;
};
constexpr Shape kShapes[] = {{"circle", kMarkerCircle}, {"rectangle", kMarkerRectangle},
                             {"polygon", kMarkerPolygon}, {"point", 1}};

// Degrees x 10^6 as a decimal degree text, exactly.
std::string MicroText(int64_t micro) {
  const int64_t magnitude = micro < 0 ? -micro : micro;
  char text[32];
  std::snprintf(text, sizeof text, "%s%lld.%06lld", micro < 0 ? "-" : "", static_cast<long long>(magnitude / 1000000),
                static_cast<long long>(magnitude % 1000000));
  return text;
}

// One coordinate: an integer (degrees x 10^6) or a text kept as it stands.
bool CoordinateText(const Json::Value& v, std::string& out) {
  if (v.isString()) return out = v.asString(), true;
  if (v.isInt64()) return out = MicroText(v.asInt64()), true;
  return false;
}

void Append(std::string& list, const std::string& item) { list += (list.empty() ? "" : ",") + item; }

bool Coordinates(const Json::Value& m, std::string& lng, std::string& lat, std::string& why) {
  if (m.isMember("points")) {
    const Json::Value& points = m["points"];
    if (!points.isArray()) return why = "points: expected an array of [lng, lat]", false;
    for (const Json::Value& p : points) {
      std::string x, y;
      if (!p.isArray() || p.size() != 2 || !CoordinateText(p[0], x) || !CoordinateText(p[1], y))
        return why = "points: expected an array of [lng, lat]", false;
      Append(lng, x), Append(lat, y);
    }
  } else if (m.isMember("lng") || m.isMember("lat")) {
    if (!CoordinateText(m["lng"], lng) || !CoordinateText(m["lat"], lat))
      return why = "lng, lat: expected integers or texts", false;
  }
  // Texts as they stand win: lists of unequal length, missing elements.
  for (const auto& [key, text] : {std::pair{"lngText", &lng}, std::pair{"latText", &lat}}) {
    if (!m.isMember(key)) continue;
    if (!m[key].isString()) return why = std::string(key) + ": expected a string", false;
    *text = m[key].asString();
  }
  return true;
}

bool IntMember(const Json::Value& m, const char* key, int64_t& out, std::string& why) {
  if (!m.isMember(key)) return true;
  if (!m[key].isInt64()) return why = std::string(key) + ": expected an integer", false;
  out = m[key].asInt64();
  return true;
}

bool ShapeType(const Json::Value& m, int32_t& type, std::string& why) {
  if (m.isMember("type")) {
    if (!m["type"].isInt()) return why = "type: expected an integer", false;
    type = m["type"].asInt();
    return true;
  }
  const std::string shape = m.get("shape", "point").asString();
  for (const Shape& s : kShapes) {
    if (shape == s.name) return type = s.type, true;
  }
  return why = "shape: unknown shape " + shape, false;
}

void CopyText(char (&field)[kTextBytes], const std::string& text) {
  std::memset(field, 0, kTextBytes);
  std::memcpy(field, text.data(), std::min(text.size(), kTextBytes - 1));
}

bool ReadMarker(const Json::Value& m, MarkerEntry& entry, std::string& why) {
  if (!m.isObject() || !m["id"].isInt()) return why = "expected an object with an integer id", false;
  _tagGPSMapMarkerEx& r = entry.record;
  r.nID = m["id"].asInt();
  int64_t radius = 0, fence = 0, map = 0;
  std::string lng, lat;
  if (!ShapeType(m, r.nType, why) || !IntMember(m, "radius", radius, why) || !IntMember(m, "fence", fence, why) ||
      !IntMember(m, "map", map, why) || !Coordinates(m, lng, lat, why))
    return false;
  if (m.isMember("name") && !m["name"].isString()) return why = "name: expected a string", false;
  entry.name = m.get("name", "").asString();
  r.nFenceType = static_cast<int32_t>(fence);
  r.uMapType = static_cast<uint16_t>(map);
  r.uRadiusLow = static_cast<uint16_t>(radius & 0xFFFF);
  r.uRadiusHigh = static_cast<uint16_t>((radius >> 16) & 0xFFFF);
  const bool outOfLine = r.nType == kMarkerPolygon &&
                         (m.get("outOfLine", false).asBool() || lng.size() >= kTextBytes || lat.size() >= kTextBytes);
  if (outOfLine) {
    r.nType = kMarkerOutOfLine;
    entry.lngList = std::move(lng), entry.latList = std::move(lat);
  } else {
    CopyText(r.szJingDu, lng), CopyText(r.szWeiDu, lat);
  }
  return true;
}

// A list of decimal degree texts moved by a number of millionths of a degree.
std::string Shifted(const std::string& list, int64_t micro) {
  if (micro == 0) return list;
  std::string out;
  std::stringstream items(list);
  std::string item;
  while (std::getline(items, item, ',')) {
    const double degrees = std::strtod(item.c_str(), nullptr);
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", degrees + static_cast<double>(micro) / 1e6);
    Append(out, text);
  }
  return out;
}

bool ReadLine(const Json::Value& l, LineEntry& entry, std::string& why) {
  if (!l.isObject() || !l["id"].isInt()) return why = "expected an object with an integer id", false;
  entry.record.nID = l["id"].asInt();
  int64_t width = 0, map = 0;
  if (!IntMember(l, "width", width, why) || !IntMember(l, "map", map, why)) return false;
  if (l.isMember("name") && !l["name"].isString()) return why = "name: expected a string", false;
  entry.name = l.get("name", "").asString();
  entry.record.uWidth = static_cast<uint16_t>(width);
  entry.record.uMapType = static_cast<uint16_t>(map);
  const Json::Value& points = l["points"];
  if (!points.isNull() && !points.isArray()) return why = "points: expected an array of [lng, lat]", false;
  for (const Json::Value& p : points) {
    std::string x, y;
    if (!p.isArray() || p.size() != 2 || !CoordinateText(p[0], x) || !CoordinateText(p[1], y))
      return why = "points: expected an array of [lng, lat]", false;
    entry.record.points.emplace_back(x, y);
  }
  return true;
}

const LineEntry* FindLine(int id) {
  const Fleet& fleet = LoadedMarkers();
  auto it = fleet.lineById.find(id);
  return it == fleet.lineById.end() ? nullptr : it->second;
}

int64_t ShiftOf(int mapType) { return mapType == kMapTypeGps ? 0 : mapType * kMapShiftMicro; }

const MarkerEntry* FindMarker(int id) {
  const Fleet& fleet = LoadedMarkers();
  auto it = fleet.markerById.find(id);
  return it == fleet.markerById.end() ? nullptr : it->second;
}

}  // namespace

bool ReadMarkers(const Json::Value& markers, Fleet& fleet, std::string* error) {
  if (!markers.isArray()) return *error = "expected an array of markers", false;
  for (Json::ArrayIndex i = 0; i < markers.size(); ++i) {
    MarkerEntry entry;
    std::string why;
    if (!ReadMarker(markers[i], entry, why)) return *error = "[" + std::to_string(i) + "] " + why, false;
    if (fleet.markerById.count(entry.record.nID)) {
      return *error = "[" + std::to_string(i) + "] duplicate marker id " + std::to_string(entry.record.nID), false;
    }
    MarkerEntry& stored = fleet.markerRecords.emplace_back(std::move(entry));
    if (stored.record.nType == kMarkerOutOfLine) {
      stored.record.pJingDu = stored.lngList.c_str();
      stored.record.pWeiDu = stored.latList.c_str();
    }
    fleet.markerById.emplace(stored.record.nID, &stored);
  }
  return true;
}

bool ReadLines(const Json::Value& lines, Fleet& fleet, std::string* error) {
  if (!lines.isArray()) return *error = "expected an array of lines", false;
  for (Json::ArrayIndex i = 0; i < lines.size(); ++i) {
    LineEntry entry;
    std::string why;
    if (!ReadLine(lines[i], entry, why)) return *error = "[" + std::to_string(i) + "] " + why, false;
    if (fleet.lineById.count(entry.record.nID)) {
      return *error = "[" + std::to_string(i) + "] duplicate line id " + std::to_string(entry.record.nID), false;
    }
    const LineEntry& stored = fleet.lineRecords.emplace_back(std::move(entry));
    fleet.lineById.emplace(stored.record.nID, &stored);
  }
  return true;
}

}  // namespace hostcore_detail

using hostcore_detail::LineEntry;
using hostcore_detail::MarkerEntry;

BOOL CVMgrMyMapInfomation::FindMapLine(int id, _tagGPSMapLineEx* line) {
  const LineEntry* entry = hostcore_detail::FindLine(id);
  if (!entry || !line) return FALSE;
  *line = entry->record;
  return TRUE;
}

void CVMgrMyMapInfomation::GetAllMyMapMarkerEx(int** ids, int* count, int kind) {
  if (!ids || !count) return;
  *ids = nullptr;
  *count = 0;
  if (kind != kMapLineKind) return;
  const auto& lines = hostcore_detail::LoadedMarkers().lineRecords;
  if (lines.empty()) return;
  auto* array = static_cast<int*>(std::malloc(lines.size() * sizeof(int)));
  if (!array) return;
  for (size_t i = 0; i < lines.size(); ++i) array[i] = lines[i].record.nID;
  *ids = array;
  *count = static_cast<int>(lines.size());
}

int MapType2MapGPSType(int mapType) { return mapType; }

BOOL CGpsConvert::Convert(double& lng, double& lat, int gpsType) {
  const double shift = static_cast<double>(hostcore_detail::ShiftOf(gpsType)) / 1e6;
  lng -= shift;
  lat -= shift;
  return TRUE;
}

BOOL CVMgrMyMapInfomation::FindMapMarkerEx(int id, _tagGPSMapMarkerEx* marker) {
  const MarkerEntry* entry = hostcore_detail::FindMarker(id);
  if (!entry || !marker) return FALSE;
  *marker = entry->record;
  return TRUE;
}

std::string CVMgrMyMapInfomation::GetMarkerName(const _tagGPSMapMarkerEx* marker) {
  return marker ? GetMarkerName(marker->nID) : std::string();
}

std::string CVMgrMyMapInfomation::GetMarkerName(int id) {
  if (const MarkerEntry* entry = hostcore_detail::FindMarker(id)) return entry->name;
  const LineEntry* line = hostcore_detail::FindLine(id);
  return line ? line->name : std::string();
}

void CVMgrMyMapInfomation::GetAllMyMapMarkerExFormType(int** ids, int* count, const int* types, int typeCount) {
  if (!ids || !count) return;
  *ids = nullptr;
  *count = 0;
  std::vector<int> found;
  for (const MarkerEntry& entry : hostcore_detail::LoadedMarkers().markerRecords) {
    for (int i = 0; types && i < typeCount; ++i) {
      if (entry.record.nType == types[i]) {
        found.push_back(entry.record.nID);
        break;
      }
    }
  }
  if (found.empty()) return;
  auto* array = static_cast<int*>(std::malloc(found.size() * sizeof(int)));
  if (!array) return;
  std::memcpy(array, found.data(), found.size() * sizeof(int));
  *ids = array;
  *count = static_cast<int>(found.size());
}

BOOL CVMgrMyMapInfomation::GetMapJingWeiDu(const _tagGPSMapMarkerEx* marker, std::string& lng, std::string& lat,
                                           int mapType) {
  if (!marker) return FALSE;
  const bool outOfLine = marker->nType == kMarkerOutOfLine;
  const std::string storedLng = outOfLine ? (marker->pJingDu ? marker->pJingDu : "") : marker->szJingDu;
  const std::string storedLat = outOfLine ? (marker->pWeiDu ? marker->pWeiDu : "") : marker->szWeiDu;
  // Each map type lies a fixed step from GPS; map type 0 is GPS itself.
  const int64_t shift = hostcore_detail::ShiftOf(mapType) - hostcore_detail::ShiftOf(marker->uMapType);
  lng = hostcore_detail::Shifted(storedLng, shift);
  lat = hostcore_detail::Shifted(storedLat, shift);
  return TRUE;
}
