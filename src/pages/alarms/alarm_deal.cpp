// The handling-text page: its template, its checks and its record.
#include "pages/alarms/alarm_deal.h"

#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "text/encoding.h"

namespace {
using C = CDlgAlarmDeal;
const RegisterPage<C> kPage{{C::kFunctionType, C::kFunctionTypeBatch}, PageHost::kVehicleWindow, PageList::kNone};
constexpr int kWays[] = {1, 2, 3, 4, 5, 6};

// The first n characters of a UTF-8 text.
std::string FirstChars(const std::string& text, size_t n) {
  size_t at = 0;
  for (size_t chars = 0; at < text.size() && chars < n; ++chars) {
    ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) ++at;
  }
  return text.substr(0, at);
}
}  // namespace

plat::DialogTemplate CDlgAlarmDeal::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {461, 390},
      {{Static(kTextLabel, "处理内容", {10, 10, 200, 30}, kTextHandling),
        Combo(kWayCombo, {210, 8, 400, 200}, style::Hidden),
        Button(kPresetButton, "...", {410, 8, 450, 30}, 0, style::Hidden),
        Button(kPresetMenuButton, "...", {410, 8, 450, 30}, 0, style::Hidden)},
       {Edit(kTextEdit, {10, 35, 450, 300}, {.limit = kMaxChars, .styles = style::Multiline | style::WantReturn}),
        Static(kTextHint, "(提示：内容小于256字节,不能含有字符“|”)", {10, 305, 450, 325}, kTextHintText)},
       {SetButton({260, 350, 350, 378}), CancelButton({360, 350, 450, 378})}});
}

CDlgAlarmDeal::CDlgAlarmDeal(int functionType)
    : CAlarmHandlingPage(kTemplate), secondMode_(functionType == kFunctionTypeBatch), record_(kDevHandleRecordSize) {
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
  Bind(kPresetButton, BN_CLICKED, [this] { ShowPresetMenu(); });
}

void CDlgAlarmDeal::OnInitPage() {
  auto* ways = Item<plat::ComboBox>(kWayCombo);
  for (int way : kWays) ways->SetItemData(ways->AddString(FormatStringMgr::FormatAlarmHandleStr(way)), way);
  // The second mode offers the handling way and the preset texts.
  ShowItem(kWayCombo, secondMode_);
  ShowItem(kPresetButton, secondMode_);
}

void CDlgAlarmDeal::OnSend() {
  SaveInputs();
  text_ = GetItemText(kTextEdit);
  if (!CheckParam()) return;
  const auto* ways = Item<plat::ComboBox>(kWayCombo);
  way_ = (ways && ways->GetCurSel() >= 0) ? static_cast<int>(ways->GetItemData(ways->GetCurSel())) : kDefaultWay;
  StartRun(/*logging=*/true, text_, way_);
}

BOOL CDlgAlarmDeal::CheckParam() { return CheckHandlingText(text_, /*barFirst=*/true) ? TRUE : FALSE; }

const void* CDlgAlarmDeal::RecordFor(const AlarmView& alarm) {
  record_.Clear();
  record_.PutText(kRecText, kRecTextBytes, FirstChars(text_, kMaxChars));
  record_.PutU32(kRecWay, static_cast<uint32_t>(way_));
  record_.PutText(kRecGuid, kRecGuidBytes, alarm.Guid());
  record_.PutText(kRecDevIdno, kRecDevIdnoBytes, alarm.DevIdno());
  record_.PutU16(kRecType, alarm.Type());
  record_.PutU16(kRecSecondType, alarm.SecondType());
  record_.PutU32(kRecTime, alarm.Time());
  const uint32_t second = alarm.SecondTime();
  record_.PutU32(kRecSecondTime, (second & kTimeLowBits) == 0 ? alarm.Time() : second);
  return record_.Data();
}

AlarmServiceCall::Starter CDlgAlarmDeal::Service() const { return &NETCLIENT_MCSetDevHandleAlarm; }
