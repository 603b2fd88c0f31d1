// The polygon area page: its picker, its checks and its vertices.
#include "pages/areas/setup_poligon.h"

#include <algorithm>

#include "command/page_registry.h"
#include "pages/areas/area_keys.h"
#include "pages/areas/marker_picker.h"

namespace {
using C = CDlgSetupPoligon;
const RegisterPage<C> kPage{C::kFunctionType};
constexpr int kOnePolygon = 1;
}  // namespace

const CAreaPageBase::Shape CDlgSetupPoligon::kShape{kTemplate, kCommand, false, false, kOnePolygon};

plat::DialogTemplate CDlgSetupPoligon::Layout() { return MakeTemplate(kShape, "请选择区域"); }

bool CDlgSetupPoligon::RunPicker(int& fenceLevel, std::vector<int>& selected) {
  CDlgAreaPoligon picker(fenceLevel, selected);
  if (picker.DoModal(this) != IDOK) return false;
  fenceLevel = picker.FenceLevel(), selected = picker.Result();
  return true;
}

void CDlgSetupPoligon::CheckShape(ParamCheck& check) {
  check.Filled(idText_, kTextAreaId, kIdEdit).That(!Selected().empty(), kTextNoArea);
}

// The area id edit is checked but not sent: a polygon goes by its marker's id.
Json::Value CDlgSetupPoligon::GetParam() {
  const BatchRange batch = TakeBatch();
  Json::Value param = CommonKeys();
  const auto marker = batch.count > 0 ? area::Marker::Find(Selected()[static_cast<size_t>(batch.first)]) : std::nullopt;
  if (!marker) {
    param[areakey::kPointCount] = 0;
    if (Is2019() && Alone()) param[areakey::kName] = nameText_;
    return param;
  }
  const std::vector<std::string> lat = area::SplitList(marker->LatText()), lng = area::SplitList(marker->LngText());
  const size_t count = std::min(lat.size(), lng.size());
  Json::Value points(Json::arrayValue);
  for (size_t i = 0; i < count; ++i) {
    Json::Value point(Json::objectValue);
    point[areakey::kLat] = area::ParseCoordinate(lat[i]).micro;
    point[areakey::kLng] = area::ParseCoordinate(lng[i]).micro;
    points.append(point);
  }
  param[areakey::kAttr] = AttrOf(*marker);
  param[areakey::kId] = marker->Id();
  param[areakey::kPointCount] = static_cast<int>(count);
  param[areakey::kPoints] = points;
  if (Is2019()) param[areakey::kName] = AreaName(marker);
  return param;
}
