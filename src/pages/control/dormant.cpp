#include "pages/control/dormant.h"

#include <cstdio>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "lang/language.h"
#include "text/numbers.h"

namespace {
using C = CDlgSetupChuanDormant;
const RegisterPage<C> kPage{{C::kFunctionType}, PageHost::kFunctionPage};

namespace key {
constexpr const char *kCommand = "Command", *kFlag = "Flag";
}  // namespace key
constexpr int kTimeDigits = 5;
}  // namespace

plat::DialogTemplate CDlgSetupChuanDormant::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 200},
      {{Radio(kRadioFixed, "唤醒固定时长", {20, 20, 200, 40}, kTextFixed, style::Group | style::Checked),
        Radio(kRadioGiven, "唤醒指定时长", {220, 20, 400, 40}, kTextGiven)},
       {Static(kTimeLabel, "唤醒时长", {20, 62, 120, 82}, kTextTime),
        Edit(kTimeEdit, {130, 60, 230, 82}, {.limit = kTimeDigits, .styles = plat::style::Number}),
        Static(kTimeHint, "(0-65535s),0表示固定时长", {240, 62, 560, 82}, kTextHint)},
       {SetButton({400, 160, 490, 188}), CancelButton({500, 160, 590, 188})}});
}

CDlgSetupChuanDormant::CDlgSetupChuanDormant() : CControlPage(kTemplate, kCommand, kDeviceKinds) {}

bool CDlgSetupChuanDormant::ReadControls() {
  given_ = IsChecked(kRadioGiven);
  seconds_ = txt::WToI(GetItemText(kTimeEdit));
  return true;
}

BOOL CDlgSetupChuanDormant::CheckParam() {
  if (!given_) return TRUE;
  char tip[64];
  std::snprintf(tip, sizeof tip, "%d-%d", 0, kMaxSeconds);
  return ParamCheck(*this).That(seconds_ <= kMaxSeconds, LanguageText(kTextRange) + tip, kTimeEdit).Ok();
}

Json::Value CDlgSetupChuanDormant::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kCommand] = kWakeCommand;
  if (given_ && seconds_ != 0) param[key::kFlag] = static_cast<int>(seconds_);
  return param;
}

std::string CDlgSetupChuanDormant::GetParamDescription() {
  Description description;
  description.Field(kTextMode, LanguageText(given_ ? kTextGiven : kTextFixed));
  if (given_) description.Field(kTextTime, seconds_);
  return description;
}
