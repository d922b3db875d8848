#include "fuzz/edits.h"
#include "fuzz/support.h"
#include "mission/carry_edits.h"
#include "mission/kept_reader.h"
#include "mission/reader.h"
#include "session/frozen.h"
#include "session/packing.h"

/** Edits a mission, keeps its moments as the history does, and goes from one to the other. */

namespace {

using namespace rws;

Mission Read(Document& doc, std::string bytes, bool keeps) {
  Mission& mission = doc.Missions[0];
  if (keeps)
    ReadKeptMission(doc, fuzz::QuietServices(), mission, std::move(bytes));
  else
    ReadMissionText(doc, fuzz::QuietServices(), 0, std::move(bytes));
  return mission;
}

void RequireMoments(const Mission& read, const Mission& edited, const Mission& other) {
  const FrozenMission from = Freeze(read, nullptr), to = Freeze(edited, from);
  fuzz::Require(fuzz::ContentOf(Thaw(*to)) == fuzz::ContentOf(edited), "A moment is kept whole.");
  fuzz::Require(Freeze(edited, to) == to, "The same moment takes no memory.");
  fuzz::Require(SameContent(*from, *to) == (fuzz::ContentOf(read) == fuzz::ContentOf(edited)),
                "What has changed is told.");
  fuzz::Require(fuzz::ContentOf(Patched(read, *from, *to)) == fuzz::ContentOf(edited),
                "An edit is done again.");
  fuzz::Require(fuzz::ContentOf(Patched(edited, *to, *from)) == fuzz::ContentOf(read),
                "An edit is undone.");
  fuzz::Require(fuzz::ContentOf(Patched(other, *from, *from)) == fuzz::ContentOf(other),
                "What is not edited stays.");
  Rebased(to, *from, *Freeze(other, from));
  Patched(other, *from, *to);
}

void RequirePacked(const Mission& mission) {
  const std::string packed = PackMission(mission);
  const Mission again = UnpackMission(packed);
  fuzz::Require(fuzz::ContentOf(again) == fuzz::ContentOf(mission) && PackMission(again) == packed,
                "Edits on disk are the edits.");
}

std::string NamesOf(const Mission& mission) {
  std::string names;
  for (const auto& flight : mission.Flights) names.append(flight.Name).append(1, '\n');
  return names;
}

/** Edits go along to the other way of reading, or all is as it was. */
void RequireCarried(const Document& doc, const Mission& read, const Mission& edited) {
  Mission mission = edited;
  const std::string reason =
      SetKeepsLines(doc, fuzz::QuietServices(), mission, !edited.KeepsLines, read);
  fuzz::Require(reason.empty() || fuzz::ContentOf(mission) == fuzz::ContentOf(edited),
                "A mission that cannot be read the other way is as it was.");
  if (!reason.empty()) return;
  // Of a file that is no mission each reading may find other flights.
  const Mission fresh = FreshlyRead(doc, fuzz::QuietServices(), mission);
  if (NamesOf(fresh) == NamesOf(read))
    fuzz::RequireSame(NamesOf(mission), NamesOf(edited), "No flight is left behind.");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // The edits are chosen by the end of the input.
  const std::size_t chosen = std::min<std::size_t>(size, 40);
  FuzzedDataProvider choices(data + size - chosen, chosen);
  Document doc = fuzz::OneMission();
  const bool keeps = choices.ConsumeBool();
  const Mission read = Read(doc, std::string(fuzz::TextOf(data, size - chosen)), keeps);
  if (!read.Loaded) return 0;
  Mission edited = read, other = read;
  fuzz::EditSomehow(choices, edited);
  fuzz::EditSomehow(choices, other);
  RequireMoments(read, edited, other);
  RequirePacked(edited);
  RequireCarried(doc, read, edited);
  return 0;
}
