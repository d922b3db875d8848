#include "library/facts.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "editors/logic/stationary_aircraft.h"
#include "mission/kept_reader.h"
#include "services/numbers.h"
#include "tests/support/doubles.h"
#include "tests/support/places.h"

namespace rws {
namespace {

namespace fs = std::filesystem;
using test::CrlfText;

MissionFacts FactsOf(std::string_view bytes) {
  FactsReader reader;
  MissionFacts facts;
  // What an earlier text has left must not show.
  reader.Read("[MAIN]\n MAP old\n[Wing]\n[a00]\n Planes 1\n[BornPlace]\n 1 2 3 4\n", facts);
  reader.Read(bytes, facts);
  return facts;
}

/** The facts beside the records that the reader of the window makes of the same bytes. */
void ExpectAsRecords(const std::string& bytes) {
  test::World world;
  Mission mission;
  ReadKeptMission(world.Doc, world.Services, mission, bytes);
  const MissionFacts facts = FactsOf(bytes);
  EXPECT_EQ(facts.MapPath, mission.MapPath);
  EXPECT_EQ(facts.Time, mission.Time);
  EXPECT_EQ(facts.CloudType, mission.CloudType);
  EXPECT_EQ(facts.CloudHeight, mission.CloudHeight);
  EXPECT_EQ(facts.Army, mission.Army);
  EXPECT_EQ(facts.Player, mission.Player);
  EXPECT_EQ(facts.PlayerNum, mission.PlayerNum);
  EXPECT_EQ(facts.Sound.empty(), mission.BriefSoundLine.empty());
  EXPECT_EQ(facts.HomeBases, mission.BornPlaces.size());
  ASSERT_EQ(facts.Flights.size(), mission.Flights.size());
  for (std::size_t i = 0; i < facts.Flights.size(); ++i) {
    const Flight& flight = mission.Flights[i];
    const FlightFacts expected{flight.Name, flight.Class, static_cast<int>(Val(flight.Planes)),
                               !flight.OnlyAI.empty(),
                               static_cast<std::uint32_t>(flight.Waypoints.size())};
    EXPECT_EQ(facts.Flights[i], expected) << flight.Name;
  }
}

TEST(MissionFacts, AreThoseOfTheRecords) {
  const std::string texts[] = {
      "",
      "[]|MAP a|[MAIN",
      "[MAIN]|  MAP a/b.ini |  TIME 12.5 // noon|  CloudHeight 800.0|  player r0100|  MAP c",
      "[main]|map a|[MAIN]|map b|time 5|[Wing]|r0100",
      "[SEASON]|Year 1943|Map early|[Wing]|Time 9|[MAIN]|MAP late",
      "MAP bare|TIME 3|[SEASON]|army 2|[Wing]|player nobody",
      "[a00]|Planes 2|class AIR.X|OnlyAI 1|OnlyAI 0|[A00]|Planes 3|[a00_WAY]|T 1 2|TRIGGERS 1|"
      "triggers 2|# no|T 3 4|;||\t//|//x|[a00_way]|T 5 6",
      "[a00]|Planes|Planes 3|[b00]| #Planes 1|[c00]|Planes x|Class X|[c00_Way]|Planes 3",
      "[MAIN]|Planes 1|Class air.A|[BornPlace]|1 3000 5 6||#|2 3000 7 8|Planes 1",
      "[ MAIN ]|MAP a|  [MAIN]\t|MAP b\x01 c|[MAIN]x|TIME 1",
  };
  for (const auto& text : texts)
    for (const char* end : {"\r\n", "\n", "\r"}) {
      SCOPED_TRACE(text + (end[0] == '\r' ? " r" : " n") + std::to_string(end[1]));
      std::string bytes;
      for (const char c : text) c == '|' ? bytes += end : bytes += c;
      ExpectAsRecords(bytes);
      ExpectAsRecords(bytes + end);
    }
}

std::vector<fs::path> Missions(const fs::path& folder) {
  std::vector<fs::path> found;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.path().extension() == ".mis") found.push_back(entry.path());
  return found;
}

void ExpectFilesAsRecords(const fs::path& folder) {
  const auto missions = Missions(folder);
  ASSERT_FALSE(missions.empty());
  for (const auto& path : missions) {
    SCOPED_TRACE(path.filename().string());
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    ExpectAsRecords(bytes.str());
    EXPECT_EQ(FactsOf(bytes.str()).Parked,
              FindStaticPlanes(LineArray::FromFileAsIs(bytes.str())).size());
  }
}

TEST(MissionFacts, OfTheSamplesAreThoseOfTheRecords) {
  ExpectFilesAsRecords(fs::path(test::SourceFolder()) / "samples");
}

TEST(MissionFacts, OfRealMissionsAreThoseOfTheRecords) {
  const char* folder = std::getenv("RWS_MISSIONS");
  if (!folder) GTEST_SKIP() << "RWS_MISSIONS names no folder of missions";
  ExpectFilesAsRecords(folder);
}

TEST(MissionFacts, SayWhatTheGameRefuses) {
  const std::pair<const char*, MissionFault> cases[] = {
      {"", MissionFault::Empty},
      {"Hello", MissionFault::Empty},
      {"[Wing]|", MissionFault::NoMain},
      {"[MAIN]|  TIME 3|", MissionFault::NoMap},
      {"[MAIN]|  MAP|", MissionFault::NoMap},
      {"[MAIN]|  MAP a|", MissionFault::None},
  };
  for (const auto& [text, fault] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(FactsOf(CrlfText(text)).Fault, fault);
  }
}

TEST(MissionKind, FollowsTheFolderElseTheContent) {
  const std::pair<const char*, MissionKind> folders[] = {
      {"/il2/Missions/Single/US/x", MissionKind::Single},
      {"C:\\il2\\MISSIONS\\net\\coop", MissionKind::Coop},
      {"/missions/Net/DogFight/", MissionKind::Dogfight},
      {"/missions/campaign/missions/single", MissionKind::Single},
      {"/missions/campaign/missions/x", MissionKind::Campaign},
      {"/missions/net", MissionKind::Unknown},
      {"/missions2/single", MissionKind::Unknown},
      {"", MissionKind::Unknown},
  };
  for (const auto& [folder, kind] : folders) EXPECT_EQ(KindOfFolder(folder), kind) << folder;
  const std::pair<const char*, MissionKind> texts[] = {
      {"[MAIN]|player a00|[a00]|Planes 1|[BornPlace]|1 2 3 4", MissionKind::Dogfight},
      {"[MAIN]|player a00|[a00]|Planes 1", MissionKind::Single},
      {"[MAIN]|player A00|[a00]|Planes 1", MissionKind::Coop},
      {"[a00]|Planes 1|OnlyAI 1|[b00]|Planes 1", MissionKind::Coop},
      {"[a00]|Planes 1|OnlyAI 1", MissionKind::Unknown},
  };
  for (const auto& [text, kind] : texts)
    EXPECT_EQ(GuessedKind(FactsOf(CrlfText(text))), kind) << text;
}

// Where each section is compared with all before it, this takes hours.
TEST(MissionFacts, OfAMissionOfHeadersTakeNoLongerThanItIs) {
  std::string bytes;
  for (int i = 0; i < 50'000; ++i) bytes += "[" + std::to_string(i) + "]\nPlanes 1\n";
  EXPECT_EQ(FactsOf(bytes).Flights.size(), 50'000U);
}

}  // namespace
}  // namespace rws
