#include "library/columns.h"

#include <cmath>
#include <cstdio>

#include "services/file_system.h"

namespace rws {

namespace {

struct ColumnRow {
  std::string_view Title, Key;
};

constexpr std::array<ColumnRow, kMissionColumns> kColumns = {
    {{"Mission", "mission"},
     {"Folder", "folder"},
     {"Briefing", "briefing"},
     {"Kind", "kind"},
     {"Map", "map"},
     {"Time", "time"},
     {"Weather", "weather"},
     {"Flights", "flights"},
     {"Planes", "planes"},
     {"Player's aircraft", "player_aircraft"},
     {"Parked", "parked"},
     {"Home bases", "home_bases"},
     {"Changed", "changed"},
     {"Trouble", "trouble"}}};

template <class... Numbers>
std::string Printed(const char* format, Numbers... numbers) {
  char text[64];
  std::snprintf(text, sizeof(text), format, numbers...);
  return text;
}

std::string ClockText(float hours) {
  if (hours < 0) return "";
  // A day has no minute 1440.
  const int minutes = std::min(static_cast<int>(std::lround(hours * 60)), 24 * 60 - 1);
  return Printed("%02d:%02d", minutes / 60, minutes % 60);
}

std::string ChangedText(const IndexedMission& mission) {
  if (mission.Changed == 0) return "";
  const DateTime at = FileSystem::LocalTime({true, mission.Size, mission.Changed});
  return Printed("%04d-%02d-%02d %02d:%02d:%02d", at.Year, at.Month, at.Day, at.Hour, at.Minute,
                 at.Second);
}

std::string KindText(const IndexedMission& mission) {
  std::string text(KindWord(mission.Kind));
  if (mission.KindGuessed && !text.empty()) text += '?';
  return text;
}

bool IsUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t start = i;
    // A byte that is no UTF-8 stands for itself and is one alone.
    if (NextCharacter(text, i) >= 0x80 && i == start + 1) return false;
  }
  return true;
}

}  // namespace

std::string_view ColumnTitle(MissionColumn column) {
  return kColumns[static_cast<std::size_t>(column)].Title;
}

std::string_view ColumnKey(MissionColumn column) {
  return kColumns[static_cast<std::size_t>(column)].Key;
}

bool IsNumberColumn(MissionColumn column) {
  return column == MissionColumn::Flights || column == MissionColumn::Planes ||
         column == MissionColumn::Parked || column == MissionColumn::HomeBases;
}

std::uint32_t CellNumber(const MissionIndex& index, std::size_t row, MissionColumn column) {
  const IndexedMission& mission = index[row];
  if (column == MissionColumn::Flights) return mission.Flights;
  if (column == MissionColumn::Planes) return mission.Planes;
  if (column == MissionColumn::Parked) return mission.Parked;
  return column == MissionColumn::HomeBases ? mission.HomeBases : 0;
}

std::string CellText(const MissionIndex& index, std::size_t row, MissionColumn column) {
  const IndexedMission& mission = index[row];
  const CodePage& page = index.Page();
  switch (column) {
    case MissionColumn::Mission:
      return PathText(page, index.Text(row, MissionText::FileName));
    case MissionColumn::Folder:
      return PathText(page, index.Folder(row));
    case MissionColumn::Briefing:
      return page.ToUtf8(index.Text(row, MissionText::BriefingName));
    case MissionColumn::Kind:
      return KindText(mission);
    case MissionColumn::Map:
      return page.ToUtf8(index.Maps[mission.Map].Shown);
    case MissionColumn::Time:
      return ClockText(mission.Hours);
    case MissionColumn::Weather:
      return std::string(WeatherWord(mission.Weather));
    case MissionColumn::Player:
      return page.ToUtf8(index.Aircraft[index.PlayerClass(row)].Shown);
    case MissionColumn::Changed:
      return ChangedText(mission);
    case MissionColumn::Trouble:
      return std::string(index.Text(row, MissionText::FaultText));
    default:
      return mission.IsRead ? std::to_string(CellNumber(index, row, column)) : "";
  }
}

std::string PathText(const CodePage& page, std::string_view path) {
  return IsUtf8(path) ? std::string(path) : page.ToUtf8(path);
}

std::string CsvCell(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == text.npos) return std::string(text);
  std::string cell = "\"";
  for (const char c : text) cell.append(c == '"' ? 2 : 1, c);
  return cell + '"';
}

std::string CsvText(const MissionIndex& index, const std::vector<std::uint32_t>& rows,
                    const std::vector<MissionColumn>& columns) {
  std::string text;
  const auto add = [&](auto cellOf) {
    for (const auto column : columns)
      text.append(column == columns.front() ? "" : ",").append(CsvCell(cellOf(column)));
    text += "\r\n";
  };
  add([](MissionColumn column) { return ColumnTitle(column); });
  for (const auto row : rows)
    add([&](MissionColumn column) { return CellText(index, row, column); });
  return text;
}

}  // namespace rws
