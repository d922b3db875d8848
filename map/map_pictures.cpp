#include "map/map_pictures.h"

#include <cmath>

#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kWords = 7;

std::optional<double> Finite(std::string_view text) {
  const auto number = ParseNumber(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<MapPicture> Parsed(std::string_view line) {
  const auto words = SplitAt(line, '\t');
  if (words.size() != kWords || words[1].empty()) return {};
  const auto left = Finite(words[2]), bottom = Finite(words[3]), right = Finite(words[4]);
  const auto top = Finite(words[5]), opacity = Finite(words[6]);
  if (!left || !bottom || !right || !top || !opacity || !(*left < *right) || !(*bottom < *top))
    return {};
  return MapPicture{std::string(words[0]),
                    std::string(words[1]),
                    {*left, *bottom, *right, *top},
                    std::min(std::max(*opacity, 0.0), 1.0)};
}

bool IsOf(std::string_view line, std::string_view map) {
  return EqualNoCase(line.substr(0, line.find('\t')), map) && Contains(line, "\t");
}

template <class Visit>
void EachLine(std::string_view text, Visit visit) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    visit(line);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
}

}  // namespace

std::optional<MapPicture> PictureOfMap(std::string_view text, std::string_view map) {
  std::optional<MapPicture> found;
  EachLine(text, [&](std::string_view line) {
    if (!found && IsOf(line, map)) found = Parsed(line);
  });
  return found;
}

std::string WithoutMapPicture(std::string_view text, std::string_view map) {
  std::string kept;
  EachLine(text, [&](std::string_view line) {
    if (!IsOf(line, map)) kept.append(line).append("\r\n");
  });
  return kept;
}

std::string WithMapPicture(std::string_view text, const MapPicture& picture) {
  std::string line = picture.Map + "\t" + picture.File;
  const MapBounds& place = picture.Place;
  for (const double number : {place.Left, place.Bottom, place.Right, place.Top, picture.Opacity})
    line.append("\t").append(NumberText(number));
  return WithoutMapPicture(text, picture.Map) + line + "\r\n";
}

std::optional<MapBounds> PlaceByPoints(const PinnedPoint& a, const PinnedPoint& b, int width,
                                       int height) {
  const double pixelsX = b.PixelX - a.PixelX, pixelsY = b.PixelY - a.PixelY;
  if (pixelsX == 0 || pixelsY == 0) return {};
  // North is up in the picture, where pixels count downwards.
  const double scaleX = (b.At.X - a.At.X) / pixelsX, scaleY = (a.At.Y - b.At.Y) / pixelsY;
  if (!(scaleX > 0) || !(scaleY > 0)) return {};
  const double left = a.At.X - a.PixelX * scaleX, top = a.At.Y + a.PixelY * scaleY;
  return MapBounds{left, top - height * scaleY, left + width * scaleX, top};
}

}  // namespace rws
