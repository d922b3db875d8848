#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <array>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "library/check_report.h"

namespace rws {

/** Which findings are shown. */
struct FindingFilter {
  std::array<bool, 3> Severities{true, true, true};
  QString Text;  // anywhere in the mission's path or the finding, in any letter case
  bool operator==(const FindingFilter&) const = default;
};

/** Findings grouped by their missions: a heading for each mission that has some, its findings
    below. Columns: the sentence, severity, place, what mends it. */
class FindingModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kText, kSeverity, kPlace, kMend, kColumns };

  explicit FindingModel(const CodePage& page, QObject* parent = nullptr);

  void Clear();
  /** Adds missions behind those that are there; one that is there takes its new findings. */
  void Add(std::vector<CheckedMission> missions);
  /** Orders the missions by their paths. */
  void Sort();
  void SetFilter(const FindingFilter& filter);

  const CheckedMission& MissionAt(int row) const { return missions_[rows_[Checked(row)].Mission]; }
  /** Null for a heading. */
  const Finding* FindingAt(int row) const;
  /** All that was found, whether it is shown or not. */
  const FindingCounts& Counts() const { return counts_; }
  std::vector<CheckedMission> Shown() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /** One for each severity, from notes on. */
  std::array<QIcon, 3> Icons;

 private:
  struct Row {
    std::size_t Mission;
    std::ptrdiff_t Finding;  // -1 for the heading
  };

  std::size_t Checked(int row) const;
  bool Passes(const CheckedMission& mission, const Finding& finding) const;
  std::vector<Row> RowsOf(std::size_t mission) const;
  void Rebuild();
  void Count(const CheckedMission& mission, bool isAdded);
  QVariant HeadingData(const CheckedMission& mission, int column, int role) const;
  QString CellText(const Finding& finding, int column) const;

  const CodePage& page_;
  FindingFilter filter_;
  std::vector<CheckedMission> missions_;
  std::unordered_map<std::string, std::size_t> places_;  // of missions by their paths
  std::vector<Row> rows_;
  FindingCounts counts_{};
};

}  // namespace rws
