// What a person sees of the platform's modal moments: a modal dialog of the
// plug-in (editors, pickers, confirmations, the export's save dialog) as a
// real dialog with a nested event loop, a popup menu as a real menu, a tip as
// a message box, and the host's device picker as the fleet with check boxes.
#pragma once

#include <QDialog>
#include <QPointer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "views.h"

namespace plat {
class Dialog;
}
namespace hostref {
struct Tip;
}

namespace desk {

// A plug-in dialog run modally: shown from its model, closed when the model ends.
class ModalHost : public QDialog {
 public:
  ModalHost(plat::Dialog& model, ViewRegistry& views, QWidget* parent);
  ~ModalHost() override;
  plat::Dialog* Model() const { return model_; }
  // Closes the dialog when its model has ended.
  void Check();

 protected:
  // Escape and the window's close button are the dialog's cancel.
  void reject() override;

 private:
  plat::Dialog* model_;
  ViewRegistry& views_;
};

class Dialogs {
 public:
  explicit Dialogs(ViewRegistry& views);
  ~Dialogs();
  // Closes the modal dialogs whose models ended (after every pump).
  void Check();
  // Where tips go; a message box unless replaced (tests record them).
  void SetTipPresenter(std::function<void(const hostref::Tip&)> presenter);
  std::vector<ModalHost*> OpenModals() const;

 private:
  void RunModal(plat::Dialog& dialog);
  ViewRegistry& views_;
  std::vector<QPointer<ModalHost>> open_;
  // Shared with the tip sink, which may outlive the desk on a network thread.
  std::shared_ptr<std::function<void(const hostref::Tip&)>> presenter_;
};

// The device picker: the fleet's vehicles and devices with check boxes.
// Returns the checked device ids, or nullopt when cancelled.
std::optional<std::vector<int>> PickDevices(QWidget* parent);

}  // namespace desk
