#include <algorithm>
#include <string>

#include "library/checking.h"
#include "mission/kept_flights.h"
#include "mission/pending_lines.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

/** What only a later game reads, and what only keeping the lines saves. */
namespace rws {

namespace {

/** The words of a home base that a game before 4.10 reads. */
constexpr std::size_t kOldBaseWords = 5;

bool HasSuffix(std::string_view word) {
  return word.find('_') != word.npos || EqualNoCase(word, "TRIGGERS");
}

/** Words of routes that came with 4.11 and later. */
void CheckLaterRoutes(Checking& check) {
  for (const auto& flight : check.Wing) {
    const auto* route = RouteOf(check.Text, flight.Name);
    for (std::size_t i = route ? route->First : 0; route && i < route->Last; ++i) {
      const auto word = KeyOf(check.Text.Lines()[i]).Key;
      if (!HasSuffix(word)) continue;
      check.Tell(Severity::Warning, "later-game", {route, flight.Name, -1, -1, i},
                 check.Quoted(word) +
                     " came with game 4.11, and by its tables yours is older: it flies another "
                     "route.");
      break;
    }
  }
}

void CheckLaterLists(Checking& check) {
  for (std::size_t base = 0; base < check.Bases.size(); ++base) {
    const auto* section = AircraftSection(check.Text, base);
    for (std::size_t i = section ? section->First : 0; section && i < section->Last; ++i)
      if (KeyOf(check.Text.Lines()[i]).Key.starts_with('+')) {
        check.Tell(Severity::Warning, "later-game", {section, "", -1, -1, i},
                   "Lines that begin with + came with game 4.12, and by its tables yours is "
                   "older.");
        break;
      }
  }
}

void CheckOf410(Checking& check) {
  for (const std::string_view name : {"SEASON", "WEATHER", "MDS"})
    if (const auto* section = check.Text.Find(name))
      check.Tell(Severity::Note, "later-game", {section, "", -1, -1, section->Header},
                 "[" + std::string(name) +
                     "] came with game 4.10, and by its tables yours is older: it ignores the "
                     "section.");
  for (const auto line : check.Bases)
    if (KeptWords(check.Text.Lines()[line]).size() > kOldBaseWords) {
      check.Tell(Severity::Note, "later-game", {check.Text.Find("BornPlace"), "", -1, -1, line},
                 "By its tables your game is older than 4.10: it reads the first five words of a "
                 "home base.");
      break;
    }
  if (check.Mission.Kind != MissionKind::Dogfight) return;
  if (const auto* wing = check.Text.Find("Wing"); wing && !check.Wing.empty())
    check.Tell(Severity::Warning, "later-game", {wing, "", -1, -1, wing->Header},
               "Before game 4.10 a dogfight had no flights, and by its tables yours is older: it "
               "ignores them.");
}

}  // namespace

void CheckAge(Checking& check) {
  if (check.Tables.Age() == GameAge::Since411) return;
  CheckLaterRoutes(check);
  CheckLaterLists(check);
  if (check.Tables.Age() == GameAge::Before410) CheckOf410(check);
}

void CheckRewriting(Checking& check) {
  Mission mission;
  mission.Lines = mission.AsRead = check.Mission.Lines;
  mission.KeepsLines = true;
  mission.FileName = "x.mis";
  MadeAnewCheck anew;
  if (!ResumeNext(
          [&] { anew = CheckMadeAnew(check.Tables.Maps(), check.Tables.Quiet(), mission, {}); }) ||
      anew.KeepsMeaning)
    return;
  check.Tell(Severity::Note, "made-anew", {},
             "Made anew, the file would not be the same mission: " + GroupedNumber(anew.Lines) +
                 (anew.Lines == 1 ? " line differs." : " lines differ.") +
                 " Keep the lines that you do not edit.");
}

}  // namespace rws
