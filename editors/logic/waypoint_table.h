#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogues/catalogues.h"
#include "mission/document.h"
#include "mission/waypoint_kinds.h"
#include "services/services.h"

/** The route of the current flight as a table. Columns and rows count from 1, row 0 being the
    headings; row r shows waypoint r - 1. Altitude, speed, type and radio silence can be changed,
    places and distances are only shown. Texts are in the encoding of mission text. A document
    without such a flight or waypoint is a subscript fault. */
namespace rws {

enum WaypointColumn {
  kWaypointNumber = 1,
  kWaypointType,
  kWaypointAlt,
  kWaypointSpeed,
  kWaypointDist,
  kWaypointMinutes,
  kWaypointRadio
};
inline constexpr int kWaypointColumns = 7;

struct WaypointColumnLook {
  /** What stands above it, with all its blanks, which make it as wide as it is. */
  std::string_view Metric, NonMetric;
  bool ToTheRight = true;  // else centred
  /** Numbers are typed into it. */
  bool Typed = false;
};
inline constexpr std::array<WaypointColumnLook, kWaypointColumns> kWaypointLooks{
    {{"  Waypoint     ", "  Waypoint     ", false},
     {"      Type      ", "      Type      ", false},
     {"   Alt [meters] ", "     Alt   [feet] ", true, true},
     {"  Speed [km/h]  ", "  Speed [mph]   ", true, true},
     {"    Dist. [km]  ", "    Dist. [miles] "},
     {" Minutes   ", " Minutes  "},
     {"  Radio Silence   ", "  Radio Silence  "}}};

/** True for the columns that are typed into: altitude and speed. */
constexpr bool IsTypedColumn(int column) {
  return column > 0 && column <= kWaypointColumns &&
         kWaypointLooks[static_cast<std::size_t>(column - 1)].Typed;
}

using WaypointRow = std::array<std::string, kWaypointColumns>;
/** One row per waypoint. Metric shows meters and kilometers, otherwise feet and miles. The minutes
    are tens of meters through kilometers per hour, in both. */
std::vector<WaypointRow> WaypointRows(const Document& doc, bool metric);
WaypointRow OneWaypointRow(const Document& doc, int row, bool metric);

/** True for a row of settings that later games keep among the waypoints: a "TRIGGERS" line. It is
    shown, and nothing in it is ever changed. */
bool IsTriggersRow(const Document& doc, int row);

/** Name of the aircraft and of the flight. */
std::string RouteCaption(const Document& doc, const Catalogues& catalogues,
                         const Services& services);

/** What a text typed into an altitude or speed column stands for in the record; empty if it is no
    number. Metric text is taken as it is, decimals included, but for blanks around it, which would
    shift the words of the line. */
std::optional<std::string> TypedValue(std::string_view text, int column, bool metric);
/** Unit of a typed column as it is asked for. */
std::string_view UnitWord(int column, bool metric);

std::string_view MarkerOf(bool radioSilence);

/** Writes the type, altitude, speed or radio silence of a row's waypoint. */
void SetWaypoint(Document& doc, int row, int column, std::string_view value);
/** True if that field differs from the one in the shadow. */
bool WaypointDiffers(const Document& doc, int row, int column);
/** Writes one value to all rows from `first` to `last` but those of triggers, and after each hands
    on whether the field of `currentRow` differs: the current one and not the one just written, on
    purpose. */
void SetWaypoints(Document& doc, int first, int last, int column, std::string_view value,
                  int currentRow, const std::function<void(bool differs)>& written);

}  // namespace rws
