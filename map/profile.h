#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "map/map_model.h"
#include "map/map_texts.h"

/** The side view of flights: how high and how fast they are over the way or over the time, and who
    meets whom. Routes are indexes in the scene; texts are UTF-8. */
namespace rws {

enum class ProfileAxis {
  Distance,  // metres along the route from its first point
  Time       // minutes from the mission's start
};

/** A corner of the line of heights. Between two the height runs straight, and the speed is that of
    the second. */
struct ProfileCorner {
  double At = 0, Altitude = 0, Speed = 0;
};

/** A waypoint's place on the line. */
struct ProfileMark {
  double At = 0, Altitude = 0;
  std::size_t Point = 0;  // of the route
  WaypointShape Shape = WaypointShape::Normal;
  std::string Clock;  // "12:47"; "" for one without a time
};

/** One flight seen from the side. */
struct ProfileSeries {
  std::size_t Route = 0;
  std::vector<ProfileCorner> Corners;
  std::vector<ProfileMark> Marks;
  /** Why points are left out or have no time, as a sentence; "" when none are. */
  std::string Missing;
};

/** Points without a place are left out, and over the time those without one. A route that is not
    there gives an empty series. */
ProfileSeries SeriesOf(const MapModel& model, std::size_t route, ProfileAxis axis);

/** The flight's place on an axis at a minute; nothing when it has none. */
std::optional<double> ProfilePlace(const MapModel& model, std::size_t route, ProfileAxis axis,
                                   double minute);

/** The minute at which a flight is first so many metres along its route; the last minute that it
    has for more. Nothing for a route without a clock. */
std::optional<double> MinuteAlong(const MapModel& model, std::size_t route, double metres);

/** "12:47" */
std::string ClockText(std::string_view time, double minutes);

/** A line of an axis. */
struct AxisTick {
  double At = 0;  // in the unit of the series: metres, minutes, kilometres per hour
  std::string Text;
};

/** Round numbers of an axis from 0 to `last`, at most `most` steps of 1, 2 or 5 times a power of
    ten in the user's unit. Bare numbers: the unit is the axis's own. */
std::vector<AxisTick> DistanceTicks(double last, int most, bool metric);
std::vector<AxisTick> HeightTicks(double last, int most, bool metric);
std::vector<AxisTick> SpeedTicks(double last, int most, bool metric);
/** Times of day at full steps of the mission's minutes: 1, 2, 5, 10, 20, 30 or whole hours. */
std::vector<AxisTick> MinuteTicks(double last, int most, std::string_view time);

/** What a flight does at a minute: "r0100 at 12:47:30: 1500 m, 350 km/h, heading 045°, 12.3 km
    along its route". Says why when it has no clock there. */
std::string MomentText(const MapTextSources& from, std::size_t route, double minute);

/** "r0100 and g0100 are 400 m apart at 12:52:10", for each two of some routes, the nearest first;
    those that are never under way at the same time come last. */
std::vector<std::string> MeetingTexts(const MapTextSources& from,
                                      const std::vector<std::size_t>& routes);
/** The same of one flight and that of the others which comes nearest to it; "" where none does. */
std::string NearestMeeting(const MapTextSources& from, std::size_t route,
                           const std::vector<std::size_t>& others);

}  // namespace rws
