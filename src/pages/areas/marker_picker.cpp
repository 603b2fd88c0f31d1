// The marker pickers: the shared list of one shape's markers with its fence
// filter, check map and GpsFix display, and the columns of each shape.
#include "pages/areas/marker_picker.h"

#include <algorithm>
#include <cstdio>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/areas/area_attr.h"

namespace {
const RegisterTemplate<CDlgAreaCenter> kCenterTemplate;
const RegisterTemplate<CDlgAreaRect> kRectTemplate;
const RegisterTemplate<CDlgAreaPoligon> kPoligonTemplate;

// Grid lines, check boxes, full-row selection.
constexpr uint32_t kListStyle = 0x01 | 0x04 | 0x20;
constexpr int kIdWidth = 70, kNameWidth = 100, kCoordinateWidth = 85, kRadiusWidth = 80;
// Fence classes of the levels one to three and green; a filter n (1-4) keeps class n + 1.
constexpr int kFirstLevelClass = 2, kLastLevelClass = 5;
constexpr int kGeneralFences = 0, kLastFenceLevel = 4;

constexpr const char* kHintText = "提示：经度(-180.0~180),纬度(-90~90)\n正值：东经，北纬\n负值：西经，南纬";
constexpr const char* kRectHintText =
    "提示：经度(-180.0~180),纬度(-90~90)\n正值：东经，北纬\n负值：西经，南纬\n"
    "所有的点共用区域属性，即同为东经或西经，同为北纬或南纬";

std::string CornerTitle(int coordinate, int corner) { return LanguageText(corner) + LanguageText(coordinate); }
}  // namespace

using C = CDlgAreaBase;

plat::DialogTemplate CDlgAreaBase::MakeTemplate(int templateId, const char* hint) {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      templateId, {560, 460},
      {{Static(kFenceLabel, "围栏类型", {10, 40, 90, 60}, 0, style::Hidden), Combo(kFenceCombo, {95, 38, 300, 200}),
        Static(kCount, "", {310, 40, 550, 60}, 0, style::Hidden)},
       {List(kList, {10, 70, 550, 330}, style::CheckBoxes | style::OwnerData)},
       {Check(kSelectAll, "全选", {10, 340, 100, 360}, kTextSelectAll),
        Check(kGpsFix, "GpsFix", {110, 340, 200, 360}, kTextGpsFix)},
       {Static(kHint, hint, {10, 365, 550, 420})},
       {Button(kOk, "确定", {370, 425, 450, 453}, kTextOk, style::Group),
        Button(kCancel, "取消", {460, 425, 540, 453}, kTextCancel)}});
}

CDlgAreaBase::CDlgAreaBase(int templateId, std::vector<int32_t> shapeTypes, int fenceLevel,
                           const std::vector<int>& selected)
    : CDlgPopupBase(templateId),
      shapeTypes_(std::move(shapeTypes)),
      fenceLevel_(fenceLevel),
      gpsFix_(CConfigKestrelINI::ReadIniInt(kSettingGpsFix) != 0) {
  for (int id : selected) checked_[id] = 1;
  Bind(kOk, BN_CLICKED, [this] { OnOK(); });
  Bind(kCancel, BN_CLICKED, [this] { OnCancel(); });
  Bind(kSelectAll, BN_CLICKED, [this] { OnSelectAll(); });
  Bind(kGpsFix, BN_CLICKED, [this] {
    gpsFix_ = IsChecked(kGpsFix);
    RedrawList();
  });
  Bind(kFenceCombo, CBN_SELCHANGE, [this] { Refill(); });
  BindNotify(kList, LVN_ITEMCHANGED, [this](const plat::NMITEM& item) { OnRowChanged(item); });
}

BOOL CDlgAreaBase::OnInitDialog() {
  CDlgPopupBase::OnInitDialog();
  auto* list = Item<plat::ListView>(kList);
  list->SetExtendedStyle(kListStyle);
  int index = 0;
  for (const Column& column : Columns()) list->InsertColumn(index++, column.title, column.width);
  SetChecked(kGpsFix, gpsFix_);
  FillFenceCombo();
  const bool levels = CConfigKestrelINI::ReadIniInt(area::kSwitchOverspeedControl) != 0;
  ShowItem(kFenceLabel, levels);
  ShowItem(kCount, levels);
  Refill();
  return TRUE;
}

void CDlgAreaBase::FillFenceCombo() {
  auto* combo = Item<plat::ComboBox>(kFenceCombo);
  combo->ResetContent();
  const int last = CConfigKestrelINI::ReadIniInt(area::kSwitchOverspeedControl) != 0 ? kLastFenceLevel : area::kAllFences;
  for (int level = area::kAllFences; level <= last; ++level) {
    combo->SetItemData(combo->AddString(area::FenceLevelName(level)), static_cast<uint32_t>(level));
  }
  const int wanted = combo->FindItemData(static_cast<uint32_t>(fenceLevel_));
  combo->SetCurSel(wanted >= 0 ? wanted : 0);
}

bool CDlgAreaBase::Keeps(const area::Marker& marker) const {
  const int filter = fenceLevel_;
  const int fence = marker.FenceClass();
  if (filter == area::kAllFences) return true;
  if (filter == kGeneralFences) return fence < kFirstLevelClass || fence > kLastLevelClass;
  return filter <= kLastFenceLevel && fence == filter + 1;
}

void CDlgAreaBase::Refill() {
  const auto* combo = Item<plat::ComboBox>(kFenceCombo);
  if (combo->GetCurSel() >= 0) fenceLevel_ = static_cast<int32_t>(combo->GetItemData(combo->GetCurSel()));
  shown_.clear();
  int* ids = nullptr;
  int count = 0;
  CVMgrMyMapInfomation::GetAllMyMapMarkerExFormType(&ids, &count, shapeTypes_.data(), static_cast<int>(shapeTypes_.size()));
  for (int i = 0; i < count; ++i) {
    const auto marker = area::Marker::Find(ids[i]);
    if (marker && Keeps(*marker)) shown_.push_back(ids[i]);
  }
  LIBCOMMON_Release(ids);
  SetItemText(kCount, FormatChineseColon(LanguageText(kTextCount), std::to_string(shown_.size())));
  Item<plat::ListView>(kList)->SetItemCountEx(static_cast<int>(shown_.size()),
                                               [this](int row, int column) { return CellText(row, column); });
  RedrawList();
}

std::string CDlgAreaBase::CellText(int row, int column) const {
  if (row < 0 || row >= static_cast<int>(shown_.size())) return {};
  const auto marker = area::Marker::Find(shown_[static_cast<size_t>(row)]);
  if (!marker) return {};
  std::string lng, lat;
  CVMgrMyMapInfomation::GetMapJingWeiDu(&marker->Record(), lng, lat, gpsFix_ ? -1 : marker->MapType());
  return Cell(*marker, column, lng, lat);
}

std::string CDlgAreaBase::IdOrName(const area::Marker& marker, int column) {
  return column == 0 ? std::to_string(marker.Id()) : marker.Name();
}

// The list's check boxes are drawn from the check map.
void CDlgAreaBase::RedrawList() {
  auto* list = Item<plat::ListView>(kList);
  for (size_t row = 0; row < shown_.size(); ++row) {
    auto it = checked_.find(shown_[row]);
    list->SetCheck(static_cast<int>(row), it != checked_.end() && it->second != 0);
  }
  if (!shown_.empty()) list->RedrawItems(0, static_cast<int>(shown_.size()) - 1);
}

// A click on a row toggles it; a check box set directly is taken as it stands.
void CDlgAreaBase::OnRowChanged(const plat::NMITEM& item) {
  if (item.item < 0 || item.item >= static_cast<int>(shown_.size())) return;
  const int id = shown_[static_cast<size_t>(item.item)];
  const bool listed = Item<plat::ListView>(kList)->GetCheck(item.item);
  int32_t& flag = checked_[id];
  flag = listed != (flag != 0) ? listed : !flag;
  RedrawList();
}

void CDlgAreaBase::OnSelectAll() {
  const int32_t on = IsChecked(kSelectAll) ? 1 : 0;
  for (int id : shown_) checked_[id] = on;
  RedrawList();
}

void CDlgAreaBase::OnOK() {
  CConfigKestrelINI::WriteIniInt(kSettingGpsFix, gpsFix_ ? 1 : 0);
  result_.clear();
  for (int id : shown_) {
    auto it = checked_.find(id);
    if (it != checked_.end() && it->second != 0) result_.push_back(id);
  }
  EndDialog(result_.empty() ? IDCANCEL : IDOK);
}

// ---- the circle picker ----------------------------------------------------------------

plat::DialogTemplate CDlgAreaCenter::Layout() { return MakeTemplate(kTemplate, kHintText); }

CDlgAreaCenter::CDlgAreaCenter(int fenceLevel, const std::vector<int>& selected)
    : CDlgAreaBase(kTemplate, {kMarkerCircle}, fenceLevel, selected) {}

BOOL CDlgAreaCenter::OnInitDialog() {
  CDlgAreaBase::OnInitDialog();
  std::string hint;
  for (int text : {kTextHint1, kTextHint2, kTextHint3}) AddStringStatus(hint, LanguageText(text), "\r\n");
  SetItemText(kHint, hint);
  return TRUE;
}

std::vector<CDlgAreaBase::Column> CDlgAreaCenter::Columns() const {
  char radius[256];
  std::snprintf(radius, sizeof radius, "%s(%s)", LanguageText(kTextRadius).c_str(), LanguageText(kTextMetres).c_str());
  return {{LanguageText(kTextId), kIdWidth}, {LanguageText(kTextName), kNameWidth},
          {LanguageText(kTextLat), kCoordinateWidth}, {LanguageText(kTextLng), kCoordinateWidth},
          {radius, kRadiusWidth}};
}

std::string CDlgAreaCenter::Cell(const area::Marker& marker, int column, const std::string& lng,
                                 const std::string& lat) const {
  switch (column) {
    case 2: return lat;
    case 3: return lng;
    case 4: return marker.ShapeType() == kMarkerCircle ? std::to_string(marker.Radius()) : "";
    default: return IdOrName(marker, column);
  }
}

// ---- the rectangle picker ---------------------------------------------------------------

plat::DialogTemplate CDlgAreaRect::Layout() { return MakeTemplate(kTemplate, kRectHintText); }

CDlgAreaRect::CDlgAreaRect(int fenceLevel, const std::vector<int>& selected)
    : CDlgAreaBase(kTemplate, {kMarkerRectangle}, fenceLevel, selected) {}

std::vector<CDlgAreaBase::Column> CDlgAreaRect::Columns() const {
  return {{LanguageText(kTextId), kIdWidth},
          {LanguageText(kTextName), kNameWidth},
          {CornerTitle(kTextLat, kTextFirstCorner), kCoordinateWidth},
          {CornerTitle(kTextLng, kTextFirstCorner), kCoordinateWidth},
          {CornerTitle(kTextLat, kTextSecondCorner), kCoordinateWidth},
          {CornerTitle(kTextLng, kTextSecondCorner), kCoordinateWidth}};
}

std::string CDlgAreaRect::Cell(const area::Marker& marker, int column, const std::string& lng,
                               const std::string& lat) const {
  if (column < 2) return IdOrName(marker, column);
  // Columns 2-5: latitude and longitude of the first corner, then of the second.
  const size_t corner = column < 4 ? 0 : 1;
  return area::ListItem(area::SplitList(column % 2 == 0 ? lat : lng), corner);
}

// ---- the polygon picker -------------------------------------------------------------------

plat::DialogTemplate CDlgAreaPoligon::Layout() { return MakeTemplate(kTemplate, kHintText); }

CDlgAreaPoligon::CDlgAreaPoligon(int fenceLevel, const std::vector<int>& selected)
    : CDlgAreaBase(kTemplate, {kMarkerPolygon, kMarkerOutOfLine}, fenceLevel, selected) {}

std::vector<CDlgAreaBase::Column> CDlgAreaPoligon::Columns() const {
  return {{LanguageText(kTextId), kIdWidth}, {LanguageText(kTextName), kNameWidth},
          {LanguageText(kTextPoints), kCoordinateWidth}, {LanguageText(kTextLat), kCoordinateWidth},
          {LanguageText(kTextLng), kCoordinateWidth}};
}

std::string CDlgAreaPoligon::Cell(const area::Marker& marker, int column, const std::string& lng,
                                  const std::string& lat) const {
  switch (column) {
    case 2: return std::to_string(std::min(area::SplitList(lng).size(), area::SplitList(lat).size()));
    case 3: return lat;
    case 4: return lng;
    default: return IdOrName(marker, column);
  }
}
