#include "pages/settings/driving_rules.h"

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/settings/pickers.h"
#include "text/numbers.h"

namespace {
const RegisterPage<CDlgLimitdrive> kBanPage{CDlgLimitdrive::kFunctionType};
const RegisterPage<CDlgNightdrive> kNightPage{CDlgNightdrive::kFunctionType};

std::string Number(int value, int unitText) { return std::to_string(value) + LanguageText(unitText); }
}  // namespace

// ---- driving ban -----------------------------------------------------------------

plat::DialogTemplate CDlgLimitdrive::Layout() {
  using namespace row;
  return MakeTemplate(kTemplate,
                      {"取消禁驾限制", "取消禁驾报警设置", "禁止驾驶开始时间", "禁止驾驶结束时间", kTextNoBan,
                       kTextNoBanHours, kTextBanBegin, kTextBanEnd},
                      {Static(kDriveTimeLabel, "行车时间", {20, 150, 150, 170}, kTextDriveTime),
                       Edit(kDriveTimeEdit, {160, 148, 220, 172}, {.limit = 3, .styles = plat::style::Number}),
                       Static(kDriveTimeUnit, "(分钟)", {225, 150, 300, 170}, kTextMinutesUnit),
                       Static(kSpeedLabel, "行车速度", {310, 150, 440, 170}, kTextSpeed),
                       Edit(kSpeedEdit, {450, 148, 510, 172}, {.limit = 3, .styles = plat::style::Number}),
                       Static(kSpeedUnit, "(KM/H)", {515, 150, 590, 170})});
}

CDlgLimitdrive::CDlgLimitdrive() : CDrivingRulePage(kTemplate, {kSetCommand, kQueryCommand, "SEC", "SPD"}) {}

bool CDlgLimitdrive::CollectRule(Rule& rule) {
  if (!TakePeriod(rule)) return false;
  // The hours go out whether or not their box is ticked.
  pickers::TakeTimeOfDay(*this, kBeginTime, rule.begin);
  pickers::TakeTimeOfDay(*this, kEndTime, rule.end);
  rule.first = txt::WToI(GetItemText(kDriveTimeEdit));
  rule.second = txt::WToI(GetItemText(kSpeedEdit));
  return true;
}

void CDlgLimitdrive::ShowNumbers(const Rule& rule) {
  SetItemText(kDriveTimeEdit, std::to_string(rule.first / kSecondsPerMinute));
  SetItemText(kSpeedEdit, std::to_string(rule.second));
}

std::string CDlgLimitdrive::DescribeNumbers(const Rule& rule) const {
  // The entered rule holds minutes; a read-back one the seconds the terminal answered.
  const int minutes = IsQueryMode() ? rule.first / kSecondsPerMinute : rule.first;
  return Description()
      .Field(kTextDriveTime, Number(minutes, kTextMinutesUnit))
      .Field(kTextSpeed, Number(rule.second, kTextSpeedUnit));
}

// ---- night driving ---------------------------------------------------------------

plat::DialogTemplate CDlgNightdrive::Layout() {
  using namespace row;
  return MakeTemplate(kTemplate,
                      {"取消夜间驾驶限制", "取消夜间时间设置", "夜间开始时间", "夜间结束时间", kTextNoNight,
                       kTextNoNightHours, kTextNightBegin, kTextNightEnd},
                      {Static(kThresholdLabel, "夜间连续驾驶时间门限", {20, 150, 200, 170}, kTextThreshold),
                       Edit(kThresholdEdit, {210, 148, 320, 172}, {.limit = 10, .styles = plat::style::Number}),
                       Static(kThresholdUnit, "秒", {325, 150, 360, 170}, kTextSecondsUnit),
                       Static(kPercentLabel, "超速限速值百分比", {20, 180, 200, 200}, kTextPercent),
                       Edit(kPercentEdit, {210, 178, 280, 202}, {.limit = 3}),
                       Spin(kPercentSpin, {280, 178, 300, 202}, kPercentEdit, 0, kMaxPercent)});
}

CDlgNightdrive::CDlgNightdrive() : CDrivingRulePage(kTemplate, {kSetCommand, kQueryCommand, "LMT", "PCT"}) {
  Bind(kPercentEdit, EN_CHANGE, [this] { KeepPercentInRange(); });
}

void CDlgNightdrive::KeepPercentInRange() {
  const std::string text = GetItemText(kPercentEdit);
  const int value = txt::WToI(text);
  if (value < 0) SetItemText(kPercentEdit, "0");
  else if (value > kMaxPercent) SetItemText(kPercentEdit, std::to_string(kMaxPercent));
}

bool CDlgNightdrive::CollectRule(Rule& rule) {
  if (!TakePeriod(rule)) return false;
  if (HoursOn()) {
    pickers::TakeTimeOfDay(*this, kBeginTime, rule.begin);
    pickers::TakeTimeOfDay(*this, kEndTime, rule.end);
  }
  rule.first = txt::WToI(GetItemText(kThresholdEdit));
  rule.second = txt::WToI(GetItemText(kPercentEdit));
  return true;
}

void CDlgNightdrive::ShowNumbers(const Rule& rule) {
  SetItemText(kThresholdEdit, std::to_string(rule.first));
  SetItemText(kPercentEdit, std::to_string(rule.second));
}

std::string CDlgNightdrive::DescribeNumbers(const Rule& rule) const {
  return Description()
      .Field(kTextThreshold, Number(rule.first, kTextSecondsUnit))
      .Field(kTextPercent, std::to_string(rule.second) + "%");
}
