// The audio recording page: start or stop recording, for how long, whether
// the terminal uploads at once or keeps the recording, and the sampling rate.
#pragma once

#include <cstdint>
#include <string>

#include "command/base_dlg.h"

class CDlgSound : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4034;
  static constexpr int32_t kCommand = 0x8804;
  static constexpr int kFunctionType = 28;
  enum Control : int {
    kTimeEdit = 4282, kCommandCombo = 4283, kSaveCombo = 4256, kRateCombo = 4285,
    kTimeLabel = 4286, kTimeNote = 4287, kCommandLabel = 4288, kRateLabel = 4289, kSaveLabel = 4255,
  };
  enum Text : int {
    kTextTime = 13440, kTextTimeNote = 13441, kTextCommand = 13442, kTextSave = 13443, kTextRate = 13444,
    kTextStop = 13445, kTextStart = 13446,
  };

  static plat::DialogTemplate Layout();
  CDlgSound();

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  void OnInitPage() override;

 private:
  std::string time_;
  uint32_t command_ = 0;
  uint32_t save_ = 0;
  uint32_t rate_ = 0;
};
