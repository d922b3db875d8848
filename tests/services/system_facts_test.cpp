#include "services/system_facts.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

TEST(SystemFacts, OsNames) {
  struct Row {
    int Platform, Major, Minor;
    std::string Name;
  };
  const Row rows[] = {{1, 4, 0, "Windows 95"},
                      {1, 4, 10, "Windows 98"},
                      {1, 4, 90, "Windows Millennium"},
                      {1, 4, 5, ""},
                      {2, 3, 51, "Windows NT 3.51"},
                      {2, 4, 0, "Windows NT 4.0"},
                      {2, 5, 0, "Windows 2000"},
                      {2, 5, 1, "Windows XP"},
                      {2, 10, 0, ""},
                      {0, 3, 1, "Failed"},
                      {3, 5, 0, "Failed"}};
  for (const auto& row : rows) {
    const OsVersion version{row.Platform, row.Major, row.Minor, "own name"};
    EXPECT_EQ(GetOSName(version), row.Name) << row.Platform << ' ' << row.Major << '.' << row.Minor;
    Services services;
    services.System.Version = [&] { return version; };
    EXPECT_EQ(SystemVersionText(services), row.Name.starts_with("Win") ? row.Name : "own name");
  }
}

TEST(SystemFacts, OpenFileTellsCodesUpTo32) {
  test::World world;
  int code = 0;
  std::string asked;
  world.Services.System.Execute = [&](const std::string& verb, const std::string& path) {
    asked = verb + " " + path;
    return code;
  };
  for (; code <= 32; ++code) {
    world.Script.Expect("No program assocationed in Windows!");
    OpenFile(world.Services, "/a.txt");
  }
  OpenFile(world.Services, "/b.txt");
  EXPECT_EQ(asked, "open /b.txt");
  ASSERT_EQ(world.Script.Boxes.size(), 33u);
  EXPECT_EQ(world.Script.Boxes[0].Buttons, Buttons::Ok);
  EXPECT_EQ(world.Script.Boxes[0].Icon, Icon::None);
}

TEST(SystemFacts, FileRenameGivesTheReason) {
  const test::Sandbox box;
  const Services services;
  const std::string a = box.Write("a.mis", "A"), b = box.Write("b.mis", "B");
  EXPECT_EQ(FileRename(services, a, b), "File already exists: \"" + b + "\"");
  EXPECT_EQ(FileRename(services, a, box.Path("c.mis")), "");
  EXPECT_EQ(FileRename(services, a, b + "2"), "File not found: \"" + a + "\"");
  EXPECT_EQ(box.Names(), "b.mis,c.mis");
}

}  // namespace
}  // namespace rws
