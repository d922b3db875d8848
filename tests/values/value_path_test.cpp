#include "values/value_path.h"

#include <gtest/gtest.h>

#include "services/faults.h"

namespace rws {
namespace {

/** What a text was read as: kind, flights, index, field, value, and "?" for a pattern. */
std::string Shown(const std::string& text) {
  std::string shown;
  const auto read = [&] {
    const Assignment set = ParseAssignment(text);
    const ValuePath& path = set.Path;
    shown = "MFPWB"[static_cast<int>(path.Of)];
    if (!path.Flights.Text.empty())
      shown += " " + std::string(1, "ncafs"[path.Flights.By]) + ":" + path.Flights.Text;
    if (path.Index) shown += " " + std::to_string(*path.Index);
    shown.append(" ").append(path.Field).append("=").append(set.Value);
    if (path.IsPattern()) shown += " ?";
  };
  Trap(read, [&](const Fault& caught) { shown = "! " + caught.Text; });
  return shown;
}

TEST(ParseAssignment, ReadsPathsAndSaysWhatIsWrong) {
  const std::pair<const char*, const char*> rows[] = {
      {"Time=5.5", "M Time=5.5"},
      {"player=", "M Player="},
      {"flight[r0100].FUEL=50", "F n:r0100 Fuel=50"},
      {"flight[r01*].Fuel=50", "F n:r01* Fuel=50 ?"},
      {"flight[class=air.BF_109G6].Weapons=a", "F c:BF_109G6 Weapons=a ?"},
      {"Flight[ARMY=Blue].Skill=2", "F a:Blue Skill=2 ?"},
      {"flight[a.b].plane[3].Skin=a=b[1].bmp", "P n:a.b 3 Skin=a=b[1].bmp"},
      {"flight[a].plane[*].Skill=1", "P n:a Skill=1 ?"},
      {"flight[a].waypoint[12].Marker=&1", "W n:a 12 Marker=&1"},
      {"base[0].Army=2", "B 0 Army=2"},
      {"base[*].Radius=900", "B Radius=900 ?"},
      {"Time", "! it is to be PATH=VALUE"},
      {"=1", "! the path cannot be read"},
      {"flight[a.Fuel=1", "! it is to be PATH=VALUE"},
      {"flight[a]x.Fuel=1", "! \"[\" without \"]\" at the end"},
      {"flight].Fuel=1", "! the path cannot be read"},
      {"flight[].Fuel=1", "! nothing stands in the brackets"},
      {"flight[[a]].Fuel=1", "! the path cannot be read"},
      {"flight.Fuel=1", "! \"flight\" needs brackets"},
      {"flight[aircraft=Bf 109*].Fuel=1", "F f:Bf 109* Fuel=1 ?"},
      {"flight[squadron=JG52].Fuel=1", "F s:JG52 Fuel=1 ?"},
      {"flight[side=red].Fuel=1",
       "! flights are chosen by name, or by class=, army=, aircraft= or squadron="},
      {"flight[army=green].Fuel=1", "! an army is red, blue or white"},
      {"flight[a].plane[-1].Skin=", "! \"-1\" is no number from 0 on"},
      {"flight[a].plane[1x].Skin=", "! \"1x\" is no number from 0 on"},
      {"flight[a].gun[1].Skin=", "! a flight has plane[...] and waypoint[...]"},
      {"flight[a].Fuel[1]=1",
       "! there is no such value; it is one of Fuel, Skill, Weapons, Planes, StartTime, OnlyAI, "
       "Parachute, Class"},
      {"base[1].Skin=1", "! there is no such value; it is one of Army, Radius"},
      {"wing[1].Army=1",
       "! a path begins with flight[...] or base[...], or is a value of the mission"}};
  for (const auto& [text, shown] : rows) EXPECT_EQ(Shown(text), shown) << text;
}

TEST(FitsPattern, TakesAStarForAnyRun) {
  const struct {
    const char *Text, *Pattern;
    bool Fits;
  } rows[] = {{"r0100", "R0100", true},  {"r0100", "r01", false},  {"r0100", "*", true},
              {"r0100", "r*00", true},   {"r0100", "r*01", false}, {"r0101", "*01", true},
              {"r0100", "*0*1*0", true}, {"", "*", true},          {"", "a", false},
              {"r#[0]", "r#[0]", true},  {"aab", "*ab", true},     {"r0100", "r0100*", true}};
  for (const auto& row : rows)
    EXPECT_EQ(FitsPattern(row.Text, row.Pattern), row.Fits) << row.Text << " " << row.Pattern;
}

}  // namespace
}  // namespace rws
