#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "mission/line_ends.h"
#include "mission/writer.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

/** Every mission of the folder that RWS_MISSIONS names is read, rewritten and compared with what a
    naive reading of the writer's rules says. Without that folder the tests are skipped. */
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

Lines Split(const std::string& bytes) {
  Lines lines;
  for (std::size_t start = 0; start < bytes.size();) {
    const auto end = std::min(bytes.find("\r\n", start), bytes.size());
    lines.push_back(bytes.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

/** A line of a key and a value, with another value. */
std::string WithValue(const std::string& line, const std::string& value) {
  std::istringstream words(line);
  std::string key;
  words >> key;
  return Trimmed("  " + key + " " + value);
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

/** True if rewriting a second time must change nothing: every route line ends with a marker that
    the zero rule spares, no head doubles, the reader loses no value of the rewritten text. */
bool IsStable(const Mission& rewritten, const Prescribed& prescribed) {
  if (prescribed.Regenerates && rewritten.Flights.empty()) return false;
  for (const auto& flight : rewritten.Flights)
    for (const auto& waypoint : flight.Waypoints) {
      const std::string line = Trimmed(waypoint.Line);
      const bool behindTarget = std::count(line.begin(), line.end(), ' ') > 5;
      if (waypoint.Type == "TRIGGERS" || line[line.size() - 2] != '&' ||
          (behindTarget && line.ends_with("&0")))
        return false;
    }
  return !rewritten.Time.empty() && !rewritten.CloudHeight.empty() && !rewritten.CloudType.empty();
}

void ExpectSameFlights(const Mission& before, const Mission& after) {
  ASSERT_EQ(after.Flights.size(), before.Flights.size());
  for (std::size_t i = 0; i < before.Flights.size(); ++i) {
    const Flight &a = before.Flights[i], &b = after.Flights[i];
    SCOPED_TRACE(a.Name);
    EXPECT_EQ(b.Name, a.Name);
    EXPECT_EQ(b.Class, a.Class);
    EXPECT_EQ(b.Weapons, a.Weapons);
    EXPECT_EQ(b.Fuel, a.Fuel);
    EXPECT_EQ(b.Planes, a.Planes);
    // The record of the blank line that ended a route is not written.
    const std::size_t count = a.Waypoints.size() - (a.LastWaypoint.empty() ? 1 : 0);
    ASSERT_EQ(b.Waypoints.size(), count);
    for (std::size_t k = 0; k < count; ++k) {
      EXPECT_EQ(b.Waypoints[k].X, a.Waypoints[k].X);
      EXPECT_EQ(b.Waypoints[k].Y, a.Waypoints[k].Y);
      EXPECT_EQ(b.Waypoints[k].Alt, a.Waypoints[k].Alt);
    }
  }
}

class RealMissions : public testing::Test {
 protected:
  void SetUp() override {
    const char* folder = std::getenv("RWS_MISSIONS");
    if (!folder) GTEST_SKIP() << "RWS_MISSIONS names no folder";
    for (const auto& entry : fs::directory_iterator(folder))
      if (Lower(entry.path().extension().string()) == ".mis") paths_.push_back(entry.path());
    std::sort(paths_.begin(), paths_.end());
    ASSERT_FALSE(paths_.empty());
  }

  /** Reads a mission as its file is, line ends repaired in memory. */
  static void Read(World& world, const fs::path& path) {
    const std::string bytes = Bytes(path);
    ReadInto(world, RepairedLineEnds(bytes).value_or(bytes));
  }

  std::vector<fs::path> paths_;
};

TEST_F(RealMissions, AreRewrittenAsPrescribed) {
  int withFlights = 0, stable = 0;
  for (const auto& path : paths_) {
    SCOPED_TRACE(path.filename().string());
    World world;
    Read(world, path);
    const Mission mission = world.Doc.Missions[0];
    const Prescribed prescribed = Prescribe(mission, Split(mission.Lines.FileText()));
    LineArray output;
    ASSERT_EQ(BuildMissionFile(world.Doc, world.Services, output, 0), prescribed.Builds);
    if (!prescribed.Builds) continue;

    Lines start = prescribed.Head;
    if (prescribed.Regenerates) {
      start.push_back("[Wing]");
      for (const auto& flight : mission.Flights) start.push_back("  " + flight.Name);
    }
    const Lines lines = Split(output.FileText());
    ASSERT_GE(lines.size(), start.size() + prescribed.Tail.size());
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(start.size())),
              start);
    EXPECT_TRUE(std::equal(prescribed.Tail.rbegin(), prescribed.Tail.rend(), lines.rbegin()));
    if (mission.Flights.empty()) {
      EXPECT_EQ(lines.size(), start.size() + prescribed.Tail.size());
    }

    ReadInto(world, output.FileText());
    ExpectSameFlights(mission, world.Doc.Missions[0]);
    withFlights += !mission.Flights.empty();
    if (!IsStable(world.Doc.Missions[0], prescribed)) continue;
    LineArray again;
    ASSERT_TRUE(BuildMissionFile(world.Doc, world.Services, again, 0));
    EXPECT_TRUE(again.FileText() == output.FileText());
    ++stable;
  }
  EXPECT_GT(withFlights, 0);
  EXPECT_GT(stable, 0);
}

TEST_F(RealMissions, AreLeftAloneByTheCommandLineTool) {
  for (const auto& path : paths_) {
    SCOPED_TRACE(path.filename().string());
    const std::string bytes = Bytes(path);
    const auto written = fs::last_write_time(path);
    World world;
    Read(world, path);
    LineArray expected;
    const bool builds = BuildMissionFile(world.Doc, world.Services, expected, 0);
    test::Sandbox box;
    const std::string tool = std::string("\"") + RWS_CLI + "\"", out = box.Path("out.mis");
    const std::string quiet = "> \"" + box.Path("log") + "\" 2>&1";
    const int status = std::system(
        (tool + " rewrite \"" + path.string() + "\" --output \"" + out + "\" " + quiet).c_str());
    EXPECT_EQ(status == 0, builds);
    EXPECT_TRUE(box.Read("out.mis") == (builds ? expected.FileText() : "<none>"));
    EXPECT_EQ(std::system((tool + " show \"" + path.string() + "\" " + quiet).c_str()), 0);
    EXPECT_TRUE(Bytes(path) == bytes);
    EXPECT_EQ(fs::last_write_time(path), written);
  }
}

}  // namespace
}  // namespace rws
