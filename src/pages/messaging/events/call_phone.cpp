// The call-back pages: the flag from a combo or from radios, the number, the description.
#include "pages/messaging/events/call_phone.h"

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"

namespace {
const RegisterPage<CDlgCallPhone> kPage{CDlgCallPhone::kFunctionType};
const RegisterPage<CDlgCallPhone905> kPage905{CDlgCallPhone905::kFunctionType};

constexpr uint8_t kCallKindMask = 0x0F;

namespace key {
constexpr const char *kFlag = "Flag", *kPhone = "PHONE";
}  // namespace key

// The call kind in the flag's low four bits; other values have no text.
std::string CallKindText(uint8_t flag) {
  switch (flag & kCallKindMask) {
    case 0: return LanguageText(CCallBackPage::kTextNormal);
    case CCallBackPage::kListen: return LanguageText(CCallBackPage::kTextListen);
    default: return {};
  }
}
}  // namespace

CCallBackPage::CCallBackPage(int templateId, NumberKinds numberKinds)
    : CBaseDlg(templateId), numberKinds_(numberKinds) {
  Bind(ctl::Set, BN_CLICKED, [this] {
    flag_ = ReadFlag();
    phone_ = GetItemText(kPhoneEdit);
    StartSend(Mode::kSet, kCommand);
  });
}

plat::DialogTemplate CCallBackPage::MakeTemplate(int templateId, TemplateSection flagControls) {
  using namespace row;
  return PageTemplate(templateId, {600, 180},
                      {flagControls,
                       {Static(kPhoneLabel, "电话号码", {10, 80, 100, 102}, kTextPhone),
                        Edit(kPhoneEdit, {105, 80, 300, 102}, {.limit = kPhoneChars, .styles = plat::style::Number}),
                        Static(kPhoneNote, "(小于20位数字)", {305, 80, 480, 102}, kTextPhoneNote)},
                       {SetButton({400, 145, 490, 173}), CancelButton({500, 145, 590, 173})}});
}

BOOL CCallBackPage::CheckParam() { return ParamCheck(*this).Filled(phone_, kTextPhone, kPhoneEdit).Ok(); }

Json::Value CCallBackPage::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kFlag] = flag_;
  param[key::kPhone] = EncodeTextParam(phone_);
  return param;
}

std::string CCallBackPage::GetParamDescription() {
  Description description;
  description.Field(kTextFlag, CallKindText(flag_));
  if (numberKinds_ == NumberKinds::kYes) description.Text(LanguageText(flag_ & kVoip ? kTextVoip : kTextGsm));
  return description.Field(kTextPhone, phone_);
}

plat::DialogTemplate CDlgCallPhone::Layout() {
  using namespace row;
  return MakeTemplate(kTemplate, {Static(kFlagLabel, "标志", {10, 10, 100, 32}, kTextFlag),
                                  Combo(kFlagCombo, {105, 10, 300, 200})});
}

void CDlgCallPhone::OnInitPage() {
  auto* combo = Item<plat::ComboBox>(kFlagCombo);
  combo->SetItemData(combo->AddString(LanguageText(kTextNormal)), 0);
  combo->SetItemData(combo->AddString(LanguageText(kTextListen)), kListen);
  combo->SetCurSel(0);
}

uint8_t CDlgCallPhone::ReadFlag() const {
  const auto* combo = Item<plat::ComboBox>(kFlagCombo);
  const int selected = combo->GetCurSel();
  return selected < 0 ? 0 : static_cast<uint8_t>(combo->GetItemData(selected));
}

plat::DialogTemplate CDlgCallPhone905::Layout() {
  using namespace row;
  namespace style = plat::style;
  return MakeTemplate(kTemplate, {Static(kFlagLabel, "标志", {10, 10, 100, 32}, kTextFlag),
                                  Radio(kRadioNormal, "普通通话", {105, 10, 230, 32}, kTextNormal, style::Group),
                                  Radio(kRadioListen, "监听", {235, 10, 360, 32}, kTextListen),
                                  Radio(kRadioGsm, "GSM 语音号码", {105, 40, 230, 62}, kTextGsm, style::Group),
                                  Radio(kRadioVoip, "VOIP 号码", {235, 40, 360, 62}, kTextVoip)});
}

void CDlgCallPhone905::OnInitPage() {
  SetChecked(kRadioNormal, true);
  SetChecked(kRadioGsm, true);
}

uint8_t CDlgCallPhone905::ReadFlag() const {
  return static_cast<uint8_t>((IsChecked(kRadioListen) ? kListen : 0) | (IsChecked(kRadioVoip) ? kVoip : 0));
}
