// The views of every control kind, without the plug-in: a model change shows
// in the widget after one pump, a person's action on the widget is the
// model's user call, and a modal dialog runs as a real dialog.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>
#include <QMessageBox>
#include <functional>
#include <thread>

#include "dialogs.h"
#include "host/hostcore.h"
#include "loop_driver.h"
#include "platform/dialog.h"
#include "platform/loop.h"
#include "views.h"

namespace {
using plat::ControlKind;
namespace style = plat::style;

constexpr int kForm = 7100, kAsk = 7101;
enum : int { kLabel = 10, kFrame, kPush, kCheck, kRadioA, kRadioB, kLine, kDigits, kText, kCombo, kList, kTree, kDate, kTime, kSpin, kBuddy };

const plat::DialogTemplate kFormTemplate{
    kForm, "form", {400, 600},
    {{kLabel, ControlKind::Static, "label", {10, 10, 200, 30}},
     {kFrame, ControlKind::GroupBox, "frame", {5, 35, 395, 120}, 0, 0, 0, 0, 0, 1},
     {kPush, ControlKind::PushButton, "push", {10, 50, 90, 75}, 0, 0, 0, 0, 0, 1},
     {kCheck, ControlKind::CheckBox, "check", {100, 50, 190, 75}, 0, 0, 0, 0, 0, 1},
     {kRadioA, ControlKind::RadioButton, "a", {200, 50, 260, 75}, style::Group | style::Checked, 0, 0, 0, 0, 1},
     {kRadioB, ControlKind::RadioButton, "b", {270, 50, 330, 75}, 0, 0, 0, 0, 0, 1},
     {kLine, ControlKind::Edit, "", {10, 130, 200, 155}, 0, 5},
     {kDigits, ControlKind::Edit, "", {210, 130, 300, 155}, style::Number},
     {kText, ControlKind::Edit, "", {10, 160, 300, 220}, style::Multiline | style::WantReturn},
     {kCombo, ControlKind::ComboBox, "", {10, 230, 200, 255}},
     {kList, ControlKind::ListView, "", {10, 260, 390, 360}, style::CheckBoxes},
     {kTree, ControlKind::TreeView, "", {10, 370, 390, 450}},
     {kDate, ControlKind::DatePicker, "", {10, 460, 150, 485}},
     {kTime, ControlKind::TimePicker, "", {160, 460, 300, 485}},
     {kBuddy, ControlKind::Edit, "5", {10, 500, 60, 525}, style::Number},
     {kSpin, ControlKind::Spin, "", {60, 500, 76, 525}, 0, 0, 0, 9, kBuddy}}};
const plat::DialogTemplate kAskTemplate{
    kAsk, "ask", {200, 80}, {{kLine, ControlKind::Edit, "", {10, 10, 190, 35}}, {IDOK, ControlKind::PushButton, "ok", {10, 45, 90, 70}}}};
const plat::templates::Registration kRegistrations[] = {plat::templates::Registration{kFormTemplate},
                                                        plat::templates::Registration{kAskTemplate}};
}  // namespace

class DeskViewsTest : public QObject {
  Q_OBJECT
 private slots:
  void init() {
    driver_ = std::make_unique<LoopDriver>();
    views_ = std::make_unique<desk::ViewRegistry>([this] { driver_->Wake(); });
    dialogs_ = std::make_unique<desk::Dialogs>(*views_);
    driver_->SetAfterPump([this] {
      views_->Flush();
      dialogs_->Check();
    });
    form_ = std::make_unique<plat::Dialog>(kForm);
    QVERIFY(form_->CreateDlg(nullptr));
    form_->ShowWindow(plat::SW_SHOW);
    host_ = std::make_unique<QWidget>();
    views_->Show(*form_, host_.get())->setGeometry(0, 0, 400, 600);
    host_->resize(400, 600);
    host_->show();
  }
  void cleanup() {
    form_.reset();
    host_.reset();
    dialogs_.reset();
    views_.reset();
    driver_.reset();
  }

  void modelChangesShowInTheWidgets() {
    struct Case {
      const char* what;
      std::function<void()> change;
      std::function<bool()> shown;
    };
    const Case cases[] = {
        {"caption", [&] { form_->SetItemText(kLabel, "new label"); }, [&] { return W<QLabel>(kLabel)->text() == "new label"; }},
        {"group title", [&] { form_->SetItemText(kFrame, "flags"); }, [&] { return W<QGroupBox>(kFrame)->title() == "flags"; }},
        {"hidden", [&] { form_->ShowItem(kPush, false); }, [&] { return W<QPushButton>(kPush)->isHidden(); }},
        {"disabled", [&] { form_->EnableItem(kCheck, false); }, [&] { return !W<QCheckBox>(kCheck)->isEnabled(); }},
        {"moved", [&] { form_->GetDlgItem(kLine)->MoveWindow({20, 130, 120, 150}); },
         [&] { return W<QLineEdit>(kLine)->geometry() == QRect(20, 130, 100, 20); }},
        {"checked", [&] { form_->SetChecked(kCheck, true); }, [&] { return W<QCheckBox>(kCheck)->isChecked(); }},
        {"edit text", [&] { form_->SetItemText(kLine, "abc"); }, [&] { return W<QLineEdit>(kLine)->text() == "abc"; }},
        {"lines", [&] { form_->SetItemText(kText, "one\r\ntwo"); },
         [&] { return W<QPlainTextEdit>(kText)->toPlainText() == "one\ntwo"; }},
        {"read-only", [&] { form_->Item<plat::Edit>(kLine)->SetReadOnly(true); }, [&] { return W<QLineEdit>(kLine)->isReadOnly(); }},
        {"combo items",
         [&] {
           auto* combo = form_->Item<plat::ComboBox>(kCombo);
           combo->AddString("x");
           combo->AddString("y");
           combo->SetCurSel(1);
         },
         [&] { return W<QComboBox>(kCombo)->count() == 2 && W<QComboBox>(kCombo)->currentText() == "y"; }},
        {"list rows",
         [&] {
           auto* list = form_->Item<plat::ListView>(kList);
           list->InsertColumn(0, "head", 80);
           list->InsertItem(0, "r1");
           list->InsertItem(0, "r0");
           list->SetCheck(1, true);
         },
         [&] {
           QAbstractItemModel* m = W<QTreeView>(kList)->model();
           return m->rowCount() == 2 && m->index(0, 0).data().toString() == "r0" &&
                  m->index(1, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked &&
                  m->headerData(0, Qt::Horizontal).toString() == "head";
         }},
        {"tree items",
         [&] {
           auto* tree = form_->Item<plat::TreeView>(kTree);
           const plat::HTREEITEM top = tree->InsertItem("top", 0, 0);
           tree->InsertItem("leaf", 0, 7, top);
           tree->Expand(top);
           tree->SelectItem(top + 1);
         },
         [&] {
           QTreeWidget* t = W<QTreeWidget>(kTree);
           return t->topLevelItemCount() == 1 && t->topLevelItem(0)->isExpanded() && t->currentItem() &&
                  t->currentItem()->text(0) == "leaf";
         }},
        {"date", [&] { form_->Item<plat::DateTimePicker>(kDate)->SetTime({2026, 3, 0, 14, 8, 5, 6, 0}); },
         [&] { return W<QDateTimeEdit>(kDate)->date() == QDate(2026, 3, 14); }},
        {"time format",
         [&] {
           auto* time = form_->Item<plat::DateTimePicker>(kTime);
           time->SetFormat("HH'h'mm");
           time->SetTime({2026, 3, 0, 14, 8, 5, 6, 0});
         },
         [&] { return W<QDateTimeEdit>(kTime)->text() == "08h05"; }},
    };
    for (const Case& c : cases) {
      c.change();
      driver_->Pump();
      QVERIFY2(c.shown(), c.what);
    }
  }

  void actionsOnTheWidgetsAreTheModelsUserCalls() {
    struct Case {
      const char* what;
      std::function<void()> act;
      std::function<bool()> done;
    };
    auto* list = form_->Item<plat::ListView>(kList);
    list->InsertColumn(0, "head", 80);
    list->InsertItem(0, "r0");
    auto* combo = form_->Item<plat::ComboBox>(kCombo);
    combo->AddString("x");
    combo->AddString("y");
    driver_->Pump();
    const Case cases[] = {
        {"check box clicked", [&] { QTest::mouseClick(W<QCheckBox>(kCheck), Qt::LeftButton); },
         [&] { return form_->IsChecked(kCheck); }},
        {"radio clicked clears its group", [&] { QTest::mouseClick(W<QRadioButton>(kRadioB), Qt::LeftButton); },
         [&] { return form_->IsChecked(kRadioB) && !form_->IsChecked(kRadioA); }},
        {"checked radio clicked stays checked", [&] { QTest::mouseClick(W<QRadioButton>(kRadioB), Qt::LeftButton); },
         [&] { return form_->IsChecked(kRadioB) && W<QRadioButton>(kRadioB)->isChecked(); }},
        {"typed up to the limit", [&] { QTest::keyClicks(W<QLineEdit>(kLine), "abcdefgh"); },
         [&] { return form_->GetItemText(kLine) == "abcde"; }},
        {"letters refused in a number box", [&] { QTest::keyClicks(W<QLineEdit>(kDigits), "4x2"); },
         [&] { return form_->GetItemText(kDigits) == "42" && W<QLineEdit>(kDigits)->text() == "42"; }},
        {"lines typed",
         [&] {
           QTest::keyClicks(W<QPlainTextEdit>(kText), "a");
           QTest::keyClick(W<QPlainTextEdit>(kText), Qt::Key_Return);
           QTest::keyClicks(W<QPlainTextEdit>(kText), "b");
         },
         [&] { return form_->GetItemText(kText) == "a\r\nb"; }},
        {"combo chosen", [&] { W<QComboBox>(kCombo)->activated(1); }, [&] { return combo->GetCurSel() == 1; }},
        {"row ticked",
         [&] { W<QTreeView>(kList)->model()->setData(W<QTreeView>(kList)->model()->index(0, 0), Qt::Checked, Qt::CheckStateRole); },
         [&] { return list->GetCheck(0); }},
        {"row clicked",
         [&] {
           QTreeView* v = W<QTreeView>(kList);
           QTest::mouseClick(v->viewport(), Qt::LeftButton, {}, v->visualRect(v->model()->index(0, 0)).center() + QPoint(20, 0));
         },
         [&] { return list->IsSelected(0); }},
        {"spin arrow", [&] { QTest::mouseClick(W<QWidget>(kSpin)->findChildren<QToolButton*>().front(), Qt::LeftButton); },
         [&] { return form_->GetItemText(kBuddy) == "6"; }},
    };
    for (const Case& c : cases) {
      c.act();
      driver_->Pump();
      QVERIFY2(c.done(), c.what);
    }
  }

  // A control still at its template rectangle is scaled with the screen; one code placed keeps its place.
  void templateRectanglesScaleWithTheScreen() {
    plat::SetDpi(120);  // s(n) = 1.25 n, t(n) the mean of n and s(n)
    form_->GetDlgItem(kLine)->MoveWindow({20, 130, 120, 150});
    form_->SetItemText(kLabel, "again");  // the label is synced anew, at its template rectangle
    driver_->Pump();
    const QRect label = W<QLabel>(kLabel)->geometry(), line = W<QLineEdit>(kLine)->geometry();
    plat::SetDpi(96);
    QCOMPARE(label, QRect(13, 11, 250 - 13, 34 - 11));
    QCOMPARE(line, QRect(20, 130, 100, 20));
  }

  void controlsMadeLaterAreShownAndDestroyedOnesGo() {
    plat::Static late(ControlKind::Static);
    late.Create(form_.get(), 99, "late", {10, 560, 100, 580});
    driver_->Pump();
    QVERIFY(views_->Find(&late));
    QCOMPARE(qobject_cast<QLabel*>(views_->Find(&late)->Widget())->text(), QStringLiteral("late"));
    const size_t before = views_->ViewCount();
    late.DestroyWindow();
    QCOMPARE(views_->ViewCount(), before - 1);
  }

  // A tip from a network thread waits for the UI thread, then shows as a message box.
  void tipFromAnotherThreadIsAMessageBox() {
    QString shown;
    auto* poll = new QTimer(this);
    connect(poll, &QTimer::timeout, this, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box || box->objectName() != QStringLiteral("tip")) return;
      shown = box->text();
      box->accept();
    });
    poll->start(10);
    std::thread([] { ShowMsgTipEx("device offline", "", 0); }).join();
    QVERIFY(QTest::qWaitFor([&] { return !shown.isEmpty(); }));
    delete poll;
    QCOMPARE(shown, QStringLiteral("device offline"));
  }

  void modalDialogRunsAsARealDialog() {
    struct Case {
      const char* what;
      std::function<void(QDialog&)> act;
      int result;
    };
    const Case cases[] = {
        {"typed and OK", [](QDialog& d) {
           QTest::keyClicks(d.findChild<QLineEdit*>(), "hi");
           QTest::mouseClick(d.findChild<QPushButton*>(), Qt::LeftButton);
         }, IDOK},
        {"escape", [](QDialog& d) { d.reject(); }, IDCANCEL},
    };
    for (const Case& c : cases) {
      auto* poll = new QTimer(this);
      connect(poll, &QTimer::timeout, this, [&c, poll] {
        auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!modal || modal->objectName() != QStringLiteral("modal")) return;
        poll->stop();
        c.act(*modal);
      });
      poll->start(10);
      plat::Dialog ask(kAsk);
      std::string typed;
      ask.Bind(kLine, EN_CHANGE, [&] { typed = ask.GetItemText(kLine); });
      const int result = ask.DoModal(form_.get());
      delete poll;
      QVERIFY2(result == c.result, c.what);
      if (c.result == IDOK) QCOMPARE(typed, std::string("hi"));
    }
  }

 private:
  template <class T>
  T* W(int id) {
    desk::View* view = views_->Find(form_->GetDlgItem(id));
    return view ? qobject_cast<T*>(view->Widget()) : nullptr;
  }
  std::unique_ptr<LoopDriver> driver_;
  std::unique_ptr<desk::ViewRegistry> views_;
  std::unique_ptr<desk::Dialogs> dialogs_;
  std::unique_ptr<plat::Dialog> form_;
  std::unique_ptr<QWidget> host_;
};

QTEST_MAIN(DeskViewsTest)
#include "test_desk_views.moc"
