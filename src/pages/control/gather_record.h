// The tachograph record page: reads one command word of the vehicle's driving
// recorder (or every word of its edition, one request each), in the recorder
// standard's 2003 or 2012 edition, with a time range and a block count for the
// record words of the 2012 edition. Each answer is decoded into text, appended
// to the page's text box and kept as the row's description.
#pragma once

#include <cstdint>
#include <string>

#include "command/base_dlg.h"
#include "pages/control/recorder_decode.h"

class CDlgGatherRecord : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4025;
  static constexpr int32_t kCommand = 0x8700;
  static constexpr int kFunctionType = 20;
  static constexpr int kEditionConfig = 707;  // 1: the 2012 edition; anything else 2003
  static constexpr int kBlockMin = 0, kBlockMax = 65635, kBlockDefault = 1;
  enum Control : int {
    kInfoFrame = 4209, kInfoText = 4210,
    kEditionLabel = 4193, kEditionList = 4213, kWordLabel = 4192, kWordList = 4211,
    kRangeLabel = 4393, kBeginDate = 4293, kBeginTime = 4294, kRangeDash = 4394, kEndDate = 3020, kEndTime = 4013,
    kBlockLabel = 4382, kBlockEdit = 4396, kBlockSpin = 4397, kBlockHint = 4383,
  };
  enum Text : int {
    kTextInfo = 13311, kTextWord = 13022, kTextEdition = 20100, kTextTimeOrder = 12411,
    kTextRange = 20590, kTextBlocks = 20591, kTextBlockHint = 20592, kTextVehicle = 1,  // the host's text
  };

  static plat::DialogTemplate Layout();
  CDlgGatherRecord();

  void EnableParamControls(BOOL enable) override;
  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override { return description_; }

 protected:
  void OnInitPage() override;
  void OnAnswer(CommandRequest& request, const Json::Value& reply) override;
  void OnNoAnswer(CommandRequest& request) override;

 private:
  recorder::Edition StoredEdition() const;
  void FillWordList();
  void ShowRangeControls();
  void OnEditionChange();
  void OnBlockChange();
  void OnGet();
  int SelectedWord() const;
  // The word a request carries: the selected one, or the edition's word at the item's place.
  int WordOf(int itemIndex) const;
  bool HasRange(int word) const { return edition_ == recorder::Edition::k2012 && recorder::IsRecordWord(word); }
  void Show(const CommandRequest& request, const std::string& text);

  recorder::Edition edition_ = recorder::Edition::k2003;  // the edition of the send under way
  int word_ = recorder::kAllWords;
  SYSTEMTIME begin_{}, end_{};
  int blocks_ = kBlockDefault;
  std::string description_;
};
