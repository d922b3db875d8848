#include "fuzz/support.h"
#include "library/check.h"
#include "library/check_files.h"
#include "library/check_tables.h"
#include "library/facts.h"
#include "mission/kept_reader.h"
#include "services/faults.h"

/** Takes the facts of a mission for the library, and checks it as the game would. */

namespace {

using namespace rws;

/** The library sees the mission as the reader does that keeps lines. */
void RequireFacts(const std::string& bytes) {
  static FactsReader reader;
  MissionFacts facts;
  reader.Read(bytes, facts);
  Document doc = fuzz::OneMission();
  Mission& mission = doc.Missions[0];
  ReadKeptMission(doc, fuzz::QuietServices(), mission, bytes);
  fuzz::Require(facts.HomeBases == mission.BornPlaces.size(),
                "Home bases are those of the mission.");
  if (facts.Fault != MissionFault::None) return;
  fuzz::RequireSame(facts.MapPath, mission.MapPath, "The map is that of the mission.");
  fuzz::RequireSame(facts.Player, mission.Player, "The player is that of the mission.");
  fuzz::Require(facts.Flights.size() == mission.Flights.size(),
                "Flights are those of the mission.");
  for (std::size_t i = 0; i < facts.Flights.size(); ++i) {
    fuzz::RequireSame(facts.Flights[i].Name, mission.Flights[i].Name, "So are their names.");
    fuzz::RequireSame(facts.Flights[i].Class, mission.Flights[i].Class, "So are their aircraft.");
    fuzz::Require(facts.Flights[i].Waypoints == mission.Flights[i].Waypoints.size(),
                  "So are their waypoints.");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const CheckTables tables({}, {}, fuzz::QuietServices());
  static GameFiles game(fuzz::QuietServices().Files, "/none");
  const std::string bytes(fuzz::TextOf(data, size));
  RequireFacts(bytes);
  const MissionToCheck mission{"/none/test.mis", LineArray::FromFileAsIs(bytes),
                               MissionKind::Unknown, true, ""};
  for (const auto& finding : CheckMission(tables, game, mission)) {
    fuzz::Require(finding.Line < static_cast<std::int32_t>(mission.Lines.size()),
                  "A finding is in the file.");
    fuzz::Require(!finding.Text.empty() && !finding.Kind.empty(), "A finding is told.");
    PlaceText(finding, tables.Page());
  }
  return 0;
}
