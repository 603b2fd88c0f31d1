// The circle area page: circles chosen among the user's markers go to the
// terminals ten to a request, each with its centre and radius; one circle
// chosen alone takes its id, radius and name from the edits.
#pragma once

#include "pages/areas/area_page.h"

class CDlgSetupCircle : public CAreaPageBase {
 public:
  static constexpr int kTemplate = 3000;
  static constexpr int32_t kCommand = 0x8600;
  static constexpr int kFunctionType = 0;
  static constexpr int kBatchSize = 10;
  static const Shape kShape;

  static plat::DialogTemplate Layout();
  CDlgSetupCircle() : CAreaPageBase(kShape) {}

  Json::Value GetParam() override;

 protected:
  bool RunPicker(int& fenceLevel, std::vector<int>& selected) override;
  void ShowPickedMarker(const area::Marker& marker) override;
  void CheckShape(ParamCheck& check) override;
};
