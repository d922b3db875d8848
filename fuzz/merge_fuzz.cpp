#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "fuzz/edits.h"
#include "fuzz/support.h"
#include "mission/kept_flights.h"
#include "mission/kept_keys.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/kept_text.h"
#include "services/text.h"

/** Edits a mission and merges the edits into its lines. What no edit is about must stand in the new
    file as it stood in the old one, by another and a coarser way of telling than the program's own
    proof: section by section. */

namespace {

using namespace rws;

struct Whole {
  const KeptText& Text;
  /** Names in lower case; a flight's section may be that of its own name for another. */
  std::multimap<const KeptSection*, std::string> FlightsOf;
};

Whole SectionsOf(const KeptText& text) {
  Whole whole{text, {}};
  for (const auto* flight : FlightSections(text))
    for (const auto* section : SectionsOfFlight(text, *flight))
      whole.FlightsOf.emplace(section, LowerKey(flight->Name));
  return whole;
}

/** What of a mission was edited. */
struct Edits {
  bool Main = false, Bases = false;
  std::set<std::string> UntouchedFlights;  // names in lower case
};

std::string BytesOf(const LineArray& lines, std::size_t first, std::size_t last) {
  std::string bytes;
  for (std::size_t i = first; i < last; ++i) bytes.append(lines[i]).append("\n");
  return bytes;
}

/** The flights of the text that are as they were read, names in lower case. */
std::set<std::string> Untouched(const Mission& read, const Mission& edited) {
  std::set<std::string> untouched, seen;
  const auto content = [](const Flight& flight) {
    Mission only;
    only.Flights = {flight};
    std::string text = fuzz::ContentOf(only);
    // Two of the same waypoints may have changed places, and what stands between them.
    for (const auto& waypoint : flight.Waypoints) text += std::to_string(waypoint.KeptRow) + ' ';
    return text;
  };
  for (const auto& flight : edited.Flights) {
    const std::string name = LowerKey(flight.KeptName);
    // A copy is another flight.
    if (!seen.insert(name).second) continue;
    for (const auto& was : read.Flights)
      if (LowerKey(was.KeptName) == name && content(was) == content(flight)) untouched.insert(name);
  }
  return untouched;
}

/** A line whose key the records know, or that belongs to one of these, may be edited. */
bool MayChange(std::string_view line) {
  static const std::set<std::string, std::less<>> kKeys{
      "map",    "time",      "timeconstant", "weaponsconstant", "cloudtype", "cloudheight", "army",
      "player", "playernum", "briefsound",   "planes",          "onlyai",    "parachute",   "skill",
      "class",  "fuel",      "weapons",      "starttime"};
  const std::string key = LowerKey(KeyOf(line).Key);
  if (kKeys.contains(key)) return true;
  for (const char* pattern : {"skill#", "skin#", "noseart#", "pilot#", "numberon#"})
    if (Like(key, pattern)) return true;
  return false;
}

/** In a section with edited keys all other lines stay, in their order. */
void RequireOthersStay(const Whole& whole, const KeptSection& section, const std::string& merged) {
  std::size_t from = 0;
  for (std::size_t i = section.First; i < section.Last; ++i) {
    const std::string line = "\n" + std::string(whole.Text.Lines()[i]) + "\n";
    if (MayChange(line.substr(1, line.size() - 2))) continue;
    from = merged.find(line, from);
    fuzz::Require(from != merged.npos, "A line that no record knows stays.");
    from += line.size() - 1;
  }
}

/** True if two missions have the same in what `only` leaves of them. */
template <class Only>
bool AreSame(Mission a, Mission b, Only only) {
  only(a);
  only(b);
  return fuzz::ContentOf(a) == fuzz::ContentOf(b);
}

Edits EditsOf(const Mission& read, const Mission& edited) {
  Edits edits;
  edits.UntouchedFlights = Untouched(read, edited);
  edits.Main = !AreSame(read, edited, [](Mission& mission) {
    mission.Flights.clear();
    mission.BornPlaces.clear();
    mission.Lines = LineArray();
  });
  edits.Bases = !AreSame(read, edited, [](Mission& mission) {
    Mission only;
    only.BornPlaces = mission.BornPlaces;
    mission = only;
  });
  return edits;
}

void RequireKept(const Mission& read, const Mission& edited, const LineArray& result) {
  // A flight that got another name is named by it in lines of others already.
  const LineArray& lines = edited.Lines;
  const KeptText text(lines);
  const Whole whole = SectionsOf(text);
  const Edits edits = EditsOf(read, edited);
  const KeptSection main = MainSection(text);
  const std::string merged = "\n" + BytesOf(result, 0, result.size());
  for (const auto& section : text.Sections()) {
    const std::string name = LowerKey(section.Name);
    if (name == "wing") continue;
    const auto [first, last] = whole.FlightsOf.equal_range(&section);
    const bool ofFlights = std::any_of(
        first, last, [&](const auto& of) { return !edits.UntouchedFlights.contains(of.second); });
    const bool maybeOther = ofFlights || (edits.Bases && Contains(name, "bornplace"));
    // A text without "[MAIN]" has its values wherever they stand ahead of "[Wing]".
    const bool ofMain = section.First >= main.First && section.Last <= main.Last;
    if (!maybeOther && !(ofMain && edits.Main))
      // New lines go ahead of the blank ones at the end of a section.
      fuzz::RequireHolds(merged, "\n" + BytesOf(lines, section.Header, EndOfSection(text, section)),
                         "What no edit is about stays byte for byte.");
    else if (!maybeOther)
      RequireOthersStay(whole, section, merged);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Services& services = fuzz::QuietServices();
  // The edits are chosen by the end of the input.
  const std::size_t chosen = std::min<std::size_t>(size, 24);
  FuzzedDataProvider choices(data + size - chosen, chosen);
  Document doc = fuzz::OneMission();
  Mission edited;
  ReadKeptMission(doc, services, edited, std::string(fuzz::TextOf(data, size - chosen)));
  const Mission read = edited;
  fuzz::EditSomehow(choices, edited);
  LineArray result;
  std::string reason;
  if (!BuildKeptFile(doc, services, edited, result, &reason)) {
    fuzz::Require(!reason.empty(), "Who is refused is told why.");
    return 0;
  }
  Mission again = read;
  again.Lines = result;
  ReadKeptRecords(doc, services, again);
  fuzz::RequireSame(fuzz::EditedValues(again), fuzz::EditedValues(edited),
                    "What was edited is read again.");
  RequireKept(read, edited, result);
  return 0;
}
