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

/** `lstMission`: missions of the directory, all of them or those that a filter leaves. A row's
    place need not be its mission's index. */
class MissionList : public ListBox {
  Q_OBJECT

 public:
  using ListBox::ListBox;

  /** Shows these rows, none selected and none hidden. */
  void ShowMissions(std::vector<MissionRow> rows);
  /** Takes the rows of these missions out of the list, by mission, and brings all others back in
      their order. The selected one stays so while it has its row; what is seen stays in view. */
  void HideMissions(std::vector<bool> hidden);
  bool IsHidden(int mission) const;
  /** How many missions there are, hidden ones too. */
  int MissionCount() const { return static_cast<int>(all_.size()); }
  /** Mission of a row; -1 when there is no such row. */
  int MissionAt(int row) const;
  /** Row of a mission, or -1. */
  int RowOf(int mission) const;
  /** The mission whose row is lit, or -1. */
  int SelectedMission() const;
  /** Selects a mission and brings it into view; one that is not listed selects none. */
  void SelectMission(int mission) { SelectRow(RowOf(mission)); }
  void SetMissionText(int mission, const QString& text);
  /** Marks a mission whose file is gone until the rows are shown anew. */
  void MarkGone(int mission);
  /** Marks these missions, and no others, as unsaved until the rows are shown anew. */
  void SetUnsaved(const std::set<int>& missions);
  bool IsGone(int mission) const { return gone_.count(mission) > 0; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void FillRows();
  void MarkUnsaved();

  std::vector<MissionRow> all_;
  std::vector<bool> hidden_;
  /** Of each row the mission, and of each mission the row. */
  std::vector<int> missions_, rows_;
  std::set<int> gone_, unsaved_;
};

}  // namespace rws
