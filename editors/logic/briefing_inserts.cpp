#include "editors/logic/briefing_inserts.h"

#include <algorithm>

#include "services/faults.h"
#include "services/numbers.h"
#include "services/text.h"
#include "services/units.h"

namespace rws {

namespace {

/** True for one or two digits of a number below `limit`. */
bool IsBelow(std::string_view digits, int limit) {
  return !digits.empty() && digits.size() <= 2 &&
         std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }) &&
         Val(digits) < limit;
}

std::string TwoDigits(std::string_view digits) {
  return std::string(2 - digits.size(), '0').append(digits);
}

}  // namespace

std::string TwoDigitClock(std::string_view clock) {
  constexpr int kHours = 24, kMinutes = 60;
  const auto parts = SplitAt(clock, ':');
  if (parts.size() != 2 || !IsBelow(parts[0], kHours) || !IsBelow(parts[1], kMinutes))
    return std::string(clock);
  return TwoDigits(parts[0]) + ":" + TwoDigits(parts[1]);
}

std::string BriefingInsert(const BriefingValues& values, std::size_t index, bool useUS) {
  switch (index) {
    case 0:
      return values.Map;
    case 1:
      return values.Weather;
    case 2:
      return useUS ? MetersToFeet(values.Clouds) + " feet" : values.Clouds + " meters";
    case 3:
      return TwoDigitClock(values.MisTime);
    default:
      throw SubscriptFault();
  }
}

}  // namespace rws
