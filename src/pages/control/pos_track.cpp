#include "pages/control/pos_track.h"

#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/numbers.h"

namespace {
using C = CDlgPosTrack;
const RegisterPage<C> kPage{C::kFunctionType};

namespace key {
constexpr const char *kInterval = "TIBT", *kValidity = "POTR", *kAttr = "ATTR";
}  // namespace key

struct AttrEntry {
  uint32_t value;
  int text;
};
constexpr AttrEntry kAttrs[] = {{0, 13411}, {17, 13412}, {1, 13413}, {16, 13414}, {C::kAttrStop, 13415}};
constexpr int kIntervalDigits = 5, kValidityDigits = 9;

// The interval counts in seconds for attributes 0, 1 and stop; the validity for 0, 16 and stop.
bool IntervalInTime(uint32_t attr) { return attr == 0 || attr == 1 || attr == C::kAttrStop; }
bool ValidityInTime(uint32_t attr) { return attr == 0 || attr == 16 || attr == C::kAttrStop; }
}  // namespace

plat::DialogTemplate CDlgPosTrack::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 200},
      {{Static(kAttrLabel, "属性", {20, 22, 150, 42}, kTextAttr, style::Hidden),
        Combo(kAttrList, {160, 20, 400, 200}, style::Hidden)},
       {Static(kIntervalLabel, "时间间隔", {20, 62, 150, 82}, kTextInterval),
        Edit(kIntervalEdit, {160, 60, 300, 82}, {.limit = kIntervalDigits, .styles = style::Number}),
        Static(kIntervalHint, "(0~65535s)(0表示停止)", {310, 62, 590, 82}, kTextIntervalHint)},
       {Static(kValidityLabel, "位置跟踪有效期", {20, 102, 150, 122}, kTextValidity),
        Edit(kValidityEdit, {160, 100, 300, 122}, {.limit = kValidityDigits, .styles = style::Number}),
        Static(kValidityHint, "(0~999999999s)", {310, 102, 590, 122}, kTextValidityHint)},
       {SetButton({400, 160, 490, 188}), CancelButton({500, 160, 590, 188})}});
}

CDlgPosTrack::CDlgPosTrack() : CControlPage(kTemplate, kCommand, kDeviceKinds) {
  Bind(kAttrList, CBN_SELCHANGE, [this] { OnAttrChange(); });
}

uint32_t CDlgPosTrack::SelectedAttr() const {
  const auto* list = Item<plat::ComboBox>(kAttrList);
  const int selected = list ? list->GetCurSel() : -1;
  return selected < 0 ? 0 : list->GetItemData(selected);
}

void CDlgPosTrack::UpdateProtocolControls() {
  const bool extended = Extended();
  if (auto* list = Item<plat::ComboBox>(kAttrList); list && extended) {
    const int previous = list->GetCurSel();
    list->ResetContent();
    for (const AttrEntry& entry : kAttrs) list->SetItemData(list->AddString(LanguageText(entry.text)), entry.value);
    list->SetCurSel(previous >= 0 ? previous : 0);
  }
  ShowItem(kAttrLabel, extended);
  ShowItem(kAttrList, extended);
  if (extended) {
    OnAttrChange();
  } else {
    // Without the attribute the values count in seconds, under their plain captions.
    SetItemText(kIntervalLabel, LanguageText(kTextInterval));
    SetItemText(kIntervalHint, LanguageText(kTextIntervalHint));
    SetItemText(kValidityLabel, LanguageText(kTextValidity));
    SetItemText(kValidityHint, LanguageText(kTextValidityHint));
    EnableItem(kIntervalEdit, true);
  }
}

void CDlgPosTrack::OnAttrChange() {
  const uint32_t attr = SelectedAttr();
  SetItemText(kIntervalLabel, LanguageText(IntervalInTime(attr) ? kTextInterval : kTextIntervalOther));
  SetItemText(kIntervalHint, LanguageText(IntervalInTime(attr) ? kTextIntervalHint : kTextIntervalOtherHint));
  SetItemText(kValidityLabel, LanguageText(ValidityInTime(attr) ? kTextValidityTime : kTextValidityOther));
  SetItemText(kValidityHint, LanguageText(ValidityInTime(attr) ? kTextValidityHint : kTextValidityOtherHint));
  EnableItem(kIntervalEdit, attr != kAttrStop);
}

void CDlgPosTrack::EnableParamControls(BOOL enable) {
  EnableItem(kIntervalEdit, enable && !(Extended() && SelectedAttr() == kAttrStop));
  EnableItem(kValidityEdit, enable != FALSE);
}

bool CDlgPosTrack::ReadControls() {
  extended_ = Extended();
  attr_ = SelectedAttr();
  interval_ = GetItemText(kIntervalEdit);
  validity_ = GetItemText(kValidityEdit);
  return true;
}

BOOL CDlgPosTrack::CheckParam() {
  if (!extended_) {
    return ParamCheck(*this)
        .Filled(interval_, kTextInterval, kIntervalEdit)
        .Filled(validity_, kTextValidity, kValidityEdit)
        .Ok();
  }
  if (attr_ == kAttrStop) return TRUE;
  const bool intervalInTime = attr_ == 0 || attr_ == 1;
  const bool validityInTime = attr_ == 0 || attr_ == 16;
  return ParamCheck(*this)
      .Filled(interval_, intervalInTime ? kTextInterval : kTextIntervalOther, kIntervalEdit)
      .Filled(validity_, validityInTime ? kTextValidityTime : kTextValidityOther, kValidityEdit)
      .Ok();
}

Json::Value CDlgPosTrack::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kInterval] = txt::WToI(interval_);
  param[key::kValidity] = txt::WToI(validity_);
  if (extended_) param[key::kAttr] = attr_;
  return param;
}

std::string CDlgPosTrack::GetParamDescription() {
  return FormatChineseColon(LanguageText(kTextInterval), interval_) +
         FormatChineseColon(LanguageText(kTextValidity), validity_);
}
