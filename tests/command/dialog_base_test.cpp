// Dialog chrome: dragging the host window from a page, control colours, popup hit tests.
#include <gtest/gtest.h>

#include "command/dialog_base.h"
#include "platform/loop.h"

namespace {
using plat::ControlKind;

constexpr int kTemplate = 7100;
const plat::DialogTemplate kChild{kTemplate, "child", {200, 100},
                                  {{1, ControlKind::Static, "label"},
                                   {2, ControlKind::Edit, "", {}, plat::style::ReadOnly | plat::style::SystemColors},
                                   {3, ControlKind::Edit, ""}}};
const plat::templates::Registration kReg{kChild};

class DragTest : public ::testing::Test {
 protected:
  void SetUp() override {
    loop.SetClock(&clock);
    top.Create(nullptr, 0, "host", RECT{100, 100, 900, 700});
    child.CreateDlg(&top);
    child.MoveWindow({10, 10, 210, 110});
    child.ShowWindow(plat::SW_SHOW);
  }
  void TearDown() override {
    plat::screen::ClipCursor(nullptr);
    loop.SetClock(nullptr);
  }
  plat::MessageLoop& loop = plat::MessageLoop::Instance();
  plat::ManualClock clock{0xFFFFFFFFull - 20};  // the 32-bit tick wraps during the drag
  plat::Window top;
  CDlgChildBase child{kTemplate};
};

TEST_F(DragTest, MovesTheTopLevelWindowAtMost25TimesASecond) {
  plat::mouse::LButtonDown(child, {5, 5});
  EXPECT_EQ(plat::screen::GetCapture(), &child);
  ASSERT_NE(plat::screen::CursorClip(), nullptr) << "one monitor: the cursor is confined";
  plat::mouse::MoveTo(child, {15, 25});
  EXPECT_EQ(top.GetWindowRect(), (RECT{110, 120, 910, 720}));
  clock.Advance(39);  // crosses the wrap, still within 40 ms
  plat::mouse::MoveTo(child, {35, 45});
  EXPECT_EQ(top.GetWindowRect(), (RECT{110, 120, 910, 720}));
  clock.Advance(1);
  plat::mouse::MoveTo(child, {35, 45});
  EXPECT_EQ(top.GetWindowRect().left, 140);
  clock.Advance(40);
  plat::mouse::LButtonUp(child, {45, 45});
  EXPECT_EQ(top.GetWindowRect().left, 180);
  EXPECT_EQ(plat::screen::GetCapture(), nullptr);
  EXPECT_EQ(plat::screen::CursorClip(), nullptr);
  EXPECT_EQ(plat::Window::GetFocus(), &child);
}

TEST_F(DragTest, NothingMovesUnderAMaximisedParent) {
  top.SetZoomed(true);
  plat::mouse::LButtonDown(child, {5, 5});
  clock.Advance(100);
  plat::mouse::MoveTo(child, {50, 50});
  plat::mouse::LButtonUp(child, {50, 50});
  EXPECT_EQ(top.GetWindowRect(), (RECT{100, 100, 900, 700}));
}

TEST_F(DragTest, ThemeColoursStaticsButNotSystemColouredEdits) {
  EXPECT_FALSE(child.OnCtlColor(child.GetDlgItem(1)).framework);
  EXPECT_TRUE(child.OnCtlColor(child.GetDlgItem(1)).transparent);
  EXPECT_TRUE(child.OnCtlColor(child.GetDlgItem(2)).framework) << "read-only edit with system colours";
  EXPECT_TRUE(child.OnCtlColor(child.GetDlgItem(3)).framework) << "an ordinary edit";
  EXPECT_TRUE(child.OnCtlColor(&child).themeBrush);
}

TEST(Popup, FrameResizesAndBodyDrags) {
  CDlgPopupBase popup{kTemplate};
  ASSERT_TRUE(popup.CreateDlg(nullptr));
  popup.MoveWindow({0, 0, 200, 100});
  EXPECT_EQ(popup.TitleBar()->GetRect(), (RECT{1, 1, 199, 1 + plat::t(30)}));
  EXPECT_EQ(popup.BottomBar()->GetRect().top, 90);
  const LPARAM body = plat::LParamFromPoint({100, 50}), edge = plat::LParamFromPoint({2, 50});
  EXPECT_EQ(popup.SendMessage(WM_NCHITTEST, 0, edge), HTCAPTION) << "without a frame the edge drags too";
  popup.SetFrame(true);
  EXPECT_EQ(popup.SendMessage(WM_NCHITTEST, 0, edge), HTLEFT);
  EXPECT_EQ(popup.SendMessage(WM_NCHITTEST, 0, plat::LParamFromPoint({198, 98})), HTBOTTOMRIGHT);
  EXPECT_EQ(popup.SendMessage(WM_NCHITTEST, 0, body), HTCAPTION);
}

}  // namespace
