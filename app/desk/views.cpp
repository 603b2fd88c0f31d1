#include "views.h"

#include <QEvent>

#include "platform/controls.h"
#include "platform/dialog.h"

namespace desk {

// ---- View ---------------------------------------------------------------------

View::View(plat::Window& model, QWidget* widget) : model_(&model), widget_(widget) {
  widget->installEventFilter(this);
}

View::~View() { Detach(); }

void View::Detach() {
  model_ = nullptr;
  if (widget_) {
    widget_->hide();
    widget_->deleteLater();
    widget_ = nullptr;
  }
}

void View::Sync(bool root) {
  if (!model_ || !widget_) return;
  syncing_ = true;
  if (!root) widget_->setGeometry(Placement(*model_));
  widget_->setEnabled(model_->IsWindowEnabled());
  SyncKind();
  widget_->setVisible(model_->IsShown());
  if (plat::Window::GetFocus() == model_ && !widget_->hasFocus() && widget_->isVisible()) widget_->setFocus();
  syncing_ = false;
}

bool View::eventFilter(QObject* watched, QEvent* event) {
  // A person focusing a control is what the system's own click does: the model takes the focus.
  if (event->type() == QEvent::FocusIn && watched == widget_ && model_ && !syncing_) model_->SetFocus();
  return QObject::eventFilter(watched, event);
}

namespace {
constexpr int kComboHeight = 24;  // a closed combo box, before scaling
}  // namespace

QRect Placement(const plat::Window& model) {
  RECT r = model.GetRect();
  const auto* dialog = dynamic_cast<const plat::Dialog*>(model.GetParent());
  const plat::DialogTemplate* tmpl = dialog ? plat::templates::Find(dialog->TemplateId()) : nullptr;
  if (tmpl && dynamic_cast<const plat::Control*>(&model)) {
    for (const plat::ControlEntry& entry : tmpl->controls) {
      if (entry.id != model.GetDlgCtrlID()) continue;
      if (entry.rect == r) r = {plat::s(r.left), plat::t(r.top), plat::s(r.right), plat::t(r.bottom)};
      break;
    }
  }
  int height = std::max(0, r.Height());
  // A combo box's rectangle reaches down over its open list, as the system's
  // templates give it; closed, it is one line high.
  const auto* control = dynamic_cast<const plat::Control*>(&model);
  if (control && control->Kind() == plat::ControlKind::ComboBox) height = std::min(height, plat::t(kComboHeight));
  return QRect(r.left, r.top, std::max(0, r.Width()), height);
}

// ---- ViewRegistry ---------------------------------------------------------------

ViewRegistry::ViewRegistry(std::function<void()> wake) : wake_(std::move(wake)) {
  plat::SetChangeObserver([this](plat::Window& window, plat::Change change) { OnChange(window, change); });
}

ViewRegistry::~ViewRegistry() {
  plat::SetChangeObserver(nullptr);
  views_.clear();
}

void ViewRegistry::OnChange(plat::Window& window, plat::Change change) {
  switch (change) {
    case plat::Change::Created:
      created_.push_back(&window);
      break;
    case plat::Change::Destroyed: {
      // Only the address is used: the window's derived parts may be gone.
      std::erase(created_, &window);
      dirty_.erase(&window);
      roots_.erase(&window);
      views_.erase(&window);
      return;
    }
    case plat::Change::Changed:
      if (!views_.count(&window)) return;
      dirty_.insert(&window);
      break;
  }
  if (wake_) wake_();
}

View* ViewRegistry::Find(const plat::Window* model) const {
  auto it = views_.find(model);
  return it == views_.end() ? nullptr : it->second.get();
}

View* ViewRegistry::Build(plat::Window& model, QWidget* parent, bool root) {
  std::unique_ptr<View> view = MakeView(model, parent);
  View* raw = view.get();
  views_[&model] = std::move(view);
  if (root) roots_.insert(&model);
  for (plat::Window* child : model.Children()) {
    if (!Find(child)) Build(*child, raw->Widget(), false);
  }
  raw->Sync(root);
  return raw;
}

QWidget* ViewRegistry::Show(plat::Window& model, QWidget* parent) {
  Forget(model);
  return Build(model, parent, true)->Widget();
}

void ViewRegistry::Forget(plat::Window& model) {
  for (plat::Window* child : model.Children()) Forget(*child);
  roots_.erase(&model);
  dirty_.erase(&model);
  views_.erase(&model);
}

void ViewRegistry::Flush() {
  std::vector<plat::Window*> created;
  created.swap(created_);
  for (plat::Window* window : created) {
    if (Find(window) || !window->IsWindow()) continue;
    View* parent = Find(window->GetParent());
    if (parent && parent->Widget()) Build(*window, parent->Widget(), false);
  }
  std::unordered_set<const plat::Window*> dirty;
  dirty.swap(dirty_);
  for (const plat::Window* window : dirty) {
    if (View* view = Find(window)) view->Sync(roots_.count(window) > 0);
  }
}

}  // namespace desk
