// The area pages' common part: template, send steps, checks, the attribute
// word, the common keys, batching with progress, descriptions and enabling.
#include "pages/areas/area_page.h"

#include <cstdio>
#include <tuple>
#include <vector>

#include "command/description.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/areas/area_keys.h"
#include "pages/areas/area_time.h"
#include "text/numbers.h"

namespace {
using C = CAreaPageBase;

namespace key = areakey;

constexpr int kSpeedMax = 255, kDrivingTimeMax = 65535;

constexpr int kSetupRadios[] = {C::kRadioUpdate, C::kRadioAppend, C::kRadioModify};
constexpr int kSetupTexts[] = {C::kTextUpdate, C::kTextAppend, C::kTextModify};
constexpr int k2019Controls[] = {C::kNightLabel, C::kNightEdit, C::kNightUnit, C::kNameLabel, C::kNameEdit};
constexpr int kTypeControls[] = {C::kTypeGroup, C::kAreaTypeLabel, C::kUnloadTypeLabel, C::kAreaTypeCombo,
                                 C::kUnloadTypeCombo};
constexpr int kMountainControls[] = {C::kCheckBan,         C::kMountainGroup,     C::kDrivingSpeedLabel,
                                     C::kDrivingTimeLabel, C::kDrivingSpeedEdit,  C::kDrivingTimeEdit,
                                     C::kDrivingSpeedRange, C::kDrivingSpeedUnit, C::kDrivingTimeRange,
                                     C::kDrivingTimeUnit};

bool Switch(int id) { return CConfigKestrelINI::ReadIniInt(id) != 0; }
}  // namespace

// Sections: setup, attributes, the area item (id, picker, radius, times,
// speeds, 2019 fields), the mountain-road ban, the area and unload types, buttons.
plat::DialogTemplate CAreaPageBase::MakeTemplate(const Shape& shape, const char* pickCaption) {
  using namespace row;
  namespace style = plat::style;
  constexpr uint32_t kHidden = style::Hidden;
  std::vector<plat::ControlEntry> setup, radius;
  if (shape.hasSetup) {
    setup = {Box(kSetupGroup, "设置属性", {10, 5, 750, 45}, kTextSetup, style::Group),
             Radio(kRadioUpdate, "更新区域", {20, 20, 160, 40}, kTextUpdate, style::Group),
             Radio(kRadioAppend, "追加区域", {170, 20, 310, 40}, kTextAppend),
             Radio(kRadioModify, "修改区域", {320, 20, 460, 40}, kTextModify)};
  }
  if (shape.hasRadius) {
    radius = {Static(kRadiusLabel, "半径", {20, 245, 110, 265}, kTextRadius),
              Edit(kRadiusEdit, {115, 243, 260, 265}, {.limit = kRadiusChars, .styles = style::Number}),
              Static(kRadiusUnit, "(米)", {265, 245, 330, 265}, kTextMetres)};
  }
  const std::vector<plat::ControlEntry> attributes = {
      Box(kAttrGroup, "区域属性", {10, 50, 750, 180}, kTextAttributes, style::Group),
      Check(kCheckByTime, "根据时间", {20, 70, 190, 90}, 12401),
      Check(kCheckSpeedLimit, "限速", {200, 70, 370, 90}, 12309),
      Check(kCheckEnterDriver, "进区域报警给驾驶员", {380, 70, 560, 90}, 12506),
      Check(kCheckEnterPlatform, "进区域报警给平台", {570, 70, 740, 90}, 12505),
      Check(kCheckLeaveDriver, "出区域报警给驾驶员", {20, 100, 190, 120}, 12508),
      Check(kCheckLeavePlatform, "出区域报警给平台", {200, 100, 370, 120}, 12507),
      Check(kCheckSouth, "南纬", {380, 100, 560, 120}, 12515),
      Check(kCheckWest, "西经", {570, 100, 740, 120}, 12616),
      Check(kCheckNoDoors, "禁止开门", {20, 130, 190, 150}, 12617),
      Check(kCheckCommOff, "关闭通讯模块", {200, 130, 370, 150}, 12618),
      Check(kCheckGnss, "采集GNSS详细定位数据", {380, 130, 560, 150}, 12619),
      Check(kCheckBan, "禁运(山区公路禁行)", {570, 130, 740, 150}, kTextBan),
      Check(kCheckOverspeed, area::kOverspeedControlText, {570, 130, 740, 150}, 0, kHidden)};
  const std::vector<plat::ControlEntry> item = {
      Box(kItemGroup, "区域项", {10, 185, 750, 400}, kTextItem, style::Group),
      Static(kIdLabel, "区域ID", {20, 210, 110, 230}, kTextAreaId),
      Edit(kIdEdit, {115, 208, 260, 230}, {.limit = kIdChars, .styles = style::Number}),
      Static(kCentreLabel, "区域中心", {280, 210, 370, 230}, kTextCentre),
      Button(kPickButton, pickCaption, {375, 206, 540, 232}, kTextPick),
      Static(kProgress, "", {560, 210, 740, 230})};
  const std::vector<plat::ControlEntry> times = {
      Static(kStartLabel, "开始时间", {20, 280, 110, 300}, kTextStart), Date(kStartDate, {115, 278, 250, 300}),
      Time(kStartTime, {255, 278, 360, 300}), Check(kEveryDay, "每天", {380, 280, 480, 300}, kTextEveryDay),
      Static(kEndLabel, "结束时间", {20, 310, 110, 330}, kTextEnd), Date(kEndDate, {115, 308, 250, 330}),
      Time(kEndTime, {255, 308, 360, 330})};
  const std::vector<plat::ControlEntry> speeds = {
      Static(kSpeedLabel, "最高速度", {20, 340, 110, 360}, kTextMaxSpeed),
      Number(kSpeedEdit, {115, 338, 200, 360}, 0, kSpeedMax),
      Static(kDurationLabel, "持续时间", {220, 340, 310, 360}, kTextDuration),
      Number(kDurationEdit, {315, 338, 400, 360}, 0, kSpeedMax),
      Static(kDurationUnit, "(秒)", {405, 340, 460, 360}, kTextSeconds),
      Static(kNightLabel, "夜间最高速度", {20, 370, 130, 390}, kTextNightSpeed, kHidden),
      Number(kNightEdit, {135, 368, 200, 390}, 0, kSpeedMax, kHidden),
      Static(kNightUnit, "(公里/小时)", {205, 370, 300, 390}, 0, kHidden),
      Static(kNameLabel, "区域名称", {320, 370, 410, 390}, kTextAreaName, kHidden),
      Edit(kNameEdit, {415, 368, 740, 390}, {.limit = kNameChars, .styles = kHidden})};
  const std::vector<plat::ControlEntry> mountain = {
      Box(kMountainGroup, "山区公路禁行信息", {10, 405, 380, 490}, kTextMountain, style::Group | kHidden),
      Static(kDrivingSpeedLabel, "行车速度", {20, 430, 110, 450}, kTextDrivingSpeed, kHidden),
      Number(kDrivingSpeedEdit, {115, 428, 190, 450}, 0, kSpeedMax, kHidden),
      Static(kDrivingSpeedRange, "(0~255)", {195, 430, 260, 450}, 0, kHidden),
      Static(kDrivingSpeedUnit, "(公里/小时)", {265, 430, 370, 450}, 0, kHidden),
      Static(kDrivingTimeLabel, "行车时间", {20, 460, 110, 480}, kTextDrivingTime, kHidden),
      Number(kDrivingTimeEdit, {115, 458, 190, 480}, 0, kDrivingTimeMax, kHidden),
      Static(kDrivingTimeRange, "(0~65535)", {195, 460, 275, 480}, 0, kHidden),
      Static(kDrivingTimeUnit, "(分钟)", {280, 460, 370, 480}, 0, kHidden)};
  const std::vector<plat::ControlEntry> types = {
      Box(kTypeGroup, "区域类型", {390, 405, 750, 490}, 0, style::Group | kHidden),
      Static(kAreaTypeLabel, "区域类型", {400, 430, 480, 450}, 0, kHidden),
      Combo(kAreaTypeCombo, {485, 428, 740, 600}, kHidden),
      Static(kUnloadTypeLabel, "卸载类型", {400, 460, 480, 480}, 0, kHidden),
      Combo(kUnloadTypeCombo, {485, 458, 740, 630}, kHidden)};
  const std::vector<plat::ControlEntry> buttons = {SetButton({560, 500, 650, 528}), CancelButton({660, 500, 750, 528})};

  return FitToPageArea(PageTemplate(shape.templateId, {760, 540},
                                    std::vector<TemplateRows>{setup, attributes, item, radius, times, speeds,
                                                              mountain, types, buttons}));
}

CAreaPageBase::CAreaPageBase(const Shape& shape) : CBaseDlg(shape.templateId), shape_(shape) {
  DeviceKindMask = kDeviceKinds;
  BatchMode = TRUE;
  for (int i = 0; i < 3; ++i) {
    Bind(kSetupRadios[i], BN_CLICKED, [this, i] { setup_ = i; });
  }
  for (int box : {kCheckByTime, kCheckSpeedLimit, kCheckBan, kEveryDay}) {
    Bind(box, BN_CLICKED, [this] { ApplyDependentEnabling(); });
  }
  Bind(kPickButton, BN_CLICKED, [this] { OnPick(); });
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CAreaPageBase::OnInitPage() {
  SetChecked(kRadioUpdate, true);
  for (auto [combo, count, name] : {std::tuple{kAreaTypeCombo, area::kAreaTypeCount, &area::AreaTypeName},
                                    std::tuple{kUnloadTypeCombo, area::kUnloadTypeCount, &area::UnloadTypeName}}) {
    auto* box = Item<plat::ComboBox>(combo);
    for (int i = 0; i < count; ++i) box->AddString(name(i));
    box->SetCurSel(0);
  }
  area::InitTimePickers(*this, {kStartDate, kStartTime, kEndDate, kEndTime});
  ApplyDependentEnabling();
}

// ---- showing and enabling ------------------------------------------------------------

void CAreaPageBase::UpdateProtocolControls() {
  if (!IsWindow()) return;
  for (int id : k2019Controls) ShowItem(id, Is2019());
}

void CAreaPageBase::ApplyClientOptions() {
  if (!IsWindow()) return;
  const bool control = Switch(area::kSwitchOverspeedControl);
  for (int id : kTypeControls) ShowItem(id, !control && Switch(area::kSwitchAreaTypes));
  for (int id : kMountainControls) ShowItem(id, !control && Switch(area::kSwitchMountainRoad));
  ShowItem(kCheckOverspeed, control);
}

void CAreaPageBase::EnableParamControls(BOOL enable) {
  CBaseDlg::EnableParamControls(enable);
  if (!enable) return;
  ApplyDependentEnabling();
  ApplySelectionEnabling();
}

void CAreaPageBase::ApplyDependentEnabling() {
  const bool speed = IsChecked(kCheckSpeedLimit), byTime = IsChecked(kCheckByTime), ban = IsChecked(kCheckBan);
  for (int id : {kSpeedEdit, kDurationEdit, kNightEdit}) EnableItem(id, speed);
  for (int id : {kStartTime, kEndTime, kEveryDay}) EnableItem(id, byTime);
  for (int id : {kStartDate, kEndDate}) EnableItem(id, byTime && !IsChecked(kEveryDay));
  for (int id : {kDrivingSpeedEdit, kDrivingTimeEdit}) EnableItem(id, ban);
}

// The id, radius and name edits belong to one chosen area.
void CAreaPageBase::ApplySelectionEnabling() {
  for (int id : {kIdEdit, kRadiusEdit, kNameEdit}) EnableItem(id, selected_.size() <= 1);
}

// ---- picking -------------------------------------------------------------------------------

void CAreaPageBase::OnPick() {
  int fenceLevel = fenceLevel_;
  std::vector<int> selected = selected_;
  if (!RunPicker(fenceLevel, selected)) return;
  fenceLevel_ = fenceLevel;
  selected_ = std::move(selected);
  SetItemText(kProgress, "0 / " + std::to_string(selected_.size()));
  if (Alone()) {
    if (const auto marker = area::Marker::Find(selected_.front())) ShowPickedMarker(*marker);
  } else {
    const std::string several = LanguageText(kTextSeveralAreas);
    for (int id : {kIdEdit, kRadiusEdit, kNameEdit}) SetItemText(id, several);
  }
  ApplySelectionEnabling();
}

void CAreaPageBase::ShowPickedMarker(const area::Marker& marker) {
  SetItemText(kIdEdit, std::to_string(marker.Id()));
  SetItemText(kNameEdit, marker.Name());
}

// ---- sending -------------------------------------------------------------------------------

uint16_t CAreaPageBase::BuildWord() const {
  unsigned word = 0;
  for (const area::AttrCheck& check : area::kAttrChecks) {
    if (IsChecked(check.control)) word |= check.bit;
  }
  if (Switch(area::kSwitchOverspeedControl)) {
    if (fenceLevel_ != area::kAllFences) word |= static_cast<unsigned>(fenceLevel_) << area::kRegionalShift;
    if (IsChecked(kCheckOverspeed)) word |= area::kBitBanOrControl;
  } else if (IsChecked(kCheckBan)) {
    word |= area::kBitBanOrControl;
  } else if (Switch(area::kSwitchAreaTypes)) {
    const auto index = [this](int combo) {
      const int sel = Item<plat::ComboBox>(combo)->GetCurSel();
      return static_cast<unsigned>(sel < 0 ? 0 : sel);
    };
    word |= index(kAreaTypeCombo) << area::kRegionalShift;
    word |= index(kUnloadTypeCombo) << area::kUnloadShift;
  }
  return static_cast<uint16_t>(word);
}

void CAreaPageBase::OnSend() {
  SetBatch(static_cast<int>(selected_.size()), shape_.batchSize);
  idText_ = GetItemText(kIdEdit);
  radiusText_ = GetItemText(kRadiusEdit);
  speedText_ = GetItemText(kSpeedEdit);
  durationText_ = GetItemText(kDurationEdit);
  nightText_ = GetItemText(kNightEdit);
  word_ = BuildWord();
  const bool everyDay = IsChecked(kEveryDay);
  start_ = area::ReadTime(*this, kStartDate, kStartTime, everyDay);
  end_ = area::ReadTime(*this, kEndDate, kEndTime, everyDay);
  drivingSpeed_ = GetItemText(kDrivingSpeedEdit);
  drivingTime_ = GetItemText(kDrivingTimeEdit);
  nameText_ = GetItemText(kNameEdit);
  descriptionStart_ = 0;
  StartSend(Mode::kSet, shape_.command);
}

BOOL CAreaPageBase::CheckParam() {
  ParamCheck check(*this);
  CheckShape(check);
  return check.Filled(speedText_, kTextMaxSpeed, kSpeedEdit)
      .Filled(durationText_, kTextDuration, kDurationEdit)
      .That(area::InOrder(start_, end_), kTextTimeOrder)
      .Ok();
}

CBaseDlg::BatchRange CAreaPageBase::TakeBatch() {
  batchStep = shape_.batchSize;
  const BatchRange range = CurrentBatch();
  batchStep = range.count > 0 ? range.count : 1;
  return range;
}

Json::Value CAreaPageBase::CommonKeys() const {
  Json::Value keys(Json::objectValue);
  keys[key::kAttr] = word_;
  keys[key::kStart] = area::TimeText(start_);
  keys[key::kEnd] = area::TimeText(end_);
  keys[key::kMaxSpeed] = txt::WToI(speedText_);
  keys[key::kDuration] = txt::WToI(durationText_);
  if (Is2019()) keys[key::kNightSpeed] = txt::WToI(nightText_);
  if (!Switch(area::kSwitchOverspeedControl) && Switch(area::kSwitchMountainRoad) && IsChecked(kCheckBan)) {
    keys[key::kDrivingSpeed] = txt::WToI(drivingSpeed_);
    keys[key::kDrivingTime] = txt::WToI(drivingTime_);
  }
  return keys;
}

Json::Value CAreaPageBase::ListParam(int count, const Json::Value& items) const {
  Json::Value param(Json::objectValue);
  param[key::kSetup] = setup_;
  param[key::kCount] = count;
  if (!items.empty()) param[key::kItem] = items;
  return param;
}

std::string CAreaPageBase::AreaName(const std::optional<area::Marker>& marker) const {
  if (Alone()) return nameText_;
  return marker ? marker->Name() : std::string();
}

uint16_t CAreaPageBase::HemisphereBits(const area::Marker& marker) const {
  uint16_t bits = 0;
  if (area::ParseCoordinate(marker.LatText()).negative) bits |= area::kBitSouth;
  if (area::ParseCoordinate(marker.LngText()).negative) bits |= area::kBitWest;
  return bits;
}

// ---- replies and rows ----------------------------------------------------------------------

void CAreaPageBase::PrepareBatch(CommandRequest& request) {
  if (request.itemIndex >= 0 && request.itemIndex < static_cast<int>(selected_.size())) {
    descriptionStart_ = request.itemIndex;
  }
}

void CAreaPageBase::UpdateBatchProgress() {
  if (selected_.size() > 1) {
    char text[32];
    std::snprintf(text, sizeof text, "%d / %d", batchPosition, static_cast<int>(selected_.size()));
    SetItemText(kProgress, text);
  } else {
    SetItemText(kProgress, "");
  }
}

std::string CAreaPageBase::GetParamDescription() {
  const bool valid = descriptionStart_ >= 0 && descriptionStart_ < static_cast<int>(selected_.size());
  const int id = valid ? selected_[static_cast<size_t>(descriptionStart_)] : 0;
  const std::optional<area::Marker> marker = valid ? area::Marker::Find(id) : std::nullopt;
  area::RegionalView view = area::ReadSwitches();
  view.fenceLevel = fenceLevel_;
  view.drivingSpeed = drivingSpeed_;
  view.drivingTime = drivingTime_;
  Description description;
  if (shape_.hasSetup) description.Field(kTextSetup, LanguageText(kSetupTexts[setup_]));
  description.Field(kTextAttributes, area::AttributeText(marker ? AttrOf(*marker) : word_, view))
      .Field(kTextAreaId, id);
  if (shape_.hasRadius) {
    description.Field(kTextRadius, Alone() ? radiusText_ : std::to_string(marker ? static_cast<int>(marker->Radius()) : 0));
  }
  description.Field(kTextStart, FormatSystemTime(start_))
      .Field(kTextEnd, FormatSystemTime(end_))
      .Field(kTextMaxSpeed, speedText_)
      .Field(kTextDuration, durationText_);
  if (Is2019()) description.Field(kTextNightSpeed, nightText_).Field(kTextAreaName, AreaName(marker));
  return description;
}
