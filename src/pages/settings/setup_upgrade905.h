// The upgrade of a taxi terminal (JT/T 905 form, command word 1): the device
// type from the host's list, numeric maker and versions, the dial-up and
// upgrade server, and, for devices that have them, the server account and the
// firmware fields.
#pragma once

#include "pages/settings/terminal_control_page.h"

class CDlgSetupUpGrade905 : public CTerminalControlPage {
 public:
  static constexpr int kTemplate = 4097;
  static constexpr int kFunctionType = 55;
  static constexpr int kCommandWord = 1;
  static constexpr int kLastDeviceType = 18;  // the host names device types 0 to 18
  enum Control : int {
    kTypeLabel = 4443, kTypeList = 4444,
    kMakerEdit = 4132, kHardwareEdit = 4133, kFirmwareEdit = 4134, kApnEdit = 4126, kUserEdit = 4127,
    kPasswordEdit = 4128, kAddressEdit = 4129, kPortEdit = 4130, kServerUserEdit = 4148, kServerPasswordEdit = 4150,
    kInternalVersionEdit = 4155, kFirmwareUrlEdit = 4156, kFileNameEdit = 4157, kFileSizeEdit = 4158,
    kMakerLabel = 4137, kHardwareLabel = 4138, kFirmwareLabel = 4139, kApnLabel = 4140, kUserLabel = 4141,
    kPasswordLabel = 4142, kAddressLabel = 4143, kPortLabel = 4144, kServerUserLabel = 4147,
    kServerPasswordLabel = 4149, kInternalVersionLabel = 4151, kFirmwareUrlLabel = 4152, kFileNameLabel = 4153,
    kFileSizeLabel = 4154, kMakerHint = 4160, kHardwareHint = 4161, kFirmwareHint = 4162, kPortHint = 4163,
  };
  enum Text : int {
    kTextType = 12911, kTextMaker = 12912, kTextHardware = 12913, kTextFirmware = 12914, kTextApn = 12915,
    kTextUser = 12916, kTextPassword = 12917, kTextAddress = 12918, kTextPort = 12919, kTextServerUser = 12920,
    kTextServerPassword = 12921, kTextInternalVersion = 12922, kTextFirmwareUrl = 12923, kTextFileName = 12924,
    kTextFileSize = 12925,
  };

  static plat::DialogTemplate Layout();
  CDlgSetupUpGrade905();
  BOOL CheckParam() override;
  std::string GetParamDescription() override;
  void UpdateProtocolControls() override;

 protected:
  void ReadChoices() override;
  void PutChoices(Json::Value& param) const override;

 private:
  uint32_t deviceType_ = 0;
  std::string deviceTypeName_;
};
