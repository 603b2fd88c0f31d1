#include "pages/settings/driving_rule_page.h"

#include <cstdio>

#include "command/description.h"
#include "command/ids.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/settings/pickers.h"
#include "platform/controls.h"
#include "text/datetime.h"
#include "text/json.h"

namespace {
namespace key {
constexpr const char *kBegin = "BTM", *kEnd = "ETM";
}  // namespace key
constexpr size_t kReplyTimeBytes = 31;
constexpr uint32_t kDeviceKinds = 4;
constexpr int kTextOk = 11002;  // the set button's caption
constexpr int kDateControls[] = {CDrivingRulePage::kBeginDate, CDrivingRulePage::kEndDate};
constexpr int kTimeControls[] = {CDrivingRulePage::kBeginTime, CDrivingRulePage::kEndTime};

bool YearInRange(const SYSTEMTIME& t) {
  return t.wYear >= CDrivingRulePage::kFirstYear && t.wYear <= CDrivingRulePage::kLastYear;
}
bool NoDate(const SYSTEMTIME& t) { return (t.wYear == 0 || t.wYear == 2000) && t.wMonth == 0 && t.wDay == 0; }
bool NoTimeOfDay(const SYSTEMTIME& t) { return t.wHour == 0 && t.wMinute == 0 && t.wSecond == 0; }

std::string DateText(const SYSTEMTIME& t) {
  char text[32];
  std::snprintf(text, sizeof text, "%04d:%02d:%02d", t.wYear, t.wMonth, t.wDay);
  return text;
}
std::string TimeOfDayText(const SYSTEMTIME& t) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", t.wHour, t.wMinute, t.wSecond);
  return text;
}
// "<begin label>：<begin>  -  <end label>：<end>".
std::string Span(const std::string& begin, const std::string& end) {
  return FormatChineseColon(LanguageText(CDrivingRulePage::kTextBegin), begin) + "  -  " +
         FormatChineseColon(LanguageText(CDrivingRulePage::kTextEnd), end);
}
// A reply time, all zero when it is not a date-time text.
SYSTEMTIME ReplyTime(const Json::Value& reply, const char* key) {
  return txt::ParseDateTimeText(txt::JsonMemberString(reply, key).substr(0, kReplyTimeBytes)).value_or(SYSTEMTIME{});
}
}  // namespace

CDrivingRulePage::CDrivingRulePage(int templateId, Setup setup) : CBaseDlg(templateId), setup_(setup) {
  DeviceKindMask = kDeviceKinds;
  setTextId = kTextOk;
  Bind(ctl::Set, BN_CLICKED, [this] { StartSend(Mode::kSet, setup_.setCommand); });
  Bind(ctl::Get, BN_CLICKED, [this] { StartSend(Mode::kGet, setup_.queryCommand); });
  for (int box : {kNoDates, kNoHours}) Bind(box, BN_CLICKED, [this] { RefreshBoxes(); });
}

plat::DialogTemplate CDrivingRulePage::MakeTemplate(int id, const Captions& c,
                                                   std::initializer_list<plat::ControlEntry> numbers) {
  using namespace row;
  return PageTemplate(
      id, {600, 240},
      {{Check(kNoDates, c.noDates, {20, 10, 300, 30}, c.noDatesText),
        Static(kBeginDateLabel, "开始日期", {20, 40, 150, 60}, kTextBeginDate), Date(kBeginDate, {160, 38, 300, 62}),
        Static(kEndDateLabel, "结束日期", {310, 40, 440, 60}, kTextEndDate), Date(kEndDate, {450, 38, 590, 62})},
       {Check(kNoHours, c.noHours, {20, 75, 300, 95}, c.noHoursText),
        Static(kBeginTimeLabel, c.beginTime, {20, 105, 150, 125}, c.beginTimeText),
        Time(kBeginTime, {160, 103, 300, 127}), Static(kEndTimeLabel, c.endTime, {310, 105, 440, 125}, c.endTimeText),
        Time(kEndTime, {450, 103, 590, 127})},
       numbers,
       {GetButton({400, 200, 490, 228}), SetButton({500, 200, 590, 228})}});
}

void CDrivingRulePage::OnInitPage() {
  pickers::Prepare(*this, kBeginDate, kBeginTime);
  pickers::Prepare(*this, kEndDate, kEndTime);
  RefreshBoxes();
}

void CDrivingRulePage::RefreshBoxes() {
  datesOn_ = !IsChecked(kNoDates);
  hoursOn_ = !IsChecked(kNoHours);
  for (int id : kDateControls) EnableItem(id, datesOn_);
  for (int id : kTimeControls) EnableItem(id, hoursOn_);
}

void CDrivingRulePage::EnableParamControls(BOOL enable) {
  CBaseDlg::EnableParamControls(enable);
  if (enable) RefreshBoxes();
}

BOOL CDrivingRulePage::CheckParam() {
  if (QueryMode) return TRUE;
  Rule rule;
  if (!CollectRule(rule)) return FALSE;
  entered_ = rule;
  return TRUE;
}

bool CDrivingRulePage::TakePeriod(Rule& rule) {
  if (!datesOn_) return true;
  pickers::TakeDate(*this, kBeginDate, rule.begin);
  pickers::TakeDate(*this, kEndDate, rule.end);
  return ParamCheck(*this)
      .That(YearInRange(rule.begin), kTextBeginDateWrong)
      .That(YearInRange(rule.end), kTextEndDateWrong)
      .Ok();
}

Json::Value CDrivingRulePage::GetParam() {
  if (QueryMode) return Json::Value();
  Json::Value param(Json::objectValue);
  param[key::kBegin] = txt::FormatRequestTime(entered_.begin);
  param[key::kEnd] = txt::FormatRequestTime(entered_.end);
  param[setup_.firstKey] = SentFirst(entered_);
  param[setup_.secondKey] = entered_.second;
  return param;
}

void CDrivingRulePage::OnAnswer(CommandRequest&, const Json::Value& reply) {
  readBack_ = {};
  for (const char* text : {key::kBegin, key::kEnd}) {
    if (!reply.isMember(text) || !reply[text].isString()) return;
  }
  const auto first = reply.isMember(setup_.firstKey) ? txt::JsonToInt(reply[setup_.firstKey]) : std::nullopt;
  const auto second = reply.isMember(setup_.secondKey) ? txt::JsonToInt(reply[setup_.secondKey]) : std::nullopt;
  if (!first || !second) return;
  readBack_ = {ReplyTime(reply, key::kBegin), ReplyTime(reply, key::kEnd), static_cast<int>(*first),
               static_cast<int>(*second)};
}

void CDrivingRulePage::ShowReadBack() {
  const Rule& r = readBack_;
  const bool noDates = NoDate(r.begin) && NoDate(r.end);
  SetChecked(kNoDates, noDates);
  if (!noDates) {
    pickers::Set(*this, kBeginDate, r.begin);
    pickers::Set(*this, kEndDate, r.end);
  }
  const bool noHours = NoTimeOfDay(r.begin) && NoTimeOfDay(r.end);
  SetChecked(kNoHours, noHours);
  if (!noHours) {
    pickers::Set(*this, kBeginTime, r.begin);
    pickers::Set(*this, kEndTime, r.end);
  }
  RefreshBoxes();
  ShowNumbers(r);
}

std::string CDrivingRulePage::GetParamDescription() {
  if (QueryMode) ShowReadBack();
  const Rule& r = QueryMode ? readBack_ : entered_;
  const bool noPeriod = r.begin.wMonth == 0 && r.begin.wDay == 0;
  const bool noHours = NoTimeOfDay(r.begin) && NoTimeOfDay(r.end);
  Description description;
  description.Field(kTextPeriod, noPeriod ? LanguageText(kTextNoPeriod) : Span(DateText(r.begin), DateText(r.end)));
  description.Field(kTextHours,
                    noHours ? LanguageText(kTextNoHours) : Span(TimeOfDayText(r.begin), TimeOfDayText(r.end)));
  return description.Text(DescribeNumbers(r));
}
