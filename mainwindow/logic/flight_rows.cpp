#include "mainwindow/logic/flight_rows.h"

#include <algorithm>
#include <utility>

#include "catalogues/aircraft.h"
#include "catalogues/army_text.h"
#include "catalogues/squadrons.h"
#include "mission/flight_values.h"
#include "services/arrays.h"
#include "services/error_log.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr const char kMenuHint[] = "Right click for menu options";
constexpr const char kUnsupportedHint[] =
    "Installed game does not support this aircraft right click to change it.";

FlightRow MakeRow(const Flight& flight, std::int32_t colorBefore, const Catalogues& catalogues,
                  const Services& services) {
  FlightRow row;
  row.GroupText = Replace(GroupOf(flight.Name), "_", " ");
  row.SquadText = Replace(SquadFlightText(flight.Name), " ", " / ");
  row.Supported = IsKnownPlane(catalogues, flight.Class);
  const std::string word =
      row.Supported ? GetColorByGroup(catalogues, services, flight.Name) : "not";
  row.PlaneName = GetPlaneName(catalogues, services, flight.Class);
  row.SortKey = word + " " + row.PlaneName;
  row.SquadSortKey = word + " " + GetCountryByGroup(catalogues, services, flight.Name);
  row.GroupToolTip = GetUserDatabyGroup(catalogues, services, flight.Name);
  if (row.GroupToolTip.empty()) row.GroupToolTip = row.GroupText;
  row.ToolTip = kMenuHint;
  row.Unknown = UnknownPlaneText(catalogues, flight.Class);
  if (!row.Supported) row.ToolTip = row.GroupToolTip = row.SquadToolTip = kUnsupportedHint;
  // A word that is no army keeps the colour of the row before, on purpose.
  row.Color = ArmyColor(word).value_or(colorBefore);
  row.Icon = GetCntyNameByGroup(catalogues, services, flight.Name);
  return row;
}

}  // namespace

std::string SquadFlightText(std::string_view flightName) {
  std::string_view digits = Trim(flightName);
  if (digits.size() > 2) digits.remove_prefix(digits.size() - 2);
  const auto counted = [&](std::size_t i) {
    const auto digit = digits.substr(std::min(i, digits.size()), 1);
    return FormatNumber(Val(digit) + 1, "0#");
  };
  return counted(0) + " " + counted(1);
}

std::string UnknownPlaneText(const Catalogues& catalogues, const std::string& aircraftClass) {
  if (IsKnownPlane(catalogues, aircraftClass)) return "";
  const std::string start = "The class \"" + aircraftClass + "\" is ";
  if (catalogues.Listed)
    return start +
           "not in the lists of the game's pack, which are in use. The game may have it all the "
           "same.\nIf it is of another pack, choose that in the preferences, Names and Lists, or "
           "add "
           "it by Flight, Add This Aircraft.";
  return start +
         "not in the tables of this program, and no lists of the game are in use. The game may "
         "have it all the same.\nPreferences, Names and Lists, chooses the pack that names it; "
         "Flight, Add This "
         "Aircraft, gives it a name of your own.";
}

bool MakeFlightRows(const Mission& mission, const Catalogues& catalogues, const Services& services,
                    std::vector<FlightRow>& rows) {
  rows.clear();
  rows.reserve(mission.Flights.size());
  return LogAndLeave(services, "LoadPlaneList", [&] {
    for (const auto& flight : mission.Flights) {
      const std::int32_t colorBefore = rows.empty() ? 0 : rows.back().Color;
      FlightRow row = MakeRow(flight, colorBefore, catalogues, services);
      row.Flight = rows.size();
      row.SquadSortKey += std::to_string(row.Flight);
      rows.push_back(std::move(row));
    }
  });
}

void SortFlightRows(std::vector<FlightRow>& rows, const CodePage& page, FlightSort by,
                    bool descending) {
  const auto key = by == FlightSort::ByPlane ? &FlightRow::SortKey : &FlightRow::SquadSortKey;
  SortByKey(
      rows, [&](const FlightRow& row) { return page.LCase(row.*key); }, &FlightRow::Flight,
      descending);
}

bool SelectedSameAircraft(const std::vector<std::string>& planeNames) {
  return std::all_of(planeNames.begin(), planeNames.end(),
                     [&](const auto& name) { return Contains(name, planeNames.front()); });
}

bool SelectedAllFlyable(const Catalogues& catalogues, const std::vector<std::string>& planeNames) {
  return std::all_of(planeNames.begin(), planeNames.end(),
                     [&](const auto& name) { return IsFlyable(catalogues, name); });
}

}  // namespace rws
