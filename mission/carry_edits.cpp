#include "mission/carry_edits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "mission/fields.h"
#include "mission/flight_values.h"
#include "mission/kept_bases.h"
#include "mission/kept_flights.h"
#include "mission/kept_keys.h"
#include "mission/kept_reader.h"
#include "mission/line_ends.h"
#include "mission/reader.h"
#include "mission/untouched.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

template <class Value>
bool IsSame(const Value& a, const Value& b) {
  if constexpr (requires { FieldsOf<Value>::kTable; }) {
    bool same = true;
    ForEachField<Value>([&](const auto& field) {
      if (field.What == Holds::Content) same = same && IsSame(a.*field.Pointer, b.*field.Pointer);
    });
    return same;
  } else if constexpr (requires { FieldsOf<std::decay_t<decltype(a[0])>>::kTable; }) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& one, const auto& other) { return IsSame(one, other); });
  } else {
    return a == b;
  }
}

/** Copies the plain content that has been edited. */
template <class Record>
void CarryPlain(const Record& read, const Record& edited, Record& onto) {
  ForEachField<Record>([&](const auto& field) {
    if constexpr (kIsPlain<std::decay_t<decltype(onto.*field.Pointer)>>)
      if (field.What == Holds::Content && read.*field.Pointer != edited.*field.Pointer)
        onto.*field.Pointer = edited.*field.Pointer;
  });
}

/** Waypoints by the rows of the route that they were read from. */
template <class Waypoints>
auto ByRow(Waypoints& waypoints) {
  std::map<std::int32_t, decltype(waypoints.data())> rows;
  for (auto& waypoint : waypoints)
    if (waypoint.KeptRow >= 0) rows.emplace(waypoint.KeptRow, &waypoint);
  return rows;
}

bool IsTriggers(const Waypoint& waypoint) { return EqualNoCase(waypoint.Type, "TRIGGERS"); }

/** They follow from the places of others. */
void ForgetDistances(std::vector<Waypoint>& waypoints) {
  for (auto& waypoint : waypoints) waypoint.Dist = 0;
}

/** Those that are no rows of a mission whose lines are kept, and no settings of one either. */
std::vector<Waypoint> WithoutRow(std::vector<Waypoint> waypoints) {
  bool hasOwner = false;
  std::erase_if(waypoints, [&](const Waypoint& waypoint) {
    if (!IsTriggers(waypoint)) hasOwner = waypoint.KeptRow >= 0;
    return hasOwner;
  });
  ForgetDistances(waypoints);
  return waypoints;
}

/** What belongs to each row of a route: itself, and lines of settings where they have a place. */
std::map<std::int32_t, std::vector<Waypoint>> StopsByRow(const std::vector<Waypoint>& waypoints) {
  std::map<std::int32_t, std::vector<Waypoint>> stops;
  std::vector<Waypoint>* stop = nullptr;
  for (const auto& waypoint : waypoints) {
    if (waypoint.KeptRow >= 0)
      stop = &stops[waypoint.KeptRow];
    else if (!IsTriggers(waypoint))
      stop = nullptr;
    if (stop) stop->push_back(waypoint);
  }
  return stops;
}

/** The rows, in their order, that a route has beside those that were added to it. */
std::vector<std::int32_t> RowsOf(const std::vector<Waypoint>& waypoints) {
  std::vector<std::int32_t> rows;
  for (const auto& waypoint : waypoints)
    if (waypoint.KeptRow >= 0) rows.push_back(waypoint.KeptRow);
  return rows;
}

/** Puts rows in the order of an edited route, and what was added to that between them. */
void ArrangeRoute(const std::vector<Waypoint>& edited, std::vector<Waypoint>& onto) {
  const auto stops = StopsByRow(onto);
  onto.clear();
  for (const auto& waypoint : edited) {
    const auto stop = stops.find(waypoint.KeptRow);
    if (stop != stops.end())
      onto.insert(onto.end(), stop->second.begin(), stop->second.end());
    else if (!IsTriggers(waypoint))
      onto.push_back(waypoint);
  }
}

/** True if no row that is still there has other settings than it had. */
bool SameSettings(const std::vector<Waypoint>& read, const std::vector<Waypoint>& edited) {
  const auto was = StopsByRow(read), is = StopsByRow(edited);
  const auto settings = [](std::vector<Waypoint> stop) {
    stop.erase(stop.begin());
    ForgetDistances(stop);
    return stop;
  };
  return std::all_of(is.begin(), is.end(), [&](const auto& stop) {
    const auto before = was.find(stop.first);
    return before == was.end() || IsSame(settings(before->second), settings(stop.second));
  });
}

bool CarryRoute(const Flight& read, const Flight& edited, Flight& onto) {
  if (!SameSettings(read.Waypoints, edited.Waypoints)) return false;
  const auto was = ByRow(read.Waypoints), is = ByRow(edited.Waypoints);
  const auto becomes = ByRow(onto.Waypoints);
  const auto stops = StopsByRow(onto.Waypoints);
  for (const auto& [row, before] : was) {
    const auto after = is.find(row);
    const auto place = becomes.find(row);
    if (after != is.end() && IsSame(*before, *after->second)) continue;
    // A route may have been read into the flight before its own.
    if (place == becomes.end() || place->second->X != before->X || place->second->Y != before->Y)
      return false;
    if (after == is.end()) continue;
    CarryPlain(*before, *after->second, *place->second);
    // Settings that came back with its type, unless the file has some.
    const Waypoint& edit = *after->second;
    if (!NeedsTriggers(before->Type) && NeedsTriggers(edit.Type) && !edit.KeptTriggers.empty() &&
        stops.at(row).size() == 1)
      place->second->KeptTriggers = edit.KeptTriggers;
  }
  const bool sameRows = RowsOf(read.Waypoints) == RowsOf(edited.Waypoints);
  const auto others = WithoutRow(read.Waypoints);
  if (sameRows && IsSame(others, WithoutRow(edited.Waypoints))) return true;
  // Lines that one reading alone takes for waypoints have no place in the other's order.
  if (!others.empty() || !WithoutRow(onto.Waypoints).empty()) return false;
  if (was.size() != becomes.size()) return false;
  ArrangeRoute(edited.Waypoints, onto.Waypoints);
  onto.LastWaypoint = std::to_string(static_cast<std::ptrdiff_t>(onto.Waypoints.size()) - 1);
  return std::all_of(is.begin(), is.end(),
                     [&](const auto& row) { return was.contains(row.first); });
}

/** Rows of settings become what is known of their waypoints. */
void FoldTriggers(Flight& flight) {
  std::vector<Waypoint> folded;
  for (const auto& waypoint : flight.Waypoints) {
    if (!IsTriggers(waypoint) || folded.empty()) {
      folded.push_back(waypoint);
      continue;
    }
    std::string known(folded.back().KeptTriggers);
    known.append(known.empty() ? "" : "\n").append(waypoint.Line);
    folded.back().KeptTriggers = known;
  }
  flight.Waypoints = std::move(folded);
  flight.LastWaypoint = std::to_string(static_cast<std::ptrdiff_t>(flight.Waypoints.size()) - 1);
}

bool CarryFlight(const Flight& read, const Flight& edited, Flight& onto) {
  CarryPlain(read, edited, onto);
  for (std::size_t i = 0; i < onto.PlaneSlots.size(); ++i)
    CarryPlain(read.PlaneSlots[i], edited.PlaneSlots[i], onto.PlaneSlots[i]);
  BringSlotsBack(onto, read, edited);
  return CarryRoute(read, edited, onto);
}

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/** For each flight the one of others that is the same, each at most once: the ones that have the
    same key, by each kind of key in turn. */
template <class... Keys>
std::vector<std::size_t> Pairs(const std::vector<Flight>& flights,
                               const std::vector<Flight>& others, Keys... keys) {
  std::vector<std::size_t> pairs(flights.size(), kNone);
  std::vector<bool> taken(others.size());
  const auto pairBy = [&](const auto& keyOf) {
    std::map<std::string, std::deque<std::size_t>> left;
    for (std::size_t i = 0; i < others.size(); ++i)
      if (const std::string key = keyOf(others[i]); !taken[i] && !key.empty())
        left[key].push_back(i);
    for (std::size_t i = 0; i < flights.size(); ++i) {
      const auto found = pairs[i] == kNone ? left.find(keyOf(flights[i])) : left.end();
      if (found == left.end() || found->second.empty()) continue;
      pairs[i] = found->second.front();
      found->second.pop_front();
      taken[pairs[i]] = true;
    }
  };
  (pairBy(keys), ...);
  return pairs;
}

std::string NameKey(const Flight& flight) { return LowerKey(Trim(flight.Name)); }
std::string ReadKey(const Flight& flight) { return LowerKey(Trim(flight.KeptName)); }
std::string BothKeys(const Flight& flight) { return ReadKey(flight) + '\n' + NameKey(flight); }

/** Puts flights into the order of others. */
void ArrangeFlights(const std::vector<Flight>& order, std::vector<Flight>& flights) {
  const auto places = Pairs(order, flights, BothKeys, NameKey);
  if (std::find(places.begin(), places.end(), kNone) != places.end()) return;
  std::vector<Flight> arranged;
  for (const std::size_t place : places) arranged.push_back(std::move(flights[place]));
  flights = std::move(arranged);
}

/** What of the flights could not be carried over; "" for nothing. */
std::string CarryFlights(const Mission& read, const Mission& edited, Mission& onto) {
  const auto& flights = edited.Flights;
  const auto readOf = Pairs(flights, read.Flights, BothKeys, ReadKey, NameKey);
  // What they are called by now: a flight that was renamed may have been written since.
  const auto ontoOf = Pairs(read.Flights, onto.Flights, NameKey);
  const std::vector<Flight> source = onto.Flights;
  std::map<std::string, std::size_t> originals;
  for (std::size_t i = read.Flights.size(); i-- > 0;) originals[ReadKey(read.Flights[i])] = i;
  std::vector<bool> stays(read.Flights.size());
  std::vector<Flight> added;
  for (std::size_t i = 0; i < flights.size(); ++i) {
    const auto original = originals.find(ReadKey(flights[i]));
    std::size_t before = readOf[i];
    const bool isAdded = before == kNone;
    if (!isAdded) stays[before] = true;
    if (isAdded && original != originals.end() && !flights[i].KeptName.empty())
      before = original->second;
    const std::size_t place = before == kNone ? kNone : ontoOf[before];
    bool carried = true;
    Flight* to = nullptr;
    if (isAdded)
      to = &added.emplace_back(place == kNone ? flights[i] : source[place]);
    else if (place != kNone)
      to = &onto.Flights[place];
    if (place != kNone)
      carried = CarryFlight(read.Flights[before], flights[i], *to);
    else if (!isAdded)
      carried = IsSame(read.Flights[before], flights[i]);
    if (!carried) return "flight " + flights[i].Name;
    if (to && onto.KeepsLines) SpellSwitches(*to);
    if (to && onto.KeepsLines && place == kNone) FoldTriggers(*to);
  }
  std::set<std::size_t> gone;
  for (std::size_t i = 0; i < stays.size(); ++i) {
    if (stays[i]) continue;
    if (ontoOf[i] == kNone) return "flight " + read.Flights[i].Name;
    gone.insert(ontoOf[i]);
  }
  for (auto place = gone.rbegin(); place != gone.rend(); ++place)
    onto.Flights.erase(onto.Flights.begin() + static_cast<std::ptrdiff_t>(*place));
  onto.Flights.insert(onto.Flights.end(), added.begin(), added.end());
  // A copy whose source was removed has come to stand in its place.
  const bool isOneOrder =
      std::equal(read.Flights.begin(), read.Flights.end(), source.begin(), source.end(),
                 [](const Flight& a, const Flight& b) { return NameKey(a) == NameKey(b); });
  if (isOneOrder && onto.Flights.size() == flights.size()) ArrangeFlights(flights, onto.Flights);
  return "";
}

std::map<std::string, std::size_t> CountNames(const std::vector<std::string>& planes) {
  std::map<std::string, std::size_t> names;
  for (const auto& plane : planes) ++names[LowerKey(KeyOf(plane).Key)];
  return names;
}

bool GoesOn(const std::string& plane) { return KeyOf(plane).Key.starts_with('+'); }

/** Puts aircraft, with the lines that go on with them, in the order of an edited list. One that has
    others is not put in order. */
void ArrangeAircraft(const BornPlace& edited, std::vector<std::string>& planes) {
  std::map<std::string, std::deque<std::size_t>> places;
  for (std::size_t i = 0; i < planes.size(); ++i)
    if (!GoesOn(planes[i])) places[LowerKey(KeyOf(planes[i]).Key)].push_back(i);
  std::vector<std::string> arranged;
  for (const auto& plane : edited.Planes) {
    auto& left = places[LowerKey(KeyOf(plane).Key)];
    if (GoesOn(plane) || left.empty()) continue;
    std::size_t i = left.front();
    left.pop_front();
    do arranged.push_back(planes[i++]);
    while (i < planes.size() && GoesOn(planes[i]));
  }
  if (arranged.size() == planes.size()) planes = std::move(arranged);
}

/** Of each aircraft that was added or removed there are as many as edited. */
void CarryAircraft(const BornPlace& read, const BornPlace& edited, BornPlace& onto,
                   bool namesAlone) {
  auto was = CountNames(read.Planes), wanted = CountNames(edited.Planes);
  auto has = CountNames(onto.Planes);
  const auto isEdited = [&](const std::string& name) { return was[name] != wanted[name]; };
  auto& planes = onto.Planes;
  for (std::size_t i = planes.size(); i-- > 0;) {
    const std::string name = LowerKey(KeyOf(planes[i]).Key);
    if (GoesOn(planes[i]) || !isEdited(name) || has[name] <= wanted[name]) continue;
    std::size_t end = i + 1;
    while (end < planes.size() && GoesOn(planes[end])) ++end;
    planes.erase(planes.begin() + static_cast<std::ptrdiff_t>(i),
                 planes.begin() + static_cast<std::ptrdiff_t>(end));
    --has[name];
  }
  for (const auto& plane : edited.Planes) {
    const std::string_view spelled = KeyOf(plane).Key;
    const std::string name = LowerKey(spelled);
    if (GoesOn(plane) || !isEdited(name) || has[name] >= wanted[name]) continue;
    planes.push_back(namesAlone ? std::string(spelled) : plane);
    ++has[name];
  }
  ArrangeAircraft(edited, planes);
  onto.KeptPlanes = PatchedAircraft(onto.KeptPlanes, read, edited);
}

std::string CarryBases(const Mission& read, const Mission& edited, Mission& onto) {
  const auto &was = read.BornPlaces, &is = edited.BornPlaces;
  for (std::size_t i = 0; i < std::max(was.size(), is.size()); ++i) {
    if (i < std::min(was.size(), is.size()) && IsSame(was[i], is[i]) && SameAircraft(was[i], is[i]))
      continue;
    // Not all lines that one reading takes for home bases are such in the other one.
    if (i >= std::min({was.size(), is.size(), onto.BornPlaces.size()}) ||
        onto.BornPlaces[i].X != was[i].X || onto.BornPlaces[i].Y != was[i].Y)
      return "home base " + std::to_string(i);
    const bool hasMoved = was[i].X != is[i].X || was[i].Y != is[i].Y;
    // Only who writes edits alone lets sections that are named by its place follow.
    if (hasMoved && !onto.KeepsLines) return "the place of home base " + std::to_string(i);
    CarryPlain(was[i], is[i], onto.BornPlaces[i]);
    CarryAircraft(was[i], is[i], onto.BornPlaces[i], onto.KeepsLines);
  }
  return "";
}

/** Its words, also those where the game no longer reads. */
std::string WordsOf(std::string_view line) {
  std::string words;
  for (std::size_t i = 0; i < line.size();) {
    const std::size_t end = std::min(line.find_first_of(" \t", i), line.size());
    if (end > i) words.append(line.substr(i, end - i)).append(1, ' ');
    i = end + 1;
  }
  return words;
}

/** A line with the words of another. */
std::string WithWords(std::string_view line, std::string_view other) {
  WordLine words(line);
  std::string whole;
  const auto edited = KeptWords(other);
  for (std::size_t i = 0; i < edited.size(); ++i) {
    whole.append(edited[i].Text).append(1, ' ');
    if (words.Word(i) != edited[i].Text) words.Set(i, std::string(edited[i].Text));
  }
  const std::string result = words.Text();
  return whole == WordsOf(other) && whole == WordsOf(result) ? result : std::string(other);
}

/** Lines that a command has changed, such as those of parked aircraft: known by their words, as the
    two readings need not have the same lines. False where those are not as often in both. */
bool CarryLines(const LineArray& read, const LineArray& edited, LineArray& onto) {
  if (read.SharesWith(edited)) return true;
  if (read.size() != edited.size()) return false;
  struct Places {
    std::vector<std::size_t> Read, Onto;
  };
  std::map<std::string, Places> changed;
  for (std::size_t i = 0; i < read.size(); ++i)
    if (read[i] != edited[i] && WordsOf(read[i]) != WordsOf(edited[i])) changed[WordsOf(read[i])];
  if (changed.empty()) return true;
  const auto find = [&](const LineArray& lines, std::vector<std::size_t> Places::*places) {
    for (std::size_t i = 0; i < lines.size(); ++i)
      if (const auto found = changed.find(WordsOf(lines[i])); found != changed.end())
        (found->second.*places).push_back(i);
  };
  find(read, &Places::Read);
  find(onto, &Places::Onto);
  for (const auto& [words, places] : changed) {
    if (places.Read.size() != places.Onto.size()) return false;
    for (std::size_t i = 0; i < places.Read.size(); ++i) {
      const auto is = edited[places.Read[i]];
      if (WordsOf(is) == words) continue;
      const std::size_t place = places.Onto[i];
      onto.Set(place, onto.SharesWith(read) ? std::string(is) : WithWords(onto[place], is));
    }
  }
  return true;
}

/** The bytes of the file that the mission was read from; its lines where others have changed it. */
std::string BytesOf(const Services& services, const Mission& mission) {
  std::string bytes;
  ResumeNext([&] {
    bytes = services.Files.ReadFile(BuildPath(mission.DirPath, mission.FileName));
    if (!(LinesOfFile(bytes) == LinesOfFile(mission.AsRead.FileText()))) bytes.clear();
  });
  return bytes.empty() ? mission.AsRead.FileText() : bytes;
}

/** Not loaded where it cannot be read that way. */
Mission ReadAnew(const Document& doc, const Services& services, const Mission& mission, bool keeps,
                 std::string bytes) {
  Mission fresh;
  fresh.DirPath = mission.DirPath;
  fresh.FileName = mission.FileName;
  fresh.BaseName = mission.BaseName;
  if (keeps) {
    ReadKeptMission(doc, services, fresh, std::move(bytes));
    return fresh;
  }
  if (auto repaired = RepairedLineEnds(bytes)) bytes = std::move(*repaired);
  Document one = DocumentOf(doc, std::move(fresh));
  ReadMissionText(one, services, 0, std::move(bytes));
  return std::move(one.Missions[0]);
}

}  // namespace

Document DocumentOf(const Document& doc, Mission mission) {
  Document one;
  one.GamePath = doc.GamePath;
  one.Maps = doc.Maps;
  one.Missions.push_back(std::move(mission));
  return one;
}

std::string CarryEdits(const Mission& read, const Mission& edited, Mission& onto) {
  CarryPlain(read, edited, onto);
  if (!CarryLines(read.Lines, edited.Lines, onto.Lines))
    return "lines of parked aircraft or targets";
  const std::string left = CarryFlights(read, edited, onto);
  return left.empty() ? CarryBases(read, edited, onto) : left;
}

Mission FreshlyRead(const Document& doc, const Services& services, const Mission& mission) {
  return ReadAnew(doc, services, mission, mission.KeepsLines, mission.AsRead.FileText());
}

std::string SetKeepsLines(const Document& doc, const Services& services, Mission& mission,
                          bool keeps, const Mission& saved) {
  if (mission.KeepsLines == keeps) return "";
  const std::string fault = "\"" + PathOf(mission) + "\" cannot be read " +
                            (keeps ? "with its lines kept" : "to be written anew") + ": ";
  Mission other = ReadAnew(doc, services, mission, keeps, BytesOf(services, mission));
  if (!other.Loaded) return fault + "the log tells why.";
  const std::string left = CarryEdits(saved, mission, other);
  if (!left.empty())
    return fault + "the edits of " + services.Page.ToUtf8(left) + " have no place there.";
  other.Modified = mission.Modified;
  other.NotWritten = mission.NotWritten;
  mission = std::move(other);
  return "";
}

Mission ReadAs(const Document& doc, const Services& services, const Mission& mission, bool keeps,
               const Mission& saved) {
  Mission result = mission;
  const std::string reason = SetKeepsLines(doc, services, result, keeps, saved);
  if (!reason.empty())
    throw Fault(fault::InvalidCall, services.Page.FromUtf8(reason).value_or(reason));
  return result;
}

}  // namespace rws
