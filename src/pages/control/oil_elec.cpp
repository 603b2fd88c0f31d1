#include "pages/control/oil_elec.h"

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/time_text.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "platform/clock.h"
#include "text/datetime.h"

namespace {
using C = CDlgOilAndElec;
const RegisterPage<C> kPage{C::kFunctionType};

namespace key {
constexpr const char *kState = "STA", *kTime = "DTM";
}  // namespace key

constexpr RadioChoice kStates[] = {{C::kRadioRestore, C::kRestore, C::kTextRestore},
                                   {C::kRadioNormal, C::kCutNormally, C::kTextNormal},
                                   {C::kRadioAtOnce, C::kCutAtOnce, C::kTextAtOnce}};
constexpr const char* kDateFormat = "yyyy'-'MM'-'dd";
constexpr const char* kTimeFormat = "HH':'mm':'ss";

int StateText(int state) {
  return state == C::kCutNormally ? C::kTextNormal : state == C::kCutAtOnce ? C::kTextAtOnce : C::kTextRestore;
}
}  // namespace

plat::DialogTemplate CDlgOilAndElec::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 240},
      {{Box(kTypeFrame, "类型", {10, 10, 590, 60}, kTextType),
        Radio(kRadioRestore, "恢复油电", {20, 30, 180, 50}, kTextRestore, style::Group | style::Checked),
        Radio(kRadioNormal, "正常断开", {200, 30, 360, 50}, kTextNormal),
        Radio(kRadioAtOnce, "立即断开", {380, 30, 540, 50}, kTextAtOnce)},
       {Box(kTimeFrame, "有效时间", {10, 70, 590, 120}, kTextValidTime, style::Group),
        Static(kDateLabel, "日期", {20, 92, 70, 112}, kTextDate), Date(kDate, {75, 90, 200, 112}),
        Static(kTimeLabel, "时间", {220, 92, 270, 112}, kTextTime), Time(kTime, {275, 90, 380, 112})},
       {Button(kSetSeveral, "设置到多个设备", {190, 200, 390, 228}, kTextSetSeveral),
        SetButton({400, 200, 490, 228}), CancelButton({500, 200, 590, 228})}});
}

CDlgOilAndElec::CDlgOilAndElec() : CControlPage(kTemplate, kCommand, kDeviceKinds) {
  Bind(kSetSeveral, BN_CLICKED, [this] {
    // Only this send picks its devices; the set button keeps sending to the current vehicle.
    const BOOL picker = PickerMode;
    PickerMode = TRUE;
    OnSet();
    PickerMode = picker;
  });
}

void CDlgOilAndElec::OnInitPage() {
  const SYSTEMTIME now = plat::GetLocalTime();
  for (auto [id, format] : {std::pair{kDate, kDateFormat}, std::pair{kTime, kTimeFormat}}) {
    if (auto* picker = Item<plat::DateTimePicker>(id)) {
      picker->SetFormat(format);
      picker->SetTime(now);
    }
  }
}

bool CDlgOilAndElec::ReadControls() {
  const RadioChoice* chosen = CheckedChoice(*this, kStates);
  state_ = chosen ? chosen->value : kRestore;
  validTime_ = PickedTime(*this, kDate, kTime);
  return true;
}

Json::Value CDlgOilAndElec::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kState] = state_;
  param[key::kTime] = txt::FormatRequestTime(validTime_);
  return param;
}

void CDlgOilAndElec::PrepareBatch(CommandRequest& request) {
  vehicle_ = CVehicleBaseMgr::FindVehicleFromDev(request.devIdno).GetName();
  if (vehicle_.empty()) vehicle_ = request.devIdno;
}

std::string CDlgOilAndElec::GetParamDescription() {
  return Description()
      .Field(kTextType, LanguageText(StateText(state_)))
      .Field(kTextValidTime, FormatSystemTime(validTime_))
      .Field(kTextVehicle, vehicle_);
}
