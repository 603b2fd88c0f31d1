// The provincial transparent-data pages: templates, records and descriptions.
#include "pages/regional/transparent_pages.h"

#include <cstdio>
#include <tuple>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "command/time_text.h"
#include "host/hostcore.h"
#include "platform/clock.h"

namespace {
using L = CDlgHBDemoLight;
using S = CDlgHBExternalScreen;
using D = CDlgHBDriverIdentity;
using W = CDlgHBElectronicWaybill;
using R = CTransparentRecordPage;
const RegisterPage<L> kLight{L::kFunctionType};
const RegisterPage<S> kScreen{S::kFunctionType};
const RegisterPage<D> kDriver{D::kFunctionType};
const RegisterPage<W> kWaybill{W::kFunctionType};

constexpr int kWaybillFields[W::kFields] = {W::kSite, W::kArea, W::kRoute, W::kPermit, W::kProject};
constexpr int kWaybillTexts[W::kFields] = {W::kTextSite, W::kTextArea, W::kTextRoute, W::kTextPermit, W::kTextProject};

auto Ordered(const SYSTEMTIME& t) { return std::tie(t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond); }

}  // namespace

plat::DialogTemplate CDlgHBDriverIdentity::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 400},
      {{Box(kSetGroup, "驾驶员身份信息设置参数", {10, 10, 590, 210}, kTextSetGroup, style::Group),
        Static(kIdLabel, "ID", {20, 32, 120, 52}, kTextId), Edit(kId, {130, 30, 300, 52}, {.limit = 10}),
        Static(kOperationLabel, "操作类型", {20, 62, 120, 82}, kTextOperation),
        Radio(kAdd, "新增", {130, 62, 210, 82}, kTextAdd, style::Group), Radio(kDelete, "删除", {220, 62, 300, 82}, kTextDelete),
        Radio(kClear, "清空", {310, 62, 390, 82}, kTextClear)},
       {Static(kUserIdLabel, "用户ID", {20, 92, 120, 112}, kTextUserId), Edit(kUserId, {130, 90, 580, 112}),
        Static(kUserNameLabel, "用户名称", {20, 122, 120, 142}, kTextUserName), Edit(kUserName, {130, 120, 580, 142}),
        Static(kFeatureLabel, "特征码", {20, 152, 120, 172}, kTextFeature), Edit(kFeature, {130, 150, 580, 172})},
       {Box(kQueryGroup, "驾驶员身份信息查询参数", {10, 220, 590, 320}, kTextQueryGroup, style::Group),
        Static(kQueryIdLabel, "ID", {20, 242, 120, 262}, kTextId), Edit(kQueryIds, {130, 240, 580, 262}),
        Static(kQueryHint, "(ID号为空查询全部,多个ID使用分号(';')分割)", {20, 272, 580, 292}, kTextQueryHint)},
       {GetButton({300, 360, 390, 388}), SetButton({400, 360, 490, 388}), CancelButton({500, 360, 590, 388})}});
}

void CDlgHBDriverIdentity::ReadRecord() {
  userId_ = FieldText(kUserId);
  userName_ = FieldText(kUserName);
  feature_ = GetItemText(kFeature);
}

std::string CDlgHBDriverIdentity::RecordNote() const { return userId_ + "," + userName_ + "," + feature_; }

void CDlgHBDriverIdentity::DescribeRecord(Description& description) const {
  description.Field(kTextUserId, userId_).Field(kTextUserName, userName_).Field(kTextFeature, feature_);
}

plat::DialogTemplate CDlgHBElectronicWaybill::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 520},
      {{Box(kSetGroup, "电子运单设置参数", {10, 10, 590, 330}, kTextSetGroup, style::Group),
        Static(kIdLabel, "ID", {20, 32, 120, 52}, kTextId), Edit(kId, {130, 30, 300, 52}, {.limit = 10}),
        Static(kOperationLabel, "操作类型", {20, 62, 120, 82}, kTextOperation),
        Radio(kAdd, "新增", {130, 62, 210, 82}, kTextAdd, style::Group), Radio(kDelete, "删除", {220, 62, 300, 82}, kTextDelete),
        Radio(kClear, "清空", {310, 62, 390, 82}, kTextClear)},
       {Static(kStartLabel, "开始时间", {20, 92, 120, 112}, kTextStart), Date(kStartDate, {130, 90, 250, 112}),
        Time(kStartTime, {260, 90, 360, 112}), Static(kEndLabel, "结束时间", {20, 122, 120, 142}, kTextEnd),
        Date(kEndDate, {130, 120, 250, 142}), Time(kEndTime, {260, 120, 360, 142})},
       {Static(kSiteLabel, "工地名称", {20, 152, 120, 172}, kTextSite), Edit(kSite, {130, 150, 580, 172}),
        Static(kAreaLabel, "卸区名称", {20, 182, 120, 202}, kTextArea), Edit(kArea, {130, 180, 580, 202}),
        Static(kRouteLabel, "路线描述", {20, 212, 120, 232}, kTextRoute), Edit(kRoute, {130, 210, 580, 232}),
        Static(kPermitLabel, "核准证编号", {20, 242, 120, 262}, kTextPermit), Edit(kPermit, {130, 240, 580, 262}),
        Static(kProjectLabel, "工程名称", {20, 272, 120, 292}, kTextProject), Edit(kProject, {130, 270, 580, 292})},
       {Box(kQueryGroup, "电子运单查询参数", {10, 340, 590, 440}, kTextQueryGroup, style::Group),
        Static(kQueryIdLabel, "ID", {20, 362, 120, 382}, kTextId), Edit(kQueryIds, {130, 360, 580, 382}),
        Static(kQueryHint, "(ID号为空查询全部,多个ID使用分号(';')分割)", {20, 392, 580, 412}, kTextQueryHint)},
       {GetButton({300, 480, 390, 508}), SetButton({400, 480, 490, 508}), CancelButton({500, 480, 590, 508})}});
}

// The period starts as the whole of today.
void CDlgHBElectronicWaybill::OnInitPage() {
  SYSTEMTIME start = plat::GetLocalTime();
  start.wHour = start.wMinute = start.wSecond = start.wMilliseconds = 0;
  SYSTEMTIME end = start;
  end.wHour = 23;
  end.wMinute = end.wSecond = 59;
  for (auto [id, time] : {std::pair{kStartDate, start}, {kStartTime, start}, {kEndDate, end}, {kEndTime, end}})
    if (auto* picker = Item<plat::DateTimePicker>(id)) picker->SetTime(time);
}

std::vector<int> CDlgHBElectronicWaybill::RecordControls() const {
  return {kStartDate, kStartTime, kEndDate, kEndTime, kSite, kArea, kRoute, kPermit, kProject};
}

void CDlgHBElectronicWaybill::ReadRecord() {
  start_ = PickedTime(*this, kStartDate, kStartTime);
  end_ = PickedTime(*this, kEndDate, kEndTime);
  for (int i = 0; i < kFields; ++i) fields_[i] = FieldText(kWaybillFields[i]);
}

BOOL CDlgHBElectronicWaybill::CheckParam() {
  if (QueryMode) return TRUE;
  return ParamCheck(*this).That(Ordered(start_) < Ordered(end_), kTextTimeOrder, kStartDate).Ok();
}

std::string CDlgHBElectronicWaybill::RecordNote() const {
  char head[96];
  std::snprintf(head, sizeof head, "%d,%d,%04d-%02d-%02d,%04d-%02d-%02d", start_.wHour, end_.wHour, start_.wYear,
                start_.wMonth, start_.wDay, end_.wYear, end_.wMonth, end_.wDay);
  std::string note = head;
  for (const std::string& field : fields_) note += "," + field;
  return note;
}

void CDlgHBElectronicWaybill::DescribeRecord(Description& description) const {
  description.Field(kTextStart, FormatSystemTime(start_)).Field(kTextEnd, FormatSystemTime(end_));
  for (int i = 0; i < kFields; ++i) description.Field(kWaybillTexts[i], fields_[i]);
}
