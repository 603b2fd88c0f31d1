// The recorder's numbers: the characteristic coefficient (2003 edition), the
// initial mileage and the pulse coefficient with the recorder's time (2012).
#pragma once

#include "pages/settings/recorder_page.h"

class CDlgFeature : public CRecorderPage {
 public:
  static constexpr int kTemplate = 4031;
  static constexpr int kFunctionType = 62;
  static constexpr int64_t kMaxCoefficient = 0xFFFFFF;
  enum Control : int { kLabel = 4240, kEdit = 4241, kHint = 4242 };
  enum Text : int { kTextCoefficient = 13425 };

  static plat::DialogTemplate Layout();
  CDlgFeature();

 protected:
  void OnInitPage() override { SetItemText(kEdit, "0"); }
  void ReadEntered() override { entered_ = GetItemText(kEdit); }
  void WriteEntered(Json::Value& param) const override;
  void ClearReadBack() override { readBack_.clear(); }
  void ReadReply(const Json::Value& reply) override;
  void ShowReadBack() override { SetItemText(kEdit, readBack_); }
  std::string Describe(bool readBack) const override;

 private:
  std::string entered_, readBack_;
};

class CDlgSetupInitialMileage : public CRecorderPage {
 public:
  static constexpr int kTemplate = 4061;
  static constexpr int kFunctionType = 67;
  static constexpr size_t kMileageDigits = 8;  // shorter texts are padded with "0" on the left
  enum Control : int { kLabel = 4387, kEdit = 4388, kHint = 4389 };
  enum Text : int { kTextMileage = 20106, kTextHint = 20150 };

  static plat::DialogTemplate Layout();
  CDlgSetupInitialMileage();
  // The mileage box stays as it is while a send runs.
  void EnableParamControls(BOOL) override {}

 protected:
  void ReadEntered() override { entered_ = GetItemText(kEdit); }
  void WriteEntered(Json::Value& param) const override;
  void ClearReadBack() override { readBack_.clear(); }
  void ReadReply(const Json::Value& reply) override;
  void ShowReadBack() override { SetItemText(kEdit, readBack_); }
  std::string Describe(bool readBack) const override;

 private:
  std::string entered_, readBack_;
};

class CDlgSetupPulseCoefficient : public CRecorderPage {
 public:
  static constexpr int kTemplate = 4060;
  static constexpr int kFunctionType = 68;
  static constexpr int64_t kMaxCoefficient = 65535;
  enum Control : int { kTimeLabel = 4233, kDatePicker = 4245, kTimePicker = 4246, kLabel = 4384, kEdit = 4386,
                       kHint = 4387 };
  enum Text : int { kTextTime = 13429, kTextCoefficient = 20108 };

  static plat::DialogTemplate Layout();
  CDlgSetupPulseCoefficient();

 protected:
  void OnInitPage() override;
  void ReadEntered() override;
  void WriteEntered(Json::Value& param) const override;
  void ClearReadBack() override { readBack_ = {}; }
  void ReadReply(const Json::Value& reply) override;
  void ShowReadBack() override;
  std::string Describe(bool readBack) const override;

 private:
  struct Pulse {
    SYSTEMTIME time{};
    std::string coefficient;
  };
  Pulse entered_, readBack_;
};
