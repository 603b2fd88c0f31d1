#include "script_controls.h"

#include <deque>

namespace script {

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

}  // namespace script
