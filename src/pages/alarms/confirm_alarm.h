// Manual alarm confirmation: the alarm types to confirm and the serial number
// of the alarm message (0 confirms every alarm of those types). Sent to the
// current device, the picked devices, or the device the host names in the
// page's context; each answer is passed on to the host as message 13330.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "command/base_dlg.h"

class CDlgConfirmAlarm : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4086;
  static constexpr int32_t kCommand = 0x8203;
  static constexpr int kFunctionType = 54;
  static constexpr int kMaxSerial = 99999;
  enum Control : int {
    kSerialLabel = 1252, kSerialEdit = 4436, kSerialHint = 4437, kTypeGroup = 4438,
    kUrgent = 4349, kDanger = 4350, kArea = 4351, kRoute = 4352, kSection = 4353, kIgnition = 4354,
    kDisplacement = 4355,
  };
  enum Text : int {
    kTextUrgent = 20400, kTextDanger = 20401, kTextArea = 20402, kTextRoute = 20403, kTextSection = 20404,
    kTextIgnition = 20405, kTextDisplacement = 20406, kTextSerial = 20407, kTextSerialHint = 20408,
    kTextTypes = 20409,
  };

  static plat::DialogTemplate Layout();
  CDlgConfirmAlarm();

  void PrepareBatch(CommandRequest& request) override;
  void EnableParamControls(BOOL enable) override { (void)enable; }
  Json::Value GetParam() override;
  std::string GetParamDescription() override;
  void CollectTargets(std::deque<std::string>& targets) override;

 protected:
  void OnInitPage() override;

 private:
  void OnSend();

  int32_t serial_ = 0;
  uint32_t types_ = 0;
  std::vector<std::string> pending_;  // devices the page serves by its own means
};
