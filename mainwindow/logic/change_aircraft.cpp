#include "mainwindow/logic/change_aircraft.h"

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

void DropPlayer(Mission& mission) {
  mission.Player.clear();
  mission.PlayerNum.clear();
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
    std::string name = NextFlightName(doc, services, std::string(Trim(choice.Squad)) + "00");
    for (const std::size_t index : flights) {
      // Whoever's flight it is, on purpose.
      if (!aircraft.Flyable) DropPlayer(mission);
      Flight& flight = mission.Flights[index];
      change.PlayerLost |= Rename(mission, flight, name);
      if (choice.Changed) Refit(flight, aircraft, keepsWeapons);
      flight.ArmyWord = army;
      // Moves the flights in memory.
      const auto carrier = static_cast<std::ptrdiff_t>(index);
      AddSpecial(doc, tables, services, aircraft.Companion, name, carrier);
      name = NextFlightName(doc, services, name);
    }
    change.Done = true;
  });
  return change;
}

}  // namespace rws
