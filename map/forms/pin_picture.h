#pragma once

#include <QImage>
#include <QWidget>
#include <array>
#include <cstddef>

namespace rws {

/** Shows a picture with two numbered pins; a click, or the arrow keys, puts the current one. Places
    are parts of the picture's width and height, from its upper left corner. */
class PinPicture : public QWidget {
  Q_OBJECT

 public:
  explicit PinPicture(QWidget* parent = nullptr);

  void SetPicture(const QImage& picture);
  const QImage& Picture() const { return picture_; }
  void SetPinsShown(bool shown);
  void SetCurrent(std::size_t pin);

  std::array<QPointF, 2> Pins{QPointF(0.25, 0.25), QPointF(0.75, 0.75)};

  QSize sizeHint() const override;

 Q_SIGNALS:
  void PinMoved(std::size_t pin);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QRectF Place() const;
  void PutAt(QPointF at);

  QImage picture_;
  bool pinsShown_ = false;
  std::size_t current_ = 0;
};

}  // namespace rws
