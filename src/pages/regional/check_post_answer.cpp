// The check-post answer page: its template, checks and acknowledgement record.
#include "pages/regional/check_post_answer.h"

#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "command/saved_control.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace {
using C = CDlgInspection;
const RegisterPage<C> kPage{{C::kFunctionType}, PageHost::kVehicleWindow, PageList::kNone};
constexpr uint32_t kSaved[] = {SavedControl::Text(C::kAnswer)};
constexpr char kPartSeparator = '|', kFieldSeparator = ';';
constexpr size_t kInfoFlag = 148, kInfoValue = 156, kSeparatorChars = 2;

// The byte length of the first n characters of a UTF-8 text.
size_t BytesOfChars(const std::string& text, size_t n) {
  size_t at = 0;
  for (size_t chars = 0; at < text.size() && chars < n; ++chars) {
    ++at;
    while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) ++at;
  }
  return at;
}
}  // namespace

plat::DialogTemplate CDlgInspection::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {450, 460},
      {{Static(kContentLabel, "内容", {10, 10, 200, 30}, kTextContent),
        Edit(kContent, {10, 35, 440, 180}, {.styles = style::Multiline | style::ReadOnly})},
       {Static(kAnswerLabel, "处理内容", {10, 190, 200, 210}, kTextAnswer),
        Edit(kAnswer, {10, 215, 440, 360}, {.limit = kMaxChars, .styles = style::Multiline | style::WantReturn}),
        Static(kHint, "(提示：内容小于256字节,不能含有字符“|”)", {10, 365, 440, 385}, kTextHint)},
       {Button(kSettingsButton, "查岗参数设置", {10, 420, 140, 448}, kTextSettings),
        Check(kNoPopup, "默认不弹出", {150, 424, 250, 444}, kTextNoPopup), SetButton({260, 420, 350, 448}),
        CancelButton({360, 420, 440, 448})},
       // The answerer's name and phone lie below the visible area.
       {Static(kNameLabel, "应答人姓名", {10, 470, 140, 490}, kTextName), Edit(kName, {150, 470, 440, 490}),
        Static(kPhoneLabel, "应答人联系电话", {10, 500, 140, 520}, kTextPhone), Edit(kPhone, {150, 500, 440, 520})}});
}

CDlgInspection::CDlgInspection() : CPlatformAckPage(kTemplate, kInspection, msg::InspectionAnswer) {
  SavedControls = kSaved;
  setTextId = kTextOk;
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

const _GPSVehicleAlarm* CDlgInspection::Inquiry() const {
  return reinterpret_cast<const _GPSVehicleAlarm*>(contextPointer);
}

void CDlgInspection::ShowContextData() {
  const _GPSVehicleAlarm* inquiry = Inquiry();
  if (!inquiry) return;
  std::string desc = GetJT809AlarmDesc(inquiry);
  const std::string name = FormatStringMgr::Format808FunctionType(kTypeNameFunction, AlarmView(*inquiry).InfoType());
  if (!name.empty() && desc.compare(0, name.size(), name) == 0) {
    desc.erase(0, BytesOfChars(desc, txt::Utf8Length(name) + kSeparatorChars));
  }
  content_ = desc;
  SetItemText(kContent, content_);
}

BOOL CDlgInspection::CheckParam() {
  int tip = 0;
  if (answer_.empty()) tip = ParamCheck::kTextMustBeFilled;
  else if (txt::Utf8Length(answer_) >= kMaxChars || answer_.find('|') != std::string::npos) tip = kTextHint;
  if (tip == 0) return TRUE;
  ShowMsgTipEx(LanguageText(tip), "", 0);
  return FALSE;
}

void CDlgInspection::OnSend() {
  answer_ = GetItemText(kAnswer);
  if (!CheckParam()) return;
  SaveInputs();
  EnableSendControls(FALSE);
  RecordWriter record(kAck809RecordSize);
  const _GPSVehicleAlarm* inquiry = Inquiry();
  const uint32_t infoType = inquiry ? AlarmView(*inquiry).InfoType() : 0;
  record.PutText(kRecAnswer, kRecAnswerBytes, txt::Utf8ToGbk(answer_));
  record.PutU32(kRecKind, kInspection + infoType);
  if (inquiry) FillRecord(AlarmView(*inquiry), record);
  Acknowledge(record);
}

void CDlgInspection::FillRecord(const AlarmView& alarm, RecordWriter& record) {
  const uint8_t* bytes = alarm.Record()->bytes;
  uint32_t value = 0;
  for (size_t i = 0; i < 4; ++i) value |= static_cast<uint32_t>(bytes[kInfoValue + i]) << (8 * i);
  record.PutU8(kRecFlag, bytes[kInfoFlag]);
  record.PutU32(kRecMessageId, alarm.InfoType());
  record.PutText(kRecGuid, kRecGuidBytes, alarm.Guid());
  record.PutU32(kRecValue, value);
  const std::vector<std::string> parts = SplitText(alarm.AlarmText(), kPartSeparator);
  record.PutText(kRecHead, kRecHeadBytes, parts.front());
  if (parts.size() < 2) return;
  const std::vector<std::string> fields = SplitText(parts[1], kFieldSeparator);
  if (fields.size() >= 2) record.PutU16(kRecNumber, static_cast<uint16_t>(txt::WToI(fields[1])));
  if (fields.size() >= 3) record.PutU32(kRecTime, alarm.Time());
  if (fields.size() >= 5) record.PutU32(kRecExtra, static_cast<uint32_t>(txt::WToI(fields[4])));
}
