#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "mission/line_sieve.h"
#include "mission/line_values.h"
#include "mission/reader.h"
#include "mission/route_line.h"
#include "services/arrays.h"
#include "services/error_log.h"
#include "services/letter_set.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

/** What a section costs before its lines (it may make a flight), what a line of a flight costs
   beside one of a route, and what a failure costs, since each is a line of the log. */
constexpr std::size_t kSectionCost = 60;
constexpr std::size_t kFlightLineCost = 4;
constexpr std::size_t kFailureCost = 2000;

/** Runs one section reader; what it read before a failure stays. */
template <class Body>
void ReadSection(const Services& services, std::string_view name, ReadBudget& budget, Body body) {
  if (budget.Spent()) return;
  const bool read = LogAndLeave(services, name, [&] {
    budget.Spend(kSectionCost);
    body();
  });
  if (!read) ResumeNext([&] { budget.Spend(kFailureCost); });
}

/** What the sections of flights, routes and home bases are known by, anywhere in a line. */
constexpr std::string_view kPlanes = "planes ", kWay = "_way", kBornPlace = "bornplace";
constexpr std::array kSectionPairs{LetterPair{'p', 'l'}, LetterPair{'_', 'w'}};
static_assert(HoldsPair(kPlanes, kSectionPairs) && HoldsPair(kWay, kSectionPairs) &&
              HoldsPair(kBornPlace, kSectionPairs));

/** The test "*planes #", without a lower-cased copy of every line of the file. */
bool EndsWithPlanes(std::string_view line) {
  if (line.size() <= kPlanes.size() || line.back() < '0' || line.back() > '9') return false;
  return EqualNoCase(line.substr(line.size() - 1 - kPlanes.size(), kPlanes.size()), kPlanes);
}

/** The rest of a numbered key's line: "skin0 x.bmp" without every "skin0", trimmed. */
std::string RestOf(const std::string& lower, std::string_view key, int number) {
  return std::string(Trim(Replace(lower, std::string(key) + std::to_string(number), "")));
}

/** All rows are tested for every line, in this order, as keys are told by loose patterns. */
void ReadFlightLine(Flight& flight, std::string_view line, const LetterLine& lower) {
  const auto slot = [&]() -> PlaneSlot& { return At(flight.PlaneSlots, GetNumber(line)); };
  if (lower.Like("*class*")) flight.Class = Trim(Replace(line, "Class air.", ""));
  if (lower.Like("*planes #")) flight.Planes = GetValue(line);
  if (lower.Like("*parachute #")) flight.Parachute = GetValue(line);
  if (lower.Like("*onlyai*")) flight.OnlyAI = GetValue(line);
  if (lower.Like("*fuel*")) flight.Fuel = GetValue(line);
  if (lower.Like("*weapons*")) flight.Weapons = GetValue(line);
  if (lower.Like("*skill #")) flight.Skill = GetValue(line);
  if (lower.Like("*starttime*")) flight.StartTime = GetValue(line);
  if (Val(flight.Skill) >= 4) flight.Skill = "Custom";
  if (lower.Like("*skill#*")) {
    slot().Skill = GetValue(line);
    flight.Skill = "Custom";
  }
  if (lower.Like("*skin#*")) slot().Skin = RestOf(lower.Lower, "skin", GetNumber(line));
  if (lower.Like("*noseart#*")) slot().NoseArt = RestOf(lower.Lower, "noseart", GetNumber(line));
  if (lower.Like("*pilot#*")) slot().Pilot = RestOf(lower.Lower, "pilot", GetNumber(line));
  if (lower.Like("*numberon#*")) slot().NumberOn = GetValue(line);
}

void ReadWaypointLine(Waypoint& waypoint, std::string_view line, RouteLine& words) {
  words.Read(line);
  waypoint.Marker = words.Marker().empty() ? "&0" : words.Marker();
  // The last word that is needed comes first: a shorter line fills nothing but the marker.
  const auto speed = words.Word(RouteLine::kSpeed);
  waypoint.Alt = WholeNumberWord(words.Word(RouteLine::kAlt));
  waypoint.Speed = WholeNumberWord(speed);
  waypoint.X = words.X();
  waypoint.Y = words.Y();
  waypoint.Type = words.Word(RouteLine::kType);
  waypoint.Line = line;
  waypoint.Dist = 0;
}

/** For up to so many waypoints and flights memory is taken once: these records are large to move.
 */
constexpr std::size_t kUsualRoute = 64, kUsualFlights = 256;

/** How many indexes from 0 on pass a test, of `most` that are tried. */
template <class Test>
std::size_t CountUpTo(std::size_t most, Test test) {
  std::size_t count = 0;
  while (count < most && test(count)) ++count;
  return count;
}

/** The lines at which a section reader may have to begin. */
std::vector<std::size_t> LinesOfInterest(const LineArray& lines) {
  std::vector<std::size_t> found;
  LineSieve<kSectionPairs> sieve(lines);
  for (std::size_t i = 0; (i = sieve.Next(i)) < lines.size(); ++i) found.push_back(i);
  return found;
}

double Distance(const Waypoint& a, const Waypoint& b) {
  const double dx = std::fabs(a.X - b.X) / 10;
  const double dy = std::fabs(a.Y - b.Y) / 10;
  return std::sqrt(dx * dx + dy * dy);
}

void ReadBornPlaceLine(BornPlace& place, std::string_view line) {
  const auto words = SplitAt(Trim(line), ' ');
  place.Army = CInt(words[0]);
  place.Radius = CLng(At(words, 1));
  place.X = CLng(At(words, 2));
  place.Y = CLng(At(words, 3));
}

/** Reads one numbered section. The one that ends the file is never stored: looking for its end runs
    off the lines. */
void ReadBornPlacePlanes(Mission& mission, std::size_t& line, ReadBudget& budget) {
  const std::string number = Replace(Replace(mission.Lines[line], "[BornPlace", ""), "]", "");
  const int index = CInt(number);
  std::vector<std::string> planes;
  const auto at = [&] { return At(mission.Lines, static_cast<std::ptrdiff_t>(line)); };
  for (++line; !IsSectionHeader(at()); ++line) {
    budget.Spend(1);
    if (!Contains(at(), "[")) AddToArray(planes, std::string(Trim(at())));
  }
  At(mission.BornPlaces, index).Planes = std::move(planes);
}

}  // namespace

void ReadBudget::Spend(std::size_t lines) {
  if (lines >= left_) {
    left_ = 0;
    throw OverflowFault();
  }
  left_ -= lines;
}

void LoadPlane(Document& doc, const Services& services, std::size_t mission, std::size_t flight,
               std::size_t line, ReadBudget& budget) {
  ReadSection(services, "LoadPlane", budget, [&] {
    const LineArray& lines = doc.Missions[mission].Lines;
    Flight& record = At(doc.Missions[mission].Flights, static_cast<std::ptrdiff_t>(flight));
    const auto before = At(lines, static_cast<std::ptrdiff_t>(line) - 1);
    record.Name = record.KeptName = Replace(Replace(before, "[", ""), "]", "");
    std::string lower;
    // Without a header behind it the section runs off the last line, which the log then tells.
    for (std::size_t i = line; !IsSectionHeader(At(lines, static_cast<std::ptrdiff_t>(i))); ++i) {
      budget.Spend(kFlightLineCost);
      services.Page.LCaseInto(lower, lines[i]);
      ReadFlightLine(record, lines[i], LetterLine(lower));
    }
  });
}

void LoadWayPoint(Document& doc, const Services& services, std::size_t mission, std::size_t flight,
                  std::size_t line, ReadBudget& budget) {
  ReadSection(services, "LoadWayPoint", budget, [&] {
    const LineArray& lines = doc.Missions[mission].Lines;
    Flight& record = At(doc.Missions[mission].Flights, static_cast<std::ptrdiff_t>(flight));
    RouteLine words;
    std::size_t count = 0;
    std::int32_t row = 0;
    const auto isRoute = [&](std::size_t i) {
      return i < lines.size() && !IsSectionHeader(lines[i]);
    };
    // A section that fails at once leaves the route of one before it as that was read.
    Waypoint first;
    if (!record.Waypoints.empty() && isRoute(line + 1))
      ReadWaypointLine(first, lines[line + 1], words);
    // A route that breaks off is written as far as it was read, not up to the end of one before it.
    record.LastWaypoint.clear();
    record.Waypoints.reserve(
        CountUpTo(kUsualRoute, [&](std::size_t i) { return isRoute(line + 1 + i); }));
    for (std::size_t i = line + 1; isRoute(i); ++i) {
      budget.Spend(1);
      record.Waypoints.resize(count + 1);
      Waypoint& waypoint = record.Waypoints[count];
      ReadWaypointLine(waypoint, lines[i], words);
      waypoint.KeptRow = EqualNoCase(waypoint.Type, "TRIGGERS") ? -1 : row++;
      if (count > 0) waypoint.Dist = Distance(waypoint, record.Waypoints[count - 1]);
      ++count;
    }
    record.LastWaypoint = std::to_string(static_cast<std::ptrdiff_t>(count) - 1);
    record.Waypoints.shrink_to_fit();
  });
}

void LoadBornPlace(Document& doc, const Services& services, std::size_t mission, std::size_t line,
                   ReadBudget& budget) {
  ReadSection(services, "LoadBornPlace", budget, [&] {
    Mission& record = doc.Missions[mission];
    const LineArray& lines = record.Lines;
    std::size_t i = line + 1;
    for (std::size_t count = 0; i < lines.size() && !IsSectionHeader(lines[i]); ++i) {
      budget.Spend(1);
      const bool isNew = record.BornPlaces.size() <= count;
      record.BornPlaces.resize(++count);
      BornPlace& place = record.BornPlaces.back();
      if (isNew) place.HasNumbers = false;
      ReadBornPlaceLine(place, lines[i]);
      place.HasNumbers = true;
    }
    while (i < lines.size() && Like(services.Page.LCase(lines[i]), "*bornplace#*"))
      ReadBornPlacePlanes(record, i, budget);
  });
}

bool LoadMissionParams(Document& doc, const Services& services, std::size_t mission) {
  return LogAndLeave(services, "LoadMissionParams", [&] {
    Mission& record = doc.Missions[mission];
    const LineArray& lines = record.Lines;
    const std::vector<std::size_t> ofInterest = LinesOfInterest(lines);
    const auto begun =
        std::ranges::count_if(ofInterest, [&](std::size_t i) { return EndsWithPlanes(lines[i]); });
    record.Flights.reserve(std::min(static_cast<std::size_t>(begun), kUsualFlights));
    ReadBudget budget;
    std::size_t flights = 0, lastFlight = 0;
    // Section readers get a copy of the line index: this walk goes through their lines as well.
    for (const std::size_t i : ofInterest) {
      if (budget.Spent()) break;
      if (EndsWithPlanes(lines[i])) {
        record.Flights.resize(flights + 1);
        lastFlight = flights++;
        LoadPlane(doc, services, mission, lastFlight, i, budget);
      }
      if (ContainsNoCase(lines[i], kWay))
        LoadWayPoint(doc, services, mission, lastFlight, i, budget);
      if (ContainsNoCase(lines[i], kBornPlace)) {
        record.HasBornPlace = true;
        LoadBornPlace(doc, services, mission, i, budget);
      }
    }
    record.Flights.shrink_to_fit();
    if (budget.Spent()) throw OverflowFault();
  });
}

}  // namespace rws
