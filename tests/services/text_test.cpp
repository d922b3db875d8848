#include "services/text.h"

#include <gtest/gtest.h>

namespace rws {
namespace {

TEST(Like, MatchesWholeTextsByWildcards) {
  struct Row {
    const char *Text, *Pattern;
    bool Matches;
  };
  const Row rows[] = {{"planes 4", "*planes #", true},
                      {"planes 44", "*planes #", false},
                      {"planes 4 ", "*planes #", false},
                      {"[wing]", "*?wing?*", true},
                      {"wing", "*?wing?*", false},
                      {"skill0 3", "*skill#*", true},
                      {"skill 3", "*skill#*", false},
                      {"", "*", true},
                      {"", "", true},
                      {"abc", "a[a-c]c", true},
                      {"abc", "a[!b]c", false},
                      {"aXbXc", "a*b*c", true},
                      {"time 12", "*time #*", true},
                      {"timeconstant 1", "*time #*", false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Text) + " ~ " + row.Pattern);
    EXPECT_EQ(Like(row.Text, row.Pattern), row.Matches);
  }
}

}  // namespace
}  // namespace rws
