// Members of a parameter object as body fields, for the codecs of the
// messaging, control and regional commands: integers that must fit their
// field, texts with a length before them, and the item lists of the pages.
// Every reader and writer here throws BodyError on what a field cannot hold.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <json/value.h>

#include "jt808/bytes.h"

namespace jt808::fields {

constexpr int64_t kMaxByte = 0xFF;
constexpr int64_t kMaxWord = 0xFFFF;
constexpr int64_t kMaxDword = 0xFFFFFFFF;

// An integer member in [min, max]; BodyError when it is absent, unreadable or out of range.
int64_t Int(const Json::Value& param, const char* key, int64_t min, int64_t max);
// The same, with absent as the value of a missing member.
int64_t IntOr(const Json::Value& param, const char* key, int64_t absent, int64_t min, int64_t max);

// The objects of an array member, in order: none when the member is absent;
// BodyError when it is not an array of objects or has more than maxItems.
std::vector<Json::Value> Items(const Json::Value& param, const char* key, size_t maxItems = kMaxByte);

// Bytes with their length in one byte or one word before them.
void Text8(Writer& w, std::string_view bytes);
void Text16(Writer& w, std::string_view bytes);
std::string ReadText8(Reader& r);
std::string ReadText16(Reader& r);

// The rest of the body as bytes.
std::string RestText(Reader& r);

}  // namespace jt808::fields
