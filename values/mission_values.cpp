#include "values/mission_values.h"

#include <algorithm>
#include <iterator>

#include "mission/flight_values.h"
#include "mission/home_base_values.h"
#include "mission/waypoint_kinds.h"
#include "services/numbers.h"
#include "services/text.h"
#include "values/flight_fields.h"

namespace rws {

namespace {

constexpr int kMostWeather = 6, kLeastClouds = 50, kMostClouds = 2500;

void SetPlayer(Mission& mission, std::string_view value) {
  mission.Player = value;
  // The game tells names by their letter case.
  for (const auto& flight : mission.Flights)
    if (EqualNoCase(flight.Name, value)) mission.Player = flight.Name;
  if (value.empty()) mission.PlayerNum.clear();
}

void CheckMissionValue(std::string_view field, std::string_view value) {
  if (field == "Time") CheckHours(value);
  if (field == "CloudType") CheckWhole(value, 0, kMostWeather);
  if (field == "CloudHeight") CheckWhole(value, kLeastClouds, kMostClouds);
  if (field == "Army") CheckWhole(value, 1, 2);
  if (field == "PlayerNum") CheckWhole(value, 0, 3);
  if (field.ends_with("Constant")) CheckWhole(value, 0, 1);
}

std::string ReadMissionValue(const Mission& mission, std::string_view field) {
  if (field == "Time") return mission.Time;
  if (field == "CloudType") return mission.CloudType;
  if (field == "CloudHeight") return mission.CloudHeight;
  if (field == "Army") return mission.Army;
  if (field == "Player") return mission.Player;
  if (field == "PlayerNum") return mission.PlayerNum;
  return std::to_string(field == "TimeConstant" ? mission.TimeConstant : mission.WeaponsConstant);
}

void WriteMissionValue(Mission& mission, std::string_view field, std::string_view value) {
  CheckMissionValue(field, value);
  if (field == "Time") mission.Time = value;
  if (field == "CloudType") mission.CloudType = value;
  if (field == "CloudHeight") mission.CloudHeight = value;
  if (field == "Army") mission.Army = value;
  if (field == "Player") SetPlayer(mission, value);
  if (field == "PlayerNum") mission.PlayerNum = value;
  if (field == "TimeConstant") mission.TimeConstant = CInt(value);
  if (field == "WeaponsConstant") mission.WeaponsConstant = CInt(value);
}

void WriteWaypointValue(Flight& flight, const ValuePlace& place, std::string_view value) {
  Waypoint& waypoint = flight.Waypoints[place.Index];
  if (waypoint.Type == "TRIGGERS")
    throw ValueFault("this row of the route holds settings and is no waypoint");
  if (place.Field == "Alt" || place.Field == "Speed") {
    CheckWaypointNumber(value);
    (place.Field == "Alt" ? waypoint.Alt : waypoint.Speed) = value;
  }
  if (place.Field == "Marker") {
    if (value != "&0" && value != "&1") throw ValueFault("it is to be &0 or &1");
    waypoint.Marker = value;
  }
  if (place.Field != "Type") return;
  const auto offered =
      OfferedKinds(static_cast<int>(place.Index) + 1, static_cast<int>(flight.Waypoints.size()));
  std::string may;
  for (std::size_t i = 0; i < kWaypointKinds.size(); ++i) {
    if (!offered[i]) continue;
    if (EqualNoCase(value, kWaypointKinds[i].Keyword)) {
      waypoint.Type = kWaypointKinds[i].Keyword;
      return;
    }
    may.append(may.empty() ? "" : ", ").append(kWaypointKinds[i].Keyword);
  }
  throw ValueFault("a waypoint at this place of the route is one of " + may);
}

void WriteBaseValue(BornPlace& base, std::string_view field, std::string_view value) {
  if (field == "Army") {
    CheckWhole(value, 0, static_cast<int>(kHomeBaseColors.size()) - 1);
    base.Army = CInt(value);
  } else {
    CheckWhole(value, kLeastRadius, kLargestRadius);
    base.Radius = CLng(value);
  }
}

template <class AnyMission>
auto& FlightAt(AnyMission& mission, const ValuePlace& place) {
  return At(mission.Flights, static_cast<std::ptrdiff_t>(place.Flight));
}

template <class Array>
auto& Indexed(Array& array, const ValuePlace& place) {
  return At(array, static_cast<std::ptrdiff_t>(place.Index));
}

}  // namespace

std::string ReadValue(const Mission& mission, const ValuePlace& place) {
  switch (place.Of) {
    case ValueOf::Mission:
      return ReadMissionValue(mission, place.Field);
    case ValueOf::Flight:
      return ReadFlightValue(FlightAt(mission, place), place.Field);
    case ValueOf::Plane:
      Indexed(FlightAt(mission, place).PlaneSlots, place);
      return ReadPlaneValue(FlightAt(mission, place), place.Index, place.Field);
    case ValueOf::Waypoint: {
      const Waypoint& waypoint = Indexed(FlightAt(mission, place).Waypoints, place);
      if (place.Field == "Alt") return waypoint.Alt;
      if (place.Field == "Speed") return waypoint.Speed;
      return place.Field == "Type" ? waypoint.Type : waypoint.Marker;
    }
    case ValueOf::Base: {
      const BornPlace& base = Indexed(mission.BornPlaces, place);
      return std::to_string(place.Field == "Army" ? base.Army : base.Radius);
    }
  }
  throw SubscriptFault();
}

void WriteValue(Mission& mission, const ValuePlace& place, std::string_view value,
                const EditRules& rules) {
  CheckText(value);
  const auto write = [&](auto& record, const auto& change) {
    const auto before = record;
    const std::string was = ReadValue(mission, place);
    change(record);
    // The letter case of the player's flight counts.
    const std::string is = ReadValue(mission, place);
    if (place.Field == "Player" ? was == is : SameValue(was, is)) record = before;
  };
  switch (place.Of) {
    case ValueOf::Mission:
      return write(mission, [&](Mission& all) { WriteMissionValue(all, place.Field, value); });
    case ValueOf::Flight:
      return write(FlightAt(mission, place),
                   [&](Flight& flight) { WriteFlightValue(flight, place.Field, value, rules); });
    case ValueOf::Plane:
      return write(FlightAt(mission, place), [&](Flight& flight) {
        WritePlaneValue(flight, place.Index, place.Field, value, rules);
      });
    case ValueOf::Waypoint:
      return write(FlightAt(mission, place),
                   [&](Flight& flight) { WriteWaypointValue(flight, place, value); });
    case ValueOf::Base:
      return write(Indexed(mission.BornPlaces, place),
                   [&](BornPlace& base) { WriteBaseValue(base, place.Field, value); });
  }
}

bool SameValue(std::string_view a, std::string_view b) {
  if (IsNumeric(a) && IsNumeric(b)) return Val(a) == Val(b);
  return EqualNoCase(a, b);
}

void CheckAgreement(const Mission& mission, const ValuePlace& place, const EditRules& rules) {
  if (place.Of == ValueOf::Mission && place.Field.starts_with("Player"))
    return CheckPlayer(rules, mission, place.Field);
  if (place.Of == ValueOf::Plane && place.Index >= PlaneCount(FlightAt(mission, place)))
    throw ValueFault("flight \"" + place.FlightName + "\" has no such plane");
  if (place.Of != ValueOf::Flight) return;
  const Flight& flight = FlightAt(mission, place);
  if ((place.Field == "Class" && !flight.Weapons.empty()) || place.Field == "Weapons")
    CheckLoadout(rules, flight);
  if (place.Field == "OnlyAI" && flight.OnlyAI.empty()) CheckOnlyAI(rules, flight);
  constexpr std::string_view kOfPlayer[] = {"Class", "OnlyAI", "Planes"};
  const bool isOfPlayer =
      std::find(std::begin(kOfPlayer), std::end(kOfPlayer), place.Field) != std::end(kOfPlayer);
  if (isOfPlayer && flight.Name == mission.Player) CheckPlayer(rules, mission, place.Field);
}

}  // namespace rws
