#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace rws {

/** What the briefing editor knows of the mission, in the encoding of mission text. `Clouds` counts
    metres, `MisTime` is a clock text such as "7:30". */
struct BriefingValues {
  std::string Map, Weather, Clouds, MisTime;
};

/** A clock text with two digits for hour and minute; one that is no time of day stays as it is. */
std::string TwoDigitClock(std::string_view clock);

/** The text that stands for map (0), weather (1), cloud height (2) or time (3). Cloud height is in
    feet with `useUS`. A subscript fault for any other index. */
std::string BriefingInsert(const BriefingValues& values, std::size_t index, bool useUS);

}  // namespace rws
