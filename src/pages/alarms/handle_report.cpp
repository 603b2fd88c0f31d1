// The handling result reports: one template, two forms of the record.
#include "pages/alarms/handle_report.h"

#include <span>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/numbers.h"

namespace {
using R = CDlgAlarmHandleReport;
using S = CDlgAlarmHandleReportSb;
const RegisterTemplate<CHandleReportPage> kSharedTemplate;
const PageRegistration kReport{{R::kFunctionType}, PageHost::kVehicleWindow, [](int) { return std::make_unique<R>(); }, true};
const PageRegistration kReportSb{{S::kFunctionType}, PageHost::kVehicleWindow, [](int) { return std::make_unique<S>(); },
                                 true};

constexpr int kSbResults[] = {S::kTextConfirmed, S::kTextFalseAlarm};
constexpr int kSbMeasures[] = {S::kTextPhoto, S::kTextVoice, S::kTextMeasureOther, S::kTextOther};
constexpr const char* kPlatformCodePrefix = "SBAC=";
constexpr int kMeasureShift = 16;
constexpr uint32_t kLow16 = 0xFFFF;

void FillTexts(plat::ComboBox* list, std::span<const int> texts) {
  if (!list) return;
  uint32_t data = 0;
  for (int text : texts) list->SetItemData(list->AddString(LanguageText(text)), data++);
  list->SetCurSel(0);
}
}  // namespace

plat::DialogTemplate CHandleReportPage::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {450, 170},
                      {{Static(kMessageIdLabel, "消息ID", {10, 12, 110, 32}, kTextMessageId),
                        Edit(kMessageId, {120, 10, 440, 32}, {.limit = 35})},
                       {Static(kResultLabel, "处理结果", {10, 47, 110, 67}, kTextResult),
                        Combo(kResultCombo, {120, 45, 440, 200})},
                       {Static(kMeasureLabel, "处理措施", {10, 82, 110, 102}, CDlgAlarmHandleReportSb::kTextMeasure,
                               style::Hidden),
                        Combo(kMeasureCombo, {120, 80, 440, 200}, style::Hidden)},
                       {SetButton({250, 130, 340, 158}), CancelButton({350, 130, 440, 158})}});
}

CHandleReportPage::CHandleReportPage(Kind kind) : CPlatformAckPage(kTemplate, kind) {
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CHandleReportPage::PutOwnDevice(RecordWriter& record) const {
  const CDevFunc device = CVehicleBaseMgr::FindDvsDeviceByID(Caps().ownDevId);
  if (device.IsValid()) record.PutText(kRecDevIdno, kRecDevIdnoBytes, device.GetDevIDNOForChar());
}

void CHandleReportPage::OnSend() {
  const AlarmContext alarms = Alarms();
  if (alarms.Empty()) {
    ShowMsgTipEx(kNoAlarmTip, "", 0);
    return;
  }
  Acknowledge(alarms.At(0));
}

void CHandleReportPage::OnAnswered(const void* answer) { EndWithAnswer(answer); }

// ---- the report: message id and result ------------------------------------------

CDlgAlarmHandleReport::CDlgAlarmHandleReport() : CHandleReportPage(kHandleReport) {}

void CDlgAlarmHandleReport::OnInitPage() { FillResults(kResultCombo); }

void CDlgAlarmHandleReport::EnableParamControls(BOOL enable) {
  EnableItem(kResultCombo, enable != FALSE);
  EnableItem(kMessageId, enable != FALSE);
}

void CDlgAlarmHandleReport::ShowContextData() {
  const AlarmContext alarms = Alarms();
  if (!alarms.Empty()) SetItemText(kMessageId, std::to_string(alarms.At(0).MessageId()));
}

void CDlgAlarmHandleReport::FillRecord(const AlarmView& alarm, RecordWriter& record) {
  PutOwnDevice(record);
  record.PutU16(kRecType, alarm.EffectiveType());
  record.PutU32(kRecMessageId, static_cast<uint32_t>(txt::WToI(GetItemText(kMessageId))));
  record.PutText(kRecPlatformCode, kRecCodeBytes, alarm.CodeAfter(kPlatformCodePrefix));
  record.PutU32(kRecResult, static_cast<uint32_t>(SelectedData(kResultCombo)));
}

// ---- the second form: identifier, result and measure ----------------------------------

CDlgAlarmHandleReportSb::CDlgAlarmHandleReportSb() : CHandleReportPage(kHandleReportSb) {}

void CDlgAlarmHandleReportSb::OnInitPage() {
  SetItemText(kMessageIdLabel, LanguageText(kTextGuid));
  FillTexts(Item<plat::ComboBox>(kResultCombo), kSbResults);
  FillTexts(Item<plat::ComboBox>(kMeasureCombo), kSbMeasures);
  ShowItem(kMeasureLabel, true);
  ShowItem(kMeasureCombo, true);
}

void CDlgAlarmHandleReportSb::EnableParamControls(BOOL enable) {
  for (int id : {int{kResultCombo}, int{kMeasureCombo}, int{kMessageId}}) EnableItem(id, enable != FALSE);
}

void CDlgAlarmHandleReportSb::ShowContextData() {
  const AlarmContext alarms = Alarms();
  if (!alarms.Empty()) SetItemText(kMessageId, alarms.At(0).Guid());
}

void CDlgAlarmHandleReportSb::FillRecord(const AlarmView& alarm, RecordWriter& record) {
  (void)alarm;
  PutOwnDevice(record);
  record.PutText(kRecGuid, kRecGuidBytes, GetItemText(kMessageId));
  const uint32_t result = static_cast<uint32_t>(SelectedData(kResultCombo)) & kLow16;
  record.PutU32(kRecResult, (static_cast<uint32_t>(SelectedData(kMeasureCombo)) << kMeasureShift) | result);
}
