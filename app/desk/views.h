// Views of the platform's windows: one Qt widget per model window, in the
// same parent/child tree. A view follows its model (caption, value, shown,
// enabled, focus, items, rectangle) and turns a person's action into the same
// call a script makes (Button::Click, Edit::UserType, ComboBox::UserSelect ...).
// Nothing here knows any page: every control is shown by its kind.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/window.h"

namespace desk {

class ViewRegistry;

class View : public QObject {
 public:
  View(plat::Window& model, QWidget* widget);
  ~View() override;
  plat::Window* Model() const { return model_; }
  QWidget* Widget() const { return widget_; }
  // Reads the model again: the common state, then the kind's own.
  void Sync(bool root);
  // The model is gone: the widget goes too, and user actions reach nothing.
  void Detach();

 protected:
  virtual void SyncKind() {}
  // True while the view writes its widget, so the widget's signals are not taken for a user's action.
  bool Syncing() const { return syncing_; }
  bool eventFilter(QObject* watched, QEvent* event) override;
  plat::Window* model_;

 private:
  QPointer<QWidget> widget_;
  bool syncing_ = false;
};

// The rectangle a view gives its widget: the model's, with a control still at
// its template rectangle scaled by s(n) across and t(n) down.
QRect Placement(const plat::Window& model);

// Makes the view of one model window (its children are not looked at).
std::unique_ptr<View> MakeView(plat::Window& model, QWidget* parent);

class ViewRegistry {
 public:
  // Listens to every model change; wake asks for a Flush soon.
  explicit ViewRegistry(std::function<void()> wake);
  ~ViewRegistry();
  ViewRegistry(const ViewRegistry&) = delete;
  ViewRegistry& operator=(const ViewRegistry&) = delete;

  // Shows a model window and everything below it in a parent widget; the
  // root's own rectangle is left to the caller.
  QWidget* Show(plat::Window& model, QWidget* parent);
  // Stops showing a model window and everything below it.
  void Forget(plat::Window& model);
  View* Find(const plat::Window* model) const;
  // Makes the views of windows created since, and syncs the changed ones.
  void Flush();
  size_t ViewCount() const { return views_.size(); }

 private:
  void OnChange(plat::Window& window, plat::Change change);
  View* Build(plat::Window& model, QWidget* parent, bool root);

  std::function<void()> wake_;
  std::unordered_map<const plat::Window*, std::unique_ptr<View>> views_;
  std::unordered_set<const plat::Window*> roots_;
  std::vector<plat::Window*> created_;
  std::unordered_set<const plat::Window*> dirty_;
};

}  // namespace desk
