#include "controls/guarded_edit.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QMouseEvent>
#include <utility>

namespace rws {

GuardedEdit::GuardedEdit(QWidget* parent) : QLineEdit(parent) {}

GuardedEdit::~GuardedEdit() { qApp->removeEventFilter(this); }

void GuardedEdit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  qApp->installEventFilter(this);
}

void GuardedEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const bool byMouse = event->reason() == Qt::MouseFocusReason;
  if ((byMouse || event->reason() == Qt::ShortcutFocusReason) && Refuses()) {
    refusedPress_ = byMouse;
    return setFocus(Qt::OtherFocusReason);
  }
  qApp->removeEventFilter(this);
}

bool GuardedEdit::focusNextPrevChild(bool next) {
  return Refuses() || QLineEdit::focusNextPrevChild(next);
}

bool GuardedEdit::eventFilter(QObject* watched, QEvent* event) {
  // Nor does the key of a menu's entry.
  if (event->type() == QEvent::Shortcut && qobject_cast<QAction*>(watched)) return Refuses();
  auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || widget == this || widget->window() != window()) return false;
  // A button's mnemonic presses it without taking the focus.
  if (event->type() == QEvent::Shortcut) return Refuses();
  return SwallowsMouse(event);
}

bool GuardedEdit::SwallowsMouse(QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      swallowing_ = std::exchange(refusedPress_, false) || (hasFocus() && Refuses());
      return swallowing_;
    case QEvent::MouseMove:
      return swallowing_ && static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton;
    case QEvent::MouseButtonRelease:
      return swallowing_;
    case QEvent::ContextMenu:
      return swallowing_ &&
             static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Mouse;
    default:
      return false;
  }
}

}  // namespace rws
