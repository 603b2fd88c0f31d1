// Routes: the id and attribute word, the time range when the word has it,
// the inflection points, and in the 2019 edition the route's name. Each point
// carries its road segment's width and attribute; the segment's driving-time
// thresholds and speed limit (with the 2019 night speed) follow when the
// segment attribute has them.
#include "jt808/codecs/areas.h"
#include "jt808/codecs/fields.h"

namespace jt808::areas {
namespace {
namespace point {
constexpr const char *kId = "PID", *kSegment = "LID", *kWidth = "LW", *kAttr = "LDA", *kLongDriving = "DOR",
                     *kShortDriving = "DLS", *kOverspeed = "LST";
}  // namespace point
constexpr uint32_t kSegmentByTime = 0x01, kSegmentSpeedLimit = 0x02;

void WritePoint(Writer& w, const Json::Value& p, Edition edition) {
  if (!p.isObject()) throw BodyError("a route point is no object");
  const uint32_t attr = fields::Unsigned(p, point::kAttr, fields::kByte);
  for (const char* field : {point::kId, point::kSegment, key::kLat, key::kLng}) fields::Dword(w, p, field);
  fields::Byte(w, p, point::kWidth);
  w.U8(attr);
  if (attr & kSegmentByTime) {
    fields::Word(w, p, point::kLongDriving);
    fields::Word(w, p, point::kShortDriving);
  }
  if (attr & kSegmentSpeedLimit) {
    fields::Word(w, p, key::kMaxSpeed);
    fields::Byte(w, p, point::kOverspeed);
    if (edition == Edition::k2019) fields::Word(w, p, key::kNightSpeed);
  }
}

Json::Value ReadPoint(Reader& r, Edition edition) {
  Json::Value p(Json::objectValue);
  for (const char* field : {point::kId, point::kSegment, key::kLat, key::kLng}) p[field] = r.U32();
  p[point::kWidth] = r.U8();
  const uint8_t attr = r.U8();
  p[point::kAttr] = attr;
  if (attr & kSegmentByTime) {
    p[point::kLongDriving] = r.U16();
    p[point::kShortDriving] = r.U16();
  }
  if (attr & kSegmentSpeedLimit) {
    p[key::kMaxSpeed] = r.U16();
    p[point::kOverspeed] = r.U8();
    if (edition == Edition::k2019) p[key::kNightSpeed] = r.U16();
  }
  return p;
}
}  // namespace

void WriteRoute(Writer& w, const Json::Value& route, Edition edition) {
  if (!route.isObject()) throw BodyError("a route is no object");
  const uint32_t attr = fields::Unsigned(route, key::kAttr, fields::kWord);
  fields::Dword(w, route, key::kId);
  w.U16(attr);
  WriteTimes(w, route, attr);
  const Json::Value& points = route[key::kPoints];
  const Json::ArrayIndex count = points.isArray() ? points.size() : 0;
  if (count > fields::kWord) throw BodyError("too many route points");
  w.U16(count);
  for (Json::ArrayIndex i = 0; i < count; ++i) WritePoint(w, points[i], edition);
  WriteName(w, route, edition);
}

Json::Value ReadRoute(Reader& r, Edition edition, TimeForm form) {
  Json::Value route(Json::objectValue);
  route[key::kId] = r.U32();
  const uint16_t attr = r.U16();
  route[key::kAttr] = attr;
  ReadTimes(r, route, attr, form);
  const uint16_t count = r.U16();
  route[key::kPointCount] = count;
  Json::Value& points = route[key::kPoints] = Json::Value(Json::arrayValue);
  for (uint16_t i = 0; i < count; ++i) points.append(ReadPoint(r, edition));
  ReadName(r, route, edition);
  return route;
}

}  // namespace jt808::areas
