#include "library/forms/mission_table.h"

#include "library/mission_order.h"

namespace rws {

namespace {

QString Shared(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

MissionTable::MissionTable(MissionLibrary& library, LibraryQuery& query, QObject* parent)
    : QAbstractTableModel(parent), library_(library), query_(query) {}

void MissionTable::Refill() {
  const MissionIndex& index = library_.Index();
  order_.clear();
  for (std::size_t row = 0; row < index.size(); ++row)
    if (!index[row].IsGone) order_.push_back(static_cast<std::uint32_t>(row));
  SortMissions(index, order_, by_, descending_);
  Narrow();
}

void MissionTable::Narrow() {
  beginResetModel();
  shown_.clear();
  for (const auto row : order_)
    if (query_.Matches(row)) shown_.push_back(row);
  endResetModel();
}

void MissionTable::SortBy(MissionColumn column, bool descending) {
  by_ = column;
  descending_ = descending;
  Refill();
}

int MissionTable::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int MissionTable::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kMissionColumns);
}

QVariant MissionTable::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const auto column = static_cast<MissionColumn>(index.column());
  if (role == Qt::TextAlignmentRole)
    return QVariant((IsNumberColumn(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  const bool isLong = column == MissionColumn::Folder || column == MissionColumn::Trouble ||
                      column == MissionColumn::Briefing;
  if (role != Qt::DisplayRole && !(role == Qt::ToolTipRole && isLong)) return {};
  return Shared(CellText(library_.Index(), shown_[static_cast<std::size_t>(index.row())], column));
}

QVariant MissionTable::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return Shared(ColumnTitle(static_cast<MissionColumn>(section)));
}

}  // namespace rws
