#include "library/check.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "library/check_report.h"
#include "library/columns.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "services/faults.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"
#include "values/mission_edit.h"

namespace rws {
namespace {

using std::string;

/** A mission that nothing is wrong with. */
const string kRight =
    "[MAIN]|MAP Crimea/l.ini|TIME 12.0|CloudType 1|CloudHeight 1000|player JG5200|army 1|playerNum "
    "0|briefSound Samples/s.wav|[SEASON]|Year 1940|[Wing]|JG5200|JG5201|[JG5200]|Planes 2|Skill "
    "1|skin0 Red 5.bmp|pilot0 Cap5.bmp|noseart0 Star.bmp|Class air.BF_109G6|Fuel 100|weapons "
    "default|[JG5200_Way]|NORMFLY 1.0 2.0 500.00 300.00 JG5201 1 &0 F2|GATTACK 5.0 5.0 9.00 9.00 "
    "0_Chief 0 &1|LANDING 3.0 4.0 0 0 &0|[JG5201]|Planes 4|Skill0 0|Skill1 1|Skill2 2|Skill3 "
    "3|Class air.IL_2|Fuel 0|weapons 2xFAB|StartTime 5|spawn0 0_Static|[JG5201_Way]|TAKEOFF_001 "
    "1.0 2.0 0 0 &0|TRIGGERS 0 0 20 0|TAKEOFF 1.0 3.0 0 0|NORMFLY 9.0 9.0 10000.00 1000.00 &0 "
    "|[Chiefs]|0_Chief Armor.4-T34 1|[0_Chief_Road]|1 2 3 0 2 5|4 5 6|[NStationary]|0_Static "
    "vehicles.planes.Plane$BF_109G6 2 1.0 2.0 3.0 0.0 null 1 1.0 x.bmp 1|1_Static "
    "vehicles.artillery.Artillery$ZIS3 1 1.0 2.0 3.0 0.0 0 3 0.5|[Rocket]|0_Rocket Fi103_V1_ramp 2 "
    "1.0 2.0 3.0 1.0 200 1.0 5.0 6.0|[Target]|0 0 0 0 500 1 2 0 0 0_Chief 1 2|7 0 0 0 500 1 2 0 0 "
    "Bridge12 1 2|3 1 0 0 500 1 2 500|[BornPlace]|1 500 100 200|2 10000 300 400|[BornPlace0]|Bf-"
    "109G-6 10 1xSC|+ 2xSC|[BornPlaceCountries1]|de";

struct Row {
  string From, Has;    // what is put in the place of what
  string Findings;     // "error map, note sound"
  string HasNot = {};  // what is put there instead to be right; "" for what was there
  string Mend = {};    // of the first finding
};

class Check : public testing::Test {
 protected:
  Check() {
    box_.Write("Game/il2fb.exe", "");
    box_.Write("Game/Samples/s.wav", "");
    box_.Write("Game/MAPS/Own/l.ini", "");
    box_.Write("Game/PaintSchemes/Skins/Bf-109G-6/red 5.BMP", "");
    box_.Write("Game/PaintSchemes/Pilots/Cap5.bmp", "");
    box_.Write("Game/PaintSchemes/Noseart/Star.bmp", "");
    Tables.Aircraft = {
        {"Red",
         "Il-2",
         "IL_2",
         "IL2",
         "",
         {{"Default", "default"}, {"Two", "2xFAB"}, {"Empty", "none"}},
         true},
        {"Blue", "Ju 52", "JU_52", "JU52", "", {{"Default", "default"}}, false},
        {"Blue", "Bf 109 G-6", "BF_109G6", "Bf109G6", "", {{"Default", "default"}}, true},
        {"Red", "TBD-1", "TBD1", "TBD1", "", {{"Default", "default"}}, false, false, "TBD"}};
    Tables.Squadrons = {{"blue", "Germany", "Germany", {{"JG52 ", ""}}}};
    Tables.DogFightAircraft = {{"Bf 109 G-6", "Bf-109G-6", "R", true}};
    path_ = box_.Path("Game/Missions/Single/de/a.mis");
  }

  std::vector<Finding> Of(const string& text, MissionKind kind = MissionKind::Single,
                          const string& briefing = "a.properties") {
    const CheckTables tables(Tables, {{"Crimea", "Crimea/l.ini"}}, World.Services);
    GameFiles game(World.Services.Files, "");
    auto findings =
        CheckMission(tables, game,
                     {path_, LineArray::FromFileAsIs(test::CrlfText(text)), kind, false, briefing});
    // Not the subject of most.
    if (!KeepRewriting)
      std::erase_if(findings, [](const Finding& one) { return one.Kind == "made-anew"; });
    return findings;
  }
  static string Kinds(const std::vector<Finding>& findings) {
    string kinds;
    for (const auto& one : findings)
      kinds.append(kinds.empty() ? "" : ", ")
          .append(SeverityWord(one.Severity))
          .append(" ")
          .append(one.Kind);
    return kinds;
  }

  /** The mission with its finding mended by an edit of its kept lines. */
  string Mended(const string& text, const Finding& finding) {
    Mission mission;
    ReadKeptMission(World.Doc, World.Services, mission, test::CrlfText(text));
    const EditRules rules{Tables, World.Services};
    const auto outcome = EditMission(mission, {{*finding.Mend}, {}}, rules);
    EXPECT_EQ(test::Joined(outcome.Faults), "");
    const string bytes = MergedLines(World.Doc, World.Services, mission).FileText();
    return Replace(bytes.substr(0, bytes.size() - 2), "\r\n", "|");
  }

  /** Each finding leads to a line of its section. */
  static void ExpectPlaces(const string& text, const std::vector<Finding>& findings) {
    const auto lines = SplitAt(text, '|');
    for (const auto& one : findings) {
      auto line = lines.begin() + std::max<std::ptrdiff_t>(one.Line, 0);
      while (one.Line >= 0 && !line->starts_with('[')) --line;
      EXPECT_TRUE(one.Line < 0 || *line == "[" + one.Section + "]") << one.Kind << " in " << *line;
    }
  }

  void Try(const std::vector<Row>& rows) {
    for (const auto& row : rows) {
      SCOPED_TRACE(row.Has);
      ASSERT_TRUE(Contains(kRight, row.From)) << row.From;
      const string text = Replace(kRight, row.From, row.Has);
      const auto findings = Of(text);
      EXPECT_EQ(Kinds(findings), row.Findings);
      ExpectPlaces(text, findings);
      const string right = row.HasNot.empty() ? kRight : Replace(kRight, row.From, row.HasNot);
      EXPECT_EQ(Kinds(Of(right)), "") << row.HasNot;
      const bool isMended = !findings.empty() && findings[0].Mend;
      EXPECT_EQ(isMended ? findings[0].Mend->Text : "", row.Mend);
      EXPECT_EQ(isMended ? Kinds(Of(Mended(text, findings[0]))) : "", "");
    }
  }

  test::Sandbox box_;
  test::World World;
  Catalogues Tables;
  string path_;
  bool KeepRewriting = false;
};

TEST_F(Check, FindsNothingInARightMission) { EXPECT_EQ(Kinds(Of(kRight)), ""); }

TEST_F(Check, FindsWhatIsWrongWithTheMission) {
  Try({
      {"[MAIN]", "[MAIM]", "error no-main", "[main]"},
      {"MAP Crimea/l.ini", "MAP", "error no-map", "MAP  crimea/L.INI "},
      {"MAP Crimea/l.ini", "MAP Crimea/m.ini", "error map", "MAP Own/l.ini"},
      {"TIME 12.0", "TIME 24", "warning time", "TIME 23.99", "Time=0.0"},
      {"TIME 12.0", "TIME 49.25", "warning time", "", "Time=1.25"},
      {"TIME 12.0", "TIME -0.5", "warning time", "TIME 0", "Time=23.5"},
      {"TIME 12.0", "TIME 12:30", "warning time"},
      {"CloudHeight 1000", "CloudHeight -1", "warning clouds", "CloudHeight 300",
       "CloudHeight=300"},
      {"CloudHeight 1000", "CloudHeight 0.0", "note clouds", "CloudHeight 300.0"},
      {"CloudType 1", "CloudType 7", "warning weather", "CloudType 6", "CloudType=6"},
      {"CloudType 1", "CloudType 1.0", "warning weather"},
      {"army 1", "army 3", "warning army", "army 2"},
      {"Samples/s.wav", "Samples/t.wav", "warning sound", "samples/S.WAV"},
      {"[SEASON]", "[Main]", "warning double-section", "[MAINS]"},
      {"[SEASON]", "[SEASON ]", "warning header-blank", "  [SEASON] "},
      {"Year 1940", "Year 1940|year 1941", "warning double-key", "Year 1940|Years 1941"},
  });
}

TEST_F(Check, FindsAPlayerWhoCannotFly) {
  Try({
      {"player JG5200", "player JG5203", "error player"},
      {"player JG5200", "player Jg5200", "error player", "", "Player=JG5200"},
      {"player JG5200", "player", "error no-player"},
      {"[JG5200]|", "[JG5200]|OnlyAI 1|", "warning player-ai", "[JG5200]|OnlyAI 0|",
       "flight[JG5200].OnlyAI=0"},
      {"Class air.BF_109G6", "Class air.JU_52", "warning skin, error player-unflyable"},
      {"playerNum 0", "playerNum 2", "error player-number", "playerNum 1"},
      {"playerNum 0", "playerNum x", "warning player-number"},
      {"Fuel 100|", "Fuel 100|StartTime 1|", "note player-delay", "Fuel 100|StartTime 0|"},
  });
  const string nobody = Replace(kRight, "player JG5200", "player");
  EXPECT_EQ(Kinds(Of(nobody, MissionKind::Dogfight)), "");
  EXPECT_EQ(Kinds(Of(nobody, MissionKind::Coop)), "");
  EXPECT_EQ(Kinds(Of(Replace(nobody, "[JG5200]|", "[JG5200]|OnlyAI 1|"), MissionKind::Coop)),
            "error coop-places")
      << "the other flight comes later";
  EXPECT_EQ(Kinds(Of(Replace(nobody, "[BornPlace]", "[x]"), MissionKind::Dogfight)),
            "error no-base, note base-number, note base-number");
}

TEST_F(Check, FindsWhatIsWrongWithFlights) {
  Try({
      {"|JG5201|[JG5200]", "|JG5201|JG5202|[JG5200]", "error no-flight"},
      {"|JG5201|[JG5200]", "|JG5201|jg5201|[JG5200]", "error double-flight"},
      {"[Rocket]", "[JG5202]|Planes 1|[Rocket]", "warning not-in-wing",
       "[JG5202]|Plane 1|[Rocket]"},
      {"JG5201", "JG5241", "error flight-name", "JG5231"},
      {"JG5201", "JG5301", "error squadron", "jg5201"},
      {"Class air.IL_2", "Class", "error no-aircraft"},
      {"Class air.IL_2", "Class IL_2", "error aircraft"},
      {"Class air.IL_2", "Class air.IL_3", "error aircraft", "Class objects.air.IL_2"},
      {"weapons 2xFAB", "weapons", "warning no-loadout", "[JG5201_Weapons]"},
      {"weapons 2xFAB", "weapons 3xFAB", "error loadout", "weapons 2XFAB"},
      {"Planes 4", "Planes 5", "warning planes", "Planes 3", "flight[JG5201].Planes=4"},
      {"Planes 2", "Planes 0", "warning planes", "Planes 1", "flight[JG5200].Planes=1"},
      {"Planes 4", "Planes 4.0", "warning planes"},
      {"Fuel 100", "Fuel 101", "warning fuel", "Fuel 99", "flight[JG5200].Fuel=100"},
      {"Fuel 0", "Fuel -1", "warning fuel", "Fuel 1", "flight[JG5201].Fuel=0"},
      {"Skill 1", "Skill 4", "warning skill", "Skill 3", "flight[JG5200].Skill=3"},
      {"Skill2 2", "Skill2 4", "warning skill", "Skill2 3|Skill4 9",
       "flight[JG5201].plane[2].Skill=3"},
      {"Skill2 2|", "", "note skill", "Skill 1|"},
      {"Red 5.bmp", "Red 6.bmp", "warning skin", "RED 5.bmp"},
      {"Red 5.bmp", "Red#5.bmp", "warning cut, warning skin"},
      {"skin0 Red", "skin2 Redder", "", ""},
      {"Cap5.bmp", "Cap6.bmp", "warning pilot", "cap5.bmp"},
      {"Cap5.bmp", "Cap", "error pilot"},
      {"Star.bmp", "Sun.bmp", "warning nose-art", "STAR.bmp"},
      {"spawn0 0_Static", "spawn0 1_Static", "warning parking"},
      {"[NStationary]", "[Stationaries]", "warning parking"},
  });
}

TEST_F(Check, FindsWhatIsWrongWithRoutes) {
  const string first = "NORMFLY 1.0 2.0 500.00 300.00 JG5201 1 &0 F2";
  Try({
      {"[JG5201_Way]", "[JG5201_Wey]", "error no-route"},
      {"LANDING 3.0 4.0 0 0 &0", "[Other]", ""},
      {first, first + "|[Other]", "warning one-waypoint"},
      {first, "[Other]", "error no-route"},
      {first, "NORMFLY 1.0 2.0 500.00", "warning route-words"},
      {first, "NORMFLY 1.0 2.0 500.00 300.00JG5201 1 &0",
       "warning start-speed, warning route-words, warning target-index, warning target"},
      {first, "NORMFLY 1.0 2.0 500.00 0.00 &0", "warning start-speed",
       "NORMFLY 1.0 2.0 500.00 0.01 &0"},
      {first, "NORMFLY 1.0 2.0 0.00 1.00 &0", "warning start-height",
       "NORMFLY 1.0 2.0 0.01 1.00 &0"},
      {first, "NORMFLY 5.0 5.0 500.00 300.00 &0", "note same-place",
       "NORMFLY 5.0 5.1 500.00 300.00 &0"},
      {first, "NORMFLY 1.0 2.0 -1.00 300.00 &0", "warning start-height, note height"},
      {"10000.00 1000.00", "10000.01 1000.00", "note height"},
      {"10000.00 1000.00", "10000.00 1000.01", "note height"},
      {"GATTACK 5.0", "GETTACK 5.0", "warning waypoint-kind", "gattack 5.0"},
      {"GATTACK 5.0", "LANDING 5.0", "warning landing"},
      {"GATTACK 5.0", "TAKEOFF 5.0", "warning takeoff"},
      {"0_Chief 0 &1", "X1 0 &1", "warning target", "Bridge5 0 &1"},
      {"JG5201 1 &0", "jg5201 1 &0", "warning target", "0_Static 0 &0"},
      {"0_Chief 0 &1", "0_Chief &1", "warning target-index"},
      {"&0 F2", "&0 Fx", "error formation", "&0 F11"},
      {"TRIGGERS 0 0 20 0|TAKEOFF", "TAKEOFF_005 1.0 9.0 0 0 &0|TRIGGERS 0 0 20 0|TAKEOFF",
       "warning triggers"},
      {"LANDING 3.0 4.0 0 0 &0", "NORMFLY_404 3.0 4.0 5 6 &0", "error triggers",
       "NORMFLY_404 3.0 4.0 5 6 &0|TRIGGERS 1 2 3 4 5"},
      {"LANDING 3.0", "TRIGGERS 1 2 3 4 5|LANDING 3.0", "warning triggers"},
  });
}

TEST_F(Check, FindsWhatIsWrongWithOtherObjects) {
  Try({
      {"[0_Chief_Road]", "[1_Chief_Road]", "error no-road"},
      {"|4 5 6|", "|", "warning short-road"},
      {"|[0_Chief_Road]", "|0_Chief Armor.x 1|[0_Chief_Road]", "warning double-object"},
      {"1_Static", "0_Static", "error double-object"},
      {"Plane$BF_109G6", "Plane$BF_110", "warning parked", "Plane$TBD"},
      {"0.0 0 3 0.5", "0.0 0 4 0.5", "error object-words", "0.0 0 0 100"},
      {"0.0 0 3 0.5", "0.0 0 3 0.4", "error object-words", "0.0 0 3"},
      {"200 1.0 5.0 6.0", "200 1.0", "note rocket"},
      {"0 0_Chief 1 2", "0 1_Chief 1 2", "warning target-object", "0 0_Static 1 2"},
      {"500 1 2 0 0 0_Chief", "500 1 2.0 0 0 0_Chief", "warning target-place"},
      {"0 0 Bridge12 1 2", "500", "warning target-object"},
      {"1 500 100 200", "1 500 100.0 200", "warning base-place"},
      {"1 500 100 200", "1 499 100 200", "note base-radius"},
      {"2 10000 300 400", "2 10001 300 400", "note base-radius"},
      {"2 10000 300 400", "17 10000 300 400", "warning base-army", "16 10000 300 400"},
      {"Bf-109G-6 10", "Bf-109X|Bf-109G-6 10", "note base-aircraft", "|Bf-109G-6 10"},
      {"Bf-109G-6 10", "Bf-109X 10", "warning base-empty, note base-aircraft"},
      {"Bf-109G-6 10 1xSC", "Bf-109G-6 1xSC", "error base-list", "Bf-109G-6"},
      {"Bf-109G-6 10", "+ 10", "error base-list, error base-list"},
      {"[BornPlaceCountries1]", "[BornPlaceCountries2]", "note base-number"},
  });
}

TEST_F(Check, FindsWhatAnOlderGameLacks) {
  EXPECT_EQ(Kinds(Of(kRight)), "");
  // Those of 4.10, and then of 4.09.
  auto rows = Tables.Aircraft.Rows();
  rows.back() = {"Red", "Fulmar", "Fulmar1", "", "", {}, false, false, "TBD"};
  Tables.Aircraft = rows;
  EXPECT_EQ(Kinds(Of(kRight)), "warning later-game, warning later-game");
  const string plain =
      Replace(Replace(Replace(kRight, "_001", ""), "TRIGGERS 0 0 20 0|", ""), "|+ 2xSC", "");
  EXPECT_EQ(Kinds(Of(plain)), "");
  rows.pop_back();
  Tables.Aircraft = rows;
  EXPECT_EQ(Kinds(Of(plain)), "note later-game") << "[SEASON]";
  EXPECT_EQ(Kinds(Of(Replace(plain, "SEASON", "SEASONS"))), "");
  EXPECT_EQ(Kinds(Of(Replace(Replace(plain, "SEASON", "SEASONS"), "player JG5200", "player"),
                     MissionKind::Dogfight)),
            "warning later-game")
      << "flights";
}

TEST_F(Check, LooksAtWhatLiesBeside) {
  EXPECT_EQ(Kinds(Of(kRight, MissionKind::Single, "")), "note briefing");
  EXPECT_EQ(Kinds(Of(kRight, MissionKind::Single, "A.properties")), "note briefing-case");
  EXPECT_EQ(Kinds(Of(kRight, MissionKind::Single, "a_ru.properties")), "");
  const string longLine = Replace(kRight, "army 1", "army 1|x " + string(255, 'y'));
  EXPECT_EQ(Kinds(Of(longLine)), "") << "nobody sends it";
  EXPECT_EQ(Kinds(Of(longLine, MissionKind::Coop)), "");
  EXPECT_EQ(Kinds(Of(Replace(longLine, "x y", "x yy"), MissionKind::Coop)), "error long-line");
  box_.Remove("Game/il2fb.exe");
  EXPECT_EQ(Kinds(Of(Replace(Replace(kRight, "Red 5", "Red 6"), "s.wav", "t.wav"))), "")
      << "no game, so nothing is known";
}

TEST_F(Check, TellsWhatOnlyKeptLinesSave) {
  KeepRewriting = true;
  const string plain =
      "[MAIN]|  MAP Crimea/l.ini|  TIME 12.00|  CloudType 1|  CloudHeight 1000|[Wing]|  JG5200|"
      "[JG5200]|  Planes 1|  Skill 1|  Class air.IL_2|  weapons none|  Fuel 100|[JG5200_Way]|"
      "  NORMFLY 1.00 2.00 500.00 300.00 &0|  NORMFLY 1.00 3.00 500.00 300.00 &0|[NStationary]";
  EXPECT_EQ(Kinds(Of(plain, MissionKind::Coop)), "");
  EXPECT_EQ(Kinds(Of(Replace(plain, "  Skill 1", "  Skill 1|  StartTimes 1"), MissionKind::Coop)),
            "note made-anew");
}

TEST_F(Check, TellsThePlace) {
  const auto findings = Of(Replace(kRight, "NORMFLY 1.0", "NARMFLY 1.0"));
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(PlaceText(findings[0], World.Services.Page), "flight JG5200, waypoint 1, line 25");
  EXPECT_EQ(PathText(CodePage(1252), "\xC4") + PathText(CodePage(1252), "\xD0\x96"),
            "\xC3\x84\xD0\x96");
  EXPECT_EQ(PlaceText(Of("[x ]|" + kRight).at(0), World.Services.Page), "[x ], line 1");
  EXPECT_EQ(test::Joined(FindingCells("x,\".mis", findings[0], World.Services.Page)),
            "x,\".mis|warning|waypoint-kind|JG5200_Way|JG5200||1|25|The game does not know "
            "\"NARMFLY\" and flies it as NORMFLY.|");
  EXPECT_EQ(FindingsText({{"a.mis", "", findings}, {"b.mis", "", {}}, {"c.mis", "gone", {}}},
                         World.Services.Page),
            test::CrlfText("a.mis|  warning: flight JG5200, waypoint 1, line 25: The game does not "
                           "know \"NARMFLY\" and flies it as NORMFLY.|c.mis|  error: gone||1 "
                           "warning"));
}

TEST_F(Check, SurvivesAnything) {
  for (const string text :
       {"", "|", "x", "[", "[]", "[MAIN", "[Wing]|x|[x]|[x_Way]|&0", "[Wing]|x||[x_Way]|F",
        "[MAIN]|player|[Wing]|a|[a]|Planes|skin0|[a_Way]|NORMFLY 1 2 3 4 F &0 F",
        "[BornPlace]|x|[BornPlace0]|+|[BornPlace99999999999]", "[Target]|0|[Rocket]|x|[Chiefs]|a",
        "[NStationary]|a|[Stationary]|a|[Chiefs]|a|[a_Road]"}) {
    SCOPED_TRACE(text);
    for (std::size_t length = 0; length <= text.size(); ++length)
      for (const auto kind : {MissionKind::Single, MissionKind::Dogfight})
        EXPECT_FALSE(Of(text.substr(0, length), kind).empty());
  }
}

TEST_F(Check, RunsOverManyMissions) {
  for (int i = 0; i < 40; ++i)
    box_.Write("Game/Missions/Single/" + std::to_string(i % 4) + "/m" + std::to_string(i) + ".mis",
               test::CrlfText(i % 2 ? kRight : Replace(kRight, "Fuel 100", "Fuel 101")));
  box_.MakeFolder("Game/Missions/Single/folder.mis");
  const auto tables = std::make_shared<CheckTables>(Tables, std::vector<MapRow>{}, World.Services);
  MissionChecker checker(World.Services.Files, tables, "", 4);
  const auto run = [&](const CheckRequest& request) {
    checker.Add(request);
    std::vector<CheckedMission> all;
    for (auto batch = checker.Wait(); !batch.empty(); batch = checker.Wait())
      for (auto& mission : batch) {
        std::erase_if(mission.Findings,
                      [](const Finding& one) { return one.Severity == Severity::Note; });
        all.push_back(std::move(mission));
      }
    return all;
  };
  CheckRequest tree{{box_.Path("Game/Missions")}};
  EXPECT_TRUE(run(tree).empty());
  tree.Tree = true;
  const auto all = run(tree);
  EXPECT_EQ(all.size(), 40U);
  EXPECT_EQ(CountsText(all), "20 warnings");
  const auto named = run({{}, {box_.Path("Game/Missions/Single/0/m0.mis"), box_.Path("no.mis")}});
  ASSERT_EQ(named.size(), 2U);
  EXPECT_EQ(CountsText(named), "1 warning");
  EXPECT_NE(named[0].FaultText.empty(), named[1].FaultText.empty());
  checker.Add(tree);
  checker.Stop();
  EXPECT_TRUE(checker.Wait().empty());
}

}  // namespace
}  // namespace rws
