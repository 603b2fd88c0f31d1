// Temporary position tracking: the terminal reports its position at an
// interval for a validity period. Extended devices take a tracking attribute
// that says what the two values count, or that tracking stops.
#pragma once

#include <cstdint>
#include <string>

#include "pages/control/control_page.h"

class CDlgPosTrack : public CControlPage {
 public:
  static constexpr int kTemplate = 4026;
  static constexpr int32_t kCommand = 0x8202;
  static constexpr int kFunctionType = 22;
  static constexpr uint32_t kDeviceKinds = 0x404;
  static constexpr uint32_t kAttrStop = 255;
  enum Control : int {
    kAttrLabel = 4219, kAttrList = 4432, kIntervalLabel = 4214, kIntervalEdit = 4213, kIntervalHint = 4217,
    kValidityLabel = 4215, kValidityEdit = 4216, kValidityHint = 4218,
  };
  enum Text : int {
    kTextInterval = 13400, kTextValidity = 13401, kTextIntervalOther = 13404, kTextValidityTime = 13405,
    kTextValidityOther = 13406, kTextIntervalHint = 13407, kTextIntervalOtherHint = 13408,
    kTextValidityHint = 13409, kTextValidityOtherHint = 13410, kTextAttr = 20589,
  };

  static plat::DialogTemplate Layout();
  CDlgPosTrack();

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;
  void UpdateProtocolControls() override;
  void EnableParamControls(BOOL enable) override;

 protected:
  bool ReadControls() override;

 private:
  bool Extended() const { return Caps().bDevAttr76 != FALSE; }
  uint32_t SelectedAttr() const;
  void OnAttrChange();

  bool extended_ = false;
  uint32_t attr_ = 0;
  std::string interval_;
  std::string validity_;
};
