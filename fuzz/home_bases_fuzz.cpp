#include <algorithm>

#include "editors/logic/home_bases.h"
#include "fuzz/support.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/reader.h"
#include "mission/writer.h"
#include "services/numbers.h"
#include "services/text.h"

/** Reads home bases and their aircraft, moves aircraft between the lists of the editor, and writes
    them. */

namespace {

using namespace rws;

Document Read(const std::string& bytes) {
  Document doc = fuzz::OneMission();
  ReadMissionText(doc, fuzz::QuietServices(), 0, bytes);
  return doc;
}

std::string Written(const Mission& mission) {
  LineArray lines;
  NewBornPlace(fuzz::QuietServices(), lines, mission);
  return lines.FileText();
}

/** Its aircraft neither open a section nor would be taken for one, nor begin with a number: the
    reader takes the first of them for a base, and gets as far as the number. */
bool IsPlain(const BornPlace& base) {
  for (const auto& plane : base.Planes)
    if (IsNumeric(SplitAt(plane, ' ')[0]) || plane.find_first_of("[]") != plane.npos ||
        ContainsNoCase(plane, "bornplace") || ContainsNoCase(plane, "_way") ||
        ContainsNoCase(plane, "planes "))
      return false;
  return base.HasNumbers;
}

void ReadAnew(const std::string& bytes) {
  const Document doc = Read(bytes);
  const Mission& mission = doc.Missions[0];
  if (mission.BornPlaces.empty()) return;
  for (const auto& base : mission.BornPlaces)
    if (!IsPlain(base)) return;
  // A section of aircraft behind several bases cuts them to the first one.
  const auto hasAircraft = [](const BornPlace& base) { return !base.Planes.empty(); };
  const auto& bases = mission.BornPlaces;
  if (bases.size() > 1 && std::any_of(bases.begin(), bases.end(), hasAircraft)) return;
  // A section takes its end from the next one.
  const std::string written = Written(mission);
  const Document again = Read("[MAIN]\r\n[Wing]\r\n" + written + "[end]\r\n");
  fuzz::RequireSame(Written(again.Missions[0]), written,
                    "Home bases are read as they were written.");
}

std::vector<DogFightPlane> Table() {
  return {{"Spitfire", "SpitfireMkIX", "R", false}, {"Me 109", "Bf-109G-6", "R", true}};
}

/** Every aircraft out and in again by the editor's lists. */
void MoveAll(Mission& mission) {
  const CodePage& page = fuzz::QuietServices().Page;
  for (auto& base : mission.BornPlaces) {
    auto table = Table();
    const auto before = FillHomeBase(table, base, page, UnknownAircraft::Spelled);
    MoveKeptAircraft(table, base, kAvailable, {"Spitfire"});
    for (const auto& plane : base.Planes)
      fuzz::Require(plane != "SpitfireMkIX", "What is moved away is gone.");
    FillHomeBase(table, base, page);
    MoveAircraft(table, base, kReserve, {"Me 109"});
    EraseIfDefault(table, base, before[kAvailable]);
    const int radius = ShownRadius(base.Radius);
    fuzz::Require(radius >= kLeastRadius && radius <= kLargestRadius, "A size can be shown.");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(fuzz::TextOf(data, size));
  ReadAnew("[MAIN]\r\n[Wing]\r\n" + bytes + "\r\n[end]\r\n");
  Document doc = fuzz::OneMission();
  Mission& mission = doc.Missions[0];
  ReadKeptMission(doc, fuzz::QuietServices(), mission, bytes);
  MoveAll(mission);
  LineArray lines;
  if (!BuildKeptFile(doc, fuzz::QuietServices(), mission, lines)) return 0;
  Mission again = mission;
  again.Lines = lines;
  ReadKeptRecords(doc, fuzz::QuietServices(), again);
  for (std::size_t i = 0; i < mission.BornPlaces.size(); ++i)
    fuzz::Require(again.BornPlaces.at(i).Planes.size() == mission.BornPlaces[i].Planes.size(),
                  "All aircraft are written.");
  return 0;
}
