#include <gtest/gtest.h>

#include <random>

#include "mission/reader.h"
#include "mission/writer.h"
#include "services/text.h"
#include "tests/support/doubles.h"

namespace rws {
namespace {

using test::CrlfText;
using test::ReadInto;
using test::World;

/** Reads bytes that are no mission; every one of them must be kept, and building must end. */
void ReadAndBuild(const std::string& bytes, World& world) {
  ReadInto(world, bytes);
  const bool ended = bytes.empty() || bytes.ends_with("\r\n");
  EXPECT_TRUE(world.Doc.Missions[0].Lines.FileText() == bytes + (ended ? "" : "\r\n"));
  LineArray output;
  if (BuildMissionFile(world.Doc, world.Services, output, 0, {}) && !output.empty()) {
    EXPECT_TRUE(output.FileText().ends_with("\r\n"));
  }
}

TEST(BadInput, KeepsEveryByte) {
  std::mt19937 random(20'260'304);
  std::string randomBytes(3'000'000, 0);
  for (auto& byte : randomBytes) byte = static_cast<char>(random() % 256);
  const std::string rows[] = {
      "",
      "[MAIN]\r  TIME 1\r[Wing]\r",
      "planes 1",
      "[bornplace]",
      randomBytes,
      std::string("[MAIN]\r\n\0\0\r\n[Wing]\r\n[\0]\r\n", 25),
      std::string(10'000'000, 'x'),
      "[Wing]\r\n" + std::string(1'000'000, ' ') + "planes 1",
      CrlfText("[a]|Planes 1|[a_Way]|T 1 2 3 4" + std::string(1'000'000, ' ') + "|[e]"),
      CrlfText("TIME 1e999|timeConstant 1e999|[a]|planes 1|skill 1e999|[a_way]|"
               "T 1e999 -1e999 1e999 1e999 &99999999999999999999999|[bornplace]|1e999 1 1 1|"
               "[bornplace99999999999]|x|[e]")};
  for (const auto& bytes : rows) {
    SCOPED_TRACE("row " + std::to_string(&bytes - rows));
    World world;
    ReadAndBuild(bytes, world);
  }
}

TEST(BadInput, RandomOrderOfKeywordsIsKept) {
  const std::vector<std::string_view> words = SplitAt(
      "\r\n|\r\n| |  |[|]|[Wing]\r\n|_Way|planes 1|[BornPlace]\r\n|[BornPlace0]\r\n|Chiefs|"
      "NStationary|TIME|CloudType|CloudHeight|player |playerNum|[MAIN]\r\n|briefSound |"
      "timeConstant |skill0|skin9|Class air.|&0|NORMFLY 1 2 3 4 &0\r\n|1 2 3 4\r\n|-7.5|0|\n|\xFF",
      '|');
  std::mt19937 random(4711);
  for (int round = 0; round < 400 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    std::string bytes;
    for (int i = 0; i < 120; ++i) bytes += words[random() % words.size()];
    World world;
    ReadAndBuild(bytes, world);
  }
}

/** A file that would be read for hours. Flights that were never read must not be missing from a
   file that is written. */
TEST(BadInput, AFileGivenUpIsNotWritten) {
  std::string bytes = "[MAIN]\r\n[Wing]\r\n";
  for (int i = 0; i < 9'000; ++i)
    bytes += "[r" + std::to_string(i) + "]\r\nPlanes 1\r\nskin9 fails\r\n";
  bytes += "[r0_Way]\r\nT 1 2 0 0 &0\r\n[end]\r\n";
  World world;
  ReadInto(world, bytes);
  ASSERT_EQ(world.Log.back(), "OverflowLoadMissionParams");
  ASSERT_LT(world.Doc.Missions[0].Flights.size(), 9'000U);
  LineArray output;
  EXPECT_FALSE(BuildMissionFile(world.Doc, world.Services, output, 0, {}));
}

TEST(BadInput, ThousandsOfFlightsOfOneNameAreNotWritten) {
  // n flights of one name are n * n sections; long skin names reach the limit with few of them.
  constexpr int kFlights = 300;
  const std::string skin(7'000, 's');
  std::string bytes = "[MAIN]\r\n[Wing]\r\n";
  for (int i = 0; i < kFlights; ++i)
    bytes += "[same]\r\nPlanes 1\r\nskin0 " + skin + "\r\n[same_Way]\r\nT 1 2 0 0 &0\r\n";
  bytes += "[end]\r\n";
  World world;
  ReadInto(world, bytes);
  ASSERT_EQ(world.Doc.Missions[0].Flights.size(), 300U);
  LineArray output;
  EXPECT_FALSE(BuildMissionFile(world.Doc, world.Services, output, 0, {}));
  EXPECT_EQ(world.Log, std::vector<std::string>{"OverflowBuildMissionFile"});
}

}  // namespace
}  // namespace rws
