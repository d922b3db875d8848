#include "mission/writer.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "mission/line_values.h"
#include "services/clock.h"
#include "services/error_log.h"
#include "services/faults.h"
#include "services/letter_set.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kIndent = "  ";

std::string_view IndentOf(std::string_view line) { return IsSectionHeader(line) ? "" : kIndent; }

bool EndsHead(std::string_view line, const LetterLine& lower) {
  return lower.Like("*?wing?*") || Contains(line, "Chiefs") || Contains(line, "NStationary");
}

/** The second word of a line; nothing when it has but one. */
std::optional<std::string> SecondWord(std::string_view line) {
  const auto words = SplitAt(Trim(line), ' ');
  if (words.size() < 2) return {};
  return std::string(words[1]);
}

/** Replaces the second word of a cloud or time line wherever it stands in the line. A line without
    one is completed with what the window shows, and the mission takes that value. */
void ReplaceOrComplete(std::string& line, const std::string& value, std::string& field,
                       const std::string& shown) {
  if (const auto old = SecondWord(line)) {
    line = Replace(line, *old, value);
  } else {
    field = shown;
    line = std::string(Trim(line)) + " " + shown;
  }
}

/** A key that is written while its field is 1. */
struct ConstantKey {
  LetterPattern Pattern;
  const char* Text;
  const std::int16_t& Field;
  bool Done = false;

  void Add(LineArray& output) {
    if (Done || Field != 1) return;
    output.Add(kIndent, Text);
    Done = true;
  }

  void DropOrKeep(std::string& line, const LetterLine& lower) {
    if (!lower.Like(Pattern)) return;
    if (Field == 1)
      Done = true;
    else
      line.clear();
  }
};

/** A key that is written while its field has a value. */
struct PlayerKey {
  LetterPattern Pattern;
  const char* Text;
  const std::string& Field;
  bool Done = false;

  void Rewrite(std::string& line, const LetterLine& lower) {
    if (!lower.Like(Pattern)) return;
    line = Field.empty() ? "" : std::string(kIndent).append(Text).append(Field);
    Done = Done || !Field.empty();
  }

  void AddMissing(LineArray& output) const {
    if (!Field.empty() && !Done) output.Add(kIndent, Text + Field);
  }
};

/** Writes what stands ahead of the flights, line by line. */
class Head {
 public:
  Head(const Services& services, LineArray& output, Mission& mission, const ShownValues& shown)
      : services_(services), output_(output), mission_(mission), shown_(shown) {}

  /** Gives the index of the line behind the one that ended the head. */
  std::size_t Write();

 private:
  bool ReplaceClouds(std::string& line, const LetterLine& lower);
  void ReplaceTime(std::string& line, const LetterLine& lower);
  void Edit(std::string& line, const LetterLine& lower);
  void PlaceBriefSound(std::size_t next);

  const Services& services_;
  LineArray& output_;
  Mission& mission_;
  const ShownValues& shown_;
  ConstantKey constants_[2] = {
      {"*timeconstant *", "TIMECONSTANT 1", mission_.TimeConstant},
      {"*weaponsconstant *", "WEAPONSCONSTANT 1", mission_.WeaponsConstant}};
  PlayerKey player_[2] = {{"*player *", "player ", mission_.Player},
                          {"*playernu*", "playerNum ", mission_.PlayerNum}};
};

std::size_t Head::Write() {
  std::string line, lowered;
  std::size_t i = 0;
  for (bool ended = false; i + 1 < mission_.Lines.size() && !ended; ++i) {
    line = mission_.Lines[i];
    services_.Page.LCaseInto(lowered, line);
    const LetterLine lower(lowered);
    ended = EndsHead(line, lower);
    // The line that ends the head may bring in a constant, but is not written.
    Edit(line, lower);
    if (ended)
      for (const auto& key : player_) key.AddMissing(output_);
    if (ended || line.empty()) continue;
    output_.Add(IndentOf(line), Trim(line));
    if (IsSectionHeader(line) && EqualNoCase(Trim(line), "[MAIN]")) PlaceBriefSound(i + 1);
  }
  return i;
}

void Head::Edit(std::string& line, const LetterLine& lower) {
  // Only a cloud line brings the constants in, ahead of itself.
  if (ReplaceClouds(line, lower))
    for (auto& key : constants_) key.Add(output_);
  ReplaceTime(line, lower);
  for (auto& key : constants_) key.DropOrKeep(line, lower);
  for (auto& key : player_) key.Rewrite(line, lower);
}

bool Head::ReplaceClouds(std::string& line, const LetterLine& lower) {
  const bool type = lower.Like("*cloudt*"), height = lower.Like("*cloudh*");
  if (type)
    ReplaceOrComplete(line, mission_.CloudType, mission_.CloudType,
                      std::to_string(shown_.WeatherRow));
  if (height) {
    ReplaceOrComplete(line, FormatNumber(mission_.CloudHeight, "###.0"), mission_.CloudHeight,
                      shown_.CloudHeight);
    std::replace(line.begin(), line.end(), ',', '.');
  }
  return type || height;
}

void Head::ReplaceTime(std::string& line, const LetterLine& lower) {
  if (lower.Like("*time #*") || Trim(lower.Lower) == "time")
    ReplaceOrComplete(line, mission_.Time, mission_.Time, ClockToHours(shown_.Clock));
}

void Head::PlaceBriefSound(std::size_t next) {
  if (mission_.BriefSoundLine.empty()) return;
  if (ContainsNoCase(mission_.Lines[next], "briefsound"))
    mission_.Lines.Set(next, mission_.BriefSoundLine);
  else
    output_.Add(mission_.BriefSoundLine);
}

struct Tail {
  std::size_t Start = 0;
  bool HasFlights = true;
};

/** Finds the line behind the last route header, looking from line `from` on. Without one the tail
    begins at the first line, and a mission with neither routes nor home bases gets its head twice;
    one with home bases has no flights and needs [Chiefs] or [NStationary]. All as required. */
std::optional<Tail> FindTail(const Mission& mission, std::size_t from) {
  const LineArray& lines = mission.Lines;
  const std::string& text = lines.FileText();
  Tail tail;
  std::size_t hit = from < lines.size() ? lines.Start(from) : text.size();
  for (; (hit = text.find("_Way", hit)) != text.npos; ++hit) tail.Start = lines.LineAt(hit) + 1;
  if (tail.Start != 0 || !mission.HasBornPlace) return tail;
  for (std::size_t i = 0; i < lines.size(); ++i)
    if (Contains(lines[i], "Chiefs") || Contains(lines[i], "NStationary")) return Tail{i, false};
  return {};
}

void WriteFlights(const Services& services, LineArray& output, const std::vector<Flight>& flights) {
  std::unordered_map<std::string_view, std::vector<std::size_t>> byName;
  output.Add("[Wing]");
  for (std::size_t i = 0; i < flights.size(); ++i) {
    byName[flights[i].Name].push_back(i);
    output.Add(kIndent, Trim(flights[i].Name));
  }
  for (const auto& flight : flights) {
    if (flight.Status == "*") continue;
    // All flights of this name, so that two of one name are written twice each.
    const auto same = byName.find(Trim(flight.Name));
    if (same == byName.end()) continue;
    for (const std::size_t i : same->second) {
      // Thousands of flights of one name would be millions of sections.
      if (output.FileText().size() > LineArray::kLargest / 2) throw OverflowFault();
      FlightArray(services, output, flights[i]);
      WaypointArray(services, output, flights[i]);
    }
  }
}

/** The line behind the home bases whose header is line `line`. */
std::size_t SkipOldBornPlaces(const LineArray& lines, std::size_t line) {
  const auto isOld = [&](std::string_view text) {
    return text.starts_with("  ") || text.starts_with("[Born");
  };
  // Home bases that run to the very last line have nothing behind them to stop at: the mission is
  // then not written.
  do {
    ++line;
  } while (isOld(At(lines, static_cast<std::ptrdiff_t>(line))));
  return line;
}

/** True if a line of the tail is written just as it stands. */
bool IsInWrittenForm(std::string_view line) {
  if (line.empty() || line.back() == ' ') return false;
  return line[0] == '[' || (line.size() > 2 && line.starts_with(kIndent) && line[2] != ' ');
}

void WriteTail(const Services& services, LineArray& output, const Mission& mission,
               std::size_t start) {
  const LineArray& lines = mission.Lines;
  std::size_t i = start;
  while (i < lines.size() && !IsSectionHeader(lines[i])) ++i;
  // Nearly every line comes back as it was; runs of them are copied in one go.
  std::size_t kept = i;
  for (; i < lines.size(); ++i) {
    const bool isBornPlace = IsSectionHeader(lines[i]) && EqualNoCase(lines[i], "[bornplace]");
    if (!isBornPlace && IsInWrittenForm(lines[i])) continue;
    output.AddRange(lines, kept, i);
    const std::string_view indent = IndentOf(lines[i]);
    if (isBornPlace) {
      NewBornPlace(services, output, mission);
      // The line that ends the old text keeps the indent of the header before it: none.
      i = SkipOldBornPlaces(lines, i);
    }
    output.Add(indent, Trim(lines[i]));
    kept = i + 1;
  }
  output.AddRange(lines, kept, i);
}

}  // namespace

bool BuildMissionFile(Document& doc, const Services& services, LineArray& output,
                      std::size_t mission, const ShownValues& shown, std::string* reason) {
  bool complete = false;
  const auto build = [&] {
    Mission& record = At(doc.Missions, static_cast<std::ptrdiff_t>(mission));
    if (!record.Loaded) return;
    const std::size_t size = record.Lines.FileText().size();
    output.Reserve(size + size / 8, record.Lines.size() + 64);
    const std::size_t behindHead = Head(services, output, record, shown).Write();
    const auto tail = FindTail(record, behindHead);
    if (!tail) return;
    if (tail->HasFlights) WriteFlights(services, output, record.Flights);
    WriteTail(services, output, record, tail->Start);
    complete = true;
  };
  Trap(build, [&](const Fault& caught) {
    LogError(services, caught.Text, "BuildMissionFile");
    if (reason) *reason = caught.Text;
  });
  return complete;
}

}  // namespace rws
