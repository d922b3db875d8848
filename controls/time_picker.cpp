#include "controls/time_picker.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

namespace rws {

TimePicker::TimePicker(QWidget* parent) : QTimeEdit(parent) {
  setDisplayFormat(QStringLiteral("HH:mm"));
  setFocusPolicy(Qt::StrongFocus);
  lineEdit()->installEventFilter(this);
}

void TimePicker::wheelEvent(QWheelEvent* event) {
  if (hasFocus())
    QTimeEdit::wheelEvent(event);
  else
    event->ignore();
}

void TimePicker::keyPressEvent(QKeyEvent* event) {
  // A digit in the place of everything would be no time and is refused.
  const bool isDigit = !event->text().isEmpty() && event->text()[0].isDigit();
  if (isDigit && lineEdit()->selectedText() == lineEdit()->text()) setSelectedSection(sectionAt(0));
  QTimeEdit::keyPressEvent(event);
}

bool TimePicker::eventFilter(QObject* watched, QEvent* event) {
  if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease &&
      static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
    setSelectedSection(currentSection());
    return true;
  }
  return QTimeEdit::eventFilter(watched, event);
}

}  // namespace rws
