// Dialog chrome: dragging the host window from a page, control colours, popup bars and hit tests.
#include <gtest/gtest.h>

#include "command/dialog_base.h"
#include "lang/path_manager.h"
#include "platform/loop.h"

namespace {
using plat::ControlKind;
namespace style = plat::style;

constexpr int kTemplate = 7100;
enum : int { kLabel = 10, kFixedLabel, kFixedReadOnly, kReadOnly, kDisabled, kDisabledReadOnly, kEdit, kButton };
const plat::DialogTemplate kChild{kTemplate, "child", {200, 100},
                                  {{kLabel, ControlKind::Static, "label"},
                                   {kFixedLabel, ControlKind::Static, "", {}, style::SystemColors},
                                   {kFixedReadOnly, ControlKind::Edit, "", {}, style::ReadOnly | style::SystemColors},
                                   {kReadOnly, ControlKind::Edit, "", {}, style::ReadOnly},
                                   {kDisabled, ControlKind::Edit, "", {}, style::Disabled},
                                   {kDisabledReadOnly, ControlKind::Edit, "", {}, style::Disabled | style::ReadOnly},
                                   {kEdit, ControlKind::Edit, ""},
                                   {kButton, ControlKind::PushButton, ""}}};
const plat::templates::Registration kReg{kChild};
const RECT kHostRect{100, 100, 900, 700};

// A page inside a frame inside the host's top-level window.
class DragTest : public ::testing::Test {
 protected:
  void SetUp() override {
    loop.SetClock(&clock);
    plat::screen::SetMonitorCount(1);
    host.Create(nullptr, 0, "host", kHostRect);
    frame.Create(&host, 1, "frame", RECT{1, 30, 799, 590});
    ASSERT_TRUE(page.CreateDlg(&frame));
    page.MoveWindow({10, 10, 210, 110});
    page.ShowWindow(plat::SW_SHOW);
  }
  void TearDown() override {
    plat::screen::ClipCursor(nullptr);
    plat::screen::ReleaseCapture();
    plat::screen::SetMonitorCount(1);
    loop.SetClock(nullptr);
  }
  // Mouse actions at a screen point; they reach the page wherever it is now.
  void Down(POINT p) { plat::mouse::LButtonDown(page, page.ScreenToClient(p)); }
  void Move(POINT p, bool leftDown = true) { plat::mouse::MoveTo(page, page.ScreenToClient(p), leftDown); }
  void Up(POINT p) { plat::mouse::LButtonUp(page, page.ScreenToClient(p)); }
  POINT HostAt() const { return {host.GetWindowRect().left, host.GetWindowRect().top}; }

  plat::MessageLoop& loop = plat::MessageLoop::Instance();
  plat::ManualClock clock{1'000'000};
  plat::Window host, frame;
  CDlgChildBase page{kTemplate};
};

TEST_F(DragTest, MovesTheTopLevelWindowByTheCursorOffset) {
  Down({200, 200});
  EXPECT_EQ(plat::screen::GetCapture(), &page);
  Move({230, 250}, false);
  EXPECT_EQ(HostAt(), (POINT{100, 100})) << "moving without the button does not drag";
  Move({230, 250});
  EXPECT_EQ(host.GetWindowRect(), (RECT{130, 150, 930, 750}));
  EXPECT_EQ(frame.GetRect(), (RECT{1, 30, 799, 590})) << "the frame goes along inside the host";
  clock.Advance(40);
  Up({180, 190});
  EXPECT_EQ(HostAt(), (POINT{80, 90}));
  EXPECT_EQ(plat::screen::GetCapture(), nullptr);
  EXPECT_EQ(plat::Window::GetFocus(), &page);
}

TEST_F(DragTest, MovesLessThan40MsApartAreSkippedAcrossATickWrap) {
  for (const uint64_t start : {uint64_t{1'000'000}, uint64_t{0xFFFFFFFFull - 20}}) {
    SCOPED_TRACE(start);
    clock.Set(start);
    host.MoveWindow(kHostRect);
    Down({200, 200});
    Move({210, 200});
    EXPECT_EQ(HostAt().x, 110);
    clock.Advance(5);
    Move({220, 200});
    clock.Advance(34);  // 39 ms after the last move; the tick wrapped when starting near its top
    Move({230, 200});
    EXPECT_EQ(HostAt().x, 110);
    clock.Advance(1);
    Move({240, 200});
    EXPECT_EQ(HostAt().x, 140);
    Up({250, 200});
    EXPECT_EQ(HostAt().x, 140) << "the button-up keeps the same pace";
    EXPECT_EQ(plat::screen::GetCapture(), nullptr) << "but the drag ends";
    clock.Advance(100);
  }
}

TEST_F(DragTest, NothingMovesUnderAMaximisedParent) {
  frame.SetZoomed(true);
  Down({200, 200});
  EXPECT_EQ(plat::screen::GetCapture(), nullptr);
  Move({300, 300});
  Up({300, 300});
  EXPECT_EQ(host.GetWindowRect(), kHostRect);
}

TEST_F(DragTest, OneMonitorConfinesTheCursorUntilTheButtonIsUp) {
  plat::screen::SetMaximizedSize({1280, 1000});
  for (const int monitors : {1, 2}) {
    plat::screen::SetMonitorCount(monitors);
    Down({200, 200});
    const RECT* clip = plat::screen::CursorClip();
    if (monitors == 1) {
      ASSERT_NE(clip, nullptr);
      EXPECT_EQ(*clip, (RECT{0, 0, 1280, 1000}));
    } else {
      EXPECT_EQ(clip, nullptr) << "two monitors leave the cursor free";
    }
    Up({200, 200});
    EXPECT_EQ(plat::screen::CursorClip(), nullptr);
  }
  plat::screen::SetMaximizedSize({1920, 1040});
}

TEST_F(DragTest, ThemeColoursStaticsDisabledEditsAndTheDialogOnly) {
  CPathManager& theme = CPathManager::Instance();
  const CtlColorAnswer themed{false, true, theme.Color("m_dwRGBTextColor"), theme.Color("m_dwRGBDlgPopupBaseBK"), true};
  const CtlColorAnswer framework{};
  struct Case {
    const char* what;
    int id;
    CtlColorAnswer answer;
  };
  const Case cases[] = {{"static", kLabel, themed},
                        {"static with the system-colour bit", kFixedLabel, framework},
                        {"read-only edit with the system-colour bit", kFixedReadOnly, framework},
                        {"read-only edit", kReadOnly, framework},
                        {"disabled edit", kDisabled, themed},
                        {"disabled read-only edit", kDisabledReadOnly, framework},
                        {"edit", kEdit, framework},
                        {"button", kButton, framework}};
  for (const Case& c : cases) EXPECT_EQ(page.OnCtlColor(page.GetDlgItem(c.id)), c.answer) << c.what;
  const CtlColorAnswer dialog{false, false, 0, theme.Color("m_dwRGBDlgPopupBaseBK"), true};
  EXPECT_EQ(page.OnCtlColor(&page), dialog);
}

TEST(Popup, BarsFollowTheSizeAndTheFrame) {
  CDlgPopupBase popup{kTemplate};
  ASSERT_TRUE(popup.CreateDlg(nullptr));
  const int title = plat::t(CDlgPopupBase::kTitleHeight);
  EXPECT_EQ(popup.TitleBar()->GetRect(), (RECT{1, 1, 199, 1 + title}));
  EXPECT_EQ(popup.BottomBar()->GetRect(), (RECT{1, 90, 199, 100}));
  popup.SetFrame(true);
  popup.MoveWindow({50, 50, 350, 250});
  EXPECT_EQ(popup.TitleBar()->GetRect(), (RECT{3, 3, 297, 3 + title}));
  EXPECT_EQ(popup.BottomBar()->GetRect(), (RECT{3, 190, 297, 200}));
}

TEST(Popup, FrameResizesAndTheBodyDrags) {
  CDlgPopupBase popup{kTemplate};
  ASSERT_TRUE(popup.CreateDlg(nullptr));
  popup.MoveWindow({100, 100, 300, 200});
  struct Case {
    bool frame;
    POINT at;
    int hit;
  };
  const Case cases[] = {{false, {101, 150}, HTCAPTION}, {false, {200, 150}, HTCAPTION},
                        {true, {105, 150}, HTLEFT},     {true, {106, 150}, HTCAPTION},
                        {true, {294, 150}, HTRIGHT},    {true, {200, 101}, HTTOP},
                        {true, {200, 199}, HTBOTTOM},   {true, {101, 101}, HTTOPLEFT},
                        {true, {299, 105}, HTTOPRIGHT}, {true, {102, 198}, HTBOTTOMLEFT},
                        {true, {295, 195}, HTBOTTOMRIGHT}, {true, {200, 150}, HTCAPTION}};
  for (const Case& c : cases) {
    popup.SetFrame(c.frame);
    EXPECT_EQ(popup.SendMessage(WM_NCHITTEST, 0, plat::LParamFromPoint(c.at)), c.hit)
        << "frame " << c.frame << " at " << c.at.x << "," << c.at.y;
  }
}

}  // namespace
