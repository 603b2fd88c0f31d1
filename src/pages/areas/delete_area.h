// Deleting circle, rectangle or polygon areas, or routes, from the chosen
// terminals: every one of the kind, or the ids typed (commas, full-width
// commas too), sorted, a hundred to a request.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "command/base_dlg.h"

class CDlgDeleteArea : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4004;
  static constexpr int kTypeCircles = 4, kTypeRectangles = 5, kTypePolygons = 6, kTypeRoutes = 7;
  static constexpr int32_t kDeleteCircles = 0x8601, kDeleteRectangles = 0x8603, kDeletePolygons = 0x8605,
                           kDeleteRoutes = 0x8607;
  static constexpr int kIdsPerRequest = 100;
  enum Control : int { kDeleteAll = 4019, kIdLabel = 4024, kIdEdit = 4021, kHint = 4402 };
  enum Text : int {
    kTextAreaId = 12001, kTextRouteId = 12000, kTextDeleteAllAreas = 12804, kTextDeleteAllRoutes = 12805,
    kTextHint = 12813,
  };

  static plat::DialogTemplate Layout();
  explicit CDlgDeleteArea(int functionType);

  void EnableParamControls(BOOL enable) override;
  BOOL CheckParam() override;
  Json::Value GetParam() override;
  void PrepareBatch(CommandRequest& request) override;
  std::string GetParamDescription() override;

  int32_t Command() const { return command_; }

 protected:
  void OnInitPage() override;

 private:
  void OnSend();
  bool Routes() const { return command_ == kDeleteRoutes; }
  // The ids of batch b.
  std::vector<int32_t> BatchIds(int batch) const;

  int32_t command_ = kDeleteCircles;
  bool deleteAll_ = false;
  std::vector<int32_t> ids_;
  std::string describedIds_;
};

// Ids typed by the user: full-width commas read as commas, empty pieces
// skipped, a piece that is no number read as 0, sorted ascending.
std::vector<int32_t> ParseAreaIds(const std::string& text);
