#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "map/geometry.h"
#include "mission/line_array.h"

/** What a mission puts where: plain data, made from its records and its lines. Armies are numbers
   as the game counts them: 0 none, 1 red, 2 blue, others up to 16 for home bases. Texts are in the
    encoding of mission text; heights are metres above the ground. */
namespace rws {

enum class WaypointShape : std::uint8_t { TakeOff, Normal, Attack, Landing };

/** One point of a flight's route. */
struct RoutePoint {
  MapPoint At;
  double Altitude = 0, Speed = 0;  // metres, kilometres per hour
  WaypointShape Shape = WaypointShape::Normal;
  bool HasPlace = true;  // its coordinates are numbers
  bool HasTriggers = false;
  std::size_t Waypoint = 0;  // index among the flight's waypoints
  std::string Target;        // name of an object, or ""
  int TargetPoint = 0;       // point of the target's own route
  /** Minutes from the mission's start before which it does not take off; minutes that it stays. */
  double Delay = 0, Stay = 0;
  /** Corners of a patrol around it. */
  std::vector<MapPoint> Patrol;
};

/** Where one flight goes. */
struct MapRoute {
  std::size_t Flight = 0;  // index in the mission
  std::uint8_t Army = 0;
  std::string Name;
  bool IsPlayer = false;
  double StartMinutes = 0;  // after the mission's start
  std::vector<RoutePoint> Points;
};

struct MapBase {
  std::size_t Base = 0;  // index in the mission
  MapPoint At;
  double Radius = 0;
  std::uint8_t Army = 0;
};

enum class ObjectKind : std::uint8_t {
  Aircraft,
  Ship,
  Armor,
  Vehicle,
  Train,
  Artillery,
  Rocket,
  Building,
  Light,
  Smoke,
  Balloon,
  Camera,
  Other
};
inline constexpr std::size_t kObjectKinds = 13;

/** A thing that stands somewhere. */
struct MapObject {
  MapPoint At;
  float Heading = 0;  // compass degrees of its nose
  ObjectKind Kind = ObjectKind::Other;
  std::uint8_t Army = 0;
  std::uint32_t Line = 0;  // of the mission's lines
};

struct RoadPoint {
  MapPoint At;
  bool IsSet = false;  // by the user; the others lie between
  double Minutes = 0;  // after the mission's start, when it goes on; 0 for no stop
};

/** A column, train or ship under way. */
struct MapUnit {
  std::string_view Name, Type;
  ObjectKind Kind = ObjectKind::Vehicle;
  std::uint8_t Army = 0;
  std::uint32_t Line = 0;
  std::vector<RoadPoint> Road;
};

/** Something to be destroyed, defended, escorted or seen. */
struct MapTarget {
  MapPoint At;
  double Radius = 0;  // 0 for none
  int Type = 0, Importance = 0;
  std::uint32_t Line = 0;
};

struct FrontMarker {
  MapPoint At;
  std::uint8_t Army = 0;
};

/** A bridge that a road crosses, from end to end. */
struct MapBridge {
  MapPoint From, To;
  int Number = 0;
};

/** A line to what a rocket is aimed at. */
struct RocketAim {
  MapPoint From, To;
  std::uint8_t Army = 0;
};

/** What the lines of a mission put on the map. Views of text last as long as `Lines`. */
struct MapThings {
  LineArray Lines;
  std::vector<MapObject> Objects;
  std::vector<MapUnit> Units;
  std::vector<MapTarget> Targets;
  std::vector<FrontMarker> Markers;
  std::vector<MapBridge> Bridges;
  std::vector<RocketAim> Rockets;
  /** All home bases of the file. A record made anew from it may hold the first one alone. */
  std::vector<MapBase> Bases;
  /** Where objects with a name are: the index of an object. */
  std::unordered_map<std::string_view, std::size_t> ByName;
  /** Lines that were meant to put something somewhere, and could not. */
  std::size_t Misplaced = 0;
};

/** What there is to see of a mission. */
struct MapScene {
  std::vector<MapRoute> Routes;  // one for each flight, in their order
  std::vector<MapBase> Bases;
  MapThings Things;
};

}  // namespace rws
