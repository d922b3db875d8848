#include "mainwindow/logic/start_up.h"

#include <gtest/gtest.h>

#include "services/setting_values.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

constexpr char kQuestion[] = "Game path error.\nDo you want to locate the game path?";
constexpr char kFolderTitle[] = "Please locate the install directory for IL2";

struct StartUp : testing::Test {
  Sandbox Box;
  World W{Box.Path()};
  StartArguments Arguments;
};

TEST_F(StartUp, GamePathIsAskedForUntilFoundOrGivenUp) {
  Box.Write("game/IL2FB.EXE", "");
  Box.MakeFolder("other");
  W.Doc.GamePath = Box.Path("gone");
  W.Script.ExpectPath(kFolderTitle, Box.Path("other"));
  W.Script.Expect(kQuestion, Answer::Yes);
  W.Script.ExpectPath(kFolderTitle, Box.Path("game"));
  EXPECT_TRUE(FindGamePath(W.Doc, W.Services));
  EXPECT_EQ(W.Doc.GamePath, Box.Path("game"));
  EXPECT_EQ(ReadSetting(W.Services.Settings, setting::GamePath), Box.Path("game"));
  EXPECT_EQ(W.Script.Boxes[0].Title, "RWS V2");
  EXPECT_EQ(W.Script.Boxes[0].Icon, Icon::Critical);
  EXPECT_TRUE(FindGamePath(W.Doc, W.Services)) << "a known path asks nothing";
}

TEST_F(StartUp, GivingUpWritesNoGamePath) {
  Box.Write("broken/conf.ini", "");
  W.Doc.GamePath = Box.Path("broken");
  // A directory with a conf.ini leads straight to the question.
  W.Script.Expect(kQuestion, Answer::No);
  EXPECT_FALSE(FindGamePath(W.Doc, W.Services));
  EXPECT_TRUE(W.Doc.GamePath.empty() && W.SettingTexts.empty());
}

TEST_F(StartUp, TheBrowserBeginsAtALikelyPlace) {
  W.Services.System.HomeFolder = [this] { return Box.Path("home"); };
  EXPECT_EQ(LikelyGameFolder(W.Services), "");
  Box.MakeFolder("home/.wine/drive_c");
  EXPECT_EQ(LikelyGameFolder(W.Services), Box.Path("home/.wine/drive_c"));
  const char steam[] = "home/.local/share/Steam/steamapps/common/IL 2 Sturmovik 1946";
  Box.MakeFolder(steam);
  EXPECT_EQ(LikelyGameFolder(W.Services), Box.Path(steam));
}

TEST_F(StartUp, TheCommandLineNamesADirectoryOrAMission) {
  const std::string mission = "coop Dogfight, med, Japanese D3A1.Mis", folder = Box.Path("m, x");
  Box.Write("m, x/" + mission, "");
  Box.Write("m, x/a.properties", "");
  Box.MakeFolder("plain");
  // Text; path, mission and whether it is a properties file.
  const std::pair<std::string, std::string> rows[] = {
      {"", "||0"},
      {folder, folder + "||0"},
      {folder + "/" + mission, folder + "|" + mission + "|0"},
      {"\"" + folder + "/a.properties\"", folder + "|a.properties|1"},
      {Box.Path("missing"), "||0"},
      {Box.Path("plain") + ",ju87,,four", Box.Path("plain") + "||0"}};
  for (const auto& [text, expected] : rows) {
    Arguments = StartArguments();
    ChkComLine(W.Doc, W.Prefs, Arguments, W.Services, text);
    EXPECT_EQ(Arguments.ComLinePath + "|" + Arguments.ComLineMission +
                  (Arguments.ComLineProperties ? "|1" : "|0"),
              expected);
  }
  EXPECT_EQ(W.Doc.ExcludedNames + " " + Arguments.FourthPart, "ju87 four");
  EXPECT_TRUE(Arguments.ThirdPartEmpty);
}

TEST_F(StartUp, RestoreWipesTheSettingsAndWhatWasReadOfThem) {
  const Settings& settings = W.Services.Settings;
  WriteSetting(settings, setting::SaveWarn, "2");
  WriteSetting(settings, setting::ForeColor, "255");
  WriteSetting(settings, setting::DesktopColors, "True");
  WriteSetting(settings, setting::LockWT, "True");
  W.Doc.GamePath = "kept";
  W.Prefs.bBackup = false;
  ReadStartSettings(W.Prefs, W.Services);
  EXPECT_TRUE(W.Prefs.SavePromptMode == kSaveNever && W.Prefs.bLockWT);
  ChkComLine(W.Doc, W.Prefs, Arguments, W.Services, "-RESTORE");
  EXPECT_TRUE(W.SettingTexts.empty());
  EXPECT_EQ(W.Prefs.SavePromptMode, kSaveAsk);
  EXPECT_EQ(W.Prefs.ForeColor, 0x800000);
  EXPECT_FALSE(W.Prefs.bDesktopColors);
  EXPECT_TRUE(W.Prefs.bBackup && !W.Prefs.bLockWT);
  EXPECT_EQ(W.Doc.GamePath, "kept");
}

}  // namespace
}  // namespace rws::test
