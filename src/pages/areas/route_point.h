// The inflection points of a route as a terminal takes them, made from one of
// the user's map lines: a point per line point, each starting its own road
// segment, coordinates as |degrees| x 10^6 with south and west in the
// segment attribute, the line's width, no thresholds and no speed limits.
#pragma once

#include <cstdint>
#include <vector>

#include "host/hostcore.h"

namespace area {

struct RoutePoint {
  uint32_t pointId = 0;
  uint32_t segmentId = 0;
  int32_t lat = 0;  // degrees x 10^6
  int32_t lng = 0;
  uint8_t width = 0;  // metres
  uint8_t attr = 0;   // segment attribute bits
  uint16_t longThreshold = 0;   // seconds: driving too long
  uint16_t shortThreshold = 0;  // seconds: driving too short
  uint16_t maxSpeed = 0;        // km/h
  uint8_t overspeed = 0;        // seconds over the limit
  uint16_t nightSpeed = 0;      // km/h

  bool operator==(const RoutePoint&) const = default;
};

enum SegmentBit : uint8_t { kSegmentByTime = 0x01, kSegmentSpeedLimit = 0x02, kSegmentSouth = 0x04, kSegmentWest = 0x08 };
constexpr uint32_t kMaxSegmentId = 255;
constexpr uint8_t kMaxWidth = 255;

// The points of a line; with gpsFix, its coordinates taken from its map type to GPS first.
std::vector<RoutePoint> RouteFromLine(const _tagGPSMapLineEx& line, bool gpsFix);

}  // namespace area
