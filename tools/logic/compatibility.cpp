#include "tools/logic/compatibility.h"

#include <algorithm>
#include <initializer_list>
#include <set>
#include <string_view>

#include "mission/flight_values.h"
#include "services/faults.h"

namespace rws {

namespace {

/** The sentences of the findings of some kinds, each once. */
std::set<std::string> Sentences(const CheckedMission& checked, const CodePage& page,
                                std::initializer_list<std::string_view> kinds) {
  std::set<std::string> sentences;
  for (const auto& finding : checked.Findings)
    if (std::find(kinds.begin(), kinds.end(), finding.Kind) != kinds.end())
      sentences.insert(
          (finding.Flight.empty() ? "" : "Flight " + page.ToUtf8(finding.Flight) + ": ") +
          finding.Text);
  return sentences;
}

Suitability Row(const std::string& usual, const std::set<std::string>& sentences,
                const std::string& what) {
  constexpr std::size_t kMost = 12;
  Suitability row{usual, ""};
  if (sentences.empty()) return row;
  row.Text = what;
  std::size_t told = 0;
  for (const auto& sentence : sentences) {
    if (told++ == kMost) break;
    row.Warning += (row.Warning.empty() ? "" : "\n") + sentence;
  }
  if (sentences.size() > kMost)
    row.Warning += "\nand " + std::to_string(sentences.size() - kMost) + " more";
  return row;
}

std::string Counted(std::size_t count, const char* one, const char* several) {
  return std::to_string(count) + (count == 1 ? one : several);
}

}  // namespace

std::array<Suitability, 3> SuitabilityOf(const Session& session, const Mission& mission,
                                         const CheckedMission& checked) {
  const CodePage& page = session.Services.Page;
  std::set<std::string_view> squadrons, classes;
  for (const auto& flight : mission.Flights) {
    if (flight.Name.size() > 2) squadrons.insert(GroupOf(flight.Name));
    classes.insert(flight.Class);
  }
  const auto known = [&](std::size_t count, const char* one, const char* several) {
    if (!checked.FaultText.empty()) return checked.FaultText;
    return count == 0 ? "No flights" : Counted(count, one, several);
  };
  const auto unknownSquadrons = Sentences(checked, page, {"squadron", "flight-name"});
  const auto unknownAircraft =
      Sentences(checked, page, {"aircraft", "no-aircraft", "loadout", "parked", "base-aircraft"});
  const auto unknownMap = Sentences(checked, page, {"map", "no-map", "no-main"});
  const std::string map = mission.MapName.empty() ? mission.MapPath : mission.MapName;
  return {
      Row(known(squadrons.size(), " squadron, known to the game",
                " squadrons, all known to the game"),
          unknownSquadrons, "Squadrons that the game may not know"),
      Row(known(classes.size(), " aircraft, known to the game", " aircraft, all known to the game"),
          unknownAircraft, "Aircraft or loadouts that the game may not have"),
      Row(page.ToUtf8(map), unknownMap, "Map that the game may not have: " + page.ToUtf8(map))};
}

}  // namespace rws
