// Windows: a handle, a parent and children, a caption, shown/enabled state and
// a rectangle; numbered messages, timers by id and command notifications from
// child controls. A child's rectangle is in its parent's client coordinates; a
// top-level window's rectangle is in screen coordinates. There is no non-client
// area: the client area is the whole window.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/wintypes.h"

namespace plat {

enum ShowCommand : int { SW_HIDE = 0, SW_SHOWNORMAL = 1, SW_SHOW = 5 };

// Mouse flags carried in wParam of mouse messages.
enum : UINT { MK_LBUTTON = 0x0001 };

// The payload of WM_NOTIFY from list and tree controls (lParam points to it).
struct NMITEM {
  HWND hwndFrom = nullptr;
  UINT idFrom = 0;
  UINT code = 0;
  int item = -1;          // row of a list, item handle of a tree
  bool byUser = false;    // the change came from the user, not from code
};

// Points travel in lParam as two signed 16-bit halves.
POINT PointFromLParam(LPARAM lParam);
LPARAM LParamFromPoint(POINT p);

class Window;

// What happens to a window, for a view that shows it. On Changed a view reads
// the window again: caption, shown, enabled, style, rectangle, focus, and a
// control's value and items. Told on the UI thread; Destroyed comes while the
// window still exists, though its derived parts may already be gone.
enum class Change { Created, Changed, Destroyed };
using ChangeObserver = std::function<void(Window& window, Change change)>;
void SetChangeObserver(ChangeObserver observer);

class Window {
 public:
  Window() = default;
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  // Creates the window as a child of parent (a top-level window when null).
  bool Create(Window* parent, int id, const std::string& caption, const RECT& rect, bool visible = true);
  // Destroys the children, then the window (OnDestroy runs while it still exists).
  void DestroyWindow();

  HWND GetSafeHwnd() const { return hwnd_; }
  bool IsWindow() const { return hwnd_ != nullptr; }
  static Window* FromHandle(HWND hwnd);

  Window* GetParent() const { return parent_; }
  const std::vector<Window*>& Children() const { return children_; }
  Window* GetDlgItem(int id) const;
  int GetDlgCtrlID() const { return id_; }
  // The outermost window above this one.
  Window* GetTopLevel();

  virtual void SetWindowText(const std::string& text);
  virtual std::string GetWindowText() const { return caption_; }
  size_t GetWindowTextLength() const { return caption_.size(); }

  void ShowWindow(int command);
  // Own state only; IsWindowVisible also needs every parent shown.
  bool IsShown() const { return visible_; }
  bool IsWindowVisible() const;
  void EnableWindow(bool enable);
  bool IsWindowEnabled() const { return enabled_; }

  void MoveWindow(const RECT& rect);
  RECT GetRect() const { return rect_; }  // in the parent's client coordinates
  RECT GetWindowRect() const;             // in screen coordinates
  RECT GetClientRect() const { return {0, 0, rect_.Width(), rect_.Height()}; }
  POINT ClientToScreen(POINT p) const;
  POINT ScreenToClient(POINT p) const;

  // Maximised state of a top-level window.
  void SetZoomed(bool zoomed) { zoomed_ = zoomed; }
  bool IsZoomed() const { return zoomed_; }

  void SetTimer(UINT_PTR id, UINT periodMs);
  bool KillTimer(UINT_PTR id);
  LRESULT SendMessage(UINT msg, WPARAM wParam = 0, LPARAM lParam = 0);
  bool PostMessage(UINT msg, WPARAM wParam = 0, LPARAM lParam = 0);

  void SetFocus();
  static Window* GetFocus();

  // Redraw requests, counted so a caller's "redraw now" can be checked.
  void RedrawWindow() { ++redraws_; }
  int RedrawCount() const { return redraws_; }

  // Flags of the window's style that behaviour depends on (see templates).
  uint32_t Style() const { return style_; }
  void SetStyle(uint32_t style) {
    style_ = style;
    NotifyChanged();
  }

  // The window's message handler. Derived windows handle their own messages
  // and pass the rest to the base.
  virtual LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam);

 protected:
  virtual void OnCommand(UINT id, UINT code) { (void)id, (void)code; }
  virtual void OnNotify(const NMITEM& nm) { (void)nm; }
  virtual void OnTimer(UINT_PTR id) { (void)id; }
  virtual void OnDestroy() {}
  virtual void OnSize() {}
  virtual void OnMouse(UINT msg, UINT flags, POINT clientPoint) { (void)msg, (void)flags, (void)clientPoint; }
  virtual int OnNcHitTest(POINT screenPoint) { (void)screenPoint; return HTCLIENT; }
  // Tells a view that the window's state changed.
  void NotifyChanged();
  // Tells the parent about a user action on this control.
  void NotifyParent(UINT code);
  void NotifyParentItem(UINT code, int item, bool byUser);
  // Adds to the end of the caption in place (no copy of what is there).
  void AppendWindowText(const std::string& text) { caption_ += text; }

 private:
  HWND hwnd_ = nullptr;
  Window* parent_ = nullptr;
  std::vector<Window*> children_;
  int id_ = 0;
  std::string caption_;
  RECT rect_{};
  bool visible_ = false;
  bool enabled_ = true;
  bool zoomed_ = false;
  int redraws_ = 0;
  uint32_t style_ = 0;
};

// The screen, the cursor and the mouse: what a drag of a window reads and sets.
namespace screen {
void SetMonitorCount(int count);
int MonitorCount();
// Size of a maximised window on the primary monitor.
void SetMaximizedSize(SIZE size);
SIZE MaximizedSize();
POINT GetCursorPos();
void SetCursorPos(POINT p);
// Confines the cursor to a rectangle (screen coordinates); nullptr frees it.
void ClipCursor(const RECT* rect);
const RECT* CursorClip();
void SetCapture(Window* window);
void ReleaseCapture();
Window* GetCapture();
}  // namespace screen

// User mouse actions at a point of a window's client area; the message goes to
// the capturing window when there is one.
namespace mouse {
void LButtonDown(Window& window, POINT clientPoint);
void MoveTo(Window& window, POINT clientPoint, bool leftDown = true);
void LButtonUp(Window& window, POINT clientPoint);
}  // namespace mouse

// Screen scaling: one dpi setting for the process. s(n) scales horizontally
// (n x dpi / 96 above 96 dpi), t(n) vertically (the mean of n and s(n)).
void SetDpi(int dpi);
int GetDpi();
int s(int n);
int t(int n);

}  // namespace plat
