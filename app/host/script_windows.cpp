// Commands about the plug-in's windows: creating, choosing, sizing and
// destroying them, host messages, point queries and the function tree.
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "output.h"
#include "platform/controls.h"
#include "platform/loop.h"
#include "script.h"
#include "script_args.h"
#include "script_controls.h"
#include "text/encoding.h"

#include <limits>

using namespace script;

namespace {
constexpr int kTreeControl = 4460;
constexpr uint32_t kMsgSetContext = 1;
constexpr uint32_t kMsgAlarmText = 4;

// The fleet's alarm records chosen by index (all of them without an index), end to end.
std::string ChosenAlarms(const Args& indexes) {
  const std::vector<std::vector<uint8_t>> alarms = hostref::FleetAlarms();
  if (alarms.empty()) throw Error{"the fleet has no alarms (give the fleet an \"alarms\" array, see fleet.md)"};
  std::vector<size_t> chosen;
  for (const std::string& word : indexes) {
    const long long index = Number(word, 0, std::numeric_limits<int32_t>::max());
    if (static_cast<size_t>(index) >= alarms.size()) {
      throw Error{"alarm " + word + " is not in the fleet: its alarms are 0 to " + std::to_string(alarms.size() - 1) +
                  " (`msg alarms` without an index passes them all)"};
    }
    chosen.push_back(static_cast<size_t>(index));
  }
  if (indexes.empty()) {
    for (size_t i = 0; i < alarms.size(); ++i) chosen.push_back(i);
  }
  std::string bytes;
  for (size_t i : chosen) bytes.append(alarms[i].begin(), alarms[i].end());
  return bytes;
}

// The window a page was put in: a visible dialog (not a control) among the window's children.
bool HasPage(plat::Window& window) {
  for (plat::Window* child : window.Children()) {
    if (!dynamic_cast<plat::Control*>(child) && child->IsWindowVisible()) return true;
  }
  return false;
}
}  // namespace

plat::Window* ScriptRunner::FunctionTree() const {
  plat::Window* page = world_.FunctionPageWindow();
  if (!page) throw Error{"no function page window (`funpage` first)"};
  for (plat::Control* control : ControlsBelow(*page)) {
    if (control->GetDlgCtrlID() == kTreeControl) return control;
  }
  throw Error{"the function page window has no tree"};
}

void ScriptRunner::RegisterWindows() {
  commands_["funpage"] = [this](const std::string& rest, const Context&) {
    if (!rest.empty()) throw Error{"usage: funpage"};
    std::string error;
    if (!world_.OpenFunctionPage(&error)) throw Error{error};
  };
  commands_["device"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 2, "device DEVID TYPE");
    const int device = Number<int32_t>(a[0]);
    const int type = Number<int32_t>(a[1]);
    if (device != 0 && !CVehicleBaseMgr::FindDvsDeviceByID(device).IsValid()) {
      throw Error{"the fleet has no device id " + a[0] + " (ids start at 1; device 0 is none)"};
    }
    world_.Api().FunPageParam(type, device);
    plat::MessageLoop::Instance().RunPending();
    // With the function page window open, the function must have been selected in its tree.
    if (device == 0 || !world_.FunctionPageWindow()) return;
    auto* tree = dynamic_cast<plat::TreeView*>(FunctionTree());
    if (tree && (!tree->GetSelectedItem() || static_cast<intptr_t>(tree->GetItemData(tree->GetSelectedItem())) != type)) {
      throw Error{"function type " + a[1] + " has no page for device " + a[0] + " (`tree` lists its functions)"};
    }
  };
  commands_["window"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 1, "window TYPE");
    std::string error;
    if (!world_.OpenVehicleWindow(Number<int32_t>(a[0]), &error)) throw Error{error};
    if (!HasPage(*world_.Current())) {
      throw Error{"function type " + a[0] + " has no page: the window is empty (`destroy` closes it)"};
    }
  };
  commands_["destroy"] = [this](const std::string& rest, const Context&) {
    if (!rest.empty()) throw Error{"usage: destroy"};
    const auto [name, result] = world_.DestroyCurrent();
    if (!name) throw Error{"no window is current (`funpage` or `window TYPE` first)"};
    out::Line(std::string("DESTROYED ") + name + " " + std::to_string(result));
    plat::MessageLoop::Instance().RunPending();
  };
  commands_["size"] = [this](const std::string& rest, const Context&) {
    const Args a = Split(rest);
    if (a.size() > 1) throw Error{"usage: size [TYPE]"};
    int32_t width = 0, height = 0;
    world_.Api().GetFunWindowSize(&width, &height);
    out::Line("SIZE funpage " + std::to_string(width) + " " + std::to_string(height));
    if (a.empty()) return;
    const int32_t type = Number<int32_t>(a[0]);
    out::Line("SIZE " + a[0] + " " + std::to_string(world_.Api().GetWindowWidth(&type)) + " " +
              std::to_string(world_.Api().GetWindowHeight(&type)));
  };
  commands_["msg"] = [this](const std::string& rest, const Context&) {
    void* window = world_.CurrentVehicleWindow();
    const auto [what, more] = Head(rest);
    uint32_t message = 0;
    uintptr_t w = 0;
    intptr_t l = 0;
    if (what == "context") {
      const auto [count, text] = Head(more);
      if (text.empty()) throw Error{"usage: msg context COUNT TEXT"};
      message = kMsgSetContext;
      l = Number<int32_t>(count);
      w = reinterpret_cast<uintptr_t>(world_.KeepText(txt::Utf8ToGbk(Unescape(text))).c_str());
    } else if (what == "alarm-text") {
      message = kMsgAlarmText;
      w = reinterpret_cast<uintptr_t>(world_.KeepText(txt::Utf8ToUtf16(Unescape(more))).c_str());
    } else if (what == "alarms") {
      const Args indexes = Split(more);
      const std::string records = ChosenAlarms(indexes);
      message = kMsgSetContext;
      l = static_cast<intptr_t>(records.size() / sizeof(_GPSVehicleAlarm));
      w = reinterpret_cast<uintptr_t>(world_.KeepText(records).data());
    } else {
      const Args a = Expect(rest, 3, "msg MSG W L | msg context COUNT TEXT | msg alarm-text TEXT | msg alarms [INDEX ...]");
      message = Number<uint32_t>(a[0]);
      w = Number<uint32_t>(a[1]);
      l = Number<int32_t>(a[2]);
    }
    if (!window) throw Error{"no vehicle function window is current (`window TYPE` first)"};
    world_.Api().WindowMsg(window, message, w, l);
    plat::MessageLoop::Instance().RunPending();
  };
  commands_["callname"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 1, "callname DEVIDNO");
    if (world_.Api().CallName(FleetDevice(a[0]).c_str()) != 0) throw Error{"the point query could not be queued"};
  };
  commands_["tree"] = [this](const std::string& rest, const Context&) {
    auto* tree = dynamic_cast<plat::TreeView*>(FunctionTree());
    const std::vector<plat::HTREEITEM> items = tree ? tree->Walk() : std::vector<plat::HTREEITEM>();
    if (items.empty()) throw Error{"the function tree is empty: choose a device first (`device DEVID TYPE`)"};
    const Args a = Split(rest);
    if (!a.empty()) {
      if (a.size() != 2 || a[0] != "click") throw Error{"usage: tree | tree click N"};
      const size_t n = static_cast<size_t>(Number(a[1], 1, static_cast<long long>(items.size())));
      tree->UserSelect(items[n - 1]);
      plat::MessageLoop::Instance().RunPending();
      return;
    }
    for (plat::HTREEITEM item : items) {
      const auto data = static_cast<intptr_t>(tree->GetItemData(item));
      std::string line = "TREE " + std::string(2 * tree->Depth(item), ' ') + tree->GetItemText(item);
      if (data >= 0) line += " [" + std::to_string(data) + "]";
      if (item == tree->GetSelectedItem()) line += " *";
      out::Line(line);
    }
  };
  commands_["show"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 1, "show TYPE");
    auto* tree = dynamic_cast<plat::TreeView*>(FunctionTree());
    const std::vector<plat::HTREEITEM> items = tree ? tree->Walk() : std::vector<plat::HTREEITEM>();
    if (items.empty()) throw Error{"the function tree is empty: choose a device first (`device DEVID TYPE`)"};
    const int type = Number<int32_t>(a[0]);
    for (plat::HTREEITEM item : items) {
      if (static_cast<intptr_t>(tree->GetItemData(item)) == type) {
        tree->UserSelect(item);
        plat::MessageLoop::Instance().RunPending();
        return;
      }
    }
    throw Error{"the tree has no function " + a[0] + " (`tree` lists them)"};
  };
}
