// What the pages that answer the superior platform share: the 600-byte
// acknowledgement record, the request of the host's alarm service that
// carries it (its answer posted back as message 13313), and the handling
// result list. The alarms come from the page's context.
#pragma once

#include <atomic>
#include <cstdint>

#include "command/base_dlg.h"
#include "command/ids.h"
#include "pages/alarms/alarm_call.h"
#include "pages/alarms/alarm_record.h"

class CPlatformAckPage : public CBaseDlg {
 public:
  static constexpr UINT kAnswerMessage = msg::PlatformAnswer;
  enum Control : int {
    kMessageIdLabel = 4164, kMessageId = 4319, kResultLabel = 4170, kResultCombo = 4323,
    kContentLabel = 4169, kContent = 4161,
  };
  enum Text : int { kTextMessageId = 15000, kTextResult = 15001, kTextContent = 13008 };
  // Acknowledgement kinds.
  enum Kind : uint32_t { kSupervision = 2, kHandleReport = 3, kHandleReportSb = 4, kInspection = 4 };
  enum RecordField : size_t {
    kRecDevIdno = 0, kRecDevIdnoBytes = 36, kRecNumber = 36, kRecType = 38, kRecMessageId = 40,
    kRecPlatformCode = 436, kRecCodeBytes = 40, kRecGuid = 520, kRecGuidBytes = 36, kRecKind = 556,
    kRecResult = 560, kRecTime = 588,
  };
  static constexpr const char* kNoAlarmTip = "ERR";

 protected:
  // answerMessage: the message the answer is posted as.
  CPlatformAckPage(int templateId, Kind kind, UINT answerMessage = kAnswerMessage);

  AlarmContext Alarms() const { return AlarmContext(contextPointer, contextCount); }
  // Fills the record for an alarm (the kind, the identifier, and what the page
  // adds in FillRecord) and hands it to the alarm service.
  void Acknowledge(const AlarmView& alarm);
  // Hands a record the page filled itself to the alarm service.
  void Acknowledge(const RecordWriter& record);
  virtual void FillRecord(const AlarmView& alarm, RecordWriter& record) = 0;
  // An answer back on the page's thread (null when none came); the base releases it afterwards.
  virtual void OnAnswered(const void* answer) = 0;
  // Fills a result list with the host's handling result texts 0 to 3 and selects the first.
  void FillResults(int combo);
  int SelectedData(int combo) const;
  // A page that answers once: the error text of a failed answer, or success
  // and the page asks to be closed; the controls come back either way.
  void EndWithAnswer(const void* answer);
  // The error text of a missing or failed answer.
  static std::string FailureText(const void* answer);
  std::atomic<uint32_t>& Index() { return index_; }

  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  void OnDestroy() override;

 private:
  const Kind kind_;
  const UINT answerMessage_;
  std::atomic<uint32_t> index_{0};
  AlarmServiceCall call_;
  RecordWriter record_;
};
