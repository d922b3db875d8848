#include "map/forms/pin_picture.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace rws {

PinPicture::PinPicture(QWidget* parent) : QWidget(parent) { setFocusPolicy(Qt::StrongFocus); }

QSize PinPicture::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() * 18};
}

void PinPicture::SetPicture(const QImage& picture) {
  picture_ = picture;
  update();
}

void PinPicture::SetPinsShown(bool shown) {
  pinsShown_ = shown;
  update();
}

void PinPicture::SetCurrent(std::size_t pin) {
  current_ = pin;
  update();
}

/** Where the picture is shown: all of it, in the middle. */
QRectF PinPicture::Place() const {
  if (picture_.isNull()) return {};
  QRectF place(QPointF(), QSizeF(picture_.size()).scaled(size(), Qt::KeepAspectRatio));
  place.moveCenter(QRectF(rect()).center());
  return place;
}

void PinPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  const QRectF place = Place();
  if (place.isEmpty()) return painter.drawText(rect(), Qt::AlignCenter, tr("No picture"));
  painter.drawImage(place, picture_);
  if (hasFocus()) {
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(place);
  }
  for (std::size_t i = 0; i < Pins.size() && pinsShown_; ++i) {
    const QPointF at(place.left() + Pins[i].x() * place.width(),
                     place.top() + Pins[i].y() * place.height());
    const double size = fontMetrics().height() * 0.6;
    for (const bool halo : {true, false}) {
      painter.setPen(QPen(halo ? Qt::white : i == current_ ? Qt::red : Qt::black, halo ? 4 : 2));
      painter.drawLine(at - QPointF(size, 0), at + QPointF(size, 0));
      painter.drawLine(at - QPointF(0, size), at + QPointF(0, size));
    }
    const QRectF label(at + QPointF(size / 3, -2.4 * size), QSizeF(size * 1.6, size * 2));
    painter.fillRect(label, Qt::white);
    painter.drawText(label, Qt::AlignCenter, QString::number(i + 1));
  }
}

void PinPicture::PutAt(QPointF at) {
  const QRectF place = Place();
  if (place.isEmpty() || !pinsShown_) return;
  Pins[current_] = {std::clamp((at.x() - place.left()) / place.width(), 0.0, 1.0),
                    std::clamp((at.y() - place.top()) / place.height(), 0.0, 1.0)};
  update();
  Q_EMIT PinMoved(current_);
}

void PinPicture::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) PutAt(event->position());
}

void PinPicture::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() & Qt::LeftButton) PutAt(event->position());
}

void PinPicture::keyPressEvent(QKeyEvent* event) {
  const QRectF place = Place();
  QPointF step;
  if (event->key() == Qt::Key_Left) step = {-1, 0};
  if (event->key() == Qt::Key_Right) step = {1, 0};
  if (event->key() == Qt::Key_Up) step = {0, -1};
  if (event->key() == Qt::Key_Down) step = {0, 1};
  if (step.isNull() || place.isEmpty()) return QWidget::keyPressEvent(event);
  const QPointF pin = Pins[current_];
  PutAt(QPointF(place.left() + pin.x() * place.width(), place.top() + pin.y() * place.height()) +
        step);
}

}  // namespace rws
