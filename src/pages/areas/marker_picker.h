// The map-marker pickers: a modal popup that lists the user's markers of one
// shape, filters them by fence class, lets the user check any number of them
// and gives back the checked ids. CDlgAreaBase does the work; the three
// pickers fix the shape, the columns and the hint.
//
//   CDlgAreaCenter picker(fenceLevel, selected);
//   if (picker.DoModal(this) == IDOK) selected = picker.Result(), fenceLevel = picker.FenceLevel();
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "command/dialog_base.h"
#include "pages/areas/area_marker.h"

class CDlgAreaBase : public CDlgPopupBase {
 public:
  enum Control : int {
    kList = 4007, kOk = 1601, kCancel = 1602, kSelectAll = 4377, kFenceCombo = 4378, kFenceLabel = 3040,
    kCount = 4382, kGpsFix = 4384, kHint = 4027,
  };
  enum Text : int {
    kTextOk = 11002, kTextCancel = 11003, kTextGpsFix = 11021, kTextSelectAll = 11025,
    kTextFirstCorner = 11005, kTextSecondCorner = 11006, kTextId = 12001, kTextLat = 12101, kTextLng = 12102,
    kTextPoints = 12410, kTextRadius = 12510, kTextMetres = 12511, kTextName = 12621, kTextCount = 12656,
  };
  // Host setting: show coordinates corrected to GPS.
  static constexpr int kSettingGpsFix = 212;

  // The caller's fence level filter and its selected ids (they start checked).
  CDlgAreaBase(int templateId, std::vector<int32_t> shapeTypes, int fenceLevel, const std::vector<int>& selected);

  int FenceLevel() const { return fenceLevel_; }
  // The checked markers shown when OK was pressed, in list order.
  const std::vector<int>& Result() const { return result_; }

 protected:
  struct Column {
    std::string title;
    int width;
  };
  // The template every picker shares; the hint differs.
  static plat::DialogTemplate MakeTemplate(int templateId, const char* hint);
  virtual std::vector<Column> Columns() const = 0;
  // The cell of a shown marker, given its longitude and latitude texts as displayed.
  virtual std::string Cell(const area::Marker& marker, int column, const std::string& lng,
                           const std::string& lat) const = 0;
  // Cells every picker begins with: id and name.
  static std::string IdOrName(const area::Marker& marker, int column);

  BOOL OnInitDialog() override;
  void OnOK() override;

 private:
  void FillFenceCombo();
  void Refill();
  std::string CellText(int row, int column) const;
  void OnRowChanged(const plat::NMITEM& item);
  void OnSelectAll();
  void RedrawList();
  bool Keeps(const area::Marker& marker) const;

  std::vector<int32_t> shapeTypes_;
  int fenceLevel_;
  bool gpsFix_;
  std::vector<int> shown_;
  std::map<int, int32_t> checked_;
  std::vector<int> result_;
};

class CDlgAreaCenter : public CDlgAreaBase {
 public:
  static constexpr int kTemplate = 4005;
  enum Text : int { kTextHint1 = 12807, kTextHint2 = 12808, kTextHint3 = 12809 };
  static plat::DialogTemplate Layout();
  CDlgAreaCenter(int fenceLevel, const std::vector<int>& selected);

 protected:
  BOOL OnInitDialog() override;
  std::vector<Column> Columns() const override;
  std::string Cell(const area::Marker& marker, int column, const std::string& lng, const std::string& lat) const override;
};

class CDlgAreaRect : public CDlgAreaBase {
 public:
  static constexpr int kTemplate = 4008;
  static plat::DialogTemplate Layout();
  CDlgAreaRect(int fenceLevel, const std::vector<int>& selected);

 protected:
  std::vector<Column> Columns() const override;
  std::string Cell(const area::Marker& marker, int column, const std::string& lng, const std::string& lat) const override;
};

class CDlgAreaPoligon : public CDlgAreaBase {
 public:
  static constexpr int kTemplate = 4009;
  static plat::DialogTemplate Layout();
  CDlgAreaPoligon(int fenceLevel, const std::vector<int>& selected);

 protected:
  std::vector<Column> Columns() const override;
  std::string Cell(const area::Marker& marker, int column, const std::string& lng, const std::string& lat) const override;
};
