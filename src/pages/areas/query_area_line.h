// The area and route query: which circles, rectangles, polygons or routes a
// terminal holds, all of a kind or the ids typed; each device's answer is
// appended to the page's text box as readable text.
#pragma once

#include <string>

#include "command/base_dlg.h"

class CDlgQueryAreaAndLine : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4072;
  static constexpr int32_t kCommand = 0x8608;
  static constexpr int kFunctionType = 51;
  static constexpr uint32_t kDeviceKinds = 4;
  static constexpr const char* kBlockSeparator = "\r\n\r\n\r\n";
  enum Control : int {
    kReplyBox = 4368, kRadioCircle = 4425, kRadioRectangle = 4426, kRadioPolygon = 4427, kRadioRoute = 4377,
    kQueryAll = 4424, kIdEdit = 4422, kIdLabel = 3021, kHint = 4402,
  };
  enum Text : int { kTextAll = 12657, kTextAreaId = 12001, kTextHint = 12813, kTextVehicle = 13421, kTextFailed = 11012 };

  static plat::DialogTemplate Layout();
  CDlgQueryAreaAndLine();

  void EnableParamControls(BOOL enable) override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  void OnInitPage() override;
  void OnAnswer(CommandRequest& request, const Json::Value& reply) override;
  void OnNoAnswer(CommandRequest& request) override;

 private:
  void OnQuery();
  void Append(const std::string& text);

  int kind_ = 1;
  bool all_ = false;
  std::string ids_;
};
