#include "session/lines_rule.h"

#include <gtest/gtest.h>

#include "mission/kept_reader.h"
#include "services/text.h"
#include "session/doors.h"
#include "session/packing.h"
#include "session/undo.h"
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

TEST(LinesRule, ARemovedFlightComesBackWithItsLinesAfterASave) {
  LinesDesk desk;
  ChooseLines(desk.World, desk.Row("a"), UntouchedLines::Keep);
  auto& mission = desk.World.Doc.Missions[desk.Row("a")];
  const EditKind removal{"mnuAC_Click", "Remove"};
  Edit(desk.World, removal, [&] { mission.Flights.erase(mission.Flights.begin()); });
  desk.Run("save");
  EXPECT_EQ(desk.OnDisk().find("[r0100]"), std::string::npos);
  desk.Run("undo save");
  EXPECT_EQ(desk.OnDisk(), desk.Text);
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
