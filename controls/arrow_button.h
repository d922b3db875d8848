#pragma once

#include <QPushButton>
#include <QStyleOption>
#include <QStylePainter>
#include <algorithm>

namespace rws {

/** A push button with an arrow that the style draws, in the colour of the button's text. */
class ArrowButton : public QPushButton {
  Q_OBJECT

 public:
  explicit ArrowButton(QStyle::PrimitiveElement arrow, QWidget* parent = nullptr)
      : QPushButton(parent), arrow_(arrow) {}

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPushButton::paintEvent(event);
    QStylePainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    const int side = std::min({width(), height(), fontMetrics().height()});
    option.rect = QRect(0, 0, side, side);
    option.rect.moveCenter(rect().center());
    painter.drawPrimitive(arrow_, option);
  }

 private:
  QStyle::PrimitiveElement arrow_;
};

}  // namespace rws
