#include "mainwindow/logic/start_up.h"

#include <gtest/gtest.h>

#include "services/setting_values.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

constexpr char kQuestion[] = "Game path error.\nDo you want to locate the game path?";
constexpr char kFolderTitle[] = "Please locate the install directory for IL2";

class StartUp : public ::testing::Test {
 protected:
  void CommandLine(const std::string& text) {
    Run = RunState();
    ChkComLine(World_.Doc, Run, World_.Services, text);
  }

  Sandbox Box;
  World World_{Box.Path()};
  RunState Run;
};

TEST_F(StartUp, GamePathIsAskedForUntilFoundOrGivenUp) {
  Box.Write("game/IL2FB.EXE", "");
  Box.MakeFolder("other");
  World_.Doc.GamePath = Box.Path("gone");
  World_.Script.ExpectPath(kFolderTitle, Box.Path("other"));
  World_.Script.Expect(kQuestion, Answer::Yes);
  World_.Script.ExpectPath(kFolderTitle, Box.Path("game"));
  EXPECT_TRUE(FindGamePath(World_.Doc, World_.Services));
  EXPECT_EQ(World_.Doc.GamePath, Box.Path("game"));
  EXPECT_EQ(ReadSetting(World_.Services.Settings, setting::GamePath), Box.Path("game"));
  EXPECT_EQ(World_.Script.Boxes[0].Title, "RWS V2");
  EXPECT_EQ(World_.Script.Boxes[0].Icon, Icon::Critical);
  EXPECT_TRUE(FindGamePath(World_.Doc, World_.Services)) << "a known path asks nothing";
}

TEST_F(StartUp, GivingUpWritesNoGamePath) {
  Box.Write("broken/conf.ini", "");
  World_.Doc.GamePath = Box.Path("broken");
  // A directory with a conf.ini leads straight to the question.
  World_.Script.Expect(kQuestion, Answer::No);
  EXPECT_FALSE(FindGamePath(World_.Doc, World_.Services));
  EXPECT_EQ(World_.Doc.GamePath, "");
  EXPECT_TRUE(World_.SettingTexts.empty());
}

TEST_F(StartUp, TheBrowserBeginsAtALikelyPlace) {
  World_.Services.System.HomeFolder = [this] { return Box.Path("home"); };
  EXPECT_EQ(LikelyGameFolder(World_.Services), "");
  Box.MakeFolder("home/.wine/drive_c");
  EXPECT_EQ(LikelyGameFolder(World_.Services), Box.Path("home/.wine/drive_c"));
  Box.MakeFolder("home/.local/share/Steam/steamapps/common/IL 2 Sturmovik 1946");
  EXPECT_EQ(LikelyGameFolder(World_.Services),
            Box.Path("home/.local/share/Steam/steamapps/common/IL 2 Sturmovik 1946"));
}

TEST_F(StartUp, TheCommandLineNamesADirectoryOrAMission) {
  Box.Write("m, x/coop Dogfight, med, Japanese D3A1.Mis", "");
  Box.Write("m, x/a.properties", "");
  Box.MakeFolder("plain");
  struct Row {
    std::string Text, Path, Mission;
    bool Properties;
  };
  const Row rows[] = {
      {"", "", "", false},
      {Box.Path("m, x"), Box.Path("m, x"), "", false},
      {Box.Path("m, x/coop Dogfight, med, Japanese D3A1.Mis"), Box.Path("m, x"),
       "coop Dogfight, med, Japanese D3A1.Mis", false},
      {"\"" + Box.Path("m, x/a.properties") + "\"", Box.Path("m, x"), "a.properties", true},
      {Box.Path("plain") + ",ju87,,four", Box.Path("plain"), "", false},
      {Box.Path("missing"), "", "", false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Text);
    CommandLine(row.Text);
    EXPECT_EQ(Run.ComLinePath, row.Path);
    EXPECT_EQ(Run.ComLineMission, row.Mission);
    EXPECT_EQ(Run.ComLineProperties, row.Properties);
  }
  CommandLine(Box.Path("plain") + ",ju87,,four");
  EXPECT_EQ(World_.Doc.ExcludedNames, "ju87");
  EXPECT_TRUE(Run.ThirdPartEmpty);
  EXPECT_EQ(Run.FourthPart, "four");
}

TEST_F(StartUp, RestoreWipesTheSettingsAndWhatWasReadOfThem) {
  const Settings& settings = World_.Services.Settings;
  WriteSetting(settings, setting::SaveWarn, "2");
  WriteSetting(settings, setting::ForeColor, "255");
  WriteSetting(settings, setting::LockWT, "True");
  WriteSetting(settings, setting::Backup, "False");
  World_.Doc.GamePath = "kept";
  World_.Doc.bBackup = false;
  ReadStartSettings(World_.Doc, Run, World_.Services);
  EXPECT_EQ(World_.Doc.SavePromptMode, kSaveNever);
  EXPECT_TRUE(Run.bLockWT);
  ChkComLine(World_.Doc, Run, World_.Services, "-RESTORE");
  EXPECT_TRUE(World_.SettingTexts.empty());
  EXPECT_EQ(World_.Doc.SavePromptMode, kSaveAsk);
  EXPECT_EQ(Run.ForeColor, 0x800000);
  EXPECT_FALSE(Run.bLockWT);
  EXPECT_TRUE(World_.Doc.bBackup);
  EXPECT_EQ(World_.Doc.GamePath, "kept");
}

}  // namespace
}  // namespace rws::test
