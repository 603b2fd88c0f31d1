// The desk's main window: the fleet on the left (vehicles, devices, online
// state), the plug-in's function page window on the right, and menus for
// vehicle function windows, point queries, the language and the fleet file.
#pragma once

#include <QMainWindow>
#include <map>
#include <memory>

#include "desk_world.h"
#include "dialogs.h"
#include "loop_driver.h"
#include "views.h"

class QApplication;
class QTreeWidget;
class QTreeWidgetItem;
class QPlainTextEdit;

namespace desk {

// The templates are laid out for a 12-pixel font; a packaged CJK font draws both languages.
void UseDeskFont(QApplication& app);

class MainWindow : public QMainWindow {
 public:
  explicit MainWindow(DeskWorld& world, QWidget* parent = nullptr);
  ~MainWindow() override;

  ViewRegistry& Views() { return views_; }
  Dialogs& Modals() { return dialogs_; }
  LoopDriver& Loop() { return loop_; }
  QWidget* PagePanel() const { return pagePanel_; }
  QTreeWidget* FleetTree() const { return fleet_; }
  // Runs the platform loop and brings every view up to date now.
  void Pump() { loop_.Pump(); }
  // The widget of a model window (null when not shown).
  QWidget* WidgetOf(const plat::Window* model) const;
  // Shows the function page window again (after the plug-in made it anew).
  void ShowFunctionPage();
  // The top-level widget of an open vehicle function window.
  QWidget* VehicleWidget(const VehicleWindow* window) const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildMenus();
  void FillFleet();
  void FitPages();
  void OnFleetItem(QTreeWidgetItem* item);
  void OnFleetMenu(const QPoint& at);
  void OpenVehicle(int functionType);
  void AskPointQuery();
  void Log(const QString& line);
  void Fail(const std::string& error);

  DeskWorld& world_;
  LoopDriver loop_;
  ViewRegistry views_;
  Dialogs dialogs_;
  QTreeWidget* fleet_ = nullptr;
  QWidget* pagePanel_ = nullptr;
  QWidget* pageContent_ = nullptr;
  QPlainTextEdit* log_ = nullptr;
  std::map<const VehicleWindow*, QWidget*> vehicleWidgets_;
};

}  // namespace desk
