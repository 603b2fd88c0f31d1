#include "command/dialog_base.h"

#include "lang/path_manager.h"
#include "platform/clock.h"

namespace {
constexpr const char* kThemeText = "m_dwRGBTextColor";
constexpr const char* kThemeBackground = "m_dwRGBDlgPopupBaseBK";

bool IsStaticLike(const plat::Control& control) {
  switch (control.Kind()) {
    case plat::ControlKind::Static:
    case plat::ControlKind::GroupBox:
      return true;
    case plat::ControlKind::Edit:
      // Read-only and disabled edits ask for their colours the way statics do.
      return (control.Style() & plat::style::ReadOnly) || !control.IsWindowEnabled();
    default:
      return false;
  }
}
}  // namespace

// ---- CDialogBase --------------------------------------------------------------

CtlColorAnswer CDialogBase::OnCtlColor(plat::Window* control) {
  CtlColorAnswer themed{false, true, CPathManager::Instance().Color(kThemeText),
                        CPathManager::Instance().Color(kThemeBackground), true};
  if (control == this) {
    CtlColorAnswer dialog;
    dialog.framework = false;
    dialog.themeBrush = true;
    dialog.background = themed.background;
    return dialog;
  }
  const auto* c = dynamic_cast<const plat::Control*>(control);
  if (!c || !IsStaticLike(*c) || (c->Style() & plat::style::SystemColors)) return CtlColorAnswer{};
  return themed;
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
      lastMove_ = plat::GetTickCount() - kDragIntervalMs;
      return;
    }
    case WM_MOUSEMOVE:
      if (dragging_ && (flags & plat::MK_LBUTTON)) MoveDragged();
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
  // Unsigned difference: right across a wrap of the tick counter.
  if (static_cast<DWORD>(now - lastMove_) < kDragIntervalMs || !dragged_) return;
  const POINT cursor = plat::screen::GetCursorPos();
  const int dx = cursor.x - dragStart_.x, dy = cursor.y - dragStart_.y;
  dragged_->MoveWindow({windowStart_.left + dx, windowStart_.top + dy, windowStart_.right + dx, windowStart_.bottom + dy});
  lastMove_ = now;
}

// ---- CDlgPopupBase: title bar, bottom bar, hit testing -------------------------

int CDlgPopupBase::TitleBarHeight() const { return hasTitle_ ? plat::t(kTitleHeight) : 0; }

BOOL CDlgPopupBase::OnInitDialog() {
  titleBar_ = std::make_unique<plat::Window>();
  bottomBar_ = std::make_unique<plat::Window>();
  titleBar_->Create(this, 0, GetWindowText(), RECT{}, true);
  bottomBar_->Create(this, 0, "", RECT{}, true);
  LayoutBars();
  return CDialogBase::OnInitDialog();
}

void CDlgPopupBase::OnSize() { LayoutBars(); }

void CDlgPopupBase::LayoutBars() {
  if (!titleBar_ || !bottomBar_) return;
  const RECT client = GetClientRect();
  const int inset = frame_ ? 3 : 1, drop = frame_ ? 2 : 0;
  titleBar_->MoveWindow({client.left + inset, client.top + 1 + drop, client.right - inset,
                         client.top + 1 + drop + TitleBarHeight()});
  bottomBar_->MoveWindow({client.left + inset, client.bottom - kBottomBarHeight, client.right - inset, client.bottom});
}

int CDlgPopupBase::OnNcHitTest(POINT screenPoint) {
  const RECT r = GetWindowRect();
  if (frame_) {
    const bool left = screenPoint.x < r.left + kResizeMargin, right = screenPoint.x >= r.right - kResizeMargin;
    const bool top = screenPoint.y < r.top + kResizeMargin, bottom = screenPoint.y >= r.bottom - kResizeMargin;
    if (top && left) return HTTOPLEFT;
    if (top && right) return HTTOPRIGHT;
    if (bottom && left) return HTBOTTOMLEFT;
    if (bottom && right) return HTBOTTOMRIGHT;
    if (left) return HTLEFT;
    if (right) return HTRIGHT;
    if (top) return HTTOP;
    if (bottom) return HTBOTTOM;
  }
  return r.Contains(screenPoint) ? HTCAPTION : HTCLIENT;
}

void CDlgPopupBase::OnDestroy() {
  titleBar_.reset();
  bottomBar_.reset();
  CDialogBase::OnDestroy();
}
