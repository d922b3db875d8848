#include "mission/unified_diff.h"

#include <gtest/gtest.h>

#include "services/text.h"

namespace rws {
namespace {

/** Lines that are joined by "|"; a "$" at the end stands for no line feed behind the last. */
std::string Text(std::string_view bars) {
  std::string text = Replace(bars, "|", "\n");
  if (text.ends_with('$'))
    text.pop_back();
  else if (!text.empty())
    text += '\n';
  return text;
}

TEST(UnifiedDiff, IsWhatPatchTakes) {
  const struct {
    const char *Old, *New, *Diff;
  } rows[] = {
      {"", "a|b", "@@ -0,0 +1,2 @@|+a|+b"},
      {"a", "", "@@ -1 +0,0 @@|-a"},
      {"1|2|3|4|5|6|7|8|9", "1|2|3|4|X|6|7|8|9", "@@ -2,7 +2,7 @@| 2| 3| 4|-5|+X| 6| 7| 8"},
      {"1|2|3|4", "X|1|2|3|4", "@@ -1,3 +1,4 @@|+X| 1| 2| 3"},
      {"1|2|3|4", "1|2|3", "@@ -1,4 +1,3 @@| 1| 2| 3|-4"},
      // Six lines between two changes join them, seven do not.
      {"a|1|2|3|4|5|6|b", "A|1|2|3|4|5|6|B", "@@ -1,8 +1,8 @@|-a|+A| 1| 2| 3| 4| 5| 6|-b|+B"},
      {"a|1|2|3|4|5|6|7|b", "A|1|2|3|4|5|6|7|B",
       "@@ -1,4 +1,4 @@|-a|+A| 1| 2| 3|@@ -6,4 +6,4 @@| 5| 6| 7|-b|+B"},
      {"a|b$", "a|b", "@@ -1,2 +1,2 @@| a|-b|\\ No newline at end of file|+b"},
      {"a|b$", "X|b$", "@@ -1,2 +1,2 @@|-a|+X| b|\\ No newline at end of file"},
      {"a\r|\xE9", "a|\xE9", "@@ -1,2 +1,2 @@|-a\r|+a| \xE9"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Old) + " > " + row.New);
    EXPECT_EQ(UnifiedDiff("old", "new", Text(row.Old), Text(row.New)),
              Text("--- old|+++ new|" + std::string(row.Diff)));
    EXPECT_EQ(UnifiedDiff("old", "new", Text(row.Old), Text(row.Old)), "");
  }
}

}  // namespace
}  // namespace rws
