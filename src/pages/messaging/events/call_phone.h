// The call-back pages: the terminal calls a number, as a normal call or as a
// listening call. The taxi form also says whether the number is a GSM voice
// number or a VoIP number (bit 7 of the flag).
#pragma once

#include <cstdint>
#include <string>

#include "command/base_dlg.h"
#include "command/page_template.h"

class CCallBackPage : public CBaseDlg {
 public:
  static constexpr int32_t kCommand = 0x8400;
  static constexpr int kPhoneChars = 20;
  static constexpr uint8_t kListen = 1, kVoip = 0x80;
  enum Control : int { kFlagLabel = 4164, kPhoneLabel = 4048, kPhoneEdit = 4195, kPhoneNote = 4326 };
  enum Text : int {
    kTextFlag = 12954, kTextPhone = 13024, kTextNormal = 13025, kTextListen = 13026, kTextGsm = 13028,
    kTextVoip = 13029, kTextPhoneNote = 13106,
  };

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  enum class NumberKinds { kNo, kYes };
  CCallBackPage(int templateId, NumberKinds numberKinds);
  // The number row and the buttons, under the page's flag controls.
  static plat::DialogTemplate MakeTemplate(int templateId, TemplateSection flagControls);
  virtual uint8_t ReadFlag() const = 0;

 private:
  const NumberKinds numberKinds_;
  uint8_t flag_ = 0;
  std::string phone_;
};

class CDlgCallPhone : public CCallBackPage {
 public:
  static constexpr int kTemplate = 4023;
  static constexpr int kFunctionType = 17;
  static constexpr int kFlagCombo = 4194;

  static plat::DialogTemplate Layout();
  CDlgCallPhone() : CCallBackPage(kTemplate, NumberKinds::kNo) {}

 protected:
  void OnInitPage() override;
  uint8_t ReadFlag() const override;
};

class CDlgCallPhone905 : public CCallBackPage {
 public:
  static constexpr int kTemplate = 4111;
  static constexpr int kFunctionType = 1017;
  enum Control : int { kRadioNormal = 4469, kRadioListen = 4470, kRadioGsm = 4471, kRadioVoip = 4472 };

  static plat::DialogTemplate Layout();
  CDlgCallPhone905() : CCallBackPage(kTemplate, NumberKinds::kYes) {}

 protected:
  void OnInitPage() override;
  uint8_t ReadFlag() const override;
};
