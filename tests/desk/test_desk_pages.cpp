// Every page the plug-in offers, rendered offscreen in both languages: each
// shown control lies inside its window and overlaps no other control of its
// layout group. Reference screenshots go to the build tree (desk-shots/).
#include <QDir>
#include <QFontInfo>
#include <QMenuBar>
#include <QSet>
#include <QTest>
#include <QTreeWidget>
#include <algorithm>
#include <iterator>
#include <map>
#include <set>

#include "desk_fixture.h"
#include "platform/dialog.h"

namespace {

constexpr const char* kEnglish = FC_DATA_DIR "/lang/en.ini";

// Faults of the plug-in's own windows (not of a page), known and reported to
// their owners: shown as warnings until fixed, so a new fault still fails.
struct KnownFault {
  int templateId, controlId;
  const char* why;
};
constexpr KnownFault kKnownFaults[] = {
    {4108, 4460, "the function tree keeps its template width when its dialog is laid out 2 pixels narrower"},
    {4114, 4115, "the no-parameter panel's text has no rectangle in its template"},
    {4000, 4400, "the vehicle function window's result frame stands at 480..770 whatever the function's preferred height"},
    {4000, 4399, "the vehicle function window's result list stands in that frame"},
};

bool IsKnown(int templateId, int controlId) {
  for (const KnownFault& known : kKnownFaults) {
    if (known.templateId == templateId && known.controlId == controlId) return true;
  }
  return false;
}

// The layout faults of one window: controls outside it, controls of one group on top of each other.
QSet<QString> known_;

QStringList LayoutFaults(DeskFixture& desk, plat::Window& window) {
  QStringList faults;
  QWidget* area = desk.WidgetOf(&window);
  const auto* dialog = dynamic_cast<const plat::Dialog*>(&window);
  const plat::DialogTemplate* tmpl = dialog ? plat::templates::Find(dialog->TemplateId()) : nullptr;
  if (!area || !tmpl) return faults;
  const auto groupOf = [&](int id) {
    for (const plat::ControlEntry& entry : tmpl->controls) {
      if (entry.id == id) return entry.layoutGroup;
    }
    return 0;
  };
  struct Placed {
    int id, group;
    QRect rect;
  };
  std::vector<Placed> placed;
  for (plat::Window* child : window.Children()) {
    auto* control = dynamic_cast<plat::Control*>(child);
    QWidget* widget = desk.WidgetOf(child);
    if (!control || !widget || !control->IsShown()) continue;
    const QRect rect = widget->geometry();
    const QString name = QStringLiteral("template %1 control %2").arg(dialog->TemplateId()).arg(control->GetDlgCtrlID());
    const bool known = IsKnown(dialog->TemplateId(), control->GetDlgCtrlID());
    if (known && (rect.isEmpty() || !area->rect().contains(rect))) {
      known_ << name;
    } else if (rect.isEmpty()) {
      faults << name + " has no size";
    } else if (!area->rect().contains(rect)) {
      faults << name + QStringLiteral(" (%1,%2 %3x%4) lies outside its window (%5x%6)")
                           .arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height())
                           .arg(area->width()).arg(area->height());
    }
    // A group box frames the controls of its group; it overlaps them by design.
    if (control->Kind() != plat::ControlKind::GroupBox && groupOf(control->GetDlgCtrlID()) != 0) {
      placed.push_back({control->GetDlgCtrlID(), groupOf(control->GetDlgCtrlID()), rect});
    }
  }
  for (size_t a = 0; a < placed.size(); ++a) {
    for (size_t b = a + 1; b < placed.size(); ++b) {
      if (placed[a].group == placed[b].group && placed[a].rect.intersects(placed[b].rect)) {
        faults << QStringLiteral("template %1: controls %2 and %3 of group %4 overlap")
                      .arg(dialog->TemplateId()).arg(placed[a].id).arg(placed[b].id).arg(placed[a].group);
      }
    }
  }
  return faults;
}

// The shown windows with a template below (and including) a window.
std::vector<plat::Window*> ShownDialogs(plat::Window& root) {
  std::vector<plat::Window*> found;
  if (dynamic_cast<plat::Dialog*>(&root) && root.IsWindowVisible()) found.push_back(&root);
  for (plat::Window* child : root.Children()) {
    if (dynamic_cast<plat::Control*>(child)) continue;
    for (plat::Window* w : ShownDialogs(*child)) found.push_back(w);
  }
  return found;
}

// Clicks a function in the view of the function tree, as a person would.
bool ClickFunction(DeskFixture& desk, int type) {
  auto* tree = dynamic_cast<plat::TreeView*>(DeskFixture::Shown(*desk.World().FunctionPage(), plat::ControlKind::TreeView));
  auto* view = tree ? qobject_cast<QTreeWidget*>(desk.WidgetOf(tree)) : nullptr;
  if (!view) return false;
  for (QTreeWidgetItemIterator it(view); *it; ++it) {
    const plat::HTREEITEM handle = (*it)->data(0, Qt::UserRole).toInt();
    if (static_cast<intptr_t>(tree->GetItemData(handle)) != type) continue;
    view->scrollToItem(*it);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualItemRect(*it).center());
    return desk.WaitFor([&] { return desk.World().CurrentFunctionType() == type; });
  }
  return false;
}

}  // namespace

class DeskPagesTest : public QObject {
  Q_OBJECT
 private slots:
  // One world for the whole run: the second language comes through the desk's own menu.
  void initTestCase() {
    QDir().mkpath(FC_SHOTS_DIR);
    QVERIFY(desk_.Start(kEnglish));
  }
  void cleanupTestCase() {
    for (const QString& fault : known_) qWarning("known fault: %s", qPrintable(fault));
    desk_.Stop();
  }

  void everyPageInBothLanguages_data() {
    QTest::addColumn<QString>("menuText");
    QTest::newRow("en") << QStringLiteral("English");
    QTest::newRow("zh-CN") << QStringLiteral("中文");
  }

  void everyPageInBothLanguages() {
    QFETCH(QString, menuText);
    const QString tag = QString::fromUtf8(QTest::currentDataTag());
    DeskFixture& desk = desk_;
    QAction* choice = nullptr;
    for (QAction* action : desk.Window().menuBar()->findChildren<QAction*>()) {
      if (action->text() == menuText) choice = action;
    }
    QVERIFY(choice);
    choice->trigger();
    desk.Window().Pump();
    QVERIFY2(QFontInfo(qApp->font()).family().contains(QStringLiteral("WenQuanYi")),
             "Chinese needs the packaged CJK font (fonts-wqy-microhei)");
    plat::Window& funPage = *desk.World().FunctionPage();
    const std::vector<int> types = desk.World().TreeFunctionTypes();
    QVERIFY2(!types.empty(), "the function tree offers no function");
    // The language took: the tree reads differently in each.
    auto* tree = dynamic_cast<plat::TreeView*>(DeskFixture::Shown(funPage, plat::ControlKind::TreeView));
    QVERIFY(tree);
    const QString treeText = QString::fromStdString(tree->GetItemText(tree->GetRootItem()));
    QVERIFY2(!treeTexts_.contains(treeText), qPrintable(treeText + " was shown in an earlier language"));
    treeTexts_ << treeText;

    QStringList faults;
    std::map<int, std::set<int>> shownByType;  // function -> templates shown for it
    int vehicleWindows = 0;
    for (int type : types) {
      QVERIFY2(ClickFunction(desk, type), qPrintable(QStringLiteral("function %1 could not be chosen").arg(type)));
      for (plat::Window* dialog : ShownDialogs(funPage)) {
        shownByType[type].insert(static_cast<plat::Dialog*>(dialog)->TemplateId());
        faults << LayoutFaults(desk, *dialog);
      }
      desk.Window().grab().save(QStringLiteral(FC_SHOTS_DIR "/%1-function-%2.png").arg(tag).arg(type));

      // The same page in a vehicle function window, where the plug-in offers one.
      std::string error;
      if (desk::VehicleWindow* vehicle = desk.World().OpenVehicleWindow(type, &error)) {
        ++vehicleWindows;
        desk.Window().Pump();
        for (plat::Window* dialog : ShownDialogs(*vehicle->frame)) faults << LayoutFaults(desk, *dialog);
        if (QWidget* frame = desk.Window().VehicleWidget(vehicle)) {
          frame->grab().save(QStringLiteral(FC_SHOTS_DIR "/%1-vehicle-%2.png").arg(tag).arg(type));
        }
        desk.World().CloseVehicleWindow(vehicle);
        desk.Window().Pump();
      }
    }
    // The windows shown for every function are the window's own; a page is what one function adds.
    std::set<int> always = shownByType.begin()->second;
    for (const auto& [type, shown] : shownByType) {
      std::set<int> both;
      std::set_intersection(always.begin(), always.end(), shown.begin(), shown.end(), std::inserter(both, both.end()));
      always = both;
    }
    QStringList withPage;
    for (const auto& [type, shown] : shownByType) {
      if (shown.size() > always.size()) withPage << QString::number(type);
    }
    qInfo("%s: %zu functions in the tree, pages shown for %lld (%s), %d vehicle function windows, %lld layout faults",
          qPrintable(tag), types.size(), static_cast<long long>(withPage.size()), qPrintable(withPage.join(' ')),
          vehicleWindows, static_cast<long long>(faults.size()));
    QVERIFY2(!withPage.isEmpty(), "no function shows a page");
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    QVERIFY(desk.Tips().empty());
  }

 private:
  DeskFixture desk_;
  QStringList treeTexts_;
};

QTEST_MAIN(DeskPagesTest)
#include "test_desk_pages.moc"
