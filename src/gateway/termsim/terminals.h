// Simulated binary terminals: one TCP connection per device to a gateway's
// terminal port. Each registers, authenticates with the code it was given,
// sends heartbeats, and answers every command from the simulated terminals'
// state (hostref::wire::TerminalAnswer), in its device's edition. A terminal
// whose connection ends or whose authentication fails starts again after a
// pause. All connections run on one thread; the calls below are safe from any
// thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "jt808/codec.h"

namespace gw::termsim {

struct Options {
  std::string host = "127.0.0.1";
  uint16_t port = 7808;
  std::chrono::milliseconds heartbeat{30'000};
  std::chrono::milliseconds retry{1'000};  // the pause before connecting again
};

struct Stats {
  uint64_t terminals = 0;      // terminals added
  uint64_t online = 0;         // authenticated now
  uint64_t connects = 0;       // connections made
  uint64_t commands = 0;       // commands answered
  uint64_t framesIn = 0;
  uint64_t framesOut = 0;
  uint64_t heartbeats = 0;
};

// The device numbers of the loaded fleet, in fleet order.
std::vector<std::string> FleetDevices();

class Terminals {
 public:
  explicit Terminals(Options options);
  ~Terminals();
  Terminals(const Terminals&) = delete;
  Terminals& operator=(const Terminals&) = delete;

  // Runs the connections on a thread of its own.
  void Start();
  // Runs them on the calling thread until Stop (or SIGINT/SIGTERM with handleSignals).
  void Run(bool handleSignals = false);
  void Stop();

  // A terminal for the device, in the edition its fleet entry says; false
  // when its number cannot be a terminal's phone number. A device added
  // before keeps its terminal, unless its edition changed: then a new
  // terminal in the new edition replaces it.
  bool Add(const std::string& devIdno);
  bool Add(const std::string& devIdno, jt808::Edition edition);
  // The terminal is authenticated now.
  bool Online(const std::string& devIdno) const;
  // Waits until the device's terminal is authenticated, up to limit; whether it is.
  bool WaitOnline(const std::string& devIdno, std::chrono::milliseconds limit) const;

  Stats Count() const;
  bool WaitUntil(const std::function<bool(const Stats&)>& done, std::chrono::milliseconds limit) const;

  struct Impl;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace gw::termsim
