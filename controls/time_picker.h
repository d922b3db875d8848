#pragma once

#include <QTimeEdit>

namespace rws {

/** A picker of hours and minutes. The mouse wheel turns it only while it has the focus. A click
    selects the hours or the minutes, whichever it hits, so that a number can be typed over them;
    with all selected, typing begins with the hours. */
class TimePicker : public QTimeEdit {
  Q_OBJECT

 public:
  explicit TimePicker(QWidget* parent = nullptr);

 protected:
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace rws
