#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "library/index.h"

/** What a table of missions shows, and a list of them for other programs. */
namespace rws {

enum class MissionColumn : std::uint8_t {
  Mission,
  Folder,
  Briefing,
  Kind,
  Map,
  Time,
  Weather,
  Flights,
  Planes,
  Player,
  Parked,
  HomeBases,
  Changed,
  Trouble
};
inline constexpr std::size_t kMissionColumns = 14;

/** Every column, in the order of the numbers. */
inline constexpr std::array<MissionColumn, kMissionColumns> kAllColumns = [] {
  std::array<MissionColumn, kMissionColumns> columns{};
  for (std::size_t i = 0; i < kMissionColumns; ++i) columns[i] = static_cast<MissionColumn>(i);
  return columns;
}();

/** "Mission", "Player's aircraft". */
std::string_view ColumnTitle(MissionColumn column);
/** The same for programs: "mission", "player_aircraft". */
std::string_view ColumnKey(MissionColumn column);
/** True for a column of numbers, which are sorted as such and stand to the right. */
bool IsNumberColumn(MissionColumn column);
/** What a mission has there, UTF-8; "" for nothing. Names are those of the tables, times of the day
    "05:30", of changes "2001-02-03 04:05:06"; a guessed kind ends in "?". */
std::string CellText(const MissionIndex& index, std::size_t row, MissionColumn column);
/** The number of a column of numbers. */
std::uint32_t CellNumber(const MissionIndex& index, std::size_t row, MissionColumn column);

/** A path or name of the system for a reader of UTF-8: as it is when it is that, else decoded by
    the code page. */
std::string PathText(const CodePage& page, std::string_view path);

/** A cell of a CSV file: in quotes where it must be. */
std::string CsvCell(std::string_view text);
/** A CSV file of these rows and columns, headed by their titles; UTF-8, without a mark of it. */
std::string CsvText(const MissionIndex& index, const std::vector<std::uint32_t>& rows,
                    const std::vector<MissionColumn>& columns);

}  // namespace rws
