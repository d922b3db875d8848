#include "tools/finding_model.h"

#include <QFont>
#include <algorithm>
#include <utility>

#include "library/columns.h"
#include "platform/qt_text.h"
#include "services/faults.h"
#include "services/paths.h"

namespace rws {

FindingModel::FindingModel(const CodePage& page, QObject* parent)
    : QAbstractTableModel(parent), page_(page) {}

void FindingModel::Clear() {
  beginResetModel();
  missions_.clear();
  places_.clear();
  rows_.clear();
  counts_ = {};
  endResetModel();
}

void FindingModel::Count(const CheckedMission& mission, bool isAdded) {
  const FindingCounts counts = CountsOf(mission);
  for (std::size_t i = 0; i < counts.size(); ++i)
    counts_[i] = isAdded ? counts_[i] + counts[i] : counts_[i] - counts[i];
}

void FindingModel::Add(std::vector<CheckedMission> missions) {
  bool isRebuilt = false;
  const std::size_t before = missions_.size();
  for (auto& mission : missions) {
    if (!mission.FaultText.empty()) {
      Finding& unread = mission.Findings.emplace_back();
      unread.Severity = Severity::Error;
      unread.Kind = "unreadable";
      unread.Text = std::exchange(mission.FaultText, {});
    }
    Count(mission, true);
    const auto [known, isNew] = places_.try_emplace(mission.Path, missions_.size());
    if (isNew) {
      missions_.push_back(std::move(mission));
    } else {
      isRebuilt = isRebuilt || known->second < before;
      Count(missions_[known->second], false);
      missions_[known->second] = std::move(mission);
    }
  }
  if (isRebuilt) return Rebuild();
  std::vector<Row> added;
  for (std::size_t i = before; i < missions_.size(); ++i)
    for (const auto& row : RowsOf(i)) added.push_back(row);
  if (added.empty()) return;
  const int first = rowCount();
  beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
  rows_.insert(rows_.end(), added.begin(), added.end());
  endInsertRows();
}

void FindingModel::Sort() {
  std::sort(missions_.begin(), missions_.end(),
            [](const CheckedMission& a, const CheckedMission& b) { return a.Path < b.Path; });
  for (std::size_t i = 0; i < missions_.size(); ++i) places_[missions_[i].Path] = i;
  Rebuild();
}

void FindingModel::SetFilter(const FindingFilter& filter) {
  if (filter == filter_) return;
  filter_ = filter;
  Rebuild();
}

void FindingModel::Rebuild() {
  beginResetModel();
  rows_.clear();
  for (std::size_t i = 0; i < missions_.size(); ++i)
    for (const auto& row : RowsOf(i)) rows_.push_back(row);
  endResetModel();
}

bool FindingModel::Passes(const CheckedMission& mission, const Finding& finding) const {
  if (!filter_.Severities[static_cast<std::size_t>(finding.Severity)]) return false;
  if (filter_.Text.isEmpty()) return true;
  const auto holds = [&](const QString& text) {
    return text.contains(filter_.Text, Qt::CaseInsensitive);
  };
  return holds(FromPath(finding.Text)) || holds(FromPath(PlaceText(finding, page_))) ||
         holds(FromPath(mission.Path));
}

std::vector<FindingModel::Row> FindingModel::RowsOf(std::size_t mission) const {
  std::vector<Row> rows;
  const CheckedMission& checked = missions_[mission];
  for (std::size_t i = 0; i < checked.Findings.size(); ++i) {
    if (!Passes(checked, checked.Findings[i])) continue;
    if (rows.empty()) rows.push_back({mission, -1});
    rows.push_back({mission, static_cast<std::ptrdiff_t>(i)});
  }
  return rows;
}

std::size_t FindingModel::Checked(int row) const {
  if (row < 0 || row >= rowCount()) throw SubscriptFault();
  return static_cast<std::size_t>(row);
}

const Finding* FindingModel::FindingAt(int row) const {
  const Row& place = rows_[Checked(row)];
  if (place.Finding < 0) return nullptr;
  return &missions_[place.Mission].Findings[static_cast<std::size_t>(place.Finding)];
}

std::vector<CheckedMission> FindingModel::Shown() const {
  std::vector<CheckedMission> shown;
  for (const auto& row : rows_) {
    const CheckedMission& mission = missions_[row.Mission];
    if (row.Finding < 0)
      shown.push_back({mission.Path, "", {}});
    else
      shown.back().Findings.push_back(mission.Findings[static_cast<std::size_t>(row.Finding)]);
  }
  return shown;
}

int FindingModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int FindingModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QString FindingModel::CellText(const Finding& finding, int column) const {
  switch (column) {
    case kText:
      return FromPath(finding.Text);
    case kSeverity:
      return std::array{tr("Note"), tr("Warning"),
                        tr("Error")}[static_cast<std::size_t>(finding.Severity)];
    case kPlace:
      return FromPath(PlaceText(finding, page_));
    default:
      if (!finding.Mend) return {};
      return QStringLiteral("%1 = %2").arg(FromPath(finding.Mend->Path.Field),
                                           FromBytes(page_, finding.Mend->Value));
  }
}

QVariant FindingModel::HeadingData(const CheckedMission& mission, int column, int role) const {
  if (role == Qt::FontRole) {
    QFont bold;
    bold.setBold(true);
    return bold;
  }
  if (column != kText || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
  return QStringLiteral("%1: %2 (%3)")
      .arg(FromPath(GetFileName(mission.Path)), FromPath(CountsText(CountsOf(mission))),
           FromPath(GetParentFolderName(mission.Path)));
}

QVariant FindingModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const Finding* finding = FindingAt(index.row());
  if (!finding) return HeadingData(MissionAt(index.row()), index.column(), role);
  if (role == Qt::DecorationRole && index.column() == kText)
    return Icons[static_cast<std::size_t>(finding->Severity)];
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return CellText(*finding, index.column());
  return {};
}

QVariant FindingModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const std::array<QString, kColumns> names{tr("Finding"), tr("Severity"), tr("Place"),
                                            tr("Mends it")};
  return At(names, section);
}

}  // namespace rws
