#include "dialogs.h"

#include <QApplication>
#include <QCursor>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>
#include <QThread>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "fleet.h"
#include "host/ref/hostref.h"
#include "platform/dialog.h"
#include "platform/menu.h"

namespace desk {
namespace {
constexpr int kPickerWidth = 360, kPickerHeight = 480;

QWidget* ActiveWindow() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return QApplication::activeWindow();
}

void ShowTipBox(const hostref::Tip& tip) {
  QMessageBox box(QMessageBox::Information, QString::fromStdString(tip.title.empty() ? "fleetcmd" : tip.title),
                  QString::fromStdString(tip.text), QMessageBox::Ok, ActiveWindow());
  box.setObjectName(QStringLiteral("tip"));
  box.exec();
}

// A popup menu of the plug-in as a real menu at the cursor; the choice goes
// back the way a script's choice does.
void ShowMenu(const std::vector<plat::menu::Entry>& entries) {
  QMenu menu(ActiveWindow());
  menu.setObjectName(QStringLiteral("popup"));
  for (const plat::menu::Entry& entry : entries) {
    QAction* action = menu.addAction(QString::fromStdString(entry.text));
    action->setEnabled(entry.enabled);
    action->setData(entry.command);
  }
  if (QAction* chosen = menu.exec(QCursor::pos())) plat::menu::PushChoice(chosen->data().toUInt());
}
}  // namespace

// ---- ModalHost ------------------------------------------------------------------

ModalHost::ModalHost(plat::Dialog& model, ViewRegistry& views, QWidget* parent)
    : QDialog(parent), model_(&model), views_(views) {
  setObjectName(QStringLiteral("modal"));
  setWindowTitle(QString::fromStdString(model.GetWindowText()));
  QWidget* content = views_.Show(model, this);
  const RECT r = model.GetRect();
  content->setGeometry(0, 0, r.Width(), r.Height());
  setFixedSize(r.Width(), r.Height());
}

ModalHost::~ModalHost() {
  if (model_ && model_->IsWindow()) views_.Forget(*model_);
}

void ModalHost::Check() {
  if (!model_) return;
  if (!model_->IsModalRunning() && isVisible()) {
    done(QDialog::Rejected);
    return;
  }
  // A dialog that sizes itself (an editor growing to its content) takes its frame along.
  const RECT r = model_->GetRect();
  if (size() != QSize(r.Width(), r.Height())) {
    setFixedSize(r.Width(), r.Height());
    if (View* view = views_.Find(model_)) view->Widget()->setGeometry(0, 0, r.Width(), r.Height());
  }
}

void ModalHost::reject() {
  if (model_ && model_->IsModalRunning()) {
    model_->SendMessage(WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    if (model_->IsModalRunning()) return;  // the dialog did not let the user go
  }
  QDialog::reject();
}

// ---- Dialogs ------------------------------------------------------------------

Dialogs::Dialogs(ViewRegistry& views)
    : views_(views), presenter_(std::make_shared<std::function<void(const hostref::Tip&)>>(&ShowTipBox)) {
  plat::modal::SetObserver([this](plat::Dialog& dialog) { RunModal(dialog); });
  plat::menu::SetObserver(&ShowMenu);
  hostref::SetTipSink([presenter = std::weak_ptr(presenter_)](const hostref::Tip& tip) {
    // A tip from a network thread waits for the UI thread (and is dropped when the desk is gone by then).
    if (QThread::currentThread() != qApp->thread()) {
      QMetaObject::invokeMethod(qApp, [presenter, tip] {
        if (auto show = presenter.lock()) (*show)(tip);
      }, Qt::QueuedConnection);
      return;
    }
    if (auto show = presenter.lock()) (*show)(tip);
  });
  hostref::SetPickerFallback([] { return PickDevices(ActiveWindow()); });
}

Dialogs::~Dialogs() {
  plat::modal::SetObserver(nullptr);
  plat::menu::SetObserver(nullptr);
  hostref::SetTipSink(nullptr);
  hostref::SetPickerFallback(nullptr);
}

void Dialogs::SetTipPresenter(std::function<void(const hostref::Tip&)> presenter) {
  *presenter_ = presenter ? std::move(presenter) : std::function<void(const hostref::Tip&)>(&ShowTipBox);
}

void Dialogs::RunModal(plat::Dialog& dialog) {
  // A queued action (a script's) answers the dialog instead of a person.
  if (plat::modal::Pending() > 0) return;
  ModalHost host(dialog, views_, ActiveWindow());
  open_.push_back(&host);
  host.exec();
  std::erase(open_, QPointer<ModalHost>(&host));
  // Closed some other way than by its model: the dialog is cancelled.
  if (dialog.IsModalRunning()) dialog.EndDialog(IDCANCEL);
}

void Dialogs::Check() {
  for (const QPointer<ModalHost>& host : std::vector<QPointer<ModalHost>>(open_)) {
    if (host) host->Check();
  }
}

std::vector<ModalHost*> Dialogs::OpenModals() const {
  std::vector<ModalHost*> hosts;
  for (const QPointer<ModalHost>& host : open_) {
    if (host) hosts.push_back(host);
  }
  return hosts;
}

// ---- the device picker ------------------------------------------------------------

std::optional<std::vector<int>> PickDevices(QWidget* parent) {
  QDialog dialog(parent);
  dialog.setObjectName(QStringLiteral("picker"));
  dialog.setWindowTitle(QObject::tr("Devices"));
  dialog.resize(kPickerWidth, kPickerHeight);
  auto* layout = new QVBoxLayout(&dialog);
  auto* tree = new QTreeWidget(&dialog);
  tree->setObjectName(QStringLiteral("fleet"));
  tree->setHeaderLabels({QObject::tr("Vehicle / device"), QObject::tr("State")});
  for (const FleetVehicle& vehicle : ReadFleet()) {
    auto* top = new QTreeWidgetItem(tree, {QString::fromStdString(vehicle.name)});
    top->setFlags(top->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate);
    top->setCheckState(0, Qt::Unchecked);
    for (const FleetDevice& device : vehicle.devices) {
      auto* item = new QTreeWidgetItem(top, {QString::fromStdString(device.idno),
                                             device.online ? QObject::tr("online") : QObject::tr("offline")});
      item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
      item->setCheckState(0, Qt::Unchecked);
      item->setData(0, Qt::UserRole, device.id);
    }
  }
  tree->expandAll();
  tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  layout->addWidget(tree);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  layout->addWidget(buttons);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  std::vector<int> ids;
  for (int v = 0; v < tree->topLevelItemCount(); ++v) {
    QTreeWidgetItem* vehicle = tree->topLevelItem(v);
    for (int d = 0; d < vehicle->childCount(); ++d) {
      if (vehicle->child(d)->checkState(0) == Qt::Checked) ids.push_back(vehicle->child(d)->data(0, Qt::UserRole).toInt());
    }
  }
  return ids;
}

}  // namespace desk
