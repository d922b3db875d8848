#include <algorithm>
#include <string>
#include <vector>

#include "mission/flight_values.h"
#include "mission/kept_flights.h"
#include "mission/route_line.h"
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

void AddSlotLines(LineArray& output, const Flight& flight, std::string_view key,
                  std::string PlaneSlot::*field) {
  for (std::size_t slot = 0; slot < PlaneCount(flight); ++slot) {
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

/** A whole number's text with one decimal. */
std::string WithDecimal(const std::string& whole) {
  if (!whole.empty() && PlainDigits(whole) == whole.size()) return whole + ".0";
  return FormatNumber(whole, "##0.0");
}

void AddWords(std::string& text, const Waypoint& waypoint, const RouteLine& words) {
  std::string number;
  for (std::size_t place = 0; place < words.size(); ++place) {
    std::string_view word = words.Word(place);
    if (place == RouteLine::kType) word = waypoint.Type;
    if (place == RouteLine::kAlt) word = number = WithDecimal(waypoint.Alt);
    if (place == RouteLine::kSpeed) word = number = WithDecimal(waypoint.Speed);
    // A target's name, or a marker in its place, is spared. What stands behind it is not, so a
    // marker "&0" at the eighth place becomes "0" here.
    const bool spared = place == RouteLine::kType || place == RouteLine::kTarget;
    text.append(!spared && CountsAsZero(word) ? "0" : word).append(" ");
  }
}

std::string WaypointText(const Waypoint& waypoint, RouteLine& words) {
  words.Read(waypoint.Line);
  std::string text;
  text.reserve(waypoint.Line.size() + 16);
  AddWords(text, waypoint, words);
  if (words.Marker().empty())
    text.append(waypoint.Marker);
  else if (words.Marker() != waypoint.Marker)
    text = Replace(text, words.Marker(), waypoint.Marker);
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
    RouteLine words;
    for (std::ptrdiff_t i = 0; i <= last; ++i) {
      const Waypoint& waypoint = At(flight.Waypoints, i);
      if (waypoint.Line.empty()) continue;
      output.Add(kIndent, Trim(WaypointText(waypoint, words)));
      const auto triggers = KnownTriggers(waypoint);
      if (triggers.empty()) continue;
      for (const auto line : SplitAt(triggers, '\n')) output.Add(kIndent, Trim(line));
    }
  });
}

void NewBornPlace(const Services& services, LineArray& output, const Mission& mission) {
  LogAndLeave(services, "NewBornPlace", [&] {
    output.Add("[BornPlace]");
    for (const auto& place : mission.BornPlaces) {
      if (!place.HasNumbers) continue;
      std::string line = std::to_string(place.Army);
      for (const auto number : {place.Radius, place.X, place.Y})
        line.append(" ").append(std::to_string(number));
      output.Add(kIndent, line);
    }
    for (std::size_t i = 0; i < mission.BornPlaces.size(); ++i) {
      if (!mission.BornPlaces[i].HasNumbers) continue;
      const auto& planes = mission.BornPlaces[i].Planes;
      if (!planes.empty()) output.Add("[BornPlace" + std::to_string(i) + "]");
      for (const auto& plane : planes) output.Add(kIndent, plane);
    }
  });
}

}  // namespace rws
