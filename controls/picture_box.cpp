#include "controls/picture_box.h"

#include <QPainter>
#include <utility>

namespace rws {

PictureBox::PictureBox(QWidget* parent) : QFrame(parent) { setFrameStyle(StyledPanel | Sunken); }

void PictureBox::Show(const QImage& picture, std::string path) {
  picture_ = picture;
  path_ = std::move(path);
  scaled_ = QPixmap();
  update();
}

void PictureBox::Clear() { Show(QImage(), ""); }

void PictureBox::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  const QRect place = contentsRect();
  if (IsEmpty() || place.isEmpty()) return;
  const qreal ratio = devicePixelRatioF();
  // A strip of one pixel's height would else vanish.
  const QSize size = picture_.size()
                         .scaled((QSizeF(place.size()) * ratio).toSize(), Qt::KeepAspectRatio)
                         .expandedTo(QSize(1, 1));
  if (scaled_.size() != size) {
    scaled_ =
        QPixmap::fromImage(picture_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  scaled_.setDevicePixelRatio(ratio);
  QRectF target(QPointF(), scaled_.deviceIndependentSize());
  target.moveCenter(QRectF(place).center());
  QPainter(this).drawPixmap(target.topLeft(), scaled_);
}

}  // namespace rws
