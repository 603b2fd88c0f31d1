// The driving ban (a period and hours in which driving is limited to a time
// and a speed) and the night-driving rule (a continuous-driving threshold and
// a speed limit as a percentage).
#pragma once

#include "pages/settings/driving_rule_page.h"

class CDlgLimitdrive : public CDrivingRulePage {
 public:
  static constexpr int kTemplate = 4038;
  static constexpr int kFunctionType = 37;
  static constexpr int32_t kSetCommand = 0xA041, kQueryCommand = 0xA043;
  static constexpr int kSecondsPerMinute = 60;
  enum Control : int { kDriveTimeEdit = 4332, kSpeedEdit = 4333, kDriveTimeLabel = 4330, kSpeedLabel = 4331,
                       kDriveTimeUnit = 4339, kSpeedUnit = 4340 };
  enum Text : int {
    kTextSpeed = 11048, kTextMinutesUnit = 11053, kTextDriveTime = 11054, kTextSpeedUnit = 11049,
    kTextNoBan = 11117, kTextNoBanHours = 11118, kTextBanBegin = 11113, kTextBanEnd = 11114,
  };

  static plat::DialogTemplate Layout();
  CDlgLimitdrive();

 protected:
  bool CollectRule(Rule& rule) override;
  int SentFirst(const Rule& rule) const override { return rule.first * kSecondsPerMinute; }
  void ShowNumbers(const Rule& rule) override;
  std::string DescribeNumbers(const Rule& rule) const override;
};

class CDlgNightdrive : public CDrivingRulePage {
 public:
  static constexpr int kTemplate = 4037;
  static constexpr int kFunctionType = 36;
  static constexpr int32_t kSetCommand = 0xA040, kQueryCommand = 0xA042;
  static constexpr int kMaxPercent = 100;
  enum Control : int { kThresholdEdit = 4344, kPercentSpin = 4334, kPercentEdit = 4335, kThresholdLabel = 4343,
                       kPercentLabel = 4336, kThresholdUnit = 4351 };
  enum Text : int {
    kTextThreshold = 11106, kTextPercent = 11107, kTextSecondsUnit = 11108, kTextNoNight = 11119,
    kTextNoNightHours = 11120, kTextNightBegin = 11115, kTextNightEnd = 11116,
  };

  static plat::DialogTemplate Layout();
  CDlgNightdrive();

 protected:
  bool CollectRule(Rule& rule) override;
  void ShowNumbers(const Rule& rule) override;
  std::string DescribeNumbers(const Rule& rule) const override;

 private:
  void KeepPercentInRange();
};
