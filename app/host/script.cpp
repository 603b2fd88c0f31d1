#include "script.h"

#include <cstdio>
#include <deque>
#include <iostream>
#include <sstream>

#include <json/json.h>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "output.h"
#include "platform/dialog.h"
#include "platform/loop.h"
#include "platform/menu.h"
#include "text/encoding.h"
#include "text/json.h"

namespace {
constexpr int kTreeControl = 4460;
constexpr int kResultList = 4399;
constexpr int kExportFileName = 1152;
constexpr UINT kMenuExport = 32771;
constexpr int kStatusOffline = 101;

using Args = std::vector<std::string>;

struct ScriptError {
  std::string what;
};

std::vector<std::string> Split(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

// The first word and the rest of a text.
std::pair<std::string, std::string> Head(const std::string& text) {
  const size_t start = text.find_first_not_of(" \t");
  if (start == std::string::npos) return {};
  const size_t end = text.find_first_of(" \t", start);
  if (end == std::string::npos) return {text.substr(start), ""};
  const size_t rest = text.find_first_not_of(" \t", end);
  return {text.substr(start, end - start), rest == std::string::npos ? "" : text.substr(rest)};
}

long Number(const std::string& word) {
  char* end = nullptr;
  errno = 0;
  const long value = std::strtol(word.c_str(), &end, 0);
  if (word.empty() || *end != '\0' || errno != 0) throw ScriptError{"not a number: " + word};
  return value;
}

Args Expect(const std::string& rest, size_t count, const char* usage) {
  Args args = Split(rest);
  if (args.size() != count) throw ScriptError{std::string("usage: ") + usage};
  return args;
}

// Script text: \n, \r, \t, \\ and \xHH escapes.
std::string Unescape(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 >= text.size()) {
      out += text[i];
      continue;
    }
    const char c = text[++i];
    if (c == 'n') out += '\n';
    else if (c == 'r') out += '\r';
    else if (c == 't') out += '\t';
    else if (c == 'x' && i + 2 < text.size()) {
      out += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else out += c;
  }
  return out;
}

const char* KindName(plat::ControlKind kind) {
  switch (kind) {
    case plat::ControlKind::Static: return "static";
    case plat::ControlKind::GroupBox: return "group";
    case plat::ControlKind::PushButton: return "button";
    case plat::ControlKind::CheckBox: return "check";
    case plat::ControlKind::RadioButton: return "radio";
    case plat::ControlKind::Edit: return "edit";
    case plat::ControlKind::ComboBox: return "combo";
    case plat::ControlKind::ListView: return "list";
    case plat::ControlKind::TreeView: return "tree";
    case plat::ControlKind::DatePicker: return "date";
    case plat::ControlKind::TimePicker: return "time";
    case plat::ControlKind::Spin: return "spin";
  }
  return "?";
}

std::string ValueOf(plat::Window& window) {
  if (auto* button = dynamic_cast<plat::Button*>(&window)) {
    if (button->Kind() != plat::ControlKind::PushButton) return button->GetCheck() ? "on" : "off";
  }
  if (auto* combo = dynamic_cast<plat::ComboBox*>(&window)) {
    return std::to_string(combo->GetCurSel()) + ":" + combo->GetWindowText();
  }
  if (auto* list = dynamic_cast<plat::ListView*>(&window)) return std::to_string(list->GetItemCount()) + " rows";
  if (auto* tree = dynamic_cast<plat::TreeView*>(&window)) return tree->GetItemText(tree->GetSelectedItem());
  if (dynamic_cast<plat::Static*>(&window) || dynamic_cast<plat::Button*>(&window)) return "";
  return window.GetWindowText();
}

// Controls below a window, nearest first (breadth first).
std::vector<plat::Control*> ControlsBelow(plat::Window& root) {
  std::vector<plat::Control*> found;
  std::deque<plat::Window*> queue{&root};
  while (!queue.empty()) {
    plat::Window* w = queue.front();
    queue.pop_front();
    for (plat::Window* child : w->Children()) {
      if (auto* control = dynamic_cast<plat::Control*>(child)) found.push_back(control);
      queue.push_back(child);
    }
  }
  return found;
}
}  // namespace

ScriptRunner::ScriptRunner(HostWorld& world) : world_(world) { Register(); }

void ScriptRunner::Fail(const Context& context, const std::string& what) const {
  out::Line("ERROR " + std::to_string(context.line) + ": " + what);
}

plat::Window* ScriptRunner::Control(const Context& context, const std::string& id) {
  if (!context.root) throw ScriptError{"no window is open (funpage or window TYPE first)"};
  const long number = Number(id);
  plat::Window* hidden = nullptr;
  for (plat::Control* control : ControlsBelow(*context.root)) {
    if (control->GetDlgCtrlID() != number) continue;
    if (control->IsWindowVisible()) return control;
    if (!hidden) hidden = control;
  }
  throw ScriptError{hidden ? "control " + id + " is not shown" : "no control " + id};
}

void ScriptRunner::RunStream(std::istream& in, bool prompt) {
  int number = 0;
  for (;;) {
    if (prompt) {
      std::cout << "fleetcmd> " << std::flush;
    }
    std::string line;
    if (!std::getline(in, line)) break;
    RunLine(line, ++number);
    if (quit_) break;
  }
}

void ScriptRunner::RunLine(const std::string& raw, int number) {
  std::string line = raw;
  if (!line.empty() && line.back() == '\r') line.pop_back();
  const auto [command, rest] = Head(line);
  if (command.empty() || command[0] == '#') return;
  const Context context{world_.Current(), number};
  try {
    if (!Dispatch(command, rest, context, false)) Fail(context, "unknown command " + command);
  } catch (const ScriptError& e) {
    Fail(context, e.what);
  } catch (const std::exception& e) {
    Fail(context, e.what());
  }
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
        } catch (const ScriptError& e) {
          Fail(context, e.what);
        }
      }
    });
    if (Head(rest).first == "next") return;
  }
  modalBatch_->push_back({rest, line});
}

void ScriptRunner::Register() {
  // ---- the world ----
  commands_["lang"] = [this](const std::string& rest, const Context&) {
    if (rest.empty()) throw ScriptError{"usage: lang FILE"};
    const std::u16string path = txt::Utf8ToUtf16(rest);
    world_.Api().SetLangPath(path.c_str());
    if (!hostref::LoadHostTexts(rest)) throw ScriptError{"cannot read " + rest};
  };
  commands_["fleet"] = [](const std::string& rest, const Context&) {
    std::string error;
    if (!hostref::LoadFleetFile(rest, &error)) throw ScriptError{error};
  };
  commands_["config"] = [](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 2, "config ID VALUE");
    CConfigKestrelINI::WriteIniInt(static_cast<int>(Number(a[0])), static_cast<int>(Number(a[1])));
  };
  commands_["config-text"] = [](const std::string& rest, const Context&) {
    const auto [id, more] = Head(rest);
    const auto [index, text] = Head(more);
    if (index.empty()) throw ScriptError{"usage: config-text ID INDEX TEXT"};
    CConfigKestrelINI::WriteIniStrEx(static_cast<int>(Number(id)), static_cast<int>(Number(index)), Unescape(text));
  };
  commands_["net"] = [this](const std::string& rest, const Context&) {
    const auto [what, more] = Head(rest);
    const Args a = Split(more);
    if (what == "delay" && (a.size() == 1 || a.size() == 2)) {
      const int ms = static_cast<int>(Number(a[0]));
      a.size() == 1 ? world_.SetDelay(ms) : world_.SetDeviceDelay(a[1], ms);
    } else if (what == "offline" && a.size() == 1) {
      hostref::net::SetStatus(a[0], kStatusOffline);
    } else if (what == "online" && a.size() == 1) {
      hostref::net::SetStatus(a[0], 0);
    } else if (what == "status" && a.size() == 2) {
      hostref::net::SetStatus(a[0], static_cast<int>(Number(a[1])));
    } else if (what == "reply" && !a.empty()) {
      const auto [dev, json] = Head(more);
      Json::Value value;
      if (!txt::ParseJson(json, value)) throw ScriptError{"not JSON: " + json};
      hostref::net::SetReply(dev, json);
    } else if (what == "raw" && !a.empty()) {
      // Any reply text at all, malformed ones included.
      const auto [dev, text] = Head(more);
      hostref::net::SetReply(dev, Unescape(text));
    } else {
      throw ScriptError{"usage: net delay MS [DEVIDNO] | net offline DEVIDNO | net online DEVIDNO | "
                        "net status DEVIDNO CODE | net reply DEVIDNO JSON | net raw DEVIDNO TEXT"};
    }
  };

  // ---- windows ----
  commands_["funpage"] = [this](const std::string&, const Context&) {
    std::string error;
    if (!world_.OpenFunctionPage(&error)) throw ScriptError{error};
  };
  commands_["device"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 2, "device DEVID TYPE");
    world_.Api().FunPageParam(static_cast<int32_t>(Number(a[1])), static_cast<int32_t>(Number(a[0])));
    plat::MessageLoop::Instance().RunPending();
  };
  commands_["window"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 1, "window TYPE");
    std::string error;
    if (!world_.OpenVehicleWindow(static_cast<int>(Number(a[0])), &error)) throw ScriptError{error};
  };
  commands_["msg"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 3, "msg MSG W L");
    if (!world_.CurrentVehicleWindow()) throw ScriptError{"no vehicle function window is current"};
    world_.Api().WindowMsg(world_.CurrentVehicleWindow(), static_cast<uint32_t>(Number(a[0])),
                           static_cast<uintptr_t>(Number(a[1])), static_cast<intptr_t>(Number(a[2])));
    plat::MessageLoop::Instance().RunPending();
  };
  commands_["callname"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 1, "callname DEVIDNO");
    if (world_.Api().CallName(a[0].c_str()) != 0) throw ScriptError{"the point query could not be queued"};
  };
  commands_["tree"] = [this](const std::string&, const Context&) {
    plat::Window* page = world_.FunctionPageWindow();
    auto* tree = page ? dynamic_cast<plat::TreeView*>(Control({page, 0}, std::to_string(kTreeControl))) : nullptr;
    if (!tree) throw ScriptError{"no function tree (funpage first)"};
    for (plat::HTREEITEM item : tree->Walk()) {
      const auto data = static_cast<intptr_t>(tree->GetItemData(item));
      std::string line = "TREE " + std::string(2 * tree->Depth(item), ' ') + tree->GetItemText(item);
      if (data >= 0) line += " [" + std::to_string(data) + "]";
      if (item == tree->GetSelectedItem()) line += " *";
      out::Line(line);
    }
  };
  commands_["show"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 1, "show TYPE");
    plat::Window* page = world_.FunctionPageWindow();
    auto* tree = page ? dynamic_cast<plat::TreeView*>(Control({page, 0}, std::to_string(kTreeControl))) : nullptr;
    if (!tree) throw ScriptError{"no function tree (funpage first)"};
    for (plat::HTREEITEM item : tree->Walk()) {
      if (static_cast<intptr_t>(tree->GetItemData(item)) == Number(a[0])) {
        tree->UserSelect(item);
        plat::MessageLoop::Instance().RunPending();
        return;
      }
    }
    throw ScriptError{"the tree has no function " + a[0]};
  };

  // ---- the current page (also inside a modal dialog) ----
  controlCommands_["text"] = [this](const std::string& rest, const Context& context) {
    const auto [id, text] = Head(rest);
    auto* edit = dynamic_cast<plat::Edit*>(Control(context, id));
    if (!edit) throw ScriptError{"control " + id + " is no edit"};
    if (!edit->UserType(Unescape(text))) throw ScriptError{"control " + id + " refused the text"};
  };
  controlCommands_["check"] = [this](const std::string& rest, const Context& context) {
    const Args a = Expect(rest, 2, "check ID on|off");
    auto* button = dynamic_cast<plat::Button*>(Control(context, a[0]));
    if (!button || button->Kind() == plat::ControlKind::PushButton) throw ScriptError{"control " + a[0] + " is no check box or radio"};
    const bool on = a[1] == "on";
    if (!on && a[1] != "off") throw ScriptError{"usage: check ID on|off"};
    if ((button->GetCheck() != 0) != on) {
      if (!on && button->Kind() == plat::ControlKind::RadioButton) throw ScriptError{"a radio button is cleared by checking another"};
      if (!button->Click()) throw ScriptError{"control " + a[0] + " is disabled"};
    }
  };
  controlCommands_["choose"] = [this](const std::string& rest, const Context& context) {
    const Args a = Expect(rest, 2, "choose ID INDEX");
    plat::Window* control = Control(context, a[0]);
    const int index = static_cast<int>(Number(a[1]));
    bool done = false;
    if (auto* combo = dynamic_cast<plat::ComboBox*>(control)) done = combo->UserSelect(index);
    else if (auto* list = dynamic_cast<plat::ListView*>(control)) done = index >= 0 && index < list->GetItemCount() && list->UserClick(index);
    else throw ScriptError{"control " + a[0] + " is no combo box or list"};
    if (!done) throw ScriptError{"control " + a[0] + " has no entry " + a[1]};
  };
  const auto setTime = [this](const std::string& rest, const Context& context, bool date) {
    const Args a = Expect(rest, 2, date ? "date ID YYYY-MM-DD" : "time ID hh:mm:ss");
    auto* picker = dynamic_cast<plat::DateTimePicker*>(Control(context, a[0]));
    if (!picker) throw ScriptError{"control " + a[0] + " is no date or time picker"};
    int x = 0, y = 0, z = 0;
    if (std::sscanf(a[1].c_str(), date ? "%d-%d-%d" : "%d:%d:%d", &x, &y, &z) != 3) throw ScriptError{"bad value " + a[1]};
    SYSTEMTIME st = picker->GetTime();
    if (date) st.wYear = static_cast<WORD>(x), st.wMonth = static_cast<WORD>(y), st.wDay = static_cast<WORD>(z);
    else st.wHour = static_cast<WORD>(x), st.wMinute = static_cast<WORD>(y), st.wSecond = static_cast<WORD>(z);
    if (!picker->UserSetTime(st)) throw ScriptError{"control " + a[0] + " is disabled"};
  };
  controlCommands_["date"] = [setTime](const std::string& rest, const Context& c) { setTime(rest, c, true); };
  controlCommands_["time"] = [setTime](const std::string& rest, const Context& c) { setTime(rest, c, false); };
  controlCommands_["click"] = [this](const std::string& rest, const Context& context) {
    const Args a = Expect(rest, 1, "click ID");
    auto* button = dynamic_cast<plat::Button*>(Control(context, a[0]));
    if (!button) throw ScriptError{"control " + a[0] + " is no button"};
    if (!button->Click()) throw ScriptError{"control " + a[0] + " is disabled"};
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
    if (!context.root) throw ScriptError{"no window is open"};
    for (plat::Control* c : ControlsBelow(*context.root)) {
      if (!c->GetParent()->IsWindowVisible()) continue;
      out::Line("CONTROL " + std::to_string(c->GetDlgCtrlID()) + " " + KindName(c->Kind()) + " \"" +
                out::EscapeControls(c->GetWindowText()) + "\" value=" + out::EscapeControls(ValueOf(*c)) +
                (c->IsWindowEnabled() ? " enabled" : " disabled") + (c->IsWindowVisible() ? " shown" : " hidden"));
    }
  };
  commands_["pick"] = [](const std::string& rest, const Context&) {
    const Args a = Split(rest);
    if (a.empty() || a == Args{"none"}) {
      hostref::SetPickerAnswer(std::nullopt);
      return;
    }
    std::vector<int> ids;
    for (const std::string& idno : a) {
      CDevFunc device = CVehicleBaseMgr::FindDvsDeviceByIDNO(idno.c_str());
      if (!device.IsValid()) throw ScriptError{"no device " + idno};
      ids.push_back(device.GetDevID());
    }
    hostref::SetPickerAnswer(ids);
  };
  commands_["modal"] = [this](const std::string& rest, const Context& context) {
    if (rest.empty()) throw ScriptError{"usage: modal COMMAND ... | modal next"};
    QueueModal(rest, context.line);
  };

  // ---- time ----
  commands_["run"] = [this](const std::string&, const Context&) {
    if (!world_.Run()) throw ScriptError{"still sending after a day of virtual time"};
  };
  commands_["advance"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 1, "advance MS");
    world_.Advance(static_cast<uint64_t>(Number(a[0])));
  };
  commands_["export"] = [this](const std::string& rest, const Context& context) {
    if (rest.empty()) throw ScriptError{"usage: export FILE"};
    auto* list = dynamic_cast<plat::ListView*>(Control(context, std::to_string(kResultList)));
    if (!list) throw ScriptError{"no result list here"};
    if (list->GetItemCount() == 0) throw ScriptError{"the result list is empty"};
    // As a user does it: the list's context menu, then the file name in the save dialog.
    const std::string file = Unescape(rest);
    plat::modal::Push([file](plat::Dialog& dialog) {
      if (auto* name = dialog.Item<plat::Edit>(kExportFileName)) name->SetWindowText(file);
      if (auto* save = dialog.Item<plat::Button>(IDOK)) save->Click();
    });
    plat::menu::PushChoice(kMenuExport);
    list->UserRightClick(-1);
  };
  commands_["quit"] = [this](const std::string&, const Context&) { quit_ = true; };
}
