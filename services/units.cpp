#include "services/units.h"

#include <cmath>

#include "services/numbers.h"

namespace rws {

namespace {
std::string Convert(std::string_view text, double factor, int decimals) {
  const auto value = ParseNumber(text);
  if (!value || !std::isfinite(*value * factor)) return "";
  return NumberText(RoundHalfEven(*value * factor, decimals));
}
}  // namespace

std::string MilesToKm(std::string_view text) { return Convert(text, 1.609344, 0); }
std::string KmToMiles(std::string_view text) { return Convert(text, 0.621371192, 0); }
std::string MetersToFeet(std::string_view text) { return Convert(text, 3.2808399, 0); }
std::string FeetToMeters(std::string_view text) { return Convert(text, 0.3048, 0); }
std::string DistToMiles(std::string_view text) { return Convert(text, 0.00621371192, 2); }

}  // namespace rws
