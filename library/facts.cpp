#include "library/facts.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "mission/kept_text.h"
#include "mission/line_values.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kRouteSuffix = "_way", kClassPrefix = "air.";
constexpr std::string_view kParkedPlane = "vehicles.planes.Plane";

struct MainKey {
  std::string_view Key;
  std::string MissionFacts::*Value;
};

constexpr std::array<MainKey, 8> kMain = {{{"MAP", &MissionFacts::MapPath},
                                           {"TIME", &MissionFacts::Time},
                                           {"CloudType", &MissionFacts::CloudType},
                                           {"CloudHeight", &MissionFacts::CloudHeight},
                                           {"army", &MissionFacts::Army},
                                           {"player", &MissionFacts::Player},
                                           {"playerNum", &MissionFacts::PlayerNum},
                                           {"briefSound", &MissionFacts::Sound}}};

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }

/** True for the letters that one of the keys begins with: most lines hold none of them. */
constexpr bool BeginsMainKey(char c) {
  const int lower = c | 0x20;
  return lower == 'm' || lower == 't' || lower == 'c' || lower == 'p' || lower == 'a' ||
         lower == 'b';
}
constexpr bool BeginsFlightKey(char c) {
  const int lower = c | 0x20;
  return lower == 'p' || lower == 'c' || lower == 'o';
}

std::string_view WithoutIndent(std::string_view line) {
  std::size_t i = 0;
  while (i < line.size() && IsBlank(line[i])) ++i;
  return line.substr(i);
}

/** True for a line that says something to the game; it has no indent. */
bool HasKey(std::string_view line) {
  if (line.empty() || static_cast<unsigned char>(line[0]) < ' ') return false;
  return line[0] != '#' && line[0] != ';' && !line.starts_with("//");
}

bool EndsNoCase(std::string_view text, std::string_view ending) {
  return text.size() >= ending.size() &&
         EqualNoCase(text.substr(text.size() - ending.size()), ending);
}

std::string_view SecondWord(std::string_view line) {
  const std::size_t blank = line.find_first_of(" \t");
  return blank == line.npos ? std::string_view() : WithoutIndent(line.substr(blank));
}

int WholeNumber(std::string_view text) {
  return static_cast<int>(std::clamp(Val(text), -1.0, 1e6));
}

}  // namespace

const FlightFacts* MissionFacts::PlayerFlight() const {
  const auto found = std::find_if(Flights.begin(), Flights.end(),
                                  [&](const FlightFacts& flight) { return flight.Name == Player; });
  return found == Flights.end() ? nullptr : &*found;
}

void FactsReader::Read(std::string_view bytes, MissionFacts& facts) {
  names_.Clear();
  sections_.clear();
  main_.assign(kMain.size(), {});
  mainKnown_.assign(kMain.size(), false);
  in_ = In::Other;
  hasMain_ = hasWing_ = false;
  parked_ = bases_ = 0;
  while (!bytes.empty()) {
    const void* found = std::memchr(bytes.data(), '\n', bytes.size());
    const std::size_t end = found ? static_cast<const char*>(found) - bytes.data() : bytes.size();
    TakeText(bytes.substr(0, end));
    bytes.remove_prefix(std::min(bytes.size(), end + 1));
  }
  for (std::size_t i = 0; i < kMain.size(); ++i) facts.*kMain[i].Value = main_[i];
  facts.CloudHeight = IntegerPart(facts.CloudHeight);
  facts.Parked = parked_;
  facts.HomeBases = bases_;
  TakeFlights(facts);
  JudgeMain(facts, hasMain_, names_.size() > 0);
}

/** What stands between two line feeds: a line, or several that end in carriage returns alone. */
void FactsReader::TakeText(std::string_view text) {
  if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
  while (!text.empty()) {
    const void* found = std::memchr(text.data(), '\r', text.size());
    const std::size_t end = found ? static_cast<const char*>(found) - text.data() : text.size();
    TakeLine(WithoutIndent(text.substr(0, end)));
    text.remove_prefix(std::min(text.size(), end + 1));
  }
}

void FactsReader::TakeLine(std::string_view line) {
  if (!HasKey(line)) return;
  if (line[0] == '[') {
    const auto name = HeaderName(line);
    if (!name.empty()) return Open(name);
  }
  // Without a section of its own, all ahead of the list of flights stands for the whole mission.
  if (in_ == In::Main || (!hasMain_ && !hasWing_)) TakeMain(line);
  if (in_ == In::Route) {
    const bool isTrigger = (line[0] | 0x20) == 't' && EqualNoCase(KeyOf(line).Key, "TRIGGERS");
    if (!isTrigger) ++sections_.back().Waypoints;
    return;
  }
  if (in_ == In::Ignored) return;
  if (in_ == In::Bases) ++bases_;
  if (in_ == In::Parked && SecondWord(line).starts_with(kParkedPlane)) ++parked_;
  if (in_ == In::Unnamed && line.starts_with(kParkedPlane)) ++parked_;
  if (!sections_.empty()) TakeFlight(line);
}

void FactsReader::Open(std::string_view name) {
  in_ = In::Ignored;
  if (names_.Add(name) < sections_.size()) return;
  sections_.emplace_back().Name = name;
  in_ = In::Other;
  if (EndsNoCase(name, kRouteSuffix)) in_ = In::Route;
  if (EqualNoCase(name, "BornPlace")) in_ = In::Bases;
  if (EqualNoCase(name, "NStationary")) in_ = In::Parked;
  if (EqualNoCase(name, "Stationary")) in_ = In::Unnamed;
  if (EqualNoCase(name, "Wing")) hasWing_ = true;
  if (!EqualNoCase(name, "MAIN")) return;
  in_ = In::Main;
  hasMain_ = true;
  main_.assign(kMain.size(), {});
  mainKnown_.assign(kMain.size(), false);
}

void FactsReader::TakeMain(std::string_view line) {
  if (!BeginsMainKey(line[0])) return;
  const KeptKey key = KeyOf(line);
  for (std::size_t i = 0; i < kMain.size(); ++i) {
    if (mainKnown_[i] || !EqualNoCase(key.Key, kMain[i].Key)) continue;
    mainKnown_[i] = true;
    main_[i] = key.Value;
  }
}

void FactsReader::TakeFlight(std::string_view line) {
  if (!BeginsFlightKey(line[0])) return;
  const KeptKey key = KeyOf(line);
  Section& section = sections_.back();
  const auto take = [&](std::string_view name, std::string_view& value, bool& has) {
    if (has || !EqualNoCase(key.Key, name)) return;
    has = true;
    value = key.Value;
  };
  take("Planes", section.Planes, section.HasPlanes);
  take("Class", section.Class, section.HasClass);
  take("OnlyAI", section.OnlyAI, section.HasOnlyAI);
}

void FactsReader::TakeFlights(MissionFacts& facts) const {
  facts.Flights.clear();
  facts.Routes = 0;
  for (const auto& section : sections_) {
    if (section.Planes.empty()) continue;
    FlightFacts& flight = facts.Flights.emplace_back();
    flight.Name = section.Name;
    flight.Class = section.Class;
    if (FindNoCase(flight.Class, kClassPrefix, 0) == 0) flight.Class.erase(0, kClassPrefix.size());
    flight.Planes = WholeNumber(section.Planes);
    flight.OnlyAI = Val(section.OnlyAI) != 0;
    const auto route = names_.Find(section.Name, kRouteSuffix);
    if (route == SectionNames::kNone) continue;
    ++facts.Routes;
    flight.Waypoints = sections_[route].Waypoints;
  }
}

void FactsReader::JudgeMain(MissionFacts& facts, bool hasMain, bool hasSections) {
  facts.Fault = MissionFault::None;
  if (facts.MapPath.empty()) facts.Fault = MissionFault::NoMap;
  if (!hasMain) facts.Fault = MissionFault::NoMain;
  if (!hasSections) facts.Fault = MissionFault::Empty;
  facts.FaultText = FaultWords(facts.Fault);
}

std::string_view FaultWords(MissionFault fault) {
  switch (fault) {
    case MissionFault::None:
      return "";
    case MissionFault::Unreadable:
      return "The file cannot be read.";
    case MissionFault::Empty:
      return "The file holds no section: it is no mission.";
    case MissionFault::NoMain:
      return "The section [MAIN] is missing: the game refuses the mission.";
    case MissionFault::NoMap:
      return "No map is named: the game refuses the mission.";
  }
  return "";
}

}  // namespace rws
