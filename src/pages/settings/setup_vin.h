// The vehicle's VIN, plate number and plate class in the recorder. The page
// serves two editions of the recorder standard, which read the same values
// with different command words.
#pragma once

#include "pages/settings/recorder_page.h"

class CDlgSetupVIN : public CRecorderPage {
 public:
  static constexpr int kTemplate = 4029;
  static constexpr int kFunctionType = 60, kFunctionType2012 = 65;
  static constexpr int kVinChars = 17, kPlateChars = 12;
  enum Edition : int { kEdition2003 = 0, kEdition2012 = 1 };
  enum Control : int {
    kVinEdit = 4232, kPlateEdit = 4227, kClassEdit = 4229,
    kVinLabel = 4231, kPlateLabel = 4228, kClassLabel = 4230, kVinHint = 4242, kPlateHint = 4243, kClassHint = 4244,
  };
  enum Text : int {
    kTextVin = 13420, kTextPlate = 13421, kTextClass = 13422, kTextUnder17 = 13423, kTextUnder12 = 13424,
    kTextFrame2003 = 20140, kTextFrame2012 = 20141,
  };

  static plat::DialogTemplate Layout();
  explicit CDlgSetupVIN(int functionType);
  // The recorder edition: the read word and the frame's caption follow it.
  void SetEdition(Edition edition);

 protected:
  void OnInitPage() override { SetEdition(edition_); }
  void ReadEntered() override;
  void WriteEntered(Json::Value& param) const override;
  void ClearReadBack() override { readBack_ = {}; }
  void ReadReply(const Json::Value& reply) override;
  void ShowReadBack() override;
  std::string Describe(bool readBack) const override;

 private:
  struct Vehicle {
    std::string vin, plate, plateClass;
  };
  Edition edition_;
  Vehicle entered_, readBack_;
};
