// The supervision answer: the record of each alarm and the walk through them.
#include "pages/alarms/alarm_supervise.h"

#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/numbers.h"

namespace {
using C = CDlgAlarmSupervise;
const RegisterPage<C> kPage{{C::kFunctionType}, PageHost::kVehicleWindow, PageList::kNone};
constexpr char kPartSeparator = '|', kFieldSeparator = ';';
}  // namespace

plat::DialogTemplate CDlgAlarmSupervise::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {450, 340},
      {{Static(kMessageIdLabel, "消息ID", {10, 12, 110, 32}, kTextMessageId, style::Hidden),
        Edit(kMessageId, {120, 10, 440, 32}, {.limit = 35, .styles = style::Hidden})},
       {Static(kContentLabel, "内容", {10, 12, 110, 32}, kTextContent),
        Edit(kContent, {10, 35, 440, 240}, {.styles = style::Multiline | style::ReadOnly})},
       {Static(kResultLabel, "处理结果", {10, 257, 110, 277}, kTextResult), Combo(kResultCombo, {120, 255, 440, 400})},
       {SetButton({250, 300, 340, 328}), CancelButton({350, 300, 440, 328})}});
}

CDlgAlarmSupervise::CDlgAlarmSupervise() : CPlatformAckPage(kTemplate, kSupervision) {
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CDlgAlarmSupervise::ShowContextData() {
  const AlarmContext alarms = Alarms();
  if (!alarms.Empty()) SetItemText(kContent, GetJT809AlarmDesc(alarms.At(0).Record()));
}

void CDlgAlarmSupervise::OnSend() {
  if (Alarms().Empty()) {
    ShowMsgTipEx(kNoAlarmTip, "", 0);
    return;
  }
  Index() = 0;
  AnswerCurrent();
}

void CDlgAlarmSupervise::AnswerCurrent() { Acknowledge(Alarms().At(Index().load())); }

void CDlgAlarmSupervise::FillRecord(const AlarmView& alarm, RecordWriter& record) {
  record.PutText(kRecDevIdno, kRecDevIdnoBytes, alarm.DevIdno());
  record.PutU32(kRecMessageId, alarm.InfoType());
  record.PutU32(kRecResult, static_cast<uint32_t>(SelectedData(kResultCombo)));
  // "<head>|<a>;<number>[;<more>]": the number answers the request, and a third field asks for the time.
  const std::vector<std::string> parts = SplitText(alarm.AlarmText(), kPartSeparator);
  if (parts.size() < 2) return;
  const std::vector<std::string> fields = SplitText(parts[1], kFieldSeparator);
  if (fields.size() >= 2) record.PutU16(kRecNumber, static_cast<uint16_t>(txt::WToI(fields[1])));
  if (fields.size() > 2) record.PutU32(kRecTime, alarm.Time());
}

void CDlgAlarmSupervise::OnAnswered(const void* answer) {
  if (Index().load() < Alarms().Count()) {
    AnswerCurrent();
    return;
  }
  if (!answer || NETCLIENT_MCMsgResult(answer) != 0) {
    ShowMsgTipEx(FailureText(answer), "", 0);
  } else {
    if (GetParent()) GetParent()->SendMessage(msg::SupervisionAnswered, 0, 0);
    ShowMsgTipEx(LanguageText(txtid::SetSucceeded), "", 0);
  }
  EnableSendControls(TRUE);
}
