// What the two alarm handling pages share: the walk through the alarms the
// host handed in, one request of the alarm service at a time (each next alarm
// starts when the previous answer is back on the page's thread), the entry of
// the host's handling log, the messages that tell the host about each alarm,
// and the preset texts offered for the handling text.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "command/base_dlg.h"
#include "command/ids.h"
#include "pages/alarms/alarm_call.h"
#include "pages/alarms/alarm_record.h"

class CAlarmHandleInfo;

class CAlarmHandlingPage : public CBaseDlg {
 public:
  static constexpr UINT kAnswerMessage = msg::AlarmAnswer;  // the answer of one alarm
  static constexpr int kTextEdit = 4161;        // the message or handling text
  static constexpr int kPresetButton = 4001;
  static constexpr UINT kFirstPreset = 32773, kManagePresets = 32793;
  static constexpr UINT kAllDone = 2;  // lParam of the last message 13318 of a run
  enum Text : int { kTextNoText = 12944, kTextBar = 12943, kTextManagePresets = 20427 };
  static constexpr const char* kNoAlarmsTip = "ERR1";

  ~CAlarmHandlingPage() override;
  // The index of the alarm the run is at.
  uint32_t AlarmIndex() const { return index_.load(); }
  bool Running() const { return running_; }

 protected:
  explicit CAlarmHandlingPage(int templateId);

  // Starts a run over the context's alarms; with logging set, the handling is
  // written to the host's log and the host hears of each alarm (message 13318).
  void StartRun(bool logging, const std::string& text, int way);
  // The record for one alarm, or null when this alarm needs no request.
  virtual const void* RecordFor(const AlarmView& alarm) = 0;
  virtual AlarmServiceCall::Starter Service() const = 0;
  AlarmContext Alarms() const { return AlarmContext(contextPointer, contextCount); }

  // The text checks both pages make: "|" is the host's separator, and the text must be there.
  bool CheckHandlingText(const std::string& text, bool barFirst);
  void ShowPresetMenu();

  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  void OnDestroy() override;

 private:
  void HandleCurrent();
  void OnServiceAnswer(WPARAM wParam);  // the alarm service answered the item being handled
  void Finish();
  void ChoosePreset(int index);

  std::atomic<uint32_t> index_{0};
  AlarmServiceCall call_;
  CAlarmHandleInfo* log_ = nullptr;
  bool logging_ = false;
  bool running_ = false;
};
