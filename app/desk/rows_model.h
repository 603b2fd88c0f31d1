// The rows of a platform list view as a Qt item model. Nothing is copied: a
// cell is read from the list when Qt draws it, so 100,000 rows (stored or
// virtual) cost only the rows on screen.
#pragma once

#include <QAbstractTableModel>

#include "platform/controls.h"

namespace desk {

class RowsModel : public QAbstractTableModel {
 public:
  explicit RowsModel(plat::ListView& list, QObject* parent = nullptr) : QAbstractTableModel(parent), list_(&list) {}
  void Detach() { list_ = nullptr; }
  // Reads the list's counts again: true when they changed (the model was reset).
  // Otherwise the cells are read live, so the view only needs to draw again.
  bool Refresh();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  bool HasCheckBoxes() const;
  plat::ListView* list_;
  int rows_ = 0;
  int columns_ = 0;
};

}  // namespace desk
