#include "fuzz/edits.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "mission/references.h"
#include "services/faults.h"
#include "services/numbers.h"

namespace rws::fuzz {

namespace {

constexpr std::array kNumbers{"0", "1", "2", "3", "4", "50", "100", "500", "1250", "17.5"};
constexpr std::array kWords{"default",  "none",  "P_51D20NA", "BF_109G6",
                            "2xFAB100", "r0200", "g0101"};
constexpr std::array kPictures{"", "red.bmp", "My Own Skin.BMP", "pilot1.bmp"};
constexpr std::array kKinds{"NORMFLY", "TAKEOFF", "LANDING", "GATTACK"};

/** Chooses what is edited, and its new value. */
class Editor {
  template <class Array>
  auto Place(Array& array) {
    return array.begin() + from_.ConsumeIntegralInRange<std::ptrdiff_t>(
                               0, static_cast<std::ptrdiff_t>(array.size()) - 1);
  }
  template <class Array>
  auto& Any(Array& array) {
    return *Place(array);
  }

 public:
  Editor(FuzzedDataProvider& from, Mission& mission) : from_(from), mission_(mission) {}

  void Edit() {
    switch (from_.ConsumeIntegralInRange(0, 9)) {
      case 0:
        return EditMain();
      case 1:
        return OnFlight([&](Flight& flight) { EditKeys(flight); });
      case 2:
        return OnFlight([&](Flight& flight) { EditPlane(Any(flight.PlaneSlots)); });
      case 3:
        return OnFlight([&](Flight& flight) { EditSkill(flight); });
      case 4:
        return OnFlight([&](Flight& flight) { EditRoute(flight.Waypoints); });
      case 5:
        return OnFlight([&](Flight& flight) { Rename(flight); });
      case 6:
        return OnFlight([&](Flight& flight) { Copy(flight); });
      case 7:
        if (!mission_.Flights.empty()) mission_.Flights.erase(Place(mission_.Flights));
        return;
      case 8:
        return EditBase();
      default:
        return OnFlight([&](Flight& flight) { EditWaypoint(flight.Waypoints); });
    }
  }

 private:
  std::string Number() { return from_.PickValueInArray(kNumbers); }
  std::string Word() { return from_.PickValueInArray(kWords); }
  /** For a switch: "" is what a file need not tell. */
  std::string Switch(const char* told) { return from_.ConsumeBool() ? told : ""; }
  template <class Body>
  void OnFlight(Body body) {
    if (!mission_.Flights.empty()) body(Any(mission_.Flights));
  }

  void EditMain();
  void EditKeys(Flight& flight);
  void EditPlane(PlaneSlot& slot);
  void EditSkill(Flight& flight);
  void EditRoute(std::vector<Waypoint>& route);
  void EditWaypoint(std::vector<Waypoint>& route);
  void EditBase();
  std::string FreeName();
  void Rename(Flight& flight);
  void Copy(const Flight& flight);

  FuzzedDataProvider& from_;
  Mission& mission_;
};

void Editor::EditMain() {
  std::string* const texts[] = {&mission_.Time, &mission_.CloudHeight, &mission_.CloudType,
                                &mission_.Army, &mission_.PlayerNum};
  const std::size_t which = from_.ConsumeIntegralInRange<std::size_t>(0, std::size(texts) + 2);
  if (which < std::size(texts)) {
    *texts[which] = Number();
  } else if (which == std::size(texts)) {
    mission_.Player = from_.ConsumeBool() ? Word() : "";
  } else {
    const bool isTime = which == std::size(texts) + 1;
    (isTime ? mission_.TimeConstant : mission_.WeaponsConstant) = from_.ConsumeBool();
  }
}

void Editor::EditKeys(Flight& flight) {
  switch (from_.ConsumeIntegralInRange(0, 6)) {
    case 0:
      flight.Fuel = Number();
      break;
    case 1:
      flight.Weapons = Word();
      break;
    case 2:
      flight.Class = Word();
      break;
    case 3:
      flight.Planes = std::to_string(from_.ConsumeIntegralInRange(1, 4));
      break;
    case 4:
      flight.StartTime = from_.ConsumeBool() ? Number() : "";
      break;
    case 5:
      flight.OnlyAI = Switch("1");
      break;
    default:
      flight.Parachute = Switch("0");
  }
}

void Editor::EditPlane(PlaneSlot& slot) {
  std::string* const texts[] = {&slot.Skin, &slot.NoseArt, &slot.Pilot};
  const std::size_t which = from_.ConsumeIntegralInRange<std::size_t>(0, std::size(texts));
  if (which < std::size(texts))
    *texts[which] = from_.PickValueInArray(kPictures);
  else
    slot.NumberOn = Switch("0");
}

void Editor::EditSkill(Flight& flight) {
  const std::string skill = std::to_string(from_.ConsumeIntegralInRange(0, 3));
  if (from_.ConsumeBool()) {
    flight.Skill = skill;
    return;
  }
  // The window gives every plane the skill that it had before one of them gets its own.
  if (flight.Skill != "Custom")
    for (auto& slot : flight.PlaneSlots) slot.Skill = flight.Skill;
  flight.Skill = "Custom";
  Any(flight.PlaneSlots).Skill = skill;
}

void Editor::EditRoute(std::vector<Waypoint>& route) {
  if (route.empty()) return;
  switch (from_.ConsumeIntegralInRange(0, 2)) {
    case 0:
      route.erase(Place(route));
      break;
    case 1:
      std::swap(Any(route), Any(route));
      break;
    default: {
      Waypoint added = Any(route);
      added.KeptRow = -1;
      route.insert(Place(route), added);
    }
  }
}

void Editor::EditWaypoint(std::vector<Waypoint>& route) {
  if (route.empty()) return;
  Waypoint& waypoint = Any(route);
  switch (from_.ConsumeIntegralInRange(0, 3)) {
    case 0:
      waypoint.Alt = std::to_string(from_.ConsumeIntegralInRange(0, 9999));
      break;
    case 1:
      waypoint.Speed = std::to_string(from_.ConsumeIntegralInRange(0, 999));
      break;
    case 2:
      waypoint.Marker = from_.ConsumeBool() ? "&1" : "&0";
      break;
    default:
      waypoint.Type = from_.PickValueInArray(kKinds);
  }
}

void Editor::EditBase() {
  if (mission_.BornPlaces.empty()) return;
  BornPlace& base = Any(mission_.BornPlaces);
  const std::int32_t number = from_.ConsumeIntegralInRange(0, 400'000);
  switch (from_.ConsumeIntegralInRange(0, 5)) {
    case 0:
      base.Army = static_cast<std::int16_t>(number % 17);
      break;
    case 1:
      base.Radius = number;
      break;
    case 2:
      base.X = number;
      break;
    case 3:
      base.Y = number;
      break;
    case 4:
      if (!base.Planes.empty()) base.Planes.erase(Place(base.Planes));
      break;
    default:
      base.Planes.push_back(Word());
  }
}

/** No two flights can have one name. */
std::string Editor::FreeName() {
  for (int number = 10;; ++number) {
    std::string name = "x01" + std::to_string(number);
    bool taken = false;
    for (const auto& flight : mission_.Flights) taken = taken || flight.Name == name;
    if (!taken) return name;
  }
}

void Editor::Rename(Flight& flight) {
  const std::string name = FreeName();
  RenameReferences(mission_, flight.Name, name);
  flight.Name = name;
}

void Editor::Copy(const Flight& flight) {
  Flight copy = flight;
  copy.Name = FreeName();
  mission_.Flights.push_back(std::move(copy));
}

void Add(std::string& text, std::string_view value) { text.append(value).append(1, '\n'); }

}  // namespace

void EditSomehow(FuzzedDataProvider& from, Mission& mission) {
  for (int edits = from.ConsumeIntegralInRange(0, 6); edits > 0; --edits)
    Editor(from, mission).Edit();
}

std::string EditedValues(const Mission& mission) {
  std::string text;
  // A typed fraction of a height is left out by the reader, and so are its blanks.
  std::string height = mission.CloudHeight;
  ResumeNext([&] {
    if (IsNumeric(height)) height = NumberText(std::trunc(CDbl(height)));
  });
  Add(text, height);
  for (const auto* value : {&mission.MapPath, &mission.Time, &mission.CloudType, &mission.Army,
                            &mission.Player, &mission.PlayerNum})
    Add(text, *value);
  Add(text, std::to_string(mission.TimeConstant) + std::to_string(mission.WeaponsConstant));
  for (const auto& flight : mission.Flights) {
    for (const auto* value :
         {&flight.Name, &flight.Class, &flight.Fuel, &flight.Planes, &flight.Weapons,
          &flight.StartTime, &flight.OnlyAI, &flight.Parachute, &flight.Skill})
      Add(text, *value);
    for (const auto& waypoint : flight.Waypoints) {
      // A number that begins with its point is cut off ahead of it, and is written as 0.
      for (const auto* number : {&waypoint.Alt, &waypoint.Speed})
        Add(text, number->empty() ? "0" : *number);
      Add(text, waypoint.Type + " " + waypoint.Marker);
    }
  }
  for (const auto& base : mission.BornPlaces) {
    for (const auto number : {std::int32_t{base.Army}, base.Radius, base.X, base.Y})
      Add(text, std::to_string(number));
    Add(text, std::to_string(base.Planes.size()));
  }
  return text;
}

}  // namespace rws::fuzz
