// The two queries without parameters: the link check and the request for the
// driver's identity report. Both go to devices chosen in the picker.
#pragma once

#include "pages/control/control_page.h"

class CDlgLinkCheck : public CNoParamPage {
 public:
  static constexpr int kTemplate = 4074;
  static constexpr int32_t kCommand = 0x8204;
  static constexpr int kFunctionType = 53;
  static constexpr uint32_t kDeviceKinds = 2;
  static plat::DialogTemplate Layout() { return MakeTemplate(kTemplate); }
  CDlgLinkCheck() : CNoParamPage(kTemplate, kCommand, kDeviceKinds) {}
};

class CDlgReportingDriver : public CNoParamPage {
 public:
  static constexpr int kTemplate = 4073;
  static constexpr int32_t kCommand = 0x8702;
  static constexpr int kFunctionType = 52;
  static constexpr uint32_t kDeviceKinds = 4;
  static plat::DialogTemplate Layout() { return MakeTemplate(kTemplate); }
  CDlgReportingDriver() : CNoParamPage(kTemplate, kCommand, kDeviceKinds) {}
};
