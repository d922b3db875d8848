#pragma once

#include <string>
#include <string_view>

/** Times of day: decimal hours as missions store them, clock texts, and the time now. */
namespace rws {

/** A local point in time, as the seams give it. Month and day count from 1. */
struct DateTime {
  int Year = 2000, Month = 1, Day = 1, Hour = 0, Minute = 0, Second = 0;
};

/** Decimal hours as a clock text: "7.5" gives "7:30". A text that is no number is a type mismatch.
 */
std::string HoursToClock(std::string_view hours);

/** A clock text "h.mm" as decimal hours: "12.30" gives "12.5". The hours part is kept as it is. */
std::string ClockToHours(std::string_view clock);

/** "yyyy-mm-dd hh:mm:ss", a time as it is told to the user. */
std::string TimeText(const DateTime& time);

/** "mm-dd-yy hh-mm-ss", the stamp of later backups. */
std::string StampText(const DateTime& time);

}  // namespace rws
