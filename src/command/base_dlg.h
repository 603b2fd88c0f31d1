// CBaseDlg: the common base of every command page.
//
// A page adds its controls and overrides the virtual operations; the base
// chooses the targets (current device, or the host's device picker), keeps
// the queue of devices still to serve, builds one JSON request per device,
// opens one command channel per request (at most kMaxOutstanding at a time,
// paced by two timers), takes the replies back from the network thread and
// writes one result row per answered item.
//
// Threads: everything runs on the UI thread except the reply callback, which
// only takes the page lock, stores the answer and posts msg::Reply. The lock
// guards TargetQueue, the batch position and RequestTable; it is never held
// while a virtual operation runs, nor while a channel is stopped.
#pragma once

#include <deque>
#include <set>
#include <string>

#include <json/value.h>

#include "command/auto_lock.h"
#include "command/command_request.h"
#include "command/device_caps.h"
#include "command/dialog_base.h"

class CXListCtrl;

class CBaseDlg : public CDlgChildBase {
 public:
  static constexpr size_t kMaxOutstanding = 100;
  static constexpr UINT kFirstSendDelayMs = 1000;
  static constexpr UINT kSendPeriodMs = 500;
  static constexpr UINT kDonePeriodMs = 500;
  static constexpr int kSessionChars = 39;

  explicit CBaseDlg(int templateId);
  ~CBaseDlg() override;

  // ---- the virtual operations, in slot order -------------------------------
  // Called on reply for each item of a set, before AddResultRow.
  virtual void PrepareBatch(CommandRequest& request) { (void)request; }
  // Called on reply for each item of a get, before AddResultRow.
  virtual void ParseReply(CommandRequest& request) { (void)request; }
  virtual void EnableSendControls(BOOL enable);
  virtual void EnableParamControls(BOOL enable) = 0;
  // Validates the page's input; shows a tip and returns FALSE on the first failure.
  virtual BOOL CheckParam() { return TRUE; }
  // The command's parameter object (null for none).
  virtual Json::Value& GetParam(Json::Value& param) = 0;
  virtual void AddResultRow(CommandRequest& request);
  virtual std::string& GetParamDescription(std::string& description) { return description; }
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

  // ---- operations of the base ------------------------------------------------
  // Called by a page's button handler after it has set QueryMode and its fields.
  void StartSend(int32_t commandType);
  // Called by the hosting window after creating the page and setting ResultList.
  void AttachToHost();
  void RestoreInputs();
  void SaveInputs();

  // The command channel's reply callback (network thread).
  static void CALLBACK FUNSetupMsgCB(int32_t status, const char* reply, void* user);
  // "Error", then "result", read as integers; 0 for null or non-JSON text.
  static int32_t ParseResult(const char* reply);

  // The flags of the target device: the page's own record when loaded, else the shared one.
  const DeviceCaps& Caps() const;
  // Loads the page's own record for a device.
  void LoadOwnCaps(int devId) { ownCaps_.LoadOwn(devId); }
  size_t OutstandingCount();

  // ---- fields ----------------------------------------------------------------
  int32_t FunctionType = -1;
  int32_t ButtonTextMode = 1;
  const uint32_t* SavedControls = nullptr;
  int32_t SavedControlCount = 0;
  int setTextId;
  int getTextId;
  int cancelTextId;
  BOOL PickerMode = FALSE;
  CXListCtrl* ResultList = nullptr;
  int32_t CommandType = -1;
  BOOL QueryMode = FALSE;
  BOOL BatchMode = FALSE;
  int32_t batchPosition = 0;
  int32_t batchStep = 1;
  int32_t batchTotal = 0;
  BOOL HideResultList = FALSE;
  uint32_t DeviceKindMask = 0;
  BOOL UsesNoParamPanel = FALSE;
  uintptr_t contextPointer = 0;
  uint32_t contextCount = 0;
  BOOL ProtocolUpdatePending = TRUE;

 protected:
  BOOL OnInitDialog() final;
  // The page's own initialisation: captions, lists, defaults. Remembered
  // inputs are restored after it.
  virtual void OnInitPage() {}
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  void OnTimer(UINT_PTR id) override;
  void OnDestroy() override;

  std::deque<std::string> TargetQueue;
  std::set<CommandRequest*> RequestTable;
  Json::Value sharedParam;
  CMutexLock lock;

 private:
  BOOL SelectTargets();
  BOOL SelectTargetsWithPicker();
  void AppendDevice(int devId);
  BOOL SendNext();
  void SendTimer();
  void DoneTimer();
  void OnReply(CommandRequest* request);
  void CloseChannel(CommandRequest* request);
  void StopAll();

  DeviceCaps ownCaps_;
};

// A page that sends no parameters and has no input controls of its own.
class CNoParamDlg : public CBaseDlg {
 public:
  using CBaseDlg::CBaseDlg;
  void EnableParamControls(BOOL) override {}
  Json::Value& GetParam(Json::Value& param) override {
    param = Json::Value();
    return param;
  }
};
