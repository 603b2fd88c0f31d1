// The two handling result reports of the one alarm the host passes in: the
// report with a message id and a result (kind 3), and the second form whose
// result is made of two lists (kind 4). Both close on success.
#pragma once

#include "pages/alarms/platform_ack.h"

class CHandleReportPage : public CPlatformAckPage {
 public:
  static constexpr int kTemplate = 4042;
  enum Control : int { kMeasureLabel = 4325, kMeasureCombo = 4324 };
  // The report page of one template both forms share.
  static plat::DialogTemplate Layout();

 protected:
  explicit CHandleReportPage(Kind kind);
  void OnAnswered(const void* answer) override;
  // The number of the page's own device (the host's message 9 names it).
  void PutOwnDevice(RecordWriter& record) const;

 private:
  void OnSend();
};

class CDlgAlarmHandleReport : public CHandleReportPage {
 public:
  static constexpr int kFunctionType = 35;
  static constexpr int64_t kMaxMessageId = 0xFFFFFFFF;
  CDlgAlarmHandleReport();
  void EnableParamControls(BOOL enable) override;
  void ShowContextData() override;

 protected:
  void OnInitPage() override;
  void FillRecord(const AlarmView& alarm, RecordWriter& record) override;
};

class CDlgAlarmHandleReportSb : public CHandleReportPage {
 public:
  static constexpr int kFunctionType = 50;
  enum Text : int {
    kTextConfirmed = 15036, kTextFalseAlarm = 15037, kTextMeasureOther = 15038, kTextMeasure = 15039,
    kTextGuid = 15040, kTextPhoto = 15041, kTextVoice = 15042, kTextOther = 15043,
  };
  CDlgAlarmHandleReportSb();
  void EnableParamControls(BOOL enable) override;
  void ShowContextData() override;

 protected:
  void OnInitPage() override;
  void FillRecord(const AlarmView& alarm, RecordWriter& record) override;
};
