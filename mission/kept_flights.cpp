#include "mission/kept_flights.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "mission/flight_values.h"
#include "mission/kept_keys.h"
#include "mission/kept_reader.h"
#include "mission/line_values.h"
#include "mission/route_line.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

/** The lines of one flight, where its keys are set. */
class FlightKeys {
 public:
  FlightKeys(const KeptText& text, LinePatch& patch, const KeptSection& section)
      : text_(text), patch_(patch), section_(section) {}

  void Set(const std::string& key, const std::string& value) {
    SetKey(text_, patch_, section_, kFlightKeys, key, value);
  }
  void SetIfOther(const std::string& key, const std::string& read, const std::string& edited) {
    if (read != edited) Set(key, edited);
  }
  bool Has(const std::string& key) const { return text_.LineOf(section_, key) != KeptText::npos; }

 private:
  const KeptText& text_;
  LinePatch& patch_;
  const KeptSection& section_;
};

/** One skill for all leaves no plane its own, and the first of its own takes the common one away.
 */
void EditSkills(FlightKeys& keys, const Flight& read, const Flight& edited) {
  if (SameSkills(read, edited)) return;
  const bool custom = edited.Skill == "Custom", wasCustom = read.Skill == "Custom";
  if (!custom || !wasCustom) keys.Set("Skill", custom ? "" : edited.Skill);
  for (std::size_t i = 0; i < edited.PlaneSlots.size(); ++i) {
    const std::string key = "Skill" + std::to_string(i);
    std::string skill = edited.PlaneSlots[i].Skill;
    // A plane that got none of its own stays at the one that all had.
    if (custom && !wasCustom && skill.empty() && i < PlaneCount(edited)) skill = read.Skill;
    if (!custom)
      keys.Set(key, "");
    else if (!wasCustom || skill != read.PlaneSlots[i].Skill)
      keys.Set(key, skill);
  }
}

void EditSlots(FlightKeys& keys, const Flight& read, const Flight& edited) {
  const auto each = [&](const char* key, std::string PlaneSlot::*field, bool isFile) {
    for (std::size_t i = 0; i < edited.PlaneSlots.size(); ++i) {
      const std::string &before = read.PlaneSlots[i].*field, &after = edited.PlaneSlots[i].*field;
      if (!isFile || !SameFileName(before, after))
        keys.SetIfOther(key + std::to_string(i), before, after);
    }
  };
  each("skin", &PlaneSlot::Skin, true);
  each("noseart", &PlaneSlot::NoseArt, true);
  each("pilot", &PlaneSlot::Pilot, true);
  each("numberOn", &PlaneSlot::NumberOn, false);
}

void EditOwnSection(const KeptText& text, LinePatch& patch, const KeptSection& section,
                    const Flight& read, const Flight& edited) {
  FlightKeys keys(text, patch, section);
  keys.SetIfOther("Planes", read.Planes, edited.Planes);
  keys.SetIfOther("OnlyAI", read.OnlyAI, edited.OnlyAI);
  keys.SetIfOther("Parachute", read.Parachute, edited.Parachute);
  EditSkills(keys, read, edited);
  EditSlots(keys, read, edited);
  if (read.Class != edited.Class) keys.Set("Class", "air." + edited.Class);
  keys.SetIfOther("Fuel", read.Fuel, edited.Fuel);
  keys.SetIfOther("weapons", read.Weapons, edited.Weapons);
  keys.SetIfOther("StartTime", read.StartTime, edited.StartTime);
}

std::size_t MarkerIn(const WordLine& line) {
  for (std::size_t i = RouteLine::kSpeed + 1; i < line.size(); ++i)
    if (line.Word(i) == "&0" || line.Word(i) == "&1") return i;
  return KeptText::npos;
}

bool IsFormation(std::string_view word) { return word.size() > 1 && Like(word, "F#*"); }

/** Behind a target and its index, ahead of a formation. */
std::size_t PlaceForMarker(const WordLine& line) {
  std::size_t place = RouteLine::kTarget;
  while (place < line.size() && place < RouteLine::kTarget + 2 && !IsFormation(line.Word(place)))
    ++place;
  return place;
}

void SetTail(WordLine& line, const std::vector<std::string>& tail, std::size_t markerPlace) {
  const std::size_t marker = MarkerIn(line);
  const std::string word(marker == KeptText::npos ? "" : line.Word(marker));
  while (line.size() > RouteLine::kTarget) line.Erase(line.size() - 1);
  for (const auto& part : tail) line.Insert(line.size(), part);
  if (!word.empty()) line.Insert(markerPlace, word);
}

/** False for a line that was put together for a record. */
bool IsOfFile(std::string_view line) {
  const WordLine words(line);
  const bool isIndented = line.starts_with(' ') || line.starts_with('\t');
  const bool isWhole = words.size() == RouteLine::kTarget || MarkerIn(words) != KeptText::npos;
  return words.size() > 0 && (isIndented || isWhole);
}

/** One that is beyond all numbers stays as it is, and keeps no other value from being written. */
std::string WholeOf(const std::string& value) {
  std::string whole = value;
  ResumeNext([&] { whole = WholeNumberWord(value); });
  return whole;
}

}  // namespace

std::string EditedWaypoint(std::string_view text, const Waypoint& read, const Waypoint& edited) {
  WordLine line(text);
  const WordLine before(read.Line), after(edited.Line);
  const bool isSpelled = IsOfFile(edited.Line);
  if (read.Type != edited.Type) line.Set(RouteLine::kType, edited.Type);
  for (const auto place : {RouteLine::kX, RouteLine::kY})
    if (before.Word(place) != after.Word(place)) line.Set(place, std::string(after.Word(place)));
  const auto setNumber = [&](std::size_t place, const std::string& was, const std::string& is) {
    const auto wanted = WholeOf(is);
    if (WholeOf(was) == wanted) return;
    // An undo brings back how it was spelled.
    const std::string known(isSpelled ? after.Word(place) : "");
    line.Set(place,
             !known.empty() && WholeOf(known) == wanted ? known : NumberLike(line.Word(place), is));
  };
  setNumber(RouteLine::kAlt, read.Alt, edited.Alt);
  setNumber(RouteLine::kSpeed, read.Speed, edited.Speed);
  const auto tail = RouteTail(edited.Line);
  if (RouteTail(read.Line) != tail) {
    const std::size_t marker = MarkerIn(after);
    SetTail(line, tail,
            marker == KeptText::npos
                ? std::min<std::size_t>(RouteLine::kTarget + tail.size(), RouteLine::kTarget + 2)
                : marker);
  }
  if (read.Marker != edited.Marker) {
    const std::size_t marker = MarkerIn(line);
    if (line.size() < RouteLine::kTarget) line.Set(RouteLine::kSpeed, "0");
    if (marker != KeptText::npos && isSpelled && edited.Marker == "&0" &&
        MarkerIn(after) == KeptText::npos)
      line.Erase(marker);
    else if (marker != KeptText::npos)
      line.Set(marker, edited.Marker);
    else
      line.Insert(PlaceForMarker(line), edited.Marker);
  }
  return line.Text();
}

namespace {

/** The line of a waypoint that no text holds. */
std::string NewWaypoint(const Waypoint& waypoint) {
  if (IsOfFile(waypoint.Line))
    return EditedWaypoint(waypoint.Line, ReadKeptWaypoint(waypoint.Line), waypoint);
  const WordLine words(waypoint.Line);
  WordLine line("");
  line.Set(RouteLine::kType, waypoint.Type);
  line.Set(RouteLine::kX, std::string(words.Word(RouteLine::kX)));
  line.Set(RouteLine::kY, std::string(words.Word(RouteLine::kY)));
  const auto number = [](const std::string& text) { return NumberLike("0", text); };
  line.Set(RouteLine::kAlt, number(waypoint.Alt));
  line.Set(RouteLine::kSpeed, number(waypoint.Speed));
  for (const auto& word : RouteTail(waypoint.Line)) line.Insert(line.size(), word);
  line.Insert(PlaceForMarker(line), waypoint.Marker.empty() ? "&0" : waypoint.Marker);
  return line.Text();
}

/** The lines "TRIGGERS" that belong behind a waypoint, parted by line feeds. */
std::string_view TriggersOf(const Waypoint& waypoint, const Waypoint& before) {
  const bool needed = NeedsTriggers(waypoint.Type);
  if (needed && !waypoint.KeptTriggers.empty()) return waypoint.KeptTriggers;
  if (needed == NeedsTriggers(before.Type)) return before.KeptTriggers;
  return needed ? UsualTriggers(waypoint.Type) : std::string_view();
}

template <class Visit>
void ForEachLine(std::string_view lines, Visit visit) {
  if (lines.empty()) return;
  for (const auto line : SplitAt(lines, '\n')) visit(std::string(line));
}

/** The lines of a waypoint that no text holds. */
std::vector<std::string> NewWaypointLines(const Waypoint& waypoint) {
  if (waypoint.Line.empty()) return {};
  std::vector<std::string> lines{NewWaypoint(waypoint)};
  const auto known = KnownTriggers(waypoint);
  const bool lacks = known.empty() && NeedsTriggers(waypoint.Type);
  ForEachLine(lacks ? UsualTriggers(waypoint.Type) : known,
              [&](std::string line) { lines.push_back(std::move(line)); });
  return lines;
}

void EditRoute(const KeptText& text, LinePatch& patch, const KeptSection& route, const Flight& read,
               const Flight& edited) {
  const auto rows = WaypointsOf(text, route);
  std::size_t next = 0;
  const auto removeUpTo = [&](std::size_t row) {
    for (; next < row; ++next) {
      patch.Remove(rows[next].Line);
      for (const auto line : rows[next].Triggers) patch.Remove(line);
    }
  };
  // A row that comes again, or behind a later one, is put in anew with all that it had.
  const auto insert = [&](const std::string& line) {
    patch.Insert(next < rows.size() ? rows[next].Line : EndOfSection(text, route), line);
  };
  for (const auto& waypoint : edited.Waypoints) {
    const auto row = static_cast<std::size_t>(waypoint.KeptRow);
    if (waypoint.KeptRow < 0 || row >= rows.size()) {
      for (const auto& line : NewWaypointLines(waypoint)) insert(line);
      continue;
    }
    const Waypoint& before = read.Waypoints[row];
    const auto triggers = TriggersOf(waypoint, before);
    const std::size_t line = rows[row].Line;
    if (row < next) {
      insert(EditedWaypoint(text.Lines()[line], before, waypoint));
      ForEachLine(triggers, insert);
      continue;
    }
    removeUpTo(row);
    ++next;
    if (WaypointDiffers(before, waypoint))
      patch.Replace(line, EditedWaypoint(text.Lines()[line], before, waypoint));
    if (before.KeptTriggers == triggers) continue;
    for (const auto old : rows[row].Triggers) patch.Remove(old);
    ForEachLine(triggers, [&](const std::string& added) { patch.Insert(line + 1, added); });
  }
  removeUpTo(rows.size());
}

void InsertRoute(const KeptText& text, LinePatch& patch, const KeptSection& section,
                 const Flight& flight) {
  if (flight.Waypoints.empty()) return;
  const std::size_t place = EndOfSection(text, section);
  patch.Insert(place, "[" + flight.Name + "_Way]");
  for (const auto& waypoint : flight.Waypoints)
    for (const auto& line : NewWaypointLines(waypoint)) patch.Insert(place, line);
}

/** The lines of one flight, cut out of a text. */
LineArray LinesOfFlight(const KeptText& text, std::string_view name) {
  LineArray lines;
  if (const auto* section = text.Find(name))
    for (const auto* part : SectionsOfFlight(text, *section))
      lines.AddRange(text.Lines(), part->Header, EndOfSection(text, *part));
  return lines;
}

/** Tells flights whose lines still are what they were read from. */
class EarlierLines {
 public:
  explicit EarlierLines(const KeptText& text) : text_(text) {}

  /** False where another flight has been written by the name that this one was read by. */
  bool Stand(const Flight& flight) {
    if (flight.KeptIn.empty()) return true;
    // Those that come back together mostly do so from one text.
    if (!earlier_ || !earlier_->Lines().SharesWith(flight.KeptIn)) earlier_.emplace(flight.KeptIn);
    return LinesOfFlight(text_, flight.KeptName) == LinesOfFlight(*earlier_, flight.KeptName);
  }

 private:
  const KeptText& text_;
  std::optional<KeptText> earlier_;
};

}  // namespace

bool SameSkills(const Flight& a, const Flight& b) {
  return a.Skill == b.Skill &&
         std::equal(a.PlaneSlots.begin(), a.PlaneSlots.end(), b.PlaneSlots.begin(),
                    [](const auto& one, const auto& other) { return one.Skill == other.Skill; });
}

bool SameFileName(std::string_view a, std::string_view b) { return EqualNoCase(a, b); }

bool NeedsTriggers(std::string_view type) {
  return FindNoCase(type, "takeoff_00", 0) == 0 || FindNoCase(type, "normfly_40", 0) == 0;
}

std::string_view KnownTriggers(const Waypoint& waypoint) {
  if (waypoint.KeptTriggers.empty()) return {};
  const bool dropped = !NeedsTriggers(waypoint.Type) && NeedsTriggers(KeyOf(waypoint.Line).Key);
  return dropped ? std::string_view() : waypoint.KeptTriggers;
}

std::string_view UsualTriggers(std::string_view type) {
  const bool isTakeOff = FindNoCase(type, "takeoff", 0) == 0;
  return isTakeOff ? "  TRIGGERS 0 0 20 0" : "  TRIGGERS 0 0 0 5 0";
}

std::vector<std::string> RouteTail(std::string_view line) {
  const auto words = KeptWords(line);
  const std::size_t marker = MarkerPlace(words);
  std::vector<std::string> tail;
  for (std::size_t i = RouteLine::kTarget; i < words.size(); ++i)
    if (i != marker) tail.emplace_back(words[i].Text);
  return tail;
}

bool WaypointDiffers(const Waypoint& a, const Waypoint& b) {
  if (a.Type != b.Type || a.Marker != b.Marker) return true;
  if (WholeOf(a.Alt) != WholeOf(b.Alt)) return true;
  if (WholeOf(a.Speed) != WholeOf(b.Speed)) return true;
  if (a.Line == b.Line) return false;
  const WordLine one(a.Line), other(b.Line);
  // One that is missing counts as 0.
  const auto number = [](const WordLine& line, std::size_t place) {
    return line.size() > place ? line.Word(place) : "0";
  };
  return number(one, RouteLine::kX) != number(other, RouteLine::kX) ||
         number(one, RouteLine::kY) != number(other, RouteLine::kY) ||
         RouteTail(a.Line) != RouteTail(b.Line);
}

std::vector<const KeptSection*> SectionsOfFlight(const KeptText& text, const KeptSection& section) {
  std::vector<const KeptSection*> sections{&section};
  if (const auto* route = RouteOf(text, section.Name)) sections.push_back(route);
  if (const auto* weapons = text.Find(std::string(section.Name) + "_weapons"))
    sections.push_back(weapons);
  return sections;
}

std::vector<const Flight*> BecomesOfFlights(const KeptText& text, const Mission& edited) {
  const auto sections = FlightSections(text);
  std::map<std::string, std::size_t> byName;
  for (std::size_t i = 0; i < sections.size(); ++i) byName[LowerKey(sections[i]->Name)] = i;
  // One that comes back with the lines of an earlier text may have been read by a name that another
  // one bears by now.
  const auto isOfText = [&](const Flight& flight) { return flight.KeptIn == edited.AsRead; };
  std::set<std::string> read;
  for (const auto& flight : edited.Flights)
    if (isOfText(flight)) read.insert(LowerKey(flight.KeptName));
  EarlierLines earlier(text);
  std::vector<const Flight*> becomes(sections.size());
  std::size_t last = 0;
  for (const auto& flight : edited.Flights) {
    const auto found = byName.find(LowerKey(flight.KeptName));
    if (found == byName.end() || becomes[found->second]) continue;
    if (!isOfText(flight) && (read.contains(found->first) || !earlier.Stand(flight))) continue;
    if (found->second < last && !EqualNoCase(flight.Name, flight.KeptName)) continue;
    last = std::max(last, found->second);
    becomes[found->second] = &flight;
  }
  return becomes;
}

void EditFlight(const KeptText& text, LinePatch& patch, const KeptSection& section,
                const Flight& read, const Flight& edited) {
  EditOwnSection(text, patch, section, read, edited);
  if (const auto* route = RouteOf(text, section.Name))
    EditRoute(text, patch, *route, read, edited);
  else
    InsertRoute(text, patch, section, edited);
  if (edited.Name == section.Name) return;
  for (const auto* part : SectionsOfFlight(text, section)) {
    const auto suffix = part->Name.substr(section.Name.size());
    RenameSection(text, patch, *part, edited.Name + std::string(suffix));
  }
}

std::vector<std::string> LinesOfNewFlight(const Flight& flight, bool isCopy) {
  LineArray source = LinesOfFlight(KeptText(flight.KeptIn), flight.KeptName);
  const bool isRead = !source.empty();
  if (!isRead) source.Add("[" + flight.Name + "]");
  const KeptText text(source);
  if (text.Sections().empty())
    throw Fault(fault::InvalidCall, "No section can be named \"" + flight.Name + "\".");
  const KeptSection& section = text.Sections().front();
  LinePatch patch(source);
  EditFlight(text, patch, section, isRead ? ReadKeptFlight(text, section) : Flight(), flight);
  for (std::size_t i = section.First; i < section.Last && isCopy; ++i)
    if (Like(LowerKey(KeyOf(source[i]).Key), "spawn#")) patch.Remove(i);
  const LineArray result = patch.Result();
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < result.size(); ++i) lines.emplace_back(result[i]);
  return lines;
}

}  // namespace rws
