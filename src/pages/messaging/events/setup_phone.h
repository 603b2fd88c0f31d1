// The phone book pages: delete all contacts, or update, append to or modify
// the terminal's phone book with up to four contacts (name, call directions,
// number). The taxi form also says, per contact, whether the number is a GSM
// voice number or a VoIP number (bit 7 of the contact's flag).
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "command/base_dlg.h"
#include "command/page_template.h"

class CPhoneBookPage : public CBaseDlg {
 public:
  static constexpr int32_t kCommand = 0x8401;
  static constexpr int kRows = 4;
  static constexpr int kNameChars = 20, kPhoneChars = 20;
  static constexpr uint8_t kIncoming = 1, kOutgoing = 2, kBoth = 3, kVoip = 0x80;
  enum SettingType : uint8_t { kDeleteAll = 0, kUpdate = 1, kAppend = 2, kModify = 3 };
  enum Control : int {
    kTypeGroup = 4029, kRadioDeleteAll = 4030, kRadioUpdate = 4031, kRadioAppend = 4033, kRadioModify = 4032,
    kContactsGroup = 4034, kHint = 4027,
  };
  static constexpr std::array<int, kRows> kNameEdits{4035, 4038, 4041, 4044};
  static constexpr std::array<int, kRows> kFlagCombos{4036, 4039, 4042, 4045};
  static constexpr std::array<int, kRows> kPhoneEdits{4037, 4040, 4043, 4046};
  static constexpr std::array<int, kRows> kRowLabels{4204, 4049, 4052, 4055};
  static constexpr std::array<int, kRows> kFlagLabels{4047, 4050, 4053, 4056};
  static constexpr std::array<int, kRows> kPhoneLabels{4205, 4051, 4054, 4057};
  static constexpr std::array<int, kRows> kNameNotes{4196, 4197, 4198, 4199};
  static constexpr std::array<int, kRows> kPhoneNotes{4200, 4201, 4202, 4203};
  enum Text : int {
    kTextType = 13000, kTextFlag = 12954, kTextPhone = 13024, kTextDeleteAll = 13100, kTextAppend = 13101,
    kTextUpdate = 13102, kTextModify = 13103, kTextContact = 13104, kTextNameNote = 13105, kTextPhoneNote = 13106,
    kTextOutgoing = 13107, kTextIncoming = 13108, kTextNoPhone = 13109, kTextGsm = 13028, kTextVoip = 13029,
    kTextDuplicateName = 12707, kTextHint = 12708,
  };

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  enum class NumberKinds { kNo, kYes };
  CPhoneBookPage(int templateId, NumberKinds numberKinds);
  // The type radios, the contact rows and the buttons.
  static plat::DialogTemplate MakeTemplate(int templateId);
  void OnInitPage() override;
  // The VoIP bit of a row's flag: none in the plain form.
  virtual uint8_t NumberKindBit(int row) const { (void)row; return 0; }

 private:
  void OnSend();
  std::string RowItem(int row, const std::string& flagText) const;

  const NumberKinds numberKinds_;
  uint8_t type_ = kAppend;
  std::array<uint8_t, kRows> flags_{};
  std::array<std::string, kRows> names_;
  std::array<std::string, kRows> phones_;
};

class CDlgSetupPhone : public CPhoneBookPage {
 public:
  static constexpr int kTemplate = 4012;
  static constexpr int kFunctionType = 18;

  static plat::DialogTemplate Layout();
  CDlgSetupPhone() : CPhoneBookPage(kTemplate, NumberKinds::kNo) {}
};

class CDlgSetupPhone905 : public CPhoneBookPage {
 public:
  static constexpr int kTemplate = 4112;
  static constexpr int kFunctionType = 1018;
  static constexpr std::array<int, kRows> kGsmRadios{4471, 4473, 4475, 4477};
  static constexpr std::array<int, kRows> kVoipRadios{4472, 4474, 4476, 4478};

  static plat::DialogTemplate Layout();
  CDlgSetupPhone905() : CPhoneBookPage(kTemplate, NumberKinds::kYes) {}

 protected:
  void OnInitPage() override;
  uint8_t NumberKindBit(int row) const override { return IsChecked(kVoipRadios[row]) ? kVoip : 0; }
};
