// JSON helpers: defensive parsing, the compact request writer and integer
// reading of reply members.
#include "text/json.h"

#include <json/json.h>

#include <climits>
#include <cmath>
#include <memory>
#include <sstream>

#include "text/numbers.h"

namespace txt {
namespace {
// The JSON library's own default depth: a deeper reply is still a reply.
constexpr int kStackLimit = 1000;

// 2^63 as a double: truncated reals outside [-2^63, 2^63) do not fit 64 bits.
constexpr double kInt64Bound = 9223372036854775808.0;

// Blanks, an optional sign, decimal digits, blanks; nothing else.
std::optional<int64_t> DecimalText(std::string_view s) {
  s = TrimBlanks(s);
  bool negative = false;
  if (!s.empty() && (s.front() == '+' || s.front() == '-')) {
    negative = s.front() == '-';
    s.remove_prefix(1);
  }
  if (s.empty()) return std::nullopt;
  const uint64_t limit = negative ? uint64_t{1} << 63 : static_cast<uint64_t>(INT64_MAX);
  uint64_t value = 0;
  for (char c : s) {
    if (c < '0' || c > '9') return std::nullopt;
    const unsigned digit = static_cast<unsigned>(c - '0');
    if (value > (limit - digit) / 10) return std::nullopt;
    value = value * 10 + digit;
  }
  return negative ? static_cast<int64_t>(0 - value) : static_cast<int64_t>(value);
}

const Json::Value* Member(const Json::Value& object, const char* key) {
  return object.isObject() ? object.find(key, key + std::char_traits<char>::length(key)) : nullptr;
}
}  // namespace

std::optional<int64_t> JsonToInt(const Json::Value& value) {
  switch (value.type()) {
    case Json::intValue:
      return value.asInt64();
    case Json::uintValue:
      if (value.asUInt64() > static_cast<uint64_t>(INT64_MAX)) return std::nullopt;
      return static_cast<int64_t>(value.asUInt64());
    case Json::realValue: {
      const double d = std::trunc(value.asDouble());
      if (!(d >= -kInt64Bound && d < kInt64Bound)) return std::nullopt;  // also NaN
      return static_cast<int64_t>(d);
    }
    case Json::booleanValue:
      return value.asBool() ? 1 : 0;
    case Json::stringValue:
      return DecimalText(value.asString());
    default:
      return std::nullopt;
  }
}

int JsonMemberInt(const Json::Value& object, const char* key, int absentValue) {
  const Json::Value* member = Member(object, key);
  const auto value = member ? JsonToInt(*member) : std::nullopt;
  return value ? static_cast<int>(static_cast<uint32_t>(*value)) : absentValue;
}

std::string JsonMemberString(const Json::Value& object, const char* key) {
  const Json::Value* member = Member(object, key);
  return member && member->isString() ? member->asString() : std::string();
}

std::string WriteCompactJson(const Json::Value& value) {
  thread_local std::unique_ptr<Json::StreamWriter> writer = [] {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    return std::unique_ptr<Json::StreamWriter>(builder.newStreamWriter());
  }();
  thread_local std::ostringstream out;
  out.str({});
  out.clear();
  writer->write(value, &out);
  return out.str();
}

bool ParseJson(std::string_view text, Json::Value& out) {
  thread_local std::unique_ptr<Json::CharReader> reader = [] {
    Json::CharReaderBuilder builder;
    builder["stackLimit"] = kStackLimit;
    builder["failIfExtra"] = true;
    builder["rejectDupKeys"] = false;
    return std::unique_ptr<Json::CharReader>(builder.newCharReader());
  }();
  std::string errors;
  bool ok = false;
  try {
    ok = reader->parse(text.data(), text.data() + text.size(), &out, &errors);
  } catch (const std::exception&) {
  }
  if (!ok) out = Json::Value();
  return ok;
}
}  // namespace txt
