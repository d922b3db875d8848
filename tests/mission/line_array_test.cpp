#include "mission/line_array.h"

#include <gtest/gtest.h>

namespace rws {
namespace {

std::vector<std::string> LinesOf(const LineArray& lines) {
  std::vector<std::string> result;
  for (std::size_t i = 0; i < lines.size(); ++i) result.emplace_back(lines[i]);
  return result;
}

TEST(LineArray, EndsALineOnlyAtAPair) {
  struct Row {
    std::string Bytes;
    std::vector<std::string> Lines;
    std::string FileText;
  };
  const Row rows[] = {
      {"", {}, ""},
      {"\r\n", {""}, "\r\n"},
      {"a", {"a"}, "a\r\n"},
      {"a\r\n", {"a"}, "a\r\n"},
      {"a\r\n\r\n b ", {"a", "", " b "}, "a\r\n\r\n b \r\n"},
      {"a\nb\r\nc", {"a\nb", "c"}, "a\nb\r\nc\r\n"},
      {"\n\r\n\n", {"\n", "\n"}, "\n\r\n\n\r\n"},
      {"a\rb\r", {"a\rb\r"}, "a\rb\r\r\n"},
      {"\r\r\n", {"\r"}, "\r\r\n"},
      {std::string("a\0b\r\n\0", 6),
       {std::string("a\0b", 3), std::string(1, '\0')},
       std::string("a\0b\r\n\0\r\n", 8)},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.Bytes));
    const auto lines = LineArray::FromFile(row.Bytes);
    EXPECT_EQ(LinesOf(lines), row.Lines);
    EXPECT_EQ(lines.FileText(), row.FileText);
    EXPECT_EQ(lines.empty(), row.Lines.empty());
  }
}

TEST(LineArray, SetMovesTheLinesBehind) {
  for (const std::string text : {"", "x", "much longer than before"}) {
    for (std::size_t index = 0; index < 3; ++index) {
      SCOPED_TRACE(text + " at " + std::to_string(index));
      std::vector<std::string> expected = {"one", "", "three"};
      expected[index] = text;
      auto lines = LineArray::FromFile("one\r\n\r\nthree");
      lines.Set(index, text);
      EXPECT_EQ(LinesOf(lines), expected);
    }
  }
}

TEST(LineArray, AddsLines) {
  LineArray lines;
  lines.Add("a");
  lines.Add("  ", "b");
  lines.Add("");
  EXPECT_EQ(LinesOf(lines), (std::vector<std::string>{"a", "  b", ""}));
  EXPECT_EQ(lines.FileText(), "a\r\n  b\r\n\r\n");
  EXPECT_TRUE(lines == LineArray::FromFile("a\r\n  b\r\n\r\n"));
  EXPECT_FALSE(lines == LineArray::FromFile("a\r\n  b"));

  const auto other = LineArray::FromFile("long line\r\n\r\nbc\r\nd");
  lines.AddRange(other, 1, 3);
  lines.AddRange(other, 2, 2);
  lines.AddRange(other, 0, 1);
  EXPECT_EQ(LinesOf(lines), (std::vector<std::string>{"a", "  b", "", "", "bc", "long line"}));
  EXPECT_EQ(lines.FileText(), "a\r\n  b\r\n\r\n\r\nbc\r\nlong line\r\n");
}

TEST(LineArray, FindsTheLineOfAnOffset) {
  const auto lines = LineArray::FromFile("ab\r\n\r\nc");
  const std::size_t expected[] = {0, 0, 0, 0, 1, 1, 2};
  for (std::size_t offset = 0; offset < 7; ++offset) {
    SCOPED_TRACE(offset);
    EXPECT_EQ(lines.LineAt(offset), expected[offset]);
  }
}

}  // namespace
}  // namespace rws
