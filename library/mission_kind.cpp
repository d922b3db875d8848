#include "library/mission_kind.h"

#include <algorithm>
#include <array>
#include <vector>

#include "library/facts.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

std::vector<std::string_view> PartsOf(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const auto end = std::find_if(path.begin(), path.end(), IsSeparator);
    const auto length = static_cast<std::size_t>(end - path.begin());
    if (length > 0) parts.push_back(path.substr(0, length));
    path.remove_prefix(std::min(path.size(), length + 1));
  }
  return parts;
}

}  // namespace

std::string_view KindWord(MissionKind kind) {
  constexpr std::array<std::string_view, 5> kWords = {"", "single", "campaign", "coop", "dogfight"};
  return kWords[static_cast<std::size_t>(kind)];
}

MissionKind KindOfFolder(std::string_view folder) {
  const auto parts = PartsOf(folder);
  const auto is = [&](std::size_t i, std::string_view name) {
    return i < parts.size() && EqualNoCase(parts[i], name);
  };
  for (std::size_t i = parts.size(); i-- > 0;) {
    if (!is(i, "missions")) continue;
    if (is(i + 1, "single")) return MissionKind::Single;
    if (is(i + 1, "campaign")) return MissionKind::Campaign;
    if (is(i + 1, "net") && is(i + 2, "coop")) return MissionKind::Coop;
    if (is(i + 1, "net") && is(i + 2, "dogfight")) return MissionKind::Dogfight;
  }
  return MissionKind::Unknown;
}

MissionKind GuessedKind(const MissionFacts& facts) {
  if (facts.HomeBases > 0) return MissionKind::Dogfight;
  if (facts.PlayerFlight() != nullptr) return MissionKind::Single;
  const bool isOpen = std::any_of(facts.Flights.begin(), facts.Flights.end(),
                                  [](const FlightFacts& flight) { return !flight.OnlyAI; });
  return isOpen ? MissionKind::Coop : MissionKind::Unknown;
}

}  // namespace rws
