// The rectangle area page: its picker, its checks, its corners and the south
// and west bits of a rectangle.
#include "pages/areas/setup_edge.h"

#include "command/page_registry.h"
#include "pages/areas/area_keys.h"
#include "pages/areas/marker_picker.h"
#include "text/numbers.h"

namespace {
using C = CDlgSetupEdge;
const RegisterPage<C> kPage{C::kFunctionType};
constexpr size_t kFirstCorner = 0, kSecondCorner = 1;

// Both corners of a rectangle's coordinate list.
struct Corners {
  area::Coordinate first, second;
};
Corners CornersOf(const std::string& list) {
  const std::vector<std::string> items = area::SplitList(list);
  return {area::ParseCoordinate(area::ListItem(items, kFirstCorner)),
          area::ParseCoordinate(area::ListItem(items, kSecondCorner))};
}
}  // namespace

const CAreaPageBase::Shape CDlgSetupEdge::kShape{kTemplate, kCommand, true, false, kBatchSize};

plat::DialogTemplate CDlgSetupEdge::Layout() { return MakeTemplate(kShape, "请选择区域"); }

bool CDlgSetupEdge::RunPicker(int& fenceLevel, std::vector<int>& selected) {
  CDlgAreaRect picker(fenceLevel, selected);
  if (picker.DoModal(this) != IDOK) return false;
  fenceLevel = picker.FenceLevel(), selected = picker.Result();
  return true;
}

void CDlgSetupEdge::ShowPickedMarker(const area::Marker& marker) {
  if (marker.ShapeType() == kMarkerRectangle) CAreaPageBase::ShowPickedMarker(marker);
}

void CDlgSetupEdge::CheckShape(ParamCheck& check) {
  check.Filled(idText_, kTextAreaId, kIdEdit).That(!Selected().empty(), kTextNoArea);
}

// A rectangle chosen alone is south (west) only when both corners are;
// among several, the first corner decides.
uint16_t CDlgSetupEdge::HemisphereBits(const area::Marker& marker) const {
  if (!Alone()) return CAreaPageBase::HemisphereBits(marker);
  const Corners lat = CornersOf(marker.LatText()), lng = CornersOf(marker.LngText());
  uint16_t bits = 0;
  if (lat.first.negative && lat.second.negative) bits |= area::kBitSouth;
  if (lng.first.negative && lng.second.negative) bits |= area::kBitWest;
  return bits;
}

Json::Value CDlgSetupEdge::GetParam() {
  const BatchRange batch = TakeBatch();
  Json::Value items(Json::arrayValue);
  for (int i = batch.first; i < batch.first + batch.count; ++i) {
    const auto marker = area::Marker::Find(Selected()[static_cast<size_t>(i)]);
    if (!marker) continue;
    const Corners lat = CornersOf(marker->LatText()), lng = CornersOf(marker->LngText());
    Json::Value item = CommonKeys();
    item[areakey::kAttr] = AttrOf(*marker);
    item[areakey::kId] = Alone() ? txt::WToI(idText_) : marker->Id();
    item[areakey::kLeftLat] = lat.first.micro;
    item[areakey::kLeftLng] = lng.first.micro;
    item[areakey::kRightLat] = lat.second.micro;
    item[areakey::kRightLng] = lng.second.micro;
    if (Is2019()) item[areakey::kName] = AreaName(marker);
    items.append(item);
  }
  return ListParam(batch.count, items);
}
