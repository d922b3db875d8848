#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/line_diff.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

/** Every mission of the folder that RWS_MISSIONS names is read with its lines kept, and edited
   value by value. Without that folder the test is skipped. */
namespace rws {
namespace {

namespace fs = std::filesystem;
using test::World;

/** Edits one value; gives the number of lines that may change, 0 where there is nothing to edit. */
struct SingleEdit {
  const char* What;
  std::function<std::size_t(Mission&, Flight&)> Do;
};

std::size_t SetText(std::string& value, const char* text) {
  if (value == text) return 0;
  value = text;
  return 1;
}

std::size_t EditEachWaypoint(Flight& flight, const std::function<void(Waypoint&)>& edit) {
  for (auto& waypoint : flight.Waypoints) edit(waypoint);
  return flight.Waypoints.size();
}

const SingleEdit kEdits[] = {
    {"time", [](Mission& m, Flight&) { return SetText(m.Time, "3.25"); }},
    {"clouds", [](Mission& m, Flight&) { return SetText(m.CloudType, "6"); }},
    {"cloud height", [](Mission& m, Flight&) { return SetText(m.CloudHeight, "777"); }},
    {"army", [](Mission& m, Flight&) { return SetText(m.Army, "2"); }},
    {"player", [](Mission& m, Flight& f) { return SetText(m.Player, f.Name.c_str()); }},
    {"no player", [](Mission& m, Flight&) { return SetText(m.Player, ""); }},
    {"player number", [](Mission& m, Flight&) { return SetText(m.PlayerNum, "3"); }},
    {"planes", [](Mission&, Flight& f) { return SetText(f.Planes, f.Planes == "4" ? "3" : "4"); }},
    {"only AI", [](Mission&, Flight& f) { return SetText(f.OnlyAI, f.OnlyAI.empty() ? "1" : ""); }},
    {"parachute",
     [](Mission&, Flight& f) { return SetText(f.Parachute, f.Parachute.empty() ? "0" : ""); }},
    {"class", [](Mission&, Flight& f) { return SetText(f.Class, "I_16TYPE24"); }},
    {"fuel", [](Mission&, Flight& f) { return SetText(f.Fuel, "37"); }},
    {"weapons", [](Mission&, Flight& f) { return SetText(f.Weapons, "4xRS82"); }},
    {"start", [](Mission&, Flight& f) { return SetText(f.StartTime, "45"); }},
    {"no start", [](Mission&, Flight& f) { return SetText(f.StartTime, ""); }},
    {"skin", [](Mission&, Flight& f) { return SetText(f.PlaneSlots[1].Skin, "A b.bmp"); }},
    {"pilot", [](Mission&, Flight& f) { return SetText(f.PlaneSlots[0].Pilot, "Jim.bmp"); }},
    {"number", [](Mission&, Flight& f) { return SetText(f.PlaneSlots[3].NumberOn, "0"); }},
    {"altitudes",
     [](Mission&, Flight& f) { return EditEachWaypoint(f, [](Waypoint& w) { w.Alt = "4321"; }); }},
    {"radio",
     [](Mission&, Flight& f) {
       return EditEachWaypoint(f, [](Waypoint& w) { w.Marker = w.Marker == "&0" ? "&1" : "&0"; });
     }},
    {"no flight",
     [](Mission& m, Flight& f) {
       std::erase_if(m.Flights, [&](const Flight& other) { return &other == &f; });
       return std::size_t{10000};
     }},
    {"copy",
     [](Mission& m, Flight& f) {
       Flight copy = f;
       copy.Name = "r9933";
       m.Flights.push_back(copy);
       return std::size_t{10000};
     }},
    {"name", [](Mission&, Flight& f) { return SetText(f.Name, "r9932") * 4; }},
};

class KeptRealMissions : public ::testing::Test {
 protected:
  void SetUp() override {
    const char* folder = std::getenv("RWS_MISSIONS");
    if (!folder || !fs::is_directory(folder)) GTEST_SKIP() << "RWS_MISSIONS names no folder";
    for (const auto& entry : fs::recursive_directory_iterator(folder))
      if (entry.path().extension() == ".mis") Paths.push_back(entry.path());
  }
  Mission Read(const fs::path& path) {
    Mission mission;
    ReadKeptMission(Here.Doc, Here.Services, mission, test::FileBytes(path));
    return mission;
  }
  /** The merged lines, which have passed the check. */
  LineArray Merged(const Mission& mission) {
    LineArray lines;
    std::string reason;
    EXPECT_TRUE(BuildKeptFile(Here.Doc, Here.Services, mission, lines, &reason)) << reason;
    return lines;
  }

  std::vector<fs::path> Paths;
  World Here;
};

TEST_F(KeptRealMissions, StayAsTheyAreButForTheLinesOfAnEdit) {
  for (const auto& path : Paths) {
    SCOPED_TRACE(path.filename().string());
    const Mission read = Read(path);
    ASSERT_EQ(Merged(read).FileText(), test::FileBytes(path));
    // Some of many flights are enough.
    const std::size_t stride = 1 + read.Flights.size() / 6;
    for (std::size_t flight = 0; flight < read.Flights.size(); flight += stride) {
      for (const auto& edit : kEdits) {
        SCOPED_TRACE(read.Flights[flight].Name + " " + edit.What);
        Mission edited = read;
        const std::size_t most = edit.Do(edited, edited.Flights[flight]);
        if (most == 0) continue;
        const LineArray lines = Merged(edited);
        const auto counts = CountDifferences(read.Lines.FileText(), lines.FileText());
        ASSERT_FALSE(counts.None());
        ASSERT_LE(counts.Added + counts.Gone + counts.Changed, most);
      }
    }
  }
}

}  // namespace
}  // namespace rws
