// The area and route query page.
#include "pages/areas/query_area_line.h"

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/areas/area_reply.h"
#include "text/encoding.h"
#include "text/json.h"

namespace {
using C = CDlgQueryAreaAndLine;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr const char *kKeyKind = "ATPYE", *kKeyIds = "IDS";
// The radios in kind order (circle, rectangle, polygon, route).
constexpr int kKindRadios[] = {C::kRadioCircle, C::kRadioRectangle, C::kRadioPolygon, C::kRadioRoute};

std::string VehicleName(const char* devIdno) {
  std::string name = CVehicleBaseMgr::FindVehicleFromDev(devIdno).GetName();
  return name.empty() ? std::string(devIdno) : name;
}
}  // namespace

plat::DialogTemplate CDlgQueryAreaAndLine::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 480},
      {{Radio(kRadioCircle, "圆形区域", {10, 10, 140, 30}, area::KindText(area::kCircle), style::Group),
        Radio(kRadioRectangle, "矩形区域", {150, 10, 280, 30}, area::KindText(area::kRectangle)),
        Radio(kRadioPolygon, "多边形区域", {290, 10, 420, 30}, area::KindText(area::kPolygon)),
        Radio(kRadioRoute, "线路", {430, 10, 560, 30}, area::KindText(area::kRoute))},
       {Check(kQueryAll, "查询所有区域", {10, 40, 200, 60}, kTextAll, style::Group),
        Static(kIdLabel, "区域ID", {10, 70, 90, 90}, kTextAreaId), Edit(kIdEdit, {95, 68, 590, 90}),
        Static(kHint, "提示:多个区域ID使用逗号(,)分隔", {95, 95, 590, 115}, kTextHint)},
       {Edit(kReplyBox, {10, 125, 590, 430}, {.styles = style::ReadOnly | style::Multiline})},
       {GetButton({500, 440, 590, 468})}});
}

CDlgQueryAreaAndLine::CDlgQueryAreaAndLine() : CBaseDlg(kTemplate) {
  QueryMode = TRUE;
  DeviceKindMask = kDeviceKinds;
  Bind(kQueryAll, BN_CLICKED, [this] { EnableItem(kIdEdit, !IsChecked(kQueryAll)); });
  Bind(ctl::Get, BN_CLICKED, [this] { OnQuery(); });
}

void CDlgQueryAreaAndLine::OnInitPage() { SetChecked(kRadioCircle, true); }

void CDlgQueryAreaAndLine::EnableParamControls(BOOL enable) {
  for (int radio : kKindRadios) EnableItem(radio, enable != FALSE);
  EnableItem(kQueryAll, enable != FALSE);
  EnableItem(kIdEdit, enable && !IsChecked(kQueryAll));
}

void CDlgQueryAreaAndLine::OnQuery() {
  for (int i = 0; i < 4; ++i) {
    if (IsChecked(kKindRadios[i])) kind_ = i + 1;
  }
  all_ = IsChecked(kQueryAll);
  ids_ = all_ ? std::string() : GetItemText(kIdEdit);
  StartSend(Mode::kGet, kCommand);
}

Json::Value CDlgQueryAreaAndLine::GetParam() {
  Json::Value param(Json::objectValue);
  param[kKeyKind] = kind_;
  param[kKeyIds] = txt::Utf8ToGbk(ids_);
  return param;
}

std::string CDlgQueryAreaAndLine::GetParamDescription() {
  return Description()
      .Field(LanguageText(area::KindText(0)), LanguageText(area::KindText(kind_)))
      .Field(kTextAreaId, all_ ? LanguageText(kTextAll) : ids_);
}

void CDlgQueryAreaAndLine::Append(const std::string& text) {
  // The box's length, not a copy of its text: the box grows with every answer.
  const auto* box = Item<plat::Edit>(kReplyBox);
  AppendText(kReplyBox, (box && box->GetWindowTextLength() > 0 ? kBlockSeparator : "") + text);
}

void CDlgQueryAreaAndLine::OnAnswer(CommandRequest& request, const Json::Value& reply) {
  const int kind = txt::JsonMemberInt(reply, kKeyKind, 0);
  if (!area::IsKind(kind)) return OnNoAnswer(request);
  area::RegionalView regional = area::ReadSwitches();
  regional.fenceLevel = 0;
  Append(area::ReplyText(reply, static_cast<area::Kind>(kind), regional));
}

void CDlgQueryAreaAndLine::OnNoAnswer(CommandRequest& request) {
  Append(FormatChineseColon(LanguageText(kTextVehicle), VehicleName(request.devIdno)) + "\r\n" +
         LanguageText(kTextFailed) + "!!!");
}
