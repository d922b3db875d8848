#include "tests/robot/action.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <sstream>

namespace rws::robot {

namespace {

struct Named {
  const char* Name;
  unsigned Weight;
};

/** In the order of `Kind`. */
constexpr Named kKinds[] = {{"click", 20}, {"row", 12},   {"drag", 10},    {"wheel", 3},
                            {"key", 14},   {"type", 8},   {"shortcut", 7}, {"menu", 12},
                            {"close", 4},  {"resize", 2}, {"outside", 3},  {"timers", 5}};
static_assert(std::size(kKinds) == static_cast<std::size_t>(Kind::Count));

Kind KindOf(unsigned dice) {
  std::size_t kind = 0;
  while (dice >= kKinds[kind].Weight) dice -= kKinds[kind++].Weight;
  return static_cast<Kind>(kind);
}

}  // namespace

Episode MakeEpisode(std::uint32_t seed, std::size_t actions) {
  // Its numbers are the same everywhere; those of the distributions are not.
  std::mt19937 engine(seed);
  unsigned weights = 0;
  for (const auto& kind : kKinds) weights += kind.Weight;
  Episode episode{static_cast<std::uint32_t>(engine()), {}};
  for (std::size_t i = 0; i < actions; ++i) {
    Action action{KindOf(static_cast<unsigned>(engine() % weights)), {}};
    for (auto& number : action.N) number = static_cast<std::uint32_t>(engine() >> 8);
    episode.Actions.push_back(action);
  }
  return episode;
}

std::string ToText(const Episode& episode) {
  std::ostringstream text;
  text << "setup " << episode.Setup << '\n';
  for (const auto& action : episode.Actions) {
    text << kKinds[static_cast<std::size_t>(action.What)].Name;
    for (const auto number : action.N) text << ' ' << number;
    text << '\n';
  }
  return text.str();
}

Episode FromText(const std::string& text) {
  std::istringstream lines(text);
  Episode episode;
  std::string word;
  if (!(lines >> word >> episode.Setup) || word != "setup") return {};
  while (lines >> word) {
    const auto kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                   [&](const Named& named) { return word == named.Name; });
    Action action;
    for (auto& number : action.N) lines >> number;
    if (kind == std::end(kKinds) || !lines) return {};
    action.What = static_cast<Kind>(kind - kKinds);
    episode.Actions.push_back(action);
  }
  return episode;
}

}  // namespace rws::robot
