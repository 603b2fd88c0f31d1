// The function page window: the function tree on the left, the page of the
// chosen function on the right with the window's four buttons under it, and
// the result list of every page at the bottom. Pages are created on first use
// and kept, so a page keeps its input while the user looks at others.
#pragma once

#include <map>
#include <memory>

#include "shell/no_param_panel.h"
#include "shell/result_list.h"

class CBaseDlg;
class CDlg808FunTree;
class CXListCtrl;

class CDlg808FunctionPage : public CResultListWindow {
 public:
  static constexpr int kTemplate = 4106;

  CDlg808FunctionPage();
  ~CDlg808FunctionPage() override;

  // Switches the page area to a function.
  void ShowFunction(int type);
  // The page of a type, created when asked for and not there yet.
  CBaseDlg* FindOrCreatePage(int type, bool create);
  // From the host: select a function in the tree (58 stands for 59, 63 for 64).
  void SelectFunctionType(int type, bool onlyOnChange);
  // Lays the window out inside its parent.
  void Layout();
  // Every page adapts its controls to the device the next time it is shown.
  void MarkProtocolUpdatePending();

  CDlg808FunTree* Tree() const { return tree_.get(); }
  CDlgNotParam* NoParamPanel() const { return noParamPanel_.get(); }
  int CurrentType() const { return currentType_; }
  int SelectedType() const { return selectedType_; }
  RECT PageRect() const { return pageRect_; }

 protected:
  BOOL OnInitDialog() override;
  void OnDestroy() override;
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void MirrorButtons(CBaseDlg& page);
  void PlaceButtons();
  void SetButtonCaptions(int mode);
  void OnWindowButton(int button);

  std::map<int, std::unique_ptr<CBaseDlg>> pages_;
  std::unique_ptr<CDlg808FunTree> tree_;
  std::unique_ptr<CDlgNotParam> noParamPanel_;
  int currentType_ = -1;
  int selectedType_ = -1;
  RECT pageRect_{};
  RECT buttonSpot_{};  // the set/get buttons' shared spot
};
