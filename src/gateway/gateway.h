// A gateway node: terminals connect to its terminal port and speak the binary
// protocol (registration, authentication, heartbeats, position reports, and
// the answers to commands); hosts connect to its control port and send
// requests as lines (control_protocol.h). A request goes out to its terminal
// as the command's message with the session's next serial number and comes
// back as the reply text of the terminal's answer, or as status 101 (the
// terminal is not connected and authenticated) or 110 (no answer in time).
//
// All sessions, connections and requests live on one thread (the one that
// runs the node); the inspection calls below are safe from any thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <json/value.h>

#include "gateway/config.h"

namespace gw {

struct Counters {
  uint64_t connections = 0;     // terminal connections accepted
  uint64_t sessions = 0;        // terminal connections open now
  uint64_t authenticated = 0;   // terminals authenticated now
  uint64_t registrations = 0;
  uint64_t authFailures = 0;
  uint64_t silentDrops = 0;     // sessions closed for silence
  uint64_t framesIn = 0;
  uint64_t framesOut = 0;
  uint64_t framesDropped = 0;   // bad escapes, check codes or headers
  uint64_t requests = 0;        // control requests received
  uint64_t answered = 0;        // requests settled by a terminal's answer
  uint64_t offline = 0;         // requests answered 101
  uint64_t timeouts = 0;        // requests answered 110
  uint64_t noMessage = 0;       // requests answered "Error" 120
  uint64_t unmatched = 0;       // terminal answers that settled no request
  uint64_t controls = 0;        // control connections open now
  uint64_t routed = 0;          // requests handed to the node that has the terminal
  uint64_t remoteTerminals = 0; // terminals the broker says are on other nodes

  Json::Value ToJson() const;
};

class Gateway {
 public:
  explicit Gateway(Config config);
  ~Gateway();
  Gateway(const Gateway&) = delete;
  Gateway& operator=(const Gateway&) = delete;

  // Opens both ports; false and *error when one cannot be opened.
  bool Open(std::string* error);
  // Serves on the calling thread until Stop (or SIGINT/SIGTERM with handleSignals).
  void Run(bool handleSignals = false);
  // Serves on a thread of its own.
  void Start();
  // Closes every connection and stops serving; waits for the node's own thread.
  void Stop();

  uint16_t TerminalPort() const;
  uint16_t ControlPort() const;

  // What the control port's inspection lines answer: op is "sessions",
  // "requests" or "counters"; null for another op.
  Json::Value Inspect(const std::string& op);
  Counters Count() const;
  // Waits until done(counters) holds, up to limit; whether it held.
  bool WaitUntil(const std::function<bool(const Counters&)>& done, std::chrono::milliseconds limit) const;

  struct Impl;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace gw
