#pragma once

#include <string>
#include <string_view>

/** Unit conversions from numeric text to text; a text that is no number yields "". All round ties
    to the even neighbour. */
namespace rws {

/** Miles per hour to whole kilometres per hour. */
std::string MilesToKm(std::string_view text);
/** Kilometres per hour to whole miles per hour. */
std::string KmToMiles(std::string_view text);
std::string MetersToFeet(std::string_view text);
std::string FeetToMeters(std::string_view text);
/** Units of ten metres to miles, two decimals. */
std::string DistToMiles(std::string_view text);

}  // namespace rws
