#pragma once

#include <array>
#include <string>
#include <vector>

#include "catalogues/catalogues.h"
#include "map/map_hit.h"
#include "map/map_model.h"
#include "services/services.h"

/** All that the map shows, in words, for who cannot see it and for the pointer. In UTF-8. */
namespace rws {

/** What texts about a mission need beside it. */
struct MapTextSources {
  const MapModel& Model;
  const Mission& Record;
  const Catalogues& Tables;
  const rws::Services& Services;
  bool Metric = true;
};

/** One line about a thing: "Waypoint 3 of g0100, Normal Fly, 1500 m, 350 km/h, 12:47:30". "" for
    nothing. */
std::string HitText(const MapTextSources& from, const MapHit& hit);

/** "g0100, Bf 109 E-4, Blue army, the player's" */
std::string FlightText(const MapTextSources& from, std::size_t route);

/** "x 98.01 km, y 167.48 km" */
std::string PlaceText(MapPoint at);

/** Columns of the table of flights at a moment. */
enum FlightColumn {
  kFlightName,
  kFlightAircraft,
  kFlightArmy,
  kFlightPhase,
  kFlightX,
  kFlightY,
  kFlightHeight,
  kFlightSpeed,
  kFlightHeading,
  kFlightNext,
  kFlightNextTime,
  kFlightColumns
};
using FlightTexts = std::array<std::string, kFlightColumns>;

std::array<std::string, kFlightColumns> FlightHeadings();
/** One row for each flight, in their order. */
std::vector<FlightTexts> FlightTable(const MapTextSources& from, double minute);

/** Columns of the table of a route's points. */
enum PointColumn {
  kPointNumber,
  kPointType,
  kPointX,
  kPointY,
  kPointHeight,
  kPointSpeed,
  kPointDistance,
  kPointHeading,
  kPointTime,
  kPointTarget,
  kPointColumns
};
using PointTexts = std::array<std::string, kPointColumns>;

std::array<std::string, kPointColumns> PointHeadings();
/** One row for each point of a flight's route. */
std::vector<PointTexts> PointTable(const MapTextSources& from, std::size_t route);

/** "Red army", "No army", for a home base the name of its colour. */
std::string ArmyName(std::uint8_t army);

/** Rows as text to be copied: cells parted by tabs, each row with a line end. */
template <std::size_t Columns>
std::string TabbedText(const std::array<std::string, Columns>& headings,
                       const std::vector<std::array<std::string, Columns>>& rows) {
  std::string text;
  const auto add = [&](const std::array<std::string, Columns>& row) {
    for (std::size_t i = 0; i < Columns; ++i) text.append(i ? "\t" : "").append(row[i]);
    text.append("\r\n");
  };
  add(headings);
  for (const auto& row : rows) add(row);
  return text;
}

}  // namespace rws
