#include "map/map_units.h"

#include <cmath>

#include "services/numbers.h"

namespace rws {

namespace {

std::string Rounded(double value, int decimals) {
  return NumberText(RoundHalfEven(value, decimals));
}

std::string TwoDigits(long number) {
  const std::string text = std::to_string(number);
  return text.size() < 2 ? "0" + text : text;
}

}  // namespace

std::string DistanceText(double metres, bool metric) {
  if (metric && metres < 999.5) return Rounded(metres, 0) + " m";
  const double large = metric ? metres / 1000 : metres / kMetresPerMile;
  return Rounded(large, large < 99.95 ? 1 : 0) + (metric ? " km" : " miles");
}

std::string HeightText(double metres, bool metric) {
  return Rounded(metric ? metres : metres * kFeetPerMetre, 0) + (metric ? " m" : " feet");
}

std::string SpeedText(double kilometresPerHour, bool metric) {
  const double speed = metric ? kilometresPerHour : kilometresPerHour * 1000 / kMetresPerMile;
  return Rounded(speed, 0) + (metric ? " km/h" : " mph");
}

std::string HeadingText(double degrees) {
  const long whole = std::lround(degrees) % 360;
  std::string text = std::to_string(whole < 0 ? whole + 360 : whole);
  return std::string(3 - text.size(), '0') + text + "\xC2\xB0";
}

std::string MinutesText(double minutes) {
  const long seconds = std::lround(minutes * 60);
  if (seconds < 60) return std::to_string(seconds) + " s";
  if (seconds < 3600)
    return std::to_string(seconds / 60) + " min " + TwoDigits(seconds % 60) + " s";
  return std::to_string(seconds / 3600) + " h " + TwoDigits(seconds / 60 % 60) + " min";
}

}  // namespace rws
