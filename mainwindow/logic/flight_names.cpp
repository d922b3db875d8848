#include "mainwindow/logic/flight_names.h"

#include <algorithm>

#include "services/error_log.h"
#include "services/text.h"

namespace rws {

namespace {

/** Adds a number below 10 to a decimal text of any length; its width stays unless it is used up. */
void AddTo(std::string& digits, int number) {
  for (std::size_t i = digits.size(); i > 0 && number > 0; --i) {
    const int sum = digits[i - 1] - '0' + number;
    digits[i - 1] = static_cast<char>('0' + sum % 10);
    number = sum / 10;
  }
  if (number > 0) digits.insert(digits.begin(), '1');
}

}  // namespace

bool FlightNameExists(const Document& doc, std::string_view name) {
  const auto& flights = At(doc.Missions, doc.CurMission).Flights;
  return std::any_of(flights.begin(), flights.end(),
                     [&](const Flight& flight) { return flight.Name == name; });
}

std::string NextFlightName(const Document& doc, const Services& services, std::string_view name) {
  name = Trim(name);
  // Without any other character the position is the last one there is, and 0 behind it.
  const std::size_t stem = name.find_last_not_of("0123456789") + 1;
  std::string digits(name.substr(stem));
  if (digits.empty()) {
    LogError(services, TypeMismatchFault().Text, "NextFlightName");
    digits = "00";
  }
  std::string next(name.substr(0, stem));
  for (next += digits; FlightNameExists(doc, next); next.replace(stem, next.npos, digits))
    AddTo(digits, digits.back() >= '3' ? 7 : 1);
  return next;
}

}  // namespace rws
