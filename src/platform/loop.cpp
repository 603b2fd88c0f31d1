#include "platform/loop.h"

#include <algorithm>

#include "platform/window.h"

namespace plat {

namespace {
// The shortest timer period, as on the system the pages were made for.
constexpr UINT kMinTimerPeriodMs = 10;
SteadyClock g_steadyClock;
}  // namespace

MessageLoop::MessageLoop() : clock_(&g_steadyClock) {}

MessageLoop& MessageLoop::Instance() {
  // Never destroyed: windows that outlive static destruction may still unregister.
  static auto* loop = new MessageLoop;
  return *loop;
}

void MessageLoop::SetClock(Clock* clock) { clock_ = clock ? clock : &g_steadyClock; }
Clock& MessageLoop::GetClock() const { return *clock_; }

bool MessageLoop::Post(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  std::function<void()> wake;
  {
    std::lock_guard lock(mutex_);
    if (!windows_.count(reinterpret_cast<uintptr_t>(hwnd))) return false;
    queue_.push_back({hwnd, msg, wParam, lParam});
    wake = wake_;
  }
  if (wake) wake();
  return true;
}

void MessageLoop::SetWakeHook(std::function<void()> hook) {
  std::lock_guard lock(mutex_);
  wake_ = std::move(hook);
}

LRESULT MessageLoop::Send(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  Window* window = Lookup(hwnd);
  return window ? window->WindowProc(msg, wParam, lParam) : 0;
}

void MessageLoop::SetTimer(HWND hwnd, UINT_PTR id, UINT periodMs) {
  periodMs = std::max(periodMs, kMinTimerPeriodMs);
  std::function<void()> wake;
  {
    std::lock_guard lock(mutex_);
    timers_[{hwnd, id}] = Timer{clock_->NowMs() + periodMs, timerOrder_++, periodMs};
    wake = wake_;
  }
  if (wake) wake();
}

bool MessageLoop::KillTimer(HWND hwnd, UINT_PTR id) {
  std::lock_guard lock(mutex_);
  return timers_.erase({hwnd, id}) > 0;
}

bool MessageLoop::HasTimer(HWND hwnd, UINT_PTR id) const {
  std::lock_guard lock(mutex_);
  return timers_.count({hwnd, id}) > 0;
}

std::optional<uint64_t> MessageLoop::NextTimerDue() const {
  std::lock_guard lock(mutex_);
  std::optional<uint64_t> due;
  for (const auto& [key, timer] : timers_) {
    if (!due || timer.due < *due) due = timer.due;
  }
  return due;
}

bool MessageLoop::HasPosted() const {
  std::lock_guard lock(mutex_);
  return !queue_.empty();
}

bool MessageLoop::DispatchOnePosted() {
  Posted message;
  {
    std::lock_guard lock(mutex_);
    if (queue_.empty()) return false;
    message = queue_.front();
    queue_.pop_front();
  }
  // Windows are destroyed only on this thread, so the lookup stays valid for the call.
  if (Window* window = Lookup(message.hwnd)) window->WindowProc(message.msg, message.wParam, message.lParam);
  return true;
}

bool MessageLoop::FireOneDueTimer() {
  HWND hwnd = nullptr;
  UINT_PTR id = 0;
  {
    std::lock_guard lock(mutex_);
    const uint64_t now = clock_->NowMs();
    auto best = timers_.end();
    for (auto it = timers_.begin(); it != timers_.end(); ++it) {
      if (it->second.due > now) continue;
      if (best == timers_.end() || it->second.due < best->second.due ||
          (it->second.due == best->second.due && it->second.order < best->second.order)) {
        best = it;
      }
    }
    if (best == timers_.end()) return false;
    hwnd = best->first.hwnd;
    id = best->first.id;
    best->second.due = now + best->second.period;
    best->second.order = timerOrder_++;
  }
  if (Window* window = Lookup(hwnd)) window->WindowProc(WM_TIMER, id, 0);
  return true;
}

size_t MessageLoop::RunPending() {
  size_t handled = 0;
  for (;;) {
    if (DispatchOnePosted()) {
      ++handled;
      continue;
    }
    if (FireOneDueTimer()) {
      ++handled;
      continue;
    }
    return handled;
  }
}

size_t MessageLoop::RunFor(uint64_t ms) {
  auto* manual = dynamic_cast<ManualClock*>(clock_);
  size_t handled = RunPending();
  if (!manual) return handled;
  const uint64_t end = manual->NowMs() + ms;
  for (;;) {
    auto due = NextTimerDue();
    if (!due || *due > end) break;
    if (*due > manual->NowMs()) manual->Set(*due);
    handled += RunPending();
  }
  // A handler may have run the clock on (a nested wait); time never goes back.
  if (manual->NowMs() < end) manual->Set(end);
  return handled + RunPending();
}

bool MessageLoop::RunUntilIdle(uint64_t maxMs) {
  auto* manual = dynamic_cast<ManualClock*>(clock_);
  if (!manual) return false;
  const uint64_t end = manual->NowMs() + maxMs;
  for (;;) {
    RunPending();
    auto due = NextTimerDue();
    if (!due) return !HasPosted();
    if (*due > end) return false;
    if (*due > manual->NowMs()) manual->Set(*due);
  }
}

HWND MessageLoop::Register(Window* window) {
  std::lock_guard lock(mutex_);
  const uintptr_t handle = nextHandle_++;
  windows_[handle] = window;
  return reinterpret_cast<HWND>(handle);
}

void MessageLoop::Unregister(HWND hwnd) {
  std::lock_guard lock(mutex_);
  windows_.erase(reinterpret_cast<uintptr_t>(hwnd));
  for (auto it = timers_.begin(); it != timers_.end();) {
    it = it->first.hwnd == hwnd ? timers_.erase(it) : std::next(it);
  }
}

Window* MessageLoop::Lookup(HWND hwnd) const {
  std::lock_guard lock(mutex_);
  auto it = windows_.find(reinterpret_cast<uintptr_t>(hwnd));
  return it == windows_.end() ? nullptr : it->second;
}

}  // namespace plat
