#include "rows_model.h"

namespace desk {
namespace {
// The list view extended style bit of rows with check boxes.
constexpr uint32_t kExCheckBoxes = 0x4;
}  // namespace

bool RowsModel::HasCheckBoxes() const {
  return list_ && ((list_->Style() & plat::style::CheckBoxes) || (list_->GetExtendedStyle() & kExCheckBoxes));
}

bool RowsModel::Refresh() {
  const int rows = list_ ? list_->GetItemCount() : 0;
  const int columns = list_ ? std::max(list_->GetColumnCount(), rows > 0 ? 1 : 0) : 0;
  if (rows != rows_ || columns != columns_) {
    beginResetModel();
    rows_ = rows;
    columns_ = columns;
    endResetModel();
    return true;
  }
  return false;
}

int RowsModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }
int RowsModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns_; }

QVariant RowsModel::data(const QModelIndex& index, int role) const {
  if (!list_ || !index.isValid() || index.row() >= list_->GetItemCount()) return {};
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
    return QString::fromStdString(list_->GetItemText(index.row(), index.column()));
  }
  if (role == Qt::CheckStateRole && index.column() == 0 && HasCheckBoxes()) {
    return list_->GetCheck(index.row()) ? Qt::Checked : Qt::Unchecked;
  }
  return {};
}

bool RowsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!list_ || role != Qt::CheckStateRole || !index.isValid()) return false;
  // The user's tick: the same call a script makes. The list tells the view of the change itself.
  return list_->UserSetCheck(index.row(), value.toInt() == Qt::Checked);
}

Qt::ItemFlags RowsModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (index.column() == 0 && HasCheckBoxes()) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (!list_ || orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= list_->GetColumnCount()) {
    return {};
  }
  return QString::fromStdString(list_->GetColumn(section).caption);
}

}  // namespace desk
