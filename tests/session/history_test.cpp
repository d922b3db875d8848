#include "session/history.h"

#include <gtest/gtest.h>

#include <functional>
#include <numeric>

#include "services/text.h"
#include "session/doors.h"
#include "session/saving.h"
#include "session/undo.h"
#include "tests/support/session_desk.h"

namespace rws::test {
namespace {

/** What has been done, and what becomes of mission "a". */
TEST(History, StepsMergeAreTakenBackAndDoneAgain) {
  struct Row {
    const char *Words, *Steps, *State;
  };
  const Row rows[] = {
      // One box, one step; what is typed back is none.
      {"fuel0=5 fuel0=50", "Fuel of r0100", "50,100,100/2^100*!"},
      {"fuel0=5 close fuel0=50 undo", "Fuel of r0100|(Fuel of r0100)", "5,100,100/2^100*!"},
      {"fuel0=5 fuel1=5 fuel0=6 undo", "Fuel of r0100|Fuel of r0101|(Fuel of r0100)",
       "5,5,100/2^100*!"},
      {"fuel0=5 weather=3 undo", "Fuel of r0100|(Weather of a)", "5,100,100/2^100*!"},
      {"fuel0=5 go=b fuel0=7 go=a fuel0=6 undo", "Fuel of r0100|Fuel of r0100|(Fuel of r0100)",
       "5,100,100/2^5*!"},
      {"fuel0=5 go=b go=a fuel0=6 undo", "(Fuel of r0100)", "100,100,100/2^100"},
      {"fuel0=5 undo redo fuel0=6 undo", "Fuel of r0100|(Fuel of r0100)", "5,100,100/2^100*!"},
      {"fuel0=5 fuel0=100", "", "100,100,100/2^100"},
      {"weather=3 close fuel0=5 fuel0=100 undo", "(Weather of a)", "100,100,100/2^100"},
      {"fuel0=5 save fuel0=6 undo", "Fuel of r0100|(Fuel of r0100)", "5,100,100/2^5"},
      {"fuel0=100", "", "100,100,100/2^100"},
      {"skills=2 undo redo", "Skill of 3 flights", "100,100,100/2^100*!"},
      {"base=IL-2 undo", "(Home base of a)", "100,100,100/2^100"},
      {"line=x undo", "(Object of a)", "100,100,100/2^100"},
      // A new edit ends what could be done again.
      {"fuel0=5 fuel1=6 undo weather=4", "Fuel of r0100|Weather of a", "5,100,100/4^100*!"},
      // What showing writes is no edit, and undo leaves it alone.
      {"show0=55", "", "55,100,100/2^100!"},
      {"fuel1=5 show0=55 undo", "(Fuel of r0101)", "55,100,100/2^100"},
      {"fuel1=5 show0=55 undo redo", "Fuel of r0101", "55,5,100/2^100*!"},
      {"fuel0=5 show0=55", "Fuel of r0100", "55,100,100/2^100*!"},
      {"fuel0=5 show1=55 fuel0=6 undo undo", "(Fuel of r0100)|(Fuel of r0100)", "100,55,100/2^100"},
      // Update is lit or dark as it was, also when the shadow has been taken anew meanwhile.
      {"quiet0=5 undo redo", "Fuel of r0100", "5,100,100/2^100*"},
      {"quiet0=5 compare undo redo", "Fuel of r0100", "5,100,100/2^100*!"},
      {"quiet0=5 compare undo", "(Fuel of r0100)", "100,100,100/2^100"},
      {"fuel0=5 go=b go=a undo redo", "Fuel of r0100", "5,100,100/2^100*!"},
      {"fuel0=5 go=b go=a fuel1=6 undo", "Fuel of r0100|(Fuel of r0101)", "5,100,100/2^5*!"},
      {"fuel0=5 go=b undo compare", "(Fuel of r0100)", "100,100,100/2^100"},
      // Saved, it is unsaved again when it is taken back.
      {"fuel0=5 save undo", "(Fuel of r0100)", "100,100,100/2^5*!"},
      {"fuel0=5 save undo redo", "Fuel of r0100", "5,100,100/2^5"},
      {"base=IL-2 save undo", "(Home base of a)", "100,100,100/2^100*"},
      {"fuel0=5 save reread undo", "(Fuel of r0100)", "100,100,100/2^5*!"},
      {"fuel0=5 fuel1=6 save undo save undo", "(Fuel of r0100)|(Fuel of r0101)",
       "100,100,100/2^5*!"},
      // Dropped edits are a step, and those before it lead on from there.
      {"fuel0=5 drop undo", "Fuel of r0100|(Edits dropped by leaving)", "5,100,100/2^100*!"},
      {"fuel0=5 drop undo redo", "Fuel of r0100|Edits dropped by leaving", "100,100,100/2^100"},
      {"fuel0=5 drop undo undo", "(Fuel of r0100)|(Edits dropped by leaving)", "100,100,100/2^100"},
      {"base=IL-2 go=b base=IL-2 reread go=a undo",
       "Home base of a|Home base of b|(Edits dropped by Update)", "100,100,100/2^100*"},
      {"fuel0=5 drop gone=a relist undo", "Fuel of r0100|(Edits dropped by leaving)",
       "5,100,100/2^100*!"},
      // Left out, it stays as it is.
      {"fuel0=5 fuel1=6 skip undo", "(Fuel of r0100)", "100,6,100/2^100*!"},
      {"skip fuel0=5", "Fuel of r0100", "5,100,100/2^100*!"},
      // Without its file nothing is done.
      {"fuel0=5 save go=b reread gone=a undo", "Fuel of r0100", "unread"},
      {"fuel0=5 save go=b reread gone=a undo skip undo", "", "unread"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Words);
    SessionDesk desk({"a", "b"});
    desk.Run(row.Words);
    EXPECT_EQ(desk.Steps(), row.Steps);
    EXPECT_EQ(desk.State("a"), row.State);
    const auto& steps = desk.World.History.Steps;
    EXPECT_EQ(desk.World.History.Bytes,
              std::accumulate(steps.begin(), steps.end(), std::size_t{0},
                              [](std::size_t sum, const Step& step) { return sum + step.Bytes; }));
  }
}

TEST(History, WhatAnEditShowsIsAPartOfIt) {
  SessionDesk desk({"a"});
  auto& flights = desk.World.Doc.Missions[0].Flights;
  Edit(desk.World, {"x", "Removal"}, [&] {
    flights.erase(flights.begin());
    Show(desk.World, [&] { Edit(desk.World, {"y", "Shown"}, [&] { flights[0].Fuel = "100.0"; }); });
  });
  EXPECT_EQ(desk.Steps(), "Removal of a");
  desk.Run("undo");
  EXPECT_EQ(desk.State("a"), "100,100,100/2^100");
}

TEST(History, AnUndoneRemovalKeepsWhatWasShownSince) {
  SessionDesk desk({"a"});
  auto& flights = desk.World.Doc.Missions[0].Flights;
  Edit(desk.World, {"x", "Removal"}, [&] {
    flights.erase(flights.begin());
    flights[0].Shown = true;
  });
  desk.Run("show0=55 undo");
  EXPECT_EQ(desk.State("a"), "100,55,100/2^100");
  // What is shown of a flight that the saved mission lacks changes nothing there.
  Edit(desk.World, {"y", "Copy"},
       [&] { flights.push_back(flights[0]), flights[3].Name = "r0103"; });
  desk.Run("show3=66 undo");
  EXPECT_EQ(desk.State("a"), "100,55,100/2^100");
}

/** Else the mission would hold more than its shadow, and count as unchanged from then on. */
TEST(History, ARemovalThatIsUndoneBehindASaveGoesOnLightingUpdate) {
  SessionDesk desk({"a"});
  Mission& mission = desk.World.Doc.Missions[0];
  Edit(desk.World, {"x", "Removal"}, [&] {
    mission.Flights[0].Waypoints.pop_back();
    mission.Flights.erase(mission.Flights.begin() + 1);
  });
  desk.Run("save undo");
  EXPECT_EQ(desk.State("a"), "100,100,100/2^100*!");
  desk.Run("fuel2=50");
  EXPECT_EQ(desk.State("a"), "100,100,50/2^100*!");
}

/** What the file that was written meanwhile has no place for. */
TEST(History, WhatIsOfSinglePlanesComesBackBehindASave) {
  const std::function<void(Flight&)> edits[] = {[](Flight& flight) { flight.Skill = "1"; },
                                                [](Flight& flight) { flight.Planes = "1"; }};
  for (const auto& edit : edits) {
    SessionDesk desk({"a"});
    auto& flights = desk.World.Doc.Missions[0].Flights;
    Edit(desk.World, {"x", "Planes"}, [&] {
      flights[0].Planes = "2";
      flights[0].Skill = "Custom";
      flights[0].PlaneSlots[0].Skill = flights[0].PlaneSlots[1].Skill = "3";
      flights[0].PlaneSlots[1].Skin = "x.bmp";
    });
    desk.Run("save");
    const std::string own = desk.Box.Read("in/a.mis");
    Edit(desk.World, {"y", "Common"}, [&] { edit(flights[0]); });
    desk.Run("save undo save");
    EXPECT_EQ(desk.Box.Read("in/a.mis"), own);
  }
}

TEST(History, AStepWithoutItsFileTellsSoAndGoesToWhereItHappened) {
  SessionDesk desk({"a", "b"});
  desk.World.Doc.CurFlight = 2;
  desk.Run("fuel2=5 go=b");
  desk.World.Doc.CurFlight = 0;
  desk.Run("undo");
  EXPECT_EQ(desk.Last.Mission, desk.Path("a"));
  EXPECT_EQ(desk.Last.Flight, 2);
  desk.Run("redo save go=b reread gone=a undo");
  EXPECT_FALSE(desk.Last.Done);
  EXPECT_NE(desk.Last.Reason.find("\"a.mis\""), std::string::npos) << desk.Last.Reason;
  EXPECT_EQ(UndoTitle(desk.World), "Fuel of r0102");
}

/** What others have added to the file stays when an earlier step is taken back. */
TEST(History, UndoKeepsWhatOthersHaveAdded) {
  SessionDesk desk({"a", "b"});
  desk.Run("fuel0=5 save go=b");
  std::string text = desk.Box.Read("in/a.mis");
  const std::string wing = "  r0102\r\n";
  text.insert(text.find(wing), "  g0100\r\n");
  text.insert(text.find("[r0100]"), Crlf({"[g0100]", "  Planes 1", "  Fuel 77", "[g0100_Way]",
                                          "  TAKEOFF 1.00 2.00 0 0 &0"}));
  desk.Box.Write("in/a.mis", text);
  desk.Run("reread go=a");
  ASSERT_EQ(desk.State("a"), "77,5,100,100/2^77");
  desk.Run("undo");
  EXPECT_EQ(desk.State("a"), "77,100,100,100/2^77*!");
  // A step whose flight is gone for now is done again once it is back.
  desk.Run("redo go=b");
  const std::size_t flight = text.find("[r0100]");
  std::string without = Replace(text, "  r0100\r\n", "");
  without.erase(without.find("[r0100]"), text.find("[r0101]") - flight);
  desk.Box.Write("in/a.mis", without);
  desk.Run("reread go=a undo go=b");
  desk.Box.Write("in/a.mis", text);
  desk.Run("reread go=a redo undo");
  EXPECT_EQ(desk.State("a").substr(0, 14), "77,100,100,100");
}

TEST(History, AStepWithoutPlaceForItsFlightIsRefused) {
  SessionDesk desk({"a"});
  auto& flights = desk.World.Doc.Missions[0].Flights;
  Edit(desk.World, {"x", "Name"}, [&] { flights[0].Name = "q0100"; });
  desk.Run("save");
  const std::string own = desk.Box.Read("in/a.mis"), mine = CrlfText("  q0100");
  desk.Box.Write(
      "in/a.mis",
      Replace(Replace(own, mine, mine + CrlfText("  r0100")), "[q0100]\r\n",
              CrlfText("[r0100]|  Planes 1|[r0100_Way]|  TAKEOFF 1.00 2.00 0 0 &0|[q0100]")));
  desk.Run("reread undo");
  EXPECT_FALSE(desk.Last.Done);
  EXPECT_NE(desk.Last.Reason.find("\"r0100\""), std::string::npos) << desk.Last.Reason;
  EXPECT_EQ(flights.size(), 4u);
  EXPECT_EQ(flights[1].Name, "q0100");
}

/** A step of a whole mission, and a route in a mission that is written anew. */
TEST(History, UndoKeepsWhatOthersHaveAddedToTheRestOfAMission) {
  SessionDesk desk({"a"});
  const std::string route = "[r0100_Way]\r\n";
  Edit(desk.World, {"x", "Altitude"},
       [&] { desk.World.Doc.Missions[0].Flights[0].Waypoints[0].Alt = "90"; });
  desk.Run("save");
  std::string text = desk.Box.Read("in/a.mis");
  const std::size_t last = text.find("[r0102]");
  text.erase(last, text.find("[Chiefs]") - last);
  desk.Box.Write("in/a.mis", Replace(Replace(text, "  r0102\r\n", ""), "Fuel 100", "Fuel 5"));
  ASSERT_TRUE(RevertOne(desk.World, 0, "Reload"));
  text = desk.Box.Read("in/a.mis");
  const std::string theirs = CrlfText("  NORMFLY 9.00 9.00 900.0 300.0 &0");
  text = Replace(Replace(text, route, route + theirs), "[Wing]\r\n", CrlfText("[Wing]|  g0100"));
  desk.Box.Write(
      "in/a.mis",
      text + CrlfText("[g0100]|  Planes 1|  Fuel 77|[g0100_Way]|  TAKEOFF 1.00 2.00 0 0 &0"));
  desk.Run("reread undo");
  EXPECT_EQ(desk.State("a").substr(0, 14), "100,100,100,77");
  desk.Run("undo");
  const auto& waypoints = desk.World.Doc.Missions[0].Flights[0].Waypoints;
  ASSERT_EQ(waypoints.size(), 2u);
  EXPECT_EQ(waypoints[1].Alt, "0");
}

TEST(History, IsBoundedTheOldestStepsGoFirst) {
  SessionDesk desk({"a", "b"});
  History& history = desk.World.History;
  history.MostBytes = 64 * 1024;
  for (int fuel = 10; fuel < 99; ++fuel)
    desk.Run("go=a close fuel0=" + std::to_string(fuel) + " go=b fuel1=" + std::to_string(fuel));
  EXPECT_LE(history.Bytes, history.MostBytes);
  ASSERT_GT(history.Steps.size(), 4u);
  ASSERT_LT(history.Steps.size(), 170u);
  const std::size_t kept = history.Done;
  while (UndoStep(desk.World).Done) continue;
  EXPECT_EQ(history.Done, 0u);
  EXPECT_EQ(history.Steps.size(), kept);
  const int left = 98 - static_cast<int>(kept + 1) / 2;
  EXPECT_EQ(desk.State("b").substr(0, 7), "100," + std::to_string(left) + ",");
}

/** Each reading gives the mission a text of its own, which the step before it holds on to. */
TEST(History, CountsTheTextsThatItKeepsAlive) {
  SessionDesk desk({"a"});
  std::string text = desk.Box.Read("in/a.mis");
  for (int i = 0; i < 500; ++i) text += "  a line to make this a large mission indeed\r\n";
  desk.Box.Write("in/a.mis", text);
  desk.Run("reread");
  History& history = desk.World.History;
  history.MostBytes = 10 * text.size();
  for (int fuel = 10; fuel < 40; ++fuel) desk.Run("fuel0=" + std::to_string(fuel) + " save");
  EXPECT_LE(history.Steps.size(), 10u);
  EXPECT_GE(history.Steps.size(), 3u);
  // One that others have written is kept once, whatever is taken back in it.
  for (int fuel = 10; fuel < 30; ++fuel) desk.Run("close fuel0=" + std::to_string(fuel));
  desk.Run("save");
  const std::size_t kept = history.Steps.size();
  desk.Box.Write("in/a.mis", desk.Box.Read("in/a.mis") + "  theirs\r\n");
  desk.Run("reread");
  for (const char* turn : {"undo", "redo"})
    for (int i = 0; i < 20; ++i) desk.Run(turn);
  desk.Run("close fuel0=30");
  EXPECT_EQ(history.Steps.size(), kept + 1);
}

}  // namespace
}  // namespace rws::test
