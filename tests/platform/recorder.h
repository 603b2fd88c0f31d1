// A window for tests that keeps what reaches it: each message with the loop
// clock's time, and the item notifications of its controls.
#pragma once

#include <functional>
#include <vector>

#include "platform/loop.h"
#include "platform/window.h"

struct Seen {
  UINT msg;
  WPARAM wParam;
  uint64_t at;
  bool operator==(const Seen&) const = default;
};

class Recorder : public plat::Window {
 public:
  // Answers a message with wParam + 1, so a test sees that Send returns the handler's result.
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override {
    seen.push_back({msg, wParam, plat::MessageLoop::Instance().GetClock().NowMs()});
    if (msg == WM_NOTIFY) notes.push_back(*reinterpret_cast<const plat::NMITEM*>(lParam));
    if (onMessage) onMessage(msg);
    return static_cast<LRESULT>(wParam + 1);
  }
  std::vector<Seen> seen;
  std::vector<plat::NMITEM> notes;
  std::function<void(UINT)> onMessage;
};
