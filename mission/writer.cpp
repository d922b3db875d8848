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
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr std::string_view kIndent = "  ";

std::string_view IndentOf(std::string_view line) { return IsSectionHeader(line) ? "" : kIndent; }

std::ptrdiff_t Signed(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

bool EndsHead(std::string_view line, const std::string& lower) {
  return Like(lower, "*?wing?*") || Contains(line, "Chiefs") || Contains(line, "NStationary");
}

/** One run of `BuildMissionFile`. */
class Builder {
 public:
  Builder(const Services& services, LineArray& output, Mission& mission, const ShownValues& shown)
      : services_(services), output_(output), mission_(mission), shown_(shown) {}

  bool Build() {
    const auto& text = mission_.Lines.FileText();
    output_.Reserve(text.size() + text.size() / 8, mission_.Lines.size() + 64);
    WalkHead();
    if (!FindTail()) return false;
    if (regenerate_) Regenerate();
    WalkTail();
    return true;
  }

 private:
  void WalkHead();
  void HeadLine(std::string line, const std::string& lower);
  void ReplaceValues(std::string& line, const std::string& lower);
  void ReplaceOrComplete(std::string& line, const std::string& value, std::string& field,
                         const std::string& shown);
  void AddConstants();
  void DropOrKeepConstants(std::string& line, const std::string& lower);
  void ReplacePlayer(std::string& line, const std::string& lower);
  void PlaceBriefSound();
  void AddMissingPlayer();
  bool FindTail();
  void Regenerate();
  void WalkTail();
  std::size_t SkipOldBornPlaces(std::size_t line) const;

  const Services& services_;
  LineArray& output_;
  Mission& mission_;
  const ShownValues& shown_;

  std::size_t lineIndex_ = 0, tailStart_ = 0;
  bool headEnded_ = false, lineHandled_ = false, regenerate_ = true;
  bool timeConstantDone_ = false, weaponsConstantDone_ = false;
  bool playerDone_ = false, playerNumDone_ = false;
};

/** The second word of a line; nothing when it has but one. */
std::optional<std::string> SecondWord(std::string_view line) {
  const auto words = SplitAt(Trim(line), ' ');
  if (words.size() < 2) return {};
  return std::string(words[1]);
}

void CompleteLine(std::string& line, const std::string& value) {
  line = std::string(Trim(line)) + " " + value;
}

void Builder::WalkHead() {
  std::string lower;
  while (lineIndex_ + 1 < mission_.Lines.size() && !headEnded_) {
    const std::string line(mission_.Lines[lineIndex_]);
    services_.Page.LCaseInto(lower, line);
    lineHandled_ = false;
    headEnded_ = EndsHead(line, lower);
    HeadLine(line, lower);
    ++lineIndex_;
  }
}

void Builder::HeadLine(std::string line, const std::string& lower) {
  ReplaceValues(line, lower);
  DropOrKeepConstants(line, lower);
  ReplacePlayer(line, lower);
  if (headEnded_) return AddMissingPlayer();
  if (line.empty()) return;
  output_.Add(IndentOf(line), Trim(line));
  if (IsSectionHeader(line) && EqualNoCase(Trim(line), "[MAIN]")) PlaceBriefSound();
}

/** Replaces the second word of a cloud or time line wherever it stands in the line. A line without
    one is completed with what the window shows, and the mission takes that value. */
void Builder::ReplaceOrComplete(std::string& line, const std::string& value, std::string& field,
                                const std::string& shown) {
  lineHandled_ = true;
  if (const auto old = SecondWord(line)) {
    line = Replace(line, *old, value);
  } else {
    field = shown;
    CompleteLine(line, field);
  }
}

void Builder::ReplaceValues(std::string& line, const std::string& lower) {
  if (Like(lower, "*cloudt*"))
    ReplaceOrComplete(line, mission_.CloudType, mission_.CloudType,
                      std::to_string(shown_.WeatherRow));
  if (Like(lower, "*cloudh*")) {
    ReplaceOrComplete(line, FormatNumber(mission_.CloudHeight, "###.0"), mission_.CloudHeight,
                      shown_.CloudHeight);
    std::replace(line.begin(), line.end(), ',', '.');
  }
  // Ahead of the time line's test on purpose: only a cloud line brings the constants in.
  if (lineHandled_) AddConstants();
  if (Like(lower, "*time #*") || Trim(lower) == "time")
    ReplaceOrComplete(line, mission_.Time, mission_.Time, ClockToHours(shown_.Clock));
}

void Builder::AddConstants() {
  if (!timeConstantDone_ && mission_.TimeConstant == 1) {
    output_.Add(kIndent, "TIMECONSTANT 1");
    timeConstantDone_ = true;
  }
  if (!weaponsConstantDone_ && mission_.WeaponsConstant == 1) {
    output_.Add(kIndent, "WEAPONSCONSTANT 1");
    weaponsConstantDone_ = true;
  }
}

void Builder::DropOrKeepConstants(std::string& line, const std::string& lower) {
  const auto decide = [&](const char* pattern, std::int16_t constant, bool& done) {
    if (!Like(lower, pattern)) return;
    if (constant == 1)
      done = true;
    else
      line.clear();
  };
  decide("*timeconstant *", mission_.TimeConstant, timeConstantDone_);
  decide("*weaponsconstant *", mission_.WeaponsConstant, weaponsConstantDone_);
}

void Builder::ReplacePlayer(std::string& line, const std::string& lower) {
  const auto rewrite = [&](const char* pattern, std::string_view key, const std::string& value,
                           bool& done) {
    if (!Like(lower, pattern)) return;
    line = value.empty() ? "" : std::string(kIndent).append(key).append(value);
    done = done || !value.empty();
  };
  rewrite("*player *", "player ", mission_.Player, playerDone_);
  rewrite("*playernu*", "playerNum ", mission_.PlayerNum, playerNumDone_);
}

void Builder::PlaceBriefSound() {
  const std::size_t next = lineIndex_ + 1;
  if (mission_.BriefSoundLine.empty()) return;
  if (ContainsNoCase(mission_.Lines[next], "briefsound"))
    mission_.Lines.Set(next, mission_.BriefSoundLine);
  else
    output_.Add(mission_.BriefSoundLine);
}

void Builder::AddMissingPlayer() {
  if (!mission_.Player.empty() && !playerDone_) output_.Add(kIndent, "player " + mission_.Player);
  if (!mission_.PlayerNum.empty() && !playerNumDone_)
    output_.Add(kIndent, "playerNum " + mission_.PlayerNum);
}

/** Finds the line behind the last route header. Without one the tail begins at the first line, and
   a mission with neither routes nor home bases gets its head twice; both are as required. */
bool Builder::FindTail() {
  const LineArray& lines = mission_.Lines;
  const std::string& text = lines.FileText();
  std::size_t hit = lineIndex_ < lines.size() ? lines.Start(lineIndex_) : text.size();
  for (; (hit = text.find("_Way", hit)) != text.npos; ++hit) tailStart_ = lines.LineAt(hit) + 1;
  if (tailStart_ != 0 || !mission_.HasBornPlace) return true;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!Contains(lines[i], "Chiefs") && !Contains(lines[i], "NStationary")) continue;
    tailStart_ = i;
    regenerate_ = false;
    return true;
  }
  return false;
}

void Builder::Regenerate() {
  const auto& flights = mission_.Flights;
  std::unordered_map<std::string_view, std::vector<std::size_t>> byName;
  output_.Add("[Wing]");
  for (std::size_t i = 0; i < flights.size(); ++i) {
    byName[flights[i].Name].push_back(i);
    output_.Add(kIndent, Trim(flights[i].Name));
  }
  for (const auto& flight : flights) {
    if (flight.Status == "*") continue;
    // All flights of this name, so that two of one name are written twice each.
    const auto same = byName.find(Trim(flight.Name));
    if (same == byName.end()) continue;
    for (const std::size_t i : same->second) {
      // Thousands of flights of one name would be millions of sections.
      if (output_.FileText().size() > LineArray::kLargest / 2) throw OverflowFault();
      FlightArray(services_, output_, flights[i]);
      WaypointArray(services_, output_, flights[i]);
    }
  }
}

std::size_t Builder::SkipOldBornPlaces(std::size_t line) const {
  const auto isOld = [&](std::string_view text) {
    return text.starts_with("  ") || text.starts_with("[Born");
  };
  // Home bases that run to the very last line have nothing behind them to stop at: the mission is
  // then not written.
  do {
    ++line;
  } while (isOld(At(mission_.Lines, Signed(line))));
  return line;
}

/** True if a line of the tail is written just as it stands. */
bool IsInWrittenForm(std::string_view line) {
  if (line.empty() || line.back() == ' ') return false;
  return line[0] == '[' || (line.size() > 2 && line.starts_with(kIndent) && line[2] != ' ');
}

void Builder::WalkTail() {
  const LineArray& lines = mission_.Lines;
  std::size_t i = tailStart_;
  while (i < lines.size() && !IsSectionHeader(lines[i])) ++i;
  // Nearly every line comes back as it was; runs of them are copied in one go.
  std::size_t kept = i;
  for (; i < lines.size(); ++i) {
    const bool isBornPlace = IsSectionHeader(lines[i]) && EqualNoCase(lines[i], "[bornplace]");
    if (!isBornPlace && IsInWrittenForm(lines[i])) continue;
    output_.AddRange(lines, kept, i);
    const std::string_view indent = IndentOf(lines[i]);
    if (isBornPlace) {
      NewBornPlace(services_, output_, mission_);
      // The line that ends the old text keeps the indent of the header before it: none.
      i = SkipOldBornPlaces(i);
    }
    output_.Add(indent, Trim(lines[i]));
    kept = i + 1;
  }
  output_.AddRange(lines, kept, i);
}

}  // namespace

bool BuildMissionFile(Document& doc, const Services& services, LineArray& output,
                      std::size_t mission, const ShownValues& shown) {
  bool complete = false;
  const bool built = LogAndLeave(services, "BuildMissionFile", [&] {
    Mission& record = At(doc.Missions, Signed(mission));
    if (!record.Loaded) return;
    complete = Builder(services, output, record, shown).Build();
  });
  return built && complete;
}

}  // namespace rws
