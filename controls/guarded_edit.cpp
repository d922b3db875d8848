#include "controls/guarded_edit.h"

#include <QApplication>
#include <QFocusEvent>
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
    // The focus has moved, but the press that moved it has not reached its target yet.
    swallowPress_ = byMouse;
    return setFocus(Qt::OtherFocusReason);
  }
  qApp->removeEventFilter(this);
}

bool GuardedEdit::focusNextPrevChild(bool next) {
  return Refuses() || QLineEdit::focusNextPrevChild(next);
}

bool GuardedEdit::eventFilter(QObject* watched, QEvent* event) {
  auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || widget == this || widget->window() != window()) return false;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      if (!std::exchange(swallowPress_, false)) return false;
      swallowRelease_ = true;
      return true;
    case QEvent::MouseButtonRelease:
      return std::exchange(swallowRelease_, false);
    case QEvent::Shortcut:
      // A button's mnemonic presses it without taking the focus.
      return Refuses();
    default:
      return false;
  }
}

}  // namespace rws
