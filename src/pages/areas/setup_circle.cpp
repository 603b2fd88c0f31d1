// The circle area page: its picker, its checks and its items.
#include "pages/areas/setup_circle.h"

#include "command/page_registry.h"
#include "pages/areas/area_keys.h"
#include "pages/areas/marker_picker.h"
#include "text/numbers.h"

namespace {
using C = CDlgSetupCircle;
const RegisterPage<C> kPage{C::kFunctionType};
}  // namespace

const CAreaPageBase::Shape CDlgSetupCircle::kShape{kTemplate, kCommand, true, true, kBatchSize};

plat::DialogTemplate CDlgSetupCircle::Layout() { return MakeTemplate(kShape, "选择区域中心"); }

bool CDlgSetupCircle::RunPicker(int& fenceLevel, std::vector<int>& selected) {
  CDlgAreaCenter picker(fenceLevel, selected);
  if (picker.DoModal(this) != IDOK) return false;
  fenceLevel = picker.FenceLevel(), selected = picker.Result();
  return true;
}

void CDlgSetupCircle::ShowPickedMarker(const area::Marker& marker) {
  if (marker.ShapeType() != kMarkerCircle) return;
  CAreaPageBase::ShowPickedMarker(marker);
  SetItemText(kRadiusEdit, std::to_string(marker.Radius()));
}

void CDlgSetupCircle::CheckShape(ParamCheck& check) {
  check.That(!Selected().empty(), kTextNoArea);
  if (Alone()) check.Filled(idText_, kTextAreaId, kIdEdit).Filled(radiusText_, kTextRadius, kRadiusEdit);
}

Json::Value CDlgSetupCircle::GetParam() {
  const BatchRange batch = TakeBatch();
  Json::Value items(Json::arrayValue);
  for (int i = batch.first; i < batch.first + batch.count; ++i) {
    const auto marker = area::Marker::Find(Selected()[static_cast<size_t>(i)]);
    if (!marker) continue;
    Json::Value item = CommonKeys();
    item[areakey::kAttr] = AttrOf(*marker);
    item[areakey::kId] = Alone() ? txt::WToI(idText_) : marker->Id();
    item[areakey::kLat] = area::ParseCoordinate(marker->LatText()).micro;
    item[areakey::kLng] = area::ParseCoordinate(marker->LngText()).micro;
    item[areakey::kRadius] = Alone() ? Json::Value(txt::WToI(radiusText_)) : Json::Value(marker->Radius());
    if (Is2019()) item[areakey::kName] = AreaName(marker);
    items.append(item);
  }
  return ListParam(batch.count, items);
}
