#include <algorithm>
#include <cmath>

#include "library/checking.h"
#include "mission/kept_flights.h"
#include "services/numbers.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr int kLeastClouds = 300, kLeastCloudsBefore410 = 500, kMostWeather = 6, kDay = 24;

void CheckMap(Checking& check) {
  const auto map = check.ValueOf(check.Main, "MAP");
  const FindingPlace place{&check.Main, "", -1, -1, map.Line};
  if (map.Value.value_or("").empty()) {
    check.Tell(Severity::Error, "no-map", place,
               "[MAIN] names no map: the game refuses the mission.");
    return;
  }
  if (check.Tables.HasMap(*map.Value)) return;
  // Maps of the user's own lie open in the game's folder.
  const std::string path = BuildPath("MAPS", check.Tables.Page().ToUtf8(*map.Value));
  if (!check.GamePath.empty() && check.Game.HasFile(check.GamePath, path)) return;
  check.Tell(Severity::Error, "map", place,
             "The tables lack the map " + check.Quoted(*map.Value) +
                 ": a game without it refuses the mission.");
}

/** A time of the day that is meant by one beyond it. */
std::string WithinDay(double hours) {
  const double rest = std::fmod(std::fmod(hours, kDay) + kDay, kDay);
  std::string text = NumberText(static_cast<float>(rest));
  if (!Contains(text, ".")) text += ".0";
  return text;
}

void CheckTime(Checking& check) {
  const auto time = check.ValueOf(check.Main, "TIME");
  if (!time.Value) return;
  const FindingPlace place{&check.Main, "", -1, -1, time.Line};
  const auto hours = ParseNumber(*time.Value);
  if (!hours) {
    check.Tell(
        Severity::Warning, "time", place,
        "The time " + check.Quoted(*time.Value) + " is no number of hours: the game takes 12:00.");
  } else if (*hours < 0 || *hours >= kDay) {
    check.Tell(Severity::Warning, "time", place,
               "The time " + check.Quoted(*time.Value) +
                   " is not from 0 to below 24: the game "
                   "takes " +
                   (*hours < 0 ? "0:00." : "23:59."));
    if (std::abs(*hours) < 1e6) check.MendBy("Time=" + WithinDay(*hours));
  }
}

void CheckCloudHeight(Checking& check) {
  const auto height = check.ValueOf(check.Main, "CloudHeight");
  if (!height.Value) return;
  const FindingPlace place{&check.Main, "", -1, -1, height.Line};
  const auto metres = ParseNumber(*height.Value);
  const int least = check.Tables.Age() == GameAge::Before410 ? kLeastCloudsBefore410 : kLeastClouds;
  if (!metres) {
    check.Tell(Severity::Warning, "clouds", place,
               "The cloud height " + check.Quoted(*height.Value) +
                   " is no number: the game takes 1000 m.");
  } else if (*metres < least) {
    check.Tell(*metres < 0 ? Severity::Warning : Severity::Note, "clouds", place,
               "Clouds at " + check.Tables.Page().ToUtf8(*height.Value) +
                   " m: the game raises them to " + std::to_string(least) + " m.");
    if (*metres < 0) check.MendBy("CloudHeight=" + std::to_string(least));
  }
}

void CheckWeather(Checking& check) {
  const auto type = check.ValueOf(check.Main, "CloudType");
  if (!type.Value) return;
  const FindingPlace place{&check.Main, "", -1, -1, type.Line};
  const auto number = StrictWhole(*type.Value);
  if (!number) {
    check.Tell(Severity::Warning, "weather", place,
               "The weather " + check.Quoted(*type.Value) +
                   " is no whole number: the game makes it clear.");
  } else if (*number < 0 || *number > kMostWeather) {
    const int taken = std::clamp(*number, 0, kMostWeather);
    check.Tell(Severity::Warning, "weather", place,
               "The weather " + check.Quoted(*type.Value) + " is not from 0 to 6: the game takes " +
                   std::to_string(taken) + ".");
    check.MendBy("CloudType=" + std::to_string(taken));
  }
}

void CheckArmy(Checking& check) {
  const auto army = check.ValueOf(check.Main, "army");
  if (!army.Value) return;
  const auto number = StrictWhole(*army.Value);
  if (number == 1 || number == 2) return;
  check.Tell(Severity::Warning, "army", {&check.Main, "", -1, -1, army.Line},
             "The army " + check.Quoted(*army.Value) + " is neither 1, red, nor 2, blue.");
}

bool NeedsPlayer(const Checking& check) {
  return !check.Mission.KindGuessed &&
         (check.Mission.Kind == MissionKind::Single || check.Mission.Kind == MissionKind::Campaign);
}

/** A flight of that name in other letters. */
const WingFlight* AlmostNamed(const Checking& check, std::string_view name) {
  const auto found =
      std::find_if(check.Wing.begin(), check.Wing.end(),
                   [&](const WingFlight& flight) { return EqualNoCase(flight.Name, name); });
  return found == check.Wing.end() ? nullptr : &*found;
}

/** How bad it is that nobody can fly the flight. */
Severity WithoutPlayer(const Checking& check) {
  return NeedsPlayer(check) || check.Mission.KindGuessed ? Severity::Error : Severity::Warning;
}

void CheckPlayerFlight(Checking& check, const WingFlight& flight) {
  if (!flight.Section) return;
  const auto at = [&](std::string_view key) {
    const auto line = check.ValueOf(*flight.Section, key).Line;
    return FindingPlace{flight.Section, flight.Name, -1, -1, line};
  };
  if (flight.OnlyAI) {
    check.Tell(Severity::Warning, "player-ai", at("OnlyAI"),
               "The player's flight is left to the computer: the game's builder takes the player "
               "away.");
    if (flight.Plane && flight.Plane->Flyable) check.MendFlight(flight.Name, "OnlyAI=0");
  }
  if (flight.Plane && !flight.Plane->Flyable)
    check.Tell(WithoutPlayer(check), "player-unflyable", at("Class"),
               "By the tables nobody can fly the player's " +
                   check.Tables.Page().ToUtf8(flight.Plane->Name) + ".");
  const auto start = check.Text.ValueOf(*flight.Section, "StartTime");
  if (StrictWhole(start).value_or(0) > 0)
    check.Tell(Severity::Note, "player-delay", at("StartTime"),
               "The player's flight starts at once: the game ignores its delay.");
}

void CheckPlayerNumber(Checking& check, const WingFlight& flight) {
  const auto number = check.ValueOf(check.Main, "playerNum");
  if (!number.Value) return;
  const FindingPlace place{&check.Main, "", -1, -1, number.Line};
  const auto plane = StrictWhole(*number.Value);
  if (!plane || *plane < 0)
    check.Tell(Severity::Warning, "player-number", place,
               "The player's plane " + check.Quoted(*number.Value) +
                   " is no number from 0 to 3: he gets the first one.");
  else if (std::min(*plane, 3) >= flight.Planes)
    check.Tell(WithoutPlayer(check), "player-number", place,
               "The player's flight has no plane " + std::to_string(*plane + 1) +
                   ": nobody becomes the player.");
}

bool IsJoinable(const Checking& check, const WingFlight& flight) {
  if (!flight.Section || flight.OnlyAI || (flight.Plane && !flight.Plane->Flyable)) return false;
  return StrictWhole(check.Text.ValueOf(*flight.Section, "StartTime")).value_or(0) <= 0;
}

void CheckCoopPlaces(Checking& check) {
  if (check.Mission.Kind != MissionKind::Coop || check.Mission.KindGuessed) return;
  if (std::any_of(check.Wing.begin(), check.Wing.end(),
                  [&](const WingFlight& flight) { return IsJoinable(check, flight); }))
    return;
  check.Tell(Severity::Error, "coop-places", {check.Text.Find("Wing")},
             "No flight is open to people: one that can be flown, is not left to the computer and "
             "starts at once. Nobody can join the coop.");
}

}  // namespace

void CheckMain(Checking& check) {
  if (!check.Text.Find("MAIN")) {
    check.Tell(Severity::Error, "no-main", {}, "There is no [MAIN]: the game refuses the mission.");
    return;
  }
  CheckMap(check);
  CheckTime(check);
  CheckCloudHeight(check);
  CheckWeather(check);
  CheckArmy(check);
}

void CheckPlayer(Checking& check) {
  CheckCoopPlaces(check);
  const auto player = check.ValueOf(check.Main, "player");
  const FindingPlace place{&check.Main, "", -1, -1, player.Line};
  if (player.Value.value_or("").empty()) {
    if (NeedsPlayer(check))
      check.Tell(Severity::Error, "no-player", place,
                 "No flight is the player's, and a " + std::string(KindWord(check.Mission.Kind)) +
                     " mission needs one.");
    return;
  }
  const WingFlight* flight = check.FlightNamed(*player.Value);
  if (flight) {
    CheckPlayerFlight(check, *flight);
    CheckPlayerNumber(check, *flight);
    return;
  }
  const WingFlight* almost = AlmostNamed(check, *player.Value);
  check.Tell(WithoutPlayer(check), "player", place,
             "The player is to fly " + check.Quoted(*player.Value) +
                 ", which is no flight of [Wing]" +
                 (almost ? ": the game minds the letter case of " + check.Quoted(almost->Name) + "."
                         : "."));
  if (almost && almost->Section && almost->Section->Name == almost->Name)
    check.MendBy("Player=" + std::string(almost->Name));
}

}  // namespace rws
