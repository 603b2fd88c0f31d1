// The UI message loop.
//
// Rules:
// - There is one UI loop (MessageLoop::Instance()); windows, timers and every
//   handler run on the thread that drives it.
// - Post() may be called from any thread. It queues the message and returns
//   false when the target window does not exist (never created, or destroyed);
//   a message queued for a window destroyed before dispatch is dropped.
// - Send() runs the window's handler at once; UI thread only.
// - Timers are kept per (window, id); SetTimer with an existing id restarts it.
//   A timer repeats every period until killed, like the system's timers.
//   They fire from the loop's Clock, in order of due time (then of setting).
// - RunPending() dispatches every queued message and every timer that is due
//   now, until none is left, and returns how many it handled.
// - RunFor(ms) on a manual clock advances time timer by timer, dispatching at
//   each step, so a test can run several seconds of pacing instantly.
// - A program that drives the loop from a toolkit's own event loop sets a wake
//   hook: it runs after every Post (on the posting thread, no lock held) and
//   every SetTimer, and must only schedule a RunPending on the UI thread; the
//   program then waits until NextTimerDue() on the real clock.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "platform/clock.h"
#include "platform/wintypes.h"

namespace plat {

class Window;

class MessageLoop {
 public:
  static MessageLoop& Instance();

  // The loop's clock; the steady clock unless a test or script sets one.
  void SetClock(Clock* clock);
  Clock& GetClock() const;

  bool Post(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
  LRESULT Send(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

  void SetTimer(HWND hwnd, UINT_PTR id, UINT periodMs);
  bool KillTimer(HWND hwnd, UINT_PTR id);
  bool HasTimer(HWND hwnd, UINT_PTR id) const;
  // Due time of the earliest timer, if any.
  std::optional<uint64_t> NextTimerDue() const;

  size_t RunPending();
  // Manual clock only: advances by ms, firing timers at their due times.
  size_t RunFor(uint64_t ms);
  // Manual clock only: runs until no message is queued and no timer is set,
  // or until maxMs of clock time have passed. True when it went idle.
  bool RunUntilIdle(uint64_t maxMs);
  bool HasPosted() const;
  void SetWakeHook(std::function<void()> hook);

  // Window registry (used by Window).
  HWND Register(Window* window);
  void Unregister(HWND hwnd);
  Window* Lookup(HWND hwnd) const;

 private:
  MessageLoop();
  struct Posted {
    HWND hwnd;
    UINT msg;
    WPARAM wParam;
    LPARAM lParam;
  };
  struct TimerKey {
    HWND hwnd;
    UINT_PTR id;
    bool operator<(const TimerKey& o) const { return hwnd != o.hwnd ? hwnd < o.hwnd : id < o.id; }
  };
  struct Timer {
    uint64_t due;
    uint64_t order;
    UINT period;
  };
  bool DispatchOnePosted();
  bool FireOneDueTimer();

  mutable std::mutex mutex_;
  std::deque<Posted> queue_;
  std::unordered_map<uintptr_t, Window*> windows_;
  uintptr_t nextHandle_ = 0x1000;
  std::map<TimerKey, Timer> timers_;
  uint64_t timerOrder_ = 0;
  Clock* clock_;
  std::function<void()> wake_;
};

}  // namespace plat
