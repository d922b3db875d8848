#include "mission/line_ends.h"

#include <gtest/gtest.h>

namespace rws {
namespace {

TEST(LineEnds, RepairsOnlyAFileOfOneLineWithTwoLineFeeds) {
  for (const char* bytes : {"", "a", "a\nb", "a\nb\r\n", "a\rb\rc", "a\r\nb\nc\nd"})
    EXPECT_FALSE(RepairedLineEnds(bytes)) << testing::PrintToString(bytes);
  const std::pair<const char*, const char*> rows[] = {
      {"a\nb\nc", "a\r\nb\r\nc\r\n"},
      {"a\nb\n", "a\r\nb\r\n"},
      {"a\nb\nc\r\n", "a\r\nb\r\nc\r\n"},
      {"[MAIN]\n\n  MAP x \n   \n\xFF\n", "[MAIN]\r\n  MAP x \r\n\xFF\r\n"}};
  for (const auto& [bytes, repaired] : rows) EXPECT_EQ(RepairedLineEnds(bytes), repaired);
}

}  // namespace
}  // namespace rws
