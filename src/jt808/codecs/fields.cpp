#include "jt808/codecs/fields.h"

#include "text/json.h"

namespace jt808::fields {
namespace {
const Json::Value* Member(const Json::Value& param, const char* key) {
  return param.isObject() ? param.find(key, key + std::char_traits<char>::length(key)) : nullptr;
}

void WithLength(Writer& w, std::string_view bytes, size_t max, bool word) {
  if (bytes.size() > max) {
    throw BodyError("a text of " + std::to_string(bytes.size()) + " bytes, at most " + std::to_string(max) + " fit");
  }
  word ? w.U16(bytes.size()) : w.U8(bytes.size());
  w.Raw(bytes);
}
}  // namespace

int64_t Int(const Json::Value& param, const char* key, int64_t min, int64_t max) {
  const Json::Value* member = Member(param, key);
  if (!member) throw BodyError(std::string("no \"") + key + "\"");
  return IntOr(param, key, 0, min, max);
}

int64_t IntOr(const Json::Value& param, const char* key, int64_t absent, int64_t min, int64_t max) {
  const Json::Value* member = Member(param, key);
  if (!member) return absent;
  const std::optional<int64_t> value = txt::JsonToInt(*member);
  if (!value) throw BodyError(std::string("\"") + key + "\" is not a number");
  if (*value < min || *value > max) {
    throw BodyError(std::string("\"") + key + "\" " + std::to_string(*value) + " is outside " + std::to_string(min) +
                    ".." + std::to_string(max));
  }
  return *value;
}

std::vector<Json::Value> Items(const Json::Value& param, const char* key, size_t maxItems) {
  const Json::Value* member = Member(param, key);
  std::vector<Json::Value> items;
  if (!member) return items;
  if (!member->isArray()) throw BodyError(std::string("\"") + key + "\" is not a list");
  if (member->size() > maxItems) throw BodyError(std::string("too many items in \"") + key + "\"");
  for (const Json::Value& item : *member) {
    if (!item.isObject()) throw BodyError(std::string("an item of \"") + key + "\" is not an object");
    items.push_back(item);
  }
  return items;
}

void Text8(Writer& w, std::string_view bytes) { WithLength(w, bytes, kMaxByte, false); }

void Text16(Writer& w, std::string_view bytes) { WithLength(w, bytes, kMaxWord, true); }

std::string ReadText8(Reader& r) { return r.RawText(r.U8()); }

std::string ReadText16(Reader& r) { return r.RawText(r.U16()); }

std::string RestText(Reader& r) {
  const ByteView rest = r.Rest();
  return std::string(rest.begin(), rest.end());
}

}  // namespace jt808::fields
