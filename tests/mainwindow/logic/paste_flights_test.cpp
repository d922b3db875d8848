#include "mainwindow/logic/paste_flights.h"

#include <gtest/gtest.h>

#include "mainwindow/logic/flight_commands.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/writer.h"
#include "services/text.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

constexpr char kFlights[] =
    "[r0100]|  Planes 2|  Skill 1|  Class air.A|  Fuel 80|  weapons b1|  Own 7|  spawn0 1_Static|"
    "[r0100_Way]|  NORMFLY_402 1.00 2.00 500.00 300.00 r0101 0 &0|  TRIGGERS 1 2 3 4 5|[r0101]|  "
    "Planes 1|  Skill 1|"
    "  Class air.B|  Fuel 70|  weapons none|[r0101_Way]|  NORMFLY_401 3.00 4.00 500.00 300.00 &0|";
constexpr char kMission[] =
    "[MAIN]|  MAP a/load.ini|  TIME 12.0|[Wing]|  R0100|[R0100]|  Planes 1|  Skill 1|"
    "  Class air.C|  Fuel 100|  weapons none|[R0100_Way]|  NORMFLY 5.00 6.00 500.00 300.00 &0|"
    "[NStationary]|";

class Pasting : public ::testing::TestWithParam<bool> {
 protected:
  void Open(const std::string& text) {
    ReadInto(W, CrlfText(text));
    if (GetParam()) ReadKeptMission(W.Doc, W.Services, W.Doc.Missions[0], CrlfText(text));
    W.Doc.MissionShadow = W.Doc.Missions;
  }
  std::string Written() {
    LineArray lines;
    std::string reason;
    const bool built = GetParam()
                           ? BuildKeptFile(W.Doc, W.Services, W.Doc.Missions[0], lines, &reason)
                           : BuildMissionFile(W.Doc, W.Services, lines, 0, {});
    return built ? lines.FileText() : reason;
  }
  std::string Names() {
    std::vector<std::string> names;
    for (const auto& flight : W.Doc.Missions[0].Flights) names.push_back(flight.Name);
    return Joined(names);
  }
  World W;
};

TEST_P(Pasting, GivesFreeNamesThatTargetsFollow) {
  Open(kMission);
  const PastedFlights pasted = PasteFlights(W.Doc, W.Services, CrlfText(kFlights));
  EXPECT_EQ(Names(), "R0100|r0101|r0102");
  EXPECT_EQ(PastedText(pasted), "2 flights pasted: r0100 as r0101, r0101 as r0102.");
  EXPECT_EQ(W.Doc.MissionShadow[0].Flights.size(), 3u);
  const std::string text = Written();
  EXPECT_NE(text.find(" r0102 0 "), text.npos) << text;
  EXPECT_EQ(text.find("spawn0"), text.npos);
  EXPECT_NE(text.find("[r0102_Way]"), text.npos);
  // What the records do not know comes along where lines are kept.
  EXPECT_EQ(text.find("  Own 7\r\n") != text.npos, GetParam());
  EXPECT_EQ(text.find("  TRIGGERS 0 0 0 5 0\r\n") != text.npos, GetParam());
  World again;
  ReadInto(again, text);
  ASSERT_EQ(again.Doc.Missions[0].Flights.size(), 3u);
  EXPECT_EQ(again.Doc.Missions[0].Flights[1].Fuel, "80");
}

TEST_P(Pasting, TakesWhatCopyMakes) {
  Open("[MAIN]|  MAP a/load.ini|[Wing]|" + std::string(kFlights) + "[NStationary]|");
  const std::string text = FlightsText(W.Doc, W.Services, {0, 1});
  Open(kMission);
  EXPECT_EQ(PasteFlights(W.Doc, W.Services, text).Added.size(), 2u);
  ASSERT_EQ(W.Doc.Missions[0].Flights.size(), 3u);
  const Flight& flight = W.Doc.Missions[0].Flights[1];
  EXPECT_EQ(flight.Class + flight.Fuel + flight.Weapons, "A80b1");
  EXPECT_EQ(Written().find("  TRIGGERS 1 2 3 4 5\r\n") != std::string::npos, GetParam());
}

TEST_P(Pasting, OfAFlightThatWasRemovedIsANewOne) {
  Open(kMission);
  W.Doc.Missions[0].Flights.clear();
  PasteFlights(W.Doc, W.Services, CrlfText(kFlights));
  EXPECT_EQ(Names(), "r0101|r0102") << "its lines are still those of the file";
  EXPECT_EQ(Written().find("air.C"), std::string::npos);
}

TEST_P(Pasting, LeavesOutWhatHasNoNameAndNoSense) {
  Open(kMission);
  EXPECT_EQ(PastedText(PasteFlights(W.Doc, W.Services, "")), "The clipboard holds no flights.");
  EXPECT_TRUE(PasteFlights(W.Doc, W.Services, "[a]\nx\n\0[[]").Added.empty());
  for (int i = 0; i < 5; ++i) PasteFlights(W.Doc, W.Services, CrlfText(kFlights));
  const auto last = PasteFlights(W.Doc, W.Services, CrlfText(kFlights));
  EXPECT_EQ(W.Doc.Missions[0].Flights.size(), 13u);
  for (int i = 0; i < 2; ++i) PasteFlights(W.Doc, W.Services, CrlfText(kFlights));
  EXPECT_EQ(W.Doc.Missions[0].Flights.size(), 16u) << "all of the regiment";
  EXPECT_EQ(PasteFlights(W.Doc, W.Services, CrlfText(kFlights)).LeftOut.size(), 2u);
}

INSTANTIATE_TEST_SUITE_P(BothWays, Pasting, ::testing::Bool());

}  // namespace
}  // namespace rws::test
