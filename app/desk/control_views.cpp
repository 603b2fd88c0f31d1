// One view per control kind. Each reads its model in SyncKind and hands a
// person's action to the model's User... call (or Click), never to a page.
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>
#include <QTreeWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "platform/controls.h"
#include "platform/dialog.h"
#include "rows_model.h"
#include "views.h"

namespace desk {
namespace {

namespace style = plat::style;

QString Q(const std::string& text) { return QString::fromStdString(text); }
// The models keep a line break as "\r\n"; Qt's widgets as "\n".
QString Lines(const std::string& text) { return Q(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

// ---- windows and dialogs: a plain area its children are placed in ----

class AreaView : public View {
 public:
  AreaView(plat::Window& model, QWidget* parent) : View(model, new QWidget(parent)) {
    Widget()->setObjectName(QStringLiteral("area"));
    Widget()->setAutoFillBackground(true);
  }

 protected:
  void SyncKind() override {
    if (!Widget()->parentWidget()) Widget()->setWindowTitle(Q(model_->GetWindowText()));
  }
};

// ---- static text and group box ----

class StaticView : public View {
 public:
  StaticView(plat::Window& model, QWidget* parent) : View(model, new QLabel(parent)), label_(static_cast<QLabel*>(Widget())) {
    label_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label_->setTextFormat(Qt::PlainText);
  }

 protected:
  void SyncKind() override {
    label_->setText(Lines(model_->GetWindowText()));
    // Taller than one line of text: the static wraps, as the system's does.
    label_->setWordWrap(label_->height() > 2 * label_->fontMetrics().height());
  }

 private:
  QLabel* label_;
};

class GroupView : public View {
 public:
  GroupView(plat::Window& model, QWidget* parent) : View(model, new QGroupBox(parent)), box_(static_cast<QGroupBox*>(Widget())) {}

 protected:
  void SyncKind() override {
    box_->setTitle(Q(model_->GetWindowText()));
    box_->lower();  // behind the controls it frames
  }

 private:
  QGroupBox* box_;
};

// ---- buttons ----

class ButtonView : public View {
 public:
  ButtonView(plat::Button& model, QWidget* parent) : View(model, Make(model.Kind(), parent)), button_(static_cast<QAbstractButton*>(Widget())) {
    button_->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(button_, &QAbstractButton::clicked, this, [this] {
      if (Syncing() || !model_) return;
      QPointer<View> self(this);
      auto* model = static_cast<plat::Button*>(model_);
      model->Click();
      // A check or radio the model did not change (a checked radio) shows the model's state again.
      if (self && model_) Sync(false);
    });
  }

 protected:
  void SyncKind() override {
    auto* model = static_cast<plat::Button*>(model_);
    button_->setText(Q(model->GetWindowText()));
    if (model->Kind() != plat::ControlKind::PushButton) button_->setChecked(model->GetCheck() != 0);
    if (auto* push = qobject_cast<QPushButton*>(button_)) push->setDefault(model->Style() & style::DefaultButton);
  }

 private:
  static QAbstractButton* Make(plat::ControlKind kind, QWidget* parent) {
    if (kind == plat::ControlKind::CheckBox) return new QCheckBox(parent);
    if (kind == plat::ControlKind::RadioButton) {
      auto* radio = new QRadioButton(parent);
      radio->setAutoExclusive(false);  // the model clears the others of its group
      return radio;
    }
    auto* push = new QPushButton(parent);
    push->setAutoDefault(false);
    return push;
  }
  QAbstractButton* button_;
};

// ---- edit: one line or several ----

class EditView : public View {
 public:
  EditView(plat::Edit& model, QWidget* parent)
      : View(model, Make(model, parent)), line_(qobject_cast<QLineEdit*>(Widget())), text_(qobject_cast<QPlainTextEdit*>(Widget())) {
    if (line_) QObject::connect(line_, &QLineEdit::textEdited, this, [this](const QString& text) { Typed(text); });
    if (text_) {
      QObject::connect(text_, &QPlainTextEdit::textChanged, this, [this] {
        if (!Syncing()) Typed(text_->toPlainText());
      });
    }
  }

 protected:
  void SyncKind() override {
    auto* model = static_cast<plat::Edit*>(model_);
    const QString text = Lines(model->GetWindowText());
    if (line_) {
      line_->setReadOnly(model->IsReadOnly());
      line_->setEchoMode(model->Style() & style::Password ? QLineEdit::Password : QLineEdit::Normal);
      line_->setMaxLength(model->GetLimitText() ? static_cast<int>(model->GetLimitText()) : 32767);
      if (line_->text() != text) {
        const int cursor = line_->cursorPosition();
        line_->setText(text);
        line_->setCursorPosition(std::min<int>(cursor, static_cast<int>(text.size())));
      }
    } else {
      text_->setReadOnly(model->IsReadOnly());
      if (text_->toPlainText() != text) {
        text_->setPlainText(text);
        text_->moveCursor(QTextCursor::End);
      }
    }
  }

 private:
  static QWidget* Make(const plat::Edit& model, QWidget* parent) {
    if (model.Style() & style::Multiline) return new QPlainTextEdit(parent);
    return new QLineEdit(parent);
  }
  void Typed(const QString& text) {
    if (!model_) return;
    QPointer<View> self(this);
    static_cast<plat::Edit*>(model_)->UserType(text.toStdString());
    // Refused or filtered (digits only, the limit): the widget shows what the model kept.
    if (self && model_) Sync(false);
  }
  QLineEdit* line_;
  QPlainTextEdit* text_;
};

// ---- combo box ----

class ComboView : public View {
 public:
  ComboView(plat::ComboBox& model, QWidget* parent) : View(model, new QComboBox(parent)), combo_(static_cast<QComboBox*>(Widget())) {
    combo_->setMaxVisibleItems(20);
    QObject::connect(combo_, &QComboBox::activated, this, [this](int index) {
      if (!model_) return;
      QPointer<View> self(this);
      static_cast<plat::ComboBox*>(model_)->UserSelect(index);
      if (self && model_) Sync(false);
    });
  }

 protected:
  void SyncKind() override {
    auto* model = static_cast<plat::ComboBox*>(model_);
    QStringList items;
    for (int i = 0; i < model->GetCount(); ++i) items << Q(model->GetLBText(i));
    QStringList shown;
    for (int i = 0; i < combo_->count(); ++i) shown << combo_->itemText(i);
    if (shown != items) {
      combo_->clear();
      combo_->addItems(items);
    }
    combo_->setCurrentIndex(model->GetCurSel());
  }

 private:
  QComboBox* combo_;
};

// ---- list view in report mode ----

class ListViewView : public View {
 public:
  ListViewView(plat::ListView& model, QWidget* parent)
      : View(model, new QTreeView(parent)), view_(static_cast<QTreeView*>(Widget())), rows_(new RowsModel(model, view_)) {
    view_->setRootIsDecorated(false);
    view_->setUniformRowHeights(true);
    view_->setAlternatingRowColors(true);
    // Cells are cut, not elided: eliding lays every cell's text out twice, the main cost of a scrolled page.
    view_->setTextElideMode(Qt::ElideNone);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::SingleSelection);
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->header()->setStretchLastSection(false);
    view_->setModel(rows_);
    QObject::connect(view_, &QTreeView::clicked, this, [this](const QModelIndex& index) {
      if (model_) static_cast<plat::ListView*>(model_)->UserClick(index.row());
    });
    QObject::connect(view_, &QTreeView::doubleClicked, this, [this](const QModelIndex& index) {
      if (model_) static_cast<plat::ListView*>(model_)->UserDoubleClick(index.row());
    });
    QObject::connect(view_, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
      if (model_) static_cast<plat::ListView*>(model_)->UserRightClick(view_->indexAt(at).row());
    });
  }
  ~ListViewView() override { rows_->Detach(); }

 protected:
  void SyncKind() override {
    auto* model = static_cast<plat::ListView*>(model_);
    if (!rows_->Refresh()) {
      // Same counts: the cells on screen are drawn again (a cell is read when drawn), never all 100,000.
      view_->viewport()->update();
      view_->header()->viewport()->update();
    }
    for (int c = 0; c < model->GetColumnCount(); ++c) {
      const int width = model->GetColumn(c).width;
      view_->setColumnHidden(c, width <= 0);
      if (width > 0 && view_->columnWidth(c) != width) view_->setColumnWidth(c, width);
    }
    const int selected = model->GetFirstSelected();
    const int current = view_->currentIndex().isValid() ? view_->currentIndex().row() : -1;
    if (selected != current) {
      if (selected < 0) view_->clearSelection();
      else view_->setCurrentIndex(rows_->index(selected, 0));
    }
  }

 private:
  QTreeView* view_;
  RowsModel* rows_;
};

// ---- tree view ----

class TreeViewView : public View {
 public:
  TreeViewView(plat::TreeView& model, QWidget* parent) : View(model, new QTreeWidget(parent)), tree_(static_cast<QTreeWidget*>(Widget())) {
    tree_->setHeaderHidden(true);
    tree_->setColumnCount(1);
    QObject::connect(tree_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
      if (Syncing() || !model_ || !item) return;
      static_cast<plat::TreeView*>(model_)->UserSelect(Handle(item));
    });
    const auto expanded = [this](QTreeWidgetItem* item, bool on) {
      if (!Syncing() && model_) static_cast<plat::TreeView*>(model_)->Expand(Handle(item), on);
    };
    QObject::connect(tree_, &QTreeWidget::itemExpanded, this, [expanded](QTreeWidgetItem* i) { expanded(i, true); });
    QObject::connect(tree_, &QTreeWidget::itemCollapsed, this, [expanded](QTreeWidgetItem* i) { expanded(i, false); });
  }

 protected:
  void SyncKind() override {
    auto* model = static_cast<plat::TreeView*>(model_);
    const std::vector<plat::HTREEITEM> order = model->Walk();
    // Rebuilt only when the items themselves changed, so the scroll position stays.
    std::string shape;
    for (plat::HTREEITEM h : order) shape += std::to_string(model->GetParentItem(h)) + '\x1f' + model->GetItemText(h) + '\x1e';
    if (shape != shape_) {
      shape_ = shape;
      tree_->clear();
      items_.clear();
      for (plat::HTREEITEM h : order) {
        auto found = items_.find(model->GetParentItem(h));
        auto* item = found == items_.end() ? new QTreeWidgetItem(tree_) : new QTreeWidgetItem(found->second);
        item->setText(0, Q(model->GetItemText(h)));
        item->setData(0, Qt::UserRole, h);
        items_[h] = item;
      }
    }
    for (const auto& [h, item] : items_) item->setExpanded(model->IsExpanded(h));
    auto selected = items_.find(model->GetSelectedItem());
    tree_->setCurrentItem(selected == items_.end() ? nullptr : selected->second);
  }

 private:
  static plat::HTREEITEM Handle(QTreeWidgetItem* item) { return item->data(0, Qt::UserRole).toInt(); }
  QTreeWidget* tree_;
  std::string shape_;
  std::map<plat::HTREEITEM, QTreeWidgetItem*> items_;
};

// ---- date and time pickers ----

class PickerView : public View {
 public:
  PickerView(plat::DateTimePicker& model, QWidget* parent)
      : View(model, new QDateTimeEdit(parent)), edit_(static_cast<QDateTimeEdit*>(Widget())),
        date_(model.Kind() == plat::ControlKind::DatePicker) {
    edit_->setCalendarPopup(date_);
    QObject::connect(edit_, &QDateTimeEdit::dateTimeChanged, this, [this](const QDateTime& value) {
      if (Syncing() || !model_) return;
      auto* model = static_cast<plat::DateTimePicker*>(model_);
      SYSTEMTIME st = model->GetTime();
      if (date_) {
        st.wYear = static_cast<WORD>(value.date().year());
        st.wMonth = static_cast<WORD>(value.date().month());
        st.wDay = static_cast<WORD>(value.date().day());
        st.wDayOfWeek = static_cast<WORD>(value.date().dayOfWeek() % 7);
      } else {
        st.wHour = static_cast<WORD>(value.time().hour());
        st.wMinute = static_cast<WORD>(value.time().minute());
        st.wSecond = static_cast<WORD>(value.time().second());
      }
      model->UserSetTime(st);
    });
  }

 protected:
  void SyncKind() override {
    auto* model = static_cast<plat::DateTimePicker*>(model_);
    // The system's picture letters are Qt's, quoted literals included.
    const std::string format = model->GetFormat();
    edit_->setDisplayFormat(format.empty() ? (date_ ? QStringLiteral("yyyy-MM-dd") : QStringLiteral("HH:mm:ss")) : Q(format));
    const SYSTEMTIME t = model->GetTime();
    const QDate date(t.wYear ? t.wYear : 2000, t.wMonth ? t.wMonth : 1, t.wDay ? t.wDay : 1);
    const QDateTime value(date.isValid() ? date : QDate(2000, 1, 1), QTime(t.wHour % 24, t.wMinute % 60, t.wSecond % 60));
    if (edit_->dateTime() != value) edit_->setDateTime(value);
  }

 private:
  QDateTimeEdit* edit_;
  bool date_;
};

// ---- spin: two arrows beside their buddy ----

class SpinView : public View {
 public:
  SpinView(plat::Spin& model, QWidget* parent) : View(model, new QWidget(parent)) {
    auto* layout = new QVBoxLayout(Widget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const auto& [arrow, delta] : {std::pair{Qt::UpArrow, 1}, std::pair{Qt::DownArrow, -1}}) {
      auto* button = new QToolButton(Widget());
      button->setArrowType(arrow);
      button->setAutoRepeat(true);
      button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
      layout->addWidget(button);
      QObject::connect(button, &QToolButton::clicked, this, [this, delta = delta] {
        if (model_) static_cast<plat::Spin*>(model_)->UserDelta(delta);
      });
    }
  }
};

}  // namespace

std::unique_ptr<View> MakeView(plat::Window& model, QWidget* parent) {
  auto* control = dynamic_cast<plat::Control*>(&model);
  if (!control) return std::make_unique<AreaView>(model, parent);
  switch (control->Kind()) {
    case plat::ControlKind::Static:
      return std::make_unique<StaticView>(model, parent);
    case plat::ControlKind::GroupBox:
      return std::make_unique<GroupView>(model, parent);
    case plat::ControlKind::PushButton:
    case plat::ControlKind::CheckBox:
    case plat::ControlKind::RadioButton:
      if (auto* button = dynamic_cast<plat::Button*>(control)) return std::make_unique<ButtonView>(*button, parent);
      break;
    case plat::ControlKind::Edit:
      if (auto* edit = dynamic_cast<plat::Edit*>(control)) return std::make_unique<EditView>(*edit, parent);
      break;
    case plat::ControlKind::ComboBox:
      if (auto* combo = dynamic_cast<plat::ComboBox*>(control)) return std::make_unique<ComboView>(*combo, parent);
      break;
    case plat::ControlKind::ListView:
      if (auto* list = dynamic_cast<plat::ListView*>(control)) return std::make_unique<ListViewView>(*list, parent);
      break;
    case plat::ControlKind::TreeView:
      if (auto* tree = dynamic_cast<plat::TreeView*>(control)) return std::make_unique<TreeViewView>(*tree, parent);
      break;
    case plat::ControlKind::DatePicker:
    case plat::ControlKind::TimePicker:
      if (auto* picker = dynamic_cast<plat::DateTimePicker*>(control)) return std::make_unique<PickerView>(*picker, parent);
      break;
    case plat::ControlKind::Spin:
      if (auto* spin = dynamic_cast<plat::Spin*>(control)) return std::make_unique<SpinView>(*spin, parent);
      break;
  }
  // A control of a kind whose class is the plug-in's own and unknown here: shown by its caption.
  return std::make_unique<StaticView>(model, parent);
}

}  // namespace desk
