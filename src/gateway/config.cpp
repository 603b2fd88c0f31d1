#include "gateway/config.h"

#include <charconv>
#include <cstdio>

namespace gw {
namespace {
constexpr std::string_view kDerived = "derived", kFixed = "fixed:", kAny = "any";
}  // namespace

std::optional<AuthPolicy> AuthPolicy::Parse(std::string_view text) {
  AuthPolicy policy;
  if (text == kAny) {
    policy.kind = Kind::Any;
  } else if (text.starts_with(kFixed) && text.size() > kFixed.size()) {
    policy.kind = Kind::Fixed;
    policy.value = std::string(text.substr(kFixed.size()));
  } else if (text == kDerived) {
    policy.kind = Kind::Derived;
  } else if (text.starts_with(kDerived) && text.size() > kDerived.size() + 1 && text[kDerived.size()] == ':') {
    policy.kind = Kind::Derived;
    policy.value = std::string(text.substr(kDerived.size() + 1));
  } else {
    return std::nullopt;
  }
  return policy;
}

// Sixteen hexadecimal digits of a 64-bit FNV-1a hash of the secret and the phone.
std::string AuthPolicy::CodeFor(const std::string& phone) const {
  if (kind == Kind::Fixed) return value;
  uint64_t hash = 0xcbf29ce484222325ull;
  auto mix = [&](std::string_view text) {
    for (unsigned char c : text) {
      hash ^= c;
      hash *= 0x100000001b3ull;
    }
  };
  mix(value);
  mix("/");
  mix(phone);
  char code[17];
  std::snprintf(code, sizeof code, "%016llx", static_cast<unsigned long long>(hash));
  return code;
}

bool AuthPolicy::Accepts(const std::string& phone, const std::string& code) const {
  return kind == Kind::Any || code == CodeFor(phone);
}

std::optional<std::chrono::milliseconds> ParseDuration(std::string_view text) {
  uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end == text.data() || number > 1'000'000'000) return std::nullopt;
  const std::string_view unit(end, text.data() + text.size() - end);
  if (unit == "ms") return std::chrono::milliseconds(number);
  if (unit.empty() || unit == "s") return std::chrono::seconds(number);
  if (unit == "m") return std::chrono::minutes(number);
  return std::nullopt;
}

std::optional<uint16_t> ParsePort(std::string_view text) {
  unsigned number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || text.empty() || number > 0xFFFF) return std::nullopt;
  return static_cast<uint16_t>(number);
}

bool ParseHostPort(std::string_view text, std::string* host, uint16_t* port) {
  const size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || colon == 0) return false;
  const auto number = ParsePort(text.substr(colon + 1));
  if (!number || *number == 0) return false;
  std::string_view name = text.substr(0, colon);
  if (name.size() > 2 && name.front() == '[' && name.back() == ']') name = name.substr(1, name.size() - 2);
  *host = std::string(name);
  *port = *number;
  return true;
}

}  // namespace gw
