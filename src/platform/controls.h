// Controls as models with state. Each control is a child window of a dialog;
// a user action (User... methods) changes the state the way the user would and
// notifies the parent; the plain setters are what code does and notify only
// where the system's own controls do (an edit's text change).
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/window.h"

namespace plat {

// Style flags of controls, as dialog templates declare them.
namespace style {
enum : uint32_t {
  Hidden = 1u << 0,
  Disabled = 1u << 1,
  Group = 1u << 2,        // first control of a radio group (the group runs to the next Group)
  Checked = 1u << 3,      // check box or radio checked at creation
  ReadOnly = 1u << 4,
  Multiline = 1u << 5,
  WantReturn = 1u << 6,
  Number = 1u << 7,       // edit takes digits only
  AsciiOnly = 1u << 8,    // edit takes printable ASCII only
  CheckBoxes = 1u << 9,   // list view rows have check boxes
  OwnerData = 1u << 10,   // list view rows are answered by the owner (virtual rows)
  Password = 1u << 11,
  SystemColors = 1u << 12,  // a static (style bit 0x800) whose colours the theme leaves alone
  DefaultButton = 1u << 24,
};
}  // namespace style

enum class ControlKind {
  Static,
  GroupBox,
  PushButton,
  CheckBox,
  RadioButton,
  Edit,
  ComboBox,
  ListView,
  TreeView,
  DatePicker,
  TimePicker,
  Spin,
};

class Control : public Window {
 public:
  explicit Control(ControlKind kind) : kind_(kind) {}
  ControlKind Kind() const { return kind_; }
  // A user action is refused by a control that is disabled or not visible.
  bool AcceptsInput() const { return IsWindowEnabled() && IsWindowVisible(); }

 private:
  ControlKind kind_;
};

class Static : public Control {
 public:
  explicit Static(ControlKind kind = ControlKind::Static) : Control(kind) {}
};

class Button : public Control {
 public:
  explicit Button(ControlKind kind) : Control(kind) {}
  int GetCheck() const { return checked_ ? 1 : 0; }
  // Code's check; for a radio button, the others of its group are left alone.
  void SetCheck(int check) {
    checked_ = check != 0;
    NotifyChanged();
  }
  // The user clicks: a check box toggles, a radio button is checked and the
  // others of its group cleared; the parent is told. False when refused.
  bool Click();

 private:
  void ClearGroupSiblings();
  bool checked_ = false;
};

class Edit : public Control {
 public:
  Edit() : Control(ControlKind::Edit) {}
  // Code sets the text (no filtering, like the system's edit); parent gets EN_CHANGE.
  void SetWindowText(const std::string& text) override;
  // Code adds text at the end, as a caret put at the end and a replaced
  // selection would; the parent gets EN_CHANGE. Costs the added text only.
  void AppendText(const std::string& text);
  // The user replaces the text by typing: filters by style, limit and range;
  // a line break becomes "\r\n" in a multi-line edit and is dropped otherwise.
  // False when refused (disabled, read-only, or out of the number range).
  bool UserType(const std::string& text);
  // Character limit (0 = none).
  void SetLimitText(size_t chars) {
    limit_ = chars;
    NotifyChanged();
  }
  size_t GetLimitText() const { return limit_; }
  // A bounded number box: typed values above max (or below min) are refused.
  void SetRange(int64_t min, int64_t max);
  bool HasRange() const { return hasRange_; }
  int64_t RangeMin() const { return min_; }
  int64_t RangeMax() const { return max_; }
  void SetReadOnly(bool readOnly);
  bool IsReadOnly() const { return (Style() & style::ReadOnly) != 0; }
  void SetMultiline(bool multiline, bool wantReturn);
  // Caret position after the last character, as a focus with the caret at the end leaves it.
  void SetSel(int start, int end) { selStart_ = start, selEnd_ = end; }
  int SelStart() const { return selStart_; }
  int SelEnd() const { return selEnd_; }

 private:
  std::string Filter(const std::string& typed) const;
  size_t limit_ = 0;
  bool hasRange_ = false;
  int64_t min_ = 0;
  int64_t max_ = 0;
  int selStart_ = 0;
  int selEnd_ = 0;
};

class ComboBox : public Control {
 public:
  ComboBox() : Control(ControlKind::ComboBox) {}
  int AddString(const std::string& text);
  int InsertString(int index, const std::string& text);
  int DeleteString(int index);
  void ResetContent();
  int GetCount() const { return static_cast<int>(items_.size()); }
  int GetCurSel() const { return sel_; }
  // -1 clears; an index out of range clears and returns -1.
  int SetCurSel(int index);
  std::string GetLBText(int index) const;
  uint32_t GetItemData(int index) const;
  bool SetItemData(int index, uint32_t data);
  int FindItemData(uint32_t data) const;
  std::string GetWindowText() const override;
  // The user picks an entry; the parent gets CBN_SELCHANGE.
  bool UserSelect(int index);

 private:
  struct Item {
    std::string text;
    uint32_t data = 0;
  };
  std::vector<Item> items_;
  int sel_ = -1;
};

class ListView : public Control {
 public:
  ListView() : Control(ControlKind::ListView) {}
  struct Column {
    std::string caption;
    int width = 0;
  };
  int InsertColumn(int index, const std::string& caption, int width);
  int GetColumnCount() const { return static_cast<int>(columns_.size()); }
  const Column& GetColumn(int index) const { return columns_.at(static_cast<size_t>(index)); }
  void SetColumnWidth(int index, int width);
  void SetExtendedStyle(uint32_t exStyle) {
    exStyle_ = exStyle;
    NotifyChanged();
  }
  uint32_t GetExtendedStyle() const { return exStyle_; }

  // Rows. Inserting at the top is constant time, so a list of many rows that
  // grows at the top stays fast.
  int InsertItem(int index, const std::string& text);
  bool SetItemText(int row, int column, const std::string& text);
  std::string GetItemText(int row, int column) const;
  bool DeleteItem(int row);
  void DeleteAllItems();
  int GetItemCount() const;
  bool SetItemData(int row, uintptr_t data);
  uintptr_t GetItemData(int row) const;
  bool SetCheck(int row, bool checked);
  bool GetCheck(int row) const;
  bool SetSelected(int row, bool selected);
  bool IsSelected(int row) const;
  int GetFirstSelected() const;
  std::vector<int> GetSelected() const;
  // Asks for rows to be drawn again; a row observer (a program that shows or
  // prints the list) hears of it.
  void RedrawItems(int first, int last);
  using RedrawObserver = std::function<void(ListView& list, int first, int last)>;
  static void SetRedrawObserver(RedrawObserver observer);

  // Virtual rows: the count is set and the owner answers the cells.
  using CellSource = std::function<std::string(int row, int column)>;
  void SetItemCountEx(int count, CellSource source);

  // User actions; the parent is told through WM_NOTIFY.
  bool UserClick(int row);
  bool UserDoubleClick(int row);
  bool UserRightClick(int row);
  bool UserSetCheck(int row, bool checked);

 private:
  struct Row {
    std::vector<std::string> cells;
    uintptr_t data = 0;
    bool checked = false;
    bool selected = false;
  };
  Row* RowAt(int row);
  const Row* RowAt(int row) const;
  std::vector<Column> columns_;
  std::deque<Row> rows_;
  uint32_t exStyle_ = 0;
  int virtualCount_ = -1;
  CellSource source_;
};

// An image list: image size, colour depth, how many images it holds and by
// how many it grows. The images themselves are the owner's.
struct ImageList {
  SIZE imageSize{};
  int bitsPerPixel = 32;
  int count = 0;
  int grow = 0;
};

// Tree items are numbered handles; 0 is none, kTreeRoot the invisible root.
using HTREEITEM = int;
constexpr HTREEITEM kTreeRoot = -0x10000;

class TreeView : public Control {
 public:
  TreeView() : Control(ControlKind::TreeView) {}
  HTREEITEM InsertItem(const std::string& text, int image, uintptr_t data, HTREEITEM parent = kTreeRoot);
  void DeleteAllItems();
  int GetCount() const { return static_cast<int>(items_.size()); }
  HTREEITEM GetRootItem() const { return GetChildItem(kTreeRoot); }
  HTREEITEM GetChildItem(HTREEITEM item) const;
  HTREEITEM GetNextSiblingItem(HTREEITEM item) const;
  HTREEITEM GetParentItem(HTREEITEM item) const;
  std::string GetItemText(HTREEITEM item) const;
  uintptr_t GetItemData(HTREEITEM item) const;
  int GetItemImage(HTREEITEM item) const;
  bool Expand(HTREEITEM item, bool expand = true);
  bool IsExpanded(HTREEITEM item) const;
  HTREEITEM GetSelectedItem() const { return selected_; }
  // Code selects an item; the parent is told (TVN_SELCHANGED, byUser false)
  // when the selection changes.
  bool SelectItem(HTREEITEM item);
  // The user clicks an item.
  bool UserSelect(HTREEITEM item);
  // Items in display order (depth first), for views and tests.
  std::vector<HTREEITEM> Walk() const;
  int Depth(HTREEITEM item) const;
  void SetImageList(const ImageList& images) {
    images_ = images;
    NotifyChanged();
  }
  const ImageList& GetImageList() const { return images_; }

 private:
  struct Item {
    std::string text;
    int image = 0;
    uintptr_t data = 0;
    HTREEITEM parent = kTreeRoot;
    std::vector<HTREEITEM> children;
    bool expanded = false;
  };
  const Item* Find(HTREEITEM item) const;
  bool Select(HTREEITEM item, bool byUser);
  std::vector<Item> items_;            // handle h is items_[h - 1]
  std::vector<HTREEITEM> topLevel_;
  HTREEITEM selected_ = 0;
  ImageList images_;
};

// A date or time picker holding one SYSTEMTIME; the display format uses the
// system's picture letters (yyyy MM dd HH mm ss, quoted literals).
class DateTimePicker : public Control {
 public:
  explicit DateTimePicker(ControlKind kind) : Control(kind) {}
  SYSTEMTIME GetTime() const { return time_; }
  void SetTime(const SYSTEMTIME& time) {
    time_ = time;
    NotifyChanged();
  }
  void SetFormat(const std::string& format) {
    format_ = format;
    NotifyChanged();
  }
  const std::string& GetFormat() const { return format_; }
  std::string GetWindowText() const override;
  bool UserSetTime(const SYSTEMTIME& time);

 private:
  SYSTEMTIME time_{};
  std::string format_;
};

std::string FormatPickerTime(const SYSTEMTIME& time, const std::string& format);

class Spin : public Control {
 public:
  Spin() : Control(ControlKind::Spin) {}
  void SetRange32(int low, int high) {
    low_ = low, high_ = high;
    NotifyChanged();
  }
  int Low() const { return low_; }
  int High() const { return high_; }
  void SetBuddy(Edit* buddy) { buddy_ = buddy; }
  Edit* GetBuddy() const { return buddy_; }
  // The position is the buddy's number (or the kept one without a buddy).
  int GetPos() const;
  void SetPos(int pos);
  // The user presses an arrow: the position moves by delta within the range.
  bool UserDelta(int delta);

 private:
  int low_ = 0;
  int high_ = 100;
  int pos_ = 0;
  Edit* buddy_ = nullptr;
};

}  // namespace plat
