// The driver code and driving-licence number kept in the recorder.
#pragma once

#include "pages/settings/recorder_page.h"

class CDlgSetupDerID : public CRecorderPage {
 public:
  static constexpr int kTemplate = 4028;
  static constexpr int kFunctionType = 61;
  static constexpr int64_t kMaxDriverCode = 0xFFFFFF;
  static constexpr int kLicenceChars = 18;
  enum Control : int { kDriverLabel = 4223, kDriverEdit = 4224, kLicenceLabel = 4225, kLicenceEdit = 4226,
                       kDriverHint = 4227, kLicenceHint = 4244 };
  enum Text : int { kTextDriver = 13426, kTextLicence = 13427, kTextUnder18 = 13428, kTextFrame = 20143 };

  static plat::DialogTemplate Layout();
  CDlgSetupDerID();
  BOOL CheckParam() override;

 protected:
  void OnInitPage() override;
  void ReadEntered() override;
  void WriteEntered(Json::Value& param) const override;
  void ClearReadBack() override { readBack_ = {}; }
  void ReadReply(const Json::Value& reply) override;
  void ShowReadBack() override;
  std::string Describe(bool readBack) const override;

 private:
  struct Driver {
    std::string code, licence;
  };
  Driver entered_, readBack_;
};
