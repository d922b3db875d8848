#include "mainwindow/mission_list.h"

#include <algorithm>

namespace rws {

void MissionList::ShowMissions(const std::vector<MissionRow>& rows) {
  QStringList names;
  names.reserve(static_cast<qsizetype>(rows.size()));
  missions_.clear();
  gone_.clear();
  SetEmptyText(QString());
  for (const auto& row : rows) {
    names << row.Name;
    missions_.push_back(row.Mission);
  }
  SetRows(names);
}

int MissionList::MissionAt(int row) const {
  if (row < 0 || row >= std::ssize(missions_)) return -1;
  return missions_[static_cast<std::size_t>(row)];
}

void MissionList::MarkGone(int mission) {
  gone_.insert(mission);
  StrikeRow(RowOf(mission), tr("no longer in this folder"));
}

void MissionList::SetUnsaved(const std::set<int>& missions) {
  std::set<int> rows;
  for (int row = 0; !missions.empty() && row < RowCount(); ++row)
    if (missions.contains(MissionAt(row))) rows.insert(row);
  MarkRows(std::move(rows), tr("unsaved"));
}

int MissionList::RowOf(int mission) const {
  const auto found = std::find(missions_.begin(), missions_.end(), mission);
  return found == missions_.end() ? -1 : static_cast<int>(found - missions_.begin());
}

}  // namespace rws
