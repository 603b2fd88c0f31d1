// Time sources of the UI loop. Timers fire from a Clock: the running program
// uses the steady clock, tests and scripts a manual clock they advance, so a
// test of 1000 ms / 500 ms pacing runs in microseconds and always the same way.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

#include "platform/wintypes.h"

namespace plat {

class Clock {
 public:
  virtual ~Clock() = default;
  // Milliseconds since an arbitrary start; never goes back.
  virtual uint64_t NowMs() const = 0;
};

class SteadyClock final : public Clock {
 public:
  uint64_t NowMs() const override;
};

class ManualClock final : public Clock {
 public:
  explicit ManualClock(uint64_t startMs = 0) : now_(startMs) {}
  uint64_t NowMs() const override { return now_.load(); }
  void Set(uint64_t ms) { now_.store(ms); }
  void Advance(uint64_t ms) { now_.fetch_add(ms); }

 private:
  std::atomic<uint64_t> now_;
};

// The 32-bit millisecond tick of the loop's clock; wraps like the system tick.
DWORD GetTickCount();

// Local wall-clock time, or the pinned time when one is set (scripts with fixed time).
SYSTEMTIME GetLocalTime();
void SetFixedLocalTime(std::optional<SYSTEMTIME> time);

}  // namespace plat
