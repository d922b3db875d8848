#include <algorithm>

#include "fuzz/support.h"
#include "mission/kept_reader.h"
#include "mission/kept_text.h"
#include "mission/line_ends.h"
#include "mission/pending_lines.h"
#include "mission/reader.h"
#include "mission/writer.h"

/** Reads a mission and makes it anew from its records, over and over. */

namespace {

using namespace rws;

Document Read(std::string bytes) {
  Document doc = fuzz::OneMission();
  ReadMissionText(doc, fuzz::QuietServices(), 0, std::move(bytes));
  return doc;
}

/** What would be written; "" where nothing would be. */
std::string Written(Document& doc) {
  LineArray lines;
  return BuildMissionFile(doc, fuzz::QuietServices(), lines, 0, {}) ? lines.FileText() : "";
}

/** Both ways of reading see the same flights in the text, each with a route. The loose patterns of
    this one find some also where no section is, without a route it writes the head twice, and one
    that broke off has waypoints without lines. */
bool IsInForm(const Mission& mission) {
  Document doc = fuzz::OneMission();
  Mission& kept = doc.Missions[0];
  ReadKeptMission(doc, fuzz::QuietServices(), kept, mission.Lines.FileText());
  const auto isSame = [](const Flight& a, const Flight& b) {
    return a.Name == b.Name && !a.Waypoints.empty() && a.Waypoints.size() == b.Waypoints.size() &&
           !b.LastWaypoint.empty();
  };
  const KeptText text(mission.Lines);
  return text.Find("MAIN") && text.Find("Wing") && !kept.Flights.empty() &&
         std::equal(kept.Flights.begin(), kept.Flights.end(), mission.Flights.begin(),
                    mission.Flights.end(), isSame);
}

/** Where the program says that a mission made anew is the same to the game, it is so again, and
    holds the same records. */
void RequireStable(const Document& first, const std::string& written) {
  Document second = Read(written);
  const MadeAnewCheck again = CheckMadeAnew(second, fuzz::QuietServices(), second.Missions[0], {});
  fuzz::Require(again.KeepsMeaning, "What is made anew without a loss keeps its meaning.");
  Mission a = first.Missions[0], b = second.Missions[0];
  fuzz::RequireSame(Written(second), written, "What is made anew without a loss is so for good.");
  for (Mission* mission : {&a, &b}) {
    mission->Lines = LineArray();
    for (auto& flight : mission->Flights)
      for (auto& waypoint : flight.Waypoints) waypoint.Line = "";
  }
  fuzz::RequireSame(fuzz::ContentOf(b), fuzz::ContentOf(a),
                    "The records are those that were read.");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::TextOf(data, size);
  const LineArray repaired = LinesOfFile(std::string(bytes));
  Document doc = Read(repaired.FileText());
  const Mission& mission = doc.Missions[0];
  fuzz::Require(mission.Lines.FileText() == repaired.FileText(), "All lines are kept.");
  if (!mission.Loaded) return 0;
  const Document read = doc;
  const MadeAnewCheck check = CheckMadeAnew(doc, fuzz::QuietServices(), mission, {});
  const std::string written = Written(doc);
  if (check.KeepsMeaning && IsInForm(read.Missions[0])) RequireStable(read, written);
  return 0;
}
