#include "map/route_edits.h"

#include <algorithm>
#include <cmath>

#include "map/map_routes.h"
#include "mission/kept_keys.h"
#include "mission/line_values.h"
#include "mission/route_line.h"
#include "services/arrays.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

Flight& FlightAt(Document& doc, std::size_t flight) {
  return At(At(doc.Missions, doc.CurMission).Flights, static_cast<std::ptrdiff_t>(flight));
}

/** The same flight in the shadow; null where the shadow's route is not the same by its rows. */
Flight* ShadowOf(Document& doc, std::size_t flight) {
  const Flight& own = FlightAt(doc, flight);
  const auto mission = static_cast<std::size_t>(doc.CurMission);
  if (mission >= doc.MissionShadow.size()) return nullptr;
  auto& flights = doc.MissionShadow[mission].Flights;
  if (flight >= flights.size() || flights[flight].Name != own.Name) return nullptr;
  return flights[flight].Waypoints.size() == own.Waypoints.size() ? &flights[flight] : nullptr;
}

/** As the reader does: through all rows, lines of settings included. */
void MeasureRoute(Flight& flight) {
  Waypoint* before = nullptr;
  for (auto& waypoint : flight.Waypoints) {
    waypoint.Dist = before ? std::hypot(waypoint.X - before->X, waypoint.Y - before->Y) / 10 : 0;
    before = &waypoint;
  }
}

void SetPlace(Waypoint& waypoint, MapPoint at) {
  const std::string x = CoordinateText(at.X), y = CoordinateText(at.Y);
  WordLine line(waypoint.Line);
  line.Set(RouteLine::kX, x);
  line.Set(RouteLine::kY, y);
  waypoint.Line = line.Text();
  // The record has them without decimals, as the reader leaves them.
  waypoint.X = CDbl(IntegerPart(x));
  waypoint.Y = CDbl(IntegerPart(y));
}

void CheckWaypoints(const Flight& flight, const std::vector<std::size_t>& waypoints) {
  for (const std::size_t waypoint : waypoints)
    if (waypoint >= flight.Waypoints.size()) throw SubscriptFault();
}

/** A line of settings, or an empty one: it stays behind the waypoint that it follows. */
bool BelongsToOther(const Waypoint& waypoint) {
  return waypoint.Line.empty() || IsTriggersLine(waypoint.Type);
}

/** The row behind a waypoint and the lines of settings that belong to it. */
std::size_t Behind(const Flight& flight, std::size_t waypoint) {
  std::size_t next = waypoint + 1;
  while (next < flight.Waypoints.size() && BelongsToOther(flight.Waypoints[next])) ++next;
  return next;
}

void Renumber(Flight& flight) {
  flight.LastWaypoint = std::to_string(static_cast<std::ptrdiff_t>(flight.Waypoints.size()) - 1);
  MeasureRoute(flight);
}

/** Height and speed between two neighbours; the ground beside a take-off or landing counts for
    nothing. */
void TakeFromNeighbours(Waypoint& added, const Waypoint* before, const Waypoint* next) {
  const auto inAir = [](const Waypoint* waypoint) { return waypoint && !IsLocked(*waypoint); };
  constexpr std::string_view kUsualHeight = "500", kUsualSpeed = "300";
  const Waypoint* one = inAir(before) ? before : inAir(next) ? next : nullptr;
  added.Alt = one ? one->Alt : kUsualHeight;
  added.Speed = one ? one->Speed : kUsualSpeed;
  if (!inAir(before) || !inAir(next)) return;
  const double middle = (Val(before->Alt) + Val(next->Alt)) / 2;
  added.Alt = NumberText(RoundHalfEven(middle, 0));
  if (Val(next->Speed) > 0) added.Speed = next->Speed;
}

std::string NewLine(const Waypoint& waypoint) {
  const auto number = [](const std::string& text) { return CoordinateText(Val(text)); };
  return waypoint.Type + " 0 0 " + number(waypoint.Alt) + " " + number(waypoint.Speed) + " " +
         waypoint.Marker;
}

/** A waypoint and its lines of settings. */
using Stop = std::vector<Waypoint>;

std::vector<Stop> StopsOf(const Flight& flight) {
  std::vector<Stop> stops;
  for (const auto& waypoint : flight.Waypoints) {
    if (stops.empty() || !BelongsToOther(waypoint)) stops.emplace_back();
    stops.back().push_back(waypoint);
  }
  return stops;
}

}  // namespace

std::string CoordinateText(double metres) {
  const std::string text = FormatNumber(metres, "0.00");
  return text == "-0.00" ? "0.00" : text;
}

bool IsLocked(const Waypoint& waypoint) {
  const WaypointShape shape = ShapeOf(waypoint.Type);
  return shape == WaypointShape::TakeOff || shape == WaypointShape::Landing;
}

MapPoint PlaceOfWaypoint(const Waypoint& waypoint) {
  const WordLine line(waypoint.Line);
  const auto number = [&](std::size_t place) {
    const double value = ParseNumber(line.Word(place)).value_or(0);
    return std::isfinite(value) ? value : 0;
  };
  return {number(RouteLine::kX), number(RouteLine::kY)};
}

void PlaceWaypoint(Document& doc, std::size_t flight, std::size_t waypoint, MapPoint at) {
  Flight& edited = FlightAt(doc, flight);
  SetPlace(At(edited.Waypoints, static_cast<std::ptrdiff_t>(waypoint)), at);
  MeasureRoute(edited);
}

void MoveWaypoints(Document& doc, std::size_t flight, const std::vector<std::size_t>& waypoints,
                   double east, double north) {
  Flight& edited = FlightAt(doc, flight);
  CheckWaypoints(edited, waypoints);
  for (const std::size_t index : waypoints) {
    Waypoint& waypoint = edited.Waypoints[index];
    if (BelongsToOther(waypoint)) continue;
    const MapPoint from = PlaceOfWaypoint(waypoint);
    SetPlace(waypoint, {from.X + east, from.Y + north});
  }
  MeasureRoute(edited);
}

std::vector<std::size_t> MovableWaypoints(const Flight& flight, bool withLocked) {
  std::vector<std::size_t> movable;
  for (std::size_t i = 0; i < flight.Waypoints.size(); ++i) {
    const Waypoint& waypoint = flight.Waypoints[i];
    if (!BelongsToOther(waypoint) && (withLocked || !IsLocked(waypoint))) movable.push_back(i);
  }
  return movable;
}

std::size_t InsertWaypoint(Document& doc, std::size_t flight, std::size_t after, MapPoint at) {
  Flight& edited = FlightAt(doc, flight);
  CheckWaypoints(edited, {after});
  const std::size_t place = Behind(edited, after);
  Waypoint added;
  added.Type = "NORMFLY";
  added.Marker = edited.Waypoints[after].Marker;
  TakeFromNeighbours(added, &edited.Waypoints[after],
                     place < edited.Waypoints.size() ? &edited.Waypoints[place] : nullptr);
  added.Line = NewLine(added);
  SetPlace(added, at);
  Flight* shadow = ShadowOf(doc, flight);
  for (Flight* each : {&edited, shadow}) {
    if (!each) continue;
    each->Waypoints.insert(each->Waypoints.begin() + static_cast<std::ptrdiff_t>(place), added);
    Renumber(*each);
  }
  return place;
}

std::size_t BestPlaceFor(const Flight& flight, MapPoint at) {
  const auto points = MovableWaypoints(flight, true);
  if (points.empty()) throw SubscriptFault();
  const auto place = [&](std::size_t i) { return PlaceOfWaypoint(flight.Waypoints[points[i]]); };
  std::size_t best = points.back();
  // Behind the last one, but for a landing, after which nothing comes.
  const bool isOpen =
      ShapeOf(flight.Waypoints[best].Type) != WaypointShape::Landing || points.size() == 1;
  double least = isOpen ? DistanceOf(place(points.size() - 1), at) : HUGE_VAL;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    const MapPoint from = place(i), to = place(i + 1);
    const double longer = DistanceOf(from, at) + DistanceOf(at, to) - DistanceOf(from, to);
    if (longer >= least) continue;
    least = longer;
    best = points[i];
  }
  return best;
}

bool DeleteWaypoints(Document& doc, std::size_t flight, const std::vector<std::size_t>& waypoints) {
  Flight& edited = FlightAt(doc, flight);
  CheckWaypoints(edited, waypoints);
  std::vector<bool> goes(edited.Waypoints.size());
  for (const std::size_t waypoint : waypoints)
    std::fill(goes.begin() + static_cast<std::ptrdiff_t>(waypoint),
              goes.begin() + static_cast<std::ptrdiff_t>(Behind(edited, waypoint)), true);
  const auto movable = MovableWaypoints(edited, true);
  if (std::all_of(movable.begin(), movable.end(), [&](std::size_t i) { return goes[i]; }))
    return false;
  Flight* shadow = ShadowOf(doc, flight);
  for (Flight* each : {&edited, shadow}) {
    if (!each) continue;
    std::size_t index = 0;
    std::erase_if(each->Waypoints, [&](const Waypoint&) { return goes[index++]; });
    Renumber(*each);
  }
  return true;
}

bool ReverseRoute(Document& doc, std::size_t flight) {
  Flight& edited = FlightAt(doc, flight);
  auto stops = StopsOf(edited);
  auto first = stops.begin(), last = stops.end();
  while (first != last && ShapeOf(first->front().Type) == WaypointShape::TakeOff) ++first;
  while (first != last && ShapeOf(std::prev(last)->front().Type) == WaypointShape::Landing) --last;
  if (last - first < 2) return false;
  std::reverse(first, last);
  std::vector<Waypoint> turned;
  for (auto& stop : stops) turned.insert(turned.end(), stop.begin(), stop.end());
  edited.Waypoints = std::move(turned);
  Renumber(edited);
  return true;
}

}  // namespace rws
