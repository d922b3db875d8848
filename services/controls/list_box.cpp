#include "services/controls/list_box.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <utility>

namespace rws {

ListBox::ListBox(QWidget* parent) : QListView(parent) {
  setModel(&rows_);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setUniformItemSizes(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void ListBox::SetRows(const QStringList& rows) { rows_.setStringList(rows); }

void ListBox::SelectRow(int row) {
  setCurrentIndex(rows_.index(row));
  scrollTo(currentIndex());
}

void ListBox::mousePressEvent(QMouseEvent* event) {
  pressedButton_ = event->button();
  pressedRow_ = indexAt(event->position().toPoint()).row();
  if (event->button() == Qt::RightButton) return setFocus(Qt::MouseFocusReason);
  QListView::mousePressEvent(event);
}

void ListBox::mouseMoveEvent(QMouseEvent* event) {
  if (pressedButton_ != Qt::RightButton) QListView::mouseMoveEvent(event);
}

void ListBox::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::RightButton) QListView::mouseReleaseEvent(event);
  if (event->button() != std::exchange(pressedButton_, Qt::NoButton)) return;
  Q_EMIT MouseReleased(event->button(), pressedRow_, event->globalPosition().toPoint());
}

void ListBox::keyPressEvent(QKeyEvent* event) {
  pressedKey_ = event->key();
  QListView::keyPressEvent(event);
}

void ListBox::keyReleaseEvent(QKeyEvent* event) {
  QListView::keyReleaseEvent(event);
  if (event->isAutoRepeat() || event->key() != pressedKey_) return;
  pressedKey_ = 0;
  Q_EMIT KeyReleased();
}

void ListBox::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Keyboard) return;
  Q_EMIT MenuKeyPressed(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

void ListBox::focusOutEvent(QFocusEvent* event) {
  // A key that closes a message box goes up in the list; it did not go down here.
  pressedKey_ = 0;
  QListView::focusOutEvent(event);
}

}  // namespace rws
