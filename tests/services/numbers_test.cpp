#include "services/numbers.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <vector>

#include "services/faults.h"

namespace rws {
namespace {

/** Number of the fault that `body` ends with; 0 when it has none. */
int FaultOf(const std::function<void()>& body) {
  int number = 0;
  Trap(body, [&](const Fault& caught) { number = caught.Number; });
  return number;
}

struct Number {
  const char* Text;
  double Value;
};

TEST(Numbers, ParseTakesWholeTextsOnly) {
  const Number rows[] = {{"12", 12},  {" 12 ", 12},  {"-1.5", -1.5}, {"+.5", 0.5},
                         {"5.", 5},   {"1e3", 1000}, {"2E-1", .2},   {"&0", 0},
                         {"&17", 15}, {"&o17", 15},  {"&H1F", 31.0}, {"&hff", 255}};
  for (const auto& row : rows) EXPECT_EQ(ParseNumber(row.Text), row.Value) << row.Text;
  for (const char* text : {"",    " ",  "1,5", "\t1", "1\t", "1 2", "12a",  "1.2.3", ".",   "-",
                           "--1", "1e", "&",   "&H",  "&8",  "&HG", "&H1.", "0x10",  "inf", "nan"})
    EXPECT_FALSE(IsNumeric(text)) << '"' << text << '"';
}

TEST(Numbers, ValTakesTheLongestBeginning) {
  const Number rows[] = {{"12abc", 12},  {"  -3.5 km", -3.5}, {"abc", 0},    {"", 0},    {"1,5", 1},
                         {"1.2.3", 1.2}, {"5e", 5},           {"&H1Fz", 31}, {"\t7", 0}, {"-", 0}};
  for (const auto& row : rows) EXPECT_EQ(Val(row.Text), row.Value) << row.Text;
}

TEST(Numbers, WholeNumbersRoundToEvenAndOverflow) {
  const Number rows[] = {{"2.5", 2},  {"3.5", 4},         {"-2.5", -2},        {"-3.5", -4},
                         {"2.51", 3}, {"32767.4", 32767}, {"-32768.5", -32768}};
  for (const auto& row : rows) EXPECT_EQ(CInt(row.Text), row.Value) << row.Text;
  for (const char* text : {"32767.5", "-32769", "1e400"})
    EXPECT_EQ(FaultOf([&] { CInt(text); }), fault::Overflow) << text;
  for (const char* text : {"", "1,5", "high"})
    EXPECT_EQ(FaultOf([&] { CInt(text); }), fault::TypeMismatch) << text;
  EXPECT_EQ(CLng("2147483647.4"), 2147483647);
  EXPECT_EQ(FaultOf([] { CLng("2147483648"); }), fault::Overflow);
}

TEST(Numbers, RoundHalfEvenAtDecimals) {
  EXPECT_EQ(RoundHalfEven(0.125, 2), 0.12);
  EXPECT_EQ(RoundHalfEven(0.375, 2), 0.38);
  EXPECT_EQ(RoundHalfEven(-0.375, 2), -0.38);
  EXPECT_EQ(RoundHalfEven(1e300, 2), 1e300);
}

TEST(Numbers, TextIsShortestPlainDecimal) {
  EXPECT_EQ(NumberText(0.1), "0.1");
  EXPECT_EQ(NumberText(0.1f), "0.1");
  EXPECT_EQ(NumberText(-0.0), "0");
  EXPECT_EQ(NumberText(100.0), "100");
  EXPECT_EQ(NumberText(1e-7), "0.0000001");
  EXPECT_EQ(NumberText(-1e21), "-1000000000000000000000");
}

TEST(Numbers, Masks) {
  struct Row {
    const char* Mask;
    std::vector<std::array<const char*, 2>> Texts;
  };
  const Row rows[] = {
      {"#0.00", {{"7.5", "7.50"}, {"0", "0.00"}, {"0.125", "0.13"}, {"-0.125", "-0.13"}}},
      {"#0.00", {{"-0.001", "0.00"}, {"99.995", "100.00"}, {"1234.5", "1234.50"}}},
      {"#0.00", {{"", ""}, {"Dora", "Dora"}}},
      {"0#", {{"5", "05"}, {"0", "00"}, {"12", "12"}, {"123", "123"}}},
      {"#.######", {{"0.5", ".5"}, {"0", "."}, {"3", "3."}, {"0.1234567", ".123457"}}},
      {"###.0", {{"12", "12.0"}, {"0", ".0"}, {"0.25", ".3"}, {"1234.56", "1234.6"}}},
      {"####0", {{"2.5", "3"}, {"0", "0"}, {"123456", "123456"}}},
      {"##0.0", {{"0.05", "0.1"}, {"9.96", "10.0"}}}};
  for (const auto& row : rows)
    for (const auto& [text, result] : row.Texts)
      EXPECT_EQ(FormatNumber(text, row.Mask), result) << text << " through " << row.Mask;
}

}  // namespace
}  // namespace rws
