#include "platform/window.h"

#include <algorithm>

#include "platform/loop.h"

namespace plat {

namespace {
Window* g_focus = nullptr;
ChangeObserver g_changeObserver;

void Tell(Window& window, Change change) {
  if (g_changeObserver) g_changeObserver(window, change);
}
}  // namespace

void SetChangeObserver(ChangeObserver observer) { g_changeObserver = std::move(observer); }

void Window::NotifyChanged() {
  if (hwnd_) Tell(*this, Change::Changed);
}

POINT PointFromLParam(LPARAM lParam) {
  return {static_cast<int16_t>(lParam & 0xFFFF), static_cast<int16_t>((lParam >> 16) & 0xFFFF)};
}

LPARAM LParamFromPoint(POINT p) { return static_cast<LPARAM>((p.x & 0xFFFF) | ((p.y & 0xFFFF) << 16)); }

Window::~Window() { DestroyWindow(); }

bool Window::Create(Window* parent, int id, const std::string& caption, const RECT& rect, bool visible) {
  if (hwnd_) return false;
  if (parent && !parent->IsWindow()) return false;
  parent_ = parent;
  id_ = id;
  caption_ = caption;
  rect_ = rect;
  visible_ = visible;
  hwnd_ = MessageLoop::Instance().Register(this);
  if (parent_) parent_->children_.push_back(this);
  Tell(*this, Change::Created);
  return true;
}

void Window::DestroyWindow() {
  if (!hwnd_) return;
  // Children go first, newest first, as they were stacked.
  while (!children_.empty()) {
    Window* child = children_.back();
    child->DestroyWindow();
    if (!children_.empty() && children_.back() == child) children_.pop_back();
  }
  OnDestroy();
  Tell(*this, Change::Destroyed);
  if (g_focus == this) g_focus = nullptr;
  if (screen::GetCapture() == this) screen::ReleaseCapture();
  MessageLoop::Instance().Unregister(hwnd_);
  hwnd_ = nullptr;
  if (parent_) {
    auto& siblings = parent_->children_;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
    parent_ = nullptr;
  }
}

Window* Window::FromHandle(HWND hwnd) { return MessageLoop::Instance().Lookup(hwnd); }

Window* Window::GetDlgItem(int id) const {
  for (Window* child : children_) {
    if (child->id_ == id) return child;
  }
  return nullptr;
}

Window* Window::GetTopLevel() {
  Window* w = this;
  while (w->parent_) w = w->parent_;
  return w;
}

void Window::SetWindowText(const std::string& text) {
  caption_ = text;
  NotifyChanged();
}

void Window::ShowWindow(int command) {
  visible_ = command != SW_HIDE;
  NotifyChanged();
}

bool Window::IsWindowVisible() const {
  for (const Window* w = this; w; w = w->parent_) {
    if (!w->visible_) return false;
  }
  return hwnd_ != nullptr;
}

void Window::EnableWindow(bool enable) {
  enabled_ = enable;
  NotifyChanged();
}

void Window::MoveWindow(const RECT& rect) {
  rect_ = rect;
  NotifyChanged();
  if (hwnd_) OnSize();
}

POINT Window::ClientToScreen(POINT p) const {
  for (const Window* w = this; w; w = w->parent_) {
    p.x += w->rect_.left;
    p.y += w->rect_.top;
  }
  return p;
}

POINT Window::ScreenToClient(POINT p) const {
  const POINT origin = ClientToScreen({0, 0});
  return {p.x - origin.x, p.y - origin.y};
}

RECT Window::GetWindowRect() const {
  const POINT origin = parent_ ? parent_->ClientToScreen({rect_.left, rect_.top}) : POINT{rect_.left, rect_.top};
  return {origin.x, origin.y, origin.x + rect_.Width(), origin.y + rect_.Height()};
}

void Window::SetTimer(UINT_PTR id, UINT periodMs) {
  if (hwnd_) MessageLoop::Instance().SetTimer(hwnd_, id, periodMs);
}

bool Window::KillTimer(UINT_PTR id) { return hwnd_ && MessageLoop::Instance().KillTimer(hwnd_, id); }

LRESULT Window::SendMessage(UINT msg, WPARAM wParam, LPARAM lParam) {
  return hwnd_ ? WindowProc(msg, wParam, lParam) : 0;
}

bool Window::PostMessage(UINT msg, WPARAM wParam, LPARAM lParam) {
  return hwnd_ && MessageLoop::Instance().Post(hwnd_, msg, wParam, lParam);
}

void Window::SetFocus() {
  if (!hwnd_ || g_focus == this) return;
  Window* previous = g_focus;
  g_focus = this;
  if (previous) previous->NotifyChanged();
  NotifyChanged();
}

Window* Window::GetFocus() { return g_focus; }

LRESULT Window::WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) {
  switch (msg) {
    case WM_COMMAND:
      OnCommand(LOWORD(wParam), HIWORD(wParam));
      return 0;
    case WM_NOTIFY:
      if (lParam) OnNotify(*reinterpret_cast<const NMITEM*>(lParam));
      return 0;
    case WM_TIMER:
      OnTimer(wParam);
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
      OnMouse(msg, static_cast<UINT>(wParam), PointFromLParam(lParam));
      return 0;
    case WM_NCHITTEST:
      return OnNcHitTest(PointFromLParam(lParam));
    default:
      return 0;
  }
}

void Window::NotifyParent(UINT code) {
  if (parent_) parent_->SendMessage(WM_COMMAND, MAKEWPARAM(static_cast<UINT>(id_), code), reinterpret_cast<LPARAM>(hwnd_));
}

void Window::NotifyParentItem(UINT code, int item, bool byUser) {
  if (!parent_) return;
  NMITEM nm{hwnd_, static_cast<UINT>(id_), code, item, byUser};
  parent_->SendMessage(WM_NOTIFY, static_cast<WPARAM>(id_), reinterpret_cast<LPARAM>(&nm));
}

// ---- screen, cursor and mouse -------------------------------------------------

namespace screen {
namespace {
int g_monitors = 1;
SIZE g_maximized{1920, 1040};
POINT g_cursor{};
RECT g_clip{};
bool g_clipped = false;
Window* g_capture = nullptr;

POINT Clamp(POINT p) {
  if (!g_clipped) return p;
  p.x = std::clamp(p.x, g_clip.left, g_clip.right - 1);
  p.y = std::clamp(p.y, g_clip.top, g_clip.bottom - 1);
  return p;
}
}  // namespace

void SetMonitorCount(int count) { g_monitors = count; }
int MonitorCount() { return g_monitors; }
void SetMaximizedSize(SIZE size) { g_maximized = size; }
SIZE MaximizedSize() { return g_maximized; }
POINT GetCursorPos() { return g_cursor; }
void SetCursorPos(POINT p) { g_cursor = Clamp(p); }
void ClipCursor(const RECT* rect) {
  g_clipped = rect != nullptr;
  if (rect) g_clip = *rect;
  g_cursor = Clamp(g_cursor);
}
const RECT* CursorClip() { return g_clipped ? &g_clip : nullptr; }
void SetCapture(Window* window) { g_capture = window; }
void ReleaseCapture() { g_capture = nullptr; }
Window* GetCapture() { return g_capture; }
}  // namespace screen

namespace mouse {
namespace {
void SendMouse(Window& window, UINT msg, UINT flags, POINT clientPoint) {
  screen::SetCursorPos(window.ClientToScreen(clientPoint));
  Window* target = screen::GetCapture() ? screen::GetCapture() : &window;
  const POINT p = target->ScreenToClient(screen::GetCursorPos());
  target->SendMessage(msg, flags, LParamFromPoint(p));
}
}  // namespace

void LButtonDown(Window& window, POINT clientPoint) { SendMouse(window, WM_LBUTTONDOWN, MK_LBUTTON, clientPoint); }
void MoveTo(Window& window, POINT clientPoint, bool leftDown) {
  SendMouse(window, WM_MOUSEMOVE, leftDown ? static_cast<UINT>(MK_LBUTTON) : 0u, clientPoint);
}
void LButtonUp(Window& window, POINT clientPoint) { SendMouse(window, WM_LBUTTONUP, 0, clientPoint); }
}  // namespace mouse

// ---- scaling ------------------------------------------------------------------

namespace {
int g_dpi = 96;
constexpr int kBaseDpi = 96;
}  // namespace

void SetDpi(int dpi) { g_dpi = dpi > 0 ? dpi : kBaseDpi; }
int GetDpi() { return g_dpi; }
int s(int n) { return g_dpi > kBaseDpi ? (n * g_dpi + kBaseDpi / 2) / kBaseDpi : n; }
int t(int n) { return (n + s(n)) / 2; }

}  // namespace plat
