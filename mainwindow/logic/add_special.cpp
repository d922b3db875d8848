#include "mainwindow/logic/add_special.h"

#include <algorithm>

#include "mainwindow/logic/flight_names.h"
#include "mission/line_values.h"
#include "mission/route_line.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

namespace {

/** The first waypoint of a carrier, for what hangs on it. Its line names the carrier where a target
    would stand; the marker is kept apart, since behind it the writer would make the name a "0". */
Waypoint AttachedTo(const Flight& carrier) {
  const Waypoint& first = At(carrier.Waypoints, 0);
  const RouteLine words(first.Line);
  Waypoint attached = first;
  attached.Speed = IntegerPart(words.Word(RouteLine::kSpeed));
  attached.Alt = IntegerPart(words.Word(RouteLine::kAlt));
  attached.Type = words.Word(RouteLine::kType);
  std::string line;
  for (std::size_t place = 0; place < RouteLine::kTarget; ++place)
    line.append(words.Word(place)).append(" ");
  attached.Line = line + carrier.Name + " 0";
  if (attached.Marker.empty()) attached.Marker = "&0";
  return attached;
}

Flight CompanionOf(const Flight& carrier, const Aircraft& aircraft) {
  Flight flight;
  const std::size_t planes = aircraft.Class.starts_with("I_16") ? 2 : 1;
  flight.Planes = std::to_string(planes);
  flight.Class = aircraft.Class;
  flight.Fuel = carrier.Fuel;
  flight.Skill = carrier.Skill;
  flight.StartTime = carrier.StartTime;
  flight.ArmyWord = carrier.ArmyWord;
  flight.Weapons = "default";
  // A flight of custom skill has no other than those of its planes.
  if (flight.Skill == "Custom")
    for (std::size_t i = 0; i < planes; ++i)
      flight.PlaneSlots[i].Skill = carrier.PlaneSlots[i].Skill;
  flight.Waypoints = {AttachedTo(carrier)};
  return flight;
}

}  // namespace

std::ptrdiff_t AddFlight(Document& doc, const Flight& flight) {
  auto& own = At(doc.Missions, doc.CurMission).Flights;
  auto& shadow = At(doc.MissionShadow, doc.CurMission).Flights;
  const std::size_t index = own.size();
  // The shadow is longer after a removal, and stays longer by as much.
  shadow.resize(std::max(shadow.size(), index) + 1);
  shadow[index] = flight;
  own.push_back(flight);
  return static_cast<std::ptrdiff_t>(index);
}

void AddSpecial(Document& doc, const Catalogues& tables, const Services& services,
                std::string_view companionClass, std::string_view group, std::ptrdiff_t source) {
  if (Trim(companionClass).empty()) return;
  LogAndLeave(services, "AddSpecial", [&] {
    const Aircraft& aircraft = At(tables.Aircraft, FindAircraft(tables, companionClass));
    Flight flight = CompanionOf(At(At(doc.Missions, doc.CurMission).Flights, source), aircraft);
    flight.Name = NextFlightName(doc, services, group);
    AddFlight(doc, flight);
  });
}

}  // namespace rws
