// The list of areas and routes a terminal holds (a query the platform
// relays), with check boxes to delete the chosen ones, a hundred ids of one
// kind to a request, or every area of every kind.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "command/base_dlg.h"

class CDlgQueryAreaInfo : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4057;
  static constexpr int32_t kCommand = 0x86FE;
  static constexpr int kFunctionType = 47;
  static constexpr uint32_t kDeviceKinds = 4;
  static constexpr int kIdsPerRequest = 100;
  static constexpr int kKinds = 4;
  // Delete commands by kind (circle, rectangle, polygon, route).
  static constexpr std::array<int32_t, kKinds> kDeleteCommands = {0x8601, 0x8603, 0x8605, 0x8607};
  enum Control : int { kDeleteAll = 4019, kList = 4007 };
  enum Column : int { kColNumber = 0, kColId = 1, kColType = 2 };
  enum Text : int { kTextDeleteAll = 12804 };
  // The tip box's OK and cancel buttons.
  static constexpr UINT kOkCancel = 1;

  static plat::DialogTemplate Layout();
  CDlgQueryAreaInfo();

  void EnableParamControls(BOOL enable) override;
  Json::Value GetParam() override;
  void PrepareBatch(CommandRequest& request) override;
  std::string GetParamDescription() override;

 protected:
  void OnInitPage() override;
  void OnAnswer(CommandRequest& request, const Json::Value& reply) override;
  // An answer that is no list lists nothing.
  void OnNoAnswer(CommandRequest& request) override { OnAnswer(request, Json::Value()); }

 private:
  // The requests of one kind's rows: the kind, and the rows a request carries.
  struct Slice {
    int kind = -1;  // 0-3
    std::vector<int> rows;
  };
  Slice SliceAt(int position) const;
  void OnRowChanged(const plat::NMITEM& item);
  void OnQuery();
  void OnDelete();
  void DeleteChosen();
  void DeleteAll();

  // The check state of each row as the page last saw it: a click toggles it.
  std::vector<bool> checks_;
  std::array<std::vector<int>, kKinds> rowsByKind_;
  std::vector<int32_t> deleteAll_;
  std::string queryDescription_, deleteDescription_;
};
