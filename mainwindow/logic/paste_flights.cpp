#include "mainwindow/logic/paste_flights.h"

#include <algorithm>
#include <optional>
#include <set>

#include "mainwindow/logic/add_special.h"
#include "mission/carry_edits.h"
#include "mission/flight_values.h"
#include "mission/kept_flights.h"
#include "mission/kept_keys.h"
#include "mission/kept_reader.h"
#include "mission/references.h"
#include "services/faults.h"
#include "services/text.h"

namespace rws {

namespace {

using Names = std::set<std::string>;  // in lower case

/** All names that a flight must not have: those of flights, and of sections that the file holds. */
Names TakenNames(const Mission& mission) {
  Names taken;
  for (const auto& flight : mission.Flights) taken.insert(LowerKey(flight.Name));
  const KeptText text(mission.Lines);
  for (const auto& section : text.Sections()) taken.insert(LowerKey(section.Name));
  return taken;
}

/** The name, or the next one of its regiment: two digits from 0 to 3, squadron and flight. */
std::optional<std::string> FreeName(const Names& taken, const std::string& name) {
  if (!taken.contains(LowerKey(name))) return name;
  constexpr int kFlights = 16;
  if (name.size() < 2) return {};
  const std::string group(GroupOf(name));
  const int squadron = name[name.size() - 2] - '0', number = name.back() - '0';
  const bool isUsual = squadron >= 0 && squadron < 4 && number >= 0 && number < 4;
  const int own = isUsual ? squadron * 4 + number : 0;
  for (int i = 0; i < kFlights; ++i) {
    const int place = (own + i) % kFlights;
    const std::string next = group + std::to_string(place / 4) + std::to_string(place % 4);
    if (!taken.contains(LowerKey(next))) return next;
  }
  return {};
}

/** The text with flights under their new names, those without one left out. */
LineArray Renamed(const LineArray& lines, Names taken, PastedFlights& pasted) {
  const KeptText text(lines);
  LinePatch patch(lines);
  for (const auto* section : FlightSections(text)) {
    const std::string name(section->Name);
    const auto free = FreeName(taken, name);
    const auto parts = SectionsOfFlight(text, *section);
    if (free) taken.insert(LowerKey(*free));
    if (!free) pasted.LeftOut.push_back(name);
    if (free && *free != name) pasted.Renamed.emplace_back(name, *free);
    for (const auto* part : parts) {
      if (free)
        RenameSection(text, patch, *part, *free + std::string(part->Name.substr(name.size())));
      else
        patch.RemoveRange(part->Header, part->Last);
    }
    for (std::size_t i = section->First; i < section->Last; ++i)
      if (Like(LowerKey(KeyOf(lines[i]).Key), "spawn#")) patch.Remove(i);
  }
  return patch.Result();
}

/** By a name that no mission has, so that one new name may be another's old one. */
void FollowNames(Mission& mission, const PastedFlights& pasted) {
  const auto between = [](std::size_t i) { return "<" + std::to_string(i) + ">"; };
  for (std::size_t i = 0; i < pasted.Renamed.size(); ++i)
    RenameReferences(mission, pasted.Renamed[i].first, between(i));
  for (std::size_t i = 0; i < pasted.Renamed.size(); ++i)
    RenameReferences(mission, between(i), pasted.Renamed[i].second);
}

/** Not every program copies the lines "TRIGGERS". */
void CompleteTriggers(Flight& flight) {
  for (auto& waypoint : flight.Waypoints)
    if (NeedsTriggers(waypoint.Type) && waypoint.KeptTriggers.empty())
      waypoint.KeptTriggers = UsualTriggers(waypoint.Type);
}

}  // namespace

std::string PastedText(const PastedFlights& pasted) {
  const auto add = [](std::string& list, const std::string& name) {
    list.append(list.empty() ? "" : ", ").append(name);
  };
  std::string renamed, left;
  for (const auto& [from, to] : pasted.Renamed) add(renamed, from + " as " + to);
  for (const auto& name : pasted.LeftOut) add(left, name);
  if (pasted.Added.empty() && left.empty()) return "The clipboard holds no flights.";
  std::string text = std::to_string(pasted.Added.size()) +
                     (pasted.Added.size() == 1 ? " flight pasted" : " flights pasted");
  if (!renamed.empty()) text += ": " + renamed;
  if (!left.empty()) text += "; left out, as their regiments are full: " + left;
  return text + ".";
}

PastedFlights PasteFlights(Document& doc, const Services& services, std::string_view text) {
  PastedFlights pasted;
  const Mission& current = At(doc.Missions, doc.CurMission);
  Mission source;
  source.KeepsLines = current.KeepsLines;
  source.AsRead = Renamed(LineArray::FromFileAsIs(std::string(text)), TakenNames(current), pasted);
  source = FreshlyRead(doc, services, source);
  FollowNames(source, pasted);
  for (auto& flight : source.Flights) {
    if (source.KeepsLines) CompleteTriggers(flight);
    pasted.Added.push_back(static_cast<std::size_t>(AddFlight(doc, flight)));
  }
  return pasted;
}

}  // namespace rws
