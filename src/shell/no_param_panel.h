// The panel the function page window shows in its page area for a function
// that has nothing to fill in: one text, stretched over the whole panel on
// every resize, in dark green.
#pragma once

#include "command/dialog_base.h"

class CDlgNotParam : public CDialogBase {
 public:
  static constexpr int kTemplate = 4114;
  static constexpr int kTextId = 4115;         // the static that carries the text
  static constexpr int kLangText = 11058;      // "this function has no parameters"
  static constexpr COLORREF kTextColor = RGB(0, 100, 0);

  static plat::DialogTemplate Layout();
  CDlgNotParam() : CDialogBase(kTemplate) {}
  CtlColorAnswer OnCtlColor(plat::Window* control) override;

 protected:
  BOOL OnInitDialog() override;
  void OnSize() override;
};
