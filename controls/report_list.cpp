#include "controls/report_list.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <utility>

#include "controls/list_colors.h"

namespace rws {

ReportList::ReportList(QWidget* parent) : QTreeView(parent) {
  setItemDelegate(new FixedColors(this));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(ExtendedSelection);
  setSelectionBehavior(SelectRows);
  setItemsExpandable(false);
  header()->setSectionsClickable(true);
  header()->setSectionsMovable(false);
}

QList<int> ReportList::SelectedRows() const {
  QList<int> rows;
  if (!selectionModel()) return rows;
  for (const auto& index : selectionModel()->selectedRows()) rows << index.row();
  std::sort(rows.begin(), rows.end());
  return rows;
}

void ReportList::SelectOnly(int row) {
  const QModelIndex index = model()->index(row, 0);
  selectionModel()->setCurrentIndex(
      index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(index);
}

void ReportList::SelectSeveral(const QList<int>& rows, int focused) {
  QItemSelection selection;
  for (const int row : rows) selection.select(model()->index(row, 0), model()->index(row, 0));
  const QModelIndex index = model()->index(focused, 0);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  selectionModel()->select(selection,
                           QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(index);
}

void ReportList::initViewItemOption(QStyleOptionViewItem* option) const {
  QTreeView::initViewItemOption(option);
  if (hasFocus()) return;
  constexpr float kPale = 0.35F;
  QPalette& colors = option->palette;
  const QColor lit = colors.color(QPalette::Active, QPalette::Highlight);
  const QColor pale = Mixed(lit, colors.color(QPalette::Active, QPalette::Base), kPale);
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    colors.setColor(group, QPalette::Highlight, pale);
    colors.setColor(group, QPalette::HighlightedText, colors.color(group, QPalette::Text));
  }
}

void ReportList::RememberPress(const QMouseEvent* event) {
  pressedButton_ = event->button();
  pressedRow_ = indexAt(event->position().toPoint()).row();
}

void ReportList::mousePressEvent(QMouseEvent* event) {
  RememberPress(event);
  QTreeView::mousePressEvent(event);
}

void ReportList::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  if (event->button() != std::exchange(pressedButton_, Qt::NoButton)) return;
  Q_EMIT MouseReleased(event->button(), pressedRow_, event->globalPosition().toPoint());
}

void ReportList::keyPressEvent(QKeyEvent* event) {
  pressedKey_ = event->key();
  QTreeView::keyPressEvent(event);
}

void ReportList::keyReleaseEvent(QKeyEvent* event) {
  QTreeView::keyReleaseEvent(event);
  if (event->isAutoRepeat() || event->key() != pressedKey_) return;
  pressedKey_ = 0;
  Q_EMIT KeyReleased();
}

void ReportList::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Keyboard) return;
  scrollTo(currentIndex());
  Q_EMIT MenuKeyPressed(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

void ReportList::focusOutEvent(QFocusEvent* event) {
  // A key that closes a message box goes up in the list; it did not go down here.
  pressedKey_ = 0;
  QTreeView::focusOutEvent(event);
}

}  // namespace rws
