#include "mission/flight_values.h"

#include <algorithm>

#include "mission/fields.h"
#include "services/faults.h"
#include "services/numbers.h"

namespace rws {

std::size_t PlaneCount(const Flight& flight) {
  const auto slots = static_cast<double>(flight.PlaneSlots.size());
  return static_cast<std::size_t>(std::clamp(Val(flight.Planes), 0.0, slots));
}

void BringSlotsBack(Flight& now, const Flight& from, const Flight& to) {
  const bool ownSkills = from.Skill != "Custom" && to.Skill == "Custom";
  for (std::size_t i = 0; i < now.PlaneSlots.size(); ++i) {
    const bool flies = i >= PlaneCount(from) && i < PlaneCount(to);
    ForEachField<PlaneSlot>([&](const auto& field) {
      auto& value = now.PlaneSlots[i].*field.Pointer;
      if (value.empty() && (flies || (ownSkills && &value == &now.PlaneSlots[i].Skill)))
        value = to.PlaneSlots[i].*field.Pointer;
    });
  }
}

std::string_view GroupOf(std::string_view flightName) {
  if (flightName.size() < 2) throw InvalidCallFault();
  return flightName.substr(0, flightName.size() - 2);
}

}  // namespace rws
