#include "services/pickers.h"

#include <gtest/gtest.h>

#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

const auto& kSetting = setting::LastMovePath;

TEST(Pickers, GetFilesStoresAndReturnsTheFolder) {
  test::World world;
  std::vector<std::string> files{"old"};
  world.Script.ExpectPath("Please select a file", "/il2/a.mis");
  EXPECT_EQ(GetFiles(world.Services, files, "", "*.mis", &kSetting), "/il2");
  EXPECT_EQ(files, (std::vector<std::string>{"/il2/a.mis"}));
  EXPECT_EQ(ReadSetting(world.Services.Settings, kSetting), "/il2");

  world.Script.ExpectPath("Missions", "/b/1.mis|/b/2.mis");
  EXPECT_EQ(GetFiles(world.Services, files, "Missions", "*.mis", nullptr), "/b");
  EXPECT_EQ(files, (std::vector<std::string>{"/b/1.mis", "/b/2.mis"}));
  EXPECT_EQ(ReadSetting(world.Services.Settings, kSetting), "/il2");
}

TEST(Pickers, CancelGivesNothingAndStoresNothing) {
  test::World world;
  std::vector<std::string> files{"old"};
  world.Script.ExpectPath("Please select a file", "");
  world.Script.ExpectPath("Please select a file", "");
  world.Script.ExpectPath("Please select a file", "");
  world.Script.ExpectPath("Please select a folder", "");
  world.Services.Ask.Color = [](std::int32_t) { return std::nullopt; };
  EXPECT_EQ(GetFiles(world.Services, files, "", "", &kSetting), "");
  EXPECT_TRUE(files.empty());
  EXPECT_EQ(GetFile(world.Services, "", "", &kSetting), "");
  EXPECT_EQ(GetSaveFile(world.Services, "", "x.mis", "", ""), "");
  EXPECT_EQ(GetFolder(world.Services, "", true, ""), "");
  EXPECT_EQ(GetColor(world.Services, 0x123456), 0x123456);
  EXPECT_TRUE(world.SettingTexts.empty());
  EXPECT_TRUE(world.Log.empty());
}

TEST(Pickers, StartInTheNearestFolderThatExists) {
  const test::Sandbox box;
  box.MakeFolder("kept/deep");
  box.MakeFolder("home");
  test::World world;
  world.Services.System.HomeFolder = [&] { return box.Path("home"); };
  const std::pair<std::string, std::string> rows[] = {
      {box.Path("kept/deep"), box.Path("kept/deep")},
      {box.Path("kept/gone/below"), box.Path("kept")},
      {"", box.Path("home")},
      {"no such place", box.Path("home")}};
  for (const auto& [stored, start] : rows) {
    SCOPED_TRACE(stored);
    WriteSetting(world.Services.Settings, kSetting, stored);
    world.Script.ExpectPath("Open", box.Path("home/a.mis"));
    EXPECT_EQ(GetFile(world.Services, "Open", "", &kSetting), box.Path("home/a.mis"));
    EXPECT_EQ(world.Script.StartFolders.back(), start);
    EXPECT_EQ(ReadSetting(world.Services.Settings, kSetting), box.Path("home"));
  }
  world.Script.ExpectPath("Where", "/x");
  EXPECT_EQ(GetFolder(world.Services, "Where", false, box.Path("kept/gone")), "/x");
  EXPECT_EQ(world.Script.StartFolders.back(), box.Path("kept"));
}

TEST(Pickers, FailuresAreLoggedUnderThePickersName) {
  test::World world;
  auto& ask = world.Services.Ask;
  ask.OpenFiles = [](auto&&...) -> std::vector<std::string> { throw OverflowFault(); };
  ask.SaveFile = [](auto&&...) -> std::string { throw OverflowFault(); };
  ask.Folder = [](auto&&...) -> std::string { throw OverflowFault(); };
  ask.Color = [](auto&&...) -> std::optional<std::int32_t> { throw OverflowFault(); };
  std::vector<std::string> files{"old"};
  EXPECT_EQ(GetFiles(world.Services, files, "", "", nullptr), "");
  EXPECT_TRUE(files.empty());
  EXPECT_EQ(GetFile(world.Services, "", "", nullptr), "");
  EXPECT_EQ(GetSaveFile(world.Services, "", "", "", ""), "");
  EXPECT_EQ(GetFolder(world.Services, "", false, ""), "");
  EXPECT_EQ(GetColor(world.Services, 5), 5);
  // A folder that cannot be stored.
  ask.OpenFiles = [](auto&&...) { return std::vector<std::string>{"/a.mis"}; };
  world.Services.Settings.Backend.Write = [](auto&&...) { throw OverflowFault(); };
  EXPECT_EQ(GetFiles(world.Services, files, "", "", &kSetting), "");
  EXPECT_TRUE(files.empty());
  EXPECT_EQ(world.Log, (std::vector<std::string>{"OverflowGetFiles", "OverflowGetFile",
                                                 "OverflowGetSaveFile", "OverflowGetFolder",
                                                 "OverflowGetColor", "OverflowGetFiles"}));
}

}  // namespace
}  // namespace rws
