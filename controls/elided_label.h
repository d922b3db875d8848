#pragma once

#include <QLabel>
#include <QPainter>

namespace rws {

/** A line of text that may be wider than its place: the middle then gives way to dots. */
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;
  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    const QRect place = contentsRect().adjusted(indent(), 0, 0, 0);
    QPainter painter(this);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width()));
  }
};

}  // namespace rws
