// The route page: one of the user's map lines, with the points chosen and
// edited in the route popups, goes to the terminals as a route with its
// attribute word, time range and name; the same route to every device.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "command/base_dlg.h"
#include "pages/areas/route_point.h"

class CDlgSetupThread : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4003;
  static constexpr int32_t kCommand = 0x8606;
  static constexpr int kFunctionType = 3;
  static constexpr uint32_t kDeviceKinds = 4;
  static constexpr size_t kMaxPoints = 15, kMaxPointsWithControl = 1000;
  enum Control : int {
    kAttrGroup = 4001, kCheckByTime = 3005, kCheckEnterDriver = 3010, kCheckEnterPlatform = 3008,
    kCheckLeaveDriver = 3007, kCheckLeavePlatform = 3009, kItemGroup = 3029, kIdLabel = 4002, kIdEdit = 4003,
    kIdRange = 4005, kRouteLabel = 4004, kPickButton = 4000, kStartLabel = 3026, kStartDate = 3019,
    kStartTime = 4012, kEndLabel = 4029, kEndDate = 3020, kEndTime = 4013, kEveryDay = 4418, kNameLabel = 3043,
    kNameEdit = 3042,
  };
  enum Text : int {
    kTextRouteId = 12000, kTextAttributes = 12400, kTextByTime = 12401, kTextEnterPlatform = 12402,
    kTextEnterDriver = 12403, kTextLeavePlatform = 12404, kTextLeaveDriver = 12405, kTextItem = 12406,
    kTextRoute = 12407, kTextStart = 12408, kTextEnd = 12409, kTextLine = 12509, kTextName = 12621,
    kTextEveryDay = 12622, kTextNoRoute = 12704, kTextTimeOrder = 12411,
  };

  static plat::DialogTemplate Layout();
  CDlgSetupThread();

  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;
  void EnableParamControls(BOOL enable) override;

  int LineId() const { return lineId_; }
  const std::vector<area::RoutePoint>& Points() const { return points_; }

 protected:
  void OnInitPage() override;

 private:
  void OnPick();
  void OnSend();
  void ApplyEnabling();

  int lineId_ = 0;
  std::vector<area::RoutePoint> points_;
  uint16_t word_ = 0;
  SYSTEMTIME start_{}, end_{};
  std::string idText_, name_;
};
