// CBaseDlg: targets, queue, pacing timers, request envelope and channels.
#include "command/base_dlg.h"

#include "command/ids.h"
#include "command/plugin_log.h"
#include "host/hostcore.h"
#include "host/hostnet.h"
#include "lang/language.h"
#include "text/json.h"

namespace {
// The controls a user fills in: everything but statics, frames and the send buttons.
bool IsParamInput(const plat::ControlEntry& entry) {
  switch (entry.kind) {
    case plat::ControlKind::Static:
    case plat::ControlKind::GroupBox:
      return false;
    case plat::ControlKind::PushButton:
      return entry.id != ctl::Set && entry.id != ctl::Get && entry.id != ctl::Cancel && entry.id != ctl::BatchGet;
    default:
      return true;
  }
}

// The envelope's keys, kept by the envelope without a copy of their own.
const Json::StaticString kEnvelopeSession("Session");
const Json::StaticString kEnvelopeDevIdno("DevIDNO");
const Json::StaticString kEnvelopeCommand("Command");

// A parameter object as sent: compact JSON, and the empty text for null.
std::string ParamText(const Json::Value& param) {
  std::string text = txt::WriteCompactJson(param);
  if (text == "null") text.clear();
  return text;
}
}  // namespace

CBaseDlg::CBaseDlg(int templateId)
    : CDlgChildBase(templateId), setTextId(txtid::Set), getTextId(txtid::Get), cancelTextId(txtid::Cancel) {}

CBaseDlg::~CBaseDlg() {
  // The page's own OnDestroy must run while the page is still whole.
  DestroyWindow();
}

const DeviceCaps& CBaseDlg::Caps() const { return ownCaps_.ownDevId != 0 ? ownCaps_ : SharedDeviceCaps(); }

BOOL CBaseDlg::OnInitDialog() {
  CDlgChildBase::OnInitDialog();
  OnInitPage();
  RestoreInputs();
  return TRUE;
}

void CBaseDlg::EnableSendControls(BOOL enable) {
  for (int id : {ctl::Set, ctl::Get, ctl::Cancel}) EnableItem(id, enable != FALSE);
  if (GetParent()) GetParent()->SendMessage(msg::SendControlsChanged, 0, 0);
  EnableParamControls(enable);
}

void CBaseDlg::EnableParamControls(BOOL enable) {
  const plat::DialogTemplate* dialog = plat::templates::Find(TemplateId());
  if (!dialog) return;
  for (const plat::ControlEntry& entry : dialog->controls) {
    if (IsParamInput(entry)) EnableItem(entry.id, enable != FALSE);
  }
}

void CBaseDlg::HideSendButtons() {
  for (int id : {ctl::Set, ctl::Get, ctl::Cancel}) ShowItem(id, false);
}

void CBaseDlg::AttachToHost() {
  ApplyClientOptions();
  if (ProtocolUpdatePending) {
    UpdateProtocolControls();
    ProtocolUpdatePending = FALSE;
  }
  if (FunctionType != -1) return;
  SetItemText(ctl::Cancel, LanguageText(cancelTextId));
  SetItemText(ctl::Set, LanguageText(setTextId));
  SetItemText(ctl::Get, LanguageText(getTextId));
}

void HostPage(CBaseDlg& page, CXListCtrl* list, int functionType, PageButtons buttons) {
  page.ResultList = list;
  if (buttons == PageButtons::kOwn) {
    // The page's buttons take their texts only while it has no function type;
    // the type follows, so that its rows name the function.
    page.FunctionType = -1;
    page.AttachToHost();
  }
  page.FunctionType = functionType;
}

void CBaseDlg::StartSend(Mode mode, int32_t commandType) {
  QueryMode = mode == Mode::kGet ? TRUE : FALSE;
  StartSend(commandType);
}

void CBaseDlg::SetBatch(int total, int step) {
  BatchMode = TRUE;
  batchTotal = total;
  batchStep = step > 0 ? step : 1;
  batchPosition = 0;
}

CBaseDlg::BatchRange CBaseDlg::CurrentBatch() const {
  const int left = batchTotal - batchPosition;
  return {batchPosition, left < batchStep ? (left > 0 ? left : 0) : batchStep};
}

void CBaseDlg::AppendText(int editId, const std::string& text) {
  if (auto* edit = Item<plat::Edit>(editId)) edit->AppendText(text);
}

void CBaseDlg::StartSend(int32_t commandType) {
  if (!CheckParam()) return;
  if (!SelectTargets()) return;
  {
    CAutoLock guard(lock);
    if (TargetQueue.empty()) {
      ShowMsgTipEx(LanguageText(txtid::NoTargetDevice), "", 0);
      return;
    }
  }
  SaveInputs();
  EnableSendControls(FALSE);
  CommandType = commandType;
  if (!BatchMode) {
    // One parameter for every device: its text is written once and shared by every request.
    sharedParam = GetParam();
    sharedParamText = ParamText(sharedParam);
  }
  SetTimer(timer::Send, kFirstSendDelayMs);
}

BOOL CBaseDlg::SelectTargets() {
  if (PickerMode) return SelectTargetsWithPicker();
  const DeviceCaps& shared = SharedDeviceCaps();
  if (shared.sharedDevId != 0) {
    AppendDevice(shared.sharedDevId);
  } else {
    CAutoLock guard(lock);
    CollectTargets(TargetQueue);
  }
  return TRUE;
}

void CBaseDlg::AppendDevice(int devId) {
  CDevFunc device = CVehicleBaseMgr::FindDvsDeviceByID(devId);
  if (!device.IsValid()) return;
  CAutoLock guard(lock);
  TargetQueue.emplace_back(device.GetDevIDNOForChar());
}

size_t CBaseDlg::OutstandingCount() {
  CAutoLock guard(lock);
  return RequestTable.size();
}

void CBaseDlg::OnTimer(UINT_PTR id) {
  if (id == timer::Send) {
    SendTimer();
  } else if (id == timer::Done) {
    DoneTimer();
  }
}

void CBaseDlg::SendTimer() {
  KillTimer(timer::Send);
  CAutoLock guard(lock);
  if (RequestTable.size() >= kMaxOutstanding) {
    SetTimer(timer::Send, kSendPeriodMs);
    return;
  }
  if (!TargetQueue.empty()) {
    while (RequestTable.size() < kMaxOutstanding && SendNext()) {
    }
    if (BatchMode) UpdateBatchProgress();
  }
  if (TargetQueue.empty()) {
    SetTimer(timer::Done, kDonePeriodMs);
  } else {
    SetTimer(timer::Send, kSendPeriodMs);
  }
}

void CBaseDlg::DoneTimer() {
  KillTimer(timer::Done);
  bool done = false;
  {
    CAutoLock guard(lock);
    done = TargetQueue.empty() && RequestTable.empty();
    if (!done) SetTimer(timer::Done, kDonePeriodMs);
  }
  if (done) EnableSendControls(TRUE);
}

BOOL CBaseDlg::SendNext() {
  CAutoLock guard(lock);
  if (TargetQueue.empty()) return FALSE;
  const std::string devIdno = TargetQueue.front();
  auto* request = new CommandRequest;
  request->SetDevIdno(devIdno);
  request->owner = this;

  const std::string batchParamText = BatchMode ? ParamText(GetParam()) : std::string();
  const std::string& paramText = BatchMode ? batchParamText : sharedParamText;

  if (BatchMode) {
    request->itemIndex = batchPosition;
    request->itemCount = batchStep;
    batchPosition += batchStep;
  }
  if (!BatchMode || batchPosition >= batchTotal) {
    TargetQueue.pop_front();
    batchPosition = 0;
  }

  char session[kSessionChars + 1] = {};
  NETCLIENT_GetSession(session, kSessionChars);
  Json::Value envelope(Json::objectValue);
  envelope[kEnvelopeSession] = session;
  envelope[kEnvelopeDevIdno] = devIdno;
  envelope[kEnvelopeCommand] = CommandType;
  const std::string envelopeText = txt::WriteCompactJson(envelope);

  PluginLog().WriteStrInfoEx(1, "CBaseDlg::SendInfoToDev Type:0x%04X Param:%s", static_cast<unsigned>(CommandType),
                             paramText.c_str());

  NETCLIENT_MNOpenNormalCmd(&request->handle, request->devIdno, envelopeText.c_str(), paramText.c_str());
  int started = -1;
  if (request->handle != 0) {
    NETCLIENT_MNSetNormalCmdCB(request->handle, request, &CBaseDlg::FUNSetupMsgCB);
    started = NETCLIENT_MNStartNormalCmd(request->handle);
  }
  // A reply that comes back at once waits for the lock held here, so the
  // request is in the table before its callback looks for it.
  if (request->handle != 0 && started == 0) {
    RequestTable.insert(request);
    keepAnswers_ = QueryMode != FALSE || ReadsSetReplies != FALSE;
    return TRUE;
  }
  // No callback was scheduled for a channel that did not start; release it.
  CloseChannel(request);
  delete request;
  return FALSE;
}

void CBaseDlg::CloseChannel(CommandRequest* request) {
  if (request->handle == 0) return;
  NETCLIENT_MNStopNormalCmd(request->handle);
  NETCLIENT_MNCloseNormalCmd(request->handle);
  request->handle = 0;
}

void CBaseDlg::OnDestroy() {
  KillTimer(timer::Send);
  KillTimer(timer::Done);
  StopAll();
  CDlgChildBase::OnDestroy();
}

void CBaseDlg::StopAll() {
  std::set<CommandRequest*> open;
  {
    CAutoLock guard(lock);
    ResultList = nullptr;
    open.swap(RequestTable);
    answers_.clear();
  }
  // Stopping waits for a callback that is running now; that callback may be
  // waiting for the page lock, so the lock is released first. Having left the
  // table, the requests are ignored by any callback that still gets the lock.
  for (CommandRequest* request : open) {
    CloseChannel(request);
    delete request;
  }
}
