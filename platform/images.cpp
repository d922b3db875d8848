#include "platform/images.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>
#include <cmath>
#include <optional>

#include "platform/qt_text.h"
#include "services/faults.h"

namespace rws {

namespace {

constexpr std::uint64_t kMostBytes = 256u << 20;

/** What a picture may claim to be. */
struct PictureLimits {
  qint64 LongestSide, MostPixels;

  /** Of all its pixels in four bytes each. */
  int Megabytes() const { return static_cast<int>(MostPixels * 4 >> 20); }
};
constexpr PictureLimits kUsual{16384, qint64{64} << 20}, kLarge{32768, qint64{256} << 20};

Fault PictureFault(const std::string& path, const QString& reason) {
  return FileFault(fault::InvalidPicture, "show the picture", path, ToPath(reason));
}

template <class Number>
qint64 NumberAt(const QByteArray& bytes, qsizetype offset) {
  return qFromLittleEndian<Number>(bytes.constData() + offset);
}

/** Refuses a claimed size before memory is taken for it. */
void RequireFitting(qint64 width, qint64 height, const PictureLimits& limits,
                    const std::string& path) {
  if (width <= limits.LongestSide && height <= limits.LongestSide &&
      width * height <= limits.MostPixels)
    return;
  throw PictureFault(
      path, QStringLiteral("it claims %1 x %2 pixels, which is too large").arg(width).arg(height));
}

struct BmpHeader {
  qint64 Width, Height, Bits, Compression;
};

/** None when the file ends within its header. */
std::optional<BmpHeader> HeaderOf(const QByteArray& bytes) {
  constexpr qsizetype kOldEnd = 26, kEnd = 54;
  if (bytes.size() < kOldEnd) return {};
  constexpr qint64 kOldSize = 12;
  if (NumberAt<quint32>(bytes, 14) == kOldSize)
    return BmpHeader{NumberAt<qint16>(bytes, 18), qAbs(NumberAt<qint16>(bytes, 20)),
                     NumberAt<quint16>(bytes, 24), 0};
  if (bytes.size() < kEnd) return {};
  return BmpHeader{NumberAt<qint32>(bytes, 18), qAbs(NumberAt<qint32>(bytes, 22)),
                   NumberAt<quint16>(bytes, 28), NumberAt<quint32>(bytes, 30)};
}

/** Refuses a BMP that ends before its last row, which the decoder does not tell. The length of a
    compressed one cannot be known beforehand. */
void RequireWholeBmp(const QByteArray& bytes, const PictureLimits& limits,
                     const std::string& path) {
  const auto header = HeaderOf(bytes);
  const auto cutShort = [&] { return PictureFault(path, QStringLiteral("the file is cut short")); };
  if (!header) throw cutShort();
  RequireFitting(header->Width, header->Height, limits, path);
  constexpr qint64 kRuns8 = 1, kRuns4 = 2;
  if (header->Compression == kRuns8 || header->Compression == kRuns4) return;
  const qint64 rowBytes = (header->Width * header->Bits + 31) / 32 * 4;
  if (bytes.size() - NumberAt<quint32>(bytes, 10) < rowBytes * header->Height) throw cutShort();
}

/** A picture file in memory, looked at as far as its head. */
class PictureFile {
 public:
  PictureFile(const FileSystem& files, const std::string& path, const PictureLimits& limits)
      : path_(path) {
    // Nothing but a file is opened: reading a pipe would never end.
    if (!files.FileExists(path)) throw FileNotFoundFault(path);
    content_ = files.ReadFile(path, kMostBytes);
    if (content_.empty()) throw PictureFault(path, QStringLiteral("the file is empty"));
    bytes_ = QByteArray::fromRawData(content_.data(), static_cast<qsizetype>(content_.size()));
    buffer_.setBuffer(&bytes_);
    buffer_.open(QIODevice::ReadOnly);
    QImageReader::setAllocationLimit(limits.Megabytes());
    Reader.setDevice(&buffer_);
    Reader.setDecideFormatFromContent(true);
    const QByteArray format = Reader.format();
    // Other decoders may be installed, some of which follow links to further files.
    if (!QList<QByteArray>{"bmp", "jpeg", "jpg", "png", "gif"}.contains(format))
      throw PictureFault(path, QStringLiteral("it is no BMP, JPEG, PNG or GIF picture"));
    if (format == "bmp") RequireWholeBmp(bytes_, limits, path);
    RequireFitting(Size().width(), Size().height(), limits, path);
  }

  /** The decoder tells a negative height of a BMP whose upper row comes first. */
  QSize Size() const {
    const QSize size = Reader.size();
    return {size.width(), qAbs(size.height())};
  }

  QImage Read(const QImage& into = {}) {
    QImage image = into;
    if (!Reader.read(&image)) throw PictureFault(path_, Reader.errorString());
    return image;
  }

 private:
  std::string path_, content_;
  QByteArray bytes_;
  QBuffer buffer_;

 public:
  QImageReader Reader;
};

}  // namespace

QImage ReadPicture(const FileSystem& files, const std::string& path) {
  PictureFile file(files, path, kUsual);
  // Pixels that a compressed file skips are not set by the decoder; so they are cleared before.
  QImage image(file.Size(), file.Reader.imageFormat());
  image.fill(0);
  return file.Read(image);
}

QImage ReadLargePicture(const FileSystem& files, const std::string& path, qint64 mostPixels,
                        QSize& full) {
  PictureFile file(files, path, kLarge);
  full = file.Size();
  const double pixels = double(full.width()) * full.height();
  if (pixels > double(mostPixels))
    file.Reader.setScaledSize(
        (full * std::sqrt(double(mostPixels) / pixels)).expandedTo(QSize(1, 1)));
  return file.Read();
}

}  // namespace rws
