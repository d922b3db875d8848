#include "editors/static_list.h"

#include <QFont>
#include <QHeaderView>
#include <algorithm>

#include "catalogues/army_text.h"
#include "controls/list_colors.h"
#include "platform/qt_text.h"
#include "services/faults.h"

namespace rws {

namespace {

constexpr int kColumns = 5, kFirstHidden = 3;

bool IsSupported(const StaticRow& row) { return row.ColorWord != "not"; }

}  // namespace

StaticListModel::StaticListModel(const CodePage& page, QObject* parent)
    : RowModel(kColumns, parent), page_(page) {}

QString StaticListModel::Text(const StaticRow& row, int column) const {
  switch (column) {
    case 0:
      return FromBytes(page_, row.PlaneName);
    case 1:
      return row.Flyable ? QStringLiteral("F") : QStringLiteral(" ");
    case 2:
      return FromBytes(page_, row.Country);
    default:
      return FromBytes(page_, row.SortKey);
  }
}

QVariant StaticListModel::data(const QModelIndex& index, int role) const {
  const StaticRow* found = RowOf(index);
  if (!found) return {};
  const StaticRow& row = *found;
  switch (role) {
    case Qt::DisplayRole:
      return Text(row, index.column());
    case Qt::ToolTipRole:
      if (IsSupported(row) || index.column() > 1) return FromPath(ArmyText(row.ColorWord));
      return tr("Installed game does not support this aircraft you need to change it.");
    case Qt::ForegroundRole: {
      const auto color = ArmyColor(row.ColorWord);
      return color ? QVariant(FromBgr(*color)) : QVariant();
    }
    case Qt::FontRole: {
      // Colour is not the only sign of an aircraft that the game lacks.
      QFont font;
      font.setItalic(!IsSupported(row));
      return font;
    }
    case Qt::TextAlignmentRole:
      return index.column() == 1 ? QVariant(Qt::AlignCenter) : QVariant();
    case Qt::AccessibleTextRole:
      if (index.column() == 0)
        return Text(row, 0) + QStringLiteral(", ") + FromPath(ArmyText(row.ColorWord));
      if (index.column() == 1) return row.Flyable ? tr("Flyable") : tr("Not flyable");
      return Text(row, index.column());
    default:
      return {};
  }
}

QVariant StaticListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const QStringList captions{tr("Aircraft"), tr("Flyable"), tr("Country"), QString(), QString()};
  return captions.value(section);
}

StaticList::StaticList(const CodePage& page, QWidget* parent)
    : ReportList(parent), page_(page), model_(page) {
  setModel(&model_);
  header()->setStretchLastSection(false);
  for (int column = kFirstHidden; column < kColumns; ++column) setColumnHidden(column, true);
  header()->setSectionResizeMode(0, QHeaderView::Stretch);
  header()->setSectionResizeMode(1, QHeaderView::Interactive);
  header()->setSectionResizeMode(2, QHeaderView::Interactive);
  FitColumns();
}

/** Columns as wide as their longest usual texts, in the font that the desktop uses. */
void StaticList::FitColumns() {
  const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
  setColumnWidth(1, digit * 10);
  setColumnWidth(2, digit * 20);
  // Beside the letters of the first column stands the bar.
  setMinimumWidth(digit * (30 + 34 + 5));
}

void StaticList::SetRows(std::vector<StaticRow> rows) {
  const auto selected = SelectedPlanes();
  const int row = CurrentRow();
  const auto current = row < 0 ? -1 : static_cast<std::ptrdiff_t>(At(row).Plane);
  if (order_ != Order::OfLines) SortStaticRows(rows, page_, order_ == Order::Descending);
  model_.SetRows(std::move(rows));
  if (RowCount() == 0) return;
  if (selected.empty()) {
    SelectOnly(0);
  } else {
    Select(selected, current);
  }
}

void StaticList::Select(const std::vector<std::size_t>& planes, std::ptrdiff_t current) {
  const auto& rows = model_.Rows();
  std::vector<bool> wanted(rows.size());
  for (const std::size_t plane : planes)
    if (plane < wanted.size()) wanted[plane] = true;
  QItemSelection selection;
  for (int row = 0; row < RowCount(); ++row) {
    if (!wanted[At(row).Plane]) continue;
    // Neighbours as one range: a selection of thousands of ranges is slow.
    const int first = row;
    while (row + 1 < RowCount() && wanted[At(row + 1).Plane]) ++row;
    selection.append({model_.index(first, 0), model_.index(row, kColumns - 1)});
  }
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  const auto focus = std::find_if(rows.begin(), rows.end(), [&](const auto& row) {
    return static_cast<std::ptrdiff_t>(row.Plane) == current;
  });
  const QModelIndex index = model_.index(static_cast<int>(focus - rows.begin()), 0);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  scrollTo(index);
}

void StaticList::Sort() {
  order_ = order_ == Order::Ascending ? Order::Descending : Order::Ascending;
  SetRows(model_.Rows());
}

const StaticRow& StaticList::At(int row) const { return rws::At(model_.Rows(), row); }

std::vector<std::size_t> StaticList::SelectedPlanes() const {
  std::vector<std::size_t> planes;
  for (const int row : SelectedRows()) planes.push_back(At(row).Plane);
  return planes;
}

}  // namespace rws
