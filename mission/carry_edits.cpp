#include "mission/carry_edits.h"

#include <algorithm>
#include <memory>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

#include "mission/fields.h"
#include "mission/kept_reader.h"
#include "mission/line_ends.h"
#include "mission/reader.h"
#include "services/faults.h"
#include "services/paths.h"
#include "services/text.h"

namespace rws {

namespace {

template <class Value>
constexpr bool kIsPlain = std::is_same_v<Value, std::string> || std::is_arithmetic_v<Value>;

/** Copies the plain content that has been edited. */
template <class Record>
void CarryPlain(const Record& read, const Record& edited, Record& onto) {
  ForEachField<Record>([&](const auto& field) {
    if constexpr (kIsPlain<std::decay_t<decltype(onto.*field.Pointer)>>)
      if (field.What == Holds::Content && read.*field.Pointer != edited.*field.Pointer)
        onto.*field.Pointer = edited.*field.Pointer;
  });
}

/** The waypoint that was read from a row of the route; null for none. */
template <class Waypoints>
auto* RowOf(Waypoints& waypoints, std::int32_t row) {
  const auto found =
      std::find_if(waypoints.begin(), waypoints.end(),
                   [&](const Waypoint& waypoint) { return row >= 0 && waypoint.KeptRow == row; });
  return found == waypoints.end() ? nullptr : std::to_address(found);
}

void CarryRoute(const Flight& read, const Flight& edited, Flight& onto) {
  std::set<std::int32_t> stayed;
  for (const auto& waypoint : edited.Waypoints) {
    stayed.insert(waypoint.KeptRow);
    const Waypoint* before = RowOf(read.Waypoints, waypoint.KeptRow);
    Waypoint* after = RowOf(onto.Waypoints, waypoint.KeptRow);
    if (before && after) CarryPlain(*before, waypoint, *after);
  }
  std::erase_if(onto.Waypoints, [&](const Waypoint& waypoint) {
    return waypoint.KeptRow >= 0 && RowOf(read.Waypoints, waypoint.KeptRow) &&
           !stayed.contains(waypoint.KeptRow);
  });
}

void CarryFlight(const Flight& read, const Flight& edited, Flight& onto) {
  CarryPlain(read, edited, onto);
  for (std::size_t i = 0; i < onto.PlaneSlots.size(); ++i)
    CarryPlain(read.PlaneSlots[i], edited.PlaneSlots[i], onto.PlaneSlots[i]);
  CarryRoute(read, edited, onto);
}

/** The flight that was read by a name; null for none. */
template <class Flights>
auto* NamedAsRead(Flights& flights, const std::string& name) {
  const auto found = std::find_if(flights.begin(), flights.end(), [&](const Flight& flight) {
    return !name.empty() && EqualNoCase(flight.KeptName, name);
  });
  return found == flights.end() ? nullptr : std::to_address(found);
}

void CarryFlights(const Mission& read, const Mission& edited, Mission& onto) {
  const std::vector<Flight> source = onto.Flights;
  std::set<std::string> stayed;
  std::vector<Flight> added;
  for (const auto& flight : edited.Flights) {
    const Flight* before = NamedAsRead(read.Flights, flight.KeptName);
    Flight* after = NamedAsRead(onto.Flights, flight.KeptName);
    if (before && after) {
      if (stayed.insert(before->KeptName).second) {
        CarryFlight(*before, flight, *after);
      } else {
        Flight& copy = added.emplace_back(*NamedAsRead(source, flight.KeptName));
        CarryFlight(*before, flight, copy);
      }
    } else if (!before) {
      added.push_back(flight);
      if (onto.KeepsLines) SpellSwitches(added.back());
    }
  }
  std::erase_if(onto.Flights, [&](const Flight& flight) {
    const Flight* before = NamedAsRead(read.Flights, flight.KeptName);
    return before && !stayed.contains(before->KeptName);
  });
  onto.Flights.insert(onto.Flights.end(), added.begin(), added.end());
}

std::string_view NameOf(std::string_view planeLine) { return KeyOf(planeLine).Key; }

bool Offers(const std::vector<std::string>& planes, std::string_view name) {
  return std::any_of(planes.begin(), planes.end(),
                     [&](const std::string& plane) { return EqualNoCase(NameOf(plane), name); });
}

void CarryBase(const BornPlace& read, const BornPlace& edited, BornPlace& onto) {
  CarryPlain(read, edited, onto);
  std::erase_if(onto.Planes, [&](const std::string& plane) {
    return Offers(read.Planes, NameOf(plane)) && !Offers(edited.Planes, NameOf(plane));
  });
  for (const auto& plane : edited.Planes)
    if (!Offers(read.Planes, NameOf(plane)) && !Offers(onto.Planes, NameOf(plane)))
      onto.Planes.push_back(plane);
}

bool SameWords(std::string_view a, std::string_view b) {
  const auto one = KeptWords(a), other = KeptWords(b);
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](const KeptWord& x, const KeptWord& y) { return x.Text == y.Text; });
}

/** Lines that a dialog has changed; both readings have as many, or else nothing is known of them.
 */
void CarryLines(const LineArray& read, const LineArray& edited, LineArray& onto) {
  if (read.SharesWith(edited) || read.size() != edited.size() || read.size() != onto.size()) return;
  for (std::size_t i = 0; i < read.size(); ++i)
    if (!SameWords(read[i], edited[i])) onto.Set(i, edited[i]);
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

Mission ReadAnew(const Document& doc, const Services& services, const Mission& mission, bool keeps,
                 std::string bytes) {
  Document other;
  other.GamePath = doc.GamePath;
  other.Maps = doc.Maps;
  Mission& fresh = other.Missions.emplace_back();
  fresh.DirPath = mission.DirPath;
  fresh.FileName = mission.FileName;
  fresh.BaseName = mission.BaseName;
  if (keeps) {
    ReadKeptMission(doc, services, fresh, std::move(bytes));
  } else {
    if (auto repaired = RepairedLineEnds(bytes)) bytes = std::move(*repaired);
    ReadMissionText(other, services, 0, std::move(bytes));
  }
  return fresh;
}

}  // namespace

void CarryEdits(const Mission& read, const Mission& edited, Mission& onto) {
  CarryPlain(read, edited, onto);
  CarryLines(read.Lines, edited.Lines, onto.Lines);
  CarryFlights(read, edited, onto);
  for (std::size_t i = 0; i < onto.BornPlaces.size(); ++i)
    if (i < read.BornPlaces.size() && i < edited.BornPlaces.size())
      CarryBase(read.BornPlaces[i], edited.BornPlaces[i], onto.BornPlaces[i]);
}

Mission FreshlyRead(const Document& doc, const Services& services, const Mission& mission) {
  return ReadAnew(doc, services, mission, mission.KeepsLines, mission.AsRead.FileText());
}

void SetKeepsLines(Document& doc, const Services& services, std::size_t mission, bool keeps,
                   const Mission& saved) {
  Mission& record = At(doc.Missions, static_cast<std::ptrdiff_t>(mission));
  if (record.KeepsLines == keeps) return;
  Mission other = ReadAnew(doc, services, record, keeps, BytesOf(services, record));
  if (!other.Loaded) return;
  CarryEdits(saved, record, other);
  other.Modified = record.Modified;
  other.NotWritten = record.NotWritten;
  record = std::move(other);
}

Mission ReadAs(const Document& doc, const Services& services, const Mission& mission, bool keeps,
               const Mission& saved) {
  if (mission.KeepsLines == keeps) return mission;
  Document one;
  one.GamePath = doc.GamePath;
  one.Maps = doc.Maps;
  one.Missions.push_back(mission);
  SetKeepsLines(one, services, 0, keeps, saved);
  return std::move(one.Missions[0]);
}

}  // namespace rws
