#include "tools/edit_many_model.h"

#include <algorithm>
#include <utility>

#include "library/columns.h"
#include "platform/qt_text.h"
#include "services/paths.h"
#include "tools/logic/edit_many_fields.h"

namespace rws {

void EditManyModel::SetPlan(EditPlan plan) {
  beginResetModel();
  plan_ = std::move(plan);
  Fill();
  endResetModel();
  Q_EMIT WantedChanged();
}

void EditManyModel::SetFilter(Filter filter) {
  beginResetModel();
  filter_ = filter;
  Fill();
  endResetModel();
}

void EditManyModel::Fill() {
  rows_.clear();
  const auto passes = [&](bool changes, bool isLeftOut) {
    return filter_ == kAll || (filter_ == kChanges ? changes : isLeftOut);
  };
  for (std::uint32_t i = 0; i < plan_.Missions.size(); ++i) {
    const PlannedMission& mission = plan_.Missions[i];
    const bool isOut = !mission.WhyNot.empty();
    // A mission that is left out whole is told once more than its values.
    if ((isOut || mission.Values.empty()) && passes(false, isOut)) rows_.push_back({i, kNone});
    for (std::uint32_t j = 0; j < mission.Values.size(); ++j) {
      const bool changes = !isOut && mission.Values[j].WhyNot.empty();
      if (passes(changes, !changes)) rows_.push_back({i, j});
    }
  }
}

bool EditManyModel::MayBeWanted(int row) const {
  return plan_.Missions[rows_[static_cast<std::size_t>(row)].Mission].Changes();
}

bool EditManyModel::IsWanted(int row) const {
  return MayBeWanted(row) && plan_.Missions[rows_[static_cast<std::size_t>(row)].Mission].IsWanted;
}

void EditManyModel::SetWanted(const QList<int>& rows, bool isWanted) {
  bool isOther = false;
  for (const int row : rows) {
    if (!MayBeWanted(row) || IsWanted(row) == isWanted) continue;
    plan_.Missions[rows_[static_cast<std::size_t>(row)].Mission].IsWanted = isWanted;
    isOther = true;
  }
  if (!isOther) return;
  // Other rows of these missions, too.
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
  Q_EMIT WantedChanged();
}

EditManyModel::Counts EditManyModel::Count() const {
  Counts counts;
  for (const auto& mission : plan_.Missions) {
    if (!mission.WhyNot.empty()) {
      ++counts.LeftOut;
    } else if (!mission.Changes()) {
      ++counts.Same;
    } else {
      ++counts.Changing;
      counts.Wanted += mission.IsWanted;
      counts.Partly += std::any_of(mission.Values.begin(), mission.Values.end(),
                                   [](const PlannedValue& one) { return !one.WhyNot.empty(); });
    }
  }
  return counts;
}

int EditManyModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int EditManyModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QString EditManyModel::Note(const PlannedMission& mission, const PlannedValue* value) const {
  if (value && !value->WhyNot.empty()) return tr("cannot be: %1").arg(FromPath(value->WhyNot));
  if (!mission.WhyNot.empty())
    return value ? tr("the mission is left out") : tr("left out: %1").arg(FromPath(mission.WhyNot));
  if (!value) return tr("nothing changes");
  return mission.IsWanted ? QString() : tr("not chosen");
}

QString EditManyModel::Text(const Row& row, int column) const {
  const PlannedMission& mission = plan_.Missions[row.Mission];
  const PlannedValue* value = row.Value == kNone ? nullptr : &mission.Values[row.Value];
  switch (column) {
    case kMission:
      return FromPath(PathText(page_, GetFileName(mission.Path)));
    case kFolder:
      return FromPath(PathText(page_, GetParentFolderName(mission.Path)));
    case kFlight:
      return value ? FromBytes(page_, value->Flight) : QString();
    case kField:
      return value ? FromBytes(page_, FieldCaption(*value)) : QString();
    case kOld:
      return value ? FromBytes(page_, ValueWords(*value, value->Old)) : QString();
    case kNew:
      return value ? FromBytes(page_, ValueWords(*value, value->New)) : QString();
    case kNote:
      return Note(mission, value);
  }
  return {};
}

QVariant EditManyModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  if (role == Qt::DisplayRole) return Text(row, index.column());
  if (role == Qt::ToolTipRole && (index.column() == kNote || index.column() == kFolder))
    return Text(row, index.column());
  if (role == Qt::CheckStateRole && index.column() == kMission && MayBeWanted(index.row()))
    return IsWanted(index.row()) ? Qt::Checked : Qt::Unchecked;
  return {};
}

bool EditManyModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !index.isValid()) return false;
  SetWanted({index.row()}, value.toInt() == Qt::Checked);
  return true;
}

QVariant EditManyModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const QString titles[] = {tr("Mission"), tr("Flight"), tr("Field"), tr("Old"),
                            tr("New"),     tr("Note"),   tr("Folder")};
  return section < kColumns ? titles[section] : QString();
}

Qt::ItemFlags EditManyModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
  if (index.column() == kMission && MayBeWanted(index.row())) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

}  // namespace rws
