// The route page: its template, the route popups, the route word, checks,
// the parameter object and the description.
#include "pages/areas/setup_thread.h"

#include <algorithm>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/areas/area_attr.h"
#include "pages/areas/area_keys.h"
#include "pages/areas/area_time.h"
#include "pages/areas/route_picker.h"
#include "text/numbers.h"

namespace {
using C = CDlgSetupThread;
const RegisterPage<C> kPage{C::kFunctionType};

namespace key {
constexpr const char *kPointId = "PID", *kSegmentId = "LID", *kWidth = "LW", *kSegmentAttr = "LDA",
                     *kLongThreshold = "DOR", *kShortThreshold = "DLS", *kOverspeed = "LST";
}  // namespace key

// The route word's check boxes, in bit order, with the texts that name them.
struct RouteBit {
  uint16_t bit;
  int control, text;
};
constexpr RouteBit kRouteBits[] = {{0x01, C::kCheckByTime, C::kTextByTime},
                                   {0x04, C::kCheckEnterDriver, C::kTextEnterDriver},
                                   {0x08, C::kCheckEnterPlatform, C::kTextEnterPlatform},
                                   {0x10, C::kCheckLeaveDriver, C::kTextLeaveDriver},
                                   {0x20, C::kCheckLeavePlatform, C::kTextLeavePlatform}};
constexpr int kIdMax = 255;

Json::Value PointObject(const area::RoutePoint& p) {
  Json::Value point(Json::objectValue);
  point[key::kPointId] = p.pointId;
  point[key::kSegmentId] = p.segmentId;
  point[areakey::kLat] = p.lat;
  point[areakey::kLng] = p.lng;
  point[key::kWidth] = p.width;
  point[key::kSegmentAttr] = p.attr;
  point[key::kLongThreshold] = p.longThreshold;
  point[key::kShortThreshold] = p.shortThreshold;
  point[areakey::kMaxSpeed] = p.maxSpeed;
  point[key::kOverspeed] = p.overspeed;
  point[areakey::kNightSpeed] = p.nightSpeed;
  return point;
}
}  // namespace

plat::DialogTemplate CDlgSetupThread::Layout() {
  using namespace row;
  namespace style = plat::style;
  return FitToPageArea(PageTemplate(
      kTemplate, {700, 330},
      {{Box(kAttrGroup, "线路属性", {10, 5, 690, 75}, kTextAttributes, style::Group),
        Check(kCheckByTime, "根据时间", {20, 25, 180, 45}, kTextByTime),
        Check(kCheckEnterDriver, "进线路报警给驾驶员", {190, 25, 400, 45}, kTextEnterDriver),
        Check(kCheckEnterPlatform, "进线路报警给平台", {410, 25, 620, 45}, kTextEnterPlatform),
        Check(kCheckLeaveDriver, "出线路报警给驾驶员", {190, 50, 400, 70}, kTextLeaveDriver),
        Check(kCheckLeavePlatform, "出线路报警给平台", {410, 50, 620, 70}, kTextLeavePlatform)},
       {Box(kItemGroup, "区域项", {10, 80, 690, 280}, kTextItem, style::Group),
        Static(kIdLabel, "线路ID", {20, 105, 110, 125}, kTextRouteId),
        Number(kIdEdit, {115, 103, 200, 125}, 0, kIdMax), Static(kIdRange, "(0~255)", {205, 105, 280, 125}),
        Static(kRouteLabel, "选择线路", {300, 105, 390, 125}, kTextRoute),
        Button(kPickButton, "请选择路线", {395, 101, 680, 127})},
       {Static(kStartLabel, "开始时间", {20, 140, 110, 160}, kTextStart), Date(kStartDate, {115, 138, 250, 160}),
        Time(kStartTime, {255, 138, 360, 160}), Check(kEveryDay, "每天", {380, 140, 480, 160}, kTextEveryDay),
        Static(kEndLabel, "结束时间", {20, 170, 110, 190}, kTextEnd), Date(kEndDate, {115, 168, 250, 190}),
        Time(kEndTime, {255, 168, 360, 190})},
       {Static(kNameLabel, "区域名称", {20, 205, 110, 225}, kTextName), Edit(kNameEdit, {115, 203, 680, 225})},
       {SetButton({500, 290, 590, 318}), CancelButton({600, 290, 690, 318})}}));
}

CDlgSetupThread::CDlgSetupThread() : CBaseDlg(kTemplate) {
  DeviceKindMask = kDeviceKinds;
  for (int box : {kCheckByTime, kEveryDay}) Bind(box, BN_CLICKED, [this] { ApplyEnabling(); });
  Bind(kPickButton, BN_CLICKED, [this] { OnPick(); });
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CDlgSetupThread::OnInitPage() {
  area::InitTimePickers(*this, {kStartDate, kStartTime, kEndDate, kEndTime});
  ApplyEnabling();
}

void CDlgSetupThread::EnableParamControls(BOOL enable) {
  CBaseDlg::EnableParamControls(enable);
  if (enable) ApplyEnabling();
}

void CDlgSetupThread::ApplyEnabling() {
  const bool byTime = IsChecked(kCheckByTime);
  for (int id : {kStartTime, kEndTime, kEveryDay}) EnableItem(id, byTime);
  for (int id : {kStartDate, kEndDate}) EnableItem(id, byTime && !IsChecked(kEveryDay));
}

void CDlgSetupThread::OnPick() {
  CDlgThreadSelect picker(lineId_, points_);
  if (picker.DoModal(this) != IDOK) return;
  lineId_ = picker.LineId();
  points_ = picker.Points();
  if (lineId_ == 0) return;
  const std::string name = CVMgrMyMapInfomation::GetMarkerName(lineId_);
  SetItemText(kIdEdit, std::to_string(lineId_));
  SetItemText(kPickButton, name);
  SetItemText(kNameEdit, name);
}

void CDlgSetupThread::OnSend() {
  idText_ = GetItemText(kIdEdit);
  word_ = 0;
  for (const RouteBit& b : kRouteBits) {
    if (IsChecked(b.control)) word_ |= b.bit;
  }
  const bool everyDay = IsChecked(kEveryDay);
  start_ = area::ReadTime(*this, kStartDate, kStartTime, everyDay);
  end_ = area::ReadTime(*this, kEndDate, kEndTime, everyDay);
  name_ = GetItemText(kNameEdit);
  StartSend(Mode::kSet, kCommand);
}

BOOL CDlgSetupThread::CheckParam() {
  return ParamCheck(*this)
      .Filled(idText_, kTextRouteId, kIdEdit)
      .That(lineId_ != 0, kTextNoRoute)
      .That(area::InOrder(start_, end_), kTextTimeOrder)
      .Ok();
}

Json::Value CDlgSetupThread::GetParam() {
  const size_t limit =
      CConfigKestrelINI::ReadIniInt(area::kSwitchOverspeedControl) != 0 ? kMaxPointsWithControl : kMaxPoints;
  Json::Value points(Json::arrayValue);
  for (size_t i = 0; i < std::min(points_.size(), limit); ++i) points.append(PointObject(points_[i]));
  Json::Value param(Json::objectValue);
  param[areakey::kAttr] = word_;
  param[areakey::kId] = txt::WToI(idText_);
  param[areakey::kPointCount] = static_cast<int>(points.size());
  param[areakey::kPoints] = points;
  param[areakey::kStart] = area::TimeText(start_);
  param[areakey::kEnd] = area::TimeText(end_);
  param[areakey::kName] = name_;
  return param;
}

std::string CDlgSetupThread::GetParamDescription() {
  std::string attributes;
  for (const RouteBit& b : kRouteBits) {
    if (word_ & b.bit) AddChineseStringStatus(attributes, LanguageText(b.text));
  }
  return Description()
      .Field(kTextAttributes, attributes)
      .Field(kTextRouteId, txt::WToI(idText_))
      .Field(kTextLine, CVMgrMyMapInfomation::GetMarkerName(lineId_))
      .Field(kTextStart, FormatSystemTime(start_))
      .Field(kTextEnd, FormatSystemTime(end_))
      .Field(kTextName, name_);
}
