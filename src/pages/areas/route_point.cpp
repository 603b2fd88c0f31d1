// Route points from map lines.
#include "pages/areas/route_point.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "pages/areas/area_marker.h"

namespace area {

std::vector<RoutePoint> RouteFromLine(const _tagGPSMapLineEx& line, bool gpsFix) {
  std::vector<RoutePoint> points;
  for (size_t i = 0; i < line.points.size(); ++i) {
    std::string lngText = line.points[i].first, latText = line.points[i].second;
    if (gpsFix) {
      double lng = std::strtod(lngText.c_str(), nullptr), lat = std::strtod(latText.c_str(), nullptr);
      CGpsConvert::Convert(lng, lat, MapType2MapGPSType(line.uMapType));
      char text[32];
      std::snprintf(text, sizeof text, "%.6lf", lng);
      lngText = text;
      std::snprintf(text, sizeof text, "%.6lf", lat);
      latText = text;
    }
    const Coordinate lat = ParseCoordinate(latText), lng = ParseCoordinate(lngText);
    RoutePoint p;
    p.pointId = static_cast<uint32_t>(i + 1);
    p.segmentId = std::min<uint32_t>(static_cast<uint32_t>(i + 1), kMaxSegmentId);
    p.lat = static_cast<int32_t>(lat.micro);
    p.lng = static_cast<int32_t>(lng.micro);
    p.width = static_cast<uint8_t>(std::min<uint16_t>(line.uWidth, kMaxWidth));
    if (lat.negative) p.attr |= kSegmentSouth;
    if (lng.negative) p.attr |= kSegmentWest;
    points.push_back(p);
  }
  return points;
}

}  // namespace area
