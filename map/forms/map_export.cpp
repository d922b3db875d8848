#include "map/forms/map_export.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

#include "platform/qt_text.h"
#include "platform/svg_file.h"
#include "services/faults.h"
#include "services/pickers.h"

namespace rws {

namespace {

constexpr int kLongestSide = 16384;
constexpr qint64 kMostPixels = 100'000'000;

void RequireFitting(QSize size) {
  const qint64 pixels = qint64{size.width()} * size.height();
  if (!size.isEmpty() && size.width() <= kLongestSide && size.height() <= kLongestSide &&
      pixels <= kMostPixels)
    return;
  throw Fault(fault::InvalidPicture, "A picture of " + std::to_string(size.width()) + " x " +
                                         std::to_string(size.height()) + " pixels cannot be made.");
}

void Replace(const Services& services, const std::string& path, const QByteArray& bytes,
             const char* kind) {
  if (bytes.isEmpty())
    throw FileFault(fault::InvalidPicture, "write", path,
                    std::string("the picture could not be made as ") + kind);
  services.Files.ReplaceFile(
      path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

}  // namespace

QSize SizeOfPicture(PictureSize size, QSize shown) {
  if (size == PictureSize::Twice) return shown * 2;
  if (size == PictureSize::AsShown || shown.isEmpty()) return shown;
  return {kWidePicture, qRound(double(shown.height()) * kWidePicture / shown.width())};
}

QImage PictureOf(const PaintMapInto& paint, QSize shown, PictureSize size) {
  const QSize pixels = SizeOfPicture(size, shown);
  RequireFitting(pixels);
  QImage image(pixels, QImage::Format_RGB32);
  if (image.isNull()) throw OutOfMemoryFault();
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.scale(double(pixels.width()) / shown.width(), double(pixels.height()) / shown.height());
  paint(painter, shown);
  painter.end();
  return image;
}

void SavePng(const Services& services, const std::string& path, const PaintMapInto& paint,
             QSize shown, PictureSize size) {
  const QImage image = PictureOf(paint, shown, size);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "PNG")) bytes.clear();
  Replace(services, path, bytes, "PNG");
}

void SaveSvg(const Services& services, const std::string& path, const PaintMapInto& paint,
             QSize shown, const QString& title) {
  RequireFitting(shown);
  Replace(services, path, SvgOf(shown, title, [&](QPainter& painter) { paint(painter, shown); }),
          "SVG");
}

void CopyPicture(const PaintMapInto& paint, QSize shown) {
  QGuiApplication::clipboard()->setImage(PictureOf(paint, shown, PictureSize::AsShown));
}

std::string AskAndSave(const Services& services, const std::string& title,
                       const std::string& baseName, const std::string& filter,
                       const std::string& folder,
                       const std::function<void(const std::string& path)>& save) {
  const std::string path = GetSaveFile(services, title, baseName, filter, folder);
  if (path.empty()) return "";
  const bool saved =
      Trap([&] { save(path); },
           [&](const Fault& caught) {
             services.Ask.MsgBox(caught.Text, Buttons::Ok, Icon::Exclamation, kProgramTitle);
           });
  return saved ? path : "";
}

}  // namespace rws
