// The route popups: CDlgThreadSelect lists the user's map lines and lets the
// user choose one; CDlgThreadInfo shows a line's route points as a table and
// lets the user edit a point's fields, each checked against its range.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "command/dialog_base.h"
#include "pages/areas/route_point.h"

class CDlgThreadInfo : public CDlgPopupBase {
 public:
  static constexpr int kTemplate = 4007;
  enum Control : int {
    kList = 4007, kOk = 1601, kCancel = 1602, kNote = 4402, kApply = 4441,
    kFirstEdit = 4430,   // one edit per field, in column order
    kFirstLabel = 4450,  // and its label
  };
  enum Text : int { kTextOk = 11002, kTextCancel = 11003, kTextValueRange = 12701, kTextCoordinateRange = 12702 };
  static constexpr const char* kCoordinateRange = "-180~180";
  static constexpr int kFields = 11;

  static plat::DialogTemplate Layout();
  explicit CDlgThreadInfo(std::vector<area::RoutePoint> points);
  const std::vector<area::RoutePoint>& Points() const { return points_; }

 protected:
  BOOL OnInitDialog() override;

 private:
  void ShowRow(int row);
  void FillEdits(int row);
  void Apply();

  std::vector<area::RoutePoint> points_;
  int selected_ = -1;
};

class CDlgThreadSelect : public CDlgPopupBase {
 public:
  static constexpr int kTemplate = 4006;
  enum Control : int {
    kList = 4007, kOk = 1601, kCancel = 1602, kGpsFix = 4385, kEdit = 4386, kHintEdit = 4403, kHintKept = 4404,
  };
  enum Text : int { kTextOk = 11002, kTextCancel = 11003, kTextGpsFix = 11021, kTextRouteId = 12000,
                    kTextName = 12621, kTextPoints = 12410 };
  // Host setting shared with the marker pickers: coordinates corrected to GPS.
  static constexpr int kSettingGpsFix = 212;

  static plat::DialogTemplate Layout();
  // The route chosen so far (0: none) and its points.
  CDlgThreadSelect(int lineId, std::vector<area::RoutePoint> points);

  int LineId() const { return chosen_; }
  const std::vector<area::RoutePoint>& Points() const { return result_; }

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override;

 private:
  void Choose(int row);
  void EditRow(int row);
  std::vector<area::RoutePoint> PointsOf(int lineId) const;

  std::vector<int> lines_;
  int chosen_;
  bool gpsFix_;
  std::map<int, std::vector<area::RoutePoint>> edited_;
  std::vector<area::RoutePoint> result_;
};
