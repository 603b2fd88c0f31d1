// The stored media search: asks each device for the media it stored on a
// channel, of a type and event, within a time range, and lists the answered
// items (id, channel, type, event, time, position) in the page's own list,
// which can be exported. The last reply is also kept as a table text for the
// result row's description.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "pages/media/media_filter.h"

class CDlgMediaSearch : public CMediaFilterPage {
 public:
  static constexpr int kTemplate = 4035;
  static constexpr int32_t kCommand = 0x8802;
  static constexpr int kFunctionType = 30;
  static constexpr UINT kCmdExport = 32771;
  enum Control : int {
    kChannelLabel = 4291, kChannelEdit = 4290, kChannelNote = 4292, kTypeLabel = 4295, kTypeCombo = 4271,
    kEventLabel = 4296, kEventCombo = 4272, kStartLabel = 4297, kStartDate = 4293, kStartTime = 4294,
    kEndLabel = 4298, kEndDate = 3020, kEndTime = 4013, kList = 4299,
  };
  enum Text : int {
    kTextNumber = 11010, kTextMediaId = 14000, kTextTime = 13431, kTextPosition = 13486,
    kTextTitle = 13454, kTextResult = 13449, kTextExport = 11028,
  };
  // The list's columns, in order.
  enum Column : int { kColNumber, kColId, kColChannel, kColType, kColEvent, kColTime, kColPosition, kColumns };

  static plat::DialogTemplate Layout();
  CDlgMediaSearch();

  BOOL CheckParam() override;
  Json::Value GetParam() override { return FilterParam(); }
  std::string GetParamDescription() override;

 protected:
  void OnInitPage() override;
  void OnAnswer(CommandRequest& request, const Json::Value& reply) override;
  void OnNoAnswer(CommandRequest& request) override;

 private:
  using Row = std::array<std::string, kColumns>;
  void FillList(const std::vector<Row>& rows);
  void OnListRightClick();

  // The last reply as text: a line break, the column titles, then a line per item.
  std::string table_;
};
