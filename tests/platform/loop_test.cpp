// The UI loop: posting across threads, destroyed windows, Send, timers on a
// manual clock, RunFor and RunUntilIdle, screen scaling.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "platform/loop.h"
#include "platform/window.h"
#include "recorder.h"

namespace {

constexpr uint64_t kStart = 5000;
constexpr UINT kPing = WM_USER + 1;
constexpr UINT_PTR kSend = 6700, kWait = 6701;

class LoopTest : public ::testing::Test {
 protected:
  void SetUp() override {
    loop.SetClock(&clock);
    ASSERT_TRUE(window.Create(nullptr, 0, "w", RECT{0, 0, 10, 10}));
  }
  void TearDown() override {
    window.DestroyWindow();
    loop.SetClock(nullptr);
  }
  // The timers that fired, as (id, time).
  std::vector<std::pair<UINT_PTR, uint64_t>> Fired() const {
    std::vector<std::pair<UINT_PTR, uint64_t>> fired;
    for (const Seen& s : window.seen) {
      if (s.msg == WM_TIMER) fired.emplace_back(s.wParam, s.at);
    }
    return fired;
  }
  plat::MessageLoop& loop = plat::MessageLoop::Instance();
  plat::ManualClock clock{kStart};
  Recorder window;
};

TEST_F(LoopTest, PostFromAnotherThreadWaitsForTheLoop) {
  std::thread([&] { EXPECT_TRUE(loop.Post(window.GetSafeHwnd(), kPing, 7, 0)); }).join();
  EXPECT_TRUE(window.seen.empty());
  EXPECT_EQ(loop.RunPending(), 1u);
  EXPECT_EQ(window.seen, (std::vector<Seen>{{kPing, 7, kStart}}));
}

TEST_F(LoopTest, WakeHookHearsPostsFromAnyThreadAndNewTimers) {
  std::atomic<int> wakes{0};
  loop.SetWakeHook([&] { ++wakes; });
  std::thread([&] { loop.Post(window.GetSafeHwnd(), kPing, 1, 0); }).join();
  EXPECT_EQ(wakes, 1) << "a post from a network thread wakes the loop";
  window.SetTimer(kSend, 100);
  EXPECT_EQ(wakes, 2) << "a new timer may be due before the loop's next wait ends";
  const HWND gone = reinterpret_cast<HWND>(uintptr_t{1});
  EXPECT_FALSE(loop.Post(gone, kPing, 0, 0));
  EXPECT_EQ(wakes, 2) << "a refused post wakes nobody";
  loop.SetWakeHook(nullptr);
  window.PostMessage(kPing);
  EXPECT_EQ(wakes, 2);
  loop.RunPending();
}

TEST_F(LoopTest, SendRunsTheHandlerAtOnce) {
  window.PostMessage(kPing, 1);
  EXPECT_EQ(window.SendMessage(kPing, 41), 42);
  EXPECT_EQ(window.seen.size(), 1u) << "the posted message still waits";
  loop.RunPending();
  EXPECT_EQ(window.seen.back().wParam, 1u);
}

TEST_F(LoopTest, DestroyedWindowsGetNothing) {
  const HWND hwnd = window.GetSafeHwnd();
  window.PostMessage(kPing);
  window.SetTimer(kSend, 100);
  window.DestroyWindow();
  EXPECT_FALSE(loop.Post(hwnd, kPing, 0, 0));
  EXPECT_EQ(loop.Send(hwnd, kPing, 0, 0), 0);
  EXPECT_FALSE(loop.HasTimer(hwnd, kSend));
  loop.RunFor(1000);
  EXPECT_TRUE(window.seen.empty()) << "a message queued before the window went is dropped";
}

TEST_F(LoopTest, TimersRepeatRestartStopAndKeepTheirOrder) {
  window.SetTimer(kSend, 1000);
  loop.RunFor(999);
  EXPECT_TRUE(Fired().empty());
  loop.RunFor(1001);
  EXPECT_EQ(Fired(), (decltype(Fired()){{kSend, kStart + 1000}, {kSend, kStart + 2000}}));

  window.SetTimer(kSend, 300);  // restarts from now with the new period
  loop.RunFor(600);
  EXPECT_EQ(Fired().back(), std::make_pair(kSend, kStart + 2600));
  EXPECT_TRUE(window.KillTimer(kSend));
  EXPECT_FALSE(window.KillTimer(kSend));
  const size_t before = Fired().size();
  loop.RunFor(5000);
  EXPECT_EQ(Fired().size(), before);

  // Due together: the one set first fires first, whatever the ids.
  window.seen.clear();
  window.SetTimer(kWait, 500);
  window.SetTimer(kSend, 500);
  loop.RunFor(1000);
  EXPECT_EQ(Fired(), (decltype(Fired()){{kWait, kStart + 8100},
                                        {kSend, kStart + 8100},
                                        {kWait, kStart + 8600},
                                        {kSend, kStart + 8600}}));
  window.KillTimer(kWait), window.KillTimer(kSend);
}

TEST_F(LoopTest, RunForAndRunUntilIdle) {
  window.PostMessage(kPing);
  loop.RunFor(250);
  EXPECT_EQ(window.seen.size(), 1u) << "posted messages run too";
  EXPECT_EQ(clock.NowMs(), kStart + 250);

  // A one-shot timer (killed by its handler) lets the loop go idle at its due time.
  window.onMessage = [&](UINT msg) {
    if (msg == WM_TIMER) window.KillTimer(kWait);
  };
  window.SetTimer(kWait, 700);
  EXPECT_TRUE(loop.RunUntilIdle(1000));
  EXPECT_EQ(clock.NowMs(), kStart + 950);

  window.onMessage = nullptr;
  window.SetTimer(kSend, 500);
  EXPECT_FALSE(loop.RunUntilIdle(1200)) << "a repeating timer never goes idle";
  EXPECT_EQ(clock.NowMs(), kStart + 1950);
  window.KillTimer(kSend);

  // A handler that runs time on (a nested wait inside it) is never undone.
  window.onMessage = [&](UINT msg) {
    if (msg == WM_TIMER) window.KillTimer(kWait), clock.Advance(3000);
  };
  window.SetTimer(kWait, 50);
  loop.RunFor(100);
  EXPECT_EQ(clock.NowMs(), kStart + 5000);
}

TEST(Scaling, HorizontalAndVertical) {
  struct Case {
    int dpi, n, s, t;
  };
  const Case cases[] = {{72, 30, 30, 30}, {96, 30, 30, 30}, {120, 300, 375, 337}, {144, 22, 33, 27}};
  for (const Case& c : cases) {
    plat::SetDpi(c.dpi);
    EXPECT_EQ(plat::s(c.n), c.s) << c.dpi << " dpi";
    EXPECT_EQ(plat::t(c.n), c.t) << c.dpi << " dpi";
  }
  plat::SetDpi(96);
}

}  // namespace
