#include "shell/call_name.h"

#include "command/ids.h"
#include "command/page_registry.h"
#include "shell/plugin_callbacks.h"

namespace {
const plat::DialogTemplate kCallNameTemplate{CDlgCallName::kTemplate, "", {10, 10}, {}};
const plat::DialogTemplate kNewCallNameTemplate{CDlgNewCallName::kTemplate, "", {400, 100},
                                                {{ctl::Set, plat::ControlKind::PushButton, "确定"}}};
const plat::templates::Registration kRegistrations[] = {plat::templates::Registration{kCallNameTemplate},
                                                        plat::templates::Registration{kNewCallNameTemplate}};
constexpr int kFunctionPointQuery = 57;
const PageRegistration kPage{{kFunctionPointQuery}, PageHost::kFunctionPage,
                             [](int) { return std::make_unique<CDlgNewCallName>(); }};
}  // namespace

CDlgCallName::CDlgCallName() : CNoParamDlg(kTemplate) {}

void CDlgCallName::CallName(const std::string& devIdno) {
  pending_.push_back(devIdno);
  if (!pending_.empty()) StartSend(kCmdPositionQuery);
}

void CDlgCallName::CollectTargets(std::deque<std::string>& targets) {
  targets.insert(targets.end(), pending_.begin(), pending_.end());
  pending_.clear();
}

void CDlgCallName::AddResultRow(CommandRequest& request) {
  const PointQueryCallback& callback = PointQueryResultCallback();
  if (callback.function) callback.function(request.result, &request, callback.context);
}

CDlgNewCallName::CDlgNewCallName() : CNoParamDlg(kTemplate) {
  UsesNoParamPanel = TRUE;
  Bind(ctl::Set, BN_CLICKED, [this] { StartSend(kCmdPositionQuery); });
}

void CDlgNewCallName::PrepareBatch(CommandRequest& request) {
  plat::Window* window = GetParent();
  plat::Window* host = window ? window->GetParent() : nullptr;
  if (!host) return;
  host->SendMessage(msg::PointQueryAnswer, reinterpret_cast<WPARAM>(&request), OutstandingCount() == 0 ? 1 : 0);
}
