// Connects the terminal to a designated platform server (command word 2), or
// switches it back to its default server.
#pragma once

#include "pages/settings/terminal_control_page.h"

class CDlgSetupConSer : public CTerminalControlPage {
 public:
  static constexpr int kTemplate = 4017;
  static constexpr int kFunctionType = 9;
  static constexpr int kCommandWord = 2;
  enum Connection : int { kToDesignated = 0, kBackToDefault = 1 };
  enum Control : int {
    kChoiceLabel = 4147, kRadioDesignated = 4148, kRadioDefault = 4154, kAuthLabel = 4150, kAuthHint = 4151,
    kAuthEdit = 4149, kApnEdit = 4126, kUserEdit = 4127, kPasswordEdit = 4128, kAddressEdit = 4129, kTcpEdit = 4130,
    kUdpEdit = 4131, kTimeLimitEdit = 4135,
    kApnLabel = 4137, kUserLabel = 4138, kPasswordLabel = 4139, kAddressLabel = 4140, kTcpLabel = 4141,
    kUdpLabel = 4142, kTimeLimitLabel = 4146, kTcpHint = 4160, kUdpHint = 4161, kTimeLimitHint = 4162,
  };
  enum Text : int {
    kTextConnection = 13150, kTextDesignated = 13151, kTextDefault = 13152, kTextAuthHint = 13153,
    kTextAuth = 13154, kTextApn = 12901, kTextUser = 12902, kTextPassword = 12903, kTextAddress = 12904,
    kTextTcp = 12905, kTextUdp = 12906, kTextTimeLimit = 12910,
  };

  static plat::DialogTemplate Layout();
  CDlgSetupConSer();
  BOOL CheckParam() override;
  std::string GetParamDescription() override;

 protected:
  void OnInitPage() override { SetChecked(kRadioDesignated, true); }
  void ReadChoices() override { connection_ = IsChecked(kRadioDefault) ? kBackToDefault : kToDesignated; }
  void PutChoices(Json::Value& param) const override;

 private:
  Connection connection_ = kToDesignated;
};
