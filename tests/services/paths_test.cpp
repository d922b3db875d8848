#include "services/paths.h"

#include <gtest/gtest.h>

namespace rws {
namespace {

TEST(Paths, Parts) {
  struct Row {
    const char *Path, *Name, *Base, *Parent, *Stripped;
  };
  const Row rows[] = {{"C:\\il2\\a.b.mis", "a.b.mis", "a.b", "C:\\il2", "C:\\il2\\"},
                      {"/il2/Missions/a.mis", "a.mis", "a", "/il2/Missions", "/il2/Missions/"},
                      {"/il2/Missions/", "Missions", "Missions", "/il2", "/il2/Missions/"},
                      {"x\\y/z", "z", "z", "x\\y", "x\\y/"},
                      {"a.mis", "a.mis", "a", "", ""},
                      {"C:\\a.mis", "a.mis", "a", "C:\\", "C:\\"},
                      {"/a.mis", "a.mis", "a", "/", "/"},
                      {"", "", "", "", ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Path);
    EXPECT_EQ(GetFileName(row.Path), row.Name);
    EXPECT_EQ(GetBaseName(row.Path), row.Base);
    EXPECT_EQ(GetParentFolderName(row.Path), row.Parent);
    EXPECT_EQ(StripFileName(row.Path), row.Stripped);
  }
  EXPECT_EQ(GetParentFolderName("/"), "");
  EXPECT_EQ(GetParentFolderName("C:\\"), "");
}

TEST(Paths, JoinedByOneSeparator) {
  const std::string separator(1, kSeparator);
  EXPECT_EQ(BuildPath("a", "b"), "a" + separator + "b");
  EXPECT_EQ(BuildPath("a/", "b"), "a/b");
  EXPECT_EQ(BuildPath("a\\", "\\b"), "a\\b");
  EXPECT_EQ(BuildPath("", "b"), "b");
  EXPECT_EQ(BuildPath("", "/b"), "/b");
}

}  // namespace
}  // namespace rws
