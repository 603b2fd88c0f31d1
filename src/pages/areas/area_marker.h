// A map marker as the area pages and pickers read it: the host's record, its
// coordinate lists (in line, or out of line for shape type -3), its radius
// from the two 16-bit halves, and coordinates as the terminals take them
// (absolute degrees x 10^6, truncated toward zero, with the hemisphere kept
// apart as the attribute word's south and west bits).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/hostcore.h"

namespace area {

// One coordinate as a terminal takes it.
struct Coordinate {
  int64_t micro = 0;      // |degrees| x 10^6, truncated
  bool negative = false;  // south latitude or west longitude
};
// Reads the decimal number at the start of a text (C locale; none gives 0).
Coordinate ParseCoordinate(std::string_view text);

// A comma-separated list, split at ','.
std::vector<std::string> SplitList(std::string_view list);
// Element i of a list; a missing element is the empty text (which reads as 0).
std::string ListItem(const std::vector<std::string>& list, size_t i);

class Marker {
 public:
  // The marker the host finds for an id, or nothing.
  static std::optional<Marker> Find(int id);
  explicit Marker(const _tagGPSMapMarkerEx& record) : record_(record) {}

  int Id() const { return record_.nID; }
  int32_t ShapeType() const { return record_.nType; }
  int32_t FenceClass() const { return record_.nFenceType; }
  uint16_t MapType() const { return record_.uMapType; }
  // Radius in metres: high half x 65536 + low half.
  uint32_t Radius() const { return (static_cast<uint32_t>(record_.uRadiusHigh) << 16) | record_.uRadiusLow; }
  std::string Name() const { return CVMgrMyMapInfomation::GetMarkerName(&record_); }
  // The stored longitude and latitude texts (lists for rectangles and polygons).
  std::string LngText() const;
  std::string LatText() const;
  const _tagGPSMapMarkerEx& Record() const { return record_; }

 private:
  _tagGPSMapMarkerEx record_;
};

}  // namespace area
