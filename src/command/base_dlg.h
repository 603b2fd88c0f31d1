// CBaseDlg: the common base of every command page.
//
// A page is its template, its fields and the operations it overrides; the
// base chooses the targets (current device, or the host's device picker),
// keeps the queue of devices still to serve, builds one JSON request per
// device, opens one command channel per request (at most kMaxOutstanding at
// a time, paced by two timers), takes the replies back from the network
// thread, parses each reply once and writes one result row per answered item.
//
// The page's side is the protected part below: StartSend, the reply hooks,
// the send settings and the helpers. The hosting windows attach a page with
// HostPage. The queue, the request table and the lock are the base's own.
//
// Threads: everything runs on the UI thread except the reply callback, which
// only takes the page lock, stores the answer and posts msg::Reply. The lock
// guards the target queue, the batch position and the request table; it is
// never held while a virtual operation runs, nor while a channel is stopped.
#pragma once

#include <deque>
#include <map>
#include <set>
#include <span>
#include <string>

#include <json/value.h>

#include "command/auto_lock.h"
#include "command/command_request.h"
#include "command/device_caps.h"
#include "command/dialog_base.h"

class CXListCtrl;

// How a hosting window shows a page's send buttons.
enum class PageButtons {
  kOwn,     // the page shows its own set, get and cancel buttons (vehicle function window)
  kWindow,  // the window's buttons stand in for them (function page window)
};

class CBaseDlg : public CDlgChildBase {
 public:
  static constexpr size_t kMaxOutstanding = 100;
  static constexpr UINT kFirstSendDelayMs = 1000;
  static constexpr UINT kSendPeriodMs = 500;
  static constexpr UINT kDonePeriodMs = 500;
  static constexpr int kSessionChars = 39;

  // Whether a send sets values on the terminal or gets them back.
  enum class Mode { kSet, kGet };

  explicit CBaseDlg(int templateId);
  ~CBaseDlg() override;

  // ---- the virtual operations, in slot order -------------------------------
  // Called on reply for each item of a set, before AddResultRow.
  virtual void PrepareBatch(CommandRequest& request) { (void)request; }
  // Called on reply for each item of a get, before AddResultRow: hands the
  // reply object to OnAnswer when the terminal answered, else calls OnNoAnswer.
  virtual void ParseReply(CommandRequest& request);
  virtual void EnableSendControls(BOOL enable);
  // The page's input controls; by default every input control of its template.
  virtual void EnableParamControls(BOOL enable);
  // Validates the page's input; shows a tip and returns FALSE on the first failure.
  virtual BOOL CheckParam() { return TRUE; }
  // The command's parameter object; null (the default) sends no parameters.
  virtual Json::Value GetParam() { return Json::Value(); }
  virtual void AddResultRow(CommandRequest& request);
  virtual std::string GetParamDescription() { return {}; }
  virtual void UpdateBatchProgress() {}
  // Fills the targets by the page's own means when there is neither a picker nor a current device.
  virtual void CollectTargets(std::deque<std::string>& targets) { (void)targets; }
  virtual void ApplyClientOptions() {}
  virtual void UpdateProtocolControls() {}
  // Append device attribute codes to the picker's first / second code list.
  virtual void AddPickerColumnsFirst(int32_t* codes, int& count) { (void)codes, (void)count; }
  virtual void AddPickerColumnsSecond(int32_t* codes, int& count) { (void)codes, (void)count; }
  virtual void HideSendButtons();
  virtual void ShowContextData() {}

  // ---- what the hosting windows use --------------------------------------------
  // Gives a created page its result list (null: none) and function type.
  friend void HostPage(CBaseDlg& page, CXListCtrl* list, int functionType, PageButtons buttons);
  // Runs each time the hosting window shows the page.
  void AttachToHost();
  int32_t GetFunctionType() const { return FunctionType; }
  CXListCtrl* GetResultList() const { return ResultList; }

  int32_t ButtonTextMode = 1;
  BOOL PickerMode = FALSE;
  BOOL HideResultList = FALSE;
  BOOL UsesNoParamPanel = FALSE;
  BOOL ProtocolUpdatePending = TRUE;
  uintptr_t contextPointer = 0;
  uint32_t contextCount = 0;

  // ---- the base's own operations -------------------------------------------------
  // The command channel's reply callback (network thread).
  static void CALLBACK FUNSetupMsgCB(int32_t status, const char* reply, void* user);
  // "Error", then "result", read as integers; 0 for null or non-JSON text. A
  // value beyond 32 bits is an error, never success.
  static int32_t ParseResult(const char* reply);

  // The flags of the target device: the page's own record when loaded, else the shared one.
  const DeviceCaps& Caps() const;
  // Loads the page's own record for a device.
  void LoadOwnCaps(int devId) { ownCaps_.LoadOwn(devId); }
  size_t OutstandingCount();
  uint32_t GetDeviceKindMask() const { return DeviceKindMask; }
  int32_t GetCommandType() const { return CommandType; }
  BOOL IsQueryMode() const { return QueryMode; }

 protected:
  // ---- the page's side -------------------------------------------------------------
  // Called by a page's button handler once its fields are read: sets QueryMode and sends.
  void StartSend(Mode mode, int32_t commandType);
  // Sends with QueryMode as it stands.
  void StartSend(int32_t commandType);

  // The page's own initialisation: lists, defaults. The template's language
  // texts are shown before it and the remembered inputs restored after it.
  virtual void OnInitPage() {}
  // A get's reply for one item, when the terminal answered: a JSON object
  // whose "Error" and "result" are absent or 0. Parsed once per request.
  virtual void OnAnswer(CommandRequest& request, const Json::Value& reply) { (void)request, (void)reply; }
  // A get's reply for one item that is not such an object, or reports an error.
  virtual void OnNoAnswer(CommandRequest& request) { (void)request; }
  // The reply of the item being handled, parsed once: inside ParseReply, and
  // inside PrepareBatch when the page reads set replies (ReadsSetReplies),
  // whatever its "Error" and "result"; null when it was not JSON.
  const Json::Value* CurrentReply() const { return currentAnswer_; }

  // Items of a batched send: each request carries `step` of `total` items.
  struct BatchRange {
    int first = 0;
    int count = 0;
  };
  void SetBatch(int total, int step);
  // The items the request being built carries (for GetParam in BatchMode).
  BatchRange CurrentBatch() const;

  // The command of the request being built: a page whose requests carry
  // different commands (BatchMode) sets it in GetParam.
  void SetCommandType(int32_t commandType) { CommandType = commandType; }
  // Stores the remembered controls' values; StartSend does it for every send,
  // pages that send by other means call it themselves.
  void SaveInputs();

  // Adds text to the end of a multi-line edit, in place.
  void AppendText(int editId, const std::string& text);

  BOOL QueryMode = FALSE;
  BOOL BatchMode = FALSE;
  int32_t batchPosition = 0;
  int32_t batchStep = 1;
  int32_t batchTotal = 0;
  uint32_t DeviceKindMask = 0;
  // A set whose replies the page reads (a question's answer): the base keeps
  // them for PrepareBatch as it does for every get.
  BOOL ReadsSetReplies = FALSE;
  // Controls remembered between runs (SavedControl descriptors).
  std::span<const uint32_t> SavedControls;
  int setTextId;
  int getTextId;
  int cancelTextId;

  BOOL OnInitDialog() final;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  void OnTimer(UINT_PTR id) override;
  void OnDestroy() override;

 private:
  friend class BaseDlgAccess;  // tests of the base
  void RestoreInputs();
  BOOL SelectTargets();
  BOOL SelectTargetsWithPicker();
  void AppendDevice(int devId);
  BOOL SendNext();
  void SendTimer();
  void DoneTimer();
  void OnReply(CommandRequest* request);
  void CloseChannel(CommandRequest* request);
  void StopAll();

  int32_t FunctionType = -1;
  CXListCtrl* ResultList = nullptr;
  int32_t CommandType = -1;
  std::deque<std::string> TargetQueue;
  std::set<CommandRequest*> RequestTable;
  Json::Value sharedParam;
  std::string sharedParamText;  // sharedParam as every request carries it
  CMutexLock lock;
  // Reply objects parsed on the network thread, by request, until the page
  // takes them; kept only while a get is out (set under the lock as it sends).
  std::map<const CommandRequest*, Json::Value> answers_;
  bool keepAnswers_ = false;
  // The reply object of the request being handled (null when it did not parse).
  const Json::Value* currentAnswer_ = nullptr;
  DeviceCaps ownCaps_;
};

void HostPage(CBaseDlg& page, CXListCtrl* list, int functionType, PageButtons buttons);
