#include <gtest/gtest.h>

#include <sstream>

#include "mainwindow/logic/aircraft_count.h"
#include "mainwindow/logic/flight_rows.h"
#include "services/text.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

using Texts = std::vector<std::string>;

/** A mission with a flight for each "name class planes". */
Mission MakeMission(const Texts& rows) {
  Mission mission;
  for (const auto& row : rows) {
    const auto parts = SplitAt(row, ' ');
    Flight& flight = mission.Flights.emplace_back();
    flight.Name = parts[0];
    flight.Class = parts[1];
    flight.Planes = parts[2];
  }
  return mission;
}

Catalogues MakeCatalogues() {
  Catalogues cat;
  cat.Aircraft = {{"Red", "Duck", "A_1", "", "", {}, true, false},
                  {"Red", "duck 2", "A_2", "", "", {}, false, false},
                  {"Red", "Alk", "A_3", "", "", {}, false, false}};
  cat.Squadrons = {{"red", "USSR", "VVS", {{"r01", "First"}, {"g_x", ""}}},
                   {"blue", "Japan", "IJA", {{"ja", ""}}},
                   {"white", "none", "None", {{"n", ""}}},
                   {"green", "Mars", "MAF", {{"m", ""}}},
                   {"Red", "usa", "USAAF", {{"u", ""}}}};
  return cat;
}

TEST(SquadFlightText, CountsFromOne) {
  const std::pair<const char*, const char*> rows[] = {
      {"r0100", "01 01"}, {"r0132 ", "04 03"}, {"g9x", "10 01"}, {"7", "08 01"}, {"", "01 01"}};
  for (const auto& [name, text] : rows) EXPECT_EQ(SquadFlightText(name), text) << name;
}

TEST(FlightRows, ShowEachFlight) {
  World w;
  const Mission mission = MakeMission({"r0100 A_1 4", "g_x31 a_2 4", "m00 A_1 4", "ja01 A_3 4",
                                       "zz00 A_3 4", "n00 A_3 4", "x A_1 4"});
  std::vector<FlightRow> rows(9);
  EXPECT_FALSE(MakeFlightRows(mission, MakeCatalogues(), w.Services, rows));
  const std::string menu = "Right click for menu options",
                    bad = "Installed game does not support this aircraft right click to change it.";
  const Texts expected{
      "0|Duck|r01|01 / 01|red Duck|red USSR0|" + menu + "|First||VVS|255|1",
      // Found by its class in another letter case: shown by name, yet not known.
      "1|duck 2|g x|04 / 02|not duck 2|not USSR1|" + bad + "|" + bad + "|" + bad + "|VVS|8421504|0",
      "2|Duck|m|01 / 01|green Duck|green Mars2|" + menu + "|m||MAF|8421504|1",
      "3|Alk|ja|01 / 02|blue Alk|blue Japan3|" + menu + "|ja||IJA|16711680|1",
      "4|Alk|zz|01 / 01| Alk| Unknown4|" + menu + "|zz||None|16711680|1",
      "5|Alk|n|01 / 01|white Alk|white none5|" + menu + "|n||None|0|1"};
  Texts found;
  for (const auto& row : rows) {
    std::ostringstream text;
    text << row.Flight << '|' << row.PlaneName << '|' << row.GroupText << '|' << row.SquadText
         << '|' << row.SortKey << '|' << row.SquadSortKey << '|' << row.ToolTip << '|'
         << row.GroupToolTip << '|' << row.SquadToolTip << '|' << row.Icon << '|' << row.Color
         << '|' << row.Supported;
    found.push_back(text.str());
  }
  EXPECT_EQ(found, expected);
  EXPECT_EQ(w.Log, Texts{"Invalid procedure call or argumentLoadPlaneList"});
}

TEST(FlightRows, SortWithoutRegardToCase) {
  World w;
  const Mission mission =
      MakeMission({"r0100 A_2 4", "u00 A_1 4", "n00 A_1 4", "ja00 A_1 4", "ja01 A_1 4", "q00 Z 4"});
  const auto order = [&](FlightSort by, bool descending) {
    std::vector<FlightRow> rows;
    EXPECT_TRUE(MakeFlightRows(mission, MakeCatalogues(), w.Services, rows));
    SortFlightRows(rows, w.Services.Page, by, descending);
    std::string text;
    for (const auto& row : rows) text += std::to_string(row.Flight);
    return text;
  };
  // blue Duck, blue Duck, not Z, Red Duck, red duck 2, white Duck
  EXPECT_EQ(order(FlightSort::ByPlane, false), "345102");
  EXPECT_EQ(order(FlightSort::ByPlane, true), "201534");
  // blue Japan3, blue Japan4, not Unknown5, Red usa1, red USSR0, white none2
  EXPECT_EQ(order(FlightSort::BySquad, false), "345102");
  EXPECT_EQ(order(FlightSort::BySquad, true), "201543");
}

TEST(AircraftCountText, CountsByArmyAndAircraft) {
  World w;
  const Catalogues cat = MakeCatalogues();
  EXPECT_EQ(AircraftCountText(Mission(), cat, w.Services), "");
  Mission mission =
      MakeMission({"r0100 A_1 4", "n00 X_9 3", "r0101 A_1 4", "m00 A_1 4", "u00 A_1 "});
  const std::string whiteAndRed =
      " * White Army *\r\n    3 - X_9\r\n-----------------------\r\n"
      "    3  White A/C Total\r\n\r\n\r\n"
      " * Red Army *\r\n    8 - Duck\r\n    0 - Duck\r\n-----------------------\r\n"
      "    8  Red A/C Total\r\n\r\n\r\n";
  EXPECT_EQ(AircraftCountText(mission, cat, w.Services), whiteAndRed);
  mission.Flights.push_back(MakeMission({"ja00 A_3 2"}).Flights[0]);
  EXPECT_EQ(AircraftCountText(mission, cat, w.Services),
            whiteAndRed +
                " * Blue Army *\r\n    2 - Alk\r\n-----------------------\r\n"
                "    2  Blue A/C Total\r\n\r\n\r\n Total Aircraft - 13");
}

}  // namespace
}  // namespace rws::test
