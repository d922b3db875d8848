#include "library/mission_order.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"

namespace rws::test {
namespace {

TEST(MissionOrder, SortsByWhatAColumnShowsAndThenByName) {
  ShownNames maps;
  maps.Add("z/load.ini", "Ardennes");
  MissionIndex index({maps, {}, {}}, CodePage());
  const auto put = [&](const char* name, const char* map, const char* time, std::int64_t changed,
                       std::size_t flights) {
    MissionFacts facts;
    facts.Folder = "in";
    facts.FileName = name;
    facts.Stamp = {true, 1, changed};
    facts.MapPath = map;
    facts.Time = time;
    facts.BriefingName = flights == 0 ? "Zulu" : "alpha";
    facts.Flights.resize(flights);
    index.Put(facts);
  };
  put("patrol over sea 2.mis", "z/load.ini", "23.9999", -5, 10);
  put("Patrol over sea 10.mis", "Berlin/load.ini", "4.25", 7, 9);
  put("bomber.mis", "", "", 7, 0);
  put("a.mis", "berlin/LOAD.ini", "4.25", 9, 9);
  EXPECT_EQ(CellText(index, 2, MissionColumn::Time) + CellText(index, 0, MissionColumn::Time),
            "23:59")
      << "a day has no 24:00";
  const struct {
    MissionColumn By;
    bool Descending;
    std::vector<std::uint32_t> Rows;
  } rows[] = {{MissionColumn::Mission, false, {3, 2, 1, 0}},
              {MissionColumn::Mission, true, {0, 1, 2, 3}},
              {MissionColumn::Briefing, false, {3, 1, 0, 2}},
              {MissionColumn::Map, false, {2, 0, 3, 1}},
              {MissionColumn::Time, false, {2, 3, 1, 0}},
              {MissionColumn::Time, true, {0, 3, 1, 2}},
              {MissionColumn::Flights, true, {0, 3, 1, 2}},
              {MissionColumn::Changed, false, {0, 2, 1, 3}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(ColumnKey(row.By)) + (row.Descending ? " down" : ""));
    std::vector<std::uint32_t> sorted = {0, 1, 2, 3};
    SortMissions(index, sorted, row.By, row.Descending);
    EXPECT_EQ(sorted, row.Rows);
  }
}

}  // namespace
}  // namespace rws::test
