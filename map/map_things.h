#pragma once

#include "map/map_scene.h"

/** What the lines of a mission put on the map beside its flights and home bases. */
namespace rws {

/** Reads the sections of standing objects, columns, rockets, targets, cameras, front markers and
   the bridges that roads cross. A line that gives no place is counted and left out. */
MapThings ThingsOf(const LineArray& lines);

/** What an object of a class is: "vehicles.planes.Plane$BF_109E4" is an aircraft. */
ObjectKind KindOfClass(std::string_view className);
/** What a column of a type is: "Trains.Germany_Boxcar". */
ObjectKind KindOfUnit(std::string_view type);

/** "Parked aircraft", "Ship". */
std::string_view KindName(ObjectKind kind);
/** "Destroy", "Recon": what is to be done with a target, by its number; "" for an unknown one. */
std::string_view TargetName(int type);

}  // namespace rws
