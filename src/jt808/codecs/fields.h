// Members of parameter and reply objects as body fields: numbers that must
// fit their field, texts with a length before them, and fixed texts. An
// absent number counts as 0; one that does not fit, or is no number, is
// refused rather than cut.
#pragma once

#include <cstdint>
#include <string>

#include <json/value.h>

#include "jt808/bytes.h"
#include "text/json.h"

namespace jt808::fields {

constexpr uint32_t kByte = 0xFF, kWord = 0xFFFF, kDword = 0xFFFFFFFF;

// The member as a field of at most max.
inline uint32_t Number(const Json::Value& object, const char* key, uint32_t max) {
  if (!object.isObject() || !object.isMember(key)) return 0;
  const auto value = txt::JsonToInt(object[key]);
  if (!value || *value < 0 || static_cast<uint64_t>(*value) > max) {
    throw BodyError(std::string(key) + " does not fit its field");
  }
  return static_cast<uint32_t>(*value);
}

inline void Byte(Writer& w, const Json::Value& object, const char* key) { w.U8(Number(object, key, kByte)); }
inline void Word(Writer& w, const Json::Value& object, const char* key) { w.U16(Number(object, key, kWord)); }
inline void Dword(Writer& w, const Json::Value& object, const char* key) { w.U32(Number(object, key, kDword)); }

// Bytes after their length, a byte or a word.
inline void ByteLengthText(Writer& w, const std::string& bytes) {
  if (bytes.size() > kByte) throw BodyError("a text longer than 255 bytes");
  w.U8(static_cast<uint32_t>(bytes.size())).Raw(bytes);
}
inline void WordLengthText(Writer& w, const std::string& bytes) {
  if (bytes.size() > kWord) throw BodyError("a text longer than 65535 bytes");
  w.U16(static_cast<uint32_t>(bytes.size())).Raw(bytes);
}
inline std::string ByteLengthText(Reader& r) { return r.RawText(r.U8()); }
inline std::string WordLengthText(Reader& r) { return r.RawText(r.U16()); }

// Bytes padded with zeros to a fixed field; longer ones are refused.
inline void FixedText(Writer& w, const std::string& bytes, size_t size) {
  if (bytes.size() > size) throw BodyError("a text longer than its " + std::to_string(size) + " bytes");
  w.Fixed(bytes, size);
}

}  // namespace jt808::fields
