// The filtered upload: the terminal uploads the stored media of a channel,
// type and event taken within a time range, and keeps or deletes them.
#pragma once

#include <cstdint>
#include <string>

#include "pages/media/media_filter.h"

class CDlgMediaUpload : public CMediaFilterPage {
 public:
  static constexpr int kTemplate = 4033;
  static constexpr int32_t kCommand = 0x8803;
  static constexpr int kFunctionType = 29;
  enum Control : int {
    kChannelLabel = 4246, kChannelEdit = 4247, kChannelNote = 4278, kTypeLabel = 4279, kTypeCombo = 4271,
    kEventLabel = 4280, kEventCombo = 4272, kStartLabel = 4266, kStartDate = 4273, kStartTime = 4274,
    kEndLabel = 4267, kEndDate = 4275, kEndTime = 4276, kDeleteLabel = 4281, kDeleteCombo = 4277,
  };
  enum Text : int { kTextDelete = 13455, kTextTimeOrder = 12411 };

  static plat::DialogTemplate Layout();
  CDlgMediaUpload();

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  void OnInitPage() override;

 private:
  uint32_t delete_ = 0;
};
