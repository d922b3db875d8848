#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "mission/line_ends.h"
#include "mission/writer.h"
#include "tests/support/doubles.h"
#include "tests/support/run_cli.h"
#include "tests/support/sandbox.h"

/** Every mission of the folder that RWS_MISSIONS names is read, rewritten and compared with what a
    naive reading of the writer's rules says. Without that folder the test is skipped. */
namespace rws {
namespace {

namespace fs = std::filesystem;
using test::ReadInto;
using test::World;
using Lines = std::vector<std::string>;

std::string Bytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

std::string Lower(std::string text) {
  for (auto& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return text;
}

bool Has(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }

std::string Trimmed(std::string text) {
  while (!text.empty() && text.back() == ' ') text.pop_back();
  while (!text.empty() && text.front() == ' ') text.erase(0, 1);
  return text;
}

std::string Indented(const std::string& line) {
  return (line.rfind("[", 0) == 0 ? "" : "  ") + Trimmed(line);
}

Lines Split(const LineArray& lines) {
  Lines split;
  for (std::size_t i = 0; i < lines.size(); ++i) split.emplace_back(lines[i]);
  return split;
}

/** A line of a key and a value, with another value. */
std::string WithValue(const std::string& line, const std::string& value) {
  return Trimmed(line.substr(0, line.find(' ')) + " " + value);
}

/** What the writer must make of a mission: the head, and the tail with its home bases. */
struct Prescribed {
  bool Builds = true, Regenerates = true;
  Lines Head, Tail;
};

Lines BornPlaceLines(const Mission& mission) {
  Lines lines = {"[BornPlace]"};
  for (const auto& place : mission.BornPlaces) {
    std::ostringstream line;
    line << "  " << place.Army << " " << place.Radius << " " << place.X << " " << place.Y;
    lines.push_back(line.str());
  }
  for (std::size_t i = 0; i < mission.BornPlaces.size(); ++i) {
    if (mission.BornPlaces[i].Planes.empty()) continue;
    lines.push_back("[BornPlace" + std::to_string(i) + "]");
    for (const auto& plane : mission.BornPlaces[i].Planes) lines.push_back("  " + plane);
  }
  return lines;
}

void PrescribeTail(const Mission& mission, const Lines& lines, std::size_t from, Prescribed& out) {
  bool copying = false;
  for (std::size_t i = from; i < lines.size(); ++i) {
    copying = copying || lines[i].rfind("[", 0) == 0;
    if (!copying) continue;
    if (Lower(lines[i]) != "[bornplace]") {
      out.Tail.push_back(Indented(lines[i]));
      continue;
    }
    for (const auto& line : BornPlaceLines(mission)) out.Tail.push_back(line);
    do ++i;
    while (i < lines.size() && (lines[i].rfind("  ", 0) == 0 || lines[i].rfind("[Born", 0) == 0));
    out.Builds = i < lines.size();
    if (out.Builds) out.Tail.push_back(Trimmed(lines[i]));
  }
}

Prescribed Prescribe(const Mission& mission, const Lines& lines) {
  Prescribed out;
  bool player = mission.Player.empty(), number = mission.PlayerNum.empty();
  std::size_t i = 0;
  for (; i + 1 < lines.size(); ++i) {
    const std::string lower = Lower(lines[i]);
    if (Has(lower, "[wing]") || Has(lines[i], "Chiefs") || Has(lines[i], "NStationary")) break;
    std::string line = Trimmed(lines[i]);
    if (Has(lower, "cloudtype")) line = WithValue(line, mission.CloudType);
    if (Has(lower, "cloudheight")) line = WithValue(line, mission.CloudHeight + ".0");
    if (Lower(line).rfind("time ", 0) == 0) line = WithValue(line, mission.Time);
    if (Has(lower, "player ")) {
      line = "player " + mission.Player;
      player = true;
    }
    if (Has(lower, "playernum")) {
      line = "playerNum " + mission.PlayerNum;
      number = true;
    }
    if (!line.empty()) out.Head.push_back(Indented(line));
  }
  if (!player) out.Head.push_back("  player " + mission.Player);
  if (!number) out.Head.push_back("  playerNum " + mission.PlayerNum);
  std::size_t tail = 0;
  for (std::size_t k = i + 1; k < lines.size(); ++k)
    if (Has(lines[k], "_Way")) tail = k + 1;
  if (tail == 0 && mission.HasBornPlace) {
    out.Regenerates = false;
    while (tail < lines.size() && !Has(lines[tail], "Chiefs") && !Has(lines[tail], "NStationary"))
      ++tail;
    out.Builds = tail < lines.size();
  }
  if (out.Builds) PrescribeTail(mission, lines, tail, out);
  return out;
}

std::string Fields(const Flight& flight) {
  std::string fields = test::Joined({flight.Name, flight.Class, flight.Weapons, flight.Fuel,
                                     flight.Planes, flight.Skill, flight.Parachute});
  for (const auto& slot : flight.PlaneSlots)
    fields += "|" + test::Joined({slot.Skin, slot.NoseArt, slot.Pilot, slot.NumberOn});
  return fields;
}

void ExpectSameFlights(const Mission& before, const Mission& after) {
  ASSERT_EQ(after.Flights.size(), before.Flights.size());
  for (std::size_t i = 0; i < before.Flights.size(); ++i) {
    const Flight &a = before.Flights[i], &b = after.Flights[i];
    SCOPED_TRACE(a.Name);
    EXPECT_EQ(Fields(b), Fields(a));
    // The record of the blank line that ended a route is not written.
    const std::size_t count = a.Waypoints.size() - (a.LastWaypoint.empty() ? 1 : 0);
    ASSERT_EQ(b.Waypoints.size(), count);
    for (std::size_t k = 0; k < count; ++k) {
      const Waypoint &was = a.Waypoints[k], &is = b.Waypoints[k];
      EXPECT_TRUE(is.X == was.X && is.Y == was.Y && is.Alt == was.Alt) << was.Line;
    }
  }
}

TEST(RealMissions, AreRewrittenAsPrescribed) {
  const char* folder = std::getenv("RWS_MISSIONS");
  if (!folder) GTEST_SKIP() << "RWS_MISSIONS names no folder";
  int withFlights = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (Lower(entry.path().extension().string()) != ".mis") continue;
    SCOPED_TRACE(entry.path().filename().string());
    World world;
    const std::string bytes = Bytes(entry.path());
    ReadInto(world, RepairedLineEnds(bytes).value_or(bytes));
    const Mission mission = world.Doc.Missions[0];
    const Prescribed prescribed = Prescribe(mission, Split(mission.Lines));
    LineArray output;
    ASSERT_EQ(BuildMissionFile(world.Doc, world.Services, output, 0, {}), prescribed.Builds);
    // The command line tool writes the same and leaves the mission alone.
    const test::Sandbox box;
    const std::string path = fs::absolute(entry.path()).string();
    EXPECT_EQ(test::RunCli(box.Path(), "rewrite \"" + path + "\" --output out.mis") == 0,
              prescribed.Builds);
    EXPECT_TRUE(box.Read("out.mis") == (prescribed.Builds ? output.FileText() : "<none>"));
    EXPECT_TRUE(Bytes(entry.path()) == bytes);
    if (!prescribed.Builds) continue;

    Lines start = prescribed.Head;
    if (prescribed.Regenerates) {
      start.push_back("[Wing]");
      for (const auto& flight : mission.Flights) start.push_back("  " + flight.Name);
    }
    const Lines lines = Split(output);
    ASSERT_GE(lines.size(), start.size() + prescribed.Tail.size());
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(start.size())),
              start);
    EXPECT_TRUE(std::equal(prescribed.Tail.rbegin(), prescribed.Tail.rend(), lines.rbegin()));
    EXPECT_EQ(lines.size() == start.size() + prescribed.Tail.size(), mission.Flights.empty());

    ReadInto(world, output.FileText());
    ExpectSameFlights(mission, world.Doc.Missions[0]);
    withFlights += !mission.Flights.empty();
  }
  EXPECT_GT(withFlights, 0);
}

}  // namespace
}  // namespace rws
