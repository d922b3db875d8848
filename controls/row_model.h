#pragma once

#include <QAbstractTableModel>
#include <utility>
#include <vector>

namespace rws {

/** A table over rows of plain data that are replaced as a whole. What a cell shows is for the model
    that is made of it. */
template <class Row>
class RowModel : public QAbstractTableModel {
 public:
  RowModel(int columns, QObject* parent) : QAbstractTableModel(parent), columns_(columns) {}

  void SetRows(std::vector<Row> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
  }
  const std::vector<Row>& Rows() const { return rows_; }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : columns_;
  }

 protected:
  /** The row of a cell; null when there is none. */
  const Row* RowOf(const QModelIndex& index) const {
    if (!index.isValid() || index.row() >= rowCount()) return nullptr;
    return &rows_[static_cast<std::size_t>(index.row())];
  }

  std::vector<Row> rows_;

 private:
  int columns_;
};

}  // namespace rws
