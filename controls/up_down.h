#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QToolButton>
#include <QWidget>

namespace rws {

/** Two arrow buttons that step the number in a text box, their buddy. A click writes the new number
    into the box; what that means is for the box's own handler. The box's arrow keys do the same. */
class UpDown : public QWidget {
  Q_OBJECT

 public:
  UpDown(int minimum, int maximum, int step, int start, QWidget* parent = nullptr);

  void SetBuddy(QLineEdit* buddy);
  /** For arrows whose number stands in no text box: they take the focus and the arrow keys
      themselves. */
  void SetReachable();
  /** Sets the range and cuts the value to it. */
  void SetRange(int minimum, int maximum);
  int Minimum() const { return minimum_; }
  int Maximum() const { return maximum_; }
  int Value() const { return value_; }
  /** Sets the value, cut to the range; the box is not written. */
  void SetValue(int value);
  /** Steps from the number in the box, or from the value when the box holds none. A box that may
     not be left gets its text back instead. */
  void StepBy(int steps);

  QToolButton *Up, *Down;

 Q_SIGNALS:
  /** Sent when the value has become another one, after the box was written. */
  void ValueChanged(int value);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int minimum_, maximum_, step_, value_;
  QPointer<QLineEdit> buddy_;
};

}  // namespace rws
