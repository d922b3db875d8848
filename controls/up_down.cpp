#include "controls/up_down.h"

#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "controls/guarded_edit.h"

namespace rws {

UpDown::UpDown(int minimum, int maximum, int step, int start, QWidget* parent)
    : QWidget(parent),
      Up(new QToolButton(this)),
      Down(new QToolButton(this)),
      minimum_(minimum),
      maximum_(maximum),
      step_(step),
      value_(start) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  for (auto* button : {Up, Down}) {
    button->setArrowType(button == Up ? Qt::UpArrow : Qt::DownArrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    button->setMinimumHeight(1);
    column->addWidget(button);
  }
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  connect(Up, &QToolButton::clicked, this, [this] { StepBy(1); });
  connect(Down, &QToolButton::clicked, this, [this] { StepBy(-1); });
}

void UpDown::SetBuddy(QLineEdit* buddy) {
  buddy_ = buddy;
  buddy_->installEventFilter(this);
}

void UpDown::SetReachable() {
  Up->setFocusPolicy(Qt::StrongFocus);
  Up->installEventFilter(this);
  setFocusProxy(Up);
}

void UpDown::SetRange(int minimum, int maximum) {
  minimum_ = minimum;
  maximum_ = std::max(minimum, maximum);
  SetValue(value_);
}

void UpDown::SetValue(int value) {
  value = std::clamp(value, minimum_, maximum_);
  if (std::exchange(value_, value) != value) Q_EMIT ValueChanged(value);
}

void UpDown::StepBy(int steps) {
  // Its text is put right instead.
  if (const auto* guarded = qobject_cast<GuardedEdit*>(buddy_.data());
      guarded && guarded->Refuses())
    return;
  bool isNumber = false;
  const double shown = buddy_ ? buddy_->text().trimmed().toDouble(&isNumber) : 0;
  const double from = isNumber ? std::clamp(shown, -1e6, 1e6) : value_;
  const int value = std::clamp(static_cast<int>(from) + steps * step_, minimum_, maximum_);
  if (buddy_) buddy_->setText(QString::number(value));
  SetValue(value);
}

bool UpDown::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !isEnabled()) return false;
  if (watched != buddy_ && watched != Up) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Up && key != Qt::Key_Down) return false;
  StepBy(key == Qt::Key_Up ? 1 : -1);
  return true;
}

}  // namespace rws
