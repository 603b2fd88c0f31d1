#include "pages/alarms/alarm_handling.h"

#include <vector>

#include "command/ids.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/messaging/deal_text.h"
#include "platform/clock.h"
#include "platform/menu.h"

namespace {
constexpr const char* kEscapedLineBreak = "\\r\\n";
constexpr const char* kLineBreak = "\r\n";
}  // namespace

// The host shows these pages without a result list under them.
CAlarmHandlingPage::CAlarmHandlingPage(int templateId) : CBaseDlg(templateId), call_(*this, kAnswerMessage, &index_) {
  HideResultList = TRUE;
}

CAlarmHandlingPage::~CAlarmHandlingPage() {
  call_.Stop();
  if (log_) CAlarmHandleInfoMgr::ReleaseObject(log_);
}

bool CAlarmHandlingPage::CheckHandlingText(const std::string& text, bool barFirst) {
  const bool hasBar = text.find('|') != std::string::npos;
  int tip = 0;
  if (barFirst) tip = hasBar ? kTextBar : (text.empty() ? kTextNoText : 0);
  else tip = text.empty() ? kTextNoText : (hasBar ? kTextBar : 0);
  if (tip == 0) return true;
  ShowMsgTipEx(LanguageText(tip), "", 0);
  return false;
}

void CAlarmHandlingPage::StartRun(bool logging, const std::string& text, int way) {
  index_ = 0;
  logging_ = logging;
  if (logging_) {
    if (log_) CAlarmHandleInfoMgr::ReleaseObject(log_);
    log_ = CAlarmHandleInfoMgr::CreateObject();
    if (log_) {
      log_->SetHandleText(text);
      log_->SetHandleWay(way);
      log_->SetHandleTime(plat::GetLocalTime());
    }
  }
  running_ = true;
  EnableSendControls(FALSE);
  SaveInputs();
  HandleCurrent();
}

void CAlarmHandlingPage::HandleCurrent() {
  const AlarmContext alarms = Alarms();
  if (alarms.Empty()) {
    ShowMsgTipEx(kNoAlarmsTip, "", 0);
    Finish();
    return;
  }
  const uint32_t index = index_.load();
  if (index >= alarms.Count()) return;
  const AlarmView alarm = alarms.At(index);
  if (logging_ && GetParent()) GetParent()->SendMessage(msg::AlarmHandled, reinterpret_cast<WPARAM>(alarm.Record()), 0);
  const void* record = RecordFor(alarm);
  if (!record || !call_.Start(Service(), record)) {
    // Nothing to ask for this alarm (or the service refused): go on with the next.
    ++index_;
    PostMessage(kAnswerMessage, 0, 0);
  }
}

LRESULT CAlarmHandlingPage::WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) {
  if (msg == kAnswerMessage) {
    OnServiceAnswer(wParam);
    return 0;
  }
  return CBaseDlg::WindowProc(msg, wParam, lParam);
}

void CAlarmHandlingPage::OnServiceAnswer(WPARAM wParam) {
  void* answer = call_.Take(wParam);
  if (!running_) {
    if (answer) NETCLIENT_MCReleaseMsg(answer);
    return;
  }
  const AlarmContext alarms = Alarms();
  const uint32_t index = index_.load();
  if (answer && logging_ && GetParent() && index > 0 && index <= alarms.Count()) {
    GetParent()->SendMessage(msg::AlarmHandled, reinterpret_cast<WPARAM>(alarms.At(index - 1).Record()),
                             reinterpret_cast<LPARAM>(answer));
  }
  if (index < alarms.Count()) {
    call_.ReleaseHandle();
    HandleCurrent();
  } else {
    ShowMsgTipEx(LanguageText(txtid::SetSucceeded), "", 0);
    if (logging_ && GetParent()) {
      GetParent()->SendMessage(msg::HandlingLogged, reinterpret_cast<WPARAM>(log_), 0);
      GetParent()->PostMessage(msg::AlarmHandled, 0, kAllDone);
    }
    Finish();
  }
  if (answer) NETCLIENT_MCReleaseMsg(answer);
}

void CAlarmHandlingPage::Finish() {
  call_.ReleaseHandle();
  if (log_) CAlarmHandleInfoMgr::ReleaseObject(log_);
  log_ = nullptr;
  running_ = false;
  EnableSendControls(TRUE);
}

void CAlarmHandlingPage::OnDestroy() {
  call_.Stop();
  CBaseDlg::OnDestroy();
}

void CAlarmHandlingPage::ShowPresetMenu() {
  std::vector<plat::menu::Entry> entries;
  for (int i = 0; i < presettext::kSlots; ++i) {
    const std::string text = presettext::Read(i);
    if (!text.empty()) entries.push_back({kFirstPreset + static_cast<UINT>(i), text, true});
  }
  entries.push_back({0, "", false});  // separator
  entries.push_back({kManagePresets, LanguageText(kTextManagePresets), true});
  const UINT chosen = plat::menu::Track(*this, entries);
  if (chosen == kManagePresets) {
    CDlgSetDealText manager;
    manager.DoModal(this);
  } else if (chosen >= kFirstPreset && chosen < kFirstPreset + presettext::kSlots) {
    ChoosePreset(static_cast<int>(chosen - kFirstPreset));
  }
}

void CAlarmHandlingPage::ChoosePreset(int index) {
  std::string text = presettext::Read(index);
  for (size_t at = text.find(kEscapedLineBreak); at != std::string::npos; at = text.find(kEscapedLineBreak, at + 2)) {
    text.replace(at, 4, kLineBreak);
  }
  SetItemText(kTextEdit, text);
}
