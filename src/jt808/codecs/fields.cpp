#include "jt808/codecs/fields.h"

#include <cstring>

#include "text/json.h"

namespace jt808::fields {
namespace {
namespace key {
constexpr const char *kAlarms = "Flag", *kStatus = "STA", *kLatitude = "WD", *kLongitude = "JD", *kAltitude = "GAODU",
                     *kSpeed = "SPD", *kDirection = "HS", *kTime = "DTM";
}  // namespace key

const Json::Value* Find(const Json::Value& object, const char* key) {
  return object.isObject() ? object.find(key, key + std::strlen(key)) : nullptr;
}

int64_t Checked(const Json::Value& object, const char* key, int64_t min, int64_t max, std::optional<int64_t> absent) {
  const Json::Value* member = Find(object, key);
  if (!member) {
    if (!absent) throw BodyError(std::string("no ") + key);
    return *absent;
  }
  const std::optional<int64_t> value = txt::JsonToInt(*member);
  if (!value || *value < min || *value > max) throw BodyError(std::string(key) + " does not fit its field");
  return *value;
}
}  // namespace

const Json::Value& Member(const Json::Value& object, const char* key) {
  static const Json::Value kNull;
  const Json::Value* member = Find(object, key);
  return member ? *member : kNull;
}

const Json::Value& Array(const Json::Value& object, const char* key) {
  static const Json::Value kEmpty(Json::arrayValue);
  const Json::Value& member = Member(object, key);
  return member.isArray() ? member : kEmpty;
}

uint32_t Unsigned(const Json::Value& object, const char* key, uint32_t max, std::optional<uint32_t> absent) {
  return static_cast<uint32_t>(Checked(object, key, 0, max, absent));
}

int64_t Signed(const Json::Value& object, const char* key, int64_t min, int64_t max) {
  return Checked(object, key, min, max, 0);
}

int64_t Int(const Json::Value& object, const char* key, int64_t min, int64_t max) {
  return Checked(object, key, min, max, std::nullopt);
}

int64_t IntOr(const Json::Value& object, const char* key, int64_t absent, int64_t min, int64_t max) {
  return Checked(object, key, min, max, absent);
}

std::vector<Json::Value> Items(const Json::Value& object, const char* key, size_t maxItems) {
  const Json::Value* member = Find(object, key);
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

std::string RestText(Reader& r) {
  const ByteView rest = r.Rest();
  return std::string(rest.begin(), rest.end());
}

void ByteLengthText(Writer& w, std::string_view bytes) {
  if (bytes.size() > kByte) throw BodyError("a text longer than 255 bytes");
  w.U8(static_cast<uint32_t>(bytes.size())).Raw(bytes);
}

void WordLengthText(Writer& w, std::string_view bytes) {
  if (bytes.size() > kWord) throw BodyError("a text longer than 65535 bytes");
  w.U16(static_cast<uint32_t>(bytes.size())).Raw(bytes);
}

void FixedText(Writer& w, const std::string& bytes, size_t size) {
  if (bytes.size() > size) throw BodyError("a text longer than its " + std::to_string(size) + " bytes");
  w.Fixed(bytes, size);
}

void Text(Writer& w, const Json::Value& object, const char* key, size_t size) {
  const std::string text = txt::JsonMemberString(object, key);
  if (text.size() > size) throw BodyError(std::string(key) + " is longer than " + std::to_string(size) + " bytes");
  w.Fixed(text, size);
}

void Time(Writer& w, const Json::Value& object, const char* key) { w.BcdTime(txt::JsonMemberString(object, key)); }

void Digits(Writer& w, const Json::Value& object, const char* key, size_t size) {
  w.Bcd(std::to_string(Unsigned(object, key, kDword)), size);
}

void ThreeBytes(Writer& w, uint32_t value) { w.U8(value >> 16).U16(value); }

uint32_t ReadThreeBytes(Reader& r) {
  const uint32_t high = r.U8();
  return high << 16 | r.U16();
}

uint32_t ReadDigits(Reader& r, size_t size) { return static_cast<uint32_t>(std::stoull(r.Bcd(size))); }

void WritePositionBasics(Writer& w, const Json::Value& item) {
  w.U32(Unsigned(item, key::kAlarms, kDword)).U32(Unsigned(item, key::kStatus, kDword));
  w.U32(Unsigned(item, key::kLatitude, kDword)).U32(Unsigned(item, key::kLongitude, kDword));
  w.U16(Unsigned(item, key::kAltitude, kWord)).U16(Unsigned(item, key::kSpeed, kWord));
  w.U16(Unsigned(item, key::kDirection, kWord));
  Time(w, item, key::kTime);
}

void ReadPositionBasics(Reader& r, Json::Value& item) {
  item[key::kAlarms] = r.U32();
  item[key::kStatus] = r.U32();
  item[key::kLatitude] = r.U32();
  item[key::kLongitude] = r.U32();
  item[key::kAltitude] = r.U16();
  item[key::kSpeed] = r.U16();
  item[key::kDirection] = r.U16();
  item[key::kTime] = r.BcdTime();
}

}  // namespace jt808::fields
