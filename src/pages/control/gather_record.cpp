// The tachograph record page: the edition kept in the host's configuration,
// the word list of the edition, the request of one word or of all of them,
// and the decoded answers.
#include "pages/control/gather_record.h"

#include <tuple>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "command/time_text.h"
#include "host/hostcore.h"
#include "platform/clock.h"
#include "text/datetime.h"
#include "text/numbers.h"

namespace {
using C = CDlgGatherRecord;
using recorder::Edition;
const RegisterPage<C> kPage{C::kFunctionType};

namespace key {
constexpr const char *kVersion = "VER", *kWord = "CDID", *kBegin = "TIMB", *kEnd = "TIME", *kBlocks = "LEN";
}  // namespace key

constexpr int kVersion2003 = 2003, kVersion2012 = 2012;
constexpr uint32_t kEdition2003 = 0, kEdition2012 = 1;
constexpr const char* kDateFormat = "yyyy'-'MM'-'dd";
constexpr const char* kTimeFormat = "HH':'mm':'ss";
constexpr const char* kCrLf = "\r\n";

constexpr int kRangeControls[] = {C::kRangeLabel, C::kBeginDate, C::kBeginTime, C::kRangeDash, C::kEndDate,
                                  C::kEndTime,    C::kBlockLabel, C::kBlockEdit, C::kBlockSpin, C::kBlockHint};
constexpr int kParamControls[] = {C::kWordList, C::kInfoText, C::kInfoFrame, C::kBeginDate,
                                  C::kBeginTime, C::kEndDate, C::kEndTime,   C::kBlockEdit};

auto Ordered(const SYSTEMTIME& t) {
  return std::make_tuple(t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond);
}

std::string VehicleName(const char* devIdno) {
  std::string name = CVehicleBaseMgr::FindVehicleFromDev(devIdno).GetName();
  return name.empty() ? std::string(devIdno) : name;
}
}  // namespace

plat::DialogTemplate CDlgGatherRecord::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 440},
      {{Static(kEditionLabel, "标准版本", {10, 12, 90, 32}, kTextEdition),
        Combo(kEditionList, {95, 10, 290, 200}),
        Static(kWordLabel, "类型", {310, 12, 360, 32}, kTextWord),
        Combo(kWordList, {365, 10, 590, 300})},
       {Static(kRangeLabel, "时间范围", {10, 47, 90, 67}, kTextRange),
        Date(kBeginDate, {95, 45, 195, 67}), Time(kBeginTime, {200, 45, 280, 67}),
        Static(kRangeDash, "--", {285, 47, 305, 67}),
        Date(kEndDate, {310, 45, 410, 67}), Time(kEndTime, {415, 45, 495, 67})},
       {Static(kBlockLabel, "最大单位数据块", {10, 82, 130, 102}, kTextBlocks),
        Edit(kBlockEdit, {135, 80, 195, 102}, {.limit = 5, .styles = style::Number}),
        Spin(kBlockSpin, {195, 80, 212, 102}, kBlockEdit, kBlockMin, kBlockMax),
        Static(kBlockHint, "(1-99)", {220, 82, 300, 102}, kTextBlockHint)},
       {Box(kInfoFrame, "显示信息", {10, 110, 590, 395}, kTextInfo),
        Edit(kInfoText, {20, 130, 580, 385}, {.styles = style::ReadOnly | style::Multiline})},
       {GetButton({400, 405, 490, 433}), CancelButton({500, 405, 590, 433})}});
}

CDlgGatherRecord::CDlgGatherRecord() : CBaseDlg(kTemplate) {
  QueryMode = TRUE;
  Bind(kEditionList, CBN_SELCHANGE, [this] { OnEditionChange(); });
  Bind(kWordList, CBN_SELCHANGE, [this] { ShowRangeControls(); });
  Bind(kBlockEdit, EN_CHANGE, [this] { OnBlockChange(); });
  Bind(ctl::Get, BN_CLICKED, [this] { OnGet(); });
}

void CDlgGatherRecord::OnInitPage() {
  if (auto* editions = Item<plat::ComboBox>(kEditionList)) {
    editions->SetItemData(editions->AddString("GB/T 19056-2003"), kEdition2003);
    editions->SetItemData(editions->AddString("GB/T 19056-2012"), kEdition2012);
    const int stored = editions->FindItemData(static_cast<uint32_t>(CConfigKestrelINI::ReadIniInt(kEditionConfig)));
    editions->SetCurSel(stored < 0 ? 0 : stored);
  }
  if (auto* spin = Item<plat::Spin>(kBlockSpin)) spin->SetPos(kBlockDefault);
  // The range starts as today up to now.
  const SYSTEMTIME now = plat::GetLocalTime();
  SYSTEMTIME midnight = now;
  midnight.wHour = midnight.wMinute = midnight.wSecond = midnight.wMilliseconds = 0;
  const std::pair<int, SYSTEMTIME> pickers[] = {
      {kBeginDate, midnight}, {kBeginTime, midnight}, {kEndDate, now}, {kEndTime, now}};
  for (const auto& [id, time] : pickers) {
    if (auto* picker = Item<plat::DateTimePicker>(id)) {
      picker->SetFormat(id == kBeginDate || id == kEndDate ? kDateFormat : kTimeFormat);
      picker->SetTime(time);
    }
  }
  FillWordList();
}

Edition CDlgGatherRecord::StoredEdition() const {
  return CConfigKestrelINI::ReadIniInt(kEditionConfig) == static_cast<int>(kEdition2012) ? Edition::k2012
                                                                                           : Edition::k2003;
}

void CDlgGatherRecord::FillWordList() {
  auto* words = Item<plat::ComboBox>(kWordList);
  if (!words) return;
  const Edition edition = StoredEdition();
  words->ResetContent();
  words->SetItemData(words->AddString(recorder::WordName(edition, recorder::kAllWords)), recorder::kAllWords);
  for (int word : recorder::Words(edition)) {
    words->SetItemData(words->AddString(recorder::WordName(edition, word)), static_cast<uint32_t>(word));
  }
  words->SetCurSel(0);
  ShowRangeControls();
}

void CDlgGatherRecord::OnEditionChange() {
  const auto* editions = Item<plat::ComboBox>(kEditionList);
  if (!editions || editions->GetCurSel() < 0) return;
  CConfigKestrelINI::WriteIniInt(kEditionConfig, static_cast<int>(editions->GetItemData(editions->GetCurSel())));
  FillWordList();
}

int CDlgGatherRecord::SelectedWord() const {
  const auto* words = Item<plat::ComboBox>(kWordList);
  const int selected = words ? words->GetCurSel() : -1;
  return selected < 0 ? recorder::kAllWords : static_cast<int>(words->GetItemData(selected));
}

void CDlgGatherRecord::ShowRangeControls() {
  const bool shown = StoredEdition() == Edition::k2012 && recorder::IsRecordWord(SelectedWord());
  for (int id : kRangeControls) ShowItem(id, shown);
}

void CDlgGatherRecord::OnBlockChange() {
  const std::string typed = GetItemText(kBlockEdit);
  if (typed.empty()) return;
  const int value = txt::WToI(typed);
  const int kept = value < kBlockMin ? kBlockMin : value > kBlockMax ? kBlockMax : value;
  if (kept != value) SetItemText(kBlockEdit, std::to_string(kept));
}

void CDlgGatherRecord::EnableParamControls(BOOL enable) {
  for (int id : kParamControls) EnableItem(id, enable != FALSE);
}

void CDlgGatherRecord::OnGet() {
  edition_ = StoredEdition();
  word_ = SelectedWord();
  begin_ = PickedTime(*this, kBeginDate, kBeginTime);
  end_ = PickedTime(*this, kEndDate, kEndTime);
  blocks_ = txt::WToI(GetItemText(kBlockEdit));
  batchPosition = 0;
  if (word_ == recorder::kAllWords) {
    SetBatch(static_cast<int>(recorder::Words(edition_).size()), 1);
  } else {
    BatchMode = FALSE;
  }
  SetItemText(kInfoText, "");
  StartSend(Mode::kGet, kCommand);
}

BOOL CDlgGatherRecord::CheckParam() {
  return ParamCheck(*this).That(!HasRange(word_) || Ordered(begin_) < Ordered(end_), kTextTimeOrder).Ok();
}

int CDlgGatherRecord::WordOf(int itemIndex) const {
  if (!BatchMode) return word_;
  const auto words = recorder::Words(edition_);
  return itemIndex >= 0 && static_cast<size_t>(itemIndex) < words.size() ? words[static_cast<size_t>(itemIndex)]
                                                                          : recorder::kAllWords;
}

Json::Value CDlgGatherRecord::GetParam() {
  const int word = WordOf(CurrentBatch().first);
  Json::Value param(Json::objectValue);
  param[key::kVersion] = edition_ == Edition::k2012 ? kVersion2012 : kVersion2003;
  param[key::kWord] = word;
  if (recorder::IsRecordWord(word)) {
    param[key::kBegin] = txt::FormatRequestTime(begin_);
    param[key::kEnd] = txt::FormatRequestTime(end_);
    param[key::kBlocks] = blocks_;
  }
  return param;
}

void CDlgGatherRecord::Show(const CommandRequest& request, const std::string& text) {
  description_ = recorder::WordName(edition_, WordOf(request.itemIndex)) + kCrLf + text + kCrLf;
  AppendText(kInfoText, kCrLf + FormatChineseColon(GetLanguageStr(kTextVehicle), VehicleName(request.devIdno)) +
                            kCrLf + description_);
}

void CDlgGatherRecord::OnAnswer(CommandRequest& request, const Json::Value& reply) {
  if (request.result != 0) return Show(request, IDIRErrorString(request.result));
  Show(request, recorder::DecodeAnswer(edition_, WordOf(request.itemIndex), reply));
}

void CDlgGatherRecord::OnNoAnswer(CommandRequest& request) {
  // A failure code names the failure; an answer that is no object decodes as an empty one.
  if (request.result != 0) return Show(request, IDIRErrorString(request.result));
  Show(request, recorder::DecodeAnswer(edition_, WordOf(request.itemIndex), Json::Value()));
}
