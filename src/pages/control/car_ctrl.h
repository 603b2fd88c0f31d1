// Vehicle control (door, oil and circuit): one entry of a drop-down list whose
// item data carries the control flag in its low byte and, for devices of the
// extended kind, the control type in its high byte.
#pragma once

#include <string>

#include "pages/control/control_page.h"

class CDlgCarCtrl : public CControlPage {
 public:
  static constexpr int kTemplate = 4024;
  static constexpr int32_t kCommand = 0x8500;
  static constexpr int kFunctionType = 19;
  static constexpr uint32_t kDeviceKinds = 0x403;
  enum Control : int { kFlagLabel = 4206, kFlagList = 4207 };
  enum Text : int { kTextFlag = 20570 };

  static plat::DialogTemplate Layout();
  CDlgCarCtrl();

  Json::Value GetParam() override;
  std::string GetParamDescription() override;
  void UpdateProtocolControls() override;

 protected:
  bool ReadControls() override;

 private:
  uint32_t flag_ = 0;
  bool withType_ = false;
  std::string flagText_;
};
