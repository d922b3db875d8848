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
  // The generator writes it as it is.
  generator.setTitle(title.toHtmlEscaped());
  // One unit is one pixel, and letters are as large as on the screen.
  constexpr int kScreenDots = 96;
  generator.setResolution(kScreenDots);
  QPainter painter(&generator);
  paint(painter);
  painter.end();
  // What the file format knows no spelling for; it would make all of it unreadable.
  const auto isControl = [](char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
  };
  bytes.removeIf(isControl);
  return bytes;
}

}  // namespace rws
