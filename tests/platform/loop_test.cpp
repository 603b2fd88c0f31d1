// The UI loop: posting across threads, destroyed windows, timers on a manual clock.
#include <gtest/gtest.h>

#include <thread>

#include "platform/loop.h"
#include "platform/window.h"

namespace {

class Recorder : public plat::Window {
 public:
  LRESULT WindowProc(UINT msg, WPARAM w, LPARAM) override {
    if (msg == WM_TIMER) timers.push_back({static_cast<UINT_PTR>(w), clock->NowMs()});
    else messages.push_back(msg);
    return static_cast<LRESULT>(w + 1);
  }
  plat::ManualClock* clock = nullptr;
  std::vector<UINT> messages;
  std::vector<std::pair<UINT_PTR, uint64_t>> timers;
};

class LoopTest : public ::testing::Test {
 protected:
  void SetUp() override {
    loop.SetClock(&clock);
    window.clock = &clock;
    window.Create(nullptr, 0, "w", RECT{0, 0, 10, 10});
  }
  void TearDown() override { loop.SetClock(nullptr); }
  plat::MessageLoop& loop = plat::MessageLoop::Instance();
  plat::ManualClock clock{100};
  Recorder window;
};

TEST_F(LoopTest, PostFromAnotherThreadAndToDestroyedWindows) {
  std::thread([&] { EXPECT_TRUE(window.PostMessage(2000)); }).join();
  EXPECT_EQ(window.SendMessage(2001, 41), 42) << "send runs the handler at once";
  EXPECT_EQ(loop.RunPending(), 1u);
  EXPECT_EQ(window.messages, (std::vector<UINT>{2001, 2000}));

  const HWND hwnd = window.GetSafeHwnd();
  window.PostMessage(2002);
  window.DestroyWindow();
  EXPECT_FALSE(loop.Post(hwnd, 2003, 0, 0));
  loop.RunPending();
  EXPECT_EQ(window.messages.size(), 2u) << "a message queued for a destroyed window is dropped";
}

TEST_F(LoopTest, TimersRepeatRestartAndKeepOrder) {
  window.SetTimer(6700, 1000);
  window.SetTimer(6701, 1000);
  loop.RunFor(999);
  EXPECT_TRUE(window.timers.empty());
  loop.RunFor(1);
  ASSERT_EQ(window.timers.size(), 2u);
  EXPECT_EQ(window.timers[0].first, 6700u) << "equal due times fire in the order they were set";
  window.SetTimer(6700, 500);  // restart with another period
  window.KillTimer(6701);
  loop.RunFor(1200);
  EXPECT_EQ(window.timers.size(), 4u);
  EXPECT_EQ(window.timers[3].second, 100u + 1000 + 1000);
  EXPECT_FALSE(loop.RunUntilIdle(5000)) << "a repeating timer never goes idle";
  window.KillTimer(6700);
  EXPECT_TRUE(loop.RunUntilIdle(5000));
}

TEST(Scaling, HorizontalAndVertical) {
  const int cases[][3] = {{96, 300, 300}, {120, 300, 375}, {144, 22, 33}};
  for (const auto& c : cases) {
    plat::SetDpi(c[0]);
    EXPECT_EQ(plat::s(c[1]), c[2]) << c[0];
    EXPECT_EQ(plat::t(c[1]), (c[1] + c[2]) / 2) << c[0];
  }
  plat::SetDpi(96);
}

}  // namespace
