#include "shell/call_name.h"

#include "command/ids.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "shell/plugin_callbacks.h"

namespace {
constexpr int kFunctionPointQuery = 57;
const RegisterTemplate<CDlgCallName> kCallNameTemplate;
const RegisterPage<CDlgNewCallName> kPage{{kFunctionPointQuery}, PageHost::kFunctionPage};
}  // namespace

plat::DialogTemplate CDlgCallName::Layout() { return PageTemplate(kTemplate, {10, 10}, {}); }

CDlgCallName::CDlgCallName() : CBaseDlg(kTemplate) {}

void CDlgCallName::CallName(const std::string& devIdno) {
  pending_.push_back(devIdno);
  StartSend(kCmdPositionQuery);
}

void CDlgCallName::CollectTargets(std::deque<std::string>& targets) {
  targets.insert(targets.end(), pending_.begin(), pending_.end());
  pending_.clear();
}

void CDlgCallName::AddResultRow(CommandRequest& request) {
  const PointQueryCallback& callback = PointQueryResultCallback();
  if (callback.function) callback.function(request.result, &request, callback.context);
}

plat::DialogTemplate CDlgNewCallName::Layout() {
  return PageTemplate(kTemplate, {400, 100}, {{row::Button(ctl::Set, "确定", {})}});
}

CDlgNewCallName::CDlgNewCallName() : CBaseDlg(kTemplate) {
  UsesNoParamPanel = TRUE;
  Bind(ctl::Set, BN_CLICKED, [this] { StartSend(Mode::kSet, kCmdPositionQuery); });
}

void CDlgNewCallName::PrepareBatch(CommandRequest& request) {
  plat::Window* window = GetParent();
  plat::Window* host = window ? window->GetParent() : nullptr;
  if (!host) return;
  host->SendMessage(msg::PointQueryAnswer, reinterpret_cast<WPARAM>(&request), OutstandingCount() == 0 ? 1 : 0);
}
