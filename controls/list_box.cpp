#include "controls/list_box.h"

#include <QFont>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>

namespace rws {

QVariant RowTexts::data(const QModelIndex& index, int role) const {
  const auto why = Struck.constFind(index.row());
  if (why == Struck.constEnd()) return QStringListModel::data(index, role);
  switch (role) {
    case Qt::FontRole: {
      QFont font;
      font.setStrikeOut(true);
      return font;
    }
    case Qt::ToolTipRole:
      return *why;
    case Qt::AccessibleTextRole:
      return QStringListModel::data(index, Qt::DisplayRole).toString() + QStringLiteral(", ") +
             *why;
    default:
      return QStringListModel::data(index, role);
  }
}

ListBox::ListBox(QWidget* parent) : ReportList(parent) {
  setModel(&rows_);
  setSelectionMode(SingleSelection);
  header()->hide();
}

void ListBox::SetRows(const QStringList& rows) {
  rows_.Struck.clear();
  rows_.setStringList(rows);
}

void ListBox::StrikeRow(int row, const QString& why) {
  if (row < 0 || row >= RowCount()) return;
  rows_.Struck[row] = why;
  Q_EMIT rows_.dataChanged(rows_.index(row), rows_.index(row));
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
