#include "pages/alarms/platform_ack.h"

#include "host/hostcore.h"
#include "lang/language.h"

namespace {
constexpr int kHandleResults = 4;
}  // namespace

CPlatformAckPage::CPlatformAckPage(int templateId, Kind kind, UINT answerMessage)
    : CBaseDlg(templateId), kind_(kind), answerMessage_(answerMessage),
      call_(*this, answerMessage, kind == kSupervision ? &index_ : nullptr),
      record_(kAck809RecordSize) {
  HideResultList = TRUE;  // the host shows these pages without a result list under them
}

void CPlatformAckPage::Acknowledge(const AlarmView& alarm) {
  EnableSendControls(FALSE);
  record_.Clear();
  record_.PutText(kRecGuid, kRecGuidBytes, alarm.Guid());
  record_.PutU32(kRecKind, kind_);
  FillRecord(alarm, record_);
  Acknowledge(record_);
}

void CPlatformAckPage::Acknowledge(const RecordWriter& record) {
  if (!call_.Start(&NETCLIENT_MCAck809Platform, record.Data())) {
    // Refused at once: the page hears of it as an answer that never came.
    if (kind_ == kSupervision) ++index_;
    PostMessage(answerMessage_, 0, 0);
  }
}

void CPlatformAckPage::FillResults(int combo) {
  auto* list = Item<plat::ComboBox>(combo);
  if (!list) return;
  for (int result = 0; result < kHandleResults; ++result)
    list->SetItemData(list->AddString(FormatStringMgr::GetHandleResult(result)), static_cast<uint32_t>(result));
  list->SetCurSel(0);
}

int CPlatformAckPage::SelectedData(int combo) const {
  const auto* list = Item<plat::ComboBox>(combo);
  if (!list || list->GetCurSel() < 0) return 0;
  return static_cast<int>(list->GetItemData(list->GetCurSel()));
}

void CPlatformAckPage::EndWithAnswer(const void* answer) {
  if (!answer || NETCLIENT_MCMsgResult(answer) != 0) {
    ShowMsgTipEx(FailureText(answer), "", 0);
  } else {
    ShowMsgTipEx(LanguageText(txtid::SetSucceeded), "", 0);
    if (GetParent()) GetParent()->PostMessage(msg::ClosePage, 0, 0);
  }
  EnableSendControls(TRUE);
}

std::string CPlatformAckPage::FailureText(const void* answer) { return IDIRErrorString(NETCLIENT_MCMsgResult(answer)); }

LRESULT CPlatformAckPage::WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) {
  if (msg != answerMessage_) return CBaseDlg::WindowProc(msg, wParam, lParam);
  void* answer = call_.Take(wParam);
  OnAnswered(answer);
  if (answer) NETCLIENT_MCReleaseMsg(answer);
  return 0;
}

void CPlatformAckPage::OnDestroy() {
  call_.Stop();
  CBaseDlg::OnDestroy();
}
