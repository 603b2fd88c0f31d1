#include "shell/fun_tree.h"

#include "command/device_caps.h"
#include "command/ids.h"
#include "host/hostcore.h"
#include "shell/fun_tree_builder.h"

namespace {
// The tree's images: 18 by 16 pixels, 32-bit colour, 25 at first, growing by 32.
constexpr plat::ImageList kTreeImages{{18, 16}, 32, 25, 32};
const plat::DialogTemplate kTreeTemplate{CDlg808FunTree::kTemplate, "", {300, 800},
                                         {{CDlg808FunTree::kTreeId, plat::ControlKind::TreeView, "", {0, 0, 300, 800}}}};
const plat::templates::Registration kRegistration{kTreeTemplate};
}  // namespace

CDlg808FunTree::CDlg808FunTree() : plat::Dialog(kTemplate) {
  BindNotify(kTreeId, TVN_SELCHANGED, [this](const plat::NMITEM& nm) { OnSelectionChanged(nm); });
}

BOOL CDlg808FunTree::OnInitDialog() {
  plat::ImageList images = kTreeImages;
  CMgrDevImg::InitDevStateImgList(images);
  Tree()->SetImageList(images);
  return TRUE;
}

void CDlg808FunTree::Rebuild() {
  plat::TreeView* tree = Tree();
  if (!tree) return;
  FunctionTreeBuilder(*tree, wantedType_).Build(SharedDeviceCaps().sharedDevId);
}

void CDlg808FunTree::OnSelectionChanged(const plat::NMITEM& nm) {
  plat::TreeView* tree = Tree();
  const plat::HTREEITEM item = nm.item;
  if (item == 0) return;
  const auto data = static_cast<intptr_t>(tree->GetItemData(item));
  if (data == kGroupData) {
    // A group stands for its first function.
    for (plat::HTREEITEM child = tree->GetChildItem(item); child; child = tree->GetNextSiblingItem(child)) {
      if (static_cast<intptr_t>(tree->GetItemData(child)) != kGroupData) {
        tree->SelectItem(child);
        return;
      }
    }
    return;
  }
  if (GetParent()) GetParent()->SendMessage(msg::FunctionChosen, static_cast<WPARAM>(data), 0);
}
