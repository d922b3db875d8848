#include "platform/images.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>
#include <optional>

#include "platform/qt_text.h"
#include "services/faults.h"

namespace rws {

namespace {

constexpr std::uint64_t kMostBytes = 256u << 20;
constexpr int kLongestSide = 16384;
constexpr qint64 kMostPixels = qint64{64} << 20;
/** Megabytes of a picture of `kMostPixels` in four bytes each. */
constexpr int kMostMegabytes = 256;

Fault PictureFault(const std::string& path, const QString& reason) {
  return FileFault(fault::InvalidPicture, "show the picture", path, ToPath(reason));
}

template <class Number>
qint64 NumberAt(const QByteArray& bytes, qsizetype offset) {
  return qFromLittleEndian<Number>(bytes.constData() + offset);
}

/** Refuses a claimed size before memory is taken for it. */
void RequireFitting(qint64 width, qint64 height, const std::string& path) {
  if (width <= kLongestSide && height <= kLongestSide && width * height <= kMostPixels) return;
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
void RequireWholeBmp(const QByteArray& bytes, const std::string& path) {
  const auto header = HeaderOf(bytes);
  const auto cutShort = [&] { return PictureFault(path, QStringLiteral("the file is cut short")); };
  if (!header) throw cutShort();
  RequireFitting(header->Width, header->Height, path);
  constexpr qint64 kRuns8 = 1, kRuns4 = 2;
  if (header->Compression == kRuns8 || header->Compression == kRuns4) return;
  const qint64 rowBytes = (header->Width * header->Bits + 31) / 32 * 4;
  if (bytes.size() - NumberAt<quint32>(bytes, 10) < rowBytes * header->Height) throw cutShort();
}

}  // namespace

QImage ReadPicture(const FileSystem& files, const std::string& path) {
  // Nothing but a file is opened: reading a pipe would never end.
  if (!files.FileExists(path)) throw FileNotFoundFault(path);
  const std::string content = files.ReadFile(path, kMostBytes);
  if (content.empty()) throw PictureFault(path, QStringLiteral("the file is empty"));
  QByteArray bytes =
      QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size()));
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);

  QImageReader::setAllocationLimit(kMostMegabytes);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  const QByteArray format = reader.format();
  // Other decoders may be installed, some of which follow links to further files.
  if (!QList<QByteArray>{"bmp", "jpeg", "jpg", "png", "gif"}.contains(format))
    throw PictureFault(path, QStringLiteral("it is no BMP, JPEG, PNG or GIF picture"));
  if (format == "bmp") RequireWholeBmp(bytes, path);
  const QSize size = reader.size();
  RequireFitting(size.width(), size.height(), path);
  // Pixels that a compressed file skips are not set by the decoder; so they are cleared before.
  QImage image(size, reader.imageFormat());
  image.fill(0);
  if (!reader.read(&image)) throw PictureFault(path, reader.errorString());
  return image;
}

}  // namespace rws
