// What the function tree shows for a device: its rights, versions, switches
// and device attributes read from the host, in the tree's fixed order.
#pragma once

#include "platform/controls.h"

class FunctionTreeBuilder {
 public:
  FunctionTreeBuilder(plat::TreeView& tree, int wantedType) : tree_(tree), wantedType_(wantedType) {}
  // Fills the tree for a device id (0: no device, every attribute reads 0).
  void Build(int devId);

 private:
  plat::HTREEITEM Group(int group);
  void Function(int type, plat::HTREEITEM parent);
  void Functions(std::initializer_list<int> types, plat::HTREEITEM parent);
  plat::HTREEITEM Root() const { return root_; }

  plat::TreeView& tree_;
  int wantedType_;
  plat::HTREEITEM root_ = 0;
  plat::HTREEITEM selected_ = 0;
};
