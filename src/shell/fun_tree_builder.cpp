#include "shell/fun_tree_builder.h"

#include "host/hostcore.h"
#include "shell/fun_tree.h"

namespace {
// Device attributes the tree reads.
enum Attr : int {
  kAttrModel = 10,
  kAttrExtras = 15,
  kAttrNoExtras = 18,
  kAttrAudioVideo = 69,
  kAttrOilAndPower = 71,
  kAttrRegion = 75,
  kAttrTaxi = 81,
  kAttrAreaQuery = 85,
  kAttrLinkCheck = 112,
  kAttrTaxiPhone = 117,
  kAttrInspection = 122,
};
// Rights of the user.
enum Right : int { kRightCommands = 651, kRightQueries = 652, kRightText = 656, kRightControl = 659 };
// Host configuration switches.
enum Switch : int { kSwitchDriveRules = 170, kSwitchAudioVideo = 446, kSwitchProvincialData = 1100, kSwitchTrackingAndQuery = 1103 };
constexpr int kVersionLite = 25;
constexpr int kRegionDormant = 21, kRegionInspection = 15, kModelProvince = 23;
constexpr int kRootGroup = -1, kRootTaxi = 905, kRoot808 = 808;

bool Right(int n) { return CUserPrivilegeManger::IsPrivilege(n) != FALSE; }
bool Switch(int n) { return CConfigKestrelINI::ReadIniInt(n) != 0; }
}  // namespace

plat::HTREEITEM FunctionTreeBuilder::Group(int group) {
  return tree_.InsertItem(FormatStringMgr::Format808FunctionGroup(group, 0), 1,
                          static_cast<uintptr_t>(CDlg808FunTree::kGroupData), root_);
}

void FunctionTreeBuilder::Function(int type, plat::HTREEITEM parent) {
  const bool first = tree_.GetChildItem(parent) == 0;
  const plat::HTREEITEM item = tree_.InsertItem(FormatStringMgr::Format808FunctionType(type, 0), 0,
                                                static_cast<uintptr_t>(type), parent);
  if (first) tree_.Expand(parent);
  if (type == wantedType_ && !selected_) selected_ = item;
}

void FunctionTreeBuilder::Functions(std::initializer_list<int> types, plat::HTREEITEM parent) {
  for (int type : types) Function(type, parent);
}

void FunctionTreeBuilder::Build(int devId) {
  tree_.DeleteAllItems();
  CDevFunc device = CVehicleBaseMgr::FindVechicleFromDevID(devId).GetDevInfo(7, 0);
  auto attr = [&](int n) { return device.IsValid() ? device.GetDevInt(n) : 0; };
  const bool taxi = attr(kAttrTaxi) != 0;
  const bool lite = CVersionsMgr::IsVersions(kVersionLite, 0) != FALSE;

  root_ = tree_.InsertItem(FormatStringMgr::Format808FunctionGroup(kRootGroup, taxi ? kRootTaxi : kRoot808), 1,
                           static_cast<uintptr_t>(CDlg808FunTree::kGroupData));
  const plat::HTREEITEM root = root_;

  if (Right(kRightCommands)) {  // 1
    if (taxi) {
      Functions({57, 56}, root);
    } else {
      Functions({57, 54}, root);
      const plat::HTREEITEM areas = Group(0);
      Functions({0, 4, 1, 5, 2, 6, 3, 7}, areas);
      if (attr(kAttrAreaQuery)) Function(51, areas);
    }
  }
  if (Right(kRightControl)) {  // 2
    const plat::HTREEITEM upgrade = Group(10);
    if (taxi) {
      Function(55, upgrade);
    } else {
      Functions({8, 9}, upgrade);
    }
    Function(10, root);
    if (!taxi && attr(kAttrRegion) == kRegionDormant) Function(106, root);
  }
  if (Right(kRightText)) Function(12, root);  // 3
  if (Right(kRightCommands) && attr(kAttrLinkCheck) == 0) {  // 4
    Function(13, root);
    if (!lite) {
      Function(14, root);
      if (!taxi) Functions({15, 16}, root);
    }
  }
  if (Right(kRightCommands)) {  // 5
    if (attr(kAttrTaxiPhone)) {
      Functions({1017, 1018}, root);
    } else {
      Functions({17, 18}, root);
    }
  }
  if (Right(kRightControl)) Function(19, root);                                // 6
  if (Right(kRightCommands) && attr(kAttrOilAndPower)) Function(39, root);  // 7
  if (Right(kRightQueries) && !taxi) {                                         // 8
    Functions({45, 52}, root);
    if (Switch(kSwitchAudioVideo) && attr(kAttrAudioVideo)) Function(40, root);
  }
  if (!taxi && attr(kAttrLinkCheck) >= 1) Function(53, root);  // 9
  if (!lite && !taxi) {                                          // 10
    if (Right(kRightQueries)) Function(20, root);
    if (Right(kRightCommands)) {
      Functions({59, 60, 61, 62}, Group(58));
      Functions({64, 65, 66, 67, 68, 69}, Group(63));
    }
  }
  if (Right(kRightCommands)) {  // 11
    Function(22, root);
    if (taxi) {
      Function(27, root);
    } else {
      Functions({27, 28, 29, 33, 30}, Group(27));
    }
  }
  if (attr(kAttrNoExtras) == 0 && attr(kAttrExtras) && Right(kRightCommands) && !taxi) {  // 12
    if (Switch(kSwitchDriveRules)) Functions({36, 37}, Group(36));
    if (Switch(kSwitchProvincialData) && attr(kAttrModel) == kModelProvince) Functions({41, 42, 43, 44}, Group(41));
    if (Switch(kSwitchTrackingAndQuery)) Functions({46, 47}, Group(46));
  }
  if (Right(kRightCommands) && !taxi && !lite) Function(31, root);        // 13
  if (!taxi && attr(kAttrRegion) == kRegionInspection) Function(70, root);  // 14
  if (!taxi && attr(kAttrInspection)) Function(72, root);              // 15
  if (attr(kAttrTaxiPhone)) Function(105, root);                       // 16

  if (selected_) tree_.SelectItem(selected_);
}
