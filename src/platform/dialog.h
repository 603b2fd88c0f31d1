// Dialogs made from declarative templates, and modal dialogs.
//
// A template is a table beside its dialog: the dialog's size and, in display
// order, each control's id, kind, default caption, rectangle, styles, limits
// and layout group. Dialog::Create makes the controls from it, then runs
// OnInitDialog. Handlers are bound once, by control id and notification code.
//
// A modal dialog (DoModal) runs the next action queued with modal::Push: the
// action is what the user does inside it (type, click OK ...). Without an
// action, or when the action does not end the dialog, it ends with IDCANCEL.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/controls.h"

namespace plat {

struct ControlEntry {
  int id = 0;
  ControlKind kind = ControlKind::Static;
  std::string caption;  // default caption; pages overwrite it from the language table
  RECT rect{};
  uint32_t styles = 0;  // style:: flags
  int limit = 0;        // edit: character limit
  int64_t minValue = 0;  // bounded number edit / spin range (when maxValue > minValue)
  int64_t maxValue = 0;
  int buddy = 0;        // spin: the edit it drives
  int layoutGroup = 0;  // controls of one row or block of a form view
  int textId = 0;       // the text the dialog shows instead of the caption (0: the caption stays)
};

struct DialogTemplate {
  int id = 0;
  std::string caption;
  SIZE size{};
  std::vector<ControlEntry> controls;
};

// Templates by id; each dialog registers its own template beside its code.
namespace templates {
void Register(const DialogTemplate& dialogTemplate);
const DialogTemplate* Find(int id);
// Every registered template, by id.
std::vector<const DialogTemplate*> All();
// Registers at static initialisation: `static plat::templates::Registration reg{kTemplate};`
struct Registration {
  explicit Registration(const DialogTemplate& dialogTemplate) { Register(dialogTemplate); }
};
}  // namespace templates

class Dialog : public Window {
 public:
  explicit Dialog(int templateId) : templateId_(templateId) {}
  ~Dialog() override;

  int TemplateId() const { return templateId_; }
  // Makes the dialog and its controls from the template, hidden, then runs
  // OnInitDialog. False when the template is unknown or the parent is gone.
  bool CreateDlg(Window* parent);
  // Runs the dialog modally (see the header comment); returns the end result.
  int DoModal(Window* owner);
  void EndDialog(int result);
  bool IsModalRunning() const { return modal_; }

  // Typed access to a control; null when absent or of another kind.
  template <class T>
  T* Item(int id) const {
    return dynamic_cast<T*>(GetDlgItem(id));
  }
  bool HasItem(int id) const { return GetDlgItem(id) != nullptr; }
  // Shorthands over the controls, safe when the control is absent.
  void SetItemText(int id, const std::string& text);
  std::string GetItemText(int id) const;
  bool IsChecked(int id) const;
  void SetChecked(int id, bool checked);
  void ShowItem(int id, bool show);
  void EnableItem(int id, bool enable);
  // Posts the click of a button to this dialog, as a user's click would arrive.
  bool PostClick(int id);

  using Handler = std::function<void()>;
  using NotifyHandler = std::function<void(const NMITEM&)>;
  void Bind(int id, UINT code, Handler handler);
  void BindNotify(int id, UINT code, NotifyHandler handler);

 protected:
  virtual BOOL OnInitDialog() { return TRUE; }
  // OK and Cancel end a modal dialog.
  virtual void OnOK() { EndDialog(IDOK); }
  virtual void OnCancel() { EndDialog(IDCANCEL); }
  void OnCommand(UINT id, UINT code) override;
  void OnNotify(const NMITEM& nm) override;

 protected:
  // Makes the control of a template entry; a dialog that uses a widget class
  // of its own for a control (a list that colours its rows) overrides it.
  virtual std::unique_ptr<Control> MakeControl(const ControlEntry& entry);

 private:
  int templateId_;
  std::vector<std::unique_ptr<Control>> controls_;
  std::map<std::pair<int, UINT>, Handler> handlers_;
  std::map<std::pair<int, UINT>, NotifyHandler> notifyHandlers_;
  bool modal_ = false;
  int result_ = IDCANCEL;
};

namespace modal {
// What the user does in the next modal dialog that opens.
using Action = std::function<void(Dialog&)>;
void Push(Action action);
size_t Pending();
void Clear();
// Called with every modal dialog that opens, before its action (the reference host logs them).
void SetObserver(std::function<void(Dialog&)> observer);
}  // namespace modal

}  // namespace plat
