#include "mainwindow/logic/duplicate_flight.h"

#include <cmath>
#include <optional>
#include <string>

#include "mainwindow/logic/add_special.h"
#include "mainwindow/logic/flight_names.h"
#include "mission/route_line.h"
#include "services/error_log.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr double kLargestSingle = 3e38;
constexpr const char kNewCopy[] = "grp";

/** A number's text plus an offset, in single precision; none for a text that is no such number. */
std::optional<std::string> Plus(std::string_view text, std::int16_t offset) {
  const auto number = ParseNumber(Replace(text, ",", "."));
  if (!number || !(std::fabs(*number) < kLargestSingle)) return {};
  return NumberText(static_cast<float>(*number) + static_cast<float>(offset));
}

void AddTo(std::string& text, std::int16_t offset) {
  if (auto sum = Plus(text, offset)) text = std::move(*sum);
}

void MoveWaypoint(Waypoint& waypoint, const WaypointOffsets& offsets) {
  const RouteLine words(waypoint.Line);
  if (words.size() <= RouteLine::kY) return;
  const auto oldX = words.Word(RouteLine::kX), oldY = words.Word(RouteLine::kY);
  const auto x = Plus(oldX, offsets.Distance), y = Plus(oldY, offsets.Distance);
  if (!x || !y) return;
  // Every occurrence, also within other words: the writer takes altitude and speed from the record.
  waypoint.Line = Replace(Replace(waypoint.Line, oldX, *x), oldY, *y);
  AddTo(waypoint.Alt, offsets.Alt);
}

/** True for "LANDING" and for what later versions of the game made of it, "LANDING_104". */
bool IsOfKind(const Waypoint& waypoint, std::string_view kind) {
  return EqualNoCase(std::string_view(waypoint.Type).substr(0, kind.size()), kind);
}

/** True for a line of a later version that stands among the waypoints and is none. */
bool IsTriggers(const Waypoint& waypoint) { return EqualNoCase(waypoint.Type, "triggers"); }

/** The line of a ground attack unlinked from its target, when that is the last word. */
std::string_view WithoutTarget(std::string_view line) {
  const RouteLine words(line);
  if (words.size() != RouteLine::kTarget + 1) return line;
  return line.substr(0,
                     static_cast<std::size_t>(words.Word(RouteLine::kTarget).data() - line.data()));
}

void AddCopies(Document& doc, const Catalogues& tables, const Services& services, Flight& copy,
               int count) {
  const std::ptrdiff_t row = FindAircraft(tables, copy.Class);
  const std::string companion = row < 0 ? "" : At(tables.Aircraft, row).Companion;
  for (int i = 0; i < count; ++i) {
    // On from the copy before: the name is the one that the source's would lead to.
    copy.Name = NextFlightName(doc, services, copy.Name);
    const std::ptrdiff_t index = AddFlight(doc, copy);
    AddSpecial(doc, tables, services, companion, copy.Name, index);
  }
}

}  // namespace

void OffsetWaypoints(std::vector<Waypoint>& waypoints, const WaypointOffsets& offsets) {
  Waypoint* before = nullptr;
  for (auto& waypoint : waypoints) {
    if (IsTriggers(waypoint)) continue;
    const bool isLanding = IsOfKind(waypoint, "landing");
    if (!isLanding && !IsOfKind(waypoint, "takeoff")) MoveWaypoint(waypoint, offsets);
    if (EqualNoCase(waypoint.Type, "gattack")) waypoint.Line = WithoutTarget(waypoint.Line);
    if (isLanding && before) AddTo(before->Speed, offsets.Speed);
    waypoint.Line = Replace(waypoint.Line, ",", ".");
    before = &waypoint;
  }
}

void ApplyGroupWaypoints(std::vector<Flight>& flights, std::ptrdiff_t source,
                         const WaypointOffsets& offsets) {
  Flight& original = At(flights, source);
  std::vector<Waypoint> route = original.Waypoints;
  original.Status.clear();
  for (auto& flight : flights) {
    if (flight.Status != kNewCopy) continue;
    flight.Status.clear();
    OffsetWaypoints(route, offsets);
    flight.Waypoints = route;
  }
}

bool DuplicateFlight(Document& doc, const Catalogues& tables, const Services& services,
                     const WaypointOffsets& offsets, int count) {
  bool added = false;
  const bool moved = LogAndLeave(services, "DuplicateFlight", [&] {
    Flight copy = At(At(doc.Missions, doc.CurMission).Flights, doc.CurFlight);
    copy.Status = kNewCopy;
    added = LogAndLeave(services, "DuplicateFlight",
                        [&] { AddCopies(doc, tables, services, copy, count); });
    // Also after a failure, so that no copy is left waiting for the next command's route.
    ApplyGroupWaypoints(At(doc.Missions, doc.CurMission).Flights, doc.CurFlight, offsets);
  });
  return added && moved;
}

}  // namespace rws
