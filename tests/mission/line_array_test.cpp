#include "mission/line_array.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"

namespace rws {
namespace {

std::string LinesOf(const LineArray& lines) {
  std::vector<std::string> result;
  for (std::size_t i = 0; i < lines.size(); ++i) result.emplace_back(lines[i]);
  return std::to_string(lines.size()) + ":" + test::Joined(result);
}

TEST(LineArray, EndsALineOnlyAtAPair) {
  const std::pair<std::string, std::string> rows[] = {
      {"", "0:"},         {"\r\n", "1:"},          {"a", "1:a"},
      {"a\r\n", "1:a"},   {"\n\r\n\n", "2:\n|\n"}, {"a\r\n\r\n b ", "3:a|| b "},
      {"\r\r\n", "1:\r"}, {"a\rb\r", "1:a\rb\r"},  {"a\nb\r\nc", "2:a\nb|c"}};
  for (const auto& [bytes, lines] : rows) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    EXPECT_EQ(LinesOf(LineArray::FromFile(bytes)), lines);
  }
}

TEST(LineArray, SetMovesTheLinesBehind) {
  auto lines = LineArray::FromFile("one\r\n\r\nthree");
  lines.Set(0, "much longer");
  lines.Set(1, "new");
  lines.Set(0, "x");
  EXPECT_EQ(LinesOf(lines), "3:x|new|three");
  lines.Set(2, "");
  EXPECT_EQ(LinesOf(lines), "3:x|new|");
}

TEST(LineArray, AddsLinesAndFindsThem) {
  LineArray lines;
  lines.Add("a");
  lines.Add("  ", "b");
  lines.Add("");
  EXPECT_TRUE(lines == LineArray::FromFile("a\r\n  b\r\n\r\n"));
  EXPECT_FALSE(lines == LineArray::FromFile("a\r\n  b"));
  const auto other = LineArray::FromFile("long line\r\n\r\nbc\r\nd");
  lines.AddRange(other, 1, 3);
  lines.AddRange(other, 2, 2);
  lines.AddRange(other, 0, 1);
  EXPECT_EQ(LinesOf(lines), "6:a|  b|||bc|long line");
  LineArray open = LineArray::FromFile("no end"), joined = open;
  open.Add("b");
  joined.AddRange(other, 3, 4);
  EXPECT_EQ(LinesOf(open) + LinesOf(joined), "2:no end|b2:no end|d");
  const std::size_t expected[] = {0, 0, 0, 1, 1, 1, 1, 1, 2, 2, 3};
  for (std::size_t offset = 0; offset < std::size(expected); ++offset)
    EXPECT_EQ(lines.LineAt(offset), expected[offset]) << offset;
}

TEST(LineArray, SharesItsTextUntilOneIsChanged) {
  const auto bytes = [](const LineArray& lines) { return lines.FileText().data(); };
  using Change = void (*)(LineArray & lines, std::string_view own);
  const std::pair<const char*, Change> rows[] = {
      {"Set", [](LineArray& lines, std::string_view own) { lines.Set(0, own); }},
      {"Add", [](LineArray& lines, std::string_view own) { lines.Add(own); }},
      {"AddRange", [](LineArray& lines, std::string_view) { lines.AddRange(lines, 1, 2); }},
      {"Reserve", [](LineArray& lines, std::string_view) { lines.Reserve(1000, 1000); }}};
  for (const auto& [name, change] : rows) {
    SCOPED_TRACE(name);
    const auto kept = LineArray::FromFile("a\r\nlong enough for the heap\r\n");
    LineArray alone = LineArray::FromFile(kept.FileText()), copy = kept;
    EXPECT_TRUE(copy.SharesWith(kept) && bytes(copy) == bytes(kept));
    copy.Set(1, "long enough for the heap");
    EXPECT_TRUE(copy.SharesWith(kept));
    change(copy, copy[1]);
    change(alone, alone[1]);
    EXPECT_FALSE(copy.SharesWith(kept));
    EXPECT_EQ(LinesOf(copy), LinesOf(alone));
    EXPECT_EQ(LinesOf(kept), "2:a|long enough for the heap");
    // One that is alone is changed in its place.
    const char* const before = bytes(copy);
    copy.Set(1, "no longer than before");
    EXPECT_EQ(bytes(copy), before);
  }
}

}  // namespace
}  // namespace rws
