// The vehicle function window: one command page for one function type, with
// the page's own buttons and a result list under it. Messages the page sends
// for the host are passed on to the host's window.
#pragma once

#include <memory>

#include "shell/result_list.h"

class CBaseDlg;
class CXListCtrl;

class CDlgMain : public CResultListWindow {
 public:
  static constexpr int kTemplate = 4000;

  explicit CDlgMain(int functionType);
  ~CDlgMain() override;

  int FunctionType() const { return functionType_; }
  CBaseDlg* Page() const { return page_.get(); }
  // Fits the window into its parent's client area.
  void FitIntoParent();
  // A message of the host for the page shown here (1, 2, 4, 5, 7, 9, 65535; others are ignored).
  void OnHostMessage(uint32_t message, uintptr_t wParam, intptr_t lParam);

 protected:
  BOOL OnInitDialog() override;
  void OnDestroy() override;
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void CreatePage();
  const int functionType_;
  std::unique_ptr<CBaseDlg> page_;
};
