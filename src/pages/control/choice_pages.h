// The pages that send one radio button's value: the regional vehicle control,
// the terminal control and the alarm control.
#pragma once

#include "pages/control/control_page.h"

// Puts the vehicle under the platform's control, or releases it.
class CDlgXjCarCtrl : public CChoicePage {
 public:
  static constexpr int kTemplate = 4055;
  static constexpr int32_t kCommand = 0x8F00;
  static constexpr int kFunctionType = 46;
  enum Control : int { kRadioControl = 4374, kRadioRelease = 4375 };
  enum Text : int { kTextFlag = 20570, kTextControl = 20571, kTextRelease = 20572 };
  static plat::DialogTemplate Layout();
  CDlgXjCarCtrl();
};

// The terminal control word of 0x8105: switch off, reset, factory settings, close links.
class CDlgSetupOtherCtrl : public CChoicePage {
 public:
  static constexpr int kTemplate = 4018;
  static constexpr int32_t kCommand = 0x8105;
  static constexpr int kFunctionType = 10;
  enum Control : int {
    kFrame = 4148, kRadioOff = 4153, kRadioReset = 4149, kRadioFactory = 4150, kRadioCloseData = 4151,
    kRadioCloseWireless = 4152,
  };
  enum Text : int {
    kTextOff = 20573, kTextReset = 20574, kTextFactory = 20575, kTextCloseData = 20576, kTextCloseWireless = 20577,
    kTextCommand = 20578,
  };
  static plat::DialogTemplate Layout();
  CDlgSetupOtherCtrl();
};

// Turns the terminal's alarm control on (0x8B0A) or off (0x8B0B); no parameters.
class CDlgSetupAlarmCtrl : public CChoicePage {
 public:
  static constexpr int kTemplate = 4098;
  static constexpr int32_t kCommandOn = 0x8B0A, kCommandOff = 0x8B0B;
  static constexpr int kFunctionType = 56;
  enum Control : int { kRadioOn = 4463, kRadioOff = 4464 };
  enum Text : int { kTextOn = 20583, kTextOff = 20584, kTextAlarmControl = 20594 };
  static plat::DialogTemplate Layout();
  CDlgSetupAlarmCtrl();

 protected:
  bool ReadControls() override;
};
