#include <QImage>
#include <QSize>

#include "fuzz/support.h"
#include "platform/images.h"
#include "services/faults.h"
#include "services/paths.h"

/** Shows a BMP picture, as those of skins are. */

namespace {

using namespace rws;

constexpr std::size_t kHeader = 26;
constexpr unsigned kLargestSide = 1024;

/** Memory for pictures of a size that the program allows is no finding, but takes time. */
bool IsSmall(std::string_view bytes) {
  const auto number = [&](std::size_t at) {
    unsigned value = 0;
    for (std::size_t i = 4; i-- > 0;)
      value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
  };
  const auto isSmall = [](unsigned side) {
    return side <= kLargestSide || 0u - side <= kLargestSide || side > 0x8000'0000u;
  };
  return bytes.size() < kHeader || number(14) == 12 || (isSmall(number(18)) && isSmall(number(22)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::TextOf(data, size);
  if (!bytes.starts_with("BM") || !IsSmall(bytes)) return 0;
  const std::string path = BuildPath(fuzz::WriteScratch("skin.bmp", bytes), "skin.bmp");
  const FileSystem& files = fuzz::QuietServices().Files;
  QImage image;
  const bool isShown = ResumeNext([&] { image = ReadPicture(files, path); });
  fuzz::Require(image.isNull() != isShown, "A picture is shown, or the reason is told.");
  QSize full;
  QImage small;
  if (!ResumeNext([&] { small = ReadLargePicture(files, path, 64, full); })) return 0;
  fuzz::Require(!small.isNull() && full.width() > 0 && full.height() > 0, "It has a size.");
  fuzz::Require(!isShown || image.size() == full, "The size is that of the picture.");
  return 0;
}
