// Handling of the alarms the host passes in, in one step: any of sending the
// text as a message, recording a handling, reporting it and clearing the
// alarm. Each alarm is one request of the host's alarm service carrying the
// 512-byte handling record; a message is sent and an alarm cleared once per
// device, a handling recorded and reported once per alarm.
#pragma once

#include <array>
#include <set>
#include <string>

#include "pages/alarms/alarm_handling.h"

class CDlgNewAlarmDeal : public CAlarmHandlingPage {
 public:
  static constexpr int kTemplate = 4102;
  static constexpr int kFunctionType = 103, kFunctionTypeBatch = 104;
  static constexpr int kMaxChars = 256;
  enum Control : int {
    kTextLabel = 4160, kTextHint = 4163, kFlagGroup = 4304,
    kUrgent = 4191, kDisplay = 4448, kTts = 4449, kAdScreen = 4450,
    kWayLabel = 4451, kWayCombo = 4452, kReportLabel = 4453, kReportCombo = 4314,
    kReasonLabel = 4457, kReasonCombo = 4458,
    kSendButton = 4005, kHandleButton = 4003, kReportButton = 4004, kClearButton = 4006,
    kSendCheck = 4189, kHandleCheck = 4455, kReportCheck = 4456, kClearCheck = 5470, kAllCheck = 5471,
    kOneKeyButton = 4002,
  };
  enum Text : int {
    kTextContent = 20410, kTextContentHint = 20411, kTextFlags = 20412, kTextUrgent = 20413, kTextDisplay = 20414,
    kTextTts = 20415, kTextAdScreen = 20416, kTextWay = 20417, kTextReport = 20418, kTextReason = 20419,
    kTextSendOp = 20420, kTextHandleOp = 20421, kTextReportOp = 20422, kTextClearOp = 20423, kTextAll = 20424,
    kTextOneKey = 20425,
    kTextNoOperation = 12965, kTextNoWay = 12967, kTextNoReport = 12968,
  };
  // Operations of one run.
  enum Operation : uint32_t { kOpMessage = 1, kOpHandle = 2, kOpReport = 4, kOpClear = 8 };
  static constexpr int kFalseAlarmWay = 5;
  static constexpr int kRightHandling = 656;  // configuration integer: select-all covers clearing too

  // Offsets of the handling record.
  enum RecordField : size_t {
    kRecMask = 0, kRecReport = 8, kRecFlags = 12, kRecText = 16, kRecTextBytes = 256, kRecWay = 272,
    kRecGuid = 276, kRecGuidBytes = 40, kRecDevIdno = 316, kRecDevIdnoBytes = 32, kRecTime = 348, kRecType = 352,
    kRecMessageId = 356, kRecPlatformCode = 360, kRecCodeBytes = 40, kRecReason = 400, kRecReasonBytes = 40,
  };

  static plat::DialogTemplate Layout();
  CDlgNewAlarmDeal();

  BOOL CheckParam() override { return FALSE; }

  // The default index of the report and reason lists for a directory server address.
  static int DefaultReportIndex(const std::string& dirServer);

 protected:
  void OnInitPage() override;
  const void* RecordFor(const AlarmView& alarm) override;
  AlarmServiceCall::Starter Service() const override;

 private:
  void Run(uint32_t operations);
  void OnOneKey();
  void OnSelectAll();
  void OnWayChanged();
  bool ReasonsShown() const;

  std::array<uint32_t, 7> saved_{};
  RecordWriter record_;
  RecordWriter copy_;
  bool serveDevicesOnce_ = false;
  std::set<std::string> served_;
};
