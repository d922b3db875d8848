#include "map/flight_clock.h"

#include <algorithm>
#include <cmath>

#include "services/numbers.h"

namespace rws {

namespace {

/** Minutes that a distance takes. */
double MinutesFor(double metres, double kilometresPerHour) {
  return metres / (kilometresPerHour * 1000 / 60);
}

std::string TwoDigits(long number) {
  const std::string text = std::to_string(number);
  return text.size() < 2 ? "0" + text : text;
}

/** The moments at which a flight changes its course. */
void AddTurns(std::vector<double>& minutes, const FlightClock& clock) {
  for (const auto& point : clock.Points) {
    minutes.push_back(point.Arrives);
    minutes.push_back(point.Leaves);
  }
}

/** Between two moments both fly straight on, so that the nearest is where the line from one to the
    other, seen from the first, is nearest to 0. */
Meeting NearestWithin(MapPoint from, MapPoint to, double begin, double end) {
  const double length = DistanceOf(from, to);
  if (length == 0) return {begin, DistanceOf({}, from)};
  const double part = std::clamp(
      -(from.X * (to.X - from.X) + from.Y * (to.Y - from.Y)) / (length * length), 0.0, 1.0);
  return {begin + (end - begin) * part, DistanceOf({}, Between(from, to, part))};
}

bool IsUp(const FlightMoment& moment) {
  return moment.Phase == FlightPhase::Flying || moment.Phase == FlightPhase::Waiting;
}

/** The point that was passed last, and how much of the way to the next is behind. */
std::pair<std::size_t, double> LegAt(const FlightClock& clock, double minute) {
  std::size_t point = 0;
  while (point + 1 < clock.Points.size() && clock.Points[point + 1].Arrives <= minute) ++point;
  if (point + 1 >= clock.Points.size() || minute <= clock.Points[point].Leaves) return {point, 0};
  const double begin = clock.Points[point].Leaves, end = clock.Points[point + 1].Arrives;
  return {point, end > begin ? (minute - begin) / (end - begin) : 0};
}

FlightPhase PhaseAt(const MapRoute& route, const FlightClock& clock, double minute) {
  if (minute < route.StartMinutes) return FlightPhase::NotYet;
  if (minute > clock.Points.back().Leaves)
    return clock.IsWhole ? FlightPhase::Ended : FlightPhase::Unknown;
  return minute < clock.Points.front().Leaves ? FlightPhase::Waiting : FlightPhase::Flying;
}

}  // namespace

double SpeedTo(const MapRoute& route, std::size_t point) {
  const auto& points = route.Points;
  for (std::size_t i = point + 1; i-- > 0;)
    if (points[i].Speed > 0) return points[i].Speed;
  // Ways to a runway have no speed of their own; they must not leave a flight without a clock.
  const auto told = std::find_if(points.begin(), points.end(),
                                 [](const RoutePoint& each) { return each.Speed > 0; });
  const bool taxies = points[point].Shape == WaypointShape::TakeOff && told != points.end();
  return taxies ? told->Speed : 0;
}

FlightClock ClockOf(const MapRoute& route) {
  FlightClock clock;
  for (std::size_t i = 0; i < route.Points.size(); ++i) {
    const RoutePoint& point = route.Points[i];
    if (!point.HasPlace) return clock;
    double arrives = route.StartMinutes;
    if (i > 0) {
      const double metres = DistanceOf(route.Points[i - 1].At, point.At);
      const double speed = metres > 0 ? SpeedTo(route, i) : 0;
      if (speed == 0 && metres > 0) return clock;
      arrives = clock.Points.back().Leaves + (metres > 0 ? MinutesFor(metres, speed) : 0);
    }
    const double leaves = std::max(arrives, point.Delay) + point.Stay;
    clock.Points.push_back({arrives, leaves});
  }
  clock.IsWhole = !clock.Points.empty();
  return clock;
}

std::vector<double> DistancesAlong(const MapRoute& route) {
  std::vector<double> along;
  along.reserve(route.Points.size());
  const RoutePoint* before = nullptr;
  for (const auto& point : route.Points) {
    const double last = along.empty() ? 0 : along.back();
    along.push_back(last + (before && point.HasPlace ? DistanceOf(before->At, point.At) : 0));
    if (point.HasPlace) before = &point;
  }
  return along;
}

std::optional<FlightMoment> MomentOf(const MapRoute& route, const FlightClock& clock,
                                     double minute) {
  if (clock.Points.empty()) return {};
  FlightMoment moment;
  moment.Phase = PhaseAt(route, clock, minute);
  const auto [point, part] = LegAt(clock, minute);
  const bool isBetween = point + 1 < clock.Points.size();
  const RoutePoint& from = route.Points[point];
  const RoutePoint& to = route.Points[isBetween ? point + 1 : point];
  moment.Point = point;
  moment.At = Between(from.At, to.At, part);
  moment.Altitude = from.Altitude + (to.Altitude - from.Altitude) * part;
  moment.Speed = SpeedTo(route, part > 0 ? point + 1 : point);
  moment.Along = part * DistanceOf(from.At, to.At);
  for (std::size_t i = 0; i < point; ++i)
    moment.Along += DistanceOf(route.Points[i].At, route.Points[i + 1].At);
  if (isBetween)
    moment.Heading = HeadingOf(from.At, to.At);
  else if (point > 0)
    moment.Heading = HeadingOf(route.Points[point - 1].At, from.At);
  return moment;
}

double LastMinute(const std::vector<MapRoute>& routes, const std::vector<FlightClock>& clocks) {
  double last = 1;
  for (const auto& clock : clocks)
    if (!clock.Points.empty()) last = std::max(last, clock.Points.back().Leaves);
  for (const auto& route : routes) last = std::max(last, route.StartMinutes);
  return last;
}

std::string TimeOfDay(std::string_view time, double minutes) {
  constexpr double kUsualHour = 12, kLatestHour = 23.99;
  constexpr long kDay = 24L * 60 * 60;
  const double hours = std::clamp(ParseNumber(time).value_or(kUsualHour), 0.0, kLatestHour);
  const long seconds = std::lround(std::fmod(hours * 3600 + minutes * 60, double(kDay))) % kDay;
  return TwoDigits(seconds / 3600) + ":" + TwoDigits(seconds / 60 % 60) + ":" +
         TwoDigits(seconds % 60);
}

std::optional<Meeting> NearestApproach(const MapRoute& a, const FlightClock& clockA,
                                       const MapRoute& b, const FlightClock& clockB) {
  std::vector<double> minutes;
  AddTurns(minutes, clockA);
  AddTurns(minutes, clockB);
  std::sort(minutes.begin(), minutes.end());
  minutes.erase(std::unique(minutes.begin(), minutes.end()), minutes.end());
  std::optional<Meeting> nearest;
  for (std::size_t i = 0; i < minutes.size(); ++i) {
    const double begin = minutes[i], end = minutes[std::min(i + 1, minutes.size() - 1)];
    const auto a0 = MomentOf(a, clockA, begin), b0 = MomentOf(b, clockB, begin);
    const auto a1 = MomentOf(a, clockA, end), b1 = MomentOf(b, clockB, end);
    if (!a0 || !b0 || !a1 || !b1 || !IsUp(*a0) || !IsUp(*b0)) continue;
    // One that has ended by then is where it ended: it does not fly on.
    const bool goesOn = IsUp(*a1) && IsUp(*b1);
    const MapPoint from{a0->At.X - b0->At.X, a0->At.Y - b0->At.Y};
    const MapPoint to = goesOn ? MapPoint{a1->At.X - b1->At.X, a1->At.Y - b1->At.Y} : from;
    const Meeting meeting = NearestWithin(from, to, begin, end);
    if (!nearest || meeting.Metres < nearest->Metres) nearest = meeting;
  }
  return nearest;
}

}  // namespace rws
