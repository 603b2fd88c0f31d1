// The delete page of areas and routes.
#include "pages/areas/delete_area.h"

#include <algorithm>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/areas/area_keys.h"
#include "text/numbers.h"

namespace {
using C = CDlgDeleteArea;
const RegisterPage<C> kPage{{C::kTypeCircles, C::kTypeRectangles, C::kTypePolygons, C::kTypeRoutes}};

constexpr uint32_t kDeviceKinds = 4;
constexpr const char* kFullWidthComma = "\xEF\xBC\x8C";  // U+FF0C
constexpr const char* kIdSeparator = ",";

int32_t CommandOf(int functionType, int32_t otherwise) {
  switch (functionType) {
    case C::kTypeCircles: return C::kDeleteCircles;
    case C::kTypeRectangles: return C::kDeleteRectangles;
    case C::kTypePolygons: return C::kDeletePolygons;
    case C::kTypeRoutes: return C::kDeleteRoutes;
    default: return otherwise;
  }
}
}  // namespace

std::vector<int32_t> ParseAreaIds(const std::string& text) {
  std::string commas = text;
  for (size_t at = commas.find(kFullWidthComma); at != std::string::npos; at = commas.find(kFullWidthComma, at)) {
    commas.replace(at, 3, ",");
  }
  std::vector<int32_t> ids;
  size_t start = 0;
  while (start <= commas.size()) {
    const size_t comma = std::min(commas.find(',', start), commas.size());
    const std::string piece = commas.substr(start, comma - start);
    if (!piece.empty()) ids.push_back(txt::WToI(piece));
    start = comma + 1;
  }
  std::sort(ids.begin(), ids.end());
  return ids;
}

plat::DialogTemplate CDlgDeleteArea::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {600, 300},
                      {{Check(kDeleteAll, "删除所有区域", {10, 10, 300, 30}, kTextDeleteAllAreas)},
                       {Static(kIdLabel, "区域ID", {10, 40, 100, 60}, kTextAreaId),
                        Edit(kIdEdit, {10, 65, 590, 220}, {.styles = style::Multiline | style::WantReturn})},
                       {Static(kHint, "提示:多个区域ID使用逗号(,)分隔", {10, 225, 590, 245}, kTextHint)},
                       {SetButton({400, 260, 490, 288}), CancelButton({500, 260, 590, 288})}});
}

CDlgDeleteArea::CDlgDeleteArea(int functionType) : CBaseDlg(kTemplate), command_(CommandOf(functionType, kDeleteCircles)) {
  DeviceKindMask = kDeviceKinds;
  Bind(kDeleteAll, BN_CLICKED, [this] { EnableItem(kIdEdit, !IsChecked(kDeleteAll)); });
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CDlgDeleteArea::OnInitPage() {
  if (!Routes()) return;
  SetItemText(kDeleteAll, LanguageText(kTextDeleteAllRoutes));
  SetItemText(kIdLabel, LanguageText(kTextRouteId));
}

void CDlgDeleteArea::EnableParamControls(BOOL enable) {
  EnableItem(kDeleteAll, enable != FALSE);
  EnableItem(kIdEdit, enable && !IsChecked(kDeleteAll));
}

void CDlgDeleteArea::OnSend() {
  ids_.clear();
  deleteAll_ = IsChecked(kDeleteAll);
  if (!deleteAll_) ids_ = ParseAreaIds(GetItemText(kIdEdit));
  const int n = static_cast<int>(ids_.size());
  if (n > kIdsPerRequest) {
    SetBatch((n + kIdsPerRequest - 1) / kIdsPerRequest, 1);
  } else {
    BatchMode = FALSE;
  }
  StartSend(Mode::kSet, command_);
}

BOOL CDlgDeleteArea::CheckParam() {
  return ParamCheck(*this).That(deleteAll_ || !ids_.empty(),
                                LanguageText(Routes() ? kTextRouteId : kTextAreaId) +
                                    LanguageText(ParamCheck::kTextMustBeFilled), kIdEdit).Ok();
}

std::vector<int32_t> CDlgDeleteArea::BatchIds(int batch) const {
  const size_t first = std::min(ids_.size(), static_cast<size_t>(batch) * kIdsPerRequest);
  const size_t last = std::min(ids_.size(), first + kIdsPerRequest);
  return {ids_.begin() + static_cast<ptrdiff_t>(first), ids_.begin() + static_cast<ptrdiff_t>(last)};
}

Json::Value CDlgDeleteArea::GetParam() {
  Json::Value param(Json::objectValue);
  if (deleteAll_) {
    param[areakey::kCount] = 0;
    return param;
  }
  const std::vector<int32_t> ids = BatchIds(BatchMode ? batchPosition : 0);
  Json::Value items(Json::arrayValue);
  for (int32_t id : ids) {
    Json::Value item(Json::objectValue);
    item[areakey::kId] = id;
    items.append(item);
  }
  param[areakey::kCount] = static_cast<int>(ids.size());
  param[areakey::kItem] = items;
  return param;
}

void CDlgDeleteArea::PrepareBatch(CommandRequest& request) {
  describedIds_.clear();
  for (int32_t id : BatchIds(request.itemIndex)) AddStringStatus(describedIds_, std::to_string(id), kIdSeparator);
}

std::string CDlgDeleteArea::GetParamDescription() {
  if (deleteAll_) return LanguageText(Routes() ? kTextDeleteAllRoutes : kTextDeleteAllAreas);
  return Description().Field(Routes() ? kTextRouteId : kTextAreaId, describedIds_);
}
