#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "mission/flight_values.h"
#include "mission/kept_bases.h"
#include "mission/kept_flights.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::size_t kMostLines = 20;

/** Planes that do not fly need no skill, and one for which none was chosen may have any. */
bool SameSkillsInUse(const Flight& read, const Flight& edited) {
  if (read.Skill != edited.Skill) return false;
  for (std::size_t i = 0; i < PlaneCount(edited) && edited.Skill == "Custom"; ++i) {
    const std::string& skill = edited.PlaneSlots[i].Skill;
    if (!skill.empty() && read.PlaneSlots[i].Skill != skill) return false;
  }
  return true;
}

bool SameSlots(const Flight& a, const Flight& b) {
  return std::equal(a.PlaneSlots.begin(), a.PlaneSlots.end(), b.PlaneSlots.begin(),
                    [](const PlaneSlot& one, const PlaneSlot& other) {
                      return SameFileName(one.Skin, other.Skin) &&
                             SameFileName(one.NoseArt, other.NoseArt) &&
                             SameFileName(one.Pilot, other.Pilot) && one.NumberOn == other.NumberOn;
                    });
}

bool SameOwnSection(const Flight& a, const Flight& b) {
  return a.Planes == b.Planes && a.OnlyAI == b.OnlyAI && a.Parachute == b.Parachute &&
         a.Class == b.Class && a.Fuel == b.Fuel && a.Weapons == b.Weapons &&
         a.StartTime == b.StartTime && SameSkillsInUse(a, b) && SameSlots(a, b);
}

/** Where none are known any will do. */
bool LacksTriggers(const Waypoint& is, const Waypoint& should) {
  return NeedsTriggers(should.Type) && !should.KeptTriggers.empty() &&
         !(is.KeptTriggers == should.KeptTriggers);
}

bool SameRoute(const Flight& is, const Flight& should) {
  return std::equal(is.Waypoints.begin(), is.Waypoints.end(), should.Waypoints.begin(),
                    should.Waypoints.end(), [](const auto& one, const auto& other) {
                      return !WaypointDiffers(one, other) && !LacksTriggers(one, other);
                    });
}

/** One may be as it was typed, with blanks or a fraction, which the reader leaves out. */
bool SameHeight(const std::string& a, const std::string& b) {
  const auto whole = [](const std::string& text) { return NumberText(std::trunc(CDbl(text))); };
  return a == b || (IsNumeric(a) && IsNumeric(b) && whole(a) == whole(b));
}

bool SameMain(const Mission& a, const Mission& b) {
  return a.MapPath == b.MapPath && a.Time == b.Time && a.CloudType == b.CloudType &&
         SameHeight(a.CloudHeight, b.CloudHeight) && a.Army == b.Army && a.Player == b.Player &&
         a.PlayerNum == b.PlayerNum && a.TimeConstant == b.TimeConstant &&
         a.WeaponsConstant == b.WeaponsConstant &&
         KeyOf(a.BriefSoundLine).Value == KeyOf(b.BriefSoundLine).Value;
}

bool SameBase(const BornPlace& a, const BornPlace& b) {
  return a.Army == b.Army && a.Radius == b.Radius && a.X == b.X && a.Y == b.Y &&
         std::equal(a.Planes.begin(), a.Planes.end(), b.Planes.begin(), b.Planes.end(),
                    EqualNoCase) &&
         SameAircraft(a, b);
}

/** What the records say and the merged text does not; "" for nothing. */
std::string Lost(const Mission& read, const Mission& edited) {
  if (!SameMain(read, edited)) return "The values of [MAIN]";
  if (read.Flights.size() != edited.Flights.size()) return "The list of flights";
  for (std::size_t i = 0; i < read.Flights.size(); ++i) {
    const Flight &is = read.Flights[i], &should = edited.Flights[i];
    if (is.Name != should.Name || !SameOwnSection(is, should))
      return "The values of flight " + should.Name;
    if (!SameRoute(is, should)) return "The route of flight " + should.Name;
  }
  if (read.BornPlaces.size() != edited.BornPlaces.size()) return "The list of home bases";
  for (std::size_t i = 0; i < read.BornPlaces.size(); ++i)
    if (!SameBase(read.BornPlaces[i], edited.BornPlaces[i]))
      return "Home base " + std::to_string(i + 1);
  return "";
}

/** Marks the lines of a text that the edits of a mission are about. */
class Concerned {
 public:
  Concerned(const KeptText& text, const Mission& read, const Mission& edited)
      : text_(text), marks_(text.Lines().size()) {
    if (!SameMain(read, edited)) MarkSection(MainSection(text));
    MarkFlights(read, edited);
    MarkBases(read, edited);
  }
  bool Is(std::size_t line) const { return marks_[line]; }

 private:
  void MarkLines(std::size_t first, std::size_t last) {
    std::fill(marks_.begin() + static_cast<std::ptrdiff_t>(first),
              marks_.begin() + static_cast<std::ptrdiff_t>(last), true);
  }
  void MarkSection(const KeptSection& section) { MarkLines(section.First, section.Last); }
  /** The names are in lower case. */
  void MarkWing(const std::set<std::string>& names) {
    const auto* wing = text_.Find("Wing");
    for (std::size_t i = wing ? wing->First : 0; wing && i < wing->Last; ++i)
      if (names.contains(LowerKey(KeyOf(text_.Lines()[i]).Key))) MarkLines(i, i + 1);
  }
  void MarkFlights(const Mission& read, const Mission& edited);
  void MarkEdited(const KeptSection& section, const Flight& read, const Flight& edited);
  void MarkKeys(const KeptSection& section, const Flight& read, const Flight& edited);
  void MarkRoute(const KeptSection& route, const Flight& read, const Flight& edited);
  void MarkAircraft(const KeptSection& section, const BornPlace& edited);
  void MarkBases(const Mission& read, const Mission& edited);

  const KeptText& text_;
  std::vector<bool> marks_;
};

void Concerned::MarkFlights(const Mission& read, const Mission& edited) {
  const auto sections = FlightSections(text_);
  const auto becomes = BecomesOfFlights(text_, edited);
  std::set<std::string> relisted;
  for (std::size_t i = 0; i < sections.size() && i < read.Flights.size(); ++i) {
    const Flight* became = becomes[i];
    const bool gone = !became;
    if (gone || became->Name != read.Flights[i].Name) {
      relisted.insert(LowerKey(read.Flights[i].Name));
      for (const auto* part : SectionsOfFlight(text_, *sections[i]))
        MarkLines(part->Header, gone ? part->Last : part->First);
    }
    if (!gone) MarkEdited(*sections[i], read.Flights[i], *became);
  }
  if (!relisted.empty()) MarkWing(relisted);
}

void Concerned::MarkEdited(const KeptSection& section, const Flight& read, const Flight& edited) {
  if (!SameOwnSection(read, edited) || !SameSkills(read, edited)) MarkKeys(section, read, edited);
  if (const auto* route = RouteOf(text_, section.Name)) MarkRoute(*route, read, edited);
}

void Concerned::MarkKeys(const KeptSection& section, const Flight& read, const Flight& edited) {
  const std::pair<const char*, bool> keys[] = {{"planes", read.Planes == edited.Planes},
                                               {"onlyai", read.OnlyAI == edited.OnlyAI},
                                               {"parachute", read.Parachute == edited.Parachute},
                                               {"class", read.Class == edited.Class},
                                               {"fuel", read.Fuel == edited.Fuel},
                                               {"weapons", read.Weapons == edited.Weapons},
                                               {"starttime", read.StartTime == edited.StartTime},
                                               {"skill", SameSkills(read, edited)},
                                               {"skill#", SameSkills(read, edited)},
                                               {"skin#", SameSlots(read, edited)},
                                               {"noseart#", SameSlots(read, edited)},
                                               {"pilot#", SameSlots(read, edited)},
                                               {"numberon#", SameSlots(read, edited)}};
  for (std::size_t i = section.First; i < section.Last; ++i) {
    const std::string key = LowerKey(KeyOf(text_.Lines()[i]).Key);
    for (const auto& [pattern, same] : keys)
      if (!same && Like(key, pattern)) MarkLines(i, i + 1);
  }
}

void Concerned::MarkRoute(const KeptSection& route, const Flight& read, const Flight& edited) {
  const auto rows = WaypointsOf(text_, route);
  std::vector<const Waypoint*> becameOf(rows.size());
  std::vector<bool> moved(rows.size());
  std::size_t next = 0;
  for (const auto& waypoint : edited.Waypoints) {
    const auto row = static_cast<std::size_t>(waypoint.KeptRow);
    if (waypoint.KeptRow < 0 || row >= rows.size() || becameOf[row]) continue;
    becameOf[row] = &waypoint;
    moved[row] = row < next;
    next = std::max(next, row + 1);
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Waypoint* became = becameOf[i];
    const bool gone = !became || moved[i];
    const bool differs = gone || WaypointDiffers(read.Waypoints[i], *became);
    if (differs) MarkLines(rows[i].Line, rows[i].Line + 1);
    if (gone || read.Waypoints[i].Type != became->Type || LacksTriggers(read.Waypoints[i], *became))
      for (const auto line : rows[i].Triggers) MarkLines(line, line + 1);
  }
}

/** Those that do not stay as they are, or that go behind others. */
void Concerned::MarkAircraft(const KeptSection& section, const BornPlace& edited) {
  const auto listed = AircraftOf(text_, section);
  const auto changed = ChangedAircraft(text_, section, edited);
  std::size_t next = 0;
  std::map<std::string, std::size_t> counts;
  std::vector<bool> stays(listed.size());
  for (const auto& name : edited.Planes) {
    std::size_t before = counts[LowerKey(name)]++, place = 0;
    while (place < listed.size() && (!EqualNoCase(listed[place].Name, name) || before-- > 0))
      ++place;
    if (place < next || place == listed.size()) continue;
    stays[place] = true;
    next = place + 1;
  }
  for (std::size_t i = 0; i < listed.size(); ++i)
    if (!stays[i] || changed[i]) MarkLines(listed[i].First, listed[i].Last);
}

void Concerned::MarkBases(const Mission& read, const Mission& edited) {
  const auto lines = HomeBaseLines(text_);
  for (std::size_t i = 0; i < lines.size() && i < edited.BornPlaces.size(); ++i) {
    const BornPlace &is = read.BornPlaces[i], &should = edited.BornPlaces[i];
    const bool hasMoved = is.X != should.X || is.Y != should.Y;
    if (hasMoved || is.Army != should.Army || is.Radius != should.Radius)
      MarkLines(lines[i], lines[i] + 1);
    if (hasMoved)
      for (const auto& named : SectionsAtBase(text_, i))
        MarkLines(named.Section->Header, named.Section->First);
    const auto* section = AircraftSection(text_, i);
    if (!section || (is.Planes == should.Planes && SameAircraft(is, should))) continue;
    if (should.Planes.empty()) MarkLines(section->Header, section->Last);
    MarkAircraft(*section, should);
  }
}

/** The lines that no edit is about and that the merged text lacks, or has elsewhere. */
std::vector<std::string> Missing(const Concerned& concerned, const LineArray& lines,
                                 const LineArray& merged) {
  std::vector<std::string> missing;
  std::size_t next = 0;
  for (std::size_t i = 0; i < lines.size() && missing.size() < kMostLines; ++i) {
    if (concerned.Is(i)) continue;
    std::size_t found = next;
    while (found < merged.size() && merged[found] != lines[i]) ++found;
    if (found == merged.size()) {
      missing.emplace_back(lines[i]);
      continue;
    }
    next = found + 1;
    // The last line of a text may have lost its end, or got one.
    const bool isLast = next == merged.size() || i + 1 == lines.size();
    if (!isLast && merged.EndOf(found) != lines.EndOf(i)) missing.emplace_back(lines[i]);
  }
  return missing;
}

}  // namespace

MergeFault CheckMerged(const Document& doc, const Services& services, const Mission& mission,
                       const LineArray& merged) {
  if (merged.SharesWith(mission.Lines) || merged == mission.Lines) {
    Mission read = mission;
    ReadKeptRecords(doc, services, read);
    const std::string lost = Lost(read, mission);
    return lost.empty() ? MergeFault{} : MergeFault{lost + " would not be written.", {}};
  }
  Mission read = mission, result = mission;
  ReadKeptRecords(doc, services, read);
  result.Lines = merged;
  ReadKeptRecords(doc, services, result);
  const std::string lost = Lost(result, mission);
  if (!lost.empty()) return {lost + " would not be written as edited.", {}};
  const KeptText text(mission.Lines);
  const auto missing = Missing(Concerned(text, read, mission), mission.Lines, merged);
  if (missing.empty()) return {};
  return {"Lines that were not edited would change:", missing};
}

}  // namespace rws
