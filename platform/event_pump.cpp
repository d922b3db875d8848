#include "platform/event_pump.h"

#include <QApplication>
#include <QEvent>
#include <QProgressDialog>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <algorithm>

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

/** True for a progress dialog, all that lies in it, and its window: what cancels the scan. */
bool IsOfProgress(QObject* watched) {
  for (QObject* object = watched; object; object = object->parent())
    if (qobject_cast<QProgressDialog*>(object)) return true;
  if (!watched->isWindowType()) return false;
  const auto windows = QApplication::topLevelWidgets();
  return std::any_of(windows.begin(), windows.end(), [&](const QWidget* window) {
    return qobject_cast<const QProgressDialog*>(window) && window->windowHandle() == watched;
  });
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
  if (IsCommand(event->type()) && IsOfProgress(watched)) return false;
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget && event->type() == QEvent::Close) {
    event->ignore();
    QTimer::singleShot(0, widget, &QWidget::close);
    return true;
  }
  return IsCommand(event->type());
}

}  // namespace rws
