#pragma once

#include <set>
#include <vector>

#include "controls/list_box.h"

namespace rws {

/** One mission in the list. */
struct MissionRow {
  int Mission;  // index in the document
  QString Name;
};

/** `lstMission`: missions of the directory. A row's place need not be its mission's index. */
class MissionList : public ListBox {
  Q_OBJECT

 public:
  using ListBox::ListBox;

  /** Shows these rows, none selected. */
  void ShowMissions(const std::vector<MissionRow>& rows);
  /** Mission of a row; -1 when there is no such row. */
  int MissionAt(int row) const;
  /** Row of a mission, or -1. */
  int RowOf(int mission) const;
  int SelectedMission() const { return MissionAt(CurrentRow()); }
  /** Selects a mission and brings it into view; one that is not listed selects none. */
  void SelectMission(int mission) { SelectRow(RowOf(mission)); }
  /** Marks a mission whose file is gone until the rows are shown anew. */
  void MarkGone(int mission);
  /** Marks these missions, and no others, as unsaved until the rows are shown anew. */
  void SetUnsaved(const std::set<int>& missions);
  bool IsGone(int mission) const { return gone_.count(mission) > 0; }

 private:
  /** By row. */
  std::vector<int> missions_;
  std::set<int> gone_;
};

}  // namespace rws
