#include "values/edit_rules.h"

#include <algorithm>
#include <optional>

#include "catalogues/aircraft.h"
#include "catalogues/squadrons.h"
#include "mission/flight_values.h"
#include "mission/kept_text.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kMostDigits = 9;

bool IsDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

bool IsOneWord(std::string_view text) {
  return !text.empty() && text.find_first_of(" \t[]") == text.npos;
}

const Aircraft* FindClass(const EditRules& rules, std::string_view aircraftClass) {
  for (const auto& aircraft : rules.Tables.Aircraft)
    if (EqualNoCase(aircraft.Class, aircraftClass)) return &aircraft;
  return nullptr;
}

std::optional<std::string_view> FindLoadout(const EditRules& rules, std::string_view aircraftClass,
                                            std::string_view key) {
  const Aircraft* aircraft = FindClass(rules, aircraftClass);
  if (!aircraft) return {};
  const CodePage& page = rules.Services.Page;
  for (const auto& entry : aircraft->Weapons)
    if (entry.Key && page.LCase(*entry.Key) == page.LCase(key)) return *entry.Key;
  return {};
}

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

}  // namespace

Fault ValueFault(const std::string& reason) { return {fault::InvalidCall, reason}; }

void CheckText(std::string_view value) {
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
  if (std::any_of(value.begin(), value.end(), isControl))
    throw ValueFault("a value holds no line end and no other control character");
  const bool isCut = Contains(value, "#") || Contains(value, ";") || Contains(value, "//");
  if (isCut || KeyOf("key " + std::string(value)).Value != value)
    throw ValueFault(
        "it would be read as another value: blanks at its ends are dropped, and what "
        "stands behind \"#\", \";\" or \"//\" is a comment");
}

void CheckWhole(std::string_view value, int least, int most) {
  if (!IsDigits(value) || value.size() > kMostDigits || Val(value) < least || Val(value) > most)
    throw ValueFault("it is to be a whole number from " + std::to_string(least) + " to " +
                     std::to_string(most));
}

void CheckWaypointNumber(std::string_view value) {
  const auto digits = value.substr(value.starts_with('-') ? 1 : 0);
  if (!IsDigits(digits) || digits.size() > kMostDigits)
    throw ValueFault("it is to be a whole number");
}

void CheckHours(std::string_view value) {
  const std::size_t dot = std::min(value.find('.'), value.size());
  const auto decimals = value.substr(std::min(dot + 1, value.size()));
  const bool isNumber =
      IsDigits(value.substr(0, dot)) && (dot == value.size() || IsDigits(decimals));
  if (!isNumber || Val(value) >= 24)
    throw ValueFault("the time is to be in decimal hours, such as 5.5, from 0 to below 24");
}

void CheckPicture(std::string_view value) {
  constexpr std::string_view kEnding = ".bmp";
  if (value.empty()) return;
  const bool isPicture = value.size() > kEnding.size() &&
                         EqualNoCase(value.substr(value.size() - kEnding.size()), kEnding) &&
                         value.find_first_of("/\\:*?\"<>|") == value.npos;
  if (!isPicture)
    throw ValueFault("it is to be the name of a picture, such as Abc.bmp, or nothing at all");
}

void CheckSkill(std::string_view value) { CheckWhole(value, 0, 3); }

std::string ClassOf(const EditRules& rules, std::string_view value) {
  if (FindNoCase(value, "air.", 0) == 0) value.remove_prefix(4);
  if (!IsOneWord(value)) throw ValueFault("it is to be the class of an aircraft");
  if (const Aircraft* aircraft = FindClass(rules, value)) return aircraft->Class;
  if (!rules.Force) throw ValueFault("the tables have no class " + Quoted(value));
  return std::string(value);
}

std::string LoadoutOf(const EditRules& rules, std::string_view aircraftClass,
                      std::string_view value) {
  const auto known = FindLoadout(rules, aircraftClass, value);
  return std::string(known.value_or(value));
}

void CheckLoadout(const EditRules& rules, const Flight& flight) {
  if (!IsOneWord(flight.Weapons)) throw ValueFault("it is to be the key of a loadout");
  if (!rules.Force && !FindLoadout(rules, flight.Class, flight.Weapons))
    throw ValueFault("the tables have no loadout " + Quoted(flight.Weapons) + " for class " +
                     Quoted(flight.Class));
}

void CheckHasNoseArt(const EditRules& rules, const Flight& flight) {
  const bool has = flight.Name.size() >= 2 && IsNoseart(rules.Tables, flight.Class) &&
                   GetCountryByGroup(rules.Tables, rules.Services, flight.Name) == "usa";
  if (!has && !rules.Force)
    throw ValueFault("by the tables flight " + Quoted(flight.Name) + " carries no nose art");
}

void CheckPlayer(const EditRules& rules, const Mission& mission, std::string_view edited) {
  if (mission.Player.empty()) return;
  const auto flight = std::find_if(mission.Flights.begin(), mission.Flights.end(),
                                   [&](const Flight& one) { return one.Name == mission.Player; });
  const std::string named = "the player's flight " + Quoted(mission.Player);
  if (flight == mission.Flights.end()) throw ValueFault(named + " does not exist");
  const bool isChosen = edited == "Player";
  const auto planes = static_cast<double>(PlaneCount(*flight));
  if ((isChosen || edited == "PlayerNum" || edited == "Planes") && Val(mission.PlayerNum) >= planes)
    throw ValueFault(named + " has no plane " + mission.PlayerNum);
  if ((isChosen || edited == "OnlyAI") && !flight->OnlyAI.empty())
    throw ValueFault(named + " is left to the computer");
  const Aircraft* aircraft = FindClass(rules, flight->Class);
  const bool mayFly = rules.Force || (aircraft && aircraft->Flyable);
  if ((isChosen || edited == "Class") && !mayFly)
    throw ValueFault("by the tables the player cannot fly class " + Quoted(flight->Class));
}

void CheckOnlyAI(const EditRules& rules, const Flight& flight) {
  const Aircraft* aircraft = FindClass(rules, flight.Class);
  if ((!aircraft || !aircraft->Flyable) && !rules.Force)
    throw ValueFault("by the tables nobody can fly class " + Quoted(flight.Class));
}

}  // namespace rws
