#include "services/pickers.h"

#include <gtest/gtest.h>

#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using Texts = std::vector<std::string>;

struct Pickers : testing::Test {
  static constexpr const SettingValue& kSetting = setting::LastMovePath;
  test::World World;
  rws::Services& Services = World.Services;
  Texts Files{"old"};
};

TEST_F(Pickers, StoreTheFolderOfAChoiceOnly) {
  for (int i = 0; i < 3; ++i) World.Script.ExpectPath("Please select a file", "");
  World.Script.ExpectPath("Please select a folder", "");
  Services.Ask.Color = [](std::int32_t) { return std::nullopt; };
  EXPECT_EQ(GetFiles(Services, Files, "", "", &kSetting), "");
  EXPECT_TRUE(Files.empty());
  EXPECT_EQ(GetFile(Services, "", "", &kSetting) + GetSaveFile(Services, "", "x.mis", "", ""), "");
  EXPECT_EQ(GetFolder(Services, "", true, ""), "");
  EXPECT_EQ(GetColor(Services, 0x123456), 0x123456);
  EXPECT_EQ(World.SettingTexts, test::World().SettingTexts);
  EXPECT_TRUE(World.Log.empty());

  World.Script.ExpectPath("Missions", "/b/1.mis|/b/2.mis");
  EXPECT_EQ(GetFiles(Services, Files, "Missions", "*.mis", &kSetting), "/b");
  EXPECT_EQ(Files, (Texts{"/b/1.mis", "/b/2.mis"}));
  EXPECT_EQ(ReadSetting(Services.Settings, kSetting), "/b");
}

TEST_F(Pickers, StartInTheNearestFolderThatExists) {
  const test::Sandbox box;
  box.MakeFolder("kept/deep");
  const std::string kept = box.Path("kept"), home = box.Path();
  Services.System.HomeFolder = [&] { return home; };
  const std::string otherwise = test::kPosixFiles ? home : "C:\\";
  const std::pair<std::string, std::string> rows[] = {{kept + "/deep", kept + "/deep"},
                                                      {kept + "/gone/below", kept},
                                                      {"", otherwise},
                                                      {"none", otherwise}};
  for (const auto& [stored, start] : rows) {
    WriteSetting(Services.Settings, kSetting, stored);
    World.Script.ExpectPath("Open", home + "/a.mis");
    EXPECT_EQ(GetFile(Services, "Open", "", &kSetting), home + "/a.mis");
    EXPECT_EQ(World.Script.StartFolders.back(), start);
    EXPECT_EQ(ReadSetting(Services.Settings, kSetting), home);
  }
  World.Script.ExpectPath("Where", "/x");
  EXPECT_EQ(GetFolder(Services, "Where", false, kept + "/gone"), "/x");
  EXPECT_EQ(World.Script.StartFolders.back(), kept);
}

}  // namespace
}  // namespace rws
