#include "shell/dlg_main.h"

#include <algorithm>

#include "command/base_dlg.h"
#include "host/hostcore.h"
#include "text/encoding.h"
#include "command/ids.h"
#include "command/page_registry.h"
#include "lang/language.h"
#include "shell/result_list.h"
#include "ui/xlist_ctrl.h"

namespace {
const plat::DialogTemplate kMainTemplate{CDlgMain::kTemplate, "", {815, 780},
                                         {{resultlist::kFrameId, plat::ControlKind::GroupBox, "结果", {1, 480, 814, 770},
                                           plat::style::Hidden},
                                          {resultlist::kListId, plat::ControlKind::ListView, "", {9, 500, 806, 762},
                                           plat::style::Hidden}}};
const plat::templates::Registration kRegistration{kMainTemplate};

// Host messages to the window.
enum HostMessage : uint32_t {
  kSetContext = 1,
  kShow = 2,
  kAlarmText = 4,
  kStartAlarmHandling = 5,
  kConfirmAlarm = 7,
  kLoadDeviceCaps = 9,
  kShowContextData = 65535,
};
constexpr int kAlarmTextControl = 4161;
constexpr int kHandleAllButton = 4002;  // the newer handling page's one-key send
constexpr int kTypeConfirmAlarm = 54;

bool IsType(int type, std::initializer_list<int> types) {
  return std::find(types.begin(), types.end(), type) != types.end();
}

// Messages of the page that the host answers.
constexpr UINT kForwarded[] = {msg::AlarmHandled, msg::AlarmConfirmed, msg::ReservedForward1,
                               msg::SupervisionAnswered, msg::ReservedForward2};
}  // namespace

CDlgMain::CDlgMain(int functionType) : CResultListWindow(kTemplate), functionType_(functionType) {}

CDlgMain::~CDlgMain() { DestroyWindow(); }

BOOL CDlgMain::OnInitDialog() {
  CResultListWindow::OnInitDialog();
  CreatePage();
  if (page_ && !page_->HideResultList) {
    ShowItem(resultlist::kListId, true);
    ShowItem(resultlist::kFrameId, true);
  }
  return TRUE;
}

void CDlgMain::CreatePage() {
  const PageEntry* entry = pages::Find(functionType_, PageHost::kVehicleWindow);
  if (!entry) return;
  std::unique_ptr<CBaseDlg> page = entry->make(functionType_);
  if (!page || !page->CreateDlg(this)) return;
  page->ShowWindow(plat::SW_SHOW);
  HostPage(*page, entry->noList ? nullptr : ResultList(), functionType_, PageButtons::kOwn);
  page_ = std::move(page);
}

void CDlgMain::OnDestroy() {
  page_.reset();
  CResultListWindow::OnDestroy();
}

void CDlgMain::FitIntoParent() {
  Window* parent = GetParent();
  if (!parent) return;
  const RECT client = parent->GetClientRect();
  MoveWindow({client.left + 1, client.top + plat::t(30), client.right - 1, client.bottom - 8});
  if (page_) {
    const RECT r = page_->GetRect();
    page_->MoveWindow({1, 0, 1 + r.Width(), r.Height()});
  }
  parent->RedrawWindow();
}

LRESULT CDlgMain::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  for (UINT forwarded : kForwarded) {
    if (message == forwarded) return GetParent() ? GetParent()->SendMessage(message, wParam, lParam) : 0;
  }
  if (message == msg::HandlingLogged) {
    return (wParam != 0 && GetParent()) ? GetParent()->SendMessage(message, wParam, lParam) : 0;
  }
  if (message == msg::ClosePage) {
    if (GetParent()) GetParent()->SendMessage(WM_CLOSE, wParam, lParam);
    return 0;
  }
  return CResultListWindow::WindowProc(message, wParam, lParam);
}

void CDlgMain::OnHostMessage(uint32_t message, uintptr_t w, intptr_t l) {
  CBaseDlg* page = page_.get();
  if (!page) return;
  // The alarm pages of the newer layout are 103 and 104; before it, 100 and 101.
  const bool newAlarm = CLayoutMgr::IsSupportVer7_21() && IsType(functionType_, {103, 104});
  const bool oldAlarm = !newAlarm && IsType(functionType_, {100, 101});
  switch (message) {
    case kSetContext:
      page->contextPointer = w;
      page->contextCount = static_cast<uint32_t>(l);
      break;
    case kShow:
      ShowWindow(static_cast<int>(w));
      break;
    case kAlarmText:
      if ((newAlarm || oldAlarm) && w) {
        page->SetItemText(kAlarmTextControl, txt::Utf16ToUtf8(reinterpret_cast<const char16_t*>(w)));
      }
      break;
    case kStartAlarmHandling:
      if (newAlarm) {
        page->SendMessage(WM_COMMAND, MAKEWPARAM(kHandleAllButton, BN_CLICKED), 0);
      } else if (oldAlarm) {
        page->PostClick(ctl::Set);
      }
      break;
    case kConfirmAlarm:
      if (functionType_ == kTypeConfirmAlarm) page->PostClick(ctl::Set);
      break;
    case kLoadDeviceCaps:
      page->LoadOwnCaps(static_cast<int>(l));
      page->UpdateProtocolControls();
      break;
    case kShowContextData:
      page->ShowContextData();
      break;
    default:
      break;
  }
}
