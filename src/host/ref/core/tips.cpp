// The host's tip box: every tip is recorded for the reference host and handed
// to the sink it set (the console, a test). Callable from any thread.
#include <mutex>

#include "host/hostcore.h"
#include "host/ref/hostref.h"

namespace {

constexpr int kIdOk = 1;  // the tip box's only button

struct TipBox {
  std::mutex mutex;
  std::vector<hostref::Tip> tips;
  std::function<void(const hostref::Tip&)> sink;
};

TipBox& Box() {
  static TipBox box;
  return box;
}

}  // namespace

int ShowMsgTipEx(const std::string& text, const std::string& title, UINT flags) {
  hostref::Tip tip{text, title, flags};
  std::function<void(const hostref::Tip&)> sink;
  {
    std::lock_guard lock(Box().mutex);
    Box().tips.push_back(tip);
    sink = Box().sink;
  }
  // The sink runs without the lock, so it may show or record tips itself.
  if (sink) {
    try {
      sink(tip);
    } catch (...) {
    }
  }
  return kIdOk;
}

namespace hostref {

std::vector<Tip> Tips() {
  std::lock_guard lock(Box().mutex);
  return Box().tips;
}

void ClearTips() {
  std::lock_guard lock(Box().mutex);
  Box().tips.clear();
}

void SetTipSink(std::function<void(const Tip&)> sink) {
  std::lock_guard lock(Box().mutex);
  Box().sink = std::move(sink);
}

}  // namespace hostref
