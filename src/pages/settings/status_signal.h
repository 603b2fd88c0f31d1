// The names of the recorder's eight status signals D0 to D7 (2012 edition).
#pragma once

#include <array>

#include "pages/settings/recorder_page.h"

class CDlgSetupStatusSignal : public CRecorderPage {
 public:
  static constexpr int kTemplate = 4062;
  // The function page window's type, and the vehicle function window's.
  static constexpr int kFunctionType = 69, kFunctionTypeVehicle = 49;
  static constexpr int kSignals = 8;
  static constexpr size_t kMaxNameBytes = 10;  // in code page 936
  // Edits 4391, 4394, ... 4412; their labels beside them (4392, 4395, ...); hints apart, clear of
  // the hosting windows' result list (4399).
  static constexpr int kFirstEdit = 4391, kFirstLabel = 4392, kIdStep = 3, kFirstHint = 4480;
  enum Text : int { kTextFrame = 20136, kTextTooLong = 20137, kTextLabel = 20138, kTextUnder10 = 20139 };

  static constexpr int Edit(int index) { return kFirstEdit + kIdStep * index; }
  static constexpr int Label(int index) { return kFirstLabel + kIdStep * index; }
  static constexpr int Hint(int index) { return kFirstHint + index; }

  static plat::DialogTemplate Layout();
  CDlgSetupStatusSignal();
  BOOL CheckParam() override;
  // The frame stays: only the send buttons are hidden.
  void HideSendButtons() override { CBaseDlg::HideSendButtons(); }

 protected:
  void OnInitPage() override;
  void ReadEntered() override;
  void WriteEntered(Json::Value& param) const override;
  void ClearReadBack() override { readBack_ = {}; }
  void ReadReply(const Json::Value& reply) override;
  void ShowReadBack() override;
  std::string Describe(bool readBack) const override;

 private:
  using Names = std::array<std::string, kSignals>;
  Names entered_, readBack_;
};
