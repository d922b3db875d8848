#include "services/numbers.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <vector>

#include "services/clock.h"
#include "services/faults.h"
#include "services/units.h"

namespace rws {
namespace {

using Texts = std::map<std::string, std::string>;
using Values = std::map<std::string, double>;

/** Number of the fault that `body` ends with; 0 when it has none. */
int FaultOf(const std::function<void()>& body) {
  int number = 0;
  Trap(body, [&](const Fault& caught) { number = caught.Number; });
  return number;
}

TEST(Numbers, ParseTakesWholeTextsOnlyAndValTheLongestBeginning) {
  const Values whole{{" 12 ", 12}, {"-1.5", -1.5}, {"+.5", .5},  {"5.", 5},    {"1e3", 1000},
                     {"2E-1", .2}, {"&17", 15},    {"&o17", 15}, {"&H1F", 31}, {"&hff", 255}};
  for (const auto& [text, value] : whole) EXPECT_EQ(ParseNumber(text), value) << text;
  for (const char* text : {"",    " ",  "1,5", "\t1", "1\t", "1 2", "12a",  "1.2.3", ".",   "-",
                           "--1", "1e", "&",   "&H",  "&8",  "&HG", "&H1.", "0x10",  "inf", "nan"})
    EXPECT_FALSE(IsNumeric(text)) << '"' << text << '"';
  const Values beginnings{
      {"12abc", 12},  {"  -3.5 km", -3.5}, {"abc", 0},    {"", 0},    {"1,5", 1},
      {"1.2.3", 1.2}, {"5e", 5},           {"&H1Fz", 31}, {"\t7", 0}, {"-", 0}};
  for (const auto& [text, value] : beginnings) EXPECT_EQ(Val(text), value) << text;
}

TEST(Numbers, WholeNumbersRoundToEvenAndOverflow) {
  const Values rows{{"2.5", 2},  {"3.5", 4},         {"-2.5", -2},        {"-3.5", -4},
                    {"2.51", 3}, {"32767.4", 32767}, {"-32768.5", -32768}};
  for (const auto& [text, value] : rows) EXPECT_EQ(CInt(text), value) << text;
  for (const char* text : {"32767.5", "-32769", "1e400"})
    EXPECT_EQ(FaultOf([&] { CInt(text); }), fault::Overflow) << text;
  for (const char* text : {"", "1,5", "high"})
    EXPECT_EQ(FaultOf([&] { CInt(text); }), fault::TypeMismatch) << text;
  EXPECT_EQ(CLng("2147483647.4"), 2147483647);
  EXPECT_EQ(FaultOf([] { CLng("2147483648"); }), fault::Overflow);
  EXPECT_EQ(RoundHalfEven(0.125, 2), 0.12);
  EXPECT_EQ(RoundHalfEven(-0.375, 2), -0.38);
  EXPECT_EQ(RoundHalfEven(1e300, 2), 1e300);
}

TEST(Numbers, TextsAndMasks) {
  EXPECT_EQ(NumberText(0.1) + " " + NumberText(0.1f) + " " + NumberText(-0.0), "0.1 0.1 0");
  EXPECT_EQ(NumberText(1e-7) + " " + NumberText(-1e21), "0.0000001 -1000000000000000000000");
  const std::vector<std::pair<const char*, Texts>> masks{
      {"#0.00", {{"7.5", "7.50"}, {"0", "0.00"}, {"0.125", "0.13"}, {"-0.125", "-0.13"}}},
      {"#0.00", {{"-0.001", "0.00"}, {"99.995", "100.00"}, {"", ""}, {"Dora", "Dora"}}},
      {"0#", {{"5", "05"}, {"0", "00"}, {"123", "123"}}},
      {"#.######", {{"0.5", ".5"}, {"0", "."}, {"3", "3."}, {"0.1234567", ".123457"}}},
      {"###.0", {{"12", "12.0"}, {"0", ".0"}, {"0.25", ".3"}, {"1234.56", "1234.6"}}},
      {"####0", {{"2.5", "3"}, {"0", "0"}}}};
  for (const auto& [mask, rows] : masks)
    for (const auto& [text, result] : rows)
      EXPECT_EQ(FormatNumber(text, mask), result) << text << " through " << mask;
}

TEST(Sizes, AreShort) {
  const std::pair<std::uint64_t, const char*> sizes[] = {
      {0, "0 bytes"},         {1, "1 byte"},         {1023, "1023 bytes"},
      {1024, "1 KB"},         {14848, "15 KB"},      {1048063, "1023 KB"},
      {1048064, "1.0 MB"},    {3355443, "3.2 MB"},   {1073689395, "1023.9 MB"},
      {1073689396, "1.0 GB"}, {5368709120, "5.0 GB"}};
  for (const auto& [bytes, text] : sizes) EXPECT_EQ(SizeText(bytes), text);
  const std::pair<std::uint64_t, const char*> numbers[] = {
      {0, "0"}, {999, "999"}, {1000, "1,000"}, {123456, "123,456"}, {1234567, "1,234,567"}};
  for (const auto& [number, text] : numbers) EXPECT_EQ(GroupedNumber(number), text);
}

TEST(Clock, HoursAndMinutes) {
  const Texts clocks{{"7.5", "7:30"}, {"23.99", "23:59"}, {"12.92", "12:55"}, {".25", "0:15"}};
  for (const auto& [hours, clock] : clocks) EXPECT_EQ(HoursToClock(hours), clock);
  for (const char* text : {"", "noon", "7:30"})
    EXPECT_EQ(FaultOf([&] { HoursToClock(text); }), fault::TypeMismatch) << text;
  // 59 / 59.9997 is 0.983338, 20 / 59.9997 is 0.3333350, 5 / 59.9997 is 0.0833338.
  const Texts hours{{"12.30", "12.5"},     {"12.00", "12.0"},     {"12", "12.0"},
                    {"12.59", "12.98334"}, {"12.20", "12.33334"}, {"7.05", "7.08333"}};
  for (const auto& [clock, text] : hours) EXPECT_EQ(ClockToHours(clock), text);
  for (int minute = 0; minute < 60; ++minute) {
    const std::string text = FormatNumber(minute, "00");
    EXPECT_EQ(HoursToClock(ClockToHours("23." + text)), "23:" + text);
  }
  EXPECT_EQ(StampText({2026, 3, 4, 5, 6, 7}), "03-04-26 05-06-07");
}

TEST(Units, Conversions) {
  // Ties: 625 feet are 190.5 m, 1875 feet 571.5 m.
  const std::pair<std::string (*)(std::string_view), Texts> rows[] = {
      {MilesToKm, {{"100", "161"}, {"1e400", ""}, {"-100", "-161"}, {"", ""}}},
      {KmToMiles, {{"100", "62"}, {"1,5", ""}}},
      {MetersToFeet, {{"1000", "3281"}}},
      {FeetToMeters, {{"1000", "305"}, {"625", "190"}, {"1875", "572"}}},
      {DistToMiles, {{"1000", "6.21"}, {"290", "1.8"}, {"0", "0"}}}};
  for (const auto& [convert, texts] : rows)
    for (const auto& [text, result] : texts) EXPECT_EQ(convert(text), result) << text;
}

}  // namespace
}  // namespace rws
