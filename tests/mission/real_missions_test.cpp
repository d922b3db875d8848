#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "mission/line_ends.h"
#include "mission/update.h"
#include "mission/writer.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

/** Every mission of the folder that RWS_MISSIONS names is read, rewritten, read again and rewritten
    again. Without that folder the test is skipped. */
namespace rws {
namespace {

namespace fs = std::filesystem;
using test::ReadInto;
using test::World;

/** What would be written; "<none>" when nothing would be. */
std::string Rewritten(World& world) {
  LineArray output;
  const bool built = BuildMissionFile(world.Doc, world.Services, output, 0, {});
  return built ? output.FileText() : "<none>";
}

/** `world` holds a mission as read again: it has the same flights, and the same values. */
void ExpectReadAgain(World& world, Mission before) {
  const Mission& after = world.Doc.MissionShadow[0];
  ASSERT_EQ(after.Flights.size(), before.Flights.size());
  for (std::size_t i = 0; i < before.Flights.size(); ++i) {
    SCOPED_TRACE(before.Flights[i].Name);
    auto& route = before.Flights[i].Waypoints;
    // The record of the blank line that ended a route is not written.
    if (before.Flights[i].LastWaypoint.empty()) route.pop_back();
    const auto& again = after.Flights[i].Waypoints;
    ASSERT_EQ(again.size(), route.size());
    for (std::size_t k = 0; k < route.size(); ++k)
      EXPECT_TRUE(again[k].X == route[k].X && again[k].Y == route[k].Y &&
                  again[k].Type == route[k].Type)
          << std::string_view(route[k].Line);
  }
  before.Lines = after.Lines;
  before.Time = after.Time;  // without [Wing] the line of another key overwrites it
  world.Doc.Missions[0] = before;
  EXPECT_FALSE(MissionChanged(world.Doc, 0));
}

/** Lines of both texts are the same, but for what a rewriting changes anew each time: a time that
    the line of another key overwrote, and the words behind the sixth of a route, which take the
   zero of a marker or a marker behind it. */
void ExpectSameLines(const std::string& once, const std::string& twice) {
  const auto first = SplitAt(once, '\n'), second = SplitAt(twice, '\n');
  ASSERT_EQ(second.size(), first.size());
  const auto sixWords = [](std::string_view line) {
    auto words = SplitAt(Trim(line), ' ');
    words.resize(6);
    return words;
  };
  for (std::size_t i = 0; i < first.size(); ++i) {
    if (first[i] == second[i] || first[i].starts_with("  TIME")) continue;
    EXPECT_EQ(sixWords(second[i]), sixWords(first[i]));
  }
}

/** What stands behind the flights but for home bases, of which the reader does not read all: the
    sections ahead of them and the last one, without blanks and blank lines. */
std::string TailOf(const std::string& text) {
  const std::size_t way = text.rfind("_Way]"), tail = text.find("\n[", way);
  if (way == text.npos || tail == text.npos) return "";
  const std::string sections =
      text.substr(tail, text.find("\n[Born", tail) - tail) + text.substr(text.rfind("\n["));
  return Replace(Replace(sections, " ", ""), "\r\n\r\n", "\r\n");
}

TEST(RealMissions, ComeBackAsTheyWere) {
  const char* folder = std::getenv("RWS_MISSIONS");
  if (!folder) GTEST_SKIP() << "RWS_MISSIONS names no folder";
  int withFlights = 0, withTail = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (!EqualNoCase(entry.path().extension().string(), ".mis")) continue;
    SCOPED_TRACE(entry.path().filename().string());
    World world;
    const std::string file = test::FileBytes(entry.path()),
                      bytes = RepairedLineEnds(file).value_or(file);
    ReadInto(world, bytes);
    const Mission mission = world.Doc.Missions[0];
    const std::string once = Rewritten(world);
    EXPECT_TRUE(once != "<none>" || mission.Flights.empty());
    if (once == "<none>") continue;
    EXPECT_EQ(TailOf(once), TailOf(bytes));
    ReadInto(world, once);
    // A mission with neither routes nor home bases gets its head once more each time.
    if (!mission.Flights.empty() || mission.HasBornPlace) ExpectSameLines(once, Rewritten(world));
    ExpectReadAgain(world, mission);
    withFlights += !mission.Flights.empty();
    withTail += !TailOf(bytes).empty();
  }
  EXPECT_GT(withFlights, 0);
  EXPECT_GT(withTail, 0);
}

}  // namespace
}  // namespace rws
