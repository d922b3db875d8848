#include "services/controls/guarded_edit.h"

#include <QApplication>
#include <QEvent>
#include <utility>

namespace rws {

GuardedEdit::GuardedEdit(QWidget* parent) : QLineEdit(parent) {}

GuardedEdit::~GuardedEdit() {
  qApp->removeEventFilter(this);
}

void GuardedEdit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  qApp->installEventFilter(this);
}

void GuardedEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  qApp->removeEventFilter(this);
}

bool GuardedEdit::focusNextPrevChild(bool next) {
  return Refuses() || QLineEdit::focusNextPrevChild(next);
}

/** True if a press on `target` would take the focus to another control of this window. */
bool GuardedEdit::LeavesBy(QObject* target) const {
  auto* widget = qobject_cast<QWidget*>(target);
  if (!widget || widget->window() != window()) return false;
  while (widget && !widget->isWindow() && !(widget->focusPolicy() & Qt::ClickFocus))
    widget = widget->parentWidget();
  return widget && widget != this && !widget->isWindow();
}

bool GuardedEdit::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      if (!LeavesBy(watched) || !Refuses()) return false;
      swallowRelease_ = true;
      return true;
    case QEvent::MouseButtonRelease:
      return std::exchange(swallowRelease_, false);
    case QEvent::Shortcut:
      return watched != this && qobject_cast<QWidget*>(watched) && Refuses();
    default:
      return false;
  }
}

}  // namespace rws
