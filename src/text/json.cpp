#include "text/json.h"

#include <json/json.h>

#include <cmath>
#include <memory>
#include <sstream>

namespace txt {
namespace {
constexpr int kStackLimit = 256;

std::optional<int64_t> DecimalText(const std::string& s) {
  size_t i = 0, end = s.size();
  while (i < end && s[i] == ' ') ++i;
  while (end > i && s[end - 1] == ' ') --end;
  bool negative = false;
  if (i < end && (s[i] == '+' || s[i] == '-')) negative = s[i++] == '-';
  if (i == end) return std::nullopt;
  int64_t value = 0;
  for (; i < end; ++i) {
    if (s[i] < '0' || s[i] > '9') return std::nullopt;
    if (value > (INT64_MAX - 9) / 10) return std::nullopt;
    value = value * 10 + (s[i] - '0');
  }
  return negative ? -value : value;
}
}  // namespace

std::optional<int64_t> JsonToInt(const Json::Value& value) {
  switch (value.type()) {
    case Json::intValue:
      return value.asInt64();
    case Json::uintValue:
      return static_cast<int64_t>(value.asUInt64());
    case Json::realValue: {
      const double d = value.asDouble();
      if (!std::isfinite(d) || d >= 9.2e18 || d <= -9.2e18) return std::nullopt;
      return static_cast<int64_t>(std::trunc(d));
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
  if (!object.isObject()) return absentValue;
  const Json::Value* member = object.find(key, key + std::char_traits<char>::length(key));
  if (!member) return absentValue;
  auto value = JsonToInt(*member);
  return value ? static_cast<int>(static_cast<uint32_t>(*value)) : absentValue;
}

std::string JsonMemberString(const Json::Value& object, const char* key) {
  if (!object.isObject()) return {};
  const Json::Value* member = object.find(key, key + std::char_traits<char>::length(key));
  return member && member->isString() ? member->asString() : std::string();
}

std::string WriteCompactJson(const Json::Value& value) {
  thread_local std::unique_ptr<Json::StreamWriter> writer = [] {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    return std::unique_ptr<Json::StreamWriter>(builder.newStreamWriter());
  }();
  std::ostringstream out;
  writer->write(value, &out);
  return std::move(out).str();
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
  try {
    return reader->parse(text.data(), text.data() + text.size(), &out, &errors);
  } catch (const std::exception&) {
    return false;
  }
}
}  // namespace txt
