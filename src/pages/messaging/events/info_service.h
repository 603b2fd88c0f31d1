// The information service page: one piece of information of a numbered
// information type.
#pragma once

#include <cstdint>
#include <string>

#include "command/base_dlg.h"

class CDlgInfoService : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4022;
  static constexpr int32_t kCommand = 0x8304;
  static constexpr int kFunctionType = 16;
  static constexpr int kTypeMax = 255;
  static constexpr int kTextChars = 127;
  enum Control : int { kTypeLabel = 4192, kTypeEdit = 4193, kTextLabel = 4169, kTextEdit = 4161, kTextNote = 4170 };
  enum Text : int { kTextType = 13022, kTextContent = 13023, kTextLimit = 13009 };

  static plat::DialogTemplate Layout();
  CDlgInfoService();

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  void OnInitPage() override;

 private:
  std::string type_;
  std::string text_;
};
