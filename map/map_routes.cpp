#include "map/map_routes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "catalogues/squadrons.h"
#include "mission/kept_flights.h"
#include "mission/route_line.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

bool BeginsWith(std::string_view type, std::string_view kind) {
  return EqualNoCase(type.substr(0, kind.size()), kind);
}

/** The number of a word, if it is one that a place or a time can have. */
std::optional<double> Finite(const std::vector<KeptWord>& words, std::size_t place) {
  if (place >= words.size()) return {};
  const auto number = ParseNumber(words[place].Text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

double NumberAt(const std::vector<KeptWord>& words, std::size_t place) {
  return Finite(words, place).value_or(0);
}

double NumberOf(const std::string& text) {
  const auto number = ParseNumber(text);
  return number && std::isfinite(*number) ? *number : 0;
}

/** Corners of a patrol by the number of its type; one of no fixed form has none. */
std::size_t CornersOf(std::string_view type) {
  constexpr std::string_view kPatrol = "NORMFLY_40";
  if (type.size() != kPatrol.size() + 1 || !BeginsWith(type, kPatrol)) return 0;
  const char number = type.back();
  return number >= '1' && number <= '4' ? static_cast<std::size_t>(number - '1') + 3 : 0;
}

/** What the line "TRIGGERS" behind a take-off says: its second word is the delay. */
void TakeTakeOff(RoutePoint& point, const std::vector<KeptWord>& words) {
  constexpr std::size_t kDelay = 2;
  point.Delay = std::max(NumberAt(words, kDelay), 0.0);
}

/** What it says behind a patrol: extra rounds, minutes, the direction of the first corner and the
    length of a side. Whichever of rounds and minutes ends first ends it; without either it is one
    round. */
void TakePatrol(RoutePoint& point, std::string_view type, const std::vector<KeptWord>& words) {
  constexpr std::size_t kCycles = 1, kTimer = 2, kAngle = 3, kSide = 4;
  constexpr double kLeastSide = 2, kUsualSide = 5, kMostMinutes = 10'000;
  const std::size_t corners = CornersOf(type);
  const double side = std::max(Finite(words, kSide).value_or(kUsualSide), kLeastSide) * 1000;
  const double radius = corners ? side / (2 * std::sin(std::numbers::pi / double(corners))) : 0;
  for (std::size_t i = 0; i < corners && point.HasPlace; ++i) {
    const double angle =
        (NumberAt(words, kAngle) + 360.0 * double(i) / double(corners)) * std::numbers::pi / 180;
    point.Patrol.push_back(
        {point.At.X + radius * std::cos(angle), point.At.Y + radius * std::sin(angle)});
  }
  const double timer = NumberAt(words, kTimer), cycles = NumberAt(words, kCycles);
  const double rounds = std::max(cycles, 0.0) + 1;
  const double flown = point.Speed > 0 ? rounds * side * double(corners) / point.Speed * 0.06 : 0;
  const bool byTimer = timer > 0 && (cycles <= 0 || flown == 0 || timer < flown);
  point.Stay = std::min(byTimer ? timer : flown, kMostMinutes);
}

void TakeTriggers(RoutePoint& point, std::string_view type, std::string_view line) {
  const auto words = KeptWords(line);
  point.HasTriggers = true;
  if (BeginsWith(type, "TAKEOFF"))
    TakeTakeOff(point, words);
  else
    TakePatrol(point, type, words);
}

void TakeTarget(RoutePoint& point, const Waypoint& waypoint) {
  const auto tail = RouteTail(waypoint.Line);
  if (tail.empty() || Like(tail.front(), "[Ff]#*")) return;
  point.Target = tail.front();
  if (tail.size() > 1)
    point.TargetPoint = static_cast<int>(std::clamp(NumberOf(tail[1]), 0.0, 1e6));
}

RoutePoint PointOf(const Waypoint& waypoint, std::size_t index) {
  RoutePoint point;
  const auto words = KeptWords(waypoint.Line);
  const auto x = Finite(words, RouteLine::kX), y = Finite(words, RouteLine::kY);
  point.HasPlace = x && y;
  if (point.HasPlace) point.At = {*x, *y};
  point.Altitude = NumberOf(waypoint.Alt);
  point.Speed = NumberOf(waypoint.Speed);
  point.Shape = ShapeOf(waypoint.Type);
  point.Waypoint = index;
  TakeTarget(point, waypoint);
  return point;
}

MapRoute RouteOfFlight(const Flight& flight) {
  MapRoute route;
  route.Name = flight.Name;
  route.StartMinutes = std::max(NumberOf(flight.StartTime), 0.0);
  for (std::size_t i = 0; i < flight.Waypoints.size(); ++i) {
    const Waypoint& waypoint = flight.Waypoints[i];
    if (waypoint.Line.empty()) continue;
    if (IsTriggersLine(waypoint.Type)) {
      if (route.Points.empty() || route.Points.back().HasTriggers) continue;
      const auto owner = route.Points.back().Waypoint;
      TakeTriggers(route.Points.back(), flight.Waypoints[owner].Type, waypoint.Line);
      continue;
    }
    RoutePoint& point = route.Points.emplace_back(PointOf(waypoint, i));
    const std::string_view triggers = waypoint.KeptTriggers;
    if (!triggers.empty() && NeedsTriggers(waypoint.Type))
      TakeTriggers(point, waypoint.Type, triggers.substr(0, triggers.find('\n')));
  }
  return route;
}

}  // namespace

bool IsTriggersLine(std::string_view type) { return EqualNoCase(type, "TRIGGERS"); }

WaypointShape ShapeOf(std::string_view type) {
  if (BeginsWith(type, "TAKEOFF")) return WaypointShape::TakeOff;
  if (BeginsWith(type, "LANDING")) return WaypointShape::Landing;
  return BeginsWith(type, "GATTACK") ? WaypointShape::Attack : WaypointShape::Normal;
}

std::uint8_t ArmyOfFlight(const Catalogues& tables, const Services& services,
                          std::string_view flightName) {
  const std::string color = services.Page.LCase(GetColorByGroup(tables, services, flightName));
  return color == "red" ? 1 : color == "blue" ? 2 : 0;
}

std::vector<MapRoute> RoutesOf(const Mission& mission, const Catalogues& tables,
                               const Services& services) {
  std::vector<MapRoute> routes;
  routes.reserve(mission.Flights.size());
  for (std::size_t i = 0; i < mission.Flights.size(); ++i) {
    const Flight& flight = mission.Flights[i];
    MapRoute& route = routes.emplace_back(RouteOfFlight(flight));
    route.Flight = i;
    route.Army = flight.Name.size() < 2 ? 0 : ArmyOfFlight(tables, services, flight.Name);
    route.IsPlayer = !mission.Player.empty() && flight.Name == mission.Player;
    // The game does not let its player wait.
    if (route.IsPlayer) route.StartMinutes = 0;
  }
  return routes;
}

std::vector<MapBase> BasesOf(const Mission& mission, const std::vector<MapBase>& inFile) {
  std::vector<MapBase> bases;
  for (std::size_t i = 0; i < mission.BornPlaces.size(); ++i) {
    const BornPlace& place = mission.BornPlaces[i];
    if (!place.HasNumbers) continue;
    bases.push_back({i,
                     {double(place.X), double(place.Y)},
                     double(std::max(place.Radius, 0)),
                     static_cast<std::uint8_t>(std::clamp<int>(place.Army, 0, 16))});
  }
  for (const auto& base : inFile)
    if (base.Base >= mission.BornPlaces.size()) bases.push_back(base);
  return bases;
}

}  // namespace rws
