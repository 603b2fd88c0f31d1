// Members of parameter and reply objects as body fields: integers checked
// against the field they travel in, texts fixed or after their length, and
// the 28-byte basic position block that media items carry. Every writer
// throws BodyError on a value its field cannot hold instead of cutting or
// wrapping it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <json/value.h>

#include "jt808/bytes.h"

namespace jt808::fields {

// A member of an object; a null value when absent or when the object is none.
const Json::Value& Member(const Json::Value& object, const char* key);
// An array member; an empty array when absent or of another type.
const Json::Value& Array(const Json::Value& object, const char* key);

// An unsigned member within 0..max; absent reads as `absent` (BodyError when
// that is nullopt). BodyError when it is not an integer or lies outside the range.
uint32_t Unsigned(const Json::Value& object, const char* key, uint32_t max, std::optional<uint32_t> absent = 0);
// A signed member within min..max (absent: 0), as the two's complement of its field.
int64_t Signed(const Json::Value& object, const char* key, int64_t min, int64_t max);

constexpr uint32_t kByte = 0xFF, kWord = 0xFFFF, kThreeBytes = 0xFFFFFF, kDword = 0xFFFFFFFF;

// A text member (bytes as they stand) in exactly size bytes padded with 0;
// BodyError when it is longer.
void Text(Writer& w, const Json::Value& object, const char* key, size_t size);
// A time member "YYYY-MM-DD hh:mm:ss" as six BCD bytes.
void Time(Writer& w, const Json::Value& object, const char* key);
// Decimal digits of a number member in size BCD bytes.
void Digits(Writer& w, const Json::Value& object, const char* key, size_t size);
// A number in three bytes, high first.
void ThreeBytes(Writer& w, uint32_t value);
uint32_t ReadThreeBytes(Reader& r);
// size BCD bytes as a number.
uint32_t ReadDigits(Reader& r, size_t size);

// An integer member in [min, max]; BodyError when it is absent, unreadable or out of range.
int64_t Int(const Json::Value& object, const char* key, int64_t min, int64_t max);
// The same, with absent as the value of a missing member.
int64_t IntOr(const Json::Value& object, const char* key, int64_t absent, int64_t min, int64_t max);

// The objects of an array member, in order: none when the member is absent;
// BodyError when it is not an array of objects or has more than maxItems.
std::vector<Json::Value> Items(const Json::Value& object, const char* key, size_t maxItems = kByte);
// The rest of the body as bytes.
std::string RestText(Reader& r);

// A member in a byte, a word or a double word.
inline void Byte(Writer& w, const Json::Value& object, const char* key) { w.U8(Unsigned(object, key, kByte)); }
inline void Word(Writer& w, const Json::Value& object, const char* key) { w.U16(Unsigned(object, key, kWord)); }
inline void Dword(Writer& w, const Json::Value& object, const char* key) { w.U32(Unsigned(object, key, kDword)); }

// Bytes after their length, a byte or a word.
void ByteLengthText(Writer& w, std::string_view bytes);
void WordLengthText(Writer& w, std::string_view bytes);
inline std::string ByteLengthText(Reader& r) { return r.RawText(r.U8()); }
inline std::string WordLengthText(Reader& r) { return r.RawText(r.U16()); }
// Bytes padded with zeros to a fixed field; longer ones are refused.
void FixedText(Writer& w, const std::string& bytes, size_t size);

// The basic position block: alarm flags, status, latitude, longitude (both
// degrees x 10^6), altitude (m), speed (0.1 km/h), direction and the time.
constexpr size_t kPositionBasicsSize = 28;
void WritePositionBasics(Writer& w, const Json::Value& item);
void ReadPositionBasics(Reader& r, Json::Value& item);

}  // namespace jt808::fields
