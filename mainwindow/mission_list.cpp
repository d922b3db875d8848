#include "mainwindow/mission_list.h"

#include <algorithm>
#include <utility>

namespace rws {

void MissionList::ShowMissions(std::vector<MissionRow> rows) {
  all_ = std::move(rows);
  hidden_.clear();
  gone_.clear();
  unsaved_.clear();
  SetEmptyText(QString());
  FillRows();
}

void MissionList::HideMissions(std::vector<bool> hidden) {
  if (std::find(hidden.begin(), hidden.end(), true) == hidden.end()) hidden.clear();
  if (hidden == hidden_) return;
  const int selected = SelectedMission(), top = MissionAt(indexAt(QPoint(0, 0)).row());
  hidden_ = std::move(hidden);
  FillRows();
  for (const int mission : gone_) StrikeRow(RowOf(mission), tr("no longer in this folder"));
  MarkUnsaved();
  SelectMission(selected);
  if (RowOf(selected) < 0 && RowOf(top) >= 0)
    scrollTo(model()->index(RowOf(top), 0), PositionAtTop);
}

void MissionList::FillRows() {
  QStringList names;
  names.reserve(static_cast<qsizetype>(all_.size()));
  missions_.clear();
  int most = -1;
  for (const auto& row : all_) most = std::max(most, row.Mission);
  rows_.assign(static_cast<std::size_t>(most + 1), -1);
  for (const auto& row : all_) {
    if (IsHidden(row.Mission)) continue;
    rows_[static_cast<std::size_t>(row.Mission)] = static_cast<int>(missions_.size());
    missions_.push_back(row.Mission);
    names << row.Name;
  }
  SetRows(names);
}

bool MissionList::IsHidden(int mission) const {
  const auto place = static_cast<std::size_t>(mission);
  return mission >= 0 && place < hidden_.size() && hidden_[place];
}

int MissionList::MissionAt(int row) const {
  if (row < 0 || row >= std::ssize(missions_)) return -1;
  return missions_[static_cast<std::size_t>(row)];
}

/** The row that only has the focus, as one has that is given it without another, is none. */
int MissionList::SelectedMission() const {
  const QModelIndex current = currentIndex();
  return selectionModel()->isSelected(current) ? MissionAt(current.row()) : -1;
}

void MissionList::SetMissionText(int mission, const QString& text) {
  const auto place = static_cast<std::size_t>(mission);
  // Most often the rows stand in the order of the missions, of which there may be thousands.
  auto row = all_.begin();
  if (place < all_.size() && all_[place].Mission == mission) row += mission;
  row = std::find_if(row, all_.end(), [=](const auto& r) { return r.Mission == mission; });
  if (row != all_.end()) row->Name = text;
  if (RowOf(mission) >= 0) SetRowText(RowOf(mission), text);
}

void MissionList::MarkGone(int mission) {
  gone_.insert(mission);
  StrikeRow(RowOf(mission), tr("no longer in this folder"));
}

void MissionList::SetUnsaved(const std::set<int>& missions) {
  unsaved_ = missions;
  MarkUnsaved();
}

void MissionList::MarkUnsaved() {
  std::set<int> rows;
  for (const int mission : unsaved_)
    if (RowOf(mission) >= 0) rows.insert(RowOf(mission));
  MarkRows(std::move(rows), tr("unsaved"));
}

int MissionList::RowOf(int mission) const {
  if (mission < 0 || mission >= std::ssize(rows_)) return -1;
  return rows_[static_cast<std::size_t>(mission)];
}

void MissionList::keyPressEvent(QKeyEvent* event) {
  // Without a lit row the keys begin at the first one, and do not pass over it.
  if (!selectionModel()->hasSelection()) selectionModel()->clearCurrentIndex();
  ListBox::keyPressEvent(event);
}

}  // namespace rws
