#include "controls/grid.h"

#include <QAbstractTableModel>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "controls/list_colors.h"

namespace rws {

class GridCells : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  void SetColumns(const QList<GridColumn>& columns) {
    const bool sameCount = columns.size() == Columns.size();
    if (!sameCount) beginResetModel();
    Columns = columns;
    if (!sameCount) return endResetModel();
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
  }

  void SetRows(const QList<QStringList>& rows, const QSet<int>& fixed, const QString& why) {
    const bool sameCount = rows.size() == Rows.size();
    if (!sameCount) beginResetModel();
    Rows = rows;
    Fixed = fixed;
    Why = why;
    if (!sameCount) return endResetModel();
    if (!Rows.isEmpty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(Rows.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(Columns.size());
  }

  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
      return Rows.at(index.row()).value(index.column());
    if (role == Qt::TextAlignmentRole)
      return static_cast<int>(Columns.at(index.column()).Align | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole && Fixed.contains(index.row() + 1)) return Why;
    return {};
  }

  void SetRow(int row, const QStringList& texts) {
    if (row < 0 || row >= Rows.size()) return;
    Rows[row] = texts;
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
  }

  bool setData(const QModelIndex& index, const QVariant& value, int role) override {
    if (!index.isValid() || role != Qt::EditRole) return false;
    Rows[index.row()][index.column()] = value.toString();
    Q_EMIT dataChanged(index, index);
    return true;
  }

  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal || section < 0 || section >= Columns.size()) return {};
    const GridColumn& column = Columns.at(section);
    if (role == Qt::DisplayRole) return column.Heading;
    if (role == Qt::TextAlignmentRole) return static_cast<int>(column.Align | Qt::AlignVCenter);
    return {};
  }

  Qt::ItemFlags flags(const QModelIndex& index) const override {
    const auto flags = QAbstractTableModel::flags(index);
    const bool typed =
        index.isValid() && Columns.at(index.column()).Editable && !Fixed.contains(index.row() + 1);
    return typed ? flags | Qt::ItemIsEditable : flags;
  }

  QList<GridColumn> Columns;
  QList<QStringList> Rows;
  QSet<int> Fixed;
  QString Why;
};

class GridEditor : public QStyledItemDelegate {
 public:
  GridEditor(Grid* grid, const GridCells* cells)
      : QStyledItemDelegate(grid), grid_(grid), cells_(cells) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                        const QModelIndex& index) const override {
    const GridColumn& column = cells_->Columns.at(index.column());
    auto* box = new QLineEdit(parent);
    box->setFrame(false);
    box->setAlignment(column.Align);
    box->setAccessibleName(column.Heading.trimmed());
    // A hint for keyboards on the screen; what is no number is for the form to refuse.
    box->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    box_ = box;
    Q_EMIT grid_->EditBegan(index.row() + 1, index.column() + 1);
    return box;
  }

  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (!cells_->Fixed.contains(index.row() + 1)) return;
    // The colours of the grid may be the user's own: dimmed is what lies between them.
    constexpr float kInk = 0.55F;
    QPalette& colors = option->palette;
    for (const auto role : {QPalette::Text, QPalette::HighlightedText}) {
      const auto ground = role == QPalette::Text ? QPalette::Base : QPalette::Highlight;
      colors.setColor(role, Mixed(colors.color(role), colors.color(ground), kInk));
    }
    option->font.setItalic(true);
  }

  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override {
    const QString text = static_cast<QLineEdit*>(editor)->text();
    model->setData(index, text, Qt::EditRole);
    Q_EMIT grid_->EditEnded(index.row() + 1, index.column() + 1, text);
  }

  void Finish() {
    if (!box_) return;
    const QPointer<QLineEdit> box = std::exchange(box_, nullptr);
    Q_EMIT commitData(box);
    if (box) Q_EMIT closeEditor(box);
  }

 private:
  Grid* grid_;
  const GridCells* cells_;
  mutable QPointer<QLineEdit> box_;
};

Grid::Grid(QWidget* parent)
    : QTableView(parent), cells_(new GridCells(this)), editor_(new GridEditor(this, cells_)) {
  setModel(cells_);
  setItemDelegate(editor_);
  // One rectangle of cells, however it is dragged or extended by keys.
  setSelectionMode(ContiguousSelection);
  setSelectionBehavior(SelectItems);
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  constexpr int kRowMargins = 6;
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowMargins);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setStretchLastSection(true);
}

void Grid::SetColumns(const QList<GridColumn>& columns) {
  if (columns == cells_->Columns) return;
  cells_->SetColumns(columns);
  // Measuring thousands of cells would be felt.
  auto* header = horizontalHeader();
  for (int i = 0; i < header->count(); ++i) header->resizeSection(i, header->sectionSizeHint(i));
  updateGeometry();
}

void Grid::SetRows(const QList<QStringList>& rows, const QSet<int>& fixed, const QString& why) {
  cells_->SetRows(rows, fixed, why);
  WidenColumns(rows);
  if (!currentIndex().isValid() && !rows.isEmpty()) setCurrentIndex(cells_->index(0, 0));
}

/** Columns whose captions are narrower than what stands in them. Measuring thousands of cells would
    be felt. */
void Grid::WidenColumns(const QList<QStringList>& rows) {
  constexpr qsizetype kMeasured = 100;
  auto* header = horizontalHeader();
  const int margin = 2 * fontMetrics().averageCharWidth();
  // The last one takes what is left.
  for (int i = 0; i + 1 < header->count(); ++i) {
    int width = header->sectionSize(i);
    for (qsizetype row = 0; row < std::min(rows.size(), kMeasured); ++row)
      width = std::max(width, fontMetrics().horizontalAdvance(rows[row].value(i)) + margin);
    if (width > header->sectionSize(i)) header->resizeSection(i, width);
  }
}

void Grid::SetRow(int row, const QStringList& texts) { cells_->SetRow(row - 1, texts); }

int Grid::RowCount() const { return cells_->rowCount(); }

bool Grid::IsFixed(int row) const { return cells_->Fixed.contains(row); }

Grid::Cells Grid::Selection() const {
  const QItemSelection selection = selectionModel()->selection();
  if (selection.isEmpty()) return {};
  Cells cells{RowCount(), 1, cells_->columnCount(), 1};
  for (const auto& range : selection) {
    cells.FirstRow = std::min(cells.FirstRow, range.top() + 1);
    cells.LastRow = std::max(cells.LastRow, range.bottom() + 1);
    cells.FirstCol = std::min(cells.FirstCol, range.left() + 1);
    cells.LastCol = std::max(cells.LastCol, range.right() + 1);
  }
  return cells;
}

QString Grid::Text(int row, int column) const {
  return cells_->index(row - 1, column - 1).data(Qt::DisplayRole).toString();
}

void Grid::SetText(int row, int column, const QString& text) {
  cells_->setData(cells_->index(row - 1, column - 1), text, Qt::EditRole);
}

void Grid::FinishEdit() { editor_->Finish(); }

QSize Grid::sizeHint() const {
  constexpr int kShownRows = 14;
  int width = 0;
  for (int i = 0; i < horizontalHeader()->count(); ++i)
    width += horizontalHeader()->sectionSizeHint(i);
  return {width + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
          horizontalHeader()->sizeHint().height() +
              kShownRows * verticalHeader()->defaultSectionSize() + 2 * frameWidth()};
}

void Grid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  Q_EMIT CurrentCellChanged(current.row() + 1, current.column() + 1);
}

void Grid::RememberPress(const QMouseEvent* event) {
  const bool onCell = indexAt(event->position().toPoint()).isValid();
  pressedButton_ = onCell ? event->button() : Qt::NoButton;
}

void Grid::mousePressEvent(QMouseEvent* event) {
  RememberPress(event);
  QTableView::mousePressEvent(event);
}

void Grid::mouseDoubleClickEvent(QMouseEvent* event) {
  RememberPress(event);
  QTableView::mouseDoubleClickEvent(event);
}

void Grid::mouseReleaseEvent(QMouseEvent* event) {
  QTableView::mouseReleaseEvent(event);
  if (event->button() != std::exchange(pressedButton_, Qt::NoButton)) return;
  if (!indexAt(event->position().toPoint()).isValid()) return;
  Q_EMIT MouseReleased(event->button(), event->globalPosition().toPoint());
}

void Grid::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space || event->modifiers() != Qt::NoModifier)
    return QTableView::keyPressEvent(event);
  if (event->isAutoRepeat() || !currentIndex().isValid()) return;
  Q_EMIT MouseReleased(Qt::LeftButton, QCursor::pos());
}

void Grid::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Keyboard || !currentIndex().isValid()) return;
  scrollTo(currentIndex());
  Q_EMIT MouseReleased(Qt::RightButton,
                       viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

}  // namespace rws
