#include "pages/control/choice_pages.h"

#include "command/page_registry.h"
#include "command/page_template.h"

namespace {
const RegisterPage<CDlgXjCarCtrl> kXjCarCtrl{CDlgXjCarCtrl::kFunctionType};
const RegisterPage<CDlgSetupOtherCtrl> kOtherCtrl{CDlgSetupOtherCtrl::kFunctionType};
const RegisterPage<CDlgSetupAlarmCtrl> kAlarmCtrl{CDlgSetupAlarmCtrl::kFunctionType};

namespace key {
constexpr const char *kControl = "CTLA", *kCommand = "Command";
}  // namespace key

using X = CDlgXjCarCtrl;
constexpr RadioChoice kXjChoices[] = {{X::kRadioControl, 1, X::kTextControl}, {X::kRadioRelease, 2, X::kTextRelease}};
constexpr uint32_t kXjDeviceKinds = 0;

using O = CDlgSetupOtherCtrl;
constexpr RadioChoice kOtherChoices[] = {{O::kRadioOff, 3, O::kTextOff},
                                         {O::kRadioReset, 4, O::kTextReset},
                                         {O::kRadioFactory, 5, O::kTextFactory},
                                         {O::kRadioCloseData, 6, O::kTextCloseData},
                                         {O::kRadioCloseWireless, 7, O::kTextCloseWireless}};
constexpr uint32_t kOtherDeviceKinds = 0;

using A = CDlgSetupAlarmCtrl;
constexpr RadioChoice kAlarmChoices[] = {{A::kRadioOn, A::kCommandOn, A::kTextOn},
                                         {A::kRadioOff, A::kCommandOff, A::kTextOff}};
constexpr uint32_t kAlarmDeviceKinds = 0x400;

constexpr RECT kSet{400, 160, 490, 188}, kCancel{500, 160, 590, 188};
}  // namespace

plat::DialogTemplate CDlgXjCarCtrl::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {600, 200},
                      {{Radio(kRadioControl, "车辆管制", {20, 20, 200, 40}, kTextControl, style::Group | style::Checked),
                        Radio(kRadioRelease, "解除车辆管制", {220, 20, 420, 40}, kTextRelease)},
                       {SetButton(kSet), CancelButton(kCancel)}});
}

CDlgXjCarCtrl::CDlgXjCarCtrl()
    : CChoicePage(kTemplate, kCommand, kXjDeviceKinds, kXjChoices, key::kControl, kTextFlag) {}

plat::DialogTemplate CDlgSetupOtherCtrl::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 200},
      {{Box(kFrame, "控制命令", {10, 10, 590, 140}, kTextCommand),
        Radio(kRadioOff, "终端关机", {20, 30, 200, 50}, kTextOff, style::Group | style::Checked),
        Radio(kRadioReset, "终端复位", {220, 30, 400, 50}, kTextReset),
        Radio(kRadioFactory, "终端恢复出厂设置", {20, 60, 200, 80}, kTextFactory),
        Radio(kRadioCloseData, "关闭数据通讯", {220, 60, 400, 80}, kTextCloseData),
        Radio(kRadioCloseWireless, "关闭所有无线通讯", {20, 90, 200, 110}, kTextCloseWireless)},
       {SetButton(kSet), CancelButton(kCancel)}});
}

CDlgSetupOtherCtrl::CDlgSetupOtherCtrl()
    : CChoicePage(kTemplate, kCommand, kOtherDeviceKinds, kOtherChoices, key::kCommand, kTextCommand) {}

plat::DialogTemplate CDlgSetupAlarmCtrl::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {600, 200},
                      {{Radio(kRadioOn, "开启报警控制", {20, 20, 200, 40}, kTextOn, style::Group),
                        Radio(kRadioOff, "关闭报警控制", {220, 20, 420, 40}, kTextOff)},
                       {SetButton(kSet), CancelButton(kCancel)}});
}

CDlgSetupAlarmCtrl::CDlgSetupAlarmCtrl()
    : CChoicePage(kTemplate, kCommandOn, kAlarmDeviceKinds, kAlarmChoices, nullptr, kTextAlarmControl) {}

bool CDlgSetupAlarmCtrl::ReadControls() {
  if (!CChoicePage::ReadControls()) return false;
  command_ = chosen_->value;
  return true;
}
