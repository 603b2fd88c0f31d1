#include "loop_driver.h"

#include <algorithm>

#include "platform/loop.h"

namespace {
// The longest wait between two pumps, so a timer set on another clock is never lost for long.
constexpr uint64_t kMaxWaitMs = 1000;
}  // namespace

LoopDriver::LoopDriver(QObject* parent) : QObject(parent) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &LoopDriver::Pump);
  plat::MessageLoop::Instance().SetWakeHook([this] { Wake(); });
}

LoopDriver::~LoopDriver() { plat::MessageLoop::Instance().SetWakeHook(nullptr); }

void LoopDriver::Wake() {
  if (scheduled_.exchange(true)) return;
  QMetaObject::invokeMethod(this, &LoopDriver::Pump, Qt::QueuedConnection);
}

void LoopDriver::Pump() {
  scheduled_ = false;
  ++pumps_;
  auto& loop = plat::MessageLoop::Instance();
  loop.RunPending();
  if (after_) after_();
  if (const auto due = loop.NextTimerDue()) {
    const uint64_t now = loop.GetClock().NowMs();
    const uint64_t wait = *due > now ? std::min(*due - now, kMaxWaitMs) : 0;
    timer_.start(static_cast<int>(wait));
  } else {
    timer_.stop();
  }
}
