// Circle, rectangle and polygon areas, the set commands of every kind (the
// route's body is in areas_routes.cpp) and their deletes. An area is its id
// and attribute word, its shape, the time range and the speed limit when the
// word has them, and in the 2019 edition the night speed (with the speed
// limit) and its name. A circle or rectangle set carries a list after its
// setup byte; a polygon set carries one area with its vertices.
#include <span>

#include "jt808/codecs/areas.h"
#include "jt808/codecs/fields.h"
#include "text/encoding.h"

namespace jt808::areas {
namespace {
constexpr int kSetCircles = 0x8600, kDeleteCircles = 0x8601, kSetRectangles = 0x8602, kDeleteRectangles = 0x8603,
              kSetPolygon = 0x8604, kDeletePolygons = 0x8605, kSetRoute = 0x8606, kDeleteRoutes = 0x8607;

// What lies between an area's attribute word and its times: the corners or
// the centre and radius; a polygon has its vertices after the speed limit.
struct Shape {
  std::span<const char* const> geometry;
  bool vertices;
};
constexpr const char* kCircleKeys[] = {key::kLat, key::kLng, key::kRadius};
constexpr const char* kRectangleKeys[] = {key::kLeftLat, key::kLeftLng, key::kRightLat, key::kRightLng};
constexpr Shape kCircleShape{kCircleKeys, false}, kRectangleShape{kRectangleKeys, false}, kPolygonShape{{}, true};

void WriteVertices(Writer& w, const Json::Value& area) {
  const Json::Value& points = area[key::kPoints];
  const Json::ArrayIndex count = points.isArray() ? points.size() : 0;
  if (count > fields::kWord) throw BodyError("too many vertices");
  w.U16(count);
  for (Json::ArrayIndex i = 0; i < count; ++i) {
    fields::Dword(w, points[i], key::kLat);
    fields::Dword(w, points[i], key::kLng);
  }
}

void ReadVertices(Reader& r, Json::Value& area) {
  const uint16_t count = r.U16();
  Json::Value points(Json::arrayValue);
  for (uint16_t i = 0; i < count; ++i) {
    Json::Value point(Json::objectValue);
    point[key::kLat] = r.U32();
    point[key::kLng] = r.U32();
    points.append(point);
  }
  area[key::kPointCount] = count;
  area[key::kPoints] = points;
}

void WriteArea(Writer& w, const Json::Value& area, const Shape& shape, Edition edition) {
  if (!area.isObject()) throw BodyError("an area is no object");
  const uint32_t attr = fields::Unsigned(area, key::kAttr, fields::kWord);
  fields::Dword(w, area, key::kId);
  w.U16(attr);
  for (const char* field : shape.geometry) fields::Dword(w, area, field);
  WriteTimes(w, area, attr);
  const bool speed = attr & kBitSpeedLimit;
  if (speed) {
    fields::Word(w, area, key::kMaxSpeed);
    fields::Byte(w, area, key::kDuration);
  }
  if (shape.vertices) WriteVertices(w, area);
  if (edition == Edition::k2019 && speed) fields::Word(w, area, key::kNightSpeed);
  WriteName(w, area, edition);
}

Json::Value ReadArea(Reader& r, const Shape& shape, Edition edition, TimeForm form) {
  Json::Value area(Json::objectValue);
  area[key::kId] = r.U32();
  const uint16_t attr = r.U16();
  area[key::kAttr] = attr;
  for (const char* field : shape.geometry) area[field] = r.U32();
  ReadTimes(r, area, attr, form);
  const bool speed = attr & kBitSpeedLimit;
  if (speed) {
    area[key::kMaxSpeed] = r.U16();
    area[key::kDuration] = r.U8();
  }
  if (shape.vertices) ReadVertices(r, area);
  if (edition == Edition::k2019 && speed) area[key::kNightSpeed] = r.U16();
  ReadName(r, area, edition);
  return area;
}

// The setup byte, the count and the areas; "Item" only when there are areas, as the pages send it.
void WriteList(Writer& w, const Json::Value& param, const Shape& shape, Edition edition) {
  if (!param.isObject()) throw BodyError("a list of areas is no object");
  const Json::Value& items = param[key::kItem];
  const Json::ArrayIndex count = items.isArray() ? items.size() : 0;
  if (count > fields::kByte) throw BodyError("more than 255 areas in one message");
  fields::Byte(w, param, key::kSetup);
  w.U8(count);
  for (Json::ArrayIndex i = 0; i < count; ++i) WriteArea(w, items[i], shape, edition);
}

Json::Value ReadList(Reader& r, const Shape& shape, Edition edition, TimeForm form) {
  Json::Value param(Json::objectValue);
  param[key::kSetup] = r.U8();
  const uint8_t count = r.U8();
  param[key::kCount] = count;
  for (uint8_t i = 0; i < count; ++i) param[key::kItem].append(ReadArea(r, shape, edition, form));
  return param;
}

// A delete: the ids listed, or none for every area of the kind ("Count" 0).
Bytes EncodeDelete(const Json::Value& param, Edition) {
  const Json::Value& items = param[key::kItem];
  const Json::ArrayIndex count = items.isArray() ? items.size() : 0;
  if (count > fields::kByte) throw BodyError("more than 255 ids in one message");
  // No ids deletes everything: only "Count" 0 asks for that.
  if (!param.isObject() || !param.isMember(key::kCount)) throw BodyError("a delete without its count");
  if (count == 0 && fields::Unsigned(param, key::kCount, fields::kDword) != 0) throw BodyError("no ids to delete");
  Writer w;
  w.U8(count);
  for (Json::ArrayIndex i = 0; i < count; ++i) fields::Dword(w, items[i], key::kId);
  return w.Take();
}

Json::Value DecodeDelete(ByteView body, Edition) {
  Reader r(body);
  Json::Value param(Json::objectValue);
  const uint8_t count = r.U8();
  param[key::kCount] = count;
  for (uint8_t i = 0; i < count; ++i) {
    Json::Value item(Json::objectValue);
    item[key::kId] = r.U32();
    param[key::kItem].append(item);
  }
  if (!r.AtEnd()) throw BodyError("bytes after the ids");
  return param;
}

CommandCodec SetCodec(int message, Kind kind) {
  return {static_cast<uint16_t>(message), kGeneralReply,
          [kind](const Json::Value& param, Edition edition) {
            Writer w;
            WriteBody(w, kind, param, edition);
            return w.Take();
          },
          [kind](ByteView body, Edition edition) {
            Reader r(body);
            Json::Value param = ReadBody(r, kind, edition, TimeForm::kDigits);
            if (!r.AtEnd()) throw BodyError("bytes after the area");
            return param;
          }};
}

CommandCodec DeleteCodec(int message) {
  return {static_cast<uint16_t>(message), kGeneralReply, EncodeDelete, DecodeDelete};
}

const RegisterCommand kCircles{kSetCircles, SetCodec(kSetCircles, kCircle)};
const RegisterCommand kRectangles{kSetRectangles, SetCodec(kSetRectangles, kRectangle)};
const RegisterCommand kPolygonArea{kSetPolygon, SetCodec(kSetPolygon, kPolygon)};
const RegisterCommand kRouteSet{kSetRoute, SetCodec(kSetRoute, kRoute)};
const RegisterCommand kCircleDelete{kDeleteCircles, DeleteCodec(kDeleteCircles)};
const RegisterCommand kRectangleDelete{kDeleteRectangles, DeleteCodec(kDeleteRectangles)};
const RegisterCommand kPolygonDelete{kDeletePolygons, DeleteCodec(kDeletePolygons)};
const RegisterCommand kRouteDelete{kDeleteRoutes, DeleteCodec(kDeleteRoutes)};
}  // namespace

void WriteTimes(Writer& w, const Json::Value& area, uint32_t attr) {
  if (!(attr & kBitByTime)) return;
  w.BcdTime(txt::JsonMemberString(area, key::kStart)).BcdTime(txt::JsonMemberString(area, key::kEnd));
}

void ReadTimes(Reader& r, Json::Value& area, uint32_t attr, TimeForm form) {
  if (!(attr & kBitByTime)) return;
  for (const char* field : {key::kStart, key::kEnd}) area[field] = form == TimeForm::kDigits ? r.Bcd(6) : r.BcdTime();
}

void WriteName(Writer& w, const Json::Value& area, Edition edition) {
  if (edition == Edition::k2019) fields::WordLengthText(w, txt::Utf8ToGbk(txt::JsonMemberString(area, key::kName)));
}

void ReadName(Reader& r, Json::Value& area, Edition edition) {
  if (edition == Edition::k2019) area[key::kName] = txt::GbkToUtf8(fields::WordLengthText(r));
}

void WriteBody(Writer& w, Kind kind, const Json::Value& param, Edition edition) {
  switch (kind) {
    case kCircle: return WriteList(w, param, kCircleShape, edition);
    case kRectangle: return WriteList(w, param, kRectangleShape, edition);
    case kPolygon: return WriteArea(w, param, kPolygonShape, edition);
    case kRoute: return WriteRoute(w, param, edition);
  }
  throw BodyError("no such kind of area");
}

Json::Value ReadBody(Reader& r, Kind kind, Edition edition, TimeForm form) {
  switch (kind) {
    case kCircle: return ReadList(r, kCircleShape, edition, form);
    case kRectangle: return ReadList(r, kRectangleShape, edition, form);
    case kPolygon: return ReadArea(r, kPolygonShape, edition, form);
    case kRoute: return ReadRoute(r, edition, form);
  }
  throw BodyError("no such kind of area");
}

}  // namespace jt808::areas
