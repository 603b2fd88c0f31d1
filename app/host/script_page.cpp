// Commands on the current page's controls (most also inside a modal dialog),
// the device picker's answer and modal dialogs.
#include <cstdio>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "output.h"
#include "platform/controls.h"
#include "platform/loop.h"
#include "script.h"
#include "script_args.h"
#include "script_controls.h"

using namespace script;

namespace {
// A control's rectangle in the coordinates of the window the script works in.
std::string RectIn(const plat::Window& control, const plat::Window& root) {
  const RECT r = control.GetWindowRect();
  const RECT origin = root.GetWindowRect();
  const auto text = [](long v) { return std::to_string(v); };
  return text(r.left - origin.left) + "," + text(r.top - origin.top) + "," + text(r.right - origin.left) + "," +
         text(r.bottom - origin.top);
}
}  // namespace

void ScriptRunner::RegisterPage() {
  controlCommands_["text"] = [this](const std::string& rest, const Context& context) {
    const auto [id, text] = Head(rest);
    if (id.empty()) throw Error{"usage: text ID TEXT"};
    auto* edit = dynamic_cast<plat::Edit*>(Control(context, id));
    if (!edit) throw Error{"control " + id + " is no edit"};
    if (!edit->UserType(Unescape(text))) throw Error{"control " + id + " refused the text (disabled, read-only or a filter)"};
  };
  controlCommands_["check"] = [this](const std::string& rest, const Context& context) {
    const Args a = Expect(rest, 2, "check ID on|off");
    auto* button = dynamic_cast<plat::Button*>(Control(context, a[0]));
    if (!button || button->Kind() == plat::ControlKind::PushButton) throw Error{"control " + a[0] + " is no check box or radio"};
    const bool on = OnOff(a[1], "check ID on|off");
    if ((button->GetCheck() != 0) != on) {
      if (!on && button->Kind() == plat::ControlKind::RadioButton) throw Error{"a radio button is cleared by checking another"};
      if (!button->Click()) throw Error{"control " + a[0] + " is disabled"};
    }
  };
  controlCommands_["choose"] = [this](const std::string& rest, const Context& context) {
    const Args a = Expect(rest, 2, "choose ID INDEX");
    plat::Window* control = Control(context, a[0]);
    const int index = Number<int32_t>(a[1]);
    bool done = false;
    if (auto* combo = dynamic_cast<plat::ComboBox*>(control)) done = combo->UserSelect(index);
    else if (auto* list = dynamic_cast<plat::ListView*>(control)) done = index >= 0 && index < list->GetItemCount() && list->UserClick(index);
    else throw Error{"control " + a[0] + " is no combo box or list"};
    if (!done) throw Error{"control " + a[0] + " has no entry " + a[1]};
  };
  const auto setTime = [this](const std::string& rest, const Context& context, bool date) {
    const char* usage = date ? "date ID YYYY-MM-DD" : "time ID hh:mm:ss";
    const Args a = Expect(rest, 2, usage);
    auto* picker = dynamic_cast<plat::DateTimePicker*>(Control(context, a[0]));
    if (!picker) throw Error{"control " + a[0] + " is no date or time picker"};
    unsigned x = 0, y = 0, z = 0;
    char end = 0;
    if (std::sscanf(a[1].c_str(), date ? "%4u-%2u-%2u%c" : "%2u:%2u:%2u%c", &x, &y, &z, &end) != 3) {
      throw Error{"bad value " + a[1] + " (usage: " + usage + ")"};
    }
    SYSTEMTIME st = picker->GetTime();
    if (date) st.wYear = static_cast<WORD>(x), st.wMonth = static_cast<WORD>(y), st.wDay = static_cast<WORD>(z);
    else st.wHour = static_cast<WORD>(x), st.wMinute = static_cast<WORD>(y), st.wSecond = static_cast<WORD>(z);
    if (!picker->UserSetTime(st)) throw Error{"control " + a[0] + " is disabled or refused " + a[1]};
  };
  controlCommands_["date"] = [setTime](const std::string& rest, const Context& c) { setTime(rest, c, true); };
  controlCommands_["time"] = [setTime](const std::string& rest, const Context& c) { setTime(rest, c, false); };
  controlCommands_["click"] = [this](const std::string& rest, const Context& context) {
    const Args a = Expect(rest, 1, "click ID");
    auto* button = dynamic_cast<plat::Button*>(Control(context, a[0]));
    if (!button) throw Error{"control " + a[0] + " is no button"};
    if (!button->Click()) throw Error{"control " + a[0] + " is disabled"};
    plat::MessageLoop::Instance().RunPending();
  };
  controlCommands_["get"] = [this](const std::string& rest, const Context& context) {
    const Args a = Expect(rest, 1, "get ID");
    // A text of several lines is printed a line at a time; trailing empty lines are left out.
    std::string value = ValueOf(*Control(context, a[0]));
    while (value.size() >= 2 && value.compare(value.size() - 2, 2, "\r\n") == 0) value.resize(value.size() - 2);
    size_t start = 0;
    do {
      const size_t end = value.find("\r\n", start);
      std::string line = value.substr(start, end == std::string::npos ? std::string::npos : end - start);
      for (char& c : line) {
        if (c == '\t') c = ' ';
      }
      out::Line("VALUE " + a[0] + " " + out::EscapeControls(line));
      start = end == std::string::npos ? value.size() + 1 : end + 2;
    } while (start <= value.size());
  };
  controlCommands_["controls"] = [](const std::string&, const Context& context) {
    if (!context.root) throw Error{"no window is open (`funpage` or `window TYPE` first)"};
    for (plat::Control* c : ControlsBelow(*context.root)) {
      if (!c->GetParent()->IsWindowVisible()) continue;
      out::Line("CONTROL " + std::to_string(c->GetDlgCtrlID()) + " " + KindName(c->Kind()) + " \"" +
                out::EscapeControls(c->GetWindowText()) + "\" value=" + out::EscapeControls(ValueOf(*c)) +
                (c->IsWindowEnabled() ? " enabled" : " disabled") + (c->IsWindowVisible() ? " shown" : " hidden") +
                " rect=" + RectIn(*c, *context.root));
    }
  };
  commands_["pick"] = [this](const std::string& rest, const Context&) {
    const Args a = Split(rest);
    if (a.empty()) throw Error{"usage: pick DEVIDNO ... | pick none"};
    cancelPicker_ = a == Args{"none"};
    if (cancelPicker_) {
      hostref::SetPickerAnswer(std::nullopt);
      return;
    }
    std::vector<int> ids;
    for (const std::string& idno : a) ids.push_back(CVehicleBaseMgr::FindDvsDeviceByIDNO(FleetDevice(idno).c_str()).GetDevID());
    hostref::SetPickerAnswer(ids);
  };
  commands_["modal"] = [this](const std::string& rest, const Context& context) {
    if (rest.empty()) throw Error{"usage: modal COMMAND ... | modal next"};
    QueueModal(rest, context.line);
  };
}
