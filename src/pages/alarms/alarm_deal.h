// Records a handling text for the alarms the host passes in: one request of
// the host's alarm service per alarm, each with the handling-text record. The
// host opens it for one alarm (function type 100) or several (101, its second
// mode, in which the handling way and the preset texts are offered too).
#pragma once

#include <string>

#include "pages/alarms/alarm_handling.h"

class CDlgAlarmDeal : public CAlarmHandlingPage {
 public:
  static constexpr int kTemplate = 4019;
  static constexpr int kFunctionType = 100, kFunctionTypeBatch = 101;
  static constexpr int kMaxChars = 255;
  static constexpr int kDefaultWay = 1;
  enum Control : int { kTextLabel = 4160, kTextHint = 4163, kWayCombo = 4350, kPresetMenuButton = 4002 };
  enum Text : int { kTextHandling = 20426, kTextHintText = 20411 };
  enum RecordField : size_t {
    kRecText = 0, kRecTextBytes = 1024, kRecWay = 1024, kRecGuid = 1028, kRecGuidBytes = 40, kRecDevIdno = 1068,
    kRecDevIdnoBytes = 32, kRecType = 1100, kRecSecondType = 1102, kRecTime = 1104, kRecSecondTime = 1108,
  };
  static constexpr uint32_t kTimeLowBits = 0x3F;

  static plat::DialogTemplate Layout();
  explicit CDlgAlarmDeal(int functionType);

  BOOL CheckParam() override;
  bool SecondMode() const { return secondMode_; }

 protected:
  void OnInitPage() override;
  const void* RecordFor(const AlarmView& alarm) override;
  AlarmServiceCall::Starter Service() const override;

 private:
  void OnSend();

  const bool secondMode_;
  std::string text_;
  int way_ = kDefaultWay;
  RecordWriter record_;
};
