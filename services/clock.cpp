#include "services/clock.h"

#include <cstdio>

#include "services/numbers.h"
#include "services/text.h"

namespace rws {

std::string HoursToClock(std::string_view hours) {
  const std::string text = FormatNumber(CDbl(hours), "#0.00");
  const auto parts = SplitAt(text, '.');
  const double minutes = Val(parts[1]) * 0.6;
  return std::string(parts[0]) + ":" + FormatNumber(RoundHalfEven(minutes, 0), "0#");
}

std::string ClockToHours(std::string_view clock) {
  const auto parts = SplitAt(clock, '.');
  const double minutes = parts.size() > 1 ? Val(parts[1]) : 0;
  // Not 60: a time of 59 minutes must stay below the next whole hour.
  std::string fraction = FormatNumber(RoundHalfEven(minutes / 59.9997, 5), "#.######");
  if (fraction == ".") fraction = ".0";
  return std::string(parts[0]) + fraction;
}

std::string TimeText(const DateTime& time) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.Year, time.Month, time.Day,
                time.Hour, time.Minute, time.Second);
  return text;
}

std::string StampText(const DateTime& time) {
  char text[64];
  std::snprintf(text, sizeof text, "%02d-%02d-%02d %02d-%02d-%02d", time.Month, time.Day,
                time.Year % 100, time.Hour, time.Minute, time.Second);
  return text;
}

}  // namespace rws
