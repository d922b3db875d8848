#include <algorithm>
#include <string>

#include "library/checking.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr int kMostArmy = 16, kLeastRadius = 500, kMostRadius = 10'000;

std::optional<int> WholeAt(const std::vector<KeptWord>& words, std::size_t place) {
  return place < words.size() ? StrictWhole(words[place].Text) : std::nullopt;
}

void CheckBaseLine(Checking& check, std::size_t line, bool isDogfight) {
  const auto words = KeptWords(check.Text.Lines()[line]);
  const FindingPlace place{check.Text.Find("BornPlace"), "", -1, -1, line};
  if (!WholeAt(words, 2) || !WholeAt(words, 3))
    check.Tell(isDogfight ? Severity::Error : Severity::Warning, "base-place", place,
               "The place of the home base is no two whole numbers: the game puts it at 0 and "
               "leaves it out.");
  const auto army = WholeAt(words, 0);
  if (!army || *army < 0 || *army > kMostArmy)
    check.Tell(Severity::Warning, "base-army", place,
               "The army of the home base is no whole number from 0 to 16.");
  const auto radius = WholeAt(words, 1);
  if (!radius)
    check.Tell(Severity::Warning, "base-radius", place,
               "The radius of the home base is no whole number: the game takes 1000 m.");
  else if (*radius < kLeastRadius || *radius > kMostRadius)
    check.Tell(Severity::Note, "base-radius", place,
               "The game keeps radiuses of home bases from 500 to 10000 m.");
}

void CheckAircraftList(Checking& check, const KeptSection& section) {
  std::size_t listed = 0, known = 0;
  for (std::size_t i = section.First; i < section.Last; ++i) {
    const auto words = KeptWords(check.Text.Lines()[i]);
    if (words.empty()) continue;
    const FindingPlace place{&section, "", -1, -1, i};
    if (words[0].Text[0] == '+') {
      if (listed == 0)
        check.Tell(Severity::Error, "base-list", place,
                   "A line that goes on with no line before it: the game loses this home base and "
                   "all behind it.");
      continue;
    }
    ++listed;
    if (words.size() > 1 && !StrictWhole(words[1].Text))
      check.Tell(Severity::Error, "base-list", place,
                 check.Quoted(words[1].Text) +
                     " is no whole number of planes: the game loses this home base and all behind "
                     "it.");
    if (check.Tables.HasBasePlane(words[0].Text))
      ++known;
    else
      check.Tell(Severity::Note, "base-aircraft", place,
                 "The tables lack the aircraft " + check.Quoted(words[0].Text) +
                     ": a game without it does not offer it.");
  }
  if (listed > 0 && known == 0)
    check.Tell(Severity::Warning, "base-empty", {&section, "", -1, -1, section.Header},
               "The tables have none of the home base's aircraft: the game offers all that can be "
               "flown instead.");
}

/** The number of the home base that a section belongs to; nothing for other sections. */
std::optional<int> BaseNumber(std::string_view name) {
  for (const std::string_view start : {"BornPlaceCountries", "BornPlace"})
    if (name.size() > start.size() && EqualNoCase(name.substr(0, start.size()), start))
      if (const auto number = StrictWhole(name.substr(start.size()))) return number;
  return {};
}

}  // namespace

void CheckHomeBases(Checking& check) {
  const bool isDogfight = check.Mission.Kind == MissionKind::Dogfight;
  for (const auto line : check.Bases) CheckBaseLine(check, line, isDogfight);
  for (std::size_t i = 0; i < check.Bases.size(); ++i)
    if (const auto* section = AircraftSection(check.Text, i)) CheckAircraftList(check, *section);
  for (const auto& section : check.Text.Sections()) {
    const auto number = BaseNumber(section.Name);
    if (number && static_cast<std::size_t>(*number) >= check.Bases.size())
      check.Tell(Severity::Note, "base-number", {&section, "", -1, -1, section.Header},
                 "There is no home base of this number: the game never reads the section.");
  }
  if (isDogfight && !check.Mission.KindGuessed && check.Bases.empty())
    check.Tell(Severity::Error, "no-base", {},
               "There is no home base: nobody can join the dogfight.");
}

}  // namespace rws
