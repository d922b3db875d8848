#include "mission/line_diff.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace rws {
namespace {

std::string Text(const std::string& letters) {
  std::string text;
  for (const char letter : letters) text.append(1, letter).append("\r\n");
  return text;
}

/** Hunks of texts with a line for each letter: "=ab" is equal, "~ab>c" changed. */
std::string Shown(const std::string& before, const std::string& after) {
  const std::string a = Text(before), b = Text(after);
  std::string shown;
  for (const Hunk& hunk : DiffLines(SplitLines(a), SplitLines(b))) {
    const std::string gone = before.substr(hunk.Old.First, hunk.Old.Count);
    const std::string added = after.substr(hunk.New.First, hunk.New.Count);
    shown += shown.empty() ? "" : " ";
    if (hunk.Kind == HunkKind::Same) shown += gone == added ? "=" + gone : "not equal: " + gone;
    if (hunk.Kind == HunkKind::Gone) shown += "-" + gone + added;
    if (hunk.Kind == HunkKind::Added) shown += "+" + gone + added;
    if (hunk.Kind == HunkKind::Changed) shown += "~" + gone + ">" + added;
  }
  return shown;
}

TEST(SplitLines, EndsALineAtALineFeed) {
  const std::pair<std::string, std::string> rows[] = {{"", ""},
                                                      {"\n", "<>"},
                                                      {"a", "<a>"},
                                                      {"a\r\n", "<a>"},
                                                      {"a\nb", "<a><b>"},
                                                      {"a\r\n\r\nb\n", "<a><><b>"},
                                                      {"a\rb\r", "<a\rb\r>"}};
  for (const auto& [text, lines] : rows) {
    std::string shown;
    for (const auto line : SplitLines(text)) shown.append("<").append(line).append(">");
    EXPECT_EQ(shown, lines) << testing::PrintToString(text);
  }
}

TEST(DiffLines, FindsWhatDiffers) {
  const struct {
    const char *Before, *After, *Hunks;
    DiffCounts Counts;
  } rows[] = {
      {"", "", "", {0, 0, 0}},
      {"abc", "abc", "=abc", {0, 0, 0}},
      {"", "ab", "+ab", {2, 0, 0}},
      {"ab", "", "-ab", {0, 2, 0}},
      {"ab", "cde", "~ab>cde", {1, 0, 2}},
      {"abcde", "abXde", "=ab ~c>X =de", {0, 0, 1}},
      {"abcde", "abde", "=ab -c =de", {0, 1, 0}},
      {"abcde", "XabcYdeZ", "+X =abc +Y =de +Z", {3, 0, 0}},
      // Lines that stand once hold what is around them together.
      {"ooAooBoo", "ooBoo", "=oo -Aoo =Boo", {0, 3, 0}},
      // None stands once on both sides.
      {"XaabbaaY", "ZabbaV", "~X>Z =a -a =bba ~aY>V", {0, 2, 2}},
      {"XabcabbaY", "ZcbabacV", "~Xab>Z =c +b =ab -b =a ~Y>cV", {2, 3, 2}},
      // A block that moved.
      {"1234567ABC89", "ABC123456789", "+ABC =1234567 -ABC =89", {3, 3, 0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Before) + " " + row.After);
    EXPECT_EQ(Shown(row.Before, row.After), row.Hunks);
    EXPECT_EQ(CountDifferences(Text(row.Before), Text(row.After)), row.Counts);
  }
}

/** What is called equal is, and nothing is left out. */
TEST(DiffLines, IsTrueForRandomTexts) {
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    const auto text = [&] {
      std::string letters(random() % 40, ' ');
      const unsigned kinds = 1 + random() % 20;
      for (char& letter : letters) letter = static_cast<char>('a' + random() % kinds);
      return letters;
    };
    const std::string before = text(), after = text();
    SCOPED_TRACE(before + " " + after);
    const std::string a = Text(before), b = Text(after);
    std::string oldSide, newSide;
    HunkKind last = HunkKind::Same;
    for (const Hunk& hunk : DiffLines(SplitLines(a), SplitLines(b))) {
      EXPECT_EQ(hunk.Old.First, oldSide.size());
      EXPECT_EQ(hunk.New.First, newSide.size());
      const std::string gone = before.substr(hunk.Old.First, hunk.Old.Count);
      const std::string added = after.substr(hunk.New.First, hunk.New.Count);
      EXPECT_EQ(hunk.Kind == HunkKind::Same, gone == added);
      EXPECT_TRUE(hunk.Old.First + hunk.New.First == 0 ||
                  (last == HunkKind::Same) != (hunk.Kind == HunkKind::Same));
      last = hunk.Kind;
      oldSide += gone;
      newSide += added;
    }
    EXPECT_EQ(oldSide + "|" + newSide, before + "|" + after);
  }
}

/** The work is bounded by steps, not by a clock: without that these would not come to an end. */
TEST(DiffLines, GivesUpOnTextsWithoutEnd) {
  std::mt19937 random(1);
  std::string a, b, unlike;
  for (int i = 0; i < 100'000; ++i) {
    a += random() % 2 ? "a\n" : "b\n";
    b += random() % 2 ? "a\n" : "b\n";
    unlike += std::to_string(i) + "\n";
  }
  EXPECT_EQ(DiffLines(SplitLines(a + "c\n"), SplitLines(unlike)).size(), 1U);
  for (const std::string& other : {b, b + unlike}) {
    const DiffCounts counts = CountDifferences(a, other);
    EXPECT_GT(counts.Changed, 0U);
    EXPECT_LE(counts.Changed + counts.Gone, 100'000U);
  }
}

}  // namespace
}  // namespace rws
