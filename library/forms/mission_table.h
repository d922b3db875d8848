#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <vector>

#include "library/columns.h"
#include "library/forms/library_query.h"

namespace rws {

/** The missions of a library that match a query, sorted. Rows hold nothing: a cell is made when it
    is seen. Columns are `kAllColumns`. */
class MissionTable : public QAbstractTableModel {
  Q_OBJECT

 public:
  MissionTable(MissionLibrary& library, LibraryQuery& query, QObject* parent);

  /** What has been read has changed: sorts and filters anew. */
  void Refill();
  /** The query has changed: filters anew. */
  void Narrow();
  void SortBy(MissionColumn column, bool descending);
  MissionColumn SortedBy() const { return by_; }
  bool IsDescending() const { return descending_; }

  /** The rows of the index that are shown, in their order. */
  const std::vector<std::uint32_t>& Shown() const { return shown_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  MissionLibrary& library_;
  LibraryQuery& query_;
  MissionColumn by_ = MissionColumn::Mission;
  bool descending_ = false;
  std::vector<std::uint32_t> order_, shown_;
};

}  // namespace rws
