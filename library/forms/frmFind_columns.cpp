#include <QHeaderView>
#include <algorithm>

#include "library/forms/frmFind.h"
#include "services/numbers.h"
#include "services/setting_values.h"
#include "services/text.h"

namespace rws {

namespace {

struct UsualColumn {
  MissionColumn Column;
  int Letters;
};

constexpr UsualColumn kUsual[] = {{MissionColumn::Mission, 26}, {MissionColumn::Folder, 26},
                                  {MissionColumn::Map, 18},     {MissionColumn::Time, 8},
                                  {MissionColumn::Weather, 10}, {MissionColumn::Flights, 8},
                                  {MissionColumn::Player, 20},  {MissionColumn::Changed, 20}};

constexpr std::size_t kQueries = 12;

std::size_t Place(MissionColumn column) { return static_cast<std::size_t>(column); }

/** The column of a key; nothing for another text, as a later version may leave it. */
std::optional<MissionColumn> ColumnOf(std::string_view key) {
  for (const auto column : kAllColumns)
    if (ColumnKey(column) == key) return column;
  return {};
}

}  // namespace

std::vector<MissionColumn> frmFind::ShownColumns() const {
  std::vector<MissionColumn> columns;
  const auto* header = lstFound->header();
  for (int i = 0; i < header->count(); ++i) {
    const int column = header->logicalIndex(i);
    if (!header->isSectionHidden(column)) columns.push_back(static_cast<MissionColumn>(column));
  }
  return columns;
}

/** Behind those that are shown already. */
void frmFind::ShowColumn(MissionColumn column, int width) {
  auto* header = lstFound->header();
  const int section = static_cast<int>(column);
  header->setSectionHidden(section, false);
  // The mission itself stays first.
  if (column != MissionColumn::Mission)
    header->moveSection(header->visualIndex(section), header->count() - 1);
  header->resizeSection(section, std::max(width, fontMetrics().averageCharWidth() * 3));
  mnuColumns->actions()[static_cast<qsizetype>(Place(column))]->setChecked(true);
}

void frmFind::ResetColumns() {
  for (std::size_t i = 0; i < kMissionColumns; ++i) {
    lstFound->header()->setSectionHidden(static_cast<int>(i), true);
    mnuColumns->actions()[static_cast<qsizetype>(i)]->setChecked(false);
  }
  for (const auto& [column, letters] : kUsual)
    ShowColumn(column, fontMetrics().averageCharWidth() * letters);
}

/** "mission:220,map:120", in their order, and the one to sort by, with a minus for descending. */
void frmFind::LoadColumns() {
  ResetColumns();
  const Settings& settings = services_.Settings;
  const std::string stored = ReadSetting(settings, setting::FindColumns);
  if (!stored.empty())
    for (std::size_t i = 0; i < kMissionColumns; ++i)
      lstFound->header()->setSectionHidden(static_cast<int>(i), true);
  if (!stored.empty())
    for (auto* entry : mnuColumns->actions()) entry->setChecked(false);
  for (const auto part : SplitAt(stored, ',')) {
    const auto colon = std::min(part.find(':'), part.size());
    const auto column = ColumnOf(part.substr(0, colon));
    if (!column || !lstFound->header()->isSectionHidden(static_cast<int>(*column))) continue;
    ShowColumn(*column, static_cast<int>(Val(part.substr(std::min(colon + 1, part.size())))));
  }
  if (lstFound->header()->isSectionHidden(static_cast<int>(MissionColumn::Mission))) ResetColumns();
  std::string sort = ReadSetting(settings, setting::FindSort);
  const bool descending = sort.starts_with('-');
  const auto by = ColumnOf(std::string_view(sort).substr(descending ? 1 : 0));
  Table->SortBy(by.value_or(MissionColumn::Mission), descending);
  lstFound->header()->setSortIndicator(static_cast<int>(Table->SortedBy()),
                                       descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void frmFind::StoreColumns() {
  std::string text;
  for (const auto column : ShownColumns())
    text += (text.empty() ? "" : ",") + std::string(ColumnKey(column)) + ":" +
            std::to_string(lstFound->header()->sectionSize(static_cast<int>(column)));
  WriteSetting(services_.Settings, setting::FindColumns, text);
  WriteSetting(services_.Settings, setting::FindSort,
               (Table->IsDescending() ? "-" : "") + std::string(ColumnKey(Table->SortedBy())));
}

/** One that can be understood and leaves something out goes to the head of the last ones. */
void frmFind::RememberQuery() {
  if (!Query->IsActive()) return;
  const std::string line(Trim(Query->Line()));
  std::string text = line;
  std::size_t count = 1;
  const std::string stored = ReadSetting(services_.Settings, setting::FindQueries);
  for (const auto part : SplitAt(stored, '\n'))
    if (!part.empty() && part != line && count++ < kQueries) text.append("\n").append(part);
  WriteSetting(services_.Settings, setting::FindQueries, text);
}

void frmFind::FillRecent() {
  mnuRecent->clear();
  const std::string stored = ReadSetting(services_.Settings, setting::FindQueries);
  for (const auto part : SplitAt(stored, '\n')) {
    const QString line = QString::fromUtf8(part.data(), static_cast<qsizetype>(part.size()));
    if (line.isEmpty()) continue;
    auto* entry = mnuRecent->addAction(QString(line).replace(u'&', QStringLiteral("&&")));
    connect(entry, &QAction::triggered, this, [this, line] {
      qryFind->txtQuery->setText(line);
      qryFind->txtQuery->setFocus();
    });
  }
  if (mnuRecent->isEmpty()) mnuRecent->addAction(tr("None yet"))->setEnabled(false);
}

}  // namespace rws
