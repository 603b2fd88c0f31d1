// CBaseDlg: replies from the network thread, and the result rows.
#include <algorithm>
#include <climits>
#include <cstring>
#include <optional>

#include "command/base_dlg.h"
#include "command/ids.h"
#include "command/reply_keys.h"
#include "command/result_columns.h"
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

// Reads "Error", then "result" when "Error" is absent or 0. A value that
// fits a 32-bit word is that word; one beyond keeps its sign and saturates,
// so it never reads as success.
int32_t ResultOf(const Json::Value& root) {
  for (const char* key : {replykey::kError, replykey::kResult}) {
    const Json::Value* member = root.isObject() ? root.find(key, key + std::strlen(key)) : nullptr;
    const std::optional<int64_t> value = member ? txt::JsonToInt(*member) : std::nullopt;
    if (!value || *value == 0) continue;
    if (*value >= INT32_MIN && *value <= static_cast<int64_t>(UINT32_MAX)) {
      return static_cast<int32_t>(static_cast<uint32_t>(*value));
    }
    return *value < 0 ? INT32_MIN : INT32_MAX;
  }
  return 0;
}

// The time column's text: rows added in the same instant share one formatting.
const std::string& TimeText(const SYSTEMTIME& now) {
  thread_local SYSTEMTIME last{};
  thread_local std::string text;
  thread_local bool formatted = false;
  if (!formatted || std::memcmp(&last, &now, sizeof now) != 0) {
    text = FormatSystemTime(now);
    last = now;
    formatted = true;
  }
  return text;
}

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
  return ResultOf(root);
}

void CALLBACK CBaseDlg::FUNSetupMsgCB(int32_t status, const char* reply, void* user) {
  if (reply) PluginLog().WriteStrInfoEx(0, "CBaseDlg::FUNSetupMsgCB Content:%s", reply);
  if (!user) return;
  auto* request = static_cast<CommandRequest*>(user);
  CBaseDlg* page = request->owner;
  CAutoLock guard(page->lock);
  if (!page->RequestTable.count(request)) return;
  // The reply is parsed here, once: its result now, the object for the page later.
  Json::Value root;
  const bool parsed = reply && txt::ParseJson(reply, root);
  request->result = (status == kStatusOffline || status == kStatusTimeout) ? status : parsed ? ResultOf(root) : 0;
  if (reply) request->reply = reply;
  if (parsed && page->keepAnswers_) page->answers_.emplace(request, std::move(root));
  if (!page->PostMessage(msg::Reply, reinterpret_cast<WPARAM>(request), 0)) {
    // The page cannot take the answer: drop the request here.
    page->RequestTable.erase(request);
    page->answers_.erase(request);
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
  Json::Value answer;
  bool parsed = false;
  {
    CAutoLock guard(lock);
    auto it = RequestTable.find(request);
    if (it == RequestTable.end()) return;
    RequestTable.erase(it);
    if (auto a = answers_.find(request); a != answers_.end()) {
      answer = std::move(a->second);
      answers_.erase(a);
      parsed = true;
    }
  }
  // The callback has stored its answer and is done with the request once its
  // channel is stopped; then the request can go.
  CloseChannel(request);
  copy = std::move(*request);  // the reply text moves, it is not copied again
  delete request;
  copy.handle = 0;
  currentAnswer_ = parsed ? &answer : nullptr;
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
  currentAnswer_ = nullptr;
}

void CBaseDlg::ParseReply(CommandRequest& request) {
  // Decided by the reply alone: a network status that came with a reply leaves it readable.
  const bool answered = currentAnswer_ && currentAnswer_->isObject() && ResultOf(*currentAnswer_) == 0;
  if (answered) {
    OnAnswer(request, *currentAnswer_);
  } else {
    OnNoAnswer(request);
  }
}

void CBaseDlg::AddResultRow(CommandRequest& request) {
  if (!ResultList) return;
  CXListCtrl& list = *ResultList;
  const int number = list.GetItemCount() + 1;
  list.InsertItem(0, std::to_string(number));
  list.SetItemText(0, kColVehicle, VehicleText(request.devIdno));
  list.SetItemText(0, kColTime, TimeText(plat::GetLocalTime()));
  list.SetItemText(0, kColFunction, FormatStringMgr::Format808FunctionType(FunctionType, 0));

  std::string result;
  if (request.result == 0) {
    result = LanguageText(QueryMode ? txtid::GetSucceeded : txtid::SetSucceeded);
  } else {
    result = "[" + LanguageText(QueryMode ? txtid::Get : txtid::Set) + "]" + IDIRErrorString(request.result);
  }
  list.SetItemText(0, kColResult, result);

  std::string description = GetParamDescription();
  if (CMgrAppInfo::IsTestIP()) {
    char prefix[32];
    std::snprintf(prefix, sizeof prefix, "0x%X;\r\n", static_cast<unsigned>(CommandType));
    description.insert(0, prefix);
  }
  list.SetItemText(0, kColDescription, description);
  list.SetItemText(0, kColStatus, request.result == 0 ? CXListCtrl::kOnline : CXListCtrl::kWarning);
  list.RedrawItems(0, 0);
}
