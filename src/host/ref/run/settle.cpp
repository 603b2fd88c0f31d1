#include "host/ref/run/settle.h"

#include "host/ref/hostref.h"
#include "platform/loop.h"

namespace hostref {
namespace {
// Lets the network answer what it has, then handles the posted answers; a
// handled answer may have sent the next request (the alarm pages work so).
void Drain() {
  auto& loop = plat::MessageLoop::Instance();
  do {
    net::WaitIdle();
    loop.RunPending();
  } while (loop.HasPosted() || !net::Idle());
}
}  // namespace

bool RunUntilSettled(uint64_t maxMs) {
  auto& loop = plat::MessageLoop::Instance();
  auto* clock = dynamic_cast<plat::ManualClock*>(&loop.GetClock());
  if (!clock) return false;
  const uint64_t end = clock->NowMs() + maxMs;
  for (;;) {
    Drain();
    auto due = loop.NextTimerDue();
    if (!due) return true;
    if (*due > end) return false;
    if (*due > clock->NowMs()) clock->Set(*due);
  }
}

void RunFor(uint64_t ms) {
  auto& loop = plat::MessageLoop::Instance();
  auto* clock = dynamic_cast<plat::ManualClock*>(&loop.GetClock());
  if (!clock) return;
  const uint64_t end = clock->NowMs() + ms;
  for (;;) {
    Drain();
    auto due = loop.NextTimerDue();
    if (!due || *due > end) break;
    if (*due > clock->NowMs()) clock->Set(*due);
  }
  if (clock->NowMs() < end) clock->Set(end);  // time never goes back
  Drain();
}
}  // namespace hostref
