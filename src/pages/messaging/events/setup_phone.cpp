// The phone book pages: type radios, contact rows, the name checks, "PHIT"
// and the two description forms.
#include "pages/messaging/events/setup_phone.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <vector>
#include <set>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"
#include "pages/messaging/events/setting_type.h"
#include "text/encoding.h"

namespace {
using C = CPhoneBookPage;
const RegisterPage<CDlgSetupPhone> kPage{CDlgSetupPhone::kFunctionType};
const RegisterPage<CDlgSetupPhone905> kPage905{CDlgSetupPhone905::kFunctionType};

constexpr SettingTypeRadio kRadios[] = {{C::kRadioDeleteAll, C::kDeleteAll},
                                        {C::kRadioUpdate, C::kUpdate},
                                        {C::kRadioAppend, C::kAppend},
                                        {C::kRadioModify, C::kModify}};
constexpr int kTypeTexts[] = {C::kTextDeleteAll, C::kTextUpdate, C::kTextAppend, C::kTextModify};
constexpr uint8_t kDirectionMask = 0x0F;
constexpr const char* kItemSeparator = ";";
constexpr const char* kLineBreak = "\r\n";

namespace key {
constexpr const char *kType = "SETP", *kContacts = "PHIT", *kFlag = "Flag", *kPhone = "PHONE", *kName = "LIMN";
}  // namespace key

// Puts controls right after another control of a template, in its layout group.
void InsertAfter(plat::DialogTemplate& dialog, int anchor, std::initializer_list<plat::ControlEntry> added) {
  auto it = std::find_if(dialog.controls.begin(), dialog.controls.end(),
                         [anchor](const plat::ControlEntry& entry) { return entry.id == anchor; });
  if (it == dialog.controls.end()) return;
  const int group = it->layoutGroup;
  std::vector<plat::ControlEntry> placed(added);
  for (plat::ControlEntry& entry : placed) entry.layoutGroup = group;
  dialog.controls.insert(it + 1, placed.begin(), placed.end());
}

// The call directions in the flag's low four bits; other values have no text.
std::string DirectionText(uint8_t flag) {
  switch (flag & kDirectionMask) {
    case C::kIncoming: return LanguageText(C::kTextIncoming);
    case C::kOutgoing: return LanguageText(C::kTextOutgoing);
    case C::kBoth: return LanguageText(C::kTextIncoming) + "/" + LanguageText(C::kTextOutgoing);
    default: return {};
  }
}
}  // namespace

plat::DialogTemplate CPhoneBookPage::MakeTemplate(int templateId) {
  using namespace row;
  namespace style = plat::style;
  static const char* const kRowCaptions[kRows] = {"联系人1", "联系人2", "联系人3", "联系人4"};
  const auto top = [](int i) { return 100 + 60 * i; };
  // Each contact takes two lines: name and flag, then number.
  const auto label = [&](int i) { return Static(kRowLabels[i], kRowCaptions[i], {20, top(i), 90, top(i) + 22}, kTextContact); };
  const auto name = [&](int i) { return Edit(kNameEdits[i], {95, top(i), 230, top(i) + 22}, {.limit = kNameChars}); };
  const auto nameNote = [&](int i) {
    return Static(kNameNotes[i], "(小于20字节)", {235, top(i), 330, top(i) + 22}, kTextNameNote);
  };
  const auto flagLabel = [&](int i) { return Static(kFlagLabels[i], "标志", {335, top(i), 380, top(i) + 22}, kTextFlag); };
  const auto flag = [&](int i) { return Combo(kFlagCombos[i], {385, top(i), 585, top(i) + 120}); };
  const auto phoneLabel = [&](int i) {
    return Static(kPhoneLabels[i], "电话", {20, top(i) + 27, 90, top(i) + 49}, kTextPhone);
  };
  const auto phone = [&](int i) {
    return Edit(kPhoneEdits[i], {95, top(i) + 27, 230, top(i) + 49}, {.limit = kPhoneChars, .styles = style::Number});
  };
  const auto phoneNote = [&](int i) {
    return Static(kPhoneNotes[i], "(小于20位)", {235, top(i) + 27, 330, top(i) + 49}, kTextPhoneNote);
  };
  return PageTemplate(
      templateId, {600, 420},
      {{Box(kTypeGroup, "设置类型", {10, 10, 590, 70}, kTextType),
        Radio(kRadioDeleteAll, "删除所有联系人", {20, 35, 160, 55}, kTextDeleteAll, style::Group),
        Radio(kRadioUpdate, "更新电话本", {165, 35, 300, 55}, kTextUpdate),
        Radio(kRadioAppend, "追加电话本", {305, 35, 440, 55}, kTextAppend),
        Radio(kRadioModify, "修改电话本", {445, 35, 580, 55}, kTextModify)},
       {Box(kContactsGroup, "联系人", {10, 80, 590, 345}, kTextContact, style::Group),
        label(0), name(0), nameNote(0), flagLabel(0), flag(0), phoneLabel(0), phone(0), phoneNote(0),
        label(1), name(1), nameNote(1), flagLabel(1), flag(1), phoneLabel(1), phone(1), phoneNote(1),
        label(2), name(2), nameNote(2), flagLabel(2), flag(2), phoneLabel(2), phone(2), phoneNote(2),
        label(3), name(3), nameNote(3), flagLabel(3), flag(3), phoneLabel(3), phone(3), phoneNote(3)},
       {Static(kHint, "提示：输入的联系人有效后，才能输入对应的电话", {10, 350, 590, 370}, kTextHint)},
       {SetButton({400, 385, 490, 413}), CancelButton({500, 385, 590, 413})}});
}

CPhoneBookPage::CPhoneBookPage(int templateId, NumberKinds numberKinds)
    : CBaseDlg(templateId), numberKinds_(numberKinds) {
  BindSettingTypes(*this, kRadios, [this](uint8_t type) { type_ = type; });
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CPhoneBookPage::OnInitPage() {
  type_ = kAppend;
  CheckSettingType(*this, kRadios, type_);
  const std::string incoming = LanguageText(kTextIncoming), outgoing = LanguageText(kTextOutgoing);
  for (int combo : kFlagCombos) {
    auto* box = Item<plat::ComboBox>(combo);
    box->SetItemData(box->AddString(incoming), kIncoming);
    box->SetItemData(box->AddString(outgoing), kOutgoing);
    box->SetItemData(box->AddString(incoming + "/" + outgoing), kBoth);
    box->SetCurSel(0);
  }
}

void CPhoneBookPage::OnSend() {
  for (int i = 0; i < kRows; ++i) {
    const auto* combo = Item<plat::ComboBox>(kFlagCombos[i]);
    const int selected = combo->GetCurSel();
    flags_[i] = static_cast<uint8_t>((selected < 0 ? 0 : combo->GetItemData(selected)) | NumberKindBit(i));
    names_[i] = GetItemText(kNameEdits[i]);
    phones_[i] = GetItemText(kPhoneEdits[i]);
  }
  StartSend(Mode::kSet, kCommand);
}

BOOL CPhoneBookPage::CheckParam() {
  if (type_ == kDeleteAll) return TRUE;
  ParamCheck check(*this);
  std::set<std::string> seen;
  for (int i = 0; i < kRows && !check.Failed(); ++i) {
    if (names_[i].empty()) continue;  // a number without a name is ignored
    check.That(!phones_[i].empty(),
               LanguageText(kTextContact) + std::to_string(i + 1) + LanguageText(kTextNoPhone), kPhoneEdits[i])
        .That(seen.insert(names_[i]).second, kTextDuplicateName, kNameEdits[i]);
  }
  return check.Ok();
}

Json::Value CPhoneBookPage::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kType] = type_;
  for (int i = 0; i < kRows; ++i) {
    if (names_[i].empty()) continue;
    Json::Value contact(Json::objectValue);
    contact[key::kFlag] = flags_[i];
    contact[key::kPhone] = txt::Utf8ToGbk(phones_[i]);
    contact[key::kName] = EncodeTextParam(names_[i]);
    param[key::kContacts].append(std::move(contact));
  }
  return param;
}

std::string CPhoneBookPage::RowItem(int row, const std::string& flagText) const {
  const std::string number = std::to_string(row + 1);
  if (numberKinds_ == NumberKinds::kNo) {
    return LanguageText(kTextContact) + number + "=" + names_[row] + "," + LanguageText(kTextFlag) + "=" + flagText +
           "," + LanguageText(kTextPhone) + "=" + phones_[row];
  }
  return Description()
      .Field(LanguageText(kTextContact) + number, names_[row])
      .Field(kTextFlag, flagText)
      .Text(LanguageText(flags_[row] & kVoip ? kTextVoip : kTextGsm))
      .Field(kTextPhone, phones_[row]);
}

std::string CPhoneBookPage::GetParamDescription() {
  std::string contacts;
  if (type_ != kDeleteAll) {
    for (int i = 0; i < kRows; ++i) {
      if (names_[i].empty()) continue;
      const std::string item = RowItem(i, DirectionText(flags_[i]));
      if (numberKinds_ == NumberKinds::kNo) {
        AddStringStatus(contacts, item, kItemSeparator);
      } else {
        // Each contact's fields continue the list, and a line break ends the contact.
        AddChineseStringStatus(contacts, item);
        contacts += kLineBreak;
      }
    }
  }
  const std::string typeText = type_ < std::size(kTypeTexts) ? LanguageText(kTypeTexts[type_]) : std::string();
  return Description().Field(kTextType, typeText).Field(kTextContact, contacts);
}

plat::DialogTemplate CDlgSetupPhone::Layout() { return MakeTemplate(kTemplate); }

plat::DialogTemplate CDlgSetupPhone905::Layout() {
  using namespace row;
  namespace style = plat::style;
  plat::DialogTemplate dialog = MakeTemplate(kTemplate);
  // Each contact's number-kind pair follows its number, in the contact's block.
  for (int i = 0; i < kRows; ++i) {
    const int top = 127 + 60 * i;
    InsertAfter(dialog, kPhoneNotes[i],
                {Radio(kGsmRadios[i], "GSM 语音号码", {335, top, 460, top + 22}, kTextGsm, style::Group),
                 Radio(kVoipRadios[i], "VOIP 号码", {465, top, 585, top + 22}, kTextVoip)});
  }
  return dialog;
}

void CDlgSetupPhone905::OnInitPage() {
  CPhoneBookPage::OnInitPage();
  for (int radio : kGsmRadios) SetChecked(radio, true);
}
