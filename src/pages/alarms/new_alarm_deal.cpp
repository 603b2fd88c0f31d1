// The one-step alarm handling page: its template, lists, checks and the
// handling record of each alarm.
#include "pages/alarms/new_alarm_deal.h"

#include <algorithm>
#include <cctype>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/saved_control.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/numbers.h"

namespace {
using C = CDlgNewAlarmDeal;
const RegisterPage<C> kPage{{C::kFunctionType, C::kFunctionTypeBatch}, PageHost::kVehicleWindow, PageList::kNone};

// The host whose directory server reports handling to the superior platform by default.
constexpr const char* kReportingDirServer = "report.platform.local";

constexpr const char* kReasonKeys[] = {"equipmentfailure", "badweather"};

// Each flag box and its bit.
struct Flag {
  int check;
  uint32_t bit;
};
constexpr Flag kFlags[] = {{C::kUrgent, 1}, {C::kDisplay, 4}, {C::kTts, 8}, {C::kAdScreen, 16}};

// Each operation: its button, its box for one-key send, its mask bit.
struct Op {
  int button, check;
  uint32_t bit;
};
constexpr Op kOps[] = {{C::kSendButton, C::kSendCheck, C::kOpMessage},
                       {C::kHandleButton, C::kHandleCheck, C::kOpHandle},
                       {C::kReportButton, C::kReportCheck, C::kOpReport},
                       {C::kClearButton, C::kClearCheck, C::kOpClear}};

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

bool IsIpAddress(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789.") == std::string::npos;
}

void Fill(plat::ComboBox* combo, std::initializer_list<int> values, std::string (*name)(int)) {
  if (!combo) return;
  for (int value : values) combo->SetItemData(combo->AddString(name(value)), static_cast<uint32_t>(value));
}

// The selected entry's data, or -1 without a selection.
int SelectedData(const plat::ComboBox* combo) {
  if (!combo || combo->GetCurSel() < 0) return -1;
  return static_cast<int>(combo->GetItemData(combo->GetCurSel()));
}
}  // namespace

plat::DialogTemplate CDlgNewAlarmDeal::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {692, 530},
      {{Static(kTextLabel, "消息/处理内容", {10, 10, 200, 30}, kTextContent),
        Button(kPresetButton, "...", {640, 8, 680, 30}),
        Edit(kTextEdit, {10, 35, 680, 175}, {.limit = kMaxChars, .styles = style::Multiline | style::WantReturn}),
        Static(kTextHint, "(提示：内容小于256字节,不能含有字符“|”)", {10, 180, 680, 200}, kTextContentHint)},
       {Box(kFlagGroup, "消息类型", {10, 210, 680, 260}, kTextFlags, style::Group),
        Check(kUrgent, "紧急", {20, 230, 150, 250}, kTextUrgent),
        Check(kDisplay, "终端显示屏显示", {160, 230, 330, 250}, kTextDisplay),
        Check(kTts, "终端TTS显示", {340, 230, 500, 250}, kTextTts),
        Check(kAdScreen, "广告屏显示", {510, 230, 670, 250}, kTextAdScreen)},
       {Static(kWayLabel, "处理方式", {10, 275, 100, 295}, kTextWay), Combo(kWayCombo, {110, 272, 330, 400}),
        Static(kReportLabel, "处理上报", {350, 275, 440, 295}, kTextReport), Combo(kReportCombo, {450, 272, 680, 400})},
       {Static(kReasonLabel, "误报原因", {10, 310, 100, 330}, kTextReason, style::Hidden),
        Combo(kReasonCombo, {110, 307, 330, 400}, style::Hidden)},
       {Button(kSendButton, "下发消息", {10, 350, 170, 378}, kTextSendOp),
        Button(kHandleButton, "报警处理", {180, 350, 340, 378}, kTextHandleOp),
        Button(kReportButton, "处理上报", {350, 350, 510, 378}, kTextReportOp),
        Button(kClearButton, "清除报警", {520, 350, 680, 378}, kTextClearOp)},
       {Check(kSendCheck, "下发消息", {10, 400, 170, 420}, kTextSendOp),
        Check(kHandleCheck, "报警处理", {180, 400, 340, 420}, kTextHandleOp),
        Check(kReportCheck, "处理上报", {350, 400, 510, 420}, kTextReportOp),
        Check(kClearCheck, "清除报警", {520, 400, 680, 420}, kTextClearOp)},
       {Check(kAllCheck, "全选", {10, 440, 170, 460}, kTextAll),
        Button(kOneKeyButton, "一键发送", {560, 480, 680, 510}, kTextOneKey)}});
}

int CDlgNewAlarmDeal::DefaultReportIndex(const std::string& dirServer) {
  const std::string fixed = kReportingDirServer;
  if (IsIpAddress(fixed)) return dirServer == fixed ? 1 : 0;
  return Lower(std::string(txt::TrimBlanks(dirServer))) == Lower(fixed) ? 1 : 0;
}

CDlgNewAlarmDeal::CDlgNewAlarmDeal()
    : CAlarmHandlingPage(kTemplate), record_(kAlarmHandleRecordSize), copy_(kAlarmHandleRecordSize) {
  const int reportDefault = DefaultReportIndex(CMgrAppInfo::GetDirSvrIP());
  saved_ = {SavedControl::Combo(kReportCombo, reportDefault), SavedControl::Combo(kReasonCombo, reportDefault),
            SavedControl::Check(kSendCheck, true),           SavedControl::Check(kHandleCheck, true),
            SavedControl::Check(kReportCheck, true),         SavedControl::Check(kClearCheck, true),
            SavedControl::Check(kAllCheck, false)};
  SavedControls = saved_;
  for (const Op& op : kOps) Bind(op.button, BN_CLICKED, [this, bit = op.bit] { Run(bit); });
  Bind(kOneKeyButton, BN_CLICKED, [this] { OnOneKey(); });
  Bind(kAllCheck, BN_CLICKED, [this] { OnSelectAll(); });
  Bind(kWayCombo, CBN_SELCHANGE, [this] { OnWayChanged(); });
  Bind(kPresetButton, BN_CLICKED, [this] { ShowPresetMenu(); });
}

void CDlgNewAlarmDeal::OnInitPage() {
  auto* ways = Item<plat::ComboBox>(kWayCombo);
  Fill(ways, {2, 3, 4, 5, 6}, &FormatStringMgr::FormatAlarmHandleStr);
  if (CLayoutMgr::IsSupportVer7_23()) {
    Fill(ways, {7, 8}, &FormatStringMgr::FormatAlarmHandleStr);
    if (CLayoutMgr::IsSupportVer7_25()) Fill(ways, {9, 10, 11, 12, 13}, &FormatStringMgr::FormatAlarmHandleStr);
  }
  Fill(Item<plat::ComboBox>(kReportCombo), {0, 1, 2, 3}, &FormatStringMgr::FormatAlarmHandleReportStr);
  Fill(Item<plat::ComboBox>(kReasonCombo), {0, 1}, &FormatStringMgr::FormatAlarmFalseReasonStr);
}

bool CDlgNewAlarmDeal::ReasonsShown() const {
  return CLayoutMgr::IsSupportFalseAlarmResaon() && SelectedData(Item<plat::ComboBox>(kWayCombo)) == kFalseAlarmWay;
}

void CDlgNewAlarmDeal::OnWayChanged() {
  const bool shown = ReasonsShown();
  ShowItem(kReasonLabel, shown);
  ShowItem(kReasonCombo, shown);
}

void CDlgNewAlarmDeal::OnSelectAll() {
  const bool all = IsChecked(kAllCheck);
  for (int box : {kSendCheck, kHandleCheck, kReportCheck}) SetChecked(box, all);
  if (CConfigKestrelINI::ReadIniInt(kRightHandling) != 0) SetChecked(kClearCheck, all);
}

void CDlgNewAlarmDeal::OnOneKey() {
  uint32_t operations = 0;
  for (const Op& op : kOps)
    if (IsChecked(op.check)) operations |= op.bit;
  if (operations == 0) {
    ShowMsgTipEx(LanguageText(kTextNoOperation), "", 0);
    return;
  }
  Run(operations);
}

void CDlgNewAlarmDeal::Run(uint32_t operations) {
  record_.Clear();
  record_.PutU32(kRecMask, operations);
  std::string text;
  if (operations & (kOpMessage | kOpHandle)) {
    uint32_t flags = 0;
    for (const Flag& f : kFlags)
      if (IsChecked(f.check)) flags |= f.bit;
    record_.PutU32(kRecFlags, flags);
    text = GetItemText(kTextEdit);
    if (!CheckHandlingText(text, /*barFirst=*/false)) return;
    record_.PutText(kRecText, kRecTextBytes, text);
  }
  int way = 0;
  if (operations & kOpHandle) {
    way = SelectedData(Item<plat::ComboBox>(kWayCombo));
    if (way < 0) {
      ShowMsgTipEx(LanguageText(kTextNoWay), "", 0);
      return;
    }
    record_.PutU32(kRecWay, static_cast<uint32_t>(way));
    const int reason = SelectedData(Item<plat::ComboBox>(kReasonCombo));
    if (way == kFalseAlarmWay && CLayoutMgr::IsSupportFalseAlarmResaon() && reason >= 0 &&
        reason < static_cast<int>(std::size(kReasonKeys))) {
      record_.PutText(kRecReason, kRecReasonBytes, kReasonKeys[reason]);
    }
  }
  if (operations & kOpReport) {
    const int report = SelectedData(Item<plat::ComboBox>(kReportCombo));
    if (report < 0) {
      ShowMsgTipEx(LanguageText(kTextNoReport), "", 0);
      return;
    }
    record_.PutU32(kRecReport, static_cast<uint32_t>(report));
  }
  serveDevicesOnce_ = (operations & (kOpMessage | kOpClear)) != 0;
  if (serveDevicesOnce_) served_.clear();
  StartRun((operations & kOpHandle) != 0, text, way);
}

const void* CDlgNewAlarmDeal::RecordFor(const AlarmView& alarm) {
  record_.PutText(kRecGuid, kRecGuidBytes, alarm.Guid());
  record_.PutText(kRecDevIdno, kRecDevIdnoBytes, alarm.DevIdno());
  record_.PutU32(kRecTime, alarm.EffectiveTime());
  record_.PutU32(kRecType, alarm.EffectiveType());
  record_.PutU32(kRecMessageId, alarm.MessageId());
  record_.PutText(kRecPlatformCode, kRecCodeBytes,
                  IsSBUploadAlarmClient(alarm.Record()) ? alarm.CodeAfter("SB809AC=") : std::string());
  copy_ = record_;
  if (serveDevicesOnce_) {
    // A message goes to a device once, and its alarms are cleared once.
    if (!served_.insert(alarm.DevIdno()).second) {
      copy_.PutU32(kRecMask, copy_.U32(kRecMask) & ~(kOpMessage | kOpClear));
    }
    if (copy_.U32(kRecMask) == 0) return nullptr;
  }
  return copy_.Data();
}

AlarmServiceCall::Starter CDlgNewAlarmDeal::Service() const { return &NETCLIENT_MCMultifunHandleAlarm; }
