#include "platform/event_pump.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace rws {

namespace {

bool IsCommand(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchEnd:
    case QEvent::Drop:
      return true;
    default:
      return false;
  }
}

}  // namespace

EventPump::EventPump(qint64 interval) : interval_(interval) { sincePump_.start(); }

void EventPump::Pump() {
  if (pumping_ || sincePump_.elapsed() < interval_) return;
  pumping_ = true;
  qApp->installEventFilter(this);
  QCoreApplication::processEvents();
  qApp->removeEventFilter(this);
  pumping_ = false;
  sincePump_.restart();
}

bool EventPump::eventFilter(QObject* watched, QEvent* event) {
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget && event->type() == QEvent::Close) {
    event->ignore();
    QTimer::singleShot(0, widget, &QWidget::close);
    return true;
  }
  return IsCommand(event->type());
}

}  // namespace rws
