// The dialog chrome: theme colours for statics and dialog backgrounds, dragging
// the host's top-level window from an empty spot of a child dialog, and the
// popup's title bar, bottom bar and frame hit testing.
#include "command/dialog_base.h"

#include "lang/language.h"
#include "lang/path_manager.h"
#include "platform/clock.h"

namespace {
// Theme keys: the text colour of statics and the background of dialogs.
constexpr const char* kThemeText = "m_dwRGBTextColor";
constexpr const char* kThemeBackground = "m_dwRGBDlgPopupBaseBK";

// Title bar insets: at creation and without a frame, and with the frame flag.
constexpr int kBarInset = 1;
constexpr int kFramedBarInset = 3;
constexpr int kFramedBarDrop = 2;

// Controls that ask for their colours the way static texts do: statics,
// and edit boxes that are read-only or disabled.
bool AsksLikeStatic(const plat::Control& control) {
  switch (control.Kind()) {
    case plat::ControlKind::Static:
    case plat::ControlKind::GroupBox:
      return true;
    case plat::ControlKind::Edit:
      return (control.Style() & plat::style::ReadOnly) || !control.IsWindowEnabled();
    default:
      return false;
  }
}

// One style bit leaves a control that asks like a static to the framework:
// read-only on an edit box (so only a disabled edit takes the theme), the
// system-colour bit on a static.
bool KeepsSystemColors(const plat::Control& control) {
  const uint32_t bit = control.Kind() == plat::ControlKind::Edit ? plat::style::ReadOnly : plat::style::SystemColors;
  return (control.Style() & bit) != 0;
}

// The resizing answer for a point near the frame of r, or 0 in the body.
int FrameHit(const RECT& r, POINT p, int margin) {
  static constexpr int kHits[3][3] = {{HTTOPLEFT, HTTOP, HTTOPRIGHT},
                                      {HTLEFT, 0, HTRIGHT},
                                      {HTBOTTOMLEFT, HTBOTTOM, HTBOTTOMRIGHT}};
  const int column = p.x < r.left + margin ? 0 : p.x >= r.right - margin ? 2 : 1;
  const int row = p.y < r.top + margin ? 0 : p.y >= r.bottom - margin ? 2 : 1;
  return kHits[row][column];
}
}  // namespace

// ---- CDialogBase --------------------------------------------------------------

BOOL CDialogBase::OnInitDialog() {
  if (const plat::DialogTemplate* dialog = plat::templates::Find(TemplateId())) {
    for (const plat::ControlEntry& entry : dialog->controls) {
      if (entry.textId != 0) SetItemText(entry.id, LanguageText(entry.textId));
    }
  }
  return plat::Dialog::OnInitDialog();
}

CtlColorAnswer CDialogBase::OnCtlColor(plat::Window* control) {
  CPathManager& theme = CPathManager::Instance();
  CtlColorAnswer answer;
  if (control == this) {
    answer.framework = false;
    answer.background = theme.Color(kThemeBackground);
    answer.themeBrush = true;
    return answer;
  }
  const auto* c = dynamic_cast<const plat::Control*>(control);
  if (!c || !AsksLikeStatic(*c) || KeepsSystemColors(*c)) return answer;
  answer.framework = false;
  answer.transparent = true;
  answer.text = theme.Color(kThemeText);
  answer.background = theme.Color(kThemeBackground);
  answer.themeBrush = true;
  return answer;
}

// ---- CDlgChildBase: dragging the host's window --------------------------------

void CDlgChildBase::OnMouse(UINT message, UINT flags, POINT) {
  switch (message) {
    case WM_LBUTTONDOWN: {
      if (dragging_ || (GetParent() && GetParent()->IsZoomed())) return;
      plat::screen::SetCapture(this);
      dragging_ = TRUE;
      dragStart_ = plat::screen::GetCursorPos();
      if (plat::screen::MonitorCount() < 2) {
        const SIZE max = plat::screen::MaximizedSize();
        const RECT clip{0, 0, max.cx, max.cy};
        plat::screen::ClipCursor(&clip);
      }
      dragged_ = GetTopLevel();
      windowStart_ = dragged_->GetWindowRect();
      return;
    }
    case WM_MOUSEMOVE:
      // Only the left button held: a drag with another button or key does not move.
      if (dragging_ && flags == plat::MK_LBUTTON) MoveDragged();
      return;
    case WM_LBUTTONUP:
      if (!dragging_) return;
      MoveDragged();
      dragging_ = FALSE;
      plat::screen::ReleaseCapture();
      plat::screen::ClipCursor(nullptr);
      SetFocus();
      return;
    default:
      return;
  }
}

void CDlgChildBase::MoveDragged() {
  const DWORD now = plat::GetTickCount();
  // Unsigned difference: right across a wrap of the 32-bit tick counter.
  if (static_cast<DWORD>(now - lastMove_) < kDragIntervalMs || !dragged_) return;
  const POINT cursor = plat::screen::GetCursorPos();
  const int dx = cursor.x - dragStart_.x, dy = cursor.y - dragStart_.y;
  dragged_->MoveWindow(
      {windowStart_.left + dx, windowStart_.top + dy, windowStart_.right + dx, windowStart_.bottom + dy});
  lastMove_ = now;
}

// ---- CDlgPopupBase: title bar, bottom bar, hit testing -------------------------

int CDlgPopupBase::TitleBarHeight() const { return hasTitle_ ? plat::t(kTitleHeight) : 0; }

BOOL CDlgPopupBase::OnInitDialog() {
  titleBar_ = std::make_unique<plat::Window>();
  bottomBar_ = std::make_unique<plat::Window>();
  titleBar_->Create(this, 0, GetWindowText(), RECT{});
  bottomBar_->Create(this, 0, "", RECT{});
  PlaceBars(kBarInset, 0);
  return CDialogBase::OnInitDialog();
}

void CDlgPopupBase::OnSize() {
  if (!titleBar_ || !bottomBar_) return;
  if (frame_) {
    PlaceBars(kFramedBarInset, kFramedBarDrop);
  } else {
    PlaceBars(kBarInset, 0);
  }
}

void CDlgPopupBase::PlaceBars(int inset, int drop) {
  const RECT client = GetClientRect();
  const int top = client.top + kBarInset + drop;
  titleBar_->MoveWindow({client.left + inset, top, client.right - inset, top + TitleBarHeight()});
  bottomBar_->MoveWindow({client.left + inset, client.bottom - kBottomBarHeight, client.right - inset, client.bottom});
}

int CDlgPopupBase::OnNcHitTest(POINT screenPoint) {
  const int hit = CDialogBase::OnNcHitTest(screenPoint);
  const RECT r = GetWindowRect();
  if (hit != HTCLIENT || !r.Contains(screenPoint)) return hit;
  if (frame_) {
    if (const int edge = FrameHit(r, screenPoint, kResizeMargin)) return edge;
  }
  // The body counts as the caption, so dragging anywhere moves the popup.
  return HTCAPTION;
}

void CDlgPopupBase::OnDestroy() {
  if (titleBar_) titleBar_->DestroyWindow();
  if (bottomBar_) bottomBar_->DestroyWindow();
  titleBar_.reset();
  bottomBar_.reset();
  CDialogBase::OnDestroy();
}
