// The IC card blacklist of taxi terminals: the card numbers typed, separated
// by commas, sent 75 to a request; or an empty list that clears the terminal's.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "command/base_dlg.h"

class CDlgTaxiIcBlacklist : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4113;
  static constexpr int32_t kCommand = 0x8106;
  static constexpr int kFunctionType = 105;
  static constexpr int kCardsPerRequest = 75;
  enum Control : int { kClearAll = 4019, kCardLabel = 4024, kCards = 4470, kHint = 4402 };
  enum Text : int { kTextClearAll = 12814, kTextCards = 12815, kTextHint = 12816 };

  static plat::DialogTemplate Layout();
  CDlgTaxiIcBlacklist();

  void PrepareBatch(CommandRequest& request) override;
  void EnableParamControls(BOOL enable) override;
  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 private:
  void OnSend();
  // The cards of one batch (batch 0 outside batching).
  std::vector<std::string> Batch(int batch) const;

  bool clearAll_ = false;
  std::vector<std::string> cards_;
  std::string described_;
};
