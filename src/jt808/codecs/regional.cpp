// The provincial content of transparent data. The sub-type is the message
// type; the content starts with the "SCRAPYARD" byte, then come the record
// fields the sub-type has, and the note takes the rest:
//   texts (roof light, external screen):   note
//   record settings (waybill, identity):   id (DWORD), operation, business, note
//   record queries:                        id (DWORD, all bits set: every record), note
// An absent note is an empty rest.
//
// The other regional commands have no terminal message: the taxi IC card
// blacklist goes out as 0x8106, which on the terminals' protocol queries
// given parameters by their numbers (answered by 0x0104) and cannot hold card
// numbers; the inspection settings 0x9720 and 0x9706 are the platform's own.
#include <algorithm>
#include <iterator>
#include <limits>

#include "jt808/codec.h"
#include "jt808/codecs/fields.h"
#include "jt808/codecs/transparent.h"

namespace jt808::transparent {
namespace {
namespace key {
constexpr const char *kScrapyard = "SCRAPYARD", *kType = "SCTYPE", *kNote = "SCNOTE", *kId = "SCID",
                      *kOperation = "SCOPER", *kBusiness = "SCBUSINESS";
}  // namespace key

enum class Layout { kText, kRecord, kQuery };
struct SubType {
  uint8_t type;
  Layout layout;
};
constexpr SubType kSubTypes[] = {
    {192, Layout::kRecord}, {193, Layout::kQuery}, {194, Layout::kText},
    {196, Layout::kRecord}, {197, Layout::kQuery}, {199, Layout::kText},
};
constexpr int64_t kMinId = std::numeric_limits<int32_t>::min(), kMaxId = std::numeric_limits<int32_t>::max();
constexpr int64_t kScrapyardDefault = 1;

const SubType* Find(int64_t type) {
  const auto it = std::find_if(std::begin(kSubTypes), std::end(kSubTypes), [type](const SubType& s) { return s.type == type; });
  return it == std::end(kSubTypes) ? nullptr : it;
}
}  // namespace

bool IsProvincial(const Json::Value& param) { return param.isObject() && param.isMember(key::kType); }

bool IsProvincialType(uint8_t type) { return Find(type) != nullptr; }

Bytes EncodeProvincial(const Json::Value& param) {
  const int64_t type = fields::Int(param, key::kType, 0, fields::kByte);
  const SubType* subType = Find(type);
  if (!subType) throw BodyError("transparent data of unknown sub-type " + std::to_string(type));
  Writer w;
  w.U8(type).U8(fields::IntOr(param, key::kScrapyard, kScrapyardDefault, 0, fields::kByte));
  if (subType->layout != Layout::kText) w.U32(static_cast<uint32_t>(fields::Int(param, key::kId, kMinId, kMaxId)));
  if (subType->layout == Layout::kRecord) {
    w.U8(fields::Int(param, key::kOperation, 0, fields::kByte));
    w.U8(fields::Int(param, key::kBusiness, 0, fields::kByte));
  }
  return w.Raw(WireText(param, key::kNote)).Take();
}

Json::Value DecodeProvincial(uint8_t type, Reader& r) {
  const SubType* subType = Find(type);
  if (!subType) throw BodyError("transparent data of unknown sub-type " + std::to_string(type));
  Json::Value param(Json::objectValue);
  param[key::kType] = type;
  param[key::kScrapyard] = r.U8();
  if (subType->layout != Layout::kText) param[key::kId] = static_cast<int32_t>(r.U32());
  if (subType->layout == Layout::kRecord) {
    param[key::kOperation] = r.U8();
    param[key::kBusiness] = r.U8();
  }
  const std::string note = fields::RestText(r);
  if (!note.empty()) param[key::kNote] = PageText(note);
  return param;
}

}  // namespace jt808::transparent
