// What a gateway node is told at start: where it listens, how long it waits,
// and how terminals get and prove their authentication codes.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gw {

// How the registration answer's code is chosen and an authentication checked:
//   derived[:SECRET]  each terminal's code is derived from its phone number and
//                     the secret, so a restarted node accepts the codes it gave
//   fixed:CODE        every terminal gets CODE and must present it
//   any               codes are derived as above, and any code is accepted
struct AuthPolicy {
  enum class Kind { Derived, Fixed, Any };
  Kind kind = Kind::Derived;
  std::string value = "fleetcmd";  // the secret, or the fixed code

  static std::optional<AuthPolicy> Parse(std::string_view text);
  std::string CodeFor(const std::string& phone) const;
  bool Accepts(const std::string& phone, const std::string& code) const;
};

// "500ms", "30s", "3m" or a bare number of seconds; nullopt for anything else.
std::optional<std::chrono::milliseconds> ParseDuration(std::string_view text);
// A port number 0-65535.
std::optional<uint16_t> ParsePort(std::string_view text);

struct Config {
  std::string bind = "127.0.0.1";  // the address both ports listen on
  uint16_t terminalPort = 7808;    // 0: a free port, chosen at start
  uint16_t controlPort = 7809;
  std::chrono::milliseconds answerTimeout{30'000};   // a request without an answer gets 110
  std::chrono::milliseconds silentTimeout{180'000};  // a terminal heard nothing from so long is dropped
  AuthPolicy auth;
  size_t maxControlLine = 1 << 20;  // a longer control line closes its connection
  // Several nodes: each names itself and meets the others at an MQTT broker,
  // where a request for a terminal on another node goes to that node.
  std::string node;          // this node's name; "" with no broker
  std::string brokerHost;    // "" for a node on its own
  uint16_t brokerPort = 1883;
};

// "HOST:PORT" (or "[V6]:PORT") into its parts; false for anything else.
bool ParseHostPort(std::string_view text, std::string* host, uint16_t* port);

}  // namespace gw
