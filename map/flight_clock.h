#pragma once

#include <optional>
#include <string>
#include <vector>

#include "map/map_scene.h"

/** When a flight is where. A mission holds no times of waypoints: they follow from the start, the
    distances and the speeds. Minutes count from the mission's start, and are real ones. */
namespace rws {

/** A point of a route in time. */
struct ClockedPoint {
  double Arrives = 0, Leaves = 0;
};

struct FlightClock {
  /** The points that have a time, from the first on. Those behind have none, since no speed was
      told until then or a point has no place. */
  std::vector<ClockedPoint> Points;
  bool IsWhole = false;  // all points have one
};

/** A leg is flown at the speed of the point that it leads to; without one the speed before holds.
 */
FlightClock ClockOf(const MapRoute& route);

/** The speed at which a point is reached, in kilometres per hour; 0 while none was told. */
double SpeedTo(const MapRoute& route, std::size_t point);

enum class FlightPhase {
  NotYet,   // it has not appeared
  Waiting,  // on the ground, for its time to take off
  Flying,
  Ended,   // past its last point
  Unknown  // past the last point that has a time
};

/** Where a flight is at one moment. Before its start it is at its first point, at the end at its
    last. */
struct FlightMoment {
  FlightPhase Phase = FlightPhase::NotYet;
  MapPoint At;
  double Altitude = 0, Speed = 0, Heading = 0;
  double Along = 0;       // metres from the first point, along the route
  std::size_t Point = 0;  // the one that it has passed last
};
/** Nothing for a route without a place. */
std::optional<FlightMoment> MomentOf(const MapRoute& route, const FlightClock& clock,
                                     double minute);

/** Metres along the route from its first point to each; points without a place add nothing. */
std::vector<double> DistancesAlong(const MapRoute& route);

/** The last minute at which anything of the mission moves, at least 1. */
double LastMinute(const std::vector<MapRoute>& routes, const std::vector<FlightClock>& clocks);

/** The time of day: "12:47:30". `time` is decimal hours as the mission has them; text that is no
    number counts as 12, as in the game. `holds` for a clock that stands still. */
std::string TimeOfDay(std::string_view time, double minutes);

/** When the nearest approach of two flights is, and how near; nothing when they never fly at the
   same time. */
struct Meeting {
  double Minute = 0, Metres = 0;
};
std::optional<Meeting> NearestApproach(const MapRoute& a, const FlightClock& clockA,
                                       const MapRoute& b, const FlightClock& clockB);

}  // namespace rws
