#include "mission/references.h"

#include <algorithm>
#include <functional>

#include "mission/kept_keys.h"
#include "mission/kept_text.h"
#include "mission/route_line.h"

namespace rws {

namespace {

/** "[Target]" lines have the object's name behind its index, as their ninth word or not at all. */
constexpr std::size_t kTargetWord = 9;

/** Calls `visit` with what names one of the flights: the line, the place of the name, and where it
    is. */
template <class AnyMission>
void ForEachReference(
    AnyMission& mission, const FlightNames& names,
    const std::function<void(const WordLine& line, std::size_t place, const std::string& where,
                             const std::function<void(const std::string&)>& set)>& visit) {
  const auto look = [&](std::string_view text, std::size_t place, const auto& where,
                        const std::function<void(const std::string&)>& set) {
    const WordLine line(text);
    if (names.contains(line.Word(place))) visit(line, place, where(), set);
  };
  for (auto& flight : mission.Flights)
    for (std::size_t i = 0; i < flight.Waypoints.size(); ++i)
      look(
          flight.Waypoints[i].Line, RouteLine::kTarget,
          [&] { return "route of " + flight.Name + ", waypoint " + std::to_string(i); },
          [&](const std::string& text) {
            if constexpr (!std::is_const_v<AnyMission>) flight.Waypoints[i].Line = text;
          });
  const LineArray lines = mission.Lines;
  const KeptText text(lines);
  const auto* targets = text.Find("Target");
  for (std::size_t i = targets ? targets->First : 0; targets && i < targets->Last; ++i)
    look(
        lines[i], kTargetWord,
        [&] { return "target " + std::to_string(i - targets->First + 1) + " of the mission"; },
        [&](const std::string& line) {
          if constexpr (!std::is_const_v<AnyMission>) mission.Lines.Set(i, line);
        });
}

}  // namespace

std::map<std::string, std::vector<std::string>> References(const Mission& mission,
                                                           const FlightNames& names) {
  std::map<std::string, std::vector<std::string>> places;
  ForEachReference(mission, names,
                   [&](const WordLine& line, std::size_t place, const std::string& where,
                       const auto&) { places[std::string(line.Word(place))].push_back(where); });
  return places;
}

std::vector<std::string> References(const Mission& mission, const std::string& flightName) {
  return References(mission, FlightNames{flightName})[flightName];
}

void RenameReferences(Mission& mission, const std::string& from, const std::string& to) {
  ForEachReference(mission, {from},
                   [&](WordLine line, std::size_t place, const std::string&, const auto& set) {
                     line.Set(place, to);
                     set(line.Text());
                   });
}

}  // namespace rws
