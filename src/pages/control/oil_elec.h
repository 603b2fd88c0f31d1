// Oil and power: restore, or cut off normally or at once, valid until a time;
// to the current vehicle or to several chosen in the picker. Each answered
// device's row describes the cut-off and names its vehicle.
#pragma once

#include <string>

#include "pages/control/control_page.h"

class CDlgOilAndElec : public CControlPage {
 public:
  static constexpr int kTemplate = 4043;
  static constexpr int32_t kCommand = 0xA006;
  static constexpr int kFunctionType = 39;
  static constexpr uint32_t kDeviceKinds = 6;
  static constexpr int kRestore = 0, kCutNormally = 1, kCutAtOnce = 0x55;
  enum Control : int {
    kTypeFrame = 4366, kRadioRestore = 4363, kRadioNormal = 4364, kRadioAtOnce = 4365,
    kTimeFrame = 4367, kDateLabel = 4234, kTimeLabel = 4235, kDate = 4362, kTime = 4361, kSetSeveral = 4213,
  };
  enum Text : int {
    kTextType = 13000, kTextRestore = 13500, kTextNormal = 13501, kTextAtOnce = 13502, kTextValidTime = 13503,
    kTextDate = 13430, kTextTime = 13431, kTextVehicle = 13421, kTextSetSeveral = 20585,
  };

  static plat::DialogTemplate Layout();
  CDlgOilAndElec();

  Json::Value GetParam() override;
  std::string GetParamDescription() override;
  void PrepareBatch(CommandRequest& request) override;

 protected:
  void OnInitPage() override;
  bool ReadControls() override;

 private:
  int state_ = kRestore;
  SYSTEMTIME validTime_{};
  std::string vehicle_;
};
