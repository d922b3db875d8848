#include "mission/kept_reader.h"

#include <cmath>
#include <utility>

#include "mission/kept_keys.h"
#include "mission/line_values.h"
#include "mission/route_line.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kRouteSuffix = "_way";

/** "0" and "1" as the records have them: "" is the value that a file need not tell. */
std::string Flag(std::string_view value, bool usual) {
  if (value.empty() || (Val(value) != 0) == usual) return "";
  return usual ? "0" : "1";
}

std::int16_t Constant(std::string_view value) {
  std::int16_t number = 0;
  ResumeNext([&] { number = CInt(Val(value)); });
  return number;
}

void ReadMain(const Document& doc, const Services& services, const KeptText& text,
              const KeptSection& main, Mission& mission) {
  const auto value = [&](std::string_view key) { return std::string(text.ValueOf(main, key)); };
  mission.MapPath = value("MAP");
  mission.MapName = GetMapName(doc, services, mission.MapPath);
  mission.Time = value("TIME");
  mission.CloudType = value("CloudType");
  mission.CloudHeight = IntegerPart(value("CloudHeight"));
  mission.Army = value("army");
  mission.Player = value("player");
  mission.PlayerNum = value("playerNum");
  mission.TimeConstant = Constant(value("TIMECONSTANT"));
  mission.WeaponsConstant = Constant(value("WEAPONSCONSTANT"));
  const std::size_t sound = text.LineOf(main, "briefSound");
  if (sound == KeptText::npos || value("briefSound").empty()) return;
  mission.BriefSoundLine = text.Lines()[sound];
  ResumeNext([&] {
    mission.BriefSound = GetBriefSoundPath(doc, services, "briefSound " + value("briefSound"));
  });
}

void ReadSkills(const KeptText& text, const KeptSection& section, Flight& flight) {
  flight.Skill = text.ValueOf(section, "Skill");
  bool own = false;
  for (std::size_t i = 0; i < flight.PlaneSlots.size(); ++i) {
    std::string& skill = flight.PlaneSlots[i].Skill;
    skill = text.ValueOf(section, "Skill" + std::to_string(i));
    own = own || !skill.empty();
  }
  // A plane without a skill of its own has the flight's.
  for (auto& slot : flight.PlaneSlots)
    if (own && slot.Skill.empty() && Val(flight.Skill) < 4) slot.Skill = flight.Skill;
  if (own || Val(flight.Skill) >= 4) flight.Skill = "Custom";
}

bool IsRoute(std::string_view name) {
  return name.size() >= kRouteSuffix.size() &&
         EqualNoCase(name.substr(name.size() - kRouteSuffix.size()), kRouteSuffix);
}

double Coordinate(const std::vector<KeptWord>& words, std::size_t place) {
  return place < words.size() ? ParseNumber(IntegerPart(words[place].Text)).value_or(0) : 0;
}

/** The words are memory to work in. */
Waypoint ReadWaypoint(std::string_view line, std::vector<KeptWord>& words) {
  KeptWordsInto(words, line);
  // One that is beyond all numbers is no reason to leave the mission unread.
  const auto number = [&](std::size_t place) {
    std::string whole = "0";
    if (place < words.size()) ResumeNext([&] { whole = WholeNumberWord(words[place].Text); });
    return whole;
  };
  Waypoint waypoint;
  waypoint.Type = words[RouteLine::kType].Text;
  waypoint.X = Coordinate(words, RouteLine::kX);
  waypoint.Y = Coordinate(words, RouteLine::kY);
  waypoint.Alt = number(RouteLine::kAlt);
  waypoint.Speed = number(RouteLine::kSpeed);
  const std::size_t marker = MarkerPlace(words);
  waypoint.Marker = marker == KeptText::npos ? "&0" : words[marker].Text;
  waypoint.Line = line;
  return waypoint;
}

std::string TriggersBehind(const LineArray& lines, const KeptWaypoint& row) {
  std::string triggers;
  for (const auto line : row.Triggers)
    triggers.append(triggers.empty() ? "" : "\n").append(lines[line]);
  return triggers;
}

void ReadRoute(const KeptText& text, const KeptSection& route, Flight& flight) {
  std::vector<KeptWord> words;
  for (const auto& row : WaypointsOf(text, route)) {
    Waypoint waypoint = ReadWaypoint(text.Lines()[row.Line], words);
    waypoint.KeptRow = static_cast<std::int32_t>(flight.Waypoints.size());
    waypoint.KeptTriggers = TriggersBehind(text.Lines(), row);
    if (!flight.Waypoints.empty()) {
      const Waypoint& before = flight.Waypoints.back();
      waypoint.Dist = std::hypot(waypoint.X - before.X, waypoint.Y - before.Y) / 10;
    }
    flight.Waypoints.push_back(std::move(waypoint));
  }
  flight.Waypoints.shrink_to_fit();
}

template <class Number>
void TakeNumber(Number& number, const std::vector<KeptWord>& words, std::size_t place) {
  if (place >= words.size()) return;
  ResumeNext([&] {
    if constexpr (sizeof(Number) == 2)
      number = CInt(words[place].Text);
    else
      number = CLng(words[place].Text);
  });
}

BornPlace ReadBase(const KeptText& text, std::size_t line, std::size_t index) {
  const auto words = KeptWords(text.Lines()[line]);
  BornPlace base;
  base.HasNumbers = words.size() >= 4;
  TakeNumber(base.Army, words, 0);
  TakeNumber(base.Radius, words, 1);
  TakeNumber(base.X, words, 2);
  TakeNumber(base.Y, words, 3);
  const auto* section = AircraftSection(text, index);
  if (!section) return base;
  for (const auto& plane : AircraftOf(text, *section)) base.Planes.emplace_back(plane.Name);
  std::string lines;
  const std::size_t end = EndOfSection(text, *section);
  for (std::size_t i = section->Header; i < end; ++i)
    lines.append(lines.empty() ? "" : "\n").append(text.Lines()[i]);
  base.KeptPlanes = lines;
  return base;
}

}  // namespace

KeptSection MainSection(const KeptText& text) {
  if (const auto* main = text.Find("MAIN")) return *main;
  const auto* wing = text.Find("Wing");
  return {"", KeptText::npos, 0, wing ? wing->Header : text.Lines().size()};
}

std::vector<const KeptSection*> FlightSections(const KeptText& text) {
  std::vector<const KeptSection*> flights;
  for (const auto& section : text.Sections()) {
    if (!IsRoute(section.Name) && !text.ValueOf(section, "Planes").empty() && text.IsFirst(section))
      flights.push_back(&section);
  }
  return flights;
}

const KeptSection* RouteOf(const KeptText& text, std::string_view flightName) {
  return text.Find(std::string(flightName).append(kRouteSuffix));
}

std::vector<KeptWaypoint> WaypointsOf(const KeptText& text, const KeptSection& route) {
  std::vector<KeptWaypoint> rows;
  for (std::size_t i = route.First; i < route.Last; ++i) {
    const auto key = KeyOf(text.Lines()[i]).Key;
    if (key.empty()) continue;
    if (!EqualNoCase(key, "TRIGGERS"))
      rows.push_back({i, {}});
    else if (!rows.empty())
      rows.back().Triggers.push_back(i);
  }
  return rows;
}

std::size_t MarkerPlace(const std::vector<KeptWord>& words) {
  for (std::size_t i = RouteLine::kSpeed + 1; i < words.size(); ++i)
    if (words[i].Text == "&0" || words[i].Text == "&1") return i;
  return KeptText::npos;
}

Waypoint ReadKeptWaypoint(std::string_view line) {
  std::vector<KeptWord> words;
  return ReadWaypoint(line, words);
}

void SpellSwitches(Flight& flight) {
  flight.OnlyAI = Flag(flight.OnlyAI, false);
  flight.Parachute = Flag(flight.Parachute, true);
  for (auto& slot : flight.PlaneSlots) slot.NumberOn = Flag(slot.NumberOn, true);
}

Flight ReadKeptFlight(const KeptText& text, const KeptSection& section) {
  const auto value = [&](const std::string& key) {
    return std::string(text.ValueOf(section, key));
  };
  Flight flight;
  flight.Name = flight.KeptName = section.Name;
  flight.KeptIn = text.Lines();
  flight.Planes = value("Planes");
  flight.OnlyAI = value("OnlyAI");
  flight.Parachute = value("Parachute");
  flight.Class = value("Class");
  if (FindNoCase(flight.Class, "air.", 0) == 0) flight.Class.erase(0, 4);
  flight.Fuel = value("Fuel");
  flight.Weapons = value("weapons");
  flight.StartTime = value("StartTime");
  ReadSkills(text, section, flight);
  for (std::size_t i = 0; i < flight.PlaneSlots.size(); ++i) {
    PlaneSlot& slot = flight.PlaneSlots[i];
    const std::string number = std::to_string(i);
    slot.Skin = value("skin" + number);
    slot.NoseArt = value("noseart" + number);
    slot.Pilot = value("pilot" + number);
    slot.NumberOn = value("numberOn" + number);
  }
  SpellSwitches(flight);
  if (const auto* route = RouteOf(text, section.Name)) ReadRoute(text, *route, flight);
  flight.LastWaypoint = std::to_string(static_cast<std::ptrdiff_t>(flight.Waypoints.size()) - 1);
  return flight;
}

std::vector<std::size_t> HomeBaseLines(const KeptText& text) {
  std::vector<std::size_t> lines;
  if (const auto* section = text.Find("BornPlace"))
    for (std::size_t i = section->First; i < section->Last; ++i)
      if (!KeyOf(text.Lines()[i]).Key.empty()) lines.push_back(i);
  return lines;
}

const KeptSection* AircraftSection(const KeptText& text, std::size_t base) {
  return text.Find("BornPlace" + std::to_string(base));
}

std::vector<KeptAircraft> AircraftOf(const KeptText& text, const KeptSection& section) {
  std::vector<KeptAircraft> planes;
  for (std::size_t i = section.First; i < section.Last; ++i) {
    const auto key = KeyOf(text.Lines()[i]).Key;
    if (key.empty()) continue;
    if (key[0] != '+')
      planes.push_back({key, i, i + 1});
    else if (!planes.empty())
      planes.back().Last = i + 1;
  }
  return planes;
}

void ReadKeptRecords(const Document& doc, const Services& services, Mission& mission) {
  Mission fresh;
  fresh.DirPath = mission.DirPath;
  fresh.FileName = mission.FileName;
  fresh.BaseName = mission.BaseName;
  fresh.Lines = mission.Lines;
  fresh.AsRead = mission.AsRead;
  fresh.KeepsLines = true;
  fresh.Loaded = LogAndLeave(services, "LoadMission", [&] {
    const KeptText text(fresh.Lines);
    ReadMain(doc, services, text, MainSection(text), fresh);
    for (const auto* section : FlightSections(text))
      fresh.Flights.push_back(ReadKeptFlight(text, *section));
    fresh.Flights.shrink_to_fit();
    const auto bases = HomeBaseLines(text);
    fresh.HasBornPlace = text.Find("BornPlace") != nullptr;
    for (std::size_t i = 0; i < bases.size(); ++i)
      fresh.BornPlaces.push_back(ReadBase(text, bases[i], i));
  });
  mission = std::move(fresh);
}

void ReadKeptMission(const Document& doc, const Services& services, Mission& mission,
                     std::string bytes) {
  mission.Lines = LineArray::FromFileAsIs(std::move(bytes));
  mission.AsRead = mission.Lines;
  ReadKeptRecords(doc, services, mission);
}

}  // namespace rws
