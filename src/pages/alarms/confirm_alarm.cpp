// The alarm confirmation page: type bits, serial number, the context device.
#include "pages/alarms/confirm_alarm.h"

#include <algorithm>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/numbers.h"

namespace {
using C = CDlgConfirmAlarm;
const RegisterPage<C> kPage{{C::kFunctionType}, PageHost::kBoth, PageList::kNone};

namespace key {
constexpr const char *kSerial = "MSGID", *kTypes = "ALTY";
}  // namespace key

// Each type's check box, its bit in the mask and its text.
struct AlarmType {
  int check, bit, text;
};
constexpr AlarmType kTypes[] = {{C::kUrgent, 0, C::kTextUrgent},           {C::kDanger, 3, C::kTextDanger},
                                {C::kArea, 20, C::kTextArea},              {C::kRoute, 21, C::kTextRoute},
                                {C::kSection, 22, C::kTextSection},        {C::kIgnition, 27, C::kTextIgnition},
                                {C::kDisplacement, 28, C::kTextDisplacement}};
constexpr const char* kTypeSeparator = "\r\n\t    ";
}  // namespace

plat::DialogTemplate CDlgConfirmAlarm::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {450, 340},
      {{Static(kSerialLabel, "报警消息流水号", {10, 12, 140, 32}, kTextSerial),
        Number(kSerialEdit, {150, 10, 250, 32}, 0, kMaxSerial),
        Static(kSerialHint, "(0表示确认该类型所有报警消息)", {260, 12, 440, 32}, kTextSerialHint)},
       {Box(kTypeGroup, "人工确认报警类型", {10, 45, 440, 290}, kTextTypes, style::Group),
        Check(kUrgent, "确认紧急报警", {20, 65, 430, 85}, kTextUrgent),
        Check(kDanger, "确认危险报警", {20, 95, 430, 115}, kTextDanger),
        Check(kArea, "确认进出区域报警", {20, 125, 430, 145}, kTextArea),
        Check(kRoute, "确认进出路线报警", {20, 155, 430, 175}, kTextRoute),
        Check(kSection, "确认路段行驶时间不足/过长报警", {20, 185, 430, 205}, kTextSection),
        Check(kIgnition, "确认车辆非法点火报警", {20, 215, 430, 235}, kTextIgnition),
        Check(kDisplacement, "确认车辆非法位移报警", {20, 245, 430, 265}, kTextDisplacement)},
       {SetButton({250, 300, 340, 328}), CancelButton({350, 300, 440, 328})}});
}

CDlgConfirmAlarm::CDlgConfirmAlarm() : CBaseDlg(kTemplate) {
  HideResultList = TRUE;  // the vehicle function window shows no rows for it
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CDlgConfirmAlarm::OnInitPage() {
  SetItemText(kSerialEdit, "0");
  SetChecked(kUrgent, true);
}

void CDlgConfirmAlarm::OnSend() {
  types_ = 0;
  for (const AlarmType& t : kTypes)
    if (IsChecked(t.check)) types_ |= 1u << t.bit;
  serial_ = txt::WToI(GetItemText(kSerialEdit));
  if (contextPointer != 0) {
    // Once: a device the page already holds (its last send went to the current device) is not added again.
    std::string device(reinterpret_cast<const char*>(contextPointer));
    if (std::find(pending_.begin(), pending_.end(), device) == pending_.end()) pending_.push_back(std::move(device));
  }
  StartSend(Mode::kSet, kCommand);
}

void CDlgConfirmAlarm::CollectTargets(std::deque<std::string>& targets) {
  targets.insert(targets.end(), pending_.begin(), pending_.end());
  pending_.clear();
}

Json::Value CDlgConfirmAlarm::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kSerial] = serial_;
  param[key::kTypes] = types_;
  return param;
}

void CDlgConfirmAlarm::PrepareBatch(CommandRequest& request) {
  if (GetParent()) GetParent()->PostMessage(msg::AlarmConfirmed, request.result, request.result);
}

std::string CDlgConfirmAlarm::GetParamDescription() {
  std::string types;
  for (const AlarmType& t : kTypes)
    if (types_ & (1u << t.bit)) AddStringStatus(types, LanguageText(t.text), kTypeSeparator);
  return Description().Field(kTextSerial, std::to_string(static_cast<uint32_t>(serial_))).Field(kTextTypes, types);
}
