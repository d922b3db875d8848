#include "map/profile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "map/map_units.h"
#include "services/numbers.h"

namespace rws {

namespace {

constexpr double kMetresPerKilometre = 1000;
/** What a number is off by must not cost the last step. */
constexpr double kRoundingError = 1e-9;

std::string MissingText(const MapRoute& route, const FlightClock& clock) {
  if (route.Points.empty()) return "The flight has no waypoints.";
  const std::size_t first = clock.Points.size();
  if (first >= route.Points.size()) return "";
  return "No clock from waypoint " + std::to_string(first) +
         " on: " + (route.Points[first].HasPlace ? "no speed is set." : "it has no place.");
}

void AddOverWay(ProfileSeries& series, const MapRoute& route) {
  const auto along = DistancesAlong(route);
  for (std::size_t i = 0; i < route.Points.size(); ++i)
    if (route.Points[i].HasPlace)
      series.Corners.push_back({along[i], route.Points[i].Altitude, SpeedTo(route, i)});
}

void AddOverTime(ProfileSeries& series, const MapRoute& route, const FlightClock& clock) {
  for (std::size_t i = 0; i < clock.Points.size(); ++i) {
    const ClockedPoint& times = clock.Points[i];
    const double altitude = route.Points[i].Altitude, speed = SpeedTo(route, i);
    series.Corners.push_back({times.Arrives, altitude, speed});
    if (times.Leaves > times.Arrives) series.Corners.push_back({times.Leaves, altitude, speed});
  }
}

void AddMarks(ProfileSeries& series, const MapModel& model, const MapRoute& route,
              const FlightClock& clock, ProfileAxis axis) {
  const auto along = DistancesAlong(route);
  const bool isTime = axis == ProfileAxis::Time;
  const std::size_t count = isTime ? clock.Points.size() : route.Points.size();
  for (std::size_t i = 0; i < count; ++i) {
    const RoutePoint& point = route.Points[i];
    if (!point.HasPlace) continue;
    const bool hasTime = i < clock.Points.size();
    series.Marks.push_back({isTime ? clock.Points[i].Arrives : along[i], point.Altitude, i,
                            point.Shape,
                            hasTime ? ClockText(model.Time, clock.Points[i].Arrives) : ""});
  }
}

/** The smallest of 1, 2 and 5 times a power of ten that is at least a number. */
double RoundAbove(double number) {
  const double power = std::pow(10, std::floor(std::log10(number)));
  const double rest = number / power * (1 - kRoundingError);
  return power * (rest <= 1 ? 1 : rest <= 2 ? 2 : rest <= 5 ? 5 : 10);
}

/** `unit` is how much of the series one of the user's units is. */
std::vector<AxisTick> RoundTicks(double last, int most, double unit) {
  std::vector<AxisTick> ticks{{0, "0"}};
  const double size = last / unit;
  if (!(size > 0) || !std::isfinite(size) || most < 1) return ticks;
  const double step = RoundAbove(size / most);
  const int decimals =
      std::max(0, -static_cast<int>(std::floor(std::log10(step) + kRoundingError)));
  const double steps = std::floor(size / step * (1 + kRoundingError));
  for (int i = 1; i <= static_cast<int>(steps); ++i)
    ticks.push_back({step * i * unit, NumberText(RoundHalfEven(step * i, decimals))});
  return ticks;
}

double MinuteStep(double least) {
  constexpr std::array<double, 10> kSteps{1, 2, 5, 10, 20, 30, 60, 120, 240, 480};
  for (const double step : kSteps)
    if (step >= least) return step;
  return std::ceil(least / kSteps.back()) * kSteps.back();
}

std::string NameOf(const MapTextSources& from, std::size_t route) {
  return from.Services.Page.ToUtf8(from.Model.Scene.Routes[route].Name);
}

std::string PhaseText(const MapTextSources& from, std::size_t route, const FlightMoment& moment) {
  switch (moment.Phase) {
    case FlightPhase::NotYet:
      return "not there yet";
    case FlightPhase::Ended:
      return "at its end";
    case FlightPhase::Unknown:
      return MissingText(from.Model.Scene.Routes[route], from.Model.Clocks[route]);
    default:
      break;
  }
  const std::string height = HeightText(moment.Altitude, from.Metric);
  if (moment.Phase == FlightPhase::Waiting) return "waiting, " + height;
  return height + ", " + SpeedText(moment.Speed, from.Metric) + ", heading " +
         HeadingText(moment.Heading) + ", " + DistanceText(moment.Along, from.Metric) +
         " along its route";
}

struct PairMeeting {
  double Metres = HUGE_VAL;
  std::string Text;
};

PairMeeting MeetingOf(const MapTextSources& from, std::size_t a, std::size_t b) {
  const auto& routes = from.Model.Scene.Routes;
  const auto& clocks = from.Model.Clocks;
  const std::string names = NameOf(from, a) + " and " + NameOf(from, b);
  const auto nearest = NearestApproach(routes[a], clocks[a], routes[b], clocks[b]);
  if (!nearest) return {HUGE_VAL, names + " are never under way at the same time"};
  return {nearest->Metres, names + " are " + DistanceText(nearest->Metres, from.Metric) +
                               " apart at " + TimeOfDay(from.Model.Time, nearest->Minute)};
}

}  // namespace

ProfileSeries SeriesOf(const MapModel& model, std::size_t route, ProfileAxis axis) {
  ProfileSeries series;
  series.Route = route;
  if (route >= model.Scene.Routes.size() || route >= model.Clocks.size()) return series;
  const MapRoute& flight = model.Scene.Routes[route];
  const FlightClock& clock = model.Clocks[route];
  if (axis == ProfileAxis::Time)
    AddOverTime(series, flight, clock);
  else
    AddOverWay(series, flight);
  AddMarks(series, model, flight, clock, axis);
  series.Missing = MissingText(flight, clock);
  return series;
}

std::optional<double> ProfilePlace(const MapModel& model, std::size_t route, ProfileAxis axis,
                                   double minute) {
  if (axis == ProfileAxis::Time) return minute;
  if (route >= model.Scene.Routes.size() || route >= model.Clocks.size()) return {};
  const auto moment = MomentOf(model.Scene.Routes[route], model.Clocks[route], minute);
  return moment ? std::optional(moment->Along) : std::nullopt;
}

std::optional<double> MinuteAlong(const MapModel& model, std::size_t route, double metres) {
  if (route >= model.Scene.Routes.size() || route >= model.Clocks.size()) return {};
  const auto& points = model.Clocks[route].Points;
  if (points.empty()) return {};
  const auto along = DistancesAlong(model.Scene.Routes[route]);
  if (metres <= 0) return points.front().Arrives;
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (along[i] < metres) continue;
    const double part = (metres - along[i - 1]) / (along[i] - along[i - 1]);
    return points[i - 1].Leaves + (points[i].Arrives - points[i - 1].Leaves) * part;
  }
  return points.back().Arrives;
}

std::string ClockText(std::string_view time, double minutes) {
  constexpr std::size_t kHoursAndMinutes = 5;
  return TimeOfDay(time, minutes).substr(0, kHoursAndMinutes);
}

std::vector<AxisTick> DistanceTicks(double last, int most, bool metric) {
  return RoundTicks(last, most, metric ? kMetresPerKilometre : kMetresPerMile);
}

std::vector<AxisTick> HeightTicks(double last, int most, bool metric) {
  return RoundTicks(last, most, metric ? 1 : 1 / kFeetPerMetre);
}

std::vector<AxisTick> SpeedTicks(double last, int most, bool metric) {
  return RoundTicks(last, most, metric ? 1 : kMetresPerMile / kMetresPerKilometre);
}

std::vector<AxisTick> MinuteTicks(double last, int most, std::string_view time) {
  std::vector<AxisTick> ticks{{0, ClockText(time, 0)}};
  if (!(last > 0) || !std::isfinite(last) || most < 1) return ticks;
  const double step = MinuteStep(last / most);
  for (int i = 1; step * i <= last; ++i) ticks.push_back({step * i, ClockText(time, step * i)});
  return ticks;
}

std::string MomentText(const MapTextSources& from, std::size_t route, double minute) {
  if (route >= from.Model.Scene.Routes.size() || route >= from.Model.Clocks.size()) return "";
  const MapRoute& flight = from.Model.Scene.Routes[route];
  const FlightClock& clock = from.Model.Clocks[route];
  const auto moment = MomentOf(flight, clock, minute);
  const std::string head = NameOf(from, route) + " at " + TimeOfDay(from.Model.Time, minute) + ": ";
  return head + (moment ? PhaseText(from, route, *moment) : MissingText(flight, clock));
}

std::vector<std::string> MeetingTexts(const MapTextSources& from,
                                      const std::vector<std::size_t>& routes) {
  std::vector<PairMeeting> meetings;
  for (std::size_t i = 0; i < routes.size(); ++i)
    for (std::size_t k = i + 1; k < routes.size(); ++k)
      meetings.push_back(MeetingOf(from, routes[i], routes[k]));
  std::stable_sort(meetings.begin(), meetings.end(),
                   [](const auto& a, const auto& b) { return a.Metres < b.Metres; });
  std::vector<std::string> texts;
  for (auto& meeting : meetings) texts.push_back(std::move(meeting.Text));
  return texts;
}

std::string NearestMeeting(const MapTextSources& from, std::size_t route,
                           const std::vector<std::size_t>& others) {
  PairMeeting nearest;
  for (const std::size_t other : others) {
    if (other == route) continue;
    PairMeeting meeting = MeetingOf(from, route, other);
    if (meeting.Metres < nearest.Metres) nearest = std::move(meeting);
  }
  return nearest.Text;
}

}  // namespace rws
