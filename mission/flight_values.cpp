#include "mission/flight_values.h"

#include <algorithm>

#include "services/faults.h"
#include "services/numbers.h"

namespace rws {

std::size_t PlaneCount(const Flight& flight) {
  const auto slots = static_cast<double>(flight.PlaneSlots.size());
  return static_cast<std::size_t>(std::clamp(Val(flight.Planes), 0.0, slots));
}

std::string_view GroupOf(std::string_view flightName) {
  if (flightName.size() < 2) throw InvalidCallFault();
  return flightName.substr(0, flightName.size() - 2);
}

}  // namespace rws
