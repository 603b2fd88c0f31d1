#include "platform/controls.h"

#include <algorithm>
#include <charconv>

namespace plat {

// ---- Button -------------------------------------------------------------------

bool Button::Click() {
  if (!AcceptsInput()) return false;
  if (Kind() == ControlKind::CheckBox) {
    checked_ = !checked_;
  } else if (Kind() == ControlKind::RadioButton) {
    ClearGroupSiblings();
    checked_ = true;
  }
  NotifyChanged();
  NotifyParent(BN_CLICKED);
  return true;
}

void Button::ClearGroupSiblings() {
  Window* parent = GetParent();
  if (!parent) return;
  const auto& siblings = parent->Children();
  auto self = std::find(siblings.begin(), siblings.end(), this);
  if (self == siblings.end()) return;
  // The group starts at the nearest control at or before this one marked Group
  // and ends before the next one marked Group.
  auto first = self;
  while (first != siblings.begin() && !((*first)->Style() & style::Group)) --first;
  for (auto it = first; it != siblings.end(); ++it) {
    if (it != first && ((*it)->Style() & style::Group)) break;
    auto* radio = dynamic_cast<Button*>(*it);
    if (radio && radio != this && radio->Kind() == ControlKind::RadioButton) radio->SetCheck(0);
  }
}

// ---- Edit ---------------------------------------------------------------------

namespace {
// Byte length of the UTF-8 character starting with lead byte c.
size_t Utf8CharLen(unsigned char c) {
  if (c < 0x80) return 1;
  if ((c >> 5) == 0x6) return 2;
  if ((c >> 4) == 0xE) return 3;
  if ((c >> 3) == 0x1E) return 4;
  return 1;
}
}  // namespace

void Edit::SetWindowText(const std::string& text) {
  Window::SetWindowText(text);
  NotifyParent(EN_CHANGE);
}

void Edit::AppendText(const std::string& text) {
  AppendWindowText(text);
  NotifyParent(EN_CHANGE);
}

void Edit::SetRange(int64_t min, int64_t max) {
  hasRange_ = true;
  min_ = min;
  max_ = max;
  NotifyChanged();
}

void Edit::SetReadOnly(bool readOnly) {
  SetStyle(readOnly ? Style() | style::ReadOnly : Style() & ~style::ReadOnly);
}

void Edit::SetMultiline(bool multiline, bool wantReturn) {
  uint32_t s = Style() & ~(style::Multiline | style::WantReturn);
  if (multiline) s |= style::Multiline;
  if (wantReturn) s |= style::WantReturn;
  SetStyle(s);
}

std::string Edit::Filter(const std::string& typed) const {
  const bool multiline = (Style() & style::Multiline) && (Style() & style::WantReturn);
  std::string out;
  size_t chars = 0;
  for (size_t i = 0; i < typed.size();) {
    if (limit_ && chars >= limit_) break;
    const unsigned char c = static_cast<unsigned char>(typed[i]);
    const size_t len = std::min(Utf8CharLen(c), typed.size() - i);
    if (c == '\r' || c == '\n') {
      if (c == '\r' && i + 1 < typed.size() && typed[i + 1] == '\n') ++i;
      ++i;
      if (multiline) {
        // A line break counts two characters, as the system's edit stores it.
        if (limit_ && chars + 2 > limit_) break;
        out += "\r\n";
        chars += 2;
      }
      continue;
    }
    const bool digit = c >= '0' && c <= '9';
    const bool ascii = c >= 0x20 && c < 0x7F;
    if ((Style() & style::Number) && !digit) {
      i += len;
      continue;
    }
    if ((Style() & style::AsciiOnly) && !ascii) {
      i += len;
      continue;
    }
    out.append(typed, i, len);
    i += len;
    ++chars;
  }
  return out;
}

bool Edit::UserType(const std::string& text) {
  if (!AcceptsInput() || IsReadOnly()) return false;
  const std::string filtered = Filter(text);
  if (hasRange_ && !filtered.empty()) {
    int64_t value = 0;
    const char* first = filtered.data();
    const char* last = first + filtered.size();
    auto [ptr, ec] = std::from_chars(first, last, value);
    if (ec != std::errc() || ptr != last || value < min_ || value > max_) return false;
  }
  SetWindowText(filtered);
  return true;
}

// ---- ComboBox -----------------------------------------------------------------

int ComboBox::AddString(const std::string& text) {
  items_.push_back({text, 0});
  NotifyChanged();
  return GetCount() - 1;
}

int ComboBox::InsertString(int index, const std::string& text) {
  if (index < 0 || index > GetCount()) index = GetCount();
  items_.insert(items_.begin() + index, Item{text, 0});
  if (sel_ >= index) ++sel_;
  NotifyChanged();
  return index;
}

int ComboBox::DeleteString(int index) {
  if (index < 0 || index >= GetCount()) return -1;
  items_.erase(items_.begin() + index);
  if (sel_ == index) sel_ = -1;
  else if (sel_ > index) --sel_;
  NotifyChanged();
  return GetCount();
}

void ComboBox::ResetContent() {
  items_.clear();
  sel_ = -1;
  NotifyChanged();
}

int ComboBox::SetCurSel(int index) {
  sel_ = (index >= 0 && index < GetCount()) ? index : -1;
  NotifyChanged();
  return sel_;
}

std::string ComboBox::GetLBText(int index) const {
  return (index >= 0 && index < GetCount()) ? items_[static_cast<size_t>(index)].text : std::string();
}

uint32_t ComboBox::GetItemData(int index) const {
  return (index >= 0 && index < GetCount()) ? items_[static_cast<size_t>(index)].data : 0;
}

bool ComboBox::SetItemData(int index, uint32_t data) {
  if (index < 0 || index >= GetCount()) return false;
  items_[static_cast<size_t>(index)].data = data;
  return true;
}

int ComboBox::FindItemData(uint32_t data) const {
  for (int i = 0; i < GetCount(); ++i) {
    if (items_[static_cast<size_t>(i)].data == data) return i;
  }
  return -1;
}

std::string ComboBox::GetWindowText() const { return GetLBText(sel_); }

bool ComboBox::UserSelect(int index) {
  if (!AcceptsInput() || index < 0 || index >= GetCount()) return false;
  sel_ = index;
  NotifyChanged();
  NotifyParent(CBN_SELCHANGE);
  return true;
}

// ---- ListView -----------------------------------------------------------------

namespace {
ListView::RedrawObserver& RedrawObserverSlot() {
  static ListView::RedrawObserver observer;
  return observer;
}
}  // namespace

void ListView::SetRedrawObserver(RedrawObserver observer) { RedrawObserverSlot() = std::move(observer); }

void ListView::RedrawItems(int first, int last) {
  RedrawWindow();
  NotifyChanged();
  if (auto& observer = RedrawObserverSlot()) observer(*this, first, last);
}

int ListView::InsertColumn(int index, const std::string& caption, int width) {
  if (index < 0 || index > GetColumnCount()) index = GetColumnCount();
  columns_.insert(columns_.begin() + index, Column{caption, width});
  NotifyChanged();
  return index;
}

void ListView::SetColumnWidth(int index, int width) {
  if (index >= 0 && index < GetColumnCount()) columns_[static_cast<size_t>(index)].width = width;
  NotifyChanged();
}

ListView::Row* ListView::RowAt(int row) {
  return (row >= 0 && row < static_cast<int>(rows_.size())) ? &rows_[static_cast<size_t>(row)] : nullptr;
}

const ListView::Row* ListView::RowAt(int row) const {
  return (row >= 0 && row < static_cast<int>(rows_.size())) ? &rows_[static_cast<size_t>(row)] : nullptr;
}

int ListView::InsertItem(int index, const std::string& text) {
  const int count = static_cast<int>(rows_.size());
  if (index < 0 || index > count) index = count;
  Row row;
  row.cells.resize(std::max<size_t>(columns_.size(), 1));
  row.cells[0] = text;
  if (index == 0) {
    rows_.push_front(std::move(row));
  } else if (index == count) {
    rows_.push_back(std::move(row));
  } else {
    rows_.insert(rows_.begin() + index, std::move(row));
  }
  NotifyChanged();
  return index;
}

bool ListView::SetItemText(int row, int column, const std::string& text) {
  Row* r = RowAt(row);
  if (!r || column < 0) return false;
  if (static_cast<size_t>(column) >= r->cells.size()) r->cells.resize(static_cast<size_t>(column) + 1);
  r->cells[static_cast<size_t>(column)] = text;
  NotifyChanged();
  return true;
}

std::string ListView::GetItemText(int row, int column) const {
  if (virtualCount_ >= 0) {
    return (source_ && row >= 0 && row < virtualCount_) ? source_(row, column) : std::string();
  }
  const Row* r = RowAt(row);
  if (!r || column < 0 || static_cast<size_t>(column) >= r->cells.size()) return {};
  return r->cells[static_cast<size_t>(column)];
}

bool ListView::DeleteItem(int row) {
  if (!RowAt(row)) return false;
  rows_.erase(rows_.begin() + row);
  NotifyChanged();
  return true;
}

void ListView::DeleteAllItems() {
  rows_.clear();
  if (virtualCount_ >= 0) virtualCount_ = 0;
  NotifyChanged();
}

int ListView::GetItemCount() const { return virtualCount_ >= 0 ? virtualCount_ : static_cast<int>(rows_.size()); }

bool ListView::SetItemData(int row, uintptr_t data) {
  Row* r = RowAt(row);
  if (!r) return false;
  r->data = data;
  return true;
}

uintptr_t ListView::GetItemData(int row) const {
  const Row* r = RowAt(row);
  return r ? r->data : 0;
}

bool ListView::SetCheck(int row, bool checked) {
  Row* r = RowAt(row);
  if (!r) return false;
  r->checked = checked;
  NotifyChanged();
  return true;
}

bool ListView::GetCheck(int row) const {
  const Row* r = RowAt(row);
  return r && r->checked;
}

bool ListView::SetSelected(int row, bool selected) {
  Row* r = RowAt(row);
  if (!r) return false;
  r->selected = selected;
  NotifyChanged();
  return true;
}

bool ListView::IsSelected(int row) const {
  const Row* r = RowAt(row);
  return r && r->selected;
}

int ListView::GetFirstSelected() const {
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i].selected) return static_cast<int>(i);
  }
  return -1;
}

std::vector<int> ListView::GetSelected() const {
  std::vector<int> rows;
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i].selected) rows.push_back(static_cast<int>(i));
  }
  return rows;
}

void ListView::SetItemCountEx(int count, CellSource source) {
  rows_.clear();
  rows_.resize(static_cast<size_t>(std::max(count, 0)));
  virtualCount_ = std::max(count, 0);
  source_ = std::move(source);
  NotifyChanged();
}

bool ListView::UserClick(int row) {
  if (!AcceptsInput()) return false;
  for (auto& r : rows_) r.selected = false;
  Row* clicked = RowAt(row);
  if (clicked) clicked->selected = true;
  NotifyChanged();
  // A click below the rows is on no row.
  NotifyParentItem(LVN_ITEMCHANGED, clicked ? row : -1, true);
  return true;
}

bool ListView::UserDoubleClick(int row) {
  if (!AcceptsInput()) return false;
  if (RowAt(row)) UserClick(row);
  NotifyParentItem(LVN_DBLCLK, RowAt(row) ? row : -1, true);
  return true;
}

bool ListView::UserRightClick(int row) {
  if (!AcceptsInput()) return false;
  NotifyParentItem(LVN_RCLICK, RowAt(row) ? row : -1, true);
  return true;
}

bool ListView::UserSetCheck(int row, bool checked) {
  if (!AcceptsInput() || !RowAt(row)) return false;
  SetCheck(row, checked);
  NotifyParentItem(LVN_ITEMCHANGED, row, true);
  return true;
}

// ---- TreeView -----------------------------------------------------------------

const TreeView::Item* TreeView::Find(HTREEITEM item) const {
  return (item >= 1 && item <= static_cast<int>(items_.size())) ? &items_[static_cast<size_t>(item - 1)] : nullptr;
}

HTREEITEM TreeView::InsertItem(const std::string& text, int image, uintptr_t data, HTREEITEM parent) {
  if (parent != kTreeRoot && !Find(parent)) return 0;
  items_.push_back(Item{text, image, data, parent, {}, false});
  const HTREEITEM handle = static_cast<HTREEITEM>(items_.size());
  if (parent == kTreeRoot) {
    topLevel_.push_back(handle);
  } else {
    items_[static_cast<size_t>(parent - 1)].children.push_back(handle);
  }
  NotifyChanged();
  return handle;
}

void TreeView::DeleteAllItems() {
  items_.clear();
  topLevel_.clear();
  selected_ = 0;
  NotifyChanged();
}

HTREEITEM TreeView::GetChildItem(HTREEITEM item) const {
  if (item == kTreeRoot) return topLevel_.empty() ? 0 : topLevel_.front();
  const Item* it = Find(item);
  return (it && !it->children.empty()) ? it->children.front() : 0;
}

HTREEITEM TreeView::GetNextSiblingItem(HTREEITEM item) const {
  const Item* it = Find(item);
  if (!it) return 0;
  const auto& siblings = it->parent == kTreeRoot ? topLevel_ : items_[static_cast<size_t>(it->parent - 1)].children;
  auto pos = std::find(siblings.begin(), siblings.end(), item);
  return (pos == siblings.end() || pos + 1 == siblings.end()) ? 0 : *(pos + 1);
}

HTREEITEM TreeView::GetParentItem(HTREEITEM item) const {
  const Item* it = Find(item);
  return (it && it->parent != kTreeRoot) ? it->parent : 0;
}

std::string TreeView::GetItemText(HTREEITEM item) const {
  const Item* it = Find(item);
  return it ? it->text : std::string();
}

uintptr_t TreeView::GetItemData(HTREEITEM item) const {
  const Item* it = Find(item);
  return it ? it->data : 0;
}

int TreeView::GetItemImage(HTREEITEM item) const {
  const Item* it = Find(item);
  return it ? it->image : -1;
}

bool TreeView::Expand(HTREEITEM item, bool expand) {
  if (!Find(item)) return false;
  items_[static_cast<size_t>(item - 1)].expanded = expand;
  NotifyChanged();
  return true;
}

bool TreeView::IsExpanded(HTREEITEM item) const {
  const Item* it = Find(item);
  return it && it->expanded;
}

bool TreeView::Select(HTREEITEM item, bool byUser) {
  if (item != 0 && !Find(item)) return false;
  if (item == selected_) return true;
  selected_ = item;
  NotifyChanged();
  NotifyParentItem(TVN_SELCHANGED, item, byUser);
  return true;
}

bool TreeView::SelectItem(HTREEITEM item) { return Select(item, false); }

bool TreeView::UserSelect(HTREEITEM item) { return AcceptsInput() && Select(item, true); }

std::vector<HTREEITEM> TreeView::Walk() const {
  std::vector<HTREEITEM> order;
  std::function<void(const std::vector<HTREEITEM>&)> visit = [&](const std::vector<HTREEITEM>& level) {
    for (HTREEITEM h : level) {
      order.push_back(h);
      visit(items_[static_cast<size_t>(h - 1)].children);
    }
  };
  visit(topLevel_);
  return order;
}

int TreeView::Depth(HTREEITEM item) const {
  int depth = 0;
  for (const Item* it = Find(item); it && it->parent != kTreeRoot; it = Find(it->parent)) ++depth;
  return depth;
}

// ---- DateTimePicker -------------------------------------------------------------

std::string FormatPickerTime(const SYSTEMTIME& time, const std::string& format) {
  std::string out;
  for (size_t i = 0; i < format.size();) {
    const char c = format[i];
    if (c == '\'') {
      const size_t close = format.find('\'', i + 1);
      const size_t end = close == std::string::npos ? format.size() : close;
      out.append(format, i + 1, end - i - 1);
      i = end + 1;
      continue;
    }
    size_t run = 1;
    while (i + run < format.size() && format[i + run] == c) ++run;
    auto number = [&](int value, size_t width) {
      std::string digits = std::to_string(value);
      if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
      out += digits;
    };
    switch (c) {
      case 'y': number(run >= 3 ? time.wYear : time.wYear % 100, run >= 3 ? 4 : run); break;
      case 'M': number(time.wMonth, run); break;
      case 'd': number(time.wDay, run); break;
      case 'H': number(time.wHour, run); break;
      case 'h': number(time.wHour % 12 == 0 ? 12 : time.wHour % 12, run); break;
      case 'm': number(time.wMinute, run); break;
      case 's': number(time.wSecond, run); break;
      default: out.append(run, c); break;
    }
    i += run;
  }
  return out;
}

std::string DateTimePicker::GetWindowText() const { return FormatPickerTime(time_, format_); }

bool DateTimePicker::UserSetTime(const SYSTEMTIME& time) {
  if (!AcceptsInput()) return false;
  time_ = time;
  NotifyChanged();
  NotifyParent(DTN_DATETIMECHANGE);
  return true;
}

// ---- Spin ---------------------------------------------------------------------

int Spin::GetPos() const {
  if (!buddy_) return pos_;
  const std::string text = buddy_->GetWindowText();
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

void Spin::SetPos(int pos) {
  pos_ = std::clamp(pos, std::min(low_, high_), std::max(low_, high_));
  NotifyChanged();
  if (buddy_) buddy_->SetWindowText(std::to_string(pos_));
}

bool Spin::UserDelta(int delta) {
  if (!AcceptsInput()) return false;
  SetPos(GetPos() + delta);
  NotifyParent(SPN_DELTAPOS);
  return true;
}

}  // namespace plat
