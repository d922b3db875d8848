#include <algorithm>
#include <map>
#include <set>

#include "library/checking.h"
#include "library/columns.h"
#include "services/text.h"

/** What holds for lines and sections of every kind, and what lies beside the mission. */
namespace rws {

namespace {

/** The game sends the lengths of both in one byte. */
constexpr std::size_t kLongest = 255;

/** The sections whose lines are keys and values, of which the first of a name counts. */
bool IsKeyed(const Checking& check, const KeptSection& section) {
  for (const std::string_view name : {"MAIN", "SEASON", "WEATHER", "MDS", "RespawnTime"})
    if (EqualNoCase(section.Name, name)) return true;
  return std::any_of(check.Wing.begin(), check.Wing.end(),
                     [&](const WingFlight& flight) { return flight.Section == &section; });
}

void CheckKeys(Checking& check, const KeptSection& section) {
  if (!check.Text.IsFirst(section)) return;
  std::set<std::string> keys;
  for (std::size_t i = section.First; i < section.Last; ++i) {
    const auto key = KeyOf(check.Text.Lines()[i]).Key;
    if (!key.empty() && !keys.insert(LowerKey(key)).second)
      check.Tell(Severity::Warning, "double-key", {&section, "", -1, -1, i},
                 check.Quoted(key) + " stands twice in [" +
                     check.Tables.Page().ToUtf8(section.Name) + "]: the game reads the first one.");
  }
}

void CheckHeader(Checking& check, const KeptSection& section) {
  const FindingPlace place{&section, "", -1, -1, section.Header};
  if (!check.Text.IsFirst(section))
    check.Tell(Severity::Warning, "double-section", place,
               "There are two sections [" + check.Tables.Page().ToUtf8(section.Name) +
                   "]: the game reads the first one.");
  if (section.Name.front() == ' ' || section.Name.back() == ' ' || section.Name.front() == '\t' ||
      section.Name.back() == '\t')
    check.Tell(Severity::Warning, "header-blank", place,
               "Blanks inside the brackets belong to the name: the game does not know this "
               "section.");
}

/** A name of a picture that holds what begins a comment is cut there. */
void CheckCut(Checking& check, const WingFlight& flight) {
  if (!flight.Section) return;
  for (std::size_t i = flight.Section->First; i < flight.Section->Last; ++i) {
    const std::string_view line = check.Text.Lines()[i];
    const auto key = KeyOf(line);
    if (key.Key.empty()) continue;
    const std::size_t cut = std::min(
        {line.find('#', key.ValueAt), line.find(';', key.ValueAt), line.find("//", key.ValueAt)});
    // What stands behind a blank is a comment, and meant as one.
    if (cut < key.ValueAt + key.Value.size())
      check.Tell(Severity::Warning, "cut", {flight.Section, flight.Name, -1, -1, i},
                 "The game reads the value of " + check.Quoted(key.Key) + " only up to its \"" +
                     line[cut] + "\", which begins a comment.");
  }
}

void CheckLengths(Checking& check) {
  const bool isSent =
      check.Mission.Kind == MissionKind::Coop || check.Mission.Kind == MissionKind::Dogfight;
  if (!isSent) return;
  const auto& lines = check.Text.Lines();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].size() <= kLongest) continue;
    const auto key = KeyOf(lines[i]);
    if (key.Key.size() <= kLongest && key.Value.size() <= kLongest) continue;
    check.Tell(Severity::Error, "long-line", {nullptr, "", -1, -1, i},
               "The line is longer than 255 characters: a host cannot send the mission.");
  }
}

void CheckBriefing(Checking& check) {
  const std::string& path = check.Mission.Path;
  const std::size_t end = path.find_last_of('.');
  const std::size_t begin = path.find_last_of("/\\") + 1;
  if (end == path.npos || end < begin) return;
  const std::string base = path.substr(begin, end - begin), own = base + ".properties";
  const std::string& briefing = check.Mission.Briefing;
  if (briefing.empty())
    check.Tell(Severity::Note, "briefing", {},
               "There is no briefing \"" + PathText(check.Tables.Page(), own) + "\".");
  else if (briefing != own && FoldName(briefing) == FoldName(own))
    check.Tell(Severity::Note, "briefing-case", {},
               "The briefing \"" + PathText(check.Tables.Page(), briefing) +
                   "\" has not the letter case of the mission: where that counts it is not found.");
}

void CheckSound(Checking& check) {
  const auto sound = check.ValueOf(check.Main, "briefSound");
  if (sound.Value.value_or("").empty() || check.GamePath.empty()) return;
  const std::string path = check.Tables.Page().ToUtf8(*sound.Value);
  if (check.Game.HasFile(check.GamePath, path)) return;
  check.Tell(Severity::Warning, "sound", {&check.Main, "", -1, -1, sound.Line},
             "The game's folder has no sound \"" + path + "\".");
}

}  // namespace

void CheckTexts(Checking& check) {
  CheckBriefing(check);
  CheckSound(check);
}

void CheckSections(Checking& check) {
  for (const auto& section : check.Text.Sections()) {
    CheckHeader(check, section);
    if (IsKeyed(check, section)) CheckKeys(check, section);
  }
  for (const auto& flight : check.Wing) CheckCut(check, flight);
  CheckLengths(check);
}

}  // namespace rws
