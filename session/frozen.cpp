#include "session/frozen.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <type_traits>
#include <utility>

#include "mission/fields.h"
#include "mission/flight_values.h"
#include "mission/kept_bases.h"
#include "mission/kept_flights.h"
#include "services/text.h"
#include "session/patched_lines.h"
#include "session/patched_route.h"

namespace rws {

namespace {

template <class Value>
concept RecordArray = requires(const Value& value) {
  FieldsOf<std::decay_t<decltype(value[0])>>::kTable;
};

template <class Record>
bool SameRecord(const Record& a, const Record& b, bool stateToo);

template <class Value>
bool SameValue(const Value& a, const Value& b, bool stateToo) {
  if constexpr (RecordArray<Value>) {
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(),
        [=](const auto& one, const auto& other) { return SameRecord(one, other, stateToo); });
  } else if constexpr (std::is_same_v<Value, double>) {
    return a == b || (a != a && b != b);
  } else {
    return a == b;
  }
}

template <class Record>
bool SameRecord(const Record& a, const Record& b, bool stateToo) {
  bool same = true;
  ForEachField<Record>([&](const auto& field) {
    if (!same || (field.What == Holds::State && !stateToo)) return;
    same = SameValue(a.*field.Pointer, b.*field.Pointer, stateToo);
  });
  return same;
}

/** Waypoints that were moved about, taken out or put in bring the number of their line along. Where
    the file was read anew since, it is that which their line has now; -1 for one that has none. One
    that changes its type brings its settings: the file may have lost them with it. */
void PatchRows(Flight& now, const Flight& before, const Flight& from, const Flight& to) {
  if (now.Waypoints.size() != to.Waypoints.size()) return;
  const bool sameLines = before.KeptIn == from.KeptIn;
  const bool follows = before.Waypoints.size() == from.Waypoints.size();
  for (std::size_t i = 0; i < to.Waypoints.size(); ++i) {
    const std::int32_t row = to.Waypoints[i].KeptRow;
    const auto isIt = [row](const Waypoint& waypoint) { return waypoint.KeptRow == row; };
    std::size_t was = i;
    if (i >= from.Waypoints.size() || !isIt(from.Waypoints[i]))
      was = static_cast<std::size_t>(
          std::find_if(from.Waypoints.begin(), from.Waypoints.end(), isIt) -
          from.Waypoints.begin());
    const bool isKnown = follows && was < before.Waypoints.size() && (was == i || row >= 0);
    now.Waypoints[i].KeptRow = sameLines ? row : isKnown ? before.Waypoints[was].KeptRow : -1;
    if (!isKnown) {
      now.Waypoints[i].KeptTriggers = to.Waypoints[i].KeptTriggers;
      continue;
    }
    const Waypoint &old = before.Waypoints[was], &start = from.Waypoints[was];
    // What others have written into the line since stays there.
    if (!now.KeptIn.empty() && !sameLines && WaypointDiffers(start, to.Waypoints[i]))
      now.Waypoints[i].Line = EditedWaypoint(old.Line, start, to.Waypoints[i]);
    now.Waypoints[i].KeptTriggers =
        SameSettings(start, to.Waypoints[i]) ? old.KeptTriggers : to.Waypoints[i].KeptTriggers;
  }
}

/** Copies into `now` the content that `from` and `to` have different. With `careful`, only where
    `now` has what `from` has. */
template <class Record>
void PatchRecord(Record& now, const Record& from, const Record& to, bool careful);

template <class Value>
void PatchValue(Value& now, const Value& from, const Value& to, bool careful) {
  if (SameValue(from, to, false)) return;
  if constexpr (std::is_same_v<Value, LineArray>) {
    if (!careful && !(now == from)) {
      now = PatchedLines(now, from, to);
      return;
    }
  }
  if constexpr (RecordArray<Value>) {
    if (now.size() == from.size() && from.size() == to.size()) {
      for (std::size_t i = 0; i < now.size(); ++i) PatchRecord(now[i], from[i], to[i], careful);
      return;
    }
  }
  if (!careful || SameValue(now, from, false)) now = to;
}

template <class Record>
void PatchRecord(Record& now, const Record& from, const Record& to, bool careful) {
  ForEachField<Record>([&](const auto& field) {
    if (field.What == Holds::Content)
      PatchValue(now.*field.Pointer, from.*field.Pointer, to.*field.Pointer, careful);
  });
}

/** The record without what is frozen apart. */
Mission HeadOf(const Mission& mission) {
  Mission head;
  ForEachField<Mission>([&](const auto& field) {
    if constexpr (!RecordArray<std::decay_t<decltype(head.*field.Pointer)>>)
      head.*field.Pointer = mission.*field.Pointer;
  });
  return head;
}

bool SameHead(const Mission& a, const Mission& b, bool stateToo) {
  bool same = true;
  ForEachField<Mission>([&](const auto& field) {
    if (!same || (field.What == Holds::State && !stateToo)) return;
    if constexpr (!RecordArray<std::decay_t<decltype(a.*field.Pointer)>>)
      same = SameValue(a.*field.Pointer, b.*field.Pointer, stateToo);
  });
  return same;
}

template <class Record>
using Parts = std::vector<std::shared_ptr<const Record>>;

/** Records are taken out and put in, never moved about: the counterpart of the next one stands
    behind that of the last, and not far. */
template <class Record>
Parts<Record> FreezeParts(const std::vector<Record>& records, const Parts<Record>* like) {
  constexpr std::size_t kLookAhead = 32;
  Parts<Record> parts;
  parts.reserve(records.size());
  std::size_t next = 0;
  for (const auto& record : records) {
    std::size_t found = next;
    const std::size_t end = like ? std::min(like->size(), next + kLookAhead) : 0;
    while (found < end && !SameRecord(record, *(*like)[found], true)) ++found;
    if (found < end) {
      parts.push_back((*like)[found]);
      next = found + 1;
    } else {
      parts.push_back(std::make_shared<const Record>(record));
      // A changed record stands for the one at its place.
      if (like && like->size() == records.size()) next = parts.size();
    }
  }
  return parts;
}

template <class Record>
std::vector<Record> ThawParts(const Parts<Record>& parts) {
  std::vector<Record> records;
  records.reserve(parts.size());
  for (const auto& part : parts) records.push_back(*part);
  return records;
}

template <class Record>
bool SameParts(const Parts<Record>& a, const Parts<Record>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& one, const auto& other) {
    if (one == other) return true;
    if constexpr (std::is_same_v<Record, BornPlace>)
      return SameRecord(*one, *other, false) && SameAircraft(*one, *other);
    else
      return SameRecord(*one, *other, false);
  });
}

/** Takes out of a list what a step did, and puts in what it did; all else stays. The file may spell
    a name in another letter case than the record that was written. */
void PatchNames(std::vector<std::string>& now, std::vector<std::string> from,
                const std::vector<std::string>& to) {
  const auto take = [](std::vector<std::string>& names, const std::string& name) {
    const auto found = std::find_if(names.rbegin(), names.rend(),
                                    [&](const std::string& one) { return EqualNoCase(one, name); });
    if (found == names.rend()) return false;
    names.erase(std::next(found).base());
    return true;
  };
  std::vector<std::size_t> added;
  for (std::size_t i = 0; i < to.size(); ++i)
    if (!take(from, to[i])) added.push_back(i);
  for (const auto& name : from) take(now, name);
  const auto count = [](const std::vector<std::string>& names, const std::string& name) {
    return std::count_if(names.begin(), names.end(),
                         [&](const std::string& one) { return EqualNoCase(one, name); });
  };
  for (const std::size_t i : added)
    if (count(now, to[i]) < count(to, to[i]))
      now.insert(now.begin() + static_cast<std::ptrdiff_t>(std::min(i, now.size())), to[i]);
}

/** The same for a record that stands for itself, with where its rows stand. */
template <class Record>
void PatchWhole(Record& now, const Record& from, const Record& to) {
  if constexpr (std::is_same_v<Record, Flight>) {
    const Flight before = now;
    PatchRecord(now, from, to, false);
    BringSlotsBack(now, from, to);
    if (SameValue(from.Waypoints, to.Waypoints, true)) return;
    auto route = from.KeptIn == to.KeptIn
                     ? PatchedRoute(before.Waypoints, from.Waypoints, to.Waypoints)
                     : std::nullopt;
    if (!route) return PatchRows(now, before, from, to);
    now.Waypoints = *std::move(route);
    now.LastWaypoint = std::to_string(static_cast<std::ptrdiff_t>(now.Waypoints.size()) - 1);
  } else {
    const BornPlace before = now;
    PatchRecord(now, from, to, false);
    if (from.Planes == to.Planes && SameAircraft(from, to)) return;
    now.KeptPlanes = to.KeptPlanes;
    if (before.KeptPlanes != from.KeptPlanes)
      now.KeptPlanes = PatchedAircraft(before.KeptPlanes, from, to);
    if (before.Planes == from.Planes) return;
    now.Planes = before.Planes;
    PatchNames(now.Planes, from.Planes, to.Planes);
  }
}

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/** True for records at one place that are one, also by another name. */
template <class Record>
bool IsOne(const Record& a, const Record& b) {
  if constexpr (requires { a.KeptName; })
    return a.Name == b.Name || EqualNoCase(a.KeptName, b.KeptName);
  return true;
}

/** For each record of `to` the one of `from` that it was. With others gone or come, what showing
    has written into one that stays is not lost. */
template <class Record>
std::vector<std::size_t> OriginsIn(const Parts<Record>& from, const Parts<Record>& to) {
  std::vector<std::size_t> origins(to.size(), kNone);
  std::vector<bool> isTaken(from.size());
  const auto find = [&](const auto& isIt) {
    for (std::size_t i = 0; i < to.size(); ++i) {
      std::size_t place = i < from.size() && isIt(i, i) ? i : 0;
      if (origins[i] != kNone) continue;
      while (place < from.size() && (isTaken[place] || !isIt(place, i))) ++place;
      if (place == from.size()) continue;
      isTaken[place] = true;
      origins[i] = place;
    }
  };
  find([&](std::size_t was, std::size_t is) { return from[was] == to[is]; });
  if (from.size() == to.size())
    find([&](std::size_t was, std::size_t is) { return was == is && IsOne(*from[was], *to[is]); });
  if constexpr (requires { to[0]->Name; })
    find([&](std::size_t was, std::size_t is) { return from[was]->Name == to[is]->Name; });
  return origins;
}

template <class Record>
auto Named(std::vector<Record>& records, const std::string& name) {
  return std::find_if(records.begin(), records.end(),
                      [&](const Record& record) { return record.Name == name; });
}

/** Others have put records in, moved them or taken some out since: each is known by its name then.
 */
template <class Record>
void PatchNamed(std::vector<Record>& now, const Parts<Record>& from, const Parts<Record>& to) {
  const auto origins = OriginsIn(from, to);
  // One may get the name that another one has had: all are found first.
  std::vector<std::size_t> places;
  std::set<std::size_t> goes;
  for (const auto& part : from) {
    const auto found = Named(now, part->Name);
    places.push_back(found == now.end() ? kNone : static_cast<std::size_t>(found - now.begin()));
    goes.insert(places.back());
  }
  for (std::size_t i = 0; i < to.size(); ++i) {
    if (origins[i] == kNone) continue;
    const std::size_t place = places[origins[i]];
    goes.erase(place);
    if (place != kNone && from[origins[i]] != to[i])
      PatchWhole(now[place], *from[origins[i]], *to[i]);
  }
  goes.erase(kNone);
  for (auto place = goes.rbegin(); place != goes.rend(); ++place)
    now.erase(now.begin() + static_cast<std::ptrdiff_t>(*place));
  for (std::size_t i = 0; i < to.size(); ++i)
    if (origins[i] == kNone && Named(now, to[i]->Name) == now.end())
      now.insert(now.begin() + static_cast<std::ptrdiff_t>(std::min(i, now.size())), *to[i]);
}

/** Others have put bases in, moved them about or taken some out since: each is known by its place
    then. One that they gave another place is known by its row, if they left all rows. */
void PatchPlaced(std::vector<BornPlace>& now, const Parts<BornPlace>& from,
                 const Parts<BornPlace>& to) {
  const auto placeOf = [](const BornPlace& base) { return std::pair(base.X, base.Y); };
  std::map<std::pair<std::int32_t, std::int32_t>, std::deque<std::size_t>> left;
  for (std::size_t i = 0; i < now.size(); ++i) left[placeOf(now[i])].push_back(i);
  std::vector<bool> isTaken(now.size());
  std::vector<std::size_t> moved;
  for (std::size_t i = 0; i < from.size(); ++i) {
    auto& rows = left[placeOf(*from[i])];
    if (rows.empty()) {
      moved.push_back(i);
      continue;
    }
    if (from[i] != to[i]) PatchWhole(now[rows.front()], *from[i], *to[i]);
    isTaken[rows.front()] = true;
    rows.pop_front();
  }
  for (const std::size_t i : moved)
    if (now.size() == from.size() && !isTaken[i] && from[i] != to[i])
      PatchWhole(now[i], *from[i], *to[i]);
}

template <class Record>
void PatchParts(std::vector<Record>& now, const Parts<Record>& from, const Parts<Record>& to) {
  if (from == to) return;
  if constexpr (std::is_same_v<Record, BornPlace>)
    if (from.size() == to.size()) return PatchPlaced(now, from, to);
  bool follows = now.size() == from.size();
  if constexpr (requires { now[0].Name; }) {
    follows = std::equal(now.begin(), now.end(), from.begin(), from.end(),
                         [](const auto& is, const auto& was) { return is.Name == was->Name; });
    if (!follows) return PatchNamed(now, from, to);
  }
  std::vector<Record> patched;
  patched.reserve(to.size());
  const auto origins = OriginsIn(from, to);
  for (std::size_t i = 0; i < to.size(); ++i) {
    const bool stays = follows && origins[i] != kNone;
    patched.push_back(stays ? now[origins[i]] : *to[i]);
    if (stays && from[origins[i]] != to[i]) PatchWhole(patched[i], *from[origins[i]], *to[i]);
  }
  now = std::move(patched);
}

template <class Record>
void RebaseParts(std::vector<Record>& kept, const Parts<Record>& from, const Parts<Record>& to) {
  if (from.size() != to.size()) return;
  for (std::size_t i = 0; i < from.size(); ++i) {
    if (from[i] == to[i]) continue;
    std::size_t at = i;
    if constexpr (requires { kept[i].Name; }) {
      const auto named = [&](const Record& record) { return record.Name == from[i]->Name; };
      if (at >= kept.size() || !named(kept[at]))
        at = static_cast<std::size_t>(std::find_if(kept.begin(), kept.end(), named) - kept.begin());
    }
    if (at < kept.size()) PatchRecord(kept[at], *from[i], *to[i], true);
  }
}

void PatchHead(Mission& now, const Mission& from, const Mission& to, bool careful) {
  ForEachField<Mission>([&](const auto& field) {
    if constexpr (!RecordArray<std::decay_t<decltype(now.*field.Pointer)>>)
      if (field.What == Holds::Content)
        PatchValue(now.*field.Pointer, from.*field.Pointer, to.*field.Pointer, careful);
  });
}

std::size_t HeapBytes(const std::string& text) {
  return text.capacity() > sizeof(std::string) / 2 ? text.capacity() : 0;
}

template <class Record>
std::size_t RecordBytes(const Record& record);

template <class Value>
std::size_t ValueBytes(const Value& value) {
  if constexpr (std::is_same_v<Value, std::string>) return HeapBytes(value);
  if constexpr (std::is_same_v<Value, SharedText>) return value.size();
  if constexpr (RecordArray<Value> || std::is_same_v<Value, std::vector<std::string>>) {
    std::size_t bytes = 0;
    for (const auto& element : value) {
      if constexpr (RecordArray<Value>)
        bytes += RecordBytes(element);
      else
        bytes += sizeof element + HeapBytes(element);
    }
    return bytes;
  }
  return 0;
}

template <class Record>
std::size_t RecordBytes(const Record& record) {
  std::size_t bytes = sizeof record;
  ForEachField<Record>([&](const auto& field) { bytes += ValueBytes(record.*field.Pointer); });
  return bytes;
}

template <class Record>
std::size_t PartsBytes(const Parts<Record>& parts, const Parts<Record>* like) {
  std::size_t bytes = 0;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    bytes += sizeof parts[i];
    const bool shared = like && ((i < like->size() && (*like)[i] == parts[i]) ||
                                 std::find(like->begin(), like->end(), parts[i]) != like->end());
    if (!shared) bytes += RecordBytes(*parts[i]);
  }
  return bytes;
}

std::size_t TextBytes(const LineArray& lines) {
  return lines.FileText().size() + lines.size() * sizeof(std::uint32_t);
}

}  // namespace

FrozenMission Freeze(const Mission& mission, const FrozenMission& like) {
  auto flights = FreezeParts(mission.Flights, like ? &like->Flights : nullptr);
  auto places = FreezeParts(mission.BornPlaces, like ? &like->BornPlaces : nullptr);
  if (like && flights == like->Flights && places == like->BornPlaces &&
      SameHead(mission, like->Head, true))
    return like;
  auto frozen = std::make_shared<Frozen>();
  frozen->Head = HeadOf(mission);
  frozen->Flights = std::move(flights);
  frozen->BornPlaces = std::move(places);
  return frozen;
}

Mission Thaw(const Frozen& frozen) {
  Mission mission = frozen.Head;
  mission.Flights = ThawParts(frozen.Flights);
  mission.BornPlaces = ThawParts(frozen.BornPlaces);
  return mission;
}

bool SameContent(const Frozen& a, const Frozen& b) {
  return &a == &b || (SameHead(a.Head, b.Head, false) && SameParts(a.Flights, b.Flights) &&
                      SameParts(a.BornPlaces, b.BornPlaces));
}

std::vector<std::string> ChangedFlights(const Frozen& a, const Frozen& b) {
  std::vector<std::string> names;
  if (a.Flights.size() != b.Flights.size()) return names;
  for (std::size_t i = 0; i < a.Flights.size(); ++i)
    if (a.Flights[i] != b.Flights[i] && !SameRecord(*a.Flights[i], *b.Flights[i], false))
      names.push_back(a.Flights[i]->Name);
  return names;
}

std::string FlightInTheWay(const Mission& now, const Frozen& from, const Frozen& to) {
  for (const auto& flight : to.Flights) {
    const std::string& name = flight->Name;
    const auto isKnown = [&](const auto& part) { return EqualNoCase(part->Name, name); };
    const auto isThere = [&](const Flight& one) { return EqualNoCase(one.Name, name); };
    if (std::none_of(from.Flights.begin(), from.Flights.end(), isKnown) &&
        std::any_of(now.Flights.begin(), now.Flights.end(), isThere))
      return name;
  }
  return "";
}

Mission Patched(const Mission& now, const Frozen& from, const Frozen& to) {
  Mission patched = now;
  PatchHead(patched, from.Head, to.Head, false);
  PatchParts(patched.Flights, from.Flights, to.Flights);
  PatchParts(patched.BornPlaces, from.BornPlaces, to.BornPlaces);
  return patched;
}

FrozenMission Rebased(const FrozenMission& kept, const Frozen& from, const Frozen& to) {
  Mission mission = Thaw(*kept);
  PatchHead(mission, from.Head, to.Head, true);
  RebaseParts(mission.Flights, from.Flights, to.Flights);
  RebaseParts(mission.BornPlaces, from.BornPlaces, to.BornPlaces);
  return Freeze(mission, kept);
}

std::size_t OwnBytes(const Frozen& frozen, const Frozen* like) {
  if (&frozen == like) return 0;
  std::size_t bytes = RecordBytes(frozen.Head);
  const LineArray &lines = frozen.Head.Lines, &asRead = frozen.Head.AsRead;
  const auto isLikes = [&](const LineArray& text) {
    return like && (text.SharesWith(like->Head.Lines) || text.SharesWith(like->Head.AsRead));
  };
  if (!isLikes(asRead)) bytes += TextBytes(asRead);
  if (!isLikes(lines) && !lines.SharesWith(asRead)) bytes += TextBytes(lines);
  bytes += PartsBytes(frozen.Flights, like ? &like->Flights : nullptr);
  return bytes + PartsBytes(frozen.BornPlaces, like ? &like->BornPlaces : nullptr);
}

}  // namespace rws
