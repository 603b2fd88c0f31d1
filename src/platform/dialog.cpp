#include "platform/dialog.h"

#include <deque>
#include <mutex>

#include "platform/loop.h"

namespace plat {

namespace templates {
namespace {
std::map<int, DialogTemplate>& Table() {
  static std::map<int, DialogTemplate> table;
  return table;
}
}  // namespace

void Register(const DialogTemplate& dialogTemplate) { Table()[dialogTemplate.id] = dialogTemplate; }

std::vector<const DialogTemplate*> All() {
  std::vector<const DialogTemplate*> all;
  for (const auto& [id, dialog] : Table()) all.push_back(&dialog);
  return all;
}

const DialogTemplate* Find(int id) {
  auto it = Table().find(id);
  return it == Table().end() ? nullptr : &it->second;
}
}  // namespace templates

namespace modal {
namespace {
std::deque<Action>& Queue() {
  static std::deque<Action> queue;
  return queue;
}
std::function<void(Dialog&)>& Observer() {
  static std::function<void(Dialog&)> observer;
  return observer;
}
}  // namespace

void Push(Action action) { Queue().push_back(std::move(action)); }
size_t Pending() { return Queue().size(); }
void Clear() { Queue().clear(); }
void SetObserver(std::function<void(Dialog&)> observer) { Observer() = std::move(observer); }
}  // namespace modal

Dialog::~Dialog() { DestroyWindow(); }

std::unique_ptr<Control> Dialog::MakeControl(const ControlEntry& entry) {
  switch (entry.kind) {
    case ControlKind::Static:
    case ControlKind::GroupBox:
      return std::make_unique<Static>(entry.kind);
    case ControlKind::PushButton:
    case ControlKind::CheckBox:
    case ControlKind::RadioButton: {
      auto button = std::make_unique<Button>(entry.kind);
      button->SetCheck(entry.styles & style::Checked ? 1 : 0);
      return button;
    }
    case ControlKind::Edit: {
      auto edit = std::make_unique<Edit>();
      edit->SetLimitText(static_cast<size_t>(entry.limit));
      if (entry.maxValue > entry.minValue) edit->SetRange(entry.minValue, entry.maxValue);
      return edit;
    }
    case ControlKind::ComboBox:
      return std::make_unique<ComboBox>();
    case ControlKind::ListView:
      return std::make_unique<ListView>();
    case ControlKind::TreeView:
      return std::make_unique<TreeView>();
    case ControlKind::DatePicker:
    case ControlKind::TimePicker:
      return std::make_unique<DateTimePicker>(entry.kind);
    case ControlKind::Spin: {
      auto spin = std::make_unique<Spin>();
      if (entry.maxValue > entry.minValue) {
        spin->SetRange32(static_cast<int>(entry.minValue), static_cast<int>(entry.maxValue));
      }
      return spin;
    }
  }
  return nullptr;
}

bool Dialog::CreateDlg(Window* parent) {
  const DialogTemplate* tmpl = templates::Find(templateId_);
  if (!tmpl) return false;
  if (!Create(parent, 0, tmpl->caption, RECT{0, 0, tmpl->size.cx, tmpl->size.cy}, false)) return false;
  controls_.clear();  // those of an earlier creation went with its window
  for (const ControlEntry& entry : tmpl->controls) {
    std::unique_ptr<Control> control = MakeControl(entry);
    control->SetStyle(entry.styles);
    control->Create(this, entry.id, entry.caption, entry.rect, !(entry.styles & style::Hidden));
    control->EnableWindow(!(entry.styles & style::Disabled));
    controls_.push_back(std::move(control));
  }
  for (const ControlEntry& entry : tmpl->controls) {
    if (entry.kind == ControlKind::Spin && entry.buddy) Item<Spin>(entry.id)->SetBuddy(Item<Edit>(entry.buddy));
  }
  OnInitDialog();
  return IsWindow();
}

int Dialog::DoModal(Window* owner) {
  if (!IsWindow() && !CreateDlg(owner)) return -1;
  modal_ = true;
  result_ = IDCANCEL;
  ShowWindow(SW_SHOW);
  if (auto& observer = modal::Observer()) observer(*this);
  if (!modal::Queue().empty()) {
    modal::Action action = std::move(modal::Queue().front());
    modal::Queue().pop_front();
    action(*this);
    MessageLoop::Instance().RunPending();
  }
  modal_ = false;
  const int result = result_;
  DestroyWindow();
  return result;
}

void Dialog::EndDialog(int result) {
  result_ = result;
  modal_ = false;
  NotifyChanged();
}

void Dialog::SetItemText(int id, const std::string& text) {
  if (Window* w = GetDlgItem(id)) w->SetWindowText(text);
}

std::string Dialog::GetItemText(int id) const {
  const Window* w = GetDlgItem(id);
  return w ? w->GetWindowText() : std::string();
}

bool Dialog::IsChecked(int id) const {
  const auto* button = Item<Button>(id);
  return button && button->GetCheck() != 0;
}

void Dialog::SetChecked(int id, bool checked) {
  if (auto* button = Item<Button>(id)) button->SetCheck(checked ? 1 : 0);
}

void Dialog::ShowItem(int id, bool show) {
  if (Window* w = GetDlgItem(id)) w->ShowWindow(show ? SW_SHOW : SW_HIDE);
}

void Dialog::EnableItem(int id, bool enable) {
  if (Window* w = GetDlgItem(id)) w->EnableWindow(enable);
}

bool Dialog::PostClick(int id) {
  Window* w = GetDlgItem(id);
  return PostMessage(WM_COMMAND, MAKEWPARAM(static_cast<UINT>(id), BN_CLICKED),
                     reinterpret_cast<LPARAM>(w ? w->GetSafeHwnd() : nullptr));
}

void Dialog::Bind(int id, UINT code, Handler handler) { handlers_[{id, code}] = std::move(handler); }

void Dialog::BindNotify(int id, UINT code, NotifyHandler handler) {
  notifyHandlers_[{id, code}] = std::move(handler);
}

void Dialog::OnCommand(UINT id, UINT code) {
  auto it = handlers_.find({static_cast<int>(id), code});
  if (it != handlers_.end()) {
    Handler handler = it->second;  // a handler may rebind or destroy
    handler();
    return;
  }
  if (code == BN_CLICKED && id == IDOK) OnOK();
  if (code == BN_CLICKED && id == IDCANCEL) OnCancel();
}

void Dialog::OnNotify(const NMITEM& nm) {
  auto it = notifyHandlers_.find({static_cast<int>(nm.idFrom), nm.code});
  if (it != notifyHandlers_.end()) {
    NotifyHandler handler = it->second;
    handler(nm);
  }
}

}  // namespace plat
