#include "controls/list_box.h"

#include <QFont>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "controls/list_colors.h"

namespace rws {

namespace {

/** Draws the asterisk of marked rows. Only what is shown has it: searching by typing and all else
    reads the text of the row. */
class MarkedTexts : public FixedColors {
 public:
  using FixedColors::FixedColors;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    FixedColors::initStyleOption(option, index);
    const auto* rows = static_cast<const RowTexts*>(index.model());
    if (rows->Marked.contains(index.row())) option->text.prepend(QStringLiteral("* "));
  }
};

}  // namespace

QStringList RowTexts::Remarks(int row) const {
  QStringList remarks;
  if (Struck.contains(row)) remarks << Struck[row];
  if (Marked.contains(row)) remarks << Mark;
  return remarks;
}

QVariant RowTexts::data(const QModelIndex& index, int role) const {
  const QStringList remarks = Remarks(index.row());
  if (remarks.isEmpty()) return QStringListModel::data(index, role);
  const QString told = remarks.join(QStringLiteral(", "));
  switch (role) {
    case Qt::FontRole: {
      if (!Struck.contains(index.row())) return {};
      QFont font;
      font.setStrikeOut(true);
      return font;
    }
    case Qt::ToolTipRole:
      return told;
    case Qt::AccessibleTextRole:
      return QStringListModel::data(index, Qt::DisplayRole).toString() + QStringLiteral(", ") +
             told;
    default:
      return QStringListModel::data(index, role);
  }
}

ListBox::ListBox(QWidget* parent) : ReportList(parent) {
  setModel(&rows_);
  setItemDelegate(new MarkedTexts(this));
  setSelectionMode(SingleSelection);
  header()->hide();
}

void ListBox::SetRows(const QStringList& rows) {
  rows_.Struck.clear();
  rows_.Marked.clear();
  rows_.setStringList(rows);
}

void ListBox::StrikeRow(int row, const QString& why) {
  if (row < 0 || row >= RowCount()) return;
  rows_.Struck[row] = why;
  Q_EMIT rows_.dataChanged(rows_.index(row), rows_.index(row));
}

void ListBox::MarkRows(std::set<int> rows, const QString& meaning) {
  if (rows_.Marked == rows) return;
  rows_.Marked = std::move(rows);
  rows_.Mark = meaning;
  if (RowCount() > 0) Q_EMIT rows_.dataChanged(rows_.index(0), rows_.index(RowCount() - 1));
}

void ListBox::SetEmptyText(const QString& text) {
  emptyText_ = text;
  setAccessibleDescription(text);
  viewport()->update();
}

void ListBox::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::RightButton) return ReportList::mousePressEvent(event);
  RememberPress(event);
  setFocus(Qt::MouseFocusReason);
}

void ListBox::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::RightButton)) ReportList::mouseMoveEvent(event);
}

void ListBox::paintEvent(QPaintEvent* event) {
  ReportList::paintEvent(event);
  if (RowCount() > 0 || emptyText_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::Text));
  QTextOption option(Qt::AlignTop | Qt::AlignLeft);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  const int margin = fontMetrics().height() / 2;
  painter.drawText(QRectF(viewport()->rect()).adjusted(margin, margin, -margin, -margin),
                   emptyText_, option);
}

QItemSelectionModel::SelectionFlags ListBox::selectionCommand(const QModelIndex& index,
                                                              const QEvent*) const {
  if (!index.isValid()) return QItemSelectionModel::NoUpdate;
  return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

}  // namespace rws
