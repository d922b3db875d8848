#include <gtest/gtest.h>

#include <sstream>

#include "mainwindow/logic/aircraft_count.h"
#include "mainwindow/logic/flight_rows.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

using Texts = std::vector<std::string>;

Flight MakeFlight(const char* name, const char* aircraftClass, const char* planes = "4") {
  Flight flight;
  flight.Name = name;
  flight.Class = aircraftClass;
  flight.Planes = planes;
  return flight;
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
  Mission mission;
  mission.Flights = {MakeFlight("r0100", "A_1"), MakeFlight("g_x31", "a_2"),
                     MakeFlight("m00", "A_1"),   MakeFlight("ja01", "A_3"),
                     MakeFlight("zz00", "A_3"),  MakeFlight("n00", "A_3"),
                     MakeFlight("x", "A_1")};
  std::vector<FlightRow> rows(9);
  EXPECT_FALSE(MakeFlightRows(mission, MakeCatalogues(), w.Services, rows));
  ASSERT_EQ(rows.size(), 6u);
  const std::string menu = "Right click for menu options",
                    unsupported =
                        "Installed game does not support this aircraft right click to change it.";
  const std::string expected[] = {
      "0|Duck|r01|01 / 01|red Duck|red USSR0|" + menu + "|First||VVS|255|1",
      // Found by its class in another letter case: shown by name, yet not known.
      "1|duck 2|g x|04 / 02|not duck 2|not USSR1|" + unsupported + "|" + unsupported + "|" +
          unsupported + "|VVS|8421504|0",
      "2|Duck|m|01 / 01|green Duck|green Mars2|" + menu + "|m||MAF|8421504|1",
      "3|Alk|ja|01 / 02|blue Alk|blue Japan3|" + menu + "|ja||IJA|16711680|1",
      "4|Alk|zz|01 / 01| Alk| Unknown4|" + menu + "|zz||None|16711680|1",
      "5|Alk|n|01 / 01|white Alk|white none5|" + menu + "|n||None|0|1"};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const FlightRow& row = rows[i];
    std::ostringstream found;
    found << row.Flight << '|' << row.PlaneName << '|' << row.GroupText << '|' << row.SquadText
          << '|' << row.SortKey << '|' << row.SquadSortKey << '|' << row.ToolTip << '|'
          << row.GroupToolTip << '|' << row.SquadToolTip << '|' << row.Icon << '|' << row.Color
          << '|' << row.Supported;
    EXPECT_EQ(found.str(), expected[i]);
  }
  EXPECT_EQ(w.Log, Texts{"Invalid procedure call or argumentLoadPlaneList"});
}

std::string SortedOrder(FlightSort by, bool descending) {
  World w;
  Mission mission;
  mission.Flights = {MakeFlight("r0100", "A_2"), MakeFlight("u00", "A_1"),
                     MakeFlight("n00", "A_1"),   MakeFlight("ja00", "A_1"),
                     MakeFlight("ja01", "A_1"),  MakeFlight("q00", "Z")};
  std::vector<FlightRow> rows;
  EXPECT_TRUE(MakeFlightRows(mission, MakeCatalogues(), w.Services, rows));
  SortFlightRows(rows, w.Services.Page, by, descending);
  std::string order;
  for (const auto& row : rows) order += std::to_string(row.Flight);
  return order;
}

TEST(FlightRows, SortWithoutRegardToCase) {
  // blue Duck, blue Duck, not Z, Red Duck, red duck 2, white Duck
  EXPECT_EQ(SortedOrder(FlightSort::ByPlane, false), "345102");
  EXPECT_EQ(SortedOrder(FlightSort::ByPlane, true), "201534");
  // blue Japan3, blue Japan4, not Unknown5, Red usa1, red USSR0, white none2
  EXPECT_EQ(SortedOrder(FlightSort::BySquad, false), "345102");
  EXPECT_EQ(SortedOrder(FlightSort::BySquad, true), "201543");
}

TEST(FlightRows, CompareASelectionAndFillUpTexts) {
  EXPECT_TRUE(SelectedSameAircraft({"Il-2", "Il-2M", "Il-2"}));
  EXPECT_FALSE(SelectedSameAircraft({"Il-2M", "Il-2"}));
  EXPECT_TRUE(SelectedAllFlyable(MakeCatalogues(), {"Duck"}));
  EXPECT_FALSE(SelectedAllFlyable(MakeCatalogues(), {"Duck", "Alk"}));
  EXPECT_EQ(RightJust("ab", "c", 6), "ab   c");
  EXPECT_EQ(RightJust("ab", "c", 3), "abc");
  EXPECT_EQ(RightJust("ab", "c", 1), "abc");
}

TEST(AircraftCountText, CountsByArmyAndAircraft) {
  World w;
  const Catalogues cat = MakeCatalogues();
  Mission mission;
  EXPECT_EQ(AircraftCountText(mission, cat, w.Services), "");
  mission.Flights = {MakeFlight("r0100", "A_1"), MakeFlight("n00", "X_9", "3"),
                     MakeFlight("r0101", "A_1"), MakeFlight("m00", "A_1"),
                     MakeFlight("u00", "A_1", "")};
  const std::string whiteAndRed =
      " * White Army *\r\n    3 - X_9\r\n-----------------------\r\n"
      "    3  White A/C Total\r\n\r\n\r\n"
      " * Red Army *\r\n    8 - Duck\r\n    0 - Duck\r\n-----------------------\r\n"
      "    8  Red A/C Total\r\n\r\n\r\n";
  EXPECT_EQ(AircraftCountText(mission, cat, w.Services), whiteAndRed);
  mission.Flights.push_back(MakeFlight("ja00", "A_3", "2"));
  EXPECT_EQ(AircraftCountText(mission, cat, w.Services),
            whiteAndRed +
                " * Blue Army *\r\n    2 - Alk\r\n-----------------------\r\n"
                "    2  Blue A/C Total\r\n\r\n\r\n Total Aircraft - 13");
}

}  // namespace
}  // namespace rws::test
