// The simulated platform's answers through a gateway (fleetcmd-host --net gw):
// each started channel's request goes to a gateway's control port and its
// answer (a reply text, or status 101 or 110) reaches the channel. The
// platform's channels stay as they are: held answers, delays and the devices'
// own rules apply before the gateway is asked, and Stop waits for a request
// out at the gateway as for any running answer.
//
// In process ("gw"), a gateway on a loopback port of its own and a simulated
// binary terminal for every device of the loaded fleet start with the link;
// a device the fleet gains later gets its terminal with its first request.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace gw {

class HostLink {
 public:
  struct Target {
    bool inProcess = true;
    std::string host;
    uint16_t port = 0;
  };
  // "gw", or "gw://HOST:PORT" for a running gateway's control port.
  static std::optional<Target> Parse(std::string_view text);

  HostLink();
  ~HostLink();
  HostLink(const HostLink&) = delete;
  HostLink& operator=(const HostLink&) = delete;

  // Starts what the target needs and installs the platform's responder; false
  // and *error when the gateway cannot be reached or started.
  bool Start(const Target& target, std::string* error);
  // Removes the responder and closes everything it started.
  void Stop();

  struct Impl;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace gw
