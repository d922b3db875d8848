#include "map/base_edits.h"

#include <algorithm>
#include <cmath>

#include "mission/kept_bases.h"
#include "mission/kept_keys.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "services/arrays.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"

namespace rws {

namespace {

constexpr double kFarthest = 1'000'000, kLeastBaseRadius = 500, kMostBaseRadius = 10'000;
constexpr std::size_t kNumbers = 4;
constexpr std::string_view kAircraft = "BornPlace", kCountries = "BornPlaceCountries";

Mission& Current(Document& doc) { return At(doc.Missions, doc.CurMission); }

std::int32_t WholeMetres(double metres, double least, double most) {
  return static_cast<std::int32_t>(std::lround(std::clamp(metres, least, most)));
}

std::string SectionName(std::string_view kind, std::size_t base) {
  return std::string(kind).append(std::to_string(base));
}

/** The mission's lines with the edits of one base. Those of all others are left to the records,
    which know their lines as they are. */
LineArray LinesWithBase(const Document& doc, const Services& services, const Mission& mission,
                        std::size_t base) {
  Mission own = mission;
  ReadKeptRecords(doc, services, own);
  const auto index = static_cast<std::ptrdiff_t>(base);
  At(own.BornPlaces, index) = At(mission.BornPlaces, index);
  return MergedLines(doc, services, own);
}

std::string TextOf(const KeptText& text, const KeptSection* section) {
  std::string lines;
  for (std::size_t i = section ? section->First : 0; section && i < EndOfSection(text, *section);
       ++i)
    lines.append(text.Lines()[i]).append("\n");
  return lines;
}

std::vector<std::string> LinesIn(std::string_view text) {
  std::vector<std::string> lines;
  const std::string plain = Replace(text, "\r", "");
  for (const std::string_view line : SplitAt(plain, '\n'))
    if (!Trim(line).empty()) lines.emplace_back(line);
  return lines;
}

/** The reason why a line cannot be taken; "" for none. */
std::string FaultOf(std::string_view line) {
  if (!HeaderName(line).empty() || Trim(line).starts_with("["))
    return "A line must not open a section: " + std::string(Trim(line));
  return "";
}

std::string FaultOfBase(std::string_view line) {
  const auto words = KeptWords(line);
  for (std::size_t i = 0; i < kNumbers; ++i) {
    const auto number = i < words.size() ? ParseNumber(words[i].Text) : std::nullopt;
    const bool isWhole = number && *number == std::floor(*number) && std::fabs(*number) < 1e9;
    if (!isWhole)
      return "The army, the radius, x and y of a home base are whole numbers: " +
             std::string(Trim(line));
  }
  return FaultOf(line);
}

std::string FaultOf(const BaseLines& lines) {
  const auto own = LinesIn(lines.Line);
  if (own.size() != 1) return "A home base has one line.";
  std::string fault = FaultOfBase(own.front());
  for (const auto* part : {&lines.Aircraft, &lines.Countries})
    for (const auto& line : LinesIn(*part))
      if (fault.empty()) fault = FaultOf(line);
  return fault;
}

/** Gives a section other lines. Without any it goes, and one that is missing comes. */
void SetSection(const KeptText& text, LinePatch& patch, std::string_view kind, std::size_t base,
                const std::vector<std::string>& lines) {
  const std::string name = SectionName(kind, base);
  const KeptSection* section = text.Find(name);
  if (!section && lines.empty()) return;
  if (section && lines.empty())
    return patch.RemoveRange(section->Header, EndOfSection(text, *section));
  std::size_t place = section ? section->First : PlaceOfBaseSection(text, base + 1);
  if (!section) patch.Insert(place, "[" + name + "]");
  const std::size_t end = section ? EndOfSection(text, *section) : place;
  for (const auto& line : lines) {
    // Lines that stay keep their ends.
    if (place < end)
      patch.Replace(place++, line);
    else
      patch.Insert(end, line);
  }
  patch.RemoveRange(place, end);
}

/** True if another base than that of a line stands at a place: sections are named by it. */
bool IsTaken(const LineArray& lines, const std::vector<std::size_t>& bases, std::size_t own,
             const std::string& place) {
  return std::any_of(bases.begin(), bases.end(), [&](std::size_t line) {
    return line != own && PlaceInBaseLine(lines[line]) == place;
  });
}

}  // namespace

bool MayEditBases(const Document& doc) {
  const auto current = static_cast<std::size_t>(doc.CurMission);
  return current < doc.Missions.size() && doc.Missions[current].KeepsLines;
}

bool MoveBase(Document& doc, std::size_t base, MapPoint to) {
  auto& bases = Current(doc).BornPlaces;
  BornPlace& moved = At(bases, static_cast<std::ptrdiff_t>(base));
  if (!MayEditBases(doc) || std::isnan(to.X) || std::isnan(to.Y)) return false;
  std::int32_t x = WholeMetres(to.X, -kFarthest, kFarthest);
  const std::int32_t y = WholeMetres(to.Y, -kFarthest, kFarthest);
  const auto isTaken = [&](const BornPlace& other) {
    return &other != &moved && other.X == x && other.Y == y;
  };
  while (std::any_of(bases.begin(), bases.end(), isTaken)) ++x;
  moved.X = x;
  moved.Y = y;
  return true;
}

bool ResizeBase(Document& doc, std::size_t base, double radius) {
  BornPlace& sized = At(Current(doc).BornPlaces, static_cast<std::ptrdiff_t>(base));
  if (!MayEditBases(doc) || std::isnan(radius)) return false;
  sized.Radius = WholeMetres(radius, kLeastBaseRadius, kMostBaseRadius);
  return true;
}

BaseLines LinesOfBase(const Document& doc, const Services& services, std::size_t base) {
  const LineArray lines = LinesWithBase(doc, services, At(doc.Missions, doc.CurMission), base);
  const KeptText text(lines);
  const auto bases = HomeBaseLines(text);
  BaseLines found;
  found.Line = lines[At(bases, static_cast<std::ptrdiff_t>(base))];
  found.Aircraft = TextOf(text, text.Find(SectionName(kAircraft, base)));
  found.Countries = TextOf(text, text.Find(SectionName(kCountries, base)));
  return found;
}

std::string SetLinesOfBase(Document& doc, const Services& services, std::size_t base,
                           const BaseLines& lines) {
  Mission& mission = Current(doc);
  BornPlace& record = At(mission.BornPlaces, static_cast<std::ptrdiff_t>(base));
  if (!MayEditBases(doc)) return "The lines of this mission are not kept.";
  if (std::string fault = FaultOf(lines); !fault.empty()) return fault;
  Mission edited = mission;
  edited.Lines = LinesWithBase(doc, services, mission, base);
  const KeptText text(edited.Lines);
  const auto bases = HomeBaseLines(text);
  const std::size_t own = At(bases, static_cast<std::ptrdiff_t>(base));
  const std::string line = LinesIn(lines.Line).front();
  LinePatch patch(edited.Lines);
  patch.Replace(own, line);
  const std::string place = PlaceInBaseLine(line);
  if (place != PlaceInBaseLine(edited.Lines[own])) {
    if (IsTaken(edited.Lines, bases, own, place)) return "Another home base stands there already.";
    MoveBaseSections(text, patch, base, place);
  }
  SetSection(text, patch, kAircraft, base, LinesIn(lines.Aircraft));
  SetSection(text, patch, kCountries, base, LinesIn(lines.Countries));
  LineArray changed = patch.Result();
  edited.Lines = changed;
  ReadKeptRecords(doc, services, edited);
  record = At(edited.BornPlaces, static_cast<std::ptrdiff_t>(base));
  mission.Lines = std::move(changed);
  return "";
}

}  // namespace rws
