// The small vocabulary of window-system types the plug-in and the host share:
// integer widths, handles, message numbers and plain records. Everything here
// has the width and meaning the host expects; nothing here does any work.
#pragma once

#include <cstdint>

#if defined(_WIN32) && !defined(_WIN64)
#define FC_STDCALL __stdcall
#else
#define FC_STDCALL
#endif
#define CALLBACK FC_STDCALL

using BOOL = int32_t;
using UINT = uint32_t;
using DWORD = uint32_t;
using WORD = uint16_t;
using BYTE = uint8_t;
using UINT_PTR = uintptr_t;
using WPARAM = uintptr_t;
using LPARAM = intptr_t;
using LRESULT = intptr_t;
using COLORREF = uint32_t;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

// A window handle is an opaque number: a handle outlives its window, so a
// message posted to a destroyed window is refused instead of reaching freed memory.
struct HWND__;
using HWND = HWND__*;

constexpr COLORREF RGB(int r, int g, int b) {
  return static_cast<COLORREF>((r & 0xFF) | ((g & 0xFF) << 8) | ((b & 0xFF) << 16));
}
constexpr int GetRValue(COLORREF c) { return static_cast<int>(c & 0xFF); }
constexpr int GetGValue(COLORREF c) { return static_cast<int>((c >> 8) & 0xFF); }
constexpr int GetBValue(COLORREF c) { return static_cast<int>((c >> 16) & 0xFF); }

struct POINT {
  int x = 0;
  int y = 0;
  bool operator==(const POINT&) const = default;
};

struct SIZE {
  int cx = 0;
  int cy = 0;
  bool operator==(const SIZE&) const = default;
};

struct RECT {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool Contains(POINT p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
  bool operator==(const RECT&) const = default;
};

struct SYSTEMTIME {
  WORD wYear = 0;
  WORD wMonth = 0;
  WORD wDayOfWeek = 0;
  WORD wDay = 0;
  WORD wHour = 0;
  WORD wMinute = 0;
  WORD wSecond = 0;
  WORD wMilliseconds = 0;
  bool operator==(const SYSTEMTIME&) const = default;
};

// Window messages used across the plug-in boundary and inside the platform layer.
enum : UINT {
  WM_DESTROY = 0x0002,
  WM_SIZE = 0x0005,
  WM_CLOSE = 0x0010,
  WM_SHOWWINDOW = 0x0018,
  WM_NOTIFY = 0x004E,
  WM_NCHITTEST = 0x0084,
  WM_INITDIALOG = 0x0110,
  WM_COMMAND = 0x0111,
  WM_TIMER = 0x0113,
  WM_MOUSEMOVE = 0x0200,
  WM_LBUTTONDOWN = 0x0201,
  WM_LBUTTONUP = 0x0202,
  WM_LBUTTONDBLCLK = 0x0203,
  WM_RBUTTONUP = 0x0205,
  WM_USER = 0x0400,
};

// Command notification codes carried in the high word of WM_COMMAND's wParam.
enum : UINT {
  BN_CLICKED = 0,
  EN_CHANGE = 0x0300,
  CBN_SELCHANGE = 1,
  LVN_ITEMCHANGED = 0x7000,  // list view: selection or check state changed
  LVN_DBLCLK = 0x7001,
  LVN_RCLICK = 0x7002,
  TVN_SELCHANGED = 0x7100,
  DTN_DATETIMECHANGE = 0x7200,
  SPN_DELTAPOS = 0x7300,
};

constexpr WPARAM MAKEWPARAM(UINT lo, UINT hi) { return static_cast<WPARAM>((lo & 0xFFFF) | ((hi & 0xFFFF) << 16)); }
constexpr UINT LOWORD(WPARAM w) { return static_cast<UINT>(w & 0xFFFF); }
constexpr UINT HIWORD(WPARAM w) { return static_cast<UINT>((w >> 16) & 0xFFFF); }

enum : int { IDOK = 1, IDCANCEL = 2 };

// Hit-test answers of a window frame.
enum : int {
  HTCLIENT = 1,
  HTCAPTION = 2,
  HTLEFT = 10,
  HTRIGHT = 11,
  HTTOP = 12,
  HTTOPLEFT = 13,
  HTTOPRIGHT = 14,
  HTBOTTOM = 15,
  HTBOTTOMLEFT = 16,
  HTBOTTOMRIGHT = 17,
};
