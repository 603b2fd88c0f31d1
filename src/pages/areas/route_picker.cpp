// The route chooser and the route point editor.
#include "pages/areas/route_picker.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <cmath>
#include <cstdio>
#include <string>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"

namespace {
const RegisterTemplate<CDlgThreadInfo> kInfoTemplate;
const RegisterTemplate<CDlgThreadSelect> kSelectTemplate;

constexpr uint32_t kListStyle = 0x01 | 0x20;                 // grid lines, full-row selection
constexpr uint32_t kCheckListStyle = kListStyle | 0x04;      // and check boxes
constexpr int kColumnWidth = 80;
constexpr double kMicroPerDegree = 1000000.0;
constexpr double kMaxDegrees = 180.0;

// A field of a route point: its column title, its range, and how it is read and written.
struct Field {
  int title;
  int64_t max;  // 0: a coordinate
  int64_t (*get)(const area::RoutePoint&);
  void (*set)(area::RoutePoint&, int64_t);
};
#define FIELD(title, max, member)                                                   \
  Field {                                                                           \
    title, max, [](const area::RoutePoint& p) { return static_cast<int64_t>(p.member); }, \
        [](area::RoutePoint& p, int64_t v) { p.member = static_cast<decltype(p.member)>(v); } \
  }
const Field kPointFields[CDlgThreadInfo::kFields] = {
    FIELD(12200, 4294967295LL, pointId), FIELD(12201, 255, segmentId),    FIELD(12101, 0, lat),
    FIELD(12102, 0, lng),                FIELD(12202, 255, width),        FIELD(12203, 255, attr),
    FIELD(12204, 65535, shortThreshold), FIELD(12305, 65535, longThreshold), FIELD(12306, 300, maxSpeed),
    FIELD(12307, 255, overspeed),        FIELD(12311, 65535, nightSpeed),
};
#undef FIELD

std::string CellText(const Field& field, const area::RoutePoint& point) {
  const int64_t value = field.get(point);
  if (field.max != 0) return std::to_string(value);
  char text[32];
  std::snprintf(text, sizeof text, "%.6f", static_cast<double>(value) / kMicroPerDegree);
  return text;
}

// The value typed into a field's edit, or nothing when it is out of range.
std::optional<int64_t> ReadField(const Field& field, const std::string& text) {
  const char* first = text.data();
  const char* last = first + text.size();
  if (field.max == 0) {
    double degrees = 0;
    const auto [end, error] = std::from_chars(first, last, degrees);
    if (error != std::errc() || end != last || !(degrees >= 0 && degrees <= kMaxDegrees)) return std::nullopt;
    return static_cast<int64_t>(degrees * kMicroPerDegree);
  }
  int64_t value = 0;
  const auto [end, error] = std::from_chars(first, last, value);
  if (error != std::errc() || end != last || value < 0 || value > field.max) return std::nullopt;
  return value;
}

constexpr const char* kNoteText =
    "说明：路段ID（0~255），宽度（0~255米），行驶时长阈值（0~65535秒），行驶不足阈值（0~65535秒）\n"
    "，最高速度（0~300公里/小时），持续时间（0~255秒），经纬度（0.0~180.0）";
}  // namespace

// ---- the point editor ---------------------------------------------------------------------

plat::DialogTemplate CDlgThreadInfo::Layout() {
  using namespace row;
  namespace style = plat::style;
  plat::DialogTemplate dialog = PageTemplate(
      kTemplate, {900, 520},
      {{row::List(kList, {10, 40, 890, 300})},
       {Static(kNote, kNoteText, {10, 305, 890, 345})},
       {Button(kApply, "修改", {700, 440, 790, 468}, 0, style::Group)},
       {Button(kOk, "确定", {700, 480, 790, 508}, kTextOk, style::Group),
        Button(kCancel, "取消", {800, 480, 890, 508}, kTextCancel)}});
  for (int i = 0; i < kFields; ++i) {
    const int x = 10 + (i % 6) * 145, y = 355 + (i / 6) * 45;
    plat::ControlEntry label = Static(kFirstLabel + i, "", {x, y, x + 140, y + 18}, kPointFields[i].title);
    plat::ControlEntry edit = Edit(kFirstEdit + i, {x, y + 18, x + 140, y + 40}, {.limit = 12});
    label.layoutGroup = edit.layoutGroup = 5;
    dialog.controls.push_back(label);
    dialog.controls.push_back(edit);
  }
  return dialog;
}

CDlgThreadInfo::CDlgThreadInfo(std::vector<area::RoutePoint> points) : CDlgPopupBase(kTemplate), points_(std::move(points)) {
  Bind(kOk, BN_CLICKED, [this] { OnOK(); });
  Bind(kCancel, BN_CLICKED, [this] { OnCancel(); });
  Bind(kApply, BN_CLICKED, [this] { Apply(); });
  BindNotify(kList, LVN_ITEMCHANGED, [this](const plat::NMITEM& item) { FillEdits(item.item); });
}

BOOL CDlgThreadInfo::OnInitDialog() {
  CDlgPopupBase::OnInitDialog();
  auto* list = Item<plat::ListView>(kList);
  list->SetExtendedStyle(kListStyle);
  for (int i = 0; i < kFields; ++i) list->InsertColumn(i, LanguageText(kPointFields[i].title), kColumnWidth);
  for (size_t row = 0; row < points_.size(); ++row) {
    list->InsertItem(static_cast<int>(row), "");
    ShowRow(static_cast<int>(row));
  }
  FillEdits(points_.empty() ? -1 : 0);
  return TRUE;
}

void CDlgThreadInfo::ShowRow(int row) {
  auto* list = Item<plat::ListView>(kList);
  for (int i = 0; i < kFields; ++i) list->SetItemText(row, i, CellText(kPointFields[i], points_[static_cast<size_t>(row)]));
}

void CDlgThreadInfo::FillEdits(int row) {
  if (row < 0 || row >= static_cast<int>(points_.size())) return;
  selected_ = row;
  for (int i = 0; i < kFields; ++i) SetItemText(kFirstEdit + i, CellText(kPointFields[i], points_[static_cast<size_t>(row)]));
}

// The edits go into the chosen point when every one is in its range; the first that is not gets the tip.
void CDlgThreadInfo::Apply() {
  if (selected_ < 0) return;
  area::RoutePoint point = points_[static_cast<size_t>(selected_)];
  for (int i = 0; i < kFields; ++i) {
    const Field& field = kPointFields[i];
    const auto value = ReadField(field, GetItemText(kFirstEdit + i));
    if (!value) {
      if (field.max == 0) {
        // Coordinates: the shared range prefix with the degrees a coordinate may take.
        ShowMsgTipEx(LanguageText(kTextCoordinateRange) + kCoordinateRange, "", 0);
      } else {
        ShowLangTip(kTextValueRange);
      }
      if (plat::Window* edit = GetDlgItem(kFirstEdit + i)) edit->SetFocus();
      return;
    }
    field.set(point, *value);
  }
  points_[static_cast<size_t>(selected_)] = point;
  ShowRow(selected_);
}

// ---- the route chooser -------------------------------------------------------------------

plat::DialogTemplate CDlgThreadSelect::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {520, 420},
                      {{row::List(kList, {10, 40, 510, 300}, style::CheckBoxes)},
                       {Static(kHintEdit, "双击对应项可查看并编辑参数", {10, 305, 510, 325}),
                        Static(kHintKept, "仅保存选中项的修改参数", {10, 330, 510, 350})},
                       {Check(kGpsFix, "GpsFix", {10, 385, 100, 405}, kTextGpsFix),
                        Button(kEdit, "编辑", {200, 380, 290, 408}, 0, style::Group),
                        Button(kOk, "确定", {320, 380, 410, 408}, kTextOk),
                        Button(kCancel, "取消", {420, 380, 510, 408}, kTextCancel)}});
}

CDlgThreadSelect::CDlgThreadSelect(int lineId, std::vector<area::RoutePoint> points)
    : CDlgPopupBase(kTemplate), chosen_(lineId), gpsFix_(CConfigKestrelINI::ReadIniInt(kSettingGpsFix) != 0) {
  if (lineId != 0) edited_[lineId] = std::move(points);
  Bind(kOk, BN_CLICKED, [this] { OnOK(); });
  Bind(kCancel, BN_CLICKED, [this] { OnCancel(); });
  Bind(kGpsFix, BN_CLICKED, [this] { gpsFix_ = IsChecked(kGpsFix); });
  Bind(kEdit, BN_CLICKED, [this] { EditRow(Item<plat::ListView>(kList)->GetFirstSelected()); });
  BindNotify(kList, LVN_ITEMCHANGED, [this](const plat::NMITEM& item) { Choose(item.item); });
  BindNotify(kList, LVN_DBLCLK, [this](const plat::NMITEM& item) { EditRow(item.item); });
}

BOOL CDlgThreadSelect::OnInitDialog() {
  CDlgPopupBase::OnInitDialog();
  auto* list = Item<plat::ListView>(kList);
  list->SetExtendedStyle(kCheckListStyle);
  const int titles[] = {kTextRouteId, kTextName, kTextPoints};
  for (int i = 0; i < 3; ++i) list->InsertColumn(i, LanguageText(titles[i]), i == 1 ? 2 * kColumnWidth : kColumnWidth);
  int* ids = nullptr;
  int count = 0;
  CVMgrMyMapInfomation::GetAllMyMapMarkerEx(&ids, &count, kMapLineKind);
  for (int i = 0; i < count; ++i) {
    _tagGPSMapLineEx line;
    if (!CVMgrMyMapInfomation::FindMapLine(ids[i], &line)) continue;
    const int row = static_cast<int>(lines_.size());
    lines_.push_back(ids[i]);
    list->InsertItem(row, std::to_string(ids[i]));
    list->SetItemText(row, 1, CVMgrMyMapInfomation::GetMarkerName(ids[i]));
    list->SetItemText(row, 2, std::to_string(line.points.size()));
    list->SetCheck(row, ids[i] == chosen_);
  }
  LIBCOMMON_Release(ids);
  SetChecked(kGpsFix, gpsFix_);
  return TRUE;
}

// One route at a time: the row clicked is checked, the others not.
void CDlgThreadSelect::Choose(int row) {
  if (row < 0 || row >= static_cast<int>(lines_.size())) return;
  chosen_ = lines_[static_cast<size_t>(row)];
  auto* list = Item<plat::ListView>(kList);
  for (int r = 0; r < static_cast<int>(lines_.size()); ++r) list->SetCheck(r, r == row);
}

std::vector<area::RoutePoint> CDlgThreadSelect::PointsOf(int lineId) const {
  if (auto it = edited_.find(lineId); it != edited_.end()) return it->second;
  _tagGPSMapLineEx line;
  if (!CVMgrMyMapInfomation::FindMapLine(lineId, &line)) return {};
  return area::RouteFromLine(line, gpsFix_);
}

void CDlgThreadSelect::EditRow(int row) {
  if (row < 0 || row >= static_cast<int>(lines_.size())) return;
  const int lineId = lines_[static_cast<size_t>(row)];
  CDlgThreadInfo editor(PointsOf(lineId));
  if (editor.DoModal(this) == IDOK) edited_[lineId] = editor.Points();
}

void CDlgThreadSelect::OnOK() {
  CConfigKestrelINI::WriteIniInt(kSettingGpsFix, gpsFix_ ? 1 : 0);
  if (std::find(lines_.begin(), lines_.end(), chosen_) == lines_.end()) return EndDialog(IDCANCEL);
  result_ = PointsOf(chosen_);
  EndDialog(IDOK);
}
