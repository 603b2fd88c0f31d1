// The single upload: the terminal uploads one stored media item by its id,
// and keeps or deletes it.
#pragma once

#include <cstdint>
#include <string>

#include "command/base_dlg.h"

class CDlgSingleMediaUpload : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4068;
  static constexpr int32_t kCommand = 0x8805;
  static constexpr int kFunctionType = 33;
  static constexpr int kIdDigits = 9;  // ids 1 to 999999999
  enum Control : int {
    kIdLabel = 4282, kIdEdit = 4322, kIdNote = 4323, kDeleteLabel = 4281, kDeleteCombo = 4277,
  };
  enum Text : int { kTextMediaId = 14000, kTextDelete = 13455, kTextValueMust = 12702 };

  static plat::DialogTemplate Layout();
  CDlgSingleMediaUpload();

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  void OnInitPage() override;

 private:
  std::string id_;
  uint32_t delete_ = 0;
};
