#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>

#include "platform/svg_file.h"

namespace rws {

bool CanWriteSvg() { return true; }

QByteArray SvgOf(QSize size, const QString& title, const std::function<void(QPainter&)>& paint) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(), size));
  generator.setTitle(title);
  // One unit is one pixel, and letters are as large as on the screen.
  constexpr int kScreenDots = 96;
  generator.setResolution(kScreenDots);
  QPainter painter(&generator);
  paint(painter);
  painter.end();
  return bytes;
}

}  // namespace rws
