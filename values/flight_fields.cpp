#include "values/flight_fields.h"

#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr char kCustom[] = "Custom";
constexpr int kMostDelay = 120;

/** A switch that a file tells only when it is off, or only when it is on. */
std::string Switch(const std::string& stored, bool usual) {
  return (stored.empty() ? usual : !usual) ? "1" : "0";
}

std::string Stored(std::string_view value, bool usual) {
  CheckWhole(value, 0, 1);
  const bool on = Val(value) != 0;
  if (on == usual) return "";
  return on ? "1" : "0";
}

/** A flight that tells none has the game's usual one. */
void MakeCustom(Flight& flight) {
  if (flight.Skill == kCustom) return;
  for (auto& slot : flight.PlaneSlots) slot.Skill = flight.Skill.empty() ? "1" : flight.Skill;
  flight.Skill = kCustom;
}

void SetSkill(Flight& flight, std::string_view value) {
  if (EqualNoCase(value, kCustom)) return MakeCustom(flight);
  const bool isSkill = value.size() == 1 && value[0] >= '0' && value[0] <= '3';
  if (!isSkill) throw ValueFault("it is to be a skill from 0 to 3, or Custom");
  flight.Skill = value;
}

void SetClass(Flight& flight, const std::string& value) {
  if (EqualNoCase(flight.Class, value)) return;
  flight.Class = value;
  for (auto& slot : flight.PlaneSlots) slot.Skin = slot.NoseArt = slot.NumberOn = "";
}

}  // namespace

std::string ReadFlightValue(const Flight& flight, std::string_view field) {
  if (field == "Fuel") return flight.Fuel;
  if (field == "Skill") return flight.Skill;
  if (field == "Weapons") return flight.Weapons;
  if (field == "Planes") return flight.Planes;
  if (field == "StartTime") return NumberText(Val(flight.StartTime));
  if (field == "OnlyAI") return Switch(flight.OnlyAI, false);
  return field == "Class" ? flight.Class : Switch(flight.Parachute, true);
}

void WriteFlightValue(Flight& flight, std::string_view field, std::string_view value,
                      const EditRules& rules) {
  if (field == "Fuel") {
    CheckWhole(value, 0, 100);
    flight.Fuel = value;
  }
  if (field == "Skill") SetSkill(flight, value);
  // Whether the class that the flight will have then has it is looked at in the end.
  if (field == "Weapons") flight.Weapons = LoadoutOf(rules, flight.Class, value);
  if (field == "Planes") {
    CheckWhole(value, 1, 4);
    flight.Planes = NumberText(Val(value));
  }
  if (field == "StartTime") {
    CheckWhole(value, 0, kMostDelay);
    flight.StartTime = Val(value) == 0 ? "" : NumberText(Val(value));
  }
  if (field == "OnlyAI") flight.OnlyAI = Stored(value, false);
  if (field == "Parachute") flight.Parachute = Stored(value, true);
  if (field == "Class") SetClass(flight, ClassOf(rules, value));
}

std::string ReadPlaneValue(const Flight& flight, std::size_t plane, std::string_view field) {
  const PlaneSlot& slot = flight.PlaneSlots[plane];
  if (field == "Skin") return slot.Skin;
  if (field == "Pilot") return slot.Pilot;
  if (field == "NoseArt") return slot.NoseArt;
  if (field == "Skill") return flight.Skill == kCustom ? slot.Skill : flight.Skill;
  return Switch(slot.NumberOn, true);
}

void WritePlaneValue(Flight& flight, std::size_t plane, std::string_view field,
                     std::string_view value, const EditRules& rules) {
  PlaneSlot& slot = flight.PlaneSlots[plane];
  if (field == "NumberOn") {
    slot.NumberOn = Stored(value, true);
  } else if (field == "Skill") {
    CheckSkill(value);
    MakeCustom(flight);
    slot.Skill = value;
  } else {
    CheckPicture(value);
    if (field == "NoseArt" && !value.empty()) CheckHasNoseArt(rules, flight);
    (field == "Skin" ? slot.Skin : field == "Pilot" ? slot.Pilot : slot.NoseArt) = value;
  }
}

}  // namespace rws
