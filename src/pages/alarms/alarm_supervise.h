// The answer to the superior platform's alarm supervision: every alarm the
// host passes in is acknowledged in turn with the chosen handling result, and
// only the last answer's outcome is shown.
#pragma once

#include "pages/alarms/platform_ack.h"

class CDlgAlarmSupervise : public CPlatformAckPage {
 public:
  static constexpr int kTemplate = 4069;
  static constexpr int kFunctionType = 34;

  static plat::DialogTemplate Layout();
  CDlgAlarmSupervise();

  void EnableParamControls(BOOL enable) override { EnableItem(kResultCombo, enable != FALSE); }
  void ShowContextData() override;

 protected:
  void OnInitPage() override { FillResults(kResultCombo); }
  void FillRecord(const AlarmView& alarm, RecordWriter& record) override;
  void OnAnswered(const void* answer) override;

 private:
  void OnSend();
  void AnswerCurrent();
};
