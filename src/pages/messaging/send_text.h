// The text message page: a flag byte telling the terminal how to present the
// text, a text type and the text, to every chosen device. Devices of the 2019
// edition get the flag as a value in bits 0-1 and the text type radios;
// others the 2013 check boxes.
#pragma once

#include <cstdint>
#include <string>

#include "command/base_dlg.h"

class CDlgSendText : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4020;
  static constexpr int32_t kCommand = 0x8300;
  static constexpr int kFunctionType = 12;
  static constexpr int kMaxEncodedBytes = 1024;  // the encoded text must stay below this
  static constexpr int kMaxChars = 1023;
  enum Control : int {
    kFlagGroup = 4164,
    kRadioService = 4419, kRadioUrgent = 4420, kRadioNotice = 4421, kRadioNone = 4422,
    kCheckUrgent = 4168, kCheckDisplay = 4169, kCheckTts = 4170, kCheckAdScreen = 4171,
    kRadioNavigation = 4417, kRadioCanFault = 4418,
    kTypeGroup = 4173, kTypeNotice = 4415, kTypeService = 4416,
    kTextGroup = 4166, kTextEdit = 4167, kLimitHint = 4208,
  };
  enum Text : int {
    kTextUrgent = 12950, kTextDisplay = 12951, kTextTts = 12952, kTextAdScreen = 12953, kTextFlag = 12954,
    kTextInformation = 12955, kTextLimit = 12956, kTextEdition = 13115, kText2013 = 13116, kText2019 = 13117,
    kTextService = 15200, kTextUrgent2019 = 15201, kTextNotice = 15202, kTextNone = 15203, kTextType = 15204,
    kTextNavigation = 15205, kTextCanFault = 15206,
  };

  static plat::DialogTemplate Layout();
  CDlgSendText();

  void EnableParamControls(BOOL enable) override;
  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;
  void UpdateProtocolControls() override;

 protected:
  void OnInitPage() override;

 private:
  void OnSend();
  bool Is2019() const { return Caps().bProtocol2019 != FALSE; }
  uint8_t ComputeFlag() const;
  std::string FlagTexts(bool edition2019) const;

  uint8_t flag_ = 0;
  int32_t textType_ = 0;
  std::string text_;
};
