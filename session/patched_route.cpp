#include "session/patched_route.h"

#include <algorithm>
#include <cstddef>

#include "mission/fields.h"
#include "mission/kept_flights.h"

namespace rws {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

using Route = std::vector<Waypoint>;

bool SameRoute(const Route& a, const Route& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& one, const auto& other) {
    return !WaypointDiffers(one, other);
  });
}

/** For each waypoint of `from` the one of `now` that it is. Between those that are as they were, as
    many as there were are the same ones with other values. */
std::vector<std::size_t> PlacesIn(const Route& now, const Route& from) {
  std::vector<std::size_t> places(from.size(), kNone);
  const std::size_t shorter = std::min(now.size(), from.size());
  std::size_t behind = 0;
  while (behind < shorter &&
         !WaypointDiffers(now[now.size() - 1 - behind], from[from.size() - 1 - behind]))
    ++behind;
  std::size_t next = 0, first = 0;
  const auto pairUpTo = [&](std::size_t i, std::size_t place) {
    if (i - first == place - next)
      for (; first < i; ++first) places[first] = next++;
    first = i;
    next = place;
  };
  for (std::size_t i = 0; i < from.size(); ++i) {
    const std::size_t fromEnd = from.size() - i;
    std::size_t place = fromEnd <= behind ? now.size() - fromEnd : next;
    const std::size_t end = std::max(place, now.size() - behind);
    while (place < end && WaypointDiffers(now[place], from[i])) ++place;
    if (place == end && fromEnd > behind) continue;
    pairUpTo(i, place);
    places[first++] = next++;
  }
  pairUpTo(from.size(), now.size());
  return places;
}

bool SameRows(const Route& from, const Route& to) {
  return std::equal(
      from.begin(), from.end(), to.begin(), to.end(),
      [](const auto& one, const auto& other) { return one.KeptRow == other.KeptRow; });
}

/** Which waypoint of a route another one was, and if it has come to stand ahead of others. */
struct Origin {
  std::size_t Place = kNone;
  bool HasMoved = false;
};

/** For each waypoint of `to` the one of `from`: those that are in one order first. */
std::vector<Origin> OriginsIn(const Route& from, const Route& to) {
  std::vector<Origin> origins(to.size());
  std::vector<bool> isTaken(from.size());
  const bool paired = SameRows(from, to);
  std::size_t next = 0;
  const auto take = [&](std::size_t i, std::size_t place, bool hasMoved) {
    if (place == from.size()) return;
    origins[i] = {place, hasMoved};
    isTaken[place] = true;
    next = place + 1;
  };
  for (std::size_t i = 0; i < to.size(); ++i) {
    std::size_t place = paired ? i : next;
    const auto isIt = [&](const Waypoint& one) {
      return one.KeptRow == to[i].KeptRow && (one.KeptRow >= 0 || !WaypointDiffers(one, to[i]));
    };
    while (!paired && place < from.size() && !isIt(from[place])) ++place;
    take(i, place, false);
  }
  for (std::size_t i = 0; i < to.size(); ++i) {
    if (origins[i].Place != kNone || to[i].KeptRow < 0) continue;
    std::size_t place = 0;
    while (place < from.size() && (isTaken[place] || from[place].KeptRow != to[i].KeptRow)) ++place;
    take(i, place, true);
  }
  return origins;
}

bool SameWaypoint(const Waypoint& a, const Waypoint& b) {
  bool same = true;
  ForEachField<Waypoint>([&](const auto& field) {
    if (field.What == Holds::Content) same = same && a.*field.Pointer == b.*field.Pointer;
  });
  return same;
}

Waypoint PatchedWaypoint(const Waypoint& now, const Waypoint& from, const Waypoint& to) {
  Waypoint patched = now;
  ForEachField<Waypoint>([&](const auto& field) {
    if (field.What == Holds::Content && !(from.*field.Pointer == to.*field.Pointer))
      patched.*field.Pointer = to.*field.Pointer;
  });
  patched.Line = EditedWaypoint(now.Line, from, to);
  if (!SameSettings(from, to)) patched.KeptTriggers = to.KeptTriggers;
  return patched;
}

}  // namespace

bool SameSettings(const Waypoint& from, const Waypoint& to) {
  return from.KeptTriggers == to.KeptTriggers && NeedsTriggers(from.Type) == NeedsTriggers(to.Type);
}

std::optional<std::vector<Waypoint>> PatchedRoute(const std::vector<Waypoint>& now,
                                                  const std::vector<Waypoint>& from,
                                                  const std::vector<Waypoint>& to) {
  if (now.size() == from.size() && (SameRows(from, to) || SameRoute(now, from))) return {};
  const auto places = PlacesIn(now, from);
  const auto origins = OriginsIn(from, to);
  std::vector<bool> goes(now.size());
  for (const std::size_t place : places)
    if (place != kNone) goes[place] = true;
  for (const auto& [origin, hasMoved] : origins)
    if (origin != kNone && !hasMoved && places[origin] != kNone) goes[places[origin]] = false;
  Route route;
  std::size_t next = 0;
  const auto copyUpTo = [&](std::size_t place) {
    for (; next < place; ++next)
      if (!goes[next]) route.push_back(now[next]);
  };
  for (std::size_t i = 0; i < to.size(); ++i) {
    const auto [origin, hasMoved] = origins[i];
    if (origin == kNone) {
      route.push_back(to[i]);
      route.back().KeptRow = -1;
      continue;
    }
    const std::size_t place = places[origin];
    if (place == kNone && WaypointDiffers(from[origin], to[i])) return {};
    if (place == kNone) continue;
    if (!hasMoved) copyUpTo(place);
    const bool isChanged = !SameWaypoint(from[origin], to[i]);
    route.push_back(isChanged ? PatchedWaypoint(now[place], from[origin], to[i]) : now[place]);
    if (!hasMoved) next = place + 1;
  }
  copyUpTo(now.size());
  return route;
}

}  // namespace rws
