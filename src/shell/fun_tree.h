// The function tree: the functions the current device supports and the user
// may use, grouped, rebuilt on every selection from the host. Choosing a
// function item tells the function page window (msg::FunctionChosen).
#pragma once

#include <functional>

#include "platform/dialog.h"

class CDlg808FunTree : public plat::Dialog {
 public:
  static constexpr int kTemplate = 4108;
  static constexpr int kTreeId = 4460;
  // Item data of the root and of group items.
  static constexpr intptr_t kGroupData = -1;

  CDlg808FunTree();
  plat::TreeView* Tree() const { return Item<plat::TreeView>(kTreeId); }
  // The type to select when the tree is rebuilt.
  void SetWantedType(int type) { wantedType_ = type; }
  int WantedType() const { return wantedType_; }
  // Empties the tree and adds what the current device offers.
  void Rebuild();

 protected:
  BOOL OnInitDialog() override;

 private:
  void OnSelectionChanged(const plat::NMITEM& nm);
  int wantedType_ = -1;
};
