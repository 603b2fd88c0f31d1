#include "script.h"

#include <algorithm>
#include <set>

#include "command_table.h"
#include "host/ref/hostref.h"
#include "output.h"
#include "platform/dialog.h"
#include "platform/loop.h"
#include "script_args.h"
#include "script_controls.h"

using script::Error;
using script::Head;

ScriptRunner::ScriptRunner(HostWorld& world) : world_(world) {
  RegisterWorld();
  RegisterNetwork();
  RegisterWindows();
  RegisterPage();
  RegisterResults();
  RegisterObserve();
  // A picker run without an answer given beforehand: a person is asked at the
  // prompt; in a script the line that started it fails (see CheckPicker).
  hostref::SetPickerFallback([this]() -> std::optional<std::vector<int>> {
    if (std::exchange(cancelPicker_, false)) return std::nullopt;
    if (asker_) return asker_();
    pickerUnanswered_ = true;
    return std::nullopt;
  });
}

ScriptRunner::~ScriptRunner() { hostref::SetPickerFallback(nullptr); }

void ScriptRunner::Fail(const Context& context, const std::string& what) {
  failed_ = lineFailed_ = true;
  out::Error("ERROR " + std::to_string(context.line) + ": " + what);
}

void ScriptRunner::CheckPicker(const Context& context) {
  if (!std::exchange(pickerUnanswered_, false)) return;
  Fail(context, "the device picker ran without an answer and was cancelled: give one with `pick DEVIDNO ...` "
                "before the line that opens it (`pick none` cancels on purpose)");
}

plat::Window* ScriptRunner::Control(const Context& context, const std::string& id) const {
  if (!context.root) throw Error{"no window is open (`funpage` or `window TYPE` first)"};
  const bool windowOwn = id.rfind(script::kWindowPrefix, 0) == 0;
  const int number = script::Number<int>(windowOwn ? id.substr(std::string(script::kWindowPrefix).size()) : id);
  // The page's controls (deeper than the window's own) come first, unless the prefix asks for the window's.
  std::vector<plat::Control*> page, own;
  for (plat::Control* control : script::ControlsBelow(*context.root)) {
    if (control->GetDlgCtrlID() != number) continue;
    (control->GetParent() == context.root ? own : page).push_back(control);
  }
  std::vector<plat::Control*> order = own;
  if (!windowOwn) order.insert(order.begin(), page.begin(), page.end());
  for (plat::Control* control : order) {
    if (control->IsWindowVisible()) return control;
  }
  if (!order.empty()) throw Error{"control " + id + " is not shown (`controls` lists those shown)"};
  throw Error{"no control " + id + " here (`controls` lists them)"};
}

void ScriptRunner::RunStream(std::istream& in) {
  int number = 0;
  for (std::string line; !quit_ && std::getline(in, line);) RunLine(line, ++number);
}

bool ScriptRunner::RunLine(const std::string& raw, int number) {
  std::string line = raw;
  if (!line.empty() && line.back() == '\r') line.pop_back();
  const auto [command, rest] = Head(line);
  if (command.empty() || command[0] == '#') return true;
  const Context context{world_.Current(), number};
  lineFailed_ = false;
  try {
    if (!Dispatch(command, rest, context, false)) {
      Fail(context, "unknown command " + command + " (`help` lists the commands)");
    }
  } catch (const Error& e) {
    Fail(context, e.what);
  } catch (const std::exception& e) {
    Fail(context, e.what());
  }
  CheckPicker(context);
  return !lineFailed_;
}

bool ScriptRunner::Dispatch(const std::string& command, const std::string& rest, const Context& context,
                            bool controlsOnly) {
  auto control = controlCommands_.find(command);
  if (control != controlCommands_.end()) {
    control->second(rest, context);
    return true;
  }
  if (controlsOnly) return false;
  auto it = commands_.find(command);
  if (it == commands_.end()) return false;
  it->second(rest, context);
  return true;
}

void ScriptRunner::QueueModal(const std::string& rest, int line) {
  if (Head(rest).first == "next" || !modalBatch_) {
    modalBatch_ = std::make_shared<std::vector<std::pair<std::string, int>>>();
    auto batch = modalBatch_;
    plat::modal::Push([this, batch](plat::Dialog& dialog) {
      for (const auto& [text, number] : *batch) {
        const auto [command, args] = Head(text);
        const Context context{&dialog, number};
        try {
          if (!Dispatch(command, args, context, true)) Fail(context, "not a command for a dialog: " + command);
        } catch (const Error& e) {
          Fail(context, e.what);
        }
      }
    });
    if (Head(rest).first == "next") return;
  }
  modalBatch_->push_back({rest, line});
}

std::vector<std::string> ScriptRunner::CommandNames() const {
  std::set<std::string> names;
  for (const auto& info : commands::All()) names.insert(info.name);
  return {names.begin(), names.end()};
}

std::vector<std::string> ScriptRunner::ControlIds() const {
  std::set<int> ids;
  if (plat::Window* root = world_.Current()) {
    for (plat::Control* control : script::ControlsBelow(*root)) {
      if (control->IsWindowVisible() && control->GetDlgCtrlID() > 0) ids.insert(control->GetDlgCtrlID());
    }
  }
  std::vector<std::string> texts;
  for (int id : ids) texts.push_back(std::to_string(id));
  return texts;
}
