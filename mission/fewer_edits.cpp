#include "mission/fewer_edits.h"

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "mission/fields.h"
#include "mission/kept_flights.h"
#include "services/text.h"

namespace rws {

namespace {

/** These follow from others. */
bool IsDerived(std::string_view field) {
  return field == "Line" || field == "Dist" || field == "LastWaypoint";
}

/** Each plain value is that of one of two records; of one that is null, always that of the other.
 */
template <class Record>
bool IsOfEither(const Record& result, const Record* a, const Record* b) {
  bool of = a || b;
  ForEachField<Record>([&](const auto& field) {
    if constexpr (kIsPlain<std::decay_t<decltype(result.*field.Pointer)>>) {
      const auto& value = result.*field.Pointer;
      const bool isA = a && value == a->*field.Pointer, isB = b && value == b->*field.Pointer;
      if (field.What == Holds::Content && !IsDerived(field.Name)) of = of && (isA || isB);
    }
  });
  return of;
}

const Waypoint* RowOf(const Flight* flight, std::int32_t row) {
  if (!flight || row < 0) return nullptr;
  const auto& route = flight->Waypoints;
  const auto found = std::find_if(route.begin(), route.end(),
                                  [&](const Waypoint& other) { return other.KeptRow == row; });
  return found == route.end() ? nullptr : std::to_address(found);
}

bool HasFewerRows(const Flight* read, const Flight* edited, const Flight& result) {
  std::vector<const Waypoint*> added;
  for (const auto& waypoint : edited ? edited->Waypoints : read->Waypoints) {
    if (waypoint.KeptRow < 0)
      added.push_back(&waypoint);
    else if (!RowOf(&result, waypoint.KeptRow))
      return false;
  }
  for (const auto& waypoint : result.Waypoints) {
    if (waypoint.KeptRow >= 0) {
      const Waypoint* was = RowOf(read, waypoint.KeptRow);
      if (!IsOfEither(waypoint, was, RowOf(edited, waypoint.KeptRow))) return false;
      continue;
    }
    const auto one = std::find_if(added.begin(), added.end(), [&](const Waypoint* other) {
      return !WaypointDiffers(*other, waypoint);
    });
    if (one == added.end()) return false;
    added.erase(one);
  }
  return true;
}

/** The flight of a name, or else the first that was read by a name. */
const Flight* Find(const Mission& mission, const Flight& flight) {
  const auto& flights = mission.Flights;
  auto found = std::find_if(flights.begin(), flights.end(),
                            [&](const Flight& other) { return other.Name == flight.Name; });
  if (found == flights.end())
    found = std::find_if(flights.begin(), flights.end(), [&](const Flight& other) {
      return EqualNoCase(other.KeptName, flight.KeptName);
    });
  return found == flights.end() ? nullptr : std::to_address(found);
}

const Flight* ReadBy(const Mission& mission, std::string_view name) {
  const auto& flights = mission.Flights;
  const auto found = std::find_if(flights.begin(), flights.end(), [&](const Flight& other) {
    return EqualNoCase(other.KeptName, name);
  });
  return found == flights.end() ? nullptr : std::to_address(found);
}

bool HasFewerEdits(const Flight* read, const Flight* edited, const Flight& result) {
  if (!IsOfEither(result, read, edited)) return false;
  for (std::size_t i = 0; i < result.PlaneSlots.size(); ++i)
    if (!IsOfEither(result.PlaneSlots[i], read ? &read->PlaneSlots[i] : nullptr,
                    edited ? &edited->PlaneSlots[i] : nullptr))
      return false;
  return HasFewerRows(read, edited, result);
}

std::set<std::string> Names(const std::vector<std::string>& planes) {
  std::set<std::string> names;
  for (const auto& plane : planes) names.insert(LowerKey(plane));
  return names;
}

bool HasFewerEdits(const BornPlace& read, const BornPlace& edited, const BornPlace& result) {
  const auto was = Names(read.Planes), wanted = Names(edited.Planes), is = Names(result.Planes);
  const bool onlyThese = std::all_of(is.begin(), is.end(), [&](const std::string& plane) {
    return was.contains(plane) || wanted.contains(plane);
  });
  const bool allOfBoth = std::all_of(was.begin(), was.end(), [&](const std::string& plane) {
    return !wanted.contains(plane) || is.contains(plane);
  });
  return onlyThese && allOfBoth && IsOfEither(result, &read, &edited);
}

}  // namespace

bool HasFewerEdits(const Mission& read, const Mission& edited, const Mission& result) {
  if (!IsOfEither(result, &read, &edited)) return false;
  for (const auto& flight : result.Flights) {
    const Flight* was = ReadBy(read, flight.KeptName);
    if (!HasFewerEdits(was, Find(edited, flight), flight)) return false;
  }
  for (const auto& flight : edited.Flights)
    if (ReadBy(read, flight.KeptName) && !ReadBy(result, flight.KeptName)) return false;
  if (read.BornPlaces.size() != result.BornPlaces.size() ||
      edited.BornPlaces.size() != result.BornPlaces.size())
    return false;
  for (std::size_t i = 0; i < result.BornPlaces.size(); ++i)
    if (!HasFewerEdits(read.BornPlaces[i], edited.BornPlaces[i], result.BornPlaces[i]))
      return false;
  return true;
}

}  // namespace rws
