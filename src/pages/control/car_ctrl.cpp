#include "pages/control/car_ctrl.h"

#include <span>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "lang/language.h"

namespace {
using C = CDlgCarCtrl;
const RegisterPage<C> kPage{C::kFunctionType};

namespace key {
constexpr const char *kFlag = "CTLA", *kType = "Type";
}  // namespace key

struct FlagEntry {
  uint32_t data;
  int text;
};
// Extended devices: control type in the high byte (oil, circuit, door, vehicle lock), flag in the low byte.
constexpr FlagEntry kExtended[] = {{0, 13118},   {1, 13119},   {256, 13120}, {257, 13121},
                                   {512, 13112}, {513, 13111}, {768, 13122}, {769, 13123}};
constexpr FlagEntry kDoor2019[] = {{0, 13114}, {1, 13113}};
constexpr FlagEntry kDoor2013[] = {{0, 13112}, {1, 13111}};
}  // namespace

plat::DialogTemplate CDlgCarCtrl::Layout() {
  using namespace row;
  return PageTemplate(kTemplate, {600, 200},
                      {{Static(kFlagLabel, "控制标志", {20, 22, 120, 42}, kTextFlag), Combo(kFlagList, {130, 20, 400, 200})},
                       {SetButton({400, 160, 490, 188}), CancelButton({500, 160, 590, 188})}});
}

CDlgCarCtrl::CDlgCarCtrl() : CControlPage(kTemplate, kCommand, kDeviceKinds) {}

void CDlgCarCtrl::UpdateProtocolControls() {
  auto* list = Item<plat::ComboBox>(kFlagList);
  if (!list) return;
  const DeviceCaps& caps = Caps();
  const std::span<const FlagEntry> entries = caps.bDevAttr76     ? std::span<const FlagEntry>(kExtended)
                                             : caps.bProtocol2019 ? std::span<const FlagEntry>(kDoor2019)
                                                                  : std::span<const FlagEntry>(kDoor2013);
  const int previous = list->GetCurSel();
  list->ResetContent();
  for (const FlagEntry& entry : entries) list->SetItemData(list->AddString(LanguageText(entry.text)), entry.data);
  list->SetCurSel(previous >= 0 && previous < list->GetCount() ? previous : 0);
}

bool CDlgCarCtrl::ReadControls() {
  const auto* list = Item<plat::ComboBox>(kFlagList);
  const int selected = list ? list->GetCurSel() : -1;
  flag_ = selected < 0 ? 0 : list->GetItemData(selected);
  flagText_ = selected < 0 ? std::string() : list->GetLBText(selected);
  withType_ = Caps().bDevAttr76 != FALSE;
  return true;
}

Json::Value CDlgCarCtrl::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kFlag] = flag_ & 0xFF;
  if (withType_) param[key::kType] = (flag_ >> 8) & 0xFF;
  return param;
}

std::string CDlgCarCtrl::GetParamDescription() { return Description().Field(kTextFlag, flagText_); }
