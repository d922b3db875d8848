#include <algorithm>
#include <string>

#include "library/checking.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

/** Places of words in lines of parked and standing objects. */
constexpr std::size_t kClass = 1, kSkill = 8, kSlowFire = 9;
constexpr std::string_view kParked = "vehicles.planes.Plane$";

/** Calls `visit` with each line of a section that is not blank. */
template <class Visit>
void ForEachLine(const Checking& check, std::string_view name, Visit visit) {
  const auto* section = check.Text.Find(name);
  std::vector<KeptWord> words;
  for (std::size_t i = section ? section->First : 0; section && i < section->Last; ++i) {
    KeptWordsInto(words, check.Text.Lines()[i]);
    if (!words.empty()) visit(*section, i, words);
  }
}

void CheckStatic(Checking& check, const KeptSection& section, std::size_t line,
                 const std::vector<KeptWord>& words, std::size_t shift) {
  const auto word = [&](std::size_t place) {
    return place - shift < words.size() ? words[place - shift].Text : std::string_view();
  };
  const FindingPlace place{&section, "", -1, -1, line};
  const auto planeClass = word(kClass);
  if (planeClass.starts_with(kParked) && !check.Tables.HasParked(planeClass.substr(kParked.size())))
    check.Tell(Severity::Warning, "parked", place,
               "The tables lack the parked aircraft " +
                   check.Quoted(planeClass.substr(kParked.size())) +
                   ": a game without it leaves it out.");
  if (word(kSkill).empty()) return;
  const auto skill = StrictWhole(word(kSkill));
  const auto slow = ParseNumber(word(kSlowFire));
  const bool isSlowRight = word(kSlowFire).empty() || (slow && *slow >= 0.5 && *slow <= 100);
  if (skill && *skill >= 0 && *skill <= 3 && isSlowRight) return;
  check.Tell(Severity::Error, "object-words", place,
             "The ninth word is to be from 0 to 3 and the tenth from 0.5 to 100: the game leaves "
             "the object out.");
}

void CheckStatics(Checking& check) {
  std::unordered_set<std::string_view> names;
  ForEachLine(
      check, "NStationary",
      [&](const KeptSection& section, std::size_t line, const std::vector<KeptWord>& words) {
        CheckStatic(check, section, line, words, 0);
        if (!names.insert(words[0].Text).second)
          check.Tell(Severity::Error, "double-object", {&section, "", -1, -1, line},
                     "The name " + check.Quoted(words[0].Text) +
                         " is used twice: the game leaves the second object out.");
      });
  ForEachLine(
      check, "Stationary",
      [&](const KeptSection& section, std::size_t line, const std::vector<KeptWord>& words) {
        CheckStatic(check, section, line, words, 1);
      });
}

void CheckRoad(Checking& check, const KeptSection& section, std::size_t line,
               const std::vector<KeptWord>& words) {
  const std::string_view name = words[0].Text;
  const FindingPlace place{&section, "", -1, -1, line};
  const auto* road = check.Text.Find(std::string(name) + "_Road");
  if (!road) {
    check.Tell(Severity::Error, "no-road", place,
               check.Quoted(name) + " has no road: the game leaves it out.");
    return;
  }
  std::size_t points = 0;
  for (std::size_t i = road->First; i < road->Last; ++i)
    points += KeyOf(check.Text.Lines()[i]).Key.empty() ? 0 : 1;
  if (points < 2)
    check.Tell(Severity::Warning, "short-road", {road, "", -1, -1, road->Header},
               "A road needs two points at least.");
}

void CheckChiefs(Checking& check) {
  std::unordered_set<std::string_view> names;
  ForEachLine(
      check, "Chiefs",
      [&](const KeptSection& section, std::size_t line, const std::vector<KeptWord>& words) {
        CheckRoad(check, section, line, words);
        if (!names.insert(words[0].Text).second)
          check.Tell(Severity::Warning, "double-object", {&section, "", -1, -1, line},
                     "The name " + check.Quoted(words[0].Text) +
                         " is used twice: the last one answers to it.");
      });
}

void CheckRockets(Checking& check) {
  constexpr std::size_t kWithTarget = 11;
  ForEachLine(
      check, "Rocket",
      [&](const KeptSection& section, std::size_t line, const std::vector<KeptWord>& words) {
        if (words.size() < kWithTarget)
          check.Tell(Severity::Note, "rocket", {&section, "", -1, -1, line},
                     "The rocket has no target: it never starts.");
      });
}

/** Behind how many words a line of "[Target]" names its object, by its kind; 0 for never. */
bool NamesObject(int kind) { return kind == 0 || kind == 2 || kind == 4 || kind == 5 || kind == 7; }

void CheckTargetLine(Checking& check, const FindingPlace& place,
                     const std::vector<KeptWord>& words) {
  constexpr std::size_t kX = 5, kY = 6, kRadius = 7, kName = 9;
  const auto kind = words.empty() ? std::nullopt : StrictWhole(words[0].Text);
  for (const auto number : {kX, kY, kRadius})
    if (number < words.size() && !StrictWhole(words[number].Text)) {
      check.Tell(Severity::Warning, "target-place", place,
                 check.Quoted(words[number].Text) +
                     " is no whole number: the game puts the target elsewhere.");
      break;
    }
  if (!kind || !NamesObject(*kind)) return;
  if (words.size() <= kName)
    check.Tell(Severity::Warning, "target-object", place,
               "The target names no object: it is never met.");
  else if (!check.HasObject(words[kName].Text))
    check.Tell(
        Severity::Warning, "target-object", place,
        "The mission has no " + check.Quoted(words[kName].Text) + ": the target is never met.");
}

}  // namespace

bool Checking::HasObject(std::string_view name) {
  if (!objects_) {
    objects_.emplace();
    for (const auto& flight : Wing) objects_->insert(flight.Name);
    for (const std::string_view section : {"Chiefs", "NStationary", "Rocket"})
      ForEachLine(*this, section,
                  [&](const KeptSection&, std::size_t, const std::vector<KeptWord>& words) {
                    objects_->insert(words[0].Text);
                  });
  }
  return objects_->contains(name) ||
         (name.starts_with("Bridge") && StrictWhole(name.substr(sizeof("Bridge") - 1)));
}

void CheckObjects(Checking& check) {
  CheckStatics(check);
  CheckChiefs(check);
  CheckRockets(check);
}

void CheckTargets(Checking& check) {
  ForEachLine(
      check, "Target",
      [&](const KeptSection& section, std::size_t line, const std::vector<KeptWord>& words) {
        CheckTargetLine(check, {&section, "", -1, -1, line}, words);
      });
}

}  // namespace rws
