#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "mission/carry_edits.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/line_patch.h"
#include "mission/pending_lines.h"
#include "mission/references.h"
#include "services/text.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

using std::string;
using test::CrlfText;
using test::World;

/** A mission of every kind of line that the records do not model. */
constexpr char kRich[] =
    "[MAIN]|  MAP Slovak/load.ini|  time 12.783334|\tTIMECONSTANT 1|  CloudHeight 1873|  army 1|"
    "  ShowPilotArmy 2|[RespawnTime]|  Time 99|[Wing]|  r0100|  g0100|[r0100]|  Planes 4|"
    "  OnlyAI 0|  Parachute 1|  Skill 2|  Skill1 3|  Class air.P_51D20NA|  Fuel 88|"
    "  weapons default|  spawn0 12_Static|  skin0 Big Bad.BMP|  Mod 7 // own|[r0100_Way]|"
    "  TAKEOFF_005 54195.82 176315.53 0 0 &0|  TRIGGERS 0 0 20 0|"
    "  NORMFLY_404 81566.39 168677.44 1500.00 350.00 &1 F3|  TRIGGERS 10 0 90 7 500|"
    "  GATTACK 98608.34 166259.46 1500.00 300.00 g0100 2 &0 F5|"
    "  LANDING_104 99269.68 165947.89 0 0 &0|[G0100]|  Class air.JU_87|  Planes 1|  Skill 1|"
    "  Fuel 100|  weapons none|[g0100_way]|  NORMFLY 1.00 2.00 500 300|[NStationary]|[BornPlace]|"
    "  1 3000 121601 74883 1 1000 200|  2 5000 1 2|[BornPlace0]|  Bf-109E-4 10 28xSC50|"
    "  + 2xSC250|  Unknown-1|[BornPlaceCountries0]|  de|[Target]|"
    "  0 0 0 0 500 34420 5968 0 0 g0100 33094 2851|[MDS_BornPlace_1_2_RRR]|  x";

class Kept : public ::testing::Test {
 protected:
  Mission Read(const string& bytes) {
    Mission mission;
    ReadKeptMission(Here.Doc, Here.Services, mission, bytes);
    return mission;
  }
  Mission Rich() { return Read(CrlfText(kRich)); }
  /** What would be written; the reason when nothing would be. */
  string Written(const Mission& mission) {
    LineArray lines;
    string reason;
    return BuildKeptFile(Here.Doc, Here.Services, mission, lines, &reason) ? lines.FileText()
                                                                           : "<" + reason + ">";
  }

  World Here;
};

TEST_F(Kept, ReadsAsTheGameDoes) {
  const Mission m = Rich();
  EXPECT_EQ(m.Time + "|" + m.MapPath + "|" + m.Army + "|" + m.CloudHeight,
            "12.783334|Slovak/load.ini|1|1873");
  EXPECT_EQ(m.TimeConstant, 1);
  ASSERT_EQ(m.Flights.size(), 2U);
  const Flight& f = m.Flights[0];
  EXPECT_EQ(f.Name + "|" + f.Class + "|" + f.OnlyAI + "|" + f.Parachute + "|" + f.Skill,
            "r0100|P_51D20NA|||Custom");
  EXPECT_EQ(f.PlaneSlots[0].Skill + f.PlaneSlots[1].Skill + f.PlaneSlots[3].Skill, "232");
  EXPECT_EQ(f.PlaneSlots[0].Skin, "Big Bad.BMP");
  ASSERT_EQ(f.Waypoints.size(), 4U);
  EXPECT_EQ(f.Waypoints[1].Type + f.Waypoints[1].Marker + f.Waypoints[1].Alt, "NORMFLY_404&11500");
  EXPECT_EQ(m.Flights[1].Name + m.Flights[1].Waypoints.at(0).Marker, "G0100&0");
  ASSERT_EQ(m.BornPlaces.size(), 2U);
  EXPECT_EQ(m.BornPlaces[0].Planes, (std::vector<string>{"Bf-109E-4", "Unknown-1"}));
  const BornPlace& base = m.BornPlaces[1];
  EXPECT_TRUE(base.Army == 2 && base.Radius == 5000 && base.X == 1 && base.Y == 2);
  const string text = "[a]\nPlanes 1\n[a_Way]\nT 1 2 1e999 1e999.x,3\n";
  const Mission beyond = Read(text);
  ASSERT_TRUE(beyond.Loaded);
  EXPECT_EQ(beyond.Flights.at(0).Waypoints.at(0).Alt + "|" + Written(beyond), "0|" + text);
}

TEST_F(Kept, EditsWhatFilesHoldTwiceOrLeaveOpen) {
  struct {
    const char *File, *Written;
    std::function<void(Mission&)> Edit;
  } const rows[] = {
      // A flight, or an aircraft, is listed twice.
      {"[Wing]|  r1|  R1|[r1]|  Planes 1|", "[Wing]|", [](Mission& m) { m.Flights.clear(); }},
      {"[Wing]|  r1|  R1|[r1]|  Planes 1|", "[Wing]|  q1|  q1|[q1]|  Planes 1|",
       [](Mission& m) { m.Flights[0].Name = "q1"; }},
      {"[Wing]|[BornPlace]|  1 2 3 4|[BornPlace0]|  A|  a 5|",
       "[Wing]|[BornPlace]|  1 2 3 4|[BornPlace0]|  A|",
       [](Mission& m) { m.BornPlaces[0].Planes.pop_back(); }},
      // The plane that was edited does not fly any more.
      {"[Wing]|[r1]|  Planes 4|  Skill0 1|  Skill3 2|",
       "[Wing]|[r1]|  Planes 2|  Skill0 1|  Skill3 0|",
       [](Mission& m) { m.Flights[0].Planes = "2", m.Flights[0].PlaneSlots[3].Skill = "0"; }},
      // The section is of no base, and its name ends with the file.
      {"[Wing]|[BornPlace]|  1 2 3 4|[BornPlace_Resources_]",
       "[Wing]|[BornPlace]|  1 2 5 4|[BornPlace_Resources_]",
       [](Mission& m) { m.BornPlaces[0].X = 5; }},
      // The last line of the file has no end, and a blank line is the last that stays.
      {"[Wing]|  r1||[r1]|  Planes 1", "[Wing]||", [](Mission& m) { m.Flights.clear(); }},
      {"[Wing]|  r1|[r1]|  Planes 1", "[Wing]", [](Mission& m) { m.Flights.clear(); }}};
  const auto lines = [](string text) {
    for (std::size_t at = 0; (at = text.find('|', at)) != text.npos;) text.replace(at, 1, "\r\n");
    return text;
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Written);
    Mission mission = Read(lines(row.File));
    row.Edit(mission);
    EXPECT_EQ(Written(mission), lines(row.Written));
  }
}

/** An edit, and what becomes of which lines, joined by "|": "old~=new", "old~+new" for a new line
    behind one, "old~-" for one that goes. */
struct Row {
  const char* Change;
  std::function<void(Mission&)> Edit;
};

string Expected(const string& change) {
  string text = CrlfText(kRich);
  for (const auto part : SplitAt(change, '|')) {
    const std::size_t sign = part.find('~');
    const string old(part.substr(0, sign)), added(part.substr(sign + 2));
    const auto line = [](const string& words) { return words + "\r\n"; };
    const std::size_t at = text.find(line(old));
    EXPECT_NE(at, text.npos) << old;
    const char what = part[sign + 1];
    const string now = what == '=' ? line(added) : what == '+' ? line(old) + line(added) : "";
    text.replace(at, old.size() + 2, now);
  }
  return text;
}

TEST_F(Kept, WritesAnEditIntoItsOwnWords) {
  const auto flight = [](auto edit) { return [=](Mission& m) { edit(m.Flights[0]); }; };
  const Row rows[] = {
      {"  time 12.783334~=  time 5.5", [](Mission& m) { m.Time = "5.5"; }},
      {"\tTIMECONSTANT 1~-", [](Mission& m) { m.TimeConstant = 0; }},
      {"  CloudHeight 1873~=  CloudHeight 900", [](Mission& m) { m.CloudHeight = "900"; }},
      {"\tTIMECONSTANT 1~+  WEAPONSCONSTANT 1", [](Mission& m) { m.WeaponsConstant = 1; }},
      {"  CloudHeight 1873~+  player r0100", [](Mission& m) { m.Player = "r0100"; }},
      {"  OnlyAI 0~=  OnlyAI 1", flight([](Flight& f) { f.OnlyAI = "1"; })},
      {"  Parachute 1~=  Parachute 0", flight([](Flight& f) { f.Parachute = "0"; })},
      {"  Skill 2~=  Skill 0|  Skill1 3~-", flight([](Flight& f) { f.Skill = "0"; })},
      {"  Skill1 3~=  Skill1 1", flight([](Flight& f) { f.PlaneSlots[1].Skill = "1"; })},
      {"  Skill 2~+  Skill0 0", flight([](Flight& f) { f.PlaneSlots[0].Skill = "0"; })},
      {"  skin0 Big Bad.BMP~=  skin0 other.bmp",
       flight([](Flight& f) { f.PlaneSlots[0].Skin = "other.bmp"; })},
      {"  skin0 Big Bad.BMP~+  noseart0 A.bmp",
       flight([](Flight& f) { f.PlaneSlots[0].NoseArt = "A.bmp"; })},
      {"  skin0 Big Bad.BMP~-", flight([](Flight& f) { f.PlaneSlots[0].Skin = ""; })},
      {"  NORMFLY_404 81566.39 168677.44 1500.00 350.00 &1 F3~="
       "  NORMFLY_404 81566.39 168677.44 2000.00 350.00 &1 F3",
       flight([](Flight& f) { f.Waypoints[1].Alt = "2000"; })},
      {"  NORMFLY_404 81566.39 168677.44 1500.00 350.00 &1 F3~="
       "  NORMFLY 81566.39 168677.44 1500.00 350.00 &0 F3|  TRIGGERS 10 0 90 7 500~-",
       flight([](Flight& f) { f.Waypoints[1].Type = "NORMFLY", f.Waypoints[1].Marker = "&0"; })},
      {"  TAKEOFF_005 54195.82 176315.53 0 0 &0~-|  TRIGGERS 0 0 20 0~-",
       flight([](Flight& f) { f.Waypoints.erase(f.Waypoints.begin()); })},
      {"  NORMFLY 1.00 2.00 500 300~=  NORMFLY 1.00 2.00 750 300 &1",
       [](Mission& m) {
         m.Flights[1].Waypoints[0].Alt = "750";
         m.Flights[1].Waypoints[0].Marker = "&1";
       }},
      {"  r0100~=  r0200|[r0100]~=[r0200]|[r0100_Way]~=[r0200_Way]",
       flight([](Flight& f) { f.Name = "r0200"; })},
      {"  2 5000 1 2~=  3 5000 1 2", [](Mission& m) { m.BornPlaces[1].Army = 3; }},
      {"  TRIGGERS 0 0 20 0~+  NORMFLY_402 5.00 6.00 700.00 300.00 &0|"
       "  NORMFLY_402 5.00 6.00 700.00 300.00 &0~+  TRIGGERS 0 0 0 5 0",
       flight([](Flight& f) {
         Waypoint added = f.Waypoints[1];
         added.KeptRow = -1, added.KeptTriggers = "";
         added.Line = "  NORMFLY_402 5.00 6.00 700.00 300.00 &0";
         added.Type = "NORMFLY_402", added.Alt = "700", added.Speed = "300", added.Marker = "&0";
         f.Waypoints.insert(f.Waypoints.begin() + 1, added);
       })},
      {"  2 5000 1 2~=  2 5000 1 77|[MDS_BornPlace_1_2_RRR]~=[MDS_BornPlace_1_77_RRR]",
       [](Mission& m) { m.BornPlaces[1].Y = 77; }},
      {"  1 3000 121601 74883 1 1000 200~=  1 3000 5 74883 1 1000 200",
       [](Mission& m) { m.BornPlaces[0].X = 5; }},
      {"  NORMFLY_404 81566.39 168677.44 1500.00 350.00 &1 F3~-|  TRIGGERS 10 0 90 7 500~-|"
       "  GATTACK 98608.34 166259.46 1500.00 300.00 g0100 2 &0 F5~+"
       "  NORMFLY_404 81566.39 168677.44 1500.00 350.00 &1 F3|"
       "  NORMFLY_404 81566.39 168677.44 1500.00 350.00 &1 F3~+  TRIGGERS 10 0 90 7 500",
       flight([](Flight& f) { std::swap(f.Waypoints[1], f.Waypoints[2]); })},
      {"  Bf-109E-4 10 28xSC50~-|  + 2xSC250~-",
       [](Mission& m) { m.BornPlaces[0].Planes = {"Unknown-1"}; }},
      {"  Unknown-1~+  La-5",
       [](Mission& m) {
         m.BornPlaces[0].Planes = {"BF-109E-4", "Unknown-1", "La-5"};
       }},
      {"  Bf-109E-4 10 28xSC50~-|  + 2xSC250~-|  Unknown-1~+  Bf-109E-4 10 28xSC50|"
       "  Bf-109E-4 10 28xSC50~+  + 2xSC250",
       [](Mission& m) { std::swap(m.BornPlaces[0].Planes[0], m.BornPlaces[0].Planes[1]); }},
      {"  LANDING_104 99269.68 165947.89 0 0 &0~=  TAKEOFF_001 99269.68 165947.89 0 0 &0|"
       "  TAKEOFF_001 99269.68 165947.89 0 0 &0~+  TRIGGERS 0 0 20 0",
       flight([](Flight& f) { f.Waypoints[3].Type = "TAKEOFF_001"; })},
      {"[BornPlace0]~-|  Bf-109E-4 10 28xSC50~-|  + 2xSC250~-|  Unknown-1~-",
       [](Mission& m) { m.BornPlaces[0].Planes.clear(); }},
      {"  de~+[BornPlace1]|[BornPlace1]~+  La-5",
       [](Mission& m) { m.BornPlaces[1].Planes = {"La-5"}; }},
      {"  GATTACK 98608.34 166259.46 1500.00 300.00 g0100 2 &0 F5~="
       "  GATTACK 98608.34 166259.46 1500.00 300.00 g0300 2 &0 F5|"
       "  0 0 0 0 500 34420 5968 0 0 g0100 33094 2851~="
       "  0 0 0 0 500 34420 5968 0 0 g0300 33094 2851",
       [](Mission& m) { RenameReferences(m, "g0100", "g0300"); }},
  };
  EXPECT_EQ(Written(Rich()), CrlfText(kRich));
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Change);
    Mission mission = Rich();
    row.Edit(mission);
    EXPECT_EQ(Written(mission), Expected(row.Change));
  }
}

TEST_F(Kept, PlanesWithoutASkillOfTheirOwnKeepTheCommonOne) {
  Mission mission = Read("[a]\nPlanes 3\nSkill 3\nClass x\n");
  mission.Flights[0].Skill = "Custom";
  mission.Flights[0].PlaneSlots[0].Skill = "0";
  EXPECT_EQ(Written(mission), "[a]\nPlanes 3\nSkill0 0\nSkill1 3\nSkill2 3\nClass x\n");
}

TEST_F(Kept, NumbersKeepTheirForm) {
  const struct {
    const char *Old, *Value, *Now;
  } rows[] = {{"1873", "900", "900"},
              {"1873.0", "900", "900.0"},
              {"1873.55", "900", "900.0"},
              // As they were typed: with a blank, with a fraction.
              {"1873.0", "900 ", "900.0"},
              {"1873.0", " 1873", "1873.0"},
              {"1873.0", "900.5", "900.5"}};
  for (const auto& row : rows) {
    Mission mission = Read("[MAIN]\nCloudHeight " + string(row.Old));
    mission.CloudHeight = row.Value;
    EXPECT_EQ(Written(mission), "[MAIN]\nCloudHeight " + string(row.Now)) << row.Old;
  }
}

TEST_F(Kept, NewLinesEndAsThoseOfTheFile) {
  const struct {
    const char *File, *Written;
  } rows[] = {
      {"[MAIN]\n TIME 1\n[a]\n", "[MAIN]\n TIME 1\n player r\n[a]\n"},
      {"[MAIN]\r\n TIME 1", "[MAIN]\r\n TIME 1\r\n player r"},
      {"[MAIN]\r[a]\r\n", "[MAIN]\r  player r\r[a]\r\n"},
      {"", "  player r"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.File);
    Mission mission = Read(row.File);
    mission.Player = "r";
    EXPECT_EQ(Written(mission).substr(0, string(row.Written).size()), row.Written);
  }
}

TEST_F(Kept, FlightsComeAndGoWithTheirLines) {
  Mission mission = Rich();
  Flight copy = mission.Flights[0], made;
  copy.Name = "r0101";
  copy.Waypoints[2].Line = "  GATTACK 7 8 1500.00 300.00 &0 F5";
  made.Name = "r0300";
  made.Class = "I_16";
  made.Planes = made.Skill = "1";
  made.Waypoints = {{"500", "300", "NORMFLY", "&1", 0, 0, 0, {}, -1, {}}};
  made.Waypoints[0].Line = "NORMFLY 5 6 1 2 r0100 0";
  mission.Flights = {mission.Flights[0], copy, made};
  const string text = Written(mission);
  const std::size_t begin = text.find("[r0101]");
  ASSERT_NE(begin, text.npos) << text;
  EXPECT_EQ(text.find("[G0100]"), text.npos);
  EXPECT_EQ(text.find("  g0100\r\n"), text.npos);
  const string added = text.substr(begin, text.find("[NStationary]") - begin);
  EXPECT_EQ(added,
            CrlfText("[r0101]|  Planes 4|  OnlyAI 0|  Parachute 1|  Skill 2|  Skill1 3|"
                     "  Class air.P_51D20NA|  Fuel 88|  weapons default|  skin0 Big Bad.BMP|"
                     "  Mod 7 // own|[r0101_Way]|  TAKEOFF_005 54195.82 176315.53 0 0 &0|"
                     "  TRIGGERS 0 0 20 0|  NORMFLY_404 81566.39 168677.44 1500.00 350.00 &1 F3|"
                     "  TRIGGERS 10 0 90 7 500|  GATTACK 7 8 1500.00 300.00 &0 F5|"
                     "  LANDING_104 99269.68 165947.89 0 0 &0|[r0300]|  Planes 1|  Skill 1|"
                     "  Class air.I_16|[r0300_Way]|  NORMFLY 5 6 500.00 300.00 r0100 0 &1"));
  EXPECT_NE(text.find("  r0100\r\n  r0101\r\n  r0300\r\n"), text.npos);
}

TEST_F(Kept, RefusesWhatWouldNotBeReadAgain) {
  const Row rows[] = {
      {"A value", [](Mission& m) { m.Flights[0].Name = "a]\r\n[b"; }},
      {"No section", [](Mission& m) { m.Flights.emplace_back(); }},
      {"A value", [](Mission& m) { m.Flights[0].PlaneSlots[3].Skill = "1\nFuel 3"; }},
      {"The values of flight r0100", [](Mission& m) { m.Flights[0].Weapons = "4x #1"; }},
      {"The list of flights", [](Mission& m) { m.Flights[0].Name = m.Flights[1].Name; }},
      {"The values of [MAIN]", [](Mission& m) { m.Player = " r0100"; }},
      {"The values of flight", [](Mission& m) { std::swap(m.Flights[0], m.Flights[1]); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Change);
    Mission mission = Rich();
    row.Edit(mission);
    EXPECT_EQ(Written(mission).rfind(string("<") + row.Change, 0), 0U) << Written(mission);
  }
  Mission mission = Rich();
  LineArray lines = mission.Lines;
  mission.Flights[0].Fuel = "50";
  lines = MergedLines(Here.Doc, Here.Services, mission);
  lines.Set(7, "[Other]");
  EXPECT_EQ(CheckMerged(Here.Doc, Here.Services, mission, lines).Lines,
            std::vector<string>{"[RespawnTime]"});
}

TEST_F(Kept, TellsWhetherAMissionCanBeMadeAnew) {
  const auto check = [&](const string& text) {
    World world;
    test::ReadInto(world, text);
    return CheckMadeAnew(world.Doc, world.Services, world.Doc.Missions[0], {});
  };
  const string plain = CrlfText(
      "[MAIN]|  MAP a/load.ini|  TIME 12.00|  CloudType 1|  CloudHeight 1000|[Wing]|  r0100|"
      "[r0100]|  Planes 1|  Skill 1|  Class air.A|  weapons none|  Fuel 100|[r0100_Way]|"
      "  NORMFLY 1.00 2.00 500.00 300.00 &0|[NStationary]");
  EXPECT_TRUE(check(plain).KeepsMeaning);
  EXPECT_GT(check(plain).Lines, 0U) << "numbers and order";
  for (const char* more : {"  OnlyAI 0", "  skin0 Abc.bmp", "  spawn0 1_Static", "  Fuel 50"})
    EXPECT_FALSE(check(Replace(plain, "  Skill 1\r\n", "  Skill 1\r\n" + string(more) + "\r\n"))
                     .KeepsMeaning)
        << more;
}

/** Missions as no builder writes them. */
class NastyMission {
 public:
  explicit NastyMission(unsigned seed) : random_(seed) {}

  string Text() {
    string text =
        Pick({"[MAIN]|  MAP a|  TIME 12.0|", "  TIME 1|", "[main]|TIME 5|TIME 6|[MAIN]|TIME 7|"});
    text += Pick({"[WING]|  r0100|  r0101|", "", "[Wing]|r0101|[Wing]|  r0100|"});
    std::vector<string> parts{Section("r0100"),
                              Section("r0101"),
                              Section("R0100"),
                              "[r0100_Way]|" + Route(),
                              "[r0101_way]|" + Route(),
                              "[BornPlace]|" + Pick({"  1 2 3 4 5|1 x|", "\t2 3|"}),
                              "[BornPlace0]|" + Pick({"A 1|+ 2|a|", "+ x|  B|", ""}),
                              "[]|x|"};
    std::shuffle(parts.begin(), parts.end(), random_);
    for (const auto& part : parts) text += part;
    return WithEnds(text);
  }
  std::size_t Number(std::size_t below) { return random_() % below; }

 private:
  string Pick(const std::vector<string>& texts) { return texts[Number(texts.size())]; }
  string Section(const string& name) {
    string lines;
    for (const char* key : {"Planes", "Skill", "Skill1", "Class", "Fuel", "OnlyAI", "Parachute",
                            "skin0", "skin0", "weapons", "Other"})
      if (Number(4) > 0)
        lines += Pick({"  ", "", "\t "}) + key + Pick({" ", "\t", "  "}) +
                 Pick({"1", "0", "3", "x y", "air.Q"}) + Pick({"|", " |", " // c|"});
    return "[" + name + "]|" + lines + "planes 2|";
  }
  string Route() {
    string lines;
    for (std::size_t i = Number(4); i > 0; --i)
      lines += Pick({"  NORMFLY 1.0 2 3.00 4 &1 F2|", "TAKEOFF_001 1 2 0 0 t 0 &0|",
                     "  TRIGGERS 1 2|", "|", "LANDING 5|", "X\t1 2 300 4x5|"});
    return lines;
  }
  string WithEnds(const string& text) {
    string result;
    for (const char c : text)
      result += c == '|' ? Pick({"\r\n", "\r\n", "\n", "\r"}) : string(1, c);
    if (Number(2)) result.erase(result.find_last_not_of("\r\n") + 1);
    return result;
  }

  std::mt19937 random_;
};

/** One of many edits; false where it has nothing to work on. */
bool EditOne(Mission& m, std::size_t which, std::size_t number) {
  if (which == 0) return m.Time = "3." + std::to_string(number), true;
  if (m.Flights.empty()) return false;
  Flight& flight = m.Flights[number % m.Flights.size()];
  if (which == 1) return flight.Fuel = std::to_string(number), true;
  if (which == 2) return flight.PlaneSlots[1].Skin = "S" + std::to_string(number) + ".bmp", true;
  if (which == 3) return flight.Skill = std::to_string(number % 4), true;
  if (which == 4) return flight.Parachute = flight.Parachute.empty() ? "0" : "", true;
  if (flight.Waypoints.empty()) return false;
  Waypoint& waypoint = flight.Waypoints[number % flight.Waypoints.size()];
  if (which == 5) return waypoint.Alt = std::to_string(100 + number), true;
  return waypoint.Marker = waypoint.Marker == "&1" ? "&0" : "&1", true;
}

TEST_F(Kept, HoldsForMissionsAsNoBuilderWritesThem) {
  constexpr unsigned kRounds = 300;
  constexpr std::size_t kEdits = 7;
  for (unsigned seed = 1; seed <= kRounds; ++seed) {
    NastyMission nasty(seed);
    const string text = nasty.Text();
    SCOPED_TRACE(std::to_string(seed) + "\n" + text);
    const Mission read = Read(text);
    ASSERT_EQ(Written(read), text);
    const std::size_t one = nasty.Number(kEdits), other = nasty.Number(kEdits),
                      number = nasty.Number(50);
    Mission first = read;
    if (one == other || !EditOne(first, one, number)) continue;
    const string edited = Written(first);
    ASSERT_NE(edited[0], '<') << edited;
    Mission second = read, both = Read(edited);
    if (!EditOne(second, other, number) || !EditOne(both, other, number)) continue;
    EditOne(first, other, number);
    Mission swapped = Read(Written(second));
    EditOne(swapped, one, number);
    EXPECT_EQ(Written(first), Written(both)) << "one after the other";
    EXPECT_EQ(Written(first), Written(swapped)) << "in either order";
  }
}

TEST(LinePatch, MakesNoLineOfTheEndsOfTwo) {
  const LineArray lines = LineArray::FromFileAsIs("a\rb\n\nc");
  LinePatch shorter(lines), longer(lines);
  shorter.Remove(1);
  longer.Insert(2, "x");
  EXPECT_EQ(shorter.Result().FileText(), "a\r\n\nc");
  EXPECT_EQ(longer.Result().FileText(), "a\rb\nx\r\n\nc");
}

TEST_F(Kept, TakesNothingButEditsFromTheOtherReading) {
  int carried = 0;
  for (unsigned seed = 1; seed <= 200; ++seed) {
    NastyMission nasty(seed);
    World world;
    test::ReadInto(world, nasty.Text());
    Mission& told = world.Doc.Missions[0];
    if (!told.Loaded) continue;
    SCOPED_TRACE(std::to_string(seed) + "\n" + told.AsRead.FileText());
    const Mission saved = told;
    ASSERT_EQ(SetKeepsLines(world.Doc, world.Services, told, true, saved), "");
    EXPECT_EQ(Written(told), saved.AsRead.FileText());
    for (std::size_t i = 0; i < saved.Flights.size(); ++i) {
      told = saved;
      told.Flights[i].Fuel = "77";
      if (!SetKeepsLines(world.Doc, world.Services, told, true, saved).empty()) continue;
      EXPECT_EQ(1, std::count_if(told.Flights.begin(), told.Flights.end(),
                                 [](const Flight& flight) { return flight.Fuel == "77"; }));
      ++carried;
    }
  }
  EXPECT_GT(carried, 5);
}

}  // namespace
}  // namespace rws
