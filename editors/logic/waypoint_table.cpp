#include "editors/logic/waypoint_table.h"

#include <cmath>

#include "catalogues/aircraft.h"
#include "mission/flight_values.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"
#include "services/units.h"

namespace rws {

namespace {

constexpr std::string_view kRadioOff = "&0", kRadioOn = "&1";

template <class MissionArray>
auto& FlightOf(MissionArray& missions, const Document& doc) {
  return At(At(missions, doc.CurMission).Flights, doc.CurFlight);
}

template <class AnyWaypoint>
auto& Field(AnyWaypoint& waypoint, int column) {
  switch (column) {
    case kWaypointType:
      return waypoint.Type;
    case kWaypointAlt:
      return waypoint.Alt;
    case kWaypointSpeed:
      return waypoint.Speed;
    case kWaypointRadio:
      return waypoint.Marker;
    default:
      throw SubscriptFault();
  }
}

/** The largest whole number not above the value; "" for one beyond all numbers. */
std::string CutDown(double value) {
  return std::isfinite(value) ? NumberText(std::floor(value)) : "";
}

double Minutes(const Waypoint& waypoint) {
  const double speed = ParseNumber(waypoint.Speed).value_or(0);
  return speed == 0 ? 0 : waypoint.Dist / speed;
}

WaypointRow MakeRow(std::size_t index, const Waypoint& waypoint, bool metric) {
  const std::string number = std::to_string(index), minutes = CutDown(Minutes(waypoint));
  const std::string radio = waypoint.Marker == kRadioOff ? "No" : "Yes";
  if (metric)
    return {number,  waypoint.Type, waypoint.Alt, waypoint.Speed, CutDown(waypoint.Dist / 100),
            minutes, radio};
  return {number,
          waypoint.Type,
          MetersToFeet(waypoint.Alt),
          KmToMiles(waypoint.Speed),
          std::isfinite(waypoint.Dist) ? DistToMiles(NumberText(waypoint.Dist)) : "",
          minutes,
          radio};
}

}  // namespace

std::vector<WaypointRow> WaypointRows(const Document& doc, bool metric) {
  const auto& waypoints = FlightOf(doc.Missions, doc).Waypoints;
  std::vector<WaypointRow> rows;
  rows.reserve(waypoints.size());
  for (std::size_t i = 0; i < waypoints.size(); ++i)
    rows.push_back(MakeRow(i, waypoints[i], metric));
  return rows;
}

WaypointRow OneWaypointRow(const Document& doc, int row, bool metric) {
  const auto index = static_cast<std::size_t>(row - 1);
  return MakeRow(index, At(FlightOf(doc.Missions, doc).Waypoints, row - 1), metric);
}

bool IsTriggersRow(const Document& doc, int row) {
  return At(FlightOf(doc.Missions, doc).Waypoints, row - 1).Type == "TRIGGERS";
}

std::string RouteCaption(const Document& doc, const Catalogues& catalogues,
                         const Services& services) {
  const Flight& flight = FlightOf(doc.Missions, doc);
  const auto group = flight.Name.size() < 2 ? "" : GroupOf(flight.Name);
  return GetPlaneName(catalogues, services, flight.Class) + " - " + Replace(group, "_", " ");
}

std::optional<std::string> TypedValue(std::string_view text, int column, bool metric) {
  text = Trim(text);
  const auto number = ParseNumber(text);
  if (!number || !std::isfinite(*number)) return {};
  if (metric) return std::string(text);
  const std::string value = column == kWaypointAlt ? FeetToMeters(text) : MilesToKm(text);
  if (value.empty()) return {};
  return value;
}

std::string_view UnitWord(int column, bool metric) {
  if (column == kWaypointAlt) return metric ? "meters" : "feet";
  return metric ? "Kph" : "Mph";
}

std::string_view MarkerOf(bool radioSilence) { return radioSilence ? kRadioOn : kRadioOff; }

void SetWaypoint(Document& doc, int row, int column, std::string_view value) {
  Field(At(FlightOf(doc.Missions, doc).Waypoints, row - 1), column) = value;
}

bool WaypointDiffers(const Document& doc, int row, int column) {
  const Waypoint& own = At(FlightOf(doc.Missions, doc).Waypoints, row - 1);
  const auto& shadow = FlightOf(doc.MissionShadow, doc).Waypoints;
  // After a removal the shadow's flight at this place is another one, maybe with a shorter route.
  if (static_cast<std::size_t>(row) > shadow.size()) return true;
  return Field(own, column) != Field(At(shadow, row - 1), column);
}

void SetWaypoints(Document& doc, int first, int last, int column, std::string_view value,
                  int currentRow, const std::function<void(bool differs)>& written) {
  for (int row = first; row <= last; ++row) {
    if (IsTriggersRow(doc, row)) continue;
    SetWaypoint(doc, row, column, value);
    written(WaypointDiffers(doc, currentRow, column));
  }
}

}  // namespace rws
