#include "main_window.h"

#include <QActionGroup>
#include <QApplication>
#include <QFontDatabase>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QHeaderView>
#include <QInputDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeWidget>

#include "fleet.h"
#include "host/ref/hostref.h"

namespace desk {
namespace {
constexpr int kFleetWidth = 260;
constexpr int kFontPixels = 12;
constexpr int kIdRole = Qt::UserRole, kIdnoRole = Qt::UserRole + 1;

struct Language {
  const char* name;
  const char* file;
};
constexpr Language kLanguages[] = {{"English", FC_DATA_DIR "/lang/en.ini"}, {"中文", FC_DATA_DIR "/lang/zh-CN.ini"}};

// A vehicle function window's frame: resizing it fits the plug-in's window
// again, closing it closes the plug-in's window.
class VehicleFrame : public QWidget {
 public:
  VehicleFrame(std::function<void(QSize)> onResize, std::function<void()> onClose)
      : QWidget(nullptr, Qt::Window), onResize_(std::move(onResize)), onClose_(std::move(onClose)) {}

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QWidget::resizeEvent(event);
    if (onResize_) onResize_(size());
  }
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    onResize_ = nullptr;
    if (auto close = std::exchange(onClose_, nullptr)) close();
  }

 private:
  std::function<void(QSize)> onResize_;
  std::function<void()> onClose_;
};
}  // namespace

void UseDeskFont(QApplication& app) {
  QFont font = app.font();
  for (const char* family : {"WenQuanYi Micro Hei", "Noto Sans CJK SC", "DejaVu Sans"}) {
    if (QFontDatabase::families().contains(QString::fromUtf8(family))) {
      font = QFont(QString::fromUtf8(family));
      break;
    }
  }
  font.setPixelSize(kFontPixels);
  app.setFont(font);
}

MainWindow::MainWindow(DeskWorld& world, QWidget* parent)
    : QMainWindow(parent), world_(world), views_([this] { loop_.Wake(); }), dialogs_(views_) {
  setObjectName(QStringLiteral("desk"));
  setWindowTitle(QStringLiteral("fleetcmd-desk"));
  loop_.SetAfterPump([this] {
    views_.Flush();
    dialogs_.Check();
  });

  auto* split = new QSplitter(this);
  fleet_ = new QTreeWidget(split);
  fleet_->setObjectName(QStringLiteral("fleet"));
  fleet_->setHeaderLabels({tr("Vehicle / device"), tr("State")});
  fleet_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  fleet_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(fleet_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { OnFleetItem(item); });
  connect(fleet_, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) { OnFleetMenu(at); });
  pagePanel_ = new QWidget(split);
  pagePanel_->setObjectName(QStringLiteral("pages"));
  int32_t width = 0, height = 0;
  world_.Api().GetFunWindowSize(&width, &height);
  pagePanel_->setMinimumSize(width, height);
  split->addWidget(fleet_);
  split->addWidget(pagePanel_);
  split->setStretchFactor(1, 1);
  split->setSizes({kFleetWidth, width});
  setCentralWidget(split);

  auto* dock = new QDockWidget(tr("Messages"), this);
  dock->setObjectName(QStringLiteral("messages"));
  log_ = new QPlainTextEdit(dock);
  log_->setObjectName(QStringLiteral("messages"));
  log_->setReadOnly(true);
  log_->setMaximumBlockCount(1000);
  dock->setWidget(log_);
  addDockWidget(Qt::BottomDockWidgetArea, dock);
  dock->hide();

  world_.SetPointQueryObserver([this](int result, const std::string& record) {
    const QString line = tr("Point query answer %1: %2").arg(result).arg(QString::fromStdString(record));
    QMetaObject::invokeMethod(this, [this, line] { Log(line); }, Qt::QueuedConnection);
  });
  world_.SetVehicleWindowObserver([this](VehicleWindow* vehicle, bool opened) {
    if (!opened) {
      auto it = vehicleWidgets_.find(vehicle);
      if (it != vehicleWidgets_.end()) {
        views_.Forget(*vehicle->frame);
        it->second->deleteLater();
        vehicleWidgets_.erase(it);
      }
      return;
    }
    auto* frame = new VehicleFrame(
        [this, vehicle](QSize size) {
          world_.ResizeVehicleWindow(vehicle, size.width(), size.height());
          if (QWidget* content = WidgetOf(vehicle->frame.get())) content->setGeometry(0, 0, size.width(), size.height());
          views_.Flush();
        },
        [this, vehicle] { world_.CloseVehicleWindow(vehicle); });
    frame->setObjectName(QStringLiteral("vehicle"));
    frame->setWindowTitle(tr("Vehicle function window %1").arg(vehicle->functionType));
    const RECT r = vehicle->frame->GetRect();
    frame->resize(r.Width(), r.Height());
    views_.Show(*vehicle->frame, frame)->setGeometry(0, 0, r.Width(), r.Height());
    vehicleWidgets_[vehicle] = frame;
    frame->show();
  });

  BuildMenus();
  FillFleet();
  ShowFunctionPage();
  resize(kFleetWidth + width + 20, height + 60);
  loop_.Wake();
}

MainWindow::~MainWindow() {
  world_.SetPointQueryObserver(nullptr);
  world_.SetVehicleWindowObserver(nullptr);
  for (auto& [vehicle, widget] : vehicleWidgets_) delete widget;
}

QWidget* MainWindow::WidgetOf(const plat::Window* model) const {
  View* view = views_.Find(model);
  return view ? view->Widget() : nullptr;
}

QWidget* MainWindow::VehicleWidget(const VehicleWindow* window) const {
  auto it = vehicleWidgets_.find(window);
  return it == vehicleWidgets_.end() ? nullptr : it->second;
}

void MainWindow::ShowFunctionPage() {
  pageContent_ = views_.Show(world_.Main(), pagePanel_);
  FitPages();
  pageContent_->show();
}

void MainWindow::FitPages() {
  if (!pageContent_) return;
  const QSize size = pagePanel_->size();
  pageContent_->setGeometry(0, 0, size.width(), size.height());
  world_.Main().MoveWindow({0, 0, size.width(), size.height()});
  world_.Api().MoveFunPageWindow();
  views_.Flush();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  // The splitter lays its panes out after this event: fit the pages once it has.
  QMetaObject::invokeMethod(this, [this] { FitPages(); }, Qt::QueuedConnection);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  for (auto& [vehicle, widget] : std::map(vehicleWidgets_)) widget->close();
  QMainWindow::closeEvent(event);
}

void MainWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(tr("&Fleet"));
  file->addAction(tr("&Open fleet file..."), this, [this] {
    const QString path = QFileDialog::getOpenFileName(this, tr("Fleet file"), {}, tr("Fleet (*.json);;All files (*)"));
    if (path.isEmpty()) return;
    std::string error;
    if (!world_.LoadFleet(path.toStdString(), &error)) return Fail(error);
    FillFleet();
    ShowFunctionPage();
  });
  file->addAction(tr("&Built-in fleet"), this, [this] {
    std::string error;
    if (!world_.LoadFleet("", &error)) return Fail(error);
    FillFleet();
    ShowFunctionPage();
  });
  file->addSeparator();
  file->addAction(tr("&Quit"), this, &QWidget::close);

  QMenu* windows = menuBar()->addMenu(tr("&Window"));
  QMenu* vehicle = windows->addMenu(tr("&Vehicle function window"));
  vehicle->setObjectName(QStringLiteral("vehicleMenu"));
  connect(vehicle, &QMenu::aboutToShow, this, [this, vehicle] {
    vehicle->clear();
    for (int type : world_.TreeFunctionTypes()) {
      vehicle->addAction(tr("Function %1").arg(type), this, [this, type] { OpenVehicle(type); });
    }
  });
  windows->addAction(tr("&Point query..."), this, [this] { AskPointQuery(); });

  QMenu* language = menuBar()->addMenu(tr("&Language"));
  auto* group = new QActionGroup(language);
  for (const Language& lang : kLanguages) {
    QAction* action = language->addAction(QString::fromUtf8(lang.name));
    action->setCheckable(true);
    action->setChecked(world_.LanguageFile() == lang.file);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, file = std::string(lang.file)] {
      std::string error;
      if (!world_.SwitchLanguage(file, &error)) return Fail(error);
      ShowFunctionPage();
    });
  }
}

void MainWindow::FillFleet() {
  fleet_->clear();
  for (const FleetVehicle& vehicle : ReadFleet()) {
    auto* top = new QTreeWidgetItem(fleet_, {QString::fromStdString(vehicle.name)});
    for (const FleetDevice& device : vehicle.devices) {
      auto* item = new QTreeWidgetItem(top, {QString::fromStdString(device.idno), device.online ? tr("online") : tr("offline")});
      item->setData(0, kIdRole, device.id);
      item->setData(0, kIdnoRole, QString::fromStdString(device.idno));
      item->setForeground(1, device.online ? QColor(0, 128, 0) : QColor(128, 128, 128));
    }
  }
  fleet_->expandAll();
}

void MainWindow::OnFleetItem(QTreeWidgetItem* item) {
  if (!item || !item->parent()) return;
  const int type = world_.CurrentFunctionType();
  world_.ChooseDevice(item->data(0, kIdRole).toInt(), type >= 0 ? type : DeskWorld::kFirstFunction);
  loop_.Wake();
}

void MainWindow::OnFleetMenu(const QPoint& at) {
  QTreeWidgetItem* item = fleet_->itemAt(at);
  if (!item || !item->parent()) return;
  const std::string idno = item->data(0, kIdnoRole).toString().toStdString();
  QMenu menu(this);
  const bool online = IsOnline(idno);
  menu.addAction(online ? tr("Take off line") : tr("Bring on line"), this, [this, idno, online] {
    SetOnline(idno, !online);
    FillFleet();
  });
  menu.addAction(tr("Point query"), this, [this, idno] {
    if (!world_.PointQuery(idno)) Fail("the point query could not be queued");
  });
  menu.exec(fleet_->viewport()->mapToGlobal(at));
}

void MainWindow::OpenVehicle(int functionType) {
  std::string error;
  if (!world_.OpenVehicleWindow(functionType, &error)) Fail(error);
}

void MainWindow::AskPointQuery() {
  QTreeWidgetItem* item = fleet_->currentItem();
  const QString proposed = item && item->parent() ? item->data(0, kIdnoRole).toString() : QString();
  bool ok = false;
  const QString idno = QInputDialog::getText(this, tr("Point query"), tr("Device number:"), QLineEdit::Normal, proposed, &ok);
  if (ok && !idno.isEmpty() && !world_.PointQuery(idno.toStdString())) Fail("the point query could not be queued");
}

void MainWindow::Log(const QString& line) {
  log_->appendPlainText(line);
  if (auto* dock = findChild<QDockWidget*>(QStringLiteral("messages"))) dock->show();
  statusBar()->showMessage(line, 5000);
}

void MainWindow::Fail(const std::string& error) {
  QMessageBox::warning(this, QStringLiteral("fleetcmd-desk"), QString::fromStdString(error));
}

}  // namespace desk
