// The area query and its answer. The query names a kind and the ids wanted
// (none for all); the page writes the ids as a comma-separated text. The
// answer carries the set command's body of each area found: lists of circles
// or rectangles as they were packed, polygons and routes one to a body.
#include <cctype>
#include <string_view>
#include <vector>

#include "jt808/codecs/areas.h"
#include "jt808/codecs/fields.h"

namespace jt808::areas {
namespace {
constexpr int kQueryAreas = 0x8608;
constexpr uint16_t kQueryAnswer = 0x0608;
constexpr const char *kKind = "ATPYE", *kIds = "IDS";
constexpr char kIdSeparator = ',';

bool IsList(int kind) { return kind == kCircle || kind == kRectangle; }

Kind KindOf(int kind) {
  if (kind < kCircle || kind > kRoute) throw BodyError("no such kind of area: " + std::to_string(kind));
  return static_cast<Kind>(kind);
}

// The ids of the text; a piece that is no id is passed over, as a terminal
// would find no area by it. A text of nothing but such pieces cannot be sent:
// no ids at all would ask for every area.
std::vector<uint32_t> IdsOf(std::string_view text) {
  std::vector<uint32_t> ids;
  bool named = false;
  while (!text.empty()) {
    const size_t comma = std::min(text.find(kIdSeparator), text.size());
    std::string_view piece = text.substr(0, comma);
    text.remove_prefix(std::min(comma + 1, text.size()));
    while (!piece.empty() && std::isspace(static_cast<unsigned char>(piece.front()))) piece.remove_prefix(1);
    if (piece.empty()) continue;
    named = true;
    uint64_t id = 0;
    bool digits = piece.size() <= 10;
    for (char c : piece) {
      digits = digits && std::isdigit(static_cast<unsigned char>(c));
      id = id * 10 + static_cast<uint64_t>(c - '0');
    }
    if (digits && id <= fields::kDword) ids.push_back(static_cast<uint32_t>(id));
  }
  if (named && ids.empty()) throw BodyError("no area id in the list");
  return ids;
}

Bytes EncodeQuery(const Json::Value& param, Edition) {
  Writer w;
  fields::Byte(w, param, kKind);
  const std::vector<uint32_t> ids = IdsOf(txt::JsonMemberString(param, kIds));
  w.U32(static_cast<uint32_t>(ids.size()));
  for (uint32_t id : ids) w.U32(id);
  return w.Take();
}

Json::Value DecodeQuery(ByteView body, Edition) {
  Reader r(body);
  Json::Value param(Json::objectValue);
  param[kKind] = r.U8();
  std::string ids;
  for (uint32_t i = 0, count = r.U32(); i < count; ++i) {
    if (i > 0) ids += kIdSeparator;
    ids += std::to_string(r.U32());
  }
  if (!r.AtEnd()) throw BodyError("bytes after the ids");
  param[kIds] = ids;
  return param;
}

// Lists go back packet by packet; a polygon or route packet is its one area.
Json::Value DecodeAnswer(ByteView body, const AnswerContext& context) {
  Reader r(body);
  Json::Value reply(Json::objectValue);
  const Kind kind = KindOf(r.U8());
  const uint32_t count = r.U32();
  reply[kKind] = kind;
  reply[key::kCount] = count;
  Json::Value& packets = reply[key::kItem] = Json::Value(Json::arrayValue);
  for (uint32_t i = 0; i < count; ++i) {
    Json::Value body = ReadBody(r, kind, context.edition, TimeForm::kWritten);
    if (IsList(kind)) {
      packets.append(body);
      continue;
    }
    Json::Value packet(Json::objectValue);
    packet[key::kCount] = 1;
    packet[key::kItem].append(body);
    packets.append(packet);
  }
  if (!r.AtEnd()) throw BodyError("bytes after the areas");
  return reply;
}

Bytes EncodeAnswer(const Json::Value& reply, const AnswerContext& context) {
  const Kind kind = KindOf(txt::JsonMemberInt(reply, kKind, 0));
  std::vector<const Json::Value*> bodies;
  for (const Json::Value& packet : reply[key::kItem]) {
    if (!packet.isObject()) throw BodyError("a packet is no object");
    if (IsList(kind)) {
      bodies.push_back(&packet);
      continue;
    }
    for (const Json::Value& area : packet[key::kItem]) bodies.push_back(&area);
  }
  Writer w;
  w.U8(kind).U32(static_cast<uint32_t>(bodies.size()));
  for (const Json::Value* body : bodies) WriteBody(w, kind, *body, context.edition);
  return w.Take();
}

const RegisterCommand kQuery{kQueryAreas, {kQueryAreas, kQueryAnswer, EncodeQuery, DecodeQuery}};
const RegisterAnswer kAnswer{kQueryAnswer, {false, DecodeAnswer, EncodeAnswer}};
}  // namespace
}  // namespace jt808::areas
