// The polygon area page: each polygon chosen among the user's markers is one
// request, its vertices a list of points.
#pragma once

#include "pages/areas/area_page.h"

class CDlgSetupPoligon : public CAreaPageBase {
 public:
  static constexpr int kTemplate = 4011;
  static constexpr int32_t kCommand = 0x8604;
  static constexpr int kFunctionType = 2;
  static const Shape kShape;

  static plat::DialogTemplate Layout();
  CDlgSetupPoligon() : CAreaPageBase(kShape) {}

  Json::Value GetParam() override;

 protected:
  bool RunPicker(int& fenceLevel, std::vector<int>& selected) override;
  void CheckShape(ParamCheck& check) override;
};
