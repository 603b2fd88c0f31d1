// The inspection settings pages: one template, two senders.
#include "pages/regional/platform_check.h"

#include "command/page_registry.h"
#include "command/page_template.h"
#include "lang/language.h"

namespace {
using H = CDlgSetHeibInspection;
using B = CDlgSetCbInspection;
const RegisterTemplate<CInspectionSettingsPage> kSharedTemplate;
const PageRegistration kHeib{{H::kFunctionType}, PageHost::kBoth, [](int) { return std::make_unique<H>(); }};
const PageRegistration kCb{{B::kFunctionType}, PageHost::kBoth, [](int) { return std::make_unique<B>(); }};

namespace key {
constexpr const char* kType = "Type";
}  // namespace key
// The choices in selection order, and their texts.
constexpr int kChoices[] = {H::kVehicle, H::kDriver, H::kIdentity};
constexpr int kChoiceTexts[] = {H::kTextVehicle, H::kTextDriver, H::kTextIdentity};
constexpr int32_t kHeibFirstColumn = 94, kHeibSecondColumn = 114, kCbSecondColumn = 122;
}  // namespace

plat::DialogTemplate CInspectionSettingsPage::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {600, 200},
                      {{Radio(kVehicle, "平台巡检 - 车辆运行监测", {20, 20, 580, 40}, kTextVehicle, style::Group),
                        Radio(kDriver, "平台巡检 - 驾驶员驾驶行为监测", {20, 50, 580, 70}, kTextDriver),
                        Radio(kIdentity, "驾驶员身份信息", {20, 80, 580, 100}, kTextIdentity)},
                       {Button(kToSeveral, "设置到多个设备", {240, 160, 390, 188}, kTextToSeveral),
                        SetButton({400, 160, 490, 188}), CancelButton({500, 160, 590, 188})}});
}

CInspectionSettingsPage::CInspectionSettingsPage() : CBaseDlg(kTemplate) {
  Bind(ctl::Set, BN_CLICKED, [this] { Send(); });
  // Several devices: the same send, through the device picker.
  Bind(kToSeveral, BN_CLICKED, [this] {
    PickerMode = TRUE;
    Send();
    PickerMode = FALSE;
  });
}

void CDlgSetHeibInspection::OnInitPage() { SetChecked(kVehicle, true); }

void CDlgSetHeibInspection::EnableParamControls(BOOL enable) {
  for (int id : kChoices) EnableItem(id, enable != FALSE);
}

void CDlgSetHeibInspection::Send() {
  selection_ = 0;
  for (int i = 0; i < 3; ++i)
    if (IsChecked(kChoices[i])) selection_ = i;
  StartSend(Mode::kSet, selection_ == kSelectionIdentity ? kCommandIdentity : kCommandInspect);
}

Json::Value CDlgSetHeibInspection::GetParam() {
  if (selection_ == kSelectionIdentity) return Json::Value();
  Json::Value param(Json::objectValue);
  param[key::kType] = selection_;
  return param;
}

std::string CDlgSetHeibInspection::GetParamDescription() { return LanguageText(kChoiceTexts[selection_]); }

void CDlgSetHeibInspection::AddPickerColumnsFirst(int32_t* codes, int& count) { codes[count++] = kHeibFirstColumn; }
void CDlgSetHeibInspection::AddPickerColumnsSecond(int32_t* codes, int& count) { codes[count++] = kHeibSecondColumn; }

// The regional form has no choice to make: it always asks for the identity.
void CDlgSetCbInspection::OnInitPage() {
  for (int id : kChoices) ShowItem(id, false);
}

void CDlgSetCbInspection::AddPickerColumnsSecond(int32_t* codes, int& count) { codes[count++] = kCbSecondColumn; }
