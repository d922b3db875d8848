#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "map/geometry.h"

/** Pictures of the user's own that lie under maps of the game. They are remembered in a file beside
    the program's others, one line for each map: its path, the picture's path, left, bottom, right
   and top in metres, opacity from 0 to 1, parted by tabs. Text is UTF-8. */
namespace rws {

struct MapPicture {
  std::string Map;   // path as missions have it, any letter case
  std::string File;  // the picture
  MapBounds Place;
  double Opacity = 1;
};

inline constexpr std::string_view kMapPicturesFile = "RWS Map Pictures.txt";

/** The picture of a map by the text of the file; nothing for none, or for a line that cannot be
    understood. */
std::optional<MapPicture> PictureOfMap(std::string_view text, std::string_view map);

/** The text with a map's picture in place of the one that it has. Other lines stay as they are. */
std::string WithMapPicture(std::string_view text, const MapPicture& picture);
std::string WithoutMapPicture(std::string_view text, std::string_view map);

/** A point of a picture, in pixels from its upper left corner, and where that is on the map. */
struct PinnedPoint {
  double PixelX = 0, PixelY = 0;
  MapPoint At;
};
/** Where a picture's edges are, by two of its points: north is up, and it may be stretched. Nothing
    where the two are beside or above each other, or the wrong way round. */
std::optional<MapBounds> PlaceByPoints(const PinnedPoint& a, const PinnedPoint& b, int width,
                                       int height);

}  // namespace rws
