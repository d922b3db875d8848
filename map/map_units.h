#pragma once

#include <string>

/** Distances, heights and speeds in the units that the user has chosen for waypoints: metres,
    kilometres and kilometres per hour, or feet, miles and miles per hour. */
namespace rws {

inline constexpr double kMetresPerMile = 1609.344, kFeetPerMetre = 3.2808399;

/** "850 m", "12.3 km", "123 km"; "0.5 miles". */
std::string DistanceText(double metres, bool metric);
/** "1500 m", "4921 feet". */
std::string HeightText(double metres, bool metric);
/** "350 km/h", "217 mph". */
std::string SpeedText(double kilometresPerHour, bool metric);
/** "045°". */
std::string HeadingText(double degrees);
/** A span of minutes: "3 min 20 s", "1 h 05 min". */
std::string MinutesText(double minutes);

}  // namespace rws
