#include "map/map_texts.h"

#include <cmath>

#include "catalogues/aircraft.h"
#include "catalogues/army_text.h"
#include "map/map_things.h"
#include "map/map_units.h"
#include "mission/home_base_values.h"
#include "mission/kept_text.h"
#include "mission/waypoint_kinds.h"
#include "services/arrays.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

std::string Kilometres(double metres) { return FormatNumber(metres / 1000, "0.00"); }

std::string_view ShapeName(WaypointShape shape) {
  return kWaypointKinds[static_cast<std::size_t>(shape)].Label;
}

std::string_view PhaseName(FlightPhase phase) {
  switch (phase) {
    case FlightPhase::NotYet:
      return "Not there yet";
    case FlightPhase::Waiting:
      return "Waiting";
    case FlightPhase::Flying:
      return "Under way";
    case FlightPhase::Ended:
      return "At its end";
    default:
      return "No clock";
  }
}

/** The word of a line, in UTF-8. */
std::string WordOf(const MapTextSources& from, std::size_t line, std::size_t place) {
  const auto words = KeptWords(from.Model.Scene.Things.Lines[line]);
  return place < words.size() ? from.Services.Page.ToUtf8(words[place].Text) : std::string();
}

std::string AircraftName(const MapTextSources& from, std::size_t flight) {
  if (flight >= from.Record.Flights.size()) return "";
  return from.Services.Page.ToUtf8(
      GetPlaneName(from.Tables, from.Services, from.Record.Flights[flight].Class));
}

std::string TimeAt(const MapTextSources& from, const FlightClock& clock, std::size_t point) {
  if (point >= clock.Points.size()) return "";
  return TimeOfDay(from.Model.Time, clock.Points[point].Arrives);
}

/** The point before one of a route, where both have a place; else nothing. */
const RoutePoint* WayFrom(const MapRoute& route, std::size_t index) {
  const bool isWay = index > 0 && route.Points[index].HasPlace && route.Points[index - 1].HasPlace;
  return isWay ? &route.Points[index - 1] : nullptr;
}

std::string WaypointText(const MapTextSources& from, std::size_t route, std::size_t index) {
  const MapRoute& flight = from.Model.Scene.Routes[route];
  const RoutePoint& point = flight.Points[index];
  std::string text = "Waypoint " + std::to_string(index) + " of " + FlightText(from, route) + ": " +
                     std::string(ShapeName(point.Shape)) + ", " +
                     HeightText(point.Altitude, from.Metric);
  if (point.Speed > 0) text += ", " + SpeedText(point.Speed, from.Metric);
  if (const RoutePoint* before = WayFrom(flight, index))
    text += ", " + DistanceText(DistanceOf(before->At, point.At), from.Metric) + " and heading " +
            HeadingText(HeadingOf(before->At, point.At)) + " from the one before";
  const std::string time = TimeAt(from, from.Model.Clocks[route], index);
  text += time.empty() ? ", no clock" : ", " + time;
  if (point.Stay > 0) text += ", stays " + MinutesText(point.Stay);
  if (!point.Target.empty()) text += ", target " + from.Services.Page.ToUtf8(point.Target);
  return text;
}

std::string BaseText(const MapTextSources& from, std::size_t index) {
  const MapBase& base = from.Model.Scene.Bases[index];
  return "Home base " + std::to_string(base.Base + 1) + ", " + ArmyName(base.Army) + ", radius " +
         DistanceText(base.Radius, from.Metric);
}

std::string ObjectText(const MapTextSources& from, std::size_t index) {
  const MapObject& object = from.Model.Scene.Things.Objects[index];
  std::string text(KindName(object.Kind));
  if (object.Kind == ObjectKind::Camera) return text;
  const std::string first = WordOf(from, object.Line, 0);
  // A line without a name begins with the class.
  const bool isNamed = first.find('.') == std::string::npos;
  const std::string name = isNamed ? WordOf(from, object.Line, 1) : first;
  const auto tail = name.find('$');
  text += " " + (tail == std::string::npos ? name : name.substr(tail + 1));
  if (isNamed) text += " (" + first + ")";
  if (object.Army) text += ", " + ArmyName(object.Army);
  return text + ", heading " + HeadingText(object.Heading);
}

std::string UnitText(const MapTextSources& from, std::size_t index) {
  const MapUnit& unit = from.Model.Scene.Things.Units[index];
  return from.Services.Page.ToUtf8(unit.Type) + " (" + from.Services.Page.ToUtf8(unit.Name) +
         "), " + ArmyName(unit.Army);
}

std::string TargetText(const MapTextSources& from, std::size_t index) {
  const MapTarget& target = from.Model.Scene.Things.Targets[index];
  constexpr std::array<std::string_view, 3> kImportance{"primary", "secondary", "secret"};
  std::string text = "Target";
  const auto name = TargetName(target.Type);
  if (!name.empty()) text += ": " + std::string(name);
  const auto importance = static_cast<std::size_t>(target.Importance);
  if (importance < kImportance.size()) text += ", " + std::string(kImportance[importance]);
  if (target.Radius > 0) text += ", radius " + DistanceText(target.Radius, from.Metric);
  return text;
}

FlightTexts FlightRow(const MapTextSources& from, std::size_t index, double minute) {
  const MapRoute& route = from.Model.Scene.Routes[index];
  const FlightClock& clock = from.Model.Clocks[index];
  FlightTexts row;
  row[kFlightName] = from.Services.Page.ToUtf8(route.Name);
  row[kFlightAircraft] = AircraftName(from, route.Flight);
  row[kFlightArmy] = ArmyName(route.Army);
  const auto moment = MomentOf(route, clock, minute);
  if (!moment) {
    row[kFlightPhase] = route.Points.empty() ? "No route" : "No place";
    return row;
  }
  row[kFlightPhase] = PhaseName(moment->Phase);
  if (moment->Phase == FlightPhase::NotYet) return row;
  row[kFlightX] = Kilometres(moment->At.X);
  row[kFlightY] = Kilometres(moment->At.Y);
  row[kFlightHeight] = HeightText(moment->Altitude, from.Metric);
  row[kFlightSpeed] = SpeedText(moment->Speed, from.Metric);
  row[kFlightHeading] = HeadingText(moment->Heading);
  const std::size_t next = moment->Point + 1;
  if (next >= route.Points.size()) return row;
  row[kFlightNext] = std::to_string(next) + " " + std::string(ShapeName(route.Points[next].Shape));
  row[kFlightNextTime] = TimeAt(from, clock, next);
  return row;
}

PointTexts PointRow(const MapTextSources& from, std::size_t route, std::size_t index,
                    double along) {
  const MapRoute& flight = from.Model.Scene.Routes[route];
  const RoutePoint& point = flight.Points[index];
  PointTexts row;
  row[kPointNumber] = std::to_string(index);
  row[kPointType] = ShapeName(point.Shape);
  if (point.HasPlace) {
    row[kPointX] = Kilometres(point.At.X);
    row[kPointY] = Kilometres(point.At.Y);
  }
  row[kPointHeight] = HeightText(point.Altitude, from.Metric);
  if (point.Speed > 0) row[kPointSpeed] = SpeedText(point.Speed, from.Metric);
  row[kPointDistance] = DistanceText(along, from.Metric);
  if (const RoutePoint* before = WayFrom(flight, index))
    row[kPointHeading] = HeadingText(HeadingOf(before->At, point.At));
  row[kPointTime] = TimeAt(from, from.Model.Clocks[route], index);
  row[kPointTarget] = from.Services.Page.ToUtf8(point.Target);
  return row;
}

}  // namespace

std::string ArmyName(std::uint8_t army) {
  constexpr std::array<std::string_view, 3> kArmies{"none", "red", "blue"};
  if (army < kArmies.size()) return std::string(ArmyText(kArmies[army]));
  return army < kHomeBaseColors.size() ? std::string(kHomeBaseColors[army].Name) + " army"
                                       : "Army " + std::to_string(army);
}

std::string FlightText(const MapTextSources& from, std::size_t route) {
  const MapRoute& flight = from.Model.Scene.Routes[route];
  return from.Services.Page.ToUtf8(flight.Name) + ", " + AircraftName(from, flight.Flight) + ", " +
         ArmyName(flight.Army) + (flight.IsPlayer ? ", the player's" : "");
}

std::string PlaceText(MapPoint at) {
  return "x " + Kilometres(at.X) + " km, y " + Kilometres(at.Y) + " km";
}

std::string HitText(const MapTextSources& from, const MapHit& hit) {
  switch (hit.Is) {
    case MapHit::Waypoint:
      return WaypointText(from, hit.Index, hit.Point);
    case MapHit::Route:
      return FlightText(from, hit.Index);
    case MapHit::BaseCentre:
    case MapHit::BaseRim:
      return BaseText(from, hit.Index);
    case MapHit::Unit:
      return UnitText(from, hit.Index);
    case MapHit::Object:
      return ObjectText(from, hit.Index);
    case MapHit::Target:
      return TargetText(from, hit.Index);
    default:
      return "";
  }
}

std::array<std::string, kFlightColumns> FlightHeadings() {
  return {"Flight", "Aircraft", "Army",    "State",         "x [km]",    "y [km]",
          "Height", "Speed",    "Heading", "Next waypoint", "Reached at"};
}

std::vector<FlightTexts> FlightTable(const MapTextSources& from, double minute) {
  std::vector<FlightTexts> rows;
  for (std::size_t i = 0; i < from.Model.Scene.Routes.size(); ++i)
    rows.push_back(FlightRow(from, i, minute));
  return rows;
}

std::array<std::string, kPointColumns> PointHeadings() {
  return {"Waypoint", "Type",     "x [km]",  "y [km]", "Height",
          "Speed",    "Distance", "Heading", "Time",   "Target"};
}

std::vector<PointTexts> PointTable(const MapTextSources& from, std::size_t route) {
  const MapRoute& flight = At(from.Model.Scene.Routes, static_cast<std::ptrdiff_t>(route));
  const auto along = DistancesAlong(flight);
  std::vector<PointTexts> rows;
  for (std::size_t i = 0; i < flight.Points.size(); ++i)
    rows.push_back(PointRow(from, route, i, along[i]));
  return rows;
}

}  // namespace rws
