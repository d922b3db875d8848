#include "services/text.h"

#include <gtest/gtest.h>

#include <vector>

#include "services/paths.h"

namespace rws {
namespace {

TEST(Like, MatchesWholeTextsByWildcards) {
  // "~" between a text and a pattern that matches it, "!" before one that does not.
  for (const std::string row :
       {"planes 4~*planes #", "planes 44!*planes #", "planes 4 !*planes #", "[wing]~*?wing?*",
        "wing!*?wing?*", "skill0 3~*skill#*", "wing 5~*#", "skill 3!*skill#*", "~*", "~",
        "abc~a[a-c]c", "aXbXc~a*b*c"}) {
    const auto at = row.find_first_of("~!");
    EXPECT_EQ(Like(row.substr(0, at), row.substr(at + 1)), row[at] == '~') << row;
  }
  EXPECT_FALSE(Like("abc", "a[!b]c"));
}

TEST(Paths, PartsAndJoints) {
  // Name, base name, parent folder, folder with its separator.
  const std::vector<std::string> rows{"C:\\il2\\a.b.mis>a.b.mis|a.b|C:\\il2|C:\\il2\\",
                                      "/il2\\M/>M|M|/il2|/il2\\M/", "a.mis>a.mis|a||",
                                      "C:\\a>a|a|C:\\|C:\\", "/a.mis>a.mis|a|/|/"};
  for (const auto& row : rows) {
    const std::string path = row.substr(0, row.find('>'));
    EXPECT_EQ(path + ">" + GetFileName(path) + "|" + GetBaseName(path) + "|" +
                  GetParentFolderName(path) + "|" + StripFileName(path),
              row);
  }
  EXPECT_EQ(GetParentFolderName("/") + GetParentFolderName("C:\\"), "");
  EXPECT_EQ(BuildPath("a", "b"), std::string("a") + kSeparator + "b");
  EXPECT_EQ(BuildPath("a/", "b") + BuildPath("a\\", "\\b"), "a/ba\\b");
  EXPECT_EQ(BuildPath("", "b") + BuildPath("", "/b"), "b/b");
  for (const char* within : {"", "a", "a/..", "./a//b\\..\\..", "..a/.."})
    EXPECT_FALSE(ClimbsOut(within)) << within;
  for (const char* out : {"..", "a/../..", "a/./..\\/../b/c"}) EXPECT_TRUE(ClimbsOut(out)) << out;
}

}  // namespace
}  // namespace rws
