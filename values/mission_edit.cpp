#include "values/mission_edit.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>
#include <utility>

#include "catalogues/aircraft.h"
#include "catalogues/squadrons.h"
#include "mission/flight_values.h"
#include "mission/references.h"
#include "services/text.h"

namespace rws {

namespace {

bool Fits(const Flight& flight, const FlightChoice& choice, const EditRules& rules) {
  if (choice.By == FlightChoice::Name) return FitsPattern(flight.Name, choice.Text);
  if (choice.By == FlightChoice::Class) return FitsPattern(flight.Class, choice.Text);
  if (choice.By == FlightChoice::Aircraft)
    return FitsPattern(GetPlaneName(rules.Tables, rules.Services, flight.Class), choice.Text);
  if (flight.Name.size() < 2) return false;
  if (choice.By == FlightChoice::Army)
    return FitsPattern(GetArmyByGroup(rules.Tables, rules.Services, flight.Name), choice.Text);
  return FitsPattern(GroupOf(flight.Name), choice.Text) ||
         FitsPattern(GetUserDatabyGroup(rules.Tables, rules.Services, flight.Name), choice.Text);
}

std::vector<std::size_t> Chosen(const Mission& mission, const FlightChoice& choice,
                                const EditRules& rules) {
  std::vector<std::size_t> chosen;
  for (std::size_t i = 0; i < mission.Flights.size(); ++i)
    if (Fits(mission.Flights[i], choice, rules)) chosen.push_back(i);
  return chosen;
}

std::size_t CountOf(const Mission& mission, ValueOf what, std::size_t flight) {
  if (what == ValueOf::Plane) return PlaneCount(mission.Flights[flight]);
  if (what == ValueOf::Waypoint) return mission.Flights[flight].Waypoints.size();
  return what == ValueOf::Base ? mission.BornPlaces.size() : 1;
}

/** The places that a path names, in flights that are chosen already. */
std::vector<ValuePlace> PlacesOf(const Mission& mission, const Assignment& set, std::size_t number,
                                 std::vector<std::size_t> flights) {
  const bool ofFlight = set.Path.Of != ValueOf::Mission && set.Path.Of != ValueOf::Base;
  if (!ofFlight) flights = {0};
  std::vector<ValuePlace> places;
  for (const auto flight : flights) {
    const std::size_t count = CountOf(mission, set.Path.Of, flight);
    for (std::size_t i = 0; i < count; ++i)
      if (!set.Path.Index || set.Path.Index == i || set.Path.Of == ValueOf::Flight)
        places.push_back({set.Path.Of, flight, i, set.Path.Field,
                          ofFlight ? mission.Flights[flight].Name : "", set.Text, number});
  }
  return places;
}

/** Who still names a flight that is gone keeps naming it, as in the window. */
void TellReferences(const Mission& mission, const std::vector<std::string>& removed,
                    EditOutcome& outcome) {
  auto all = References(mission, FlightNames(removed.begin(), removed.end()));
  for (const auto& name : removed) {
    std::vector<std::string> references = std::move(all[name]);
    if (mission.Player == name) references.insert(references.begin(), "Player");
    if (references.empty()) continue;
    const std::string more =
        references.size() == 1 ? "" : " and " + std::to_string(references.size() - 1) + " more";
    outcome.Warnings.push_back("flight \"" + name + "\" is removed, and still named by " +
                               references.front() + more);
  }
}

}  // namespace

EditOutcome EditMission(Mission& mission, const EditOrder& order, const EditRules& rules,
                        const std::vector<ValuePlace>& without) {
  EditOutcome outcome;
  const auto tried = [&](const ValuePlace& place, const auto& what) {
    return Trap(what, [&](const Fault& caught) {
      const bool isFirst = outcome.Refused.empty() || outcome.Refused.back().Place.Set != place.Set;
      if (isFirst) outcome.Faults.push_back(place.Text + ": " + caught.Text);
      outcome.Refused.push_back({place, caught.Text});
    });
  };
  std::vector<std::vector<std::size_t>> chosen;
  for (const auto& set : order.Sets) chosen.push_back(Chosen(mission, set.Path.Flights, rules));
  std::vector<bool> removed(mission.Flights.size());
  std::vector<std::size_t> removals;
  for (const auto& removal : order.Removals) {
    const auto flights = Chosen(mission, removal.Flights, rules);
    for (const auto flight : flights) removed[flight] = true;
    removals.push_back(flights.size());
  }
  for (std::size_t i = 0; i < order.Sets.size(); ++i) {
    auto places = PlacesOf(mission, order.Sets[i], i, chosen[i]);
    outcome.Named.push_back(places.size());
    std::erase_if(places, [&](const ValuePlace& place) {
      return std::find(without.begin(), without.end(), place) != without.end();
    });
    for (const auto& place : places)
      tried(place, [&] { WriteValue(mission, place, order.Sets[i].Value, rules); });
    outcome.Places.insert(outcome.Places.end(), places.begin(), places.end());
  }
  outcome.Named.insert(outcome.Named.end(), removals.begin(), removals.end());
  std::vector<Flight> kept;
  std::vector<std::string> names;
  const bool allWritten = outcome.Refused.empty();
  for (const auto& place : outcome.Places)
    if (allWritten) tried(place, [&] { CheckAgreement(mission, place, rules); });
  for (std::size_t i = 0; i < removed.size(); ++i) {
    if (removed[i])
      names.push_back(mission.Flights[i].Name);
    else
      kept.push_back(std::move(mission.Flights[i]));
  }
  mission.Flights = std::move(kept);
  TellReferences(mission, names, outcome);
  return outcome;
}

bool NeedsTables(const EditOrder& order) {
  constexpr std::string_view kFields[] = {"Class", "Weapons", "OnlyAI", "Player", "NoseArt"};
  const auto needs = [&](const FlightChoice& choice) { return choice.By > FlightChoice::Class; };
  return std::any_of(order.Sets.begin(), order.Sets.end(),
                     [&](const Assignment& set) {
                       return needs(set.Path.Flights) ||
                              std::find(std::begin(kFields), std::end(kFields), set.Path.Field) !=
                                  std::end(kFields);
                     }) ||
         std::any_of(order.Removals.begin(), order.Removals.end(),
                     [&](const Removal& removal) { return needs(removal.Flights); });
}

std::vector<std::string> LostValues(const Mission& edited, const Mission& read,
                                    const std::vector<ValuePlace>& places) {
  using Names = std::map<std::string_view, std::size_t>;
  const auto namesOf = [](const Mission& mission) {
    Names names;
    for (std::size_t i = 0; i < mission.Flights.size(); ++i)
      names.emplace(mission.Flights[i].Name, i);
    return names;
  };
  const auto find = [](const Mission& mission, const Names& names, ValuePlace place) {
    const auto flight = names.find(place.FlightName);
    if (!place.FlightName.empty())
      place.Flight = flight == names.end() ? mission.Flights.size() : flight->second;
    std::string value = "<none>";
    ResumeNext([&] { value = ReadValue(mission, place); });
    return value;
  };
  const Names inEdited = namesOf(edited), inRead = namesOf(read);
  std::vector<std::string> lost;
  for (const auto& place : places)
    if (!SameValue(find(edited, inEdited, place), find(read, inRead, place)) &&
        (lost.empty() || lost.back() != place.Text))
      lost.push_back(place.Text);
  return lost;
}

}  // namespace rws
