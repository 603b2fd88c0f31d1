// The rectangle area page: rectangles chosen among the user's markers go to
// the terminals ten to a request, each by its two corners.
#pragma once

#include "pages/areas/area_page.h"

class CDlgSetupEdge : public CAreaPageBase {
 public:
  static constexpr int kTemplate = 4002;
  static constexpr int32_t kCommand = 0x8602;
  static constexpr int kFunctionType = 1;
  static constexpr int kBatchSize = 10;
  static const Shape kShape;

  static plat::DialogTemplate Layout();
  CDlgSetupEdge() : CAreaPageBase(kShape) {}

  Json::Value GetParam() override;

 protected:
  bool RunPicker(int& fenceLevel, std::vector<int>& selected) override;
  void ShowPickedMarker(const area::Marker& marker) override;
  void CheckShape(ParamCheck& check) override;
  uint16_t HemisphereBits(const area::Marker& marker) const override;
};
