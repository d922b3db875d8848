#include "mainwindow/flight_list.h"

#include <QFont>
#include <QHeaderView>
#include <algorithm>

#include "catalogues/army_text.h"
#include "controls/list_colors.h"
#include "platform/icons.h"
#include "platform/qt_text.h"
#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr int kColumns = 5, kFirstHidden = 3;

/** The side in words. */
QString SideText(const FlightRow& row) {
  return FromPath(ArmyText(row.Supported ? row.SortKey.substr(0, row.SortKey.find(' ')) : "not"));
}

}  // namespace

FlightListModel::FlightListModel(const CodePage& page, QObject* parent)
    : RowModel(kColumns, parent), page_(page) {}

void FlightListModel::SortRows(FlightSort by, bool descending) {
  beginResetModel();
  SortFlightRows(rows_, page_, by, descending);
  endResetModel();
}

QString FlightListModel::Text(const FlightRow& row, int column) const {
  switch (column) {
    case 0:
      return FromBytes(page_, row.PlaneName);
    case 1:
      return FromBytes(page_, row.GroupText);
    case 2:
      return FromBytes(page_, row.SquadText);
    case 3:
      return FromBytes(page_, row.SortKey);
    default:
      return FromBytes(page_, row.SquadSortKey);
  }
}

QString FlightListModel::ToolTip(const FlightRow& row, int column) const {
  if (column == 0)
    return FromBytes(page_, row.ToolTip + (row.Unknown.empty() ? "" : "\n\n" + row.Unknown));
  if (column == 1) return FromBytes(page_, row.GroupToolTip);
  return row.SquadToolTip.empty() ? SideText(row) : FromBytes(page_, row.SquadToolTip);
}

QString FlightListModel::Spoken(const FlightRow& row) const {
  return Text(row, 0) + QStringLiteral(", ") + SideText(row);
}

const QIcon& FlightListModel::IconOf(const FlightRow& row) const {
  const QString group = FromBytes(page_, row.Icon);
  const auto found = icons_.constFind(group);
  return found != icons_.constEnd() ? *found : *icons_.insert(group, GroupIcon(group));
}

QVariant FlightListModel::data(const QModelIndex& index, int role) const {
  const FlightRow* found = RowOf(index);
  if (!found) return {};
  const FlightRow& row = *found;
  switch (role) {
    case Qt::DisplayRole:
      return Text(row, index.column());
    case Qt::ToolTipRole:
      return ToolTip(row, index.column());
    case Qt::ForegroundRole:
      return FromBgr(row.Color);
    case Qt::FontRole: {
      // Colour is not the only sign of an aircraft that the game lacks.
      QFont font;
      font.setItalic(!row.Supported);
      return font;
    }
    case Qt::TextAlignmentRole:
      if (index.column() == 1) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
      if (index.column() == 2) return QVariant(Qt::AlignCenter);
      return {};
    case Qt::DecorationRole:
      return index.column() == 0 ? QVariant(IconOf(row)) : QVariant();
    case Qt::AccessibleTextRole:
      return index.column() == 0 ? Spoken(row) : Text(row, index.column());
    default:
      return {};
  }
}

QVariant FlightListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const QStringList captions{tr("Aircraft"), tr("Group"), tr("Sq / Flt"), QString(), QString()};
  return captions.value(section);
}

FlightList::FlightList(const CodePage& page, QWidget* parent) : ReportList(parent), model_(page) {
  setModel(&model_);
  header()->setStretchLastSection(false);
  for (int column = kFirstHidden; column < kColumns; ++column) setColumnHidden(column, true);
  header()->setSectionResizeMode(0, QHeaderView::Stretch);
  header()->setSectionResizeMode(1, QHeaderView::Interactive);
  header()->setSectionResizeMode(2, QHeaderView::Interactive);
  FitColumns();
  connect(header(), &QHeaderView::sectionClicked, this, &FlightList::HeaderClicked);
}

/** Columns as wide as their longest usual texts, in the font that the desktop uses. */
void FlightList::FitColumns() {
  const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
  setColumnWidth(1, digit * 18);
  setColumnWidth(2, digit * 11);
}

void FlightList::SetRows(std::vector<FlightRow> rows) {
  model_.SetRows(std::move(rows));
  descending_ = false;
  model_.SortRows(FlightSort::ByPlane, descending_);
}

void FlightList::HeaderClicked(int column) {
  const FlightSelection selection = Selection();
  // Turned round by every click, whichever column it is on.
  descending_ = !descending_;
  model_.SortRows(column == 2 ? FlightSort::BySquad : FlightSort::ByPlane, descending_);
  QList<int> rows;
  for (const std::size_t flight : selection.Flights) rows << RowOf(static_cast<int>(flight));
  const int focused = RowOf(selection.Focused);
  if (rows.isEmpty() && focused >= 0) rows << focused;
  if (!rows.isEmpty()) SelectSeveral(rows, focused);
}

const FlightRow& FlightList::At(int row) const { return rws::At(model_.Rows(), row); }

int FlightList::RowOf(int flight) const {
  const auto& rows = model_.Rows();
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (static_cast<int>(rows[i].Flight) == flight) return static_cast<int>(i);
  return -1;
}

FlightSelection FlightList::Selection() const {
  FlightSelection selection;
  for (const int row : SelectedRows()) {
    selection.Rows.push_back(row);
    selection.Flights.push_back(At(row).Flight);
    selection.Planes.push_back(At(row).PlaneName);
  }
  int row = CurrentRow();
  // A row that Ctrl has just taken out of the selection keeps the focus.
  if (!selection.Rows.empty() &&
      std::find(selection.Rows.begin(), selection.Rows.end(), row) == selection.Rows.end())
    row = selection.Rows.front();
  if (row >= 0) selection.Focused = static_cast<int>(At(row).Flight);
  selection.Several = Tag == "multiple";
  return selection;
}

}  // namespace rws
