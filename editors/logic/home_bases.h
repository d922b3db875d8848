#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogues/records.h"
#include "mission/home_base_values.h"
#include "mission/records.h"
#include "services/code_page.h"

/** The home bases of a multiplayer mission: colour, size of the area, and the aircraft that each
    offers. A base without a list of its own offers the default aircraft. Texts are in the encoding
    of mission text. */
namespace rws {

/** What the slider shows for a size: the nearest that it has. */
int ShownRadius(std::int32_t radius);

/** An aircraft in a list of the editor. */
struct HomeBaseItem {
  std::string Text;  // display name; "" for an aircraft that the table does not know
  std::string Key;   // its place in the base's list or in the table, counted from 0, and " flt"
};
enum HomeBaseList { kAvailable = 0, kReserve = 1 };
using HomeBaseLists = std::array<std::vector<HomeBaseItem>, 2>;

/** Both lists of a base. Marks each row of the table as available ("A") or in reserve ("R"). An
    aircraft that the table does not know has the name that the file spells, or none. */
enum class UnknownAircraft { Unnamed, Spelled };
HomeBaseLists FillHomeBase(std::vector<DogFightPlane>& table, const BornPlace& base,
                           const CodePage& page,
                           UnknownAircraft unknown = UnknownAircraft::Unnamed);

/** Moves aircraft, given by their display names, out of one list into the other. The table must be
    marked for this base. The base's own list then follows the table's order, and aircraft that the
    table does not know leave it. */
void MoveAircraft(std::vector<DogFightPlane>& table, BornPlace& base, HomeBaseList from,
                  const std::vector<std::string_view>& names);

/** The same for a base whose lines are kept: what stays keeps its place, aircraft that the table
   does not know too, and what comes goes last. A base without a list of its own starts from the
   default one. */
void MoveKeptAircraft(const std::vector<DogFightPlane>& table, BornPlace& base, HomeBaseList from,
                      const std::vector<std::string_view>& names);

/** Erases the base's own list when the available aircraft are the default ones, in table order. */
void EraseIfDefault(const std::vector<DogFightPlane>& table, BornPlace& base,
                    const std::vector<HomeBaseItem>& available);

}  // namespace rws
