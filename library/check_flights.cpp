#include <algorithm>
#include <set>
#include <string>

#include "library/checking.h"
#include "services/text.h"

namespace rws {

namespace {

/** What becomes of a flight that the game cannot read. */
constexpr std::string_view kDropped = ": the game drops this flight and all behind it.";

bool IsFlightDigit(char c) { return c >= '0' && c <= '3'; }

void CheckName(Checking& check, const WingFlight& flight) {
  const FindingPlace place{check.Text.Find("Wing"), flight.Name, -1, -1, flight.Line};
  const std::size_t size = flight.Name.size();
  if (size < 3 || !IsFlightDigit(flight.Name[size - 1]) || !IsFlightDigit(flight.Name[size - 2])) {
    check.Tell(Severity::Error, "flight-name", place,
               "The name " + check.Quoted(flight.Name) + " does not end in two digits from 0 to 3" +
                   std::string(kDropped));
    return;
  }
  const auto code = flight.Name.substr(0, size - 2);
  if (check.Tables.HasSquadron(code)) return;
  check.Tell(Severity::Error, "squadron", place,
             "The tables lack the squadron " + check.Quoted(code) +
                 " of this flight: a game without it drops the flight and all behind it.");
}

void CheckClass(Checking& check, const WingFlight& flight) {
  const auto value = check.ValueOf(*flight.Section, "Class");
  const FindingPlace place{flight.Section, flight.Name, -1, -1, value.Line};
  if (value.Value.value_or("").empty()) {
    check.Tell(Severity::Error, "no-aircraft", place,
               "No aircraft is named" + std::string(kDropped));
  } else if (flight.Class.empty()) {
    check.Tell(Severity::Error, "aircraft", place,
               "The class " + check.Quoted(*value.Value) + " does not begin with \"air.\"" +
                   std::string(kDropped));
  } else if (check.Tables.HasPlanes() && !flight.Plane) {
    check.Tell(Severity::Error, "aircraft", place,
               "The tables lack the aircraft " + check.Quoted(flight.Class) +
                   ": a game without it drops this flight and all behind it.");
  }
}

void CheckLoadout(Checking& check, const WingFlight& flight) {
  // It takes the place of the line.
  if (check.Text.Find(std::string(flight.Name) + "_weapons")) return;
  const auto value = check.ValueOf(*flight.Section, "weapons");
  const FindingPlace place{flight.Section, flight.Name, -1, -1, value.Line};
  if (value.Value.value_or("").empty()) {
    check.Tell(Severity::Warning, "no-loadout", place,
               "No loadout is named: the planes fly without any arms.");
    return;
  }
  if (!flight.Plane || flight.Plane->Loadouts.contains(check.Tables.Page().LCase(*value.Value)))
    return;
  check.Tell(Severity::Error, "loadout", place,
             "The tables lack the loadout " + check.Quoted(*value.Value) + " of the " +
                 check.Tables.Page().ToUtf8(flight.Plane->Name) +
                 ": a game without it drops this flight and all behind it.");
}

/** A whole number within bounds that the game keeps to by itself. */
void CheckBounded(Checking& check, const WingFlight& flight, std::string_view key, int least,
                  int most, std::string_view kind, std::string_view what, std::string_view usual) {
  const auto value = check.ValueOf(*flight.Section, key);
  if (!value.Value) return;
  const FindingPlace place{flight.Section, flight.Name, -1, -1, value.Line};
  const auto number = StrictWhole(*value.Value);
  const std::string told = std::string(what) + " " + check.Quoted(*value.Value);
  if (!number) {
    check.Tell(Severity::Warning, kind, place,
               told + " is no whole number: the game takes " + std::string(usual) + ".");
  } else if (*number < least || *number > most) {
    const std::string taken = std::to_string(std::clamp(*number, least, most));
    check.Tell(Severity::Warning, kind, place,
               told + " is not from " + std::to_string(least) + " to " + std::to_string(most) +
                   ": the game takes " + taken + ".");
    check.MendFlight(flight.Name, std::string(key) + "=" + taken);
  }
}

void CheckSkills(Checking& check, const WingFlight& flight) {
  constexpr int kMostSkill = 3;
  bool isOwn = false, isWhole = true;
  for (int i = 0; i < 4; ++i) {
    const auto value = check.ValueOf(*flight.Section, "Skill" + std::to_string(i));
    isOwn = isOwn || value.Value;
    isWhole = isWhole && (value.Value || i >= flight.Planes);
    const auto number = StrictWhole(value.Value.value_or("1"));
    if (number && *number >= 0 && *number <= kMostSkill) continue;
    const FindingPlace place{flight.Section, flight.Name, i, -1, value.Line};
    const std::string told = "The skill " + check.Quoted(*value.Value);
    if (!number) {
      check.Tell(Severity::Warning, "skill", place,
                 told + " is no whole number: the game takes that of the flight.");
      continue;
    }
    const std::string taken = std::to_string(std::clamp(*number, 0, kMostSkill));
    check.Tell(Severity::Warning, "skill", place,
               told + " is not from 0 to 3: the game takes " + taken + ".");
    if (i < flight.Planes)
      check.MendFlight(flight.Name, "plane[" + std::to_string(i) + "].Skill=" + taken);
  }
  const auto all = check.ValueOf(*flight.Section, "Skill");
  if (!isOwn) return CheckBounded(check, flight, "Skill", 0, kMostSkill, "skill", "The skill", "1");
  if (!all.Value && !isWhole)
    check.Tell(Severity::Note, "skill",
               {flight.Section, flight.Name, -1, -1, flight.Section->Header},
               "Some planes have no skill: the game makes them average.");
}

/** Told once of each, however many planes have it; `folder` is that of the plane's skins. */
void CheckPicture(Checking& check, const FindingPlace& place, std::string_view what,
                  std::string_view value, std::string_view folder, GameFiles::Has has) {
  if (has != GameFiles::Has::No || EqualNoCase(value, "default")) return;
  const std::string text = "The game's folders have no " +
                           std::string(what == "nose-art" ? "nose art" : what) + " " +
                           check.Quoted(value);
  // Each kind of aircraft has skins of its own.
  auto& missing = check.Missing[text + (what == "skin" ? std::string(folder) : "")];
  if (++missing.Planes == 1) {
    missing.Finding = check.Findings.size();
    check.Tell(Severity::Warning, what, place, text + ".");
  } else {
    check.Findings[missing.Finding].Text =
        text + ", which " + std::to_string(missing.Planes) + " planes have.";
  }
}

void CheckPictures(Checking& check, const WingFlight& flight, int plane) {
  constexpr std::size_t kLeastLetters = 4;
  const std::string number = std::to_string(plane);
  const auto utf8 = [&](std::string_view bytes) { return check.Tables.Page().ToUtf8(bytes); };
  const auto look = [&](std::string_view key, std::string_view kind, bool isShortBad,
                        const auto& has) {
    const auto value = check.ValueOf(*flight.Section, std::string(key) + number);
    if (value.Value.value_or("").empty()) return;
    const FindingPlace place{flight.Section, flight.Name, plane, -1, value.Line};
    if (isShortBad && value.Value->size() < kLeastLetters)
      check.Tell(Severity::Error, kind, place,
                 "The name " + check.Quoted(*value.Value) + " has fewer than 4 letters" +
                     std::string(kDropped));
    else if (plane < flight.Planes)
      CheckPicture(check, place, kind, *value.Value,
                   flight.Plane ? flight.Plane->SkinFolder : std::string_view(),
                   has(utf8(*value.Value)));
  };
  const std::string& game = check.GamePath;
  look("skin", "skin", false, [&](const std::string& file) {
    return flight.Plane ? check.Game.HasSkin(game, utf8(flight.Plane->SkinFolder), file)
                        : GameFiles::Has::Unknown;
  });
  look("pilot", "pilot", true,
       [&](const std::string& file) { return check.Game.HasPicture(game, "Pilots", file); });
  look("noseart", "nose-art", true,
       [&](const std::string& file) { return check.Game.HasPicture(game, "Noseart", file); });
}

bool IsParkedPlane(const Checking& check, std::string_view name) {
  const auto* section = check.Text.Find("NStationary");
  if (!section) return false;
  for (std::size_t i = section->First; i < section->Last; ++i) {
    const auto key = KeyOf(check.Text.Lines()[i]);
    if (key.Key == name) return key.Value.starts_with("vehicles.planes.");
  }
  return false;
}

void CheckParking(Checking& check, const WingFlight& flight, int plane) {
  const auto value = check.ValueOf(*flight.Section, "spawn" + std::to_string(plane));
  if (value.Value.value_or("").empty() || IsParkedPlane(check, *value.Value)) return;
  check.Tell(Severity::Warning, "parking", {flight.Section, flight.Name, plane, -1, value.Line},
             check.Quoted(*value.Value) +
                 " is no parked plane of the mission: this plane does not start there.");
}

void CheckPlanes(Checking& check, const WingFlight& flight) {
  CheckClass(check, flight);
  CheckLoadout(check, flight);
  CheckBounded(check, flight, "Planes", 1, 4, "planes", "The number of planes", "1");
  CheckBounded(check, flight, "Fuel", 0, 100, "fuel", "The fuel", "100");
  CheckSkills(check, flight);
  for (int i = 0; i < 4; ++i) {
    CheckPictures(check, flight, i);
    CheckParking(check, flight, i);
  }
}

}  // namespace

void CheckWing(Checking& check) {
  std::set<std::string> names;
  for (const auto& flight : check.Wing) {
    const FindingPlace place{check.Text.Find("Wing"), flight.Name, -1, -1, flight.Line};
    if (!names.insert(LowerKey(flight.Name)).second) {
      check.Tell(Severity::Error, "double-flight", place,
                 "[Wing] names the flight twice" + std::string(kDropped));
      continue;
    }
    CheckName(check, flight);
    if (!flight.Section) {
      check.Tell(Severity::Error, "no-flight", place,
                 "[Wing] names a flight that has no section" + std::string(kDropped));
      continue;
    }
    CheckPlanes(check, flight);
  }
  for (const auto* section : FlightSections(check.Text))
    if (!names.contains(LowerKey(section->Name)))
      check.Tell(Severity::Warning, "not-in-wing",
                 {section, section->Name, -1, -1, section->Header},
                 "[Wing] does not name the flight: the game never loads it.");
}

}  // namespace rws
