#include "session/lines_rule.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "mission/kept_reader.h"
#include "services/text.h"
#include "session/doors.h"
#include "session/packing.h"
#include "session/undo.h"
#include "tests/support/failing_step.h"
#include "tests/support/session_desk.h"

namespace rws::test {
namespace {

/** "a" holds a line that is lost when it is made anew. */
struct LinesDesk : SessionDesk {
  LinesDesk() : SessionDesk({"a", "b"}) {
    Text = Replace(TaggedMission("a"), "  Fuel 100\r\n", "  Fuel 100\r\n  spawn0 x\r\n");
    Box.Write("in/a.mis", Text);
    Run("reread go=a");
  }
  std::string OnDisk() const { return Box.Read("in/a.mis"); }
  std::string WithFuel(const std::string& fuel) const {
    std::string text = Text;
    const std::size_t at = text.find("  Fuel 100");
    return text.replace(at, 10, "  Fuel " + fuel);
  }
  std::string Text;
};

TEST(LinesRule, ChoiceIsAStepAndEditsBelongToBothReadings) {
  LinesDesk desk;
  desk.Run("fuel0=50");
  ChooseLines(desk.World, desk.Row("a"), UntouchedLines::Keep);
  EXPECT_NE(desk.State("a").find('!'), std::string::npos);
  desk.Run("fuel0=100 compare");
  EXPECT_EQ(desk.State("a").find('!'), std::string::npos) << "back at what the file has";
  desk.Run("undo fuel0=60 undo undo undo");
  EXPECT_FALSE(desk.World.Doc.Missions[desk.Row("a")].KeepsLines);
  EXPECT_EQ(desk.State("a").find('*'), std::string::npos) << desk.State("a");
  desk.Run("redo redo redo save");
  EXPECT_EQ(desk.OnDisk(), desk.WithFuel("60"));
  EXPECT_EQ(desk.State("a").find('*'), std::string::npos) << desk.State("a");
}

TEST(LinesRule, WhatShowingWroteIsNoEdit) {
  LinesDesk desk;
  desk.Run("show0=55 fuel1=70");
  ChooseLines(desk.World, desk.Row("a"), UntouchedLines::Keep);
  desk.Run("save");
  std::string text = desk.Text;
  text.replace(text.find("Fuel 100", text.find("[r0101]")), 8, "Fuel 70");
  EXPECT_EQ(desk.OnDisk(), text);
}

/** Else the mission would hold more than its shadow, and the next edit would turn Update dark. */
TEST(LinesRule, AnAddedFlightGoesOnLightingUpdate) {
  LinesDesk desk;
  const std::size_t row = desk.Row("a");
  Edit(desk.World, {nullptr, "Duplicate"}, [&] {
    for (auto* missions : {&desk.World.Doc.Missions, &desk.World.Doc.MissionShadow}) {
      auto& flights = (*missions)[row].Flights;
      flights.push_back(flights[0]);
      flights.back().Name = "r0103";
    }
    desk.World.Doc.Missions[row].Flights.back().Fuel = "30";
  });
  ChooseLines(desk.World, row, UntouchedLines::Keep);
  desk.Run("compare");
  EXPECT_EQ(desk.State("a"), "100,100,100,30/2^100*!");
}

TEST(LinesRule, StepsOfBeforeGoOnInTheOtherReading) {
  LinesDesk desk;
  desk.Run("fuel0=50");
  desk.World.Doc.UntouchedOf[desk.Path("a")] = UntouchedLines::Keep;
  FollowLinesRule(desk.World, desk.Row("a"));
  desk.Run("save undo save");
  EXPECT_EQ(desk.OnDisk(), desk.Text);
  desk.Run("redo save");
  EXPECT_EQ(desk.OnDisk(), desk.WithFuel("50"));
}

TEST(LinesRule, UndoTakesAChoiceBackButNotTheOneForAllMissions) {
  using enum UntouchedLines;
  struct Row {
    UntouchedLines Choice, ForAll;
    std::string Words;
    bool Keeps;
    int Asked;
    /** Of flight 0 in the file that has all lines; "" where they are made anew. */
    std::string Fuel;
  };
  for (const auto& row : {Row{Keep, Keep, "undo undo save", true, 0, "100"},
                          {Keep, Keep, "fuel0=50 save undo undo save", true, 0, "100"},
                          {Keep, Keep, "undo undo redo fuel0=60 save", true, 0, "60"},
                          {Keep, Ask, "undo undo fuel0=60 save", true, 1, "60"},
                          {Keep, Ask, "save undo undo save", true, 1, "100"},
                          {Keep, Ask, "save undo undo redo redo save", true, 0, "70"},
                          {Keep, Anew, "undo undo save", false, 0, ""},
                          {Anew, Ask, "undo undo save", true, 1, "100"},
                          {Anew, Keep, "undo undo save", true, 0, "100"},
                          {Anew, Ask, "undo undo redo redo save", false, 0, ""}})
    for (const std::string end : {"\r\n", "\n"}) {
      SCOPED_TRACE(row.Words + std::to_string(static_cast<int>(row.ForAll)) + end);
      LinesDesk desk;
      Document& doc = desk.World.Doc;
      doc.Untouched = Ask;
      desk.Text = Replace(desk.Text, "\r\n", end);
      desk.Box.Write("in/a.mis", desk.Text);
      desk.Run("reread go=a");
      int asked = 0;
      desk.World.AskLines = [&](const auto&) { return ++asked, std::optional(Keep); };
      ChooseLines(desk.World, desk.Row("a"), row.Choice);
      desk.Run("fuel0=70");
      doc.Untouched = row.ForAll;
      desk.Run(row.Words);
      EXPECT_EQ(doc.Missions[desk.Row("a")].KeepsLines, row.Keeps);
      EXPECT_EQ(asked, row.Asked);
      if (row.Fuel.empty())
        EXPECT_FALSE(Contains(desk.OnDisk(), "spawn0"));
      else
        EXPECT_EQ(desk.OnDisk(), desk.WithFuel(row.Fuel));
    }
}

TEST(LinesRule, StepsAreTakenBackInEitherReadingBehindASave) {
  const std::function<void(Mission&)> edits[] = {
      [](Mission& m) {
        m.Flights.push_back(m.Flights[0]);
        m.Flights.back().Name = "r0103";
      },
      [](Mission& m) { m.Flights[0].Name = "g0100"; },
      [](Mission& m) { m.Flights[0].OnlyAI = "1"; },
      [](Mission& m) { m.Flights.erase(m.Flights.begin()); },
  };
  for (const auto& edit : edits)
    for (const bool chosen : {true, false}) {
      LinesDesk desk;
      auto& mission = desk.World.Doc.Missions[desk.Row("a")];
      if (chosen) ChooseLines(desk.World, desk.Row("a"), UntouchedLines::Keep);
      Edit(desk.World, {"mnuAC_Click", "Edit"}, [&] { edit(mission); });
      desk.World.Doc.UntouchedOf[desk.Path("a")] = UntouchedLines::Keep;
      desk.Run("save");
      ASSERT_TRUE(desk.World.Doc.Missions[desk.Row("a")].KeepsLines);
      ASSERT_NE(desk.OnDisk(), desk.Text);
      // An edit whose step is left out stays.
      desk.Run("fuel1=77 skip undo save");
      EXPECT_TRUE(Contains(desk.OnDisk(), "Fuel 77"));
      EXPECT_EQ(Replace(desk.OnDisk(), "Fuel 77", "Fuel 100"), desk.Text);
    }
}

TEST(LinesRule, ReadingAMissionThatIsKeptChangesNoLineEnd) {
  LinesDesk desk;
  const std::string text = Replace(desk.Text, "\r\n", "\n");
  desk.Box.Write("in/a.mis", text);
  desk.World.Doc.UntouchedOf[desk.Path("a")] = UntouchedLines::Keep;
  desk.Run("reread go=a");
  EXPECT_EQ(desk.OnDisk(), text);
}

TEST(LinesRule, AFailedUpdateLeavesTheReadingAsItWas) {
  LinesDesk desk;
  Document& doc = desk.World.Doc;
  const std::size_t row = desk.Row("a");
  desk.Run("fuel0=50");
  const std::string before = desk.State("a");
  doc.UntouchedOf[desk.Path("a")] = UntouchedLines::Keep;
  FailSteps(desk.World.Services.Files, "take name", "a.mis");
  desk.World.Script.Expect("Update fail");
  desk.Run("save");
  EXPECT_FALSE(doc.Missions[row].KeepsLines);
  EXPECT_TRUE(doc.Missions[row].NotWritten);
  EXPECT_EQ(desk.State("a") + desk.Steps(), before.substr(0, before.find('!')) + "Fuel of r0100");
  desk.World.Services.Files.BeforeStep = nullptr;
  desk.Run("save undo save");
  EXPECT_EQ(desk.OnDisk(), desk.Text);
}

TEST(LinesRule, AReadingThatWouldLoseSomethingIsRefused) {
  // More than the reader goes through, or an edit that has no place.
  std::string endless;
  for (int i = 0; i < 9000; ++i) endless += "_way\r\n";
  for (const bool keeps : {true, false}) {
    SCOPED_TRACE(keeps);
    const auto refused = keeps ? UntouchedLines::Anew : UntouchedLines::Keep;
    LinesDesk desk;
    Document& doc = desk.World.Doc;
    const auto mission = [&]() -> Mission& { return doc.Missions[desk.Row("a")]; };
    doc.UntouchedOf[desk.Path("a")] = UntouchedLines::Keep;
    if (keeps)
      desk.Text += endless;
    else
      doc.UntouchedOf.clear();
    if (!keeps)
      desk.Text = Replace(desk.Text, "[r0100_Way]\r\n", "[r0100_Way]\r\n TRIGGERS 0 0 0 0\r\n");
    desk.Box.Write("in/a.mis", desk.Text);
    desk.Run("reread go=a fuel0=50");
    ASSERT_EQ(mission().KeepsLines, keeps);
    if (!keeps)
      Edit(desk.World, {"x", "Edit"}, [&] { mission().Flights[0].Waypoints[0].Alt = "5"; });
    const std::string steps = desk.Steps(), state = desk.State("a");
    desk.World.Script.Expect("a.mis\" cannot be read ");
    ChooseLines(desk.World, desk.Row("a"), refused);
    EXPECT_EQ(mission().KeepsLines, keeps);
    EXPECT_EQ(desk.State("a") + desk.Steps(), state + steps);
    // Nor does an Update do it.
    doc.UntouchedOf[desk.Path("a")] = refused;
    desk.World.Script.Expect("Update aborted.\n\n\"" + desk.Path("a") + "\" cannot be read ");
    desk.Run("save");
    EXPECT_EQ(desk.OnDisk(), desk.Text);
    EXPECT_EQ(mission().Flights[0].Fuel, "50");
    EXPECT_TRUE(mission().NotWritten);
  }
}

TEST(LinesRule, WhatIsNoMissionIsLeftAsItIs) {
  using namespace std::string_literals;
  for (const auto& text : {"\xFF\xFE[\0M\0A\0I\0N\0]\0\r\0\n\0"s, std::string(300, '\xFF')})
    for (const auto rule : {UntouchedLines::Keep, UntouchedLines::Ask}) {
      LinesDesk desk;
      desk.World.Doc.Untouched = rule;
      desk.Box.Write("in/a.mis", text);
      desk.World.AskLines = [](const auto&) { return std::optional(UntouchedLines::Keep); };
      desk.Run("reread go=a");
      desk.World.Script.Expect("with its lines kept: this is no mission");
      if (rule == UntouchedLines::Ask)
        ChooseLines(desk.World, desk.Row("a"), UntouchedLines::Keep);
      else
        desk.Run("weather=5 save");
      EXPECT_EQ(desk.OnDisk(), text);
    }
}

TEST(LinesRule, PackedMissionsKeepTheirTexts) {
  for (const char* end : {"\r\n", "\n", ""}) {
    World world;
    Mission mission;
    ReadKeptMission(world.Doc, world.Services, mission,
                    "[r0100]\n Planes 1\rFuel 3\r\n[r0100_Way]\n  A 1 2 3 4" + std::string(end));
    mission.Flights.at(0).Fuel = "9";
    mission.Flights.push_back(mission.Flights[0]);
    mission.Flights[1].KeptIn = LineArray::FromFileAsIs("[r0100]\nPlanes 2");
    const Mission again = UnpackMission(PackMission(mission));
    EXPECT_EQ(again.AsRead.FileText(), mission.AsRead.FileText());
    EXPECT_TRUE(again.Flights[0].KeptIn.SharesWith(again.AsRead));
    EXPECT_EQ(again.Flights[1].KeptIn.FileText(), "[r0100]\nPlanes 2");
    EXPECT_EQ(PackMission(again), PackMission(mission));
  }
}

}  // namespace
}  // namespace rws::test
