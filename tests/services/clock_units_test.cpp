#include <gtest/gtest.h>

#include <map>
#include <string>

#include "services/clock.h"
#include "services/faults.h"
#include "services/numbers.h"
#include "services/units.h"

namespace rws {
namespace {

using Texts = std::map<std::string, std::string>;

TEST(Clock, HoursToClock) {
  const Texts rows{{"7.5", "7:30"},    {"23.99", "23:59"}, {"12", "12:00"}, {"0.05", "0:03"},
                   {"12.92", "12:55"}, {"12.93", "12:56"}, {".25", "0:15"}, {"0", "0:00"}};
  for (const auto& [hours, clock] : rows) EXPECT_EQ(HoursToClock(hours), clock);
  for (const char* text : {"", "noon", "7:30"}) {
    int number = 0;
    Trap([&] { HoursToClock(text); }, [&](const Fault& caught) { number = caught.Number; });
    EXPECT_EQ(number, fault::TypeMismatch) << text;
  }
}

TEST(Clock, ClockToHours) {
  // 59 / 59.9997 is 0.983338, 20 / 59.9997 is 0.3333350, 5 / 59.9997 is 0.0833338.
  const Texts rows{{"12.30", "12.5"},     {"12.00", "12.0"},     {"12", "12.0"},
                   {"12.59", "12.98334"}, {"12.20", "12.33334"}, {"7.05", "7.08333"}};
  for (const auto& [clock, hours] : rows) EXPECT_EQ(ClockToHours(clock), hours);
}

TEST(Clock, EveryMinuteComesBack) {
  for (int minute = 0; minute < 60; ++minute) {
    const std::string text = FormatNumber(minute, "00");
    EXPECT_EQ(HoursToClock(ClockToHours("23." + text)), "23:" + text);
  }
}

TEST(Clock, Stamp) { EXPECT_EQ(StampText({2026, 3, 4, 5, 6, 7}), "03-04-26 05-06-07"); }

TEST(Units, Conversions) {
  struct Row {
    const char* Name;
    std::string (*Convert)(std::string_view);
    Texts Rows;
  };
  // Ties: 625 feet are 190.5 m, 1875 feet 571.5 m.
  const Row rows[] = {
      {"MilesToKm", MilesToKm, {{"100", "161"}, {"1e400", ""}, {"-100", "-161"}, {"", ""}}},
      {"KmToMiles", KmToMiles, {{"100", "62"}, {"1,5", ""}}},
      {"MetersToFeet", MetersToFeet, {{"1000", "3281"}, {"fast", ""}}},
      {"FeetToMeters", FeetToMeters, {{"1000", "305"}, {"625", "190"}, {"1875", "572"}}},
      {"DistToMiles", DistToMiles, {{"1000", "6.21"}, {"290", "1.8"}, {"0", "0"}}}};
  for (const auto& row : rows)
    for (const auto& [text, result] : row.Rows)
      EXPECT_EQ(row.Convert(text), result) << row.Name << ' ' << text;
}

}  // namespace
}  // namespace rws
