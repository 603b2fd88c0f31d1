// The three bases every dialog of the plug-in derives from:
// CDialogBase colours static texts and backgrounds with the theme;
// CDlgChildBase (pages and other child dialogs) lets the user move the host's
// top-level window by dragging an empty spot of the dialog;
// CDlgPopupBase (pickers and editors) draws its own title bar and bottom bar
// and answers hit tests so its frame resizes and its body drags it.
#pragma once

#include <memory>

#include "platform/dialog.h"

// What a control-colour request is answered with.
struct CtlColorAnswer {
  bool framework = true;     // the framework's own answer, untouched
  bool transparent = false;  // transparent text background
  COLORREF text = 0;
  COLORREF background = 0;
  bool themeBrush = false;   // painted with the theme's background brush
  bool operator==(const CtlColorAnswer&) const = default;
};

class CDialogBase : public plat::Dialog {
 public:
  using plat::Dialog::Dialog;
  // The colours of a control of this dialog, or of the dialog itself (this).
  virtual CtlColorAnswer OnCtlColor(plat::Window* control);

 protected:
  // Shows the language text of every template row that names one.
  BOOL OnInitDialog() override;
};

class CDlgChildBase : public CDialogBase {
 public:
  using CDialogBase::CDialogBase;
  // The least time between two moves of a dragged window.
  static constexpr DWORD kDragIntervalMs = 40;

 protected:
  void OnMouse(UINT msg, UINT flags, POINT clientPoint) override;

 private:
  void MoveDragged();
  BOOL dragging_ = FALSE;
  POINT dragStart_{};
  RECT windowStart_{};
  plat::Window* dragged_ = nullptr;
  DWORD lastMove_ = 0;
};

class CDlgPopupBase : public CDialogBase {
 public:
  using CDialogBase::CDialogBase;
  static constexpr int kBottomBarHeight = 10;
  static constexpr int kResizeMargin = 6;
  static constexpr int kTitleHeight = 30;

  plat::Window* TitleBar() const { return titleBar_.get(); }
  plat::Window* BottomBar() const { return bottomBar_.get(); }
  void SetFrame(bool frame) { frame_ = frame; }
  void SetHasTitle(bool hasTitle) { hasTitle_ = hasTitle; }
  int TitleBarHeight() const;

  COLORREF colors[4] = {0xB4B4B4, 0xFFFFFF, 0xFFFFFF, 0xE0E0E0};

 protected:
  BOOL OnInitDialog() override;
  void OnSize() override;
  int OnNcHitTest(POINT screenPoint) override;
  void OnDestroy() override;

 private:
  // Puts the title bar inset pixels inside the left and right edges and
  // 1 + drop below the top, and the bottom bar along the bottom, as wide.
  void PlaceBars(int inset, int drop);
  std::unique_ptr<plat::Window> titleBar_;
  std::unique_ptr<plat::Window> bottomBar_;
  bool hasTitle_ = true;
  bool frame_ = false;
};
