// CBaseDlg: replies from the network thread, and the result rows.
#include <cstring>

#include "command/base_dlg.h"
#include "command/ids.h"
#include "command/plugin_log.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "platform/clock.h"
#include "text/json.h"
#include "ui/xlist_ctrl.h"

namespace {
// Network statuses that stand for the result code themselves.
constexpr int32_t kStatusOffline = 101;
constexpr int32_t kStatusTimeout = 110;

enum ResultColumn : int {
  kColNumber = 0,
  kColVehicle = 1,
  kColTime = 2,
  kColFunction = 3,
  kColResult = 4,
  kColDescription = 5,
  kColStatus = 7,
};

std::string VehicleText(const char* devIdno) {
  CVehicleFunc vehicle = CVehicleBaseMgr::FindVehicleFromDev(devIdno);
  CDevFunc device = CVehicleBaseMgr::FindDvsDeviceByIDNO(devIdno);
  std::string text = vehicle.GetDevStr(kDevStrVehicleAndDevice, device.GetData());
  return text.empty() ? std::string(devIdno) : text;
}
}  // namespace

int32_t CBaseDlg::ParseResult(const char* reply) {
  if (!reply) return 0;
  Json::Value root;
  if (!txt::ParseJson(reply, root)) return 0;
  const int error = txt::JsonMemberInt(root, "Error", 0);
  if (error != 0) return error;
  return txt::JsonMemberInt(root, "result", 0);
}

void CALLBACK CBaseDlg::FUNSetupMsgCB(int32_t status, const char* reply, void* user) {
  if (reply) PluginLog().WriteStrInfoEx(0, "CBaseDlg::FUNSetupMsgCB Content:%s", reply);
  if (!user) return;
  auto* request = static_cast<CommandRequest*>(user);
  CBaseDlg* page = request->owner;
  CAutoLock guard(page->lock);
  if (!page->RequestTable.count(request)) return;
  request->result = (status == kStatusOffline || status == kStatusTimeout) ? status : ParseResult(reply);
  if (reply) request->reply = reply;
  if (!page->PostMessage(msg::Reply, reinterpret_cast<WPARAM>(request), 0)) {
    // The page cannot take the answer: drop the request here.
    page->RequestTable.erase(request);
    delete request;
  }
}

LRESULT CBaseDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case msg::Reply:
      OnReply(reinterpret_cast<CommandRequest*>(wParam));
      return 0;
    case msg::ClosePage:
      if (GetParent()) GetParent()->PostMessage(msg::ClosePage, 0, 0);
      return 0;
    case WM_COMMAND:
      if (LOWORD(wParam) == static_cast<UINT>(ctl::Cancel) && HIWORD(wParam) == BN_CLICKED && HasItem(ctl::Cancel)) {
        if (GetParent()) GetParent()->PostMessage(msg::ClosePage, 0, 0);
        return 0;
      }
      break;
    default:
      break;
  }
  return CDlgChildBase::WindowProc(message, wParam, lParam);
}

void CBaseDlg::OnReply(CommandRequest* request) {
  CommandRequest copy;
  {
    CAutoLock guard(lock);
    auto it = RequestTable.find(request);
    if (it == RequestTable.end()) return;
    RequestTable.erase(it);
  }
  // The callback has stored its answer and is done with the request once its
  // channel is stopped; then the request can go.
  CloseChannel(request);
  copy = *request;
  delete request;
  copy.handle = 0;
  const int count = copy.itemCount;
  for (int k = 0; k < count; ++k) {
    if (QueryMode) {
      ParseReply(copy);
    } else {
      PrepareBatch(copy);
    }
    AddResultRow(copy);
    ++copy.itemIndex;
  }
}

void CBaseDlg::AddResultRow(CommandRequest& request) {
  if (!ResultList) return;
  CXListCtrl& list = *ResultList;
  const int number = list.GetItemCount() + 1;
  list.InsertItem(0, std::to_string(number));
  list.SetItemText(0, kColVehicle, VehicleText(request.devIdno));
  list.SetItemText(0, kColTime, FormatSystemTime(plat::GetLocalTime()));
  list.SetItemText(0, kColFunction, FormatStringMgr::Format808FunctionType(FunctionType, 0));

  std::string result;
  if (request.result == 0) {
    result = LanguageText(QueryMode ? txtid::GetSucceeded : txtid::SetSucceeded);
  } else {
    result = "[" + LanguageText(QueryMode ? txtid::Get : txtid::Set) + "]" + IDIRErrorString(request.result);
  }
  list.SetItemText(0, kColResult, result);

  std::string description;
  GetParamDescription(description);
  if (CMgrAppInfo::IsTestIP()) {
    char prefix[32];
    std::snprintf(prefix, sizeof prefix, "0x%X;\r\n", static_cast<unsigned>(CommandType));
    description.insert(0, prefix);
  }
  list.SetItemText(0, kColDescription, description);
  list.SetItemText(0, kColStatus, request.result == 0 ? CXListCtrl::kOnline : CXListCtrl::kWarning);
  list.RedrawItems(0, 0);
}
