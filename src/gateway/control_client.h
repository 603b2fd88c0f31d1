// A host's side of a gateway's control port: requests sent as lines, each
// caller waiting for its own answer while others are out. Safe from any
// thread; every call returns within the timeout it was given.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "gateway/control_protocol.h"

namespace gw {

class ControlClient {
 public:
  explicit ControlClient(std::chrono::milliseconds timeout);
  ~ControlClient();
  ControlClient(const ControlClient&) = delete;
  ControlClient& operator=(const ControlClient&) = delete;

  // Connects to the control port; false and *error when it cannot.
  bool Connect(const std::string& host, uint16_t port, std::string* error);
  // One request and its answer: status 110 when none came in time or the
  // connection is gone.
  control::Answer Send(const std::string& devIdno, const std::string& envelope, const std::string& param);
  // Sends a request without waiting: done runs on the client's reader thread
  // with its answer (110 when the connection is or goes away; the gateway
  // itself answers 110 when a terminal does not).
  void Post(const std::string& devIdno, const std::string& envelope, const std::string& param,
            std::function<void(control::Answer)> done);
  // An inspection line's body ("sessions", "requests", "counters"); null when none came.
  Json::Value Inspect(const std::string& op);
  void Close();

  struct Impl;

 private:
  std::unique_ptr<Impl> impl_;
};

// The requests, at most `outstanding` out at a time (as the pages pace
// theirs); their answers in the order of the requests.
std::vector<control::Answer> SendPaced(ControlClient& client, const std::vector<control::Request>& requests,
                                       size_t outstanding);

}  // namespace gw
