// The wireless upgrade of a JT/T 808 terminal (command word 1): where the
// firmware is, how the terminal dials in, which maker, hardware and firmware
// the upgrade is for, and the time limit to reach the server.
#pragma once

#include "pages/settings/terminal_control_page.h"

class CDlgSetupUpGrade : public CTerminalControlPage {
 public:
  static constexpr int kTemplate = 4016;
  static constexpr int kFunctionType = 8;
  static constexpr int kCommandWord = 1;
  enum Control : int {
    kUrlEdit = 4125, kApnEdit = 4126, kUserEdit = 4127, kPasswordEdit = 4128, kAddressEdit = 4129, kTcpEdit = 4130,
    kUdpEdit = 4131, kMakerEdit = 4132, kHardwareEdit = 4133, kFirmwareEdit = 4134, kTimeLimitEdit = 4135,
    kFirstLabel = 4136,  // the labels 4136 to 4146, in the order of the edits
    kTcpHint = 4160, kUdpHint = 4161, kTimeLimitHint = 4162,
  };
  enum Text : int {
    kTextUrl = 12900, kTextApn = 12901, kTextUser = 12902, kTextPassword = 12903, kTextAddress = 12904,
    kTextTcp = 12905, kTextUdp = 12906, kTextMaker = 12907, kTextHardware = 12908, kTextFirmware = 12909,
    kTextTimeLimit = 12910,
  };

  static plat::DialogTemplate Layout();
  CDlgSetupUpGrade();
  BOOL CheckParam() override;
  std::string GetParamDescription() override;
};
