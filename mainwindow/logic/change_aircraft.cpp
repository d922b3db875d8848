#include "mainwindow/logic/change_aircraft.h"

#include <algorithm>

#include "catalogues/aircraft.h"
#include "catalogues/squadrons.h"
#include "catalogues/weapons.h"
#include "mainwindow/logic/add_special.h"
#include "mainwindow/logic/flight_commands.h"
#include "mainwindow/logic/flight_names.h"
#include "services/error_log.h"
#include "services/text.h"

namespace rws {

namespace {

/** True if there was a player to drop. */
bool DropPlayer(Mission& mission) {
  const bool was = !mission.Player.empty();
  mission.Player.clear();
  mission.PlayerNum.clear();
  return was;
}

/** True if the table has a loadout key for an aircraft, in any letter case. */
bool KnowsWeapon(const Services& services, const Aircraft& aircraft, std::string_view key) {
  const std::string wanted = services.Page.LCase(key);
  return std::any_of(aircraft.Weapons.begin(), aircraft.Weapons.end(), [&](const auto& entry) {
    return entry.Key && services.Page.LCase(*entry.Key) == wanted;
  });
}

/** True if a flight loses its loadout with another aircraft, or keeps one that is not known there.
 */
bool LosesLoadout(const Services& services, const Flight& flight, const Aircraft& aircraft,
                  bool keepsWeapons) {
  const std::string& key = flight.Weapons;
  if (key.empty() || EqualNoCase(key, "default")) return false;
  return !keepsWeapons || !KnowsWeapon(services, aircraft, key);
}

/** `lost` names loadouts and their flights. */
std::string LoadoutsText(const std::vector<std::string>& lost, const Aircraft& aircraft,
                         bool keepsWeapons) {
  if (lost.empty()) return "";
  const std::string more =
      lost.size() == 1 ? "" : " and " + std::to_string(lost.size() - 1) + " more";
  return "Weapon load " + lost.front() + more +
         (keepsWeapons ? " stays, though " + aircraft.Name + " does not know it."
                       : " gave way to the default of " + aircraft.Name + ".");
}

/** Paint is made for one aircraft and fits no other. */
void Refit(Flight& flight, const Aircraft& aircraft, bool keepsWeapons) {
  flight.Class = aircraft.Class;
  if (!keepsWeapons) flight.Weapons = "default";
  for (auto& slot : flight.PlaneSlots) slot.NumberOn = slot.NoseArt = slot.Skin = "";
}

/** Renames a flight; true if it was the player's, who does not survive that. */
bool Rename(Mission& mission, Flight& flight, const std::string& name) {
  const bool wasPlayers = !mission.Player.empty() && mission.Player == flight.Name;
  flight.Name = name;
  const bool lost = wasPlayers && mission.Player != name;
  if (lost) DropPlayer(mission);
  return lost;
}

}  // namespace

AircraftChange ChangeAirCraft(Document& doc, const Catalogues& tables, const Services& services,
                              const AircraftChoice& choice, const std::vector<std::size_t>& flights,
                              std::string_view weaponText) {
  AircraftChange change;
  LogAndLeave(services, "ChangeAirCraft", [&] {
    const auto chosen = Trim(NameInRow(Trim(choice.AircraftText)));
    if (chosen.empty() || chosen == "Cancel") return;
    Mission& mission = At(doc.Missions, doc.CurMission);
    CheckFlights(mission, flights);
    const Aircraft& aircraft = At(tables.Aircraft, FindAircraft(tables, chosen));
    const std::string& current = At(mission.Flights, doc.CurFlight).Name;
    const std::string army =
        choice.CodeOut.empty() ? GetArmyByGroup(tables, services, current) : choice.CodeOut;
    const bool keepsWeapons = !GetWeaponName(tables, services, aircraft.Class, weaponText).empty();
    std::vector<std::string> lost;
    std::string name = NextFlightName(doc, services, std::string(Trim(choice.Squad)) + "00");
    for (const std::size_t index : flights) {
      // Whoever's flight it is, on purpose.
      if (!aircraft.Flyable) change.PlayerLost |= DropPlayer(mission);
      Flight& flight = mission.Flights[index];
      change.PlayerLost |= Rename(mission, flight, name);
      if (choice.Changed) {
        if (LosesLoadout(services, flight, aircraft, keepsWeapons))
          lost.push_back("\"" + flight.Weapons + "\" of " + name);
        Refit(flight, aircraft, keepsWeapons);
      }
      flight.ArmyWord = army;
      // Moves the flights in memory.
      const auto carrier = static_cast<std::ptrdiff_t>(index);
      AddSpecial(doc, tables, services, aircraft.Companion, name, carrier);
      name = NextFlightName(doc, services, name);
    }
    change.LoadoutsLost = LoadoutsText(lost, aircraft, keepsWeapons);
    change.Done = true;
  });
  return change;
}

}  // namespace rws
