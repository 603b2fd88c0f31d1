// Wakes a dormant terminal (terminal control word 8) for its fixed time or
// for a given number of seconds.
#pragma once

#include <cstdint>

#include "pages/control/control_page.h"

class CDlgSetupChuanDormant : public CControlPage {
 public:
  static constexpr int kTemplate = 4115;
  static constexpr int32_t kCommand = 0x8105;
  static constexpr int kFunctionType = 106;
  static constexpr uint32_t kDeviceKinds = 7;
  static constexpr int kWakeCommand = 8;
  static constexpr int kMaxSeconds = 65535;
  enum Control : int { kRadioFixed = 4472, kRadioGiven = 4473, kTimeLabel = 4331, kTimeEdit = 4332, kTimeHint = 4333 };
  enum Text : int {
    kTextFixed = 20579, kTextGiven = 20580, kTextTime = 20581, kTextHint = 20582, kTextMode = 20593,
    kTextRange = 12702,
  };

  static plat::DialogTemplate Layout();
  CDlgSetupChuanDormant();

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  bool ReadControls() override;

 private:
  bool given_ = false;
  int64_t seconds_ = 0;
};
