#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/reader.h"
#include "mission/update.h"
#include "mission/writer.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

/** Sizes and files that no player has, and an enemy of one may make. The bounds are far above what
    is needed: they tell hours from seconds, and a few times the file from all of the memory. With
    RWS_HOSTILE in the environment sizes are whole, which takes some minutes, else a tenth. */
namespace rws {
namespace {

constexpr std::chrono::seconds kLongest(100);
constexpr long kMostKilobytes = 6'000'000;

int OfSize(int count) { return std::getenv("RWS_HOSTILE") ? count : count / 10; }

class Bounds {
 public:
  ~Bounds() {
    EXPECT_LT(std::chrono::steady_clock::now() - start_, kLongest);
    struct rusage used;
    ::getrusage(RUSAGE_SELF, &used);
    EXPECT_LT(used.ru_maxrss, kMostKilobytes);
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

std::string Repeated(int count, const std::function<std::string(int)>& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text(i);
  return all;
}

const std::string kHead = "[MAIN]\r\n  MAP a/b.ini\r\n  TIME 12.0\r\n[Wing]\r\n  r0100\r\n";
const std::string kFlight =
    "[r0100]\r\n  Planes 1\r\n  Skill 1\r\n  Class air.X\r\n  Fuel 100\r\n  weapons default\r\n"
    "[r0100_Way]\r\n  NORMFLY 1.00 2.00 3.00 4.00 &0\r\n";
const std::string kRoute = "  NORMFLY 123456.78 1234.56 500.00 300.00 &0\r\n";

TEST(Hostile, SizeIsReadAndWrittenInBounds) {
  const struct {
    const char* Name;
    std::string Bytes;
    std::size_t Flights;
  } rows[] = {
      {"100 MB",
       kHead + kFlight + "[NStationary]\r\n" +
           Repeated(OfSize(1'300'000),
                    [](int i) {
                      return "  " + std::to_string(i) +
                             "_Static vehicles.artillery.Artillery$ZIS3 1 100.00 200.00 360.00 0.0 "
                             "0 1 1\r\n";
                    }),
       1},
      {"a line of 10 MB",
       kHead + kFlight + "[NStationary]\r\n  " +
           std::string(static_cast<std::size_t>(OfSize(10'000'000)), 'x') + "\r\n[Bridge]\r\n",
       1},
      {"65,536 flights",
       kHead +
           Repeated(OfSize(65'536),
                    [](int i) {
                      const std::string name = std::to_string(i);
                      return "[f" + name + "]\r\n  Planes 1\r\n  Fuel 100\r\n[f" + name +
                             "_Way]\r\n" + kRoute;
                    }) +
           "[NStationary]\r\n",
       static_cast<std::size_t>(OfSize(65'536))},
      {"a million route lines",
       kHead + kFlight + Repeated(OfSize(1'000'000), [](int) { return kRoute; }) +
           "[NStationary]\r\n",
       1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    const Bounds bounds;
    test::World world;
    test::ReadInto(world, row.Bytes);
    ASSERT_EQ(world.Doc.Missions[0].Flights.size(), row.Flights);
    LineArray lines;
    EXPECT_TRUE(BuildMissionFile(world.Doc, world.Services, lines, 0, {}));
    Mission& mission = world.Doc.Missions[0];
    mission = Mission();
    ReadKeptMission(world.Doc, world.Services, mission, row.Bytes);
    ASSERT_FALSE(mission.Flights.empty());
    mission.Flights[0].Fuel = "37";
    LineArray kept;
    EXPECT_TRUE(BuildKeptFile(world.Doc, world.Services, mission, kept));
    EXPECT_EQ(kept.size(), mission.Lines.size());
  }
}

TEST(Hostile, FilesThatAreNoMissionsAreNotOpened) {
  const Bounds bounds;
  const test::Sandbox box;
  const std::string longest = std::string(251, 'n') + ".mis";
  for (const auto& name : {std::string("a.mis"), longest}) box.Write(name, kHead + kFlight);
  box.MakeFolder("folder.mis");
  for (const auto& [name, to] : {std::pair("round.mis", "again.mis"),
                                 {"again.mis", "round.mis"},
                                 {"itself.mis", "itself.mis"},
                                 {"nowhere.mis", "none"},
                                 {"pipe_by_link.mis", "pipe.mis"}})
    box.Link(name, to);
  ASSERT_EQ(::mkfifo(box.Path("pipe.mis").c_str(), 0600), 0);
  std::filesystem::create_symlink("/dev/zero", box.Path("device.mis"));
  test::World world(box.Path("program"));
  box.MakeFolder("program");
  world.Doc.MissionDir = box.Path();
  ASSERT_TRUE(GetMissionFiles(world.Doc, world.Services));
  ASSERT_EQ(world.Doc.MissionFiles.size(), 2U);
  LoadMissionArray(world.Doc, world.Services);
  for (std::size_t i = 0; i < 2; ++i) {
    LoadMission(world.Doc, world.Services, i);
    EXPECT_TRUE(world.Doc.Missions[i].Loaded);
  }
  // A name at the limit leaves no room for those of the new file and of the backup.
  const std::size_t last = world.Doc.MissionFiles[0].ends_with(longest) ? 0 : 1;
  world.Doc.Missions[last].Flights[0].Fuel = "37";
  world.Doc.Missions[last].Modified = true;
  world.Script.Expect("Update fail.");
  EXPECT_FALSE(UpdateChanges(world.Doc, world.Services, {}, {}));
  EXPECT_EQ(box.Read(longest), kHead + kFlight);
  EXPECT_TRUE(world.Doc.Missions[last].NotWritten);
}

TEST(Hostile, AHundredThousandFilesAreListed) {
  const Bounds bounds;
  const test::Sandbox box;
  const int files = OfSize(100'000);
  for (int i = 0; i < files; ++i) std::ofstream(box.Path(std::to_string(i) + ".MIS"));
  test::World world;
  world.Doc.MissionDir = box.Path();
  ASSERT_TRUE(GetMissionFiles(world.Doc, world.Services));
  EXPECT_EQ(world.Doc.MissionFiles.size(), static_cast<std::size_t>(files));
  LoadMissionArray(world.Doc, world.Services);
  EXPECT_EQ(world.Doc.Missions.size(), static_cast<std::size_t>(files));
}

}  // namespace
}  // namespace rws
