#include "map/forms/map_picture_files.h"

#include "map/map_pictures.h"
#include "platform/images.h"
#include "platform/qt_text.h"
#include "services/faults.h"
#include "services/paths.h"

namespace rws {

namespace {

std::string FilePath(const Services& services) {
  return BuildPath(services.AppPath, kMapPicturesFile);
}

}  // namespace

std::string ReadMapPictures(const Services& services) {
  constexpr std::uint64_t kMostBytes = 1u << 20;
  const std::string path = FilePath(services);
  return services.Files.FileExists(path) ? services.Files.ReadFile(path, kMostBytes) : "";
}

void StoreMapPictures(const Services& services,
                      const std::function<std::string(const std::string& text)>& change) {
  services.Files.ReplaceFile(FilePath(services), change(ReadMapPictures(services)));
}

QImage ReadMapPicture(const Services& services, const std::string& path, QString& fault,
                      QSize* full) {
  constexpr qint64 kMostPixels = qint64{16} << 20;
  QImage picture;
  QSize size;
  Trap([&] { picture = ReadLargePicture(services.Files, path, kMostPixels, size); },
       [&](const Fault& caught) { fault = FromPath(caught.Text); });
  if (full) *full = size;
  return picture;
}

}  // namespace rws
