// JSON through jsoncpp: requests written compactly in key order (bytes of
// GBK text go out unchanged), replies parsed defensively, and integers read
// the way replies may carry them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <json/value.h>

namespace txt {
// Integers, unsigned integers, reals (truncated toward zero), booleans (1/0)
// and strings that hold a decimal number (blanks around, an optional sign,
// digits only); any other type, and a value beyond 64 bits, counts as absent.
std::optional<int64_t> JsonToInt(const Json::Value& value);
// A member read with JsonToInt (truncated to 32 bits); absentValue when the
// value is no object or the member is absent or unreadable.
int JsonMemberInt(const Json::Value& object, const char* key, int absentValue);
// A string member, or "".
std::string JsonMemberString(const Json::Value& object, const char* key);
// No spaces, no line breaks, no trailing newline; members in key order.
std::string WriteCompactJson(const Json::Value& value);
// False on any error (not JSON, nested too deep, trailing garbage); out is
// then null.
bool ParseJson(std::string_view text, Json::Value& out);
}  // namespace txt
