// Inspection commands to the chosen terminals: the platform inspection of
// vehicle operation or driver behaviour (0x9720 with its type), or a request
// for the driver's identity (0x9706, no parameters). The regional form (72)
// only asks for the identity.
#pragma once

#include <cstdint>
#include <string>

#include "command/base_dlg.h"

class CInspectionSettingsPage : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4109;
  static constexpr int32_t kCommandInspect = 0x9720, kCommandIdentity = 0x9706;
  enum Control : int { kVehicle = 4467, kDriver = 4468, kIdentity = 4466, kToSeveral = 4213 };
  enum Text : int { kTextVehicle = 13800, kTextDriver = 13801, kTextIdentity = 13802, kTextToSeveral = 13807 };
  static plat::DialogTemplate Layout();

 protected:
  CInspectionSettingsPage();
  // The button that sends; PickerMode chooses the devices.
  virtual void Send() = 0;
};

class CDlgSetHeibInspection : public CInspectionSettingsPage {
 public:
  static constexpr int kFunctionType = 70;
  static constexpr int kSelectionIdentity = 2;
  CDlgSetHeibInspection() = default;

  void EnableParamControls(BOOL enable) override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;
  void AddPickerColumnsFirst(int32_t* codes, int& count) override;
  void AddPickerColumnsSecond(int32_t* codes, int& count) override;

 protected:
  void OnInitPage() override;
  void Send() override;

 private:
  int32_t selection_ = 0;
};

class CDlgSetCbInspection : public CInspectionSettingsPage {
 public:
  static constexpr int kFunctionType = 72;
  CDlgSetCbInspection() = default;
  void EnableParamControls(BOOL enable) override { (void)enable; }
  void AddPickerColumnsSecond(int32_t* codes, int& count) override;

 protected:
  void OnInitPage() override;
  void Send() override { StartSend(Mode::kSet, kCommandIdentity); }
};
