#include <algorithm>
#include <string>
#include <vector>

#include "mission/writer.h"
#include "services/arrays.h"
#include "services/error_log.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kIndent = "  ";

void AddKey(LineArray& output, std::string_view key, std::string_view value) {
  std::string line(key);
  output.Add(kIndent, Trim(line.append(" ").append(value)));
}

/** True if the number that a word begins with is exactly 0, which it also is for a word without
 * one. */
bool CountsAsZero(std::string_view word) {
  const bool beginsAboveZero = !word.empty() && word[0] >= '1' && word[0] <= '9';
  return !beginsAboveZero && Val(word) == 0;
}

/** Number of plane slots that a flight writes; a count above four stops at the last slot. */
std::size_t SlotCount(const Flight& flight) {
  const double planes = Val(flight.Planes);
  return static_cast<std::size_t>(
      std::clamp(planes, 0.0, static_cast<double>(flight.PlaneSlots.size())));
}

void AddSlotLines(LineArray& output, const Flight& flight, std::string_view key,
                  std::string PlaneSlot::*field) {
  for (std::size_t slot = 0; slot < SlotCount(flight); ++slot) {
    const std::string& value = flight.PlaneSlots[slot].*field;
    if (value.empty()) continue;
    AddKey(output, std::string(key).append(std::to_string(slot)), value);
  }
}

/** Highest waypoint to write; a route that broke off while it was read has them all. */
std::ptrdiff_t LastWaypointOf(const Flight& flight) {
  const std::ptrdiff_t bound = SafeUBound(flight.Waypoints);
  return flight.LastWaypoint.empty() ? bound : CLng(flight.LastWaypoint);
}

void RewriteWords(std::string& text, const Waypoint& waypoint, std::string_view line) {
  std::size_t index = 0;
  for (std::size_t start = 0; start <= line.size(); ++index) {
    const std::size_t end = std::min(line.find(' ', start), line.size());
    std::string word(line.substr(start, end - start));
    if (index == 0) word = waypoint.Type;
    if (index == 3) word = FormatNumber(waypoint.Alt, "##0.0");
    if (index == 4) word = FormatNumber(waypoint.Speed, "##0.0");
    // The sixth word is a marker or the name of a target. Those behind it are not spared, so a
    // marker "&0" at the eighth place becomes "0" here.
    if (index != 0 && index != 5 && CountsAsZero(word)) word = "0";
    text.append(word).append(" ");
    start = end + 1;
  }
}

std::string WaypointText(const Waypoint& waypoint) {
  const auto line = Trim(waypoint.Line);
  const auto oldMarker = line.substr(line.size() - std::min<std::size_t>(2, line.size()));
  std::string text;
  text.reserve(line.size() + 16);
  RewriteWords(text, waypoint, line);
  if (!Contains(oldMarker, "&"))
    text.append(waypoint.Marker);
  else if (oldMarker != waypoint.Marker)
    text = Replace(text, oldMarker, waypoint.Marker);
  std::replace(text.begin(), text.end(), ',', '.');
  return text;
}

}  // namespace

void FlightArray(const Services& services, LineArray& output, const Flight& flight) {
  LogAndLeave(services, "FlightArray", [&] {
    output.Add("[" + flight.Name + "]");
    AddKey(output, "Planes", flight.Planes);
    if (!flight.OnlyAI.empty()) output.Add(kIndent, "OnlyAI 1");
    if (flight.Parachute == "0") output.Add(kIndent, "Parachute 0");
    if (flight.Skill == "Custom")
      AddSlotLines(output, flight, "Skill", &PlaneSlot::Skill);
    else
      AddKey(output, "Skill", flight.Skill);
    AddSlotLines(output, flight, "skin", &PlaneSlot::Skin);
    AddSlotLines(output, flight, "pilot", &PlaneSlot::Pilot);
    AddSlotLines(output, flight, "noseart", &PlaneSlot::NoseArt);
    AddSlotLines(output, flight, "numberOn", &PlaneSlot::NumberOn);
    AddKey(output, "Class", "air." + flight.Class);
    AddKey(output, "Fuel", flight.Fuel);
    AddKey(output, "weapons", flight.Weapons);
    if (!flight.StartTime.empty()) AddKey(output, "StartTime", flight.StartTime);
  });
}

void WaypointArray(const Services& services, LineArray& output, const Flight& flight) {
  LogAndLeave(services, "WaypointArray", [&] {
    output.Add("[" + flight.Name + "_Way]");
    const std::ptrdiff_t last = LastWaypointOf(flight);
    for (std::ptrdiff_t i = 0; i <= last; ++i) {
      const Waypoint& waypoint = At(flight.Waypoints, i);
      if (!waypoint.Line.empty()) output.Add(kIndent, Trim(WaypointText(waypoint)));
    }
  });
}

void NewBornPlace(const Services& services, LineArray& output, const Mission& mission) {
  LogAndLeave(services, "NewBornPlace", [&] {
    output.Add("[BornPlace]");
    for (const auto& place : mission.BornPlaces) {
      std::string line = std::to_string(place.Army);
      for (const auto number : {place.Radius, place.X, place.Y})
        line.append(" ").append(std::to_string(number));
      output.Add(kIndent, line);
    }
    for (std::size_t i = 0; i < mission.BornPlaces.size(); ++i) {
      const auto& planes = mission.BornPlaces[i].Planes;
      if (!planes.empty()) output.Add("[BornPlace" + std::to_string(i) + "]");
      for (const auto& plane : planes) output.Add(kIndent, plane);
    }
  });
}

}  // namespace rws
