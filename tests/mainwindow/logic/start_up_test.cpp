#include "mainwindow/logic/start_up.h"

#include <gtest/gtest.h>

#include "services/paths.h"
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

TEST_F(StartUp, TheBrowserBeginsAtALikelyPlace) {
  W.Services.System.HomeFolder = [this] { return Box.Path("home"); };
  EXPECT_EQ(LikelyGameFolder(W.Services), "");
  const std::string home = Box.Path("home") + kSeparator;
  Box.MakeFolder("home/.wine/drive_c");
  EXPECT_EQ(LikelyGameFolder(W.Services), home + ".wine/drive_c");
  const std::string steam = ".local/share/Steam/steamapps/common";
  Box.MakeFolder("home/" + steam + "/IL 2 Sturmovik 1946");
  EXPECT_EQ(LikelyGameFolder(W.Services), home + steam + kSeparator + "IL 2 Sturmovik 1946");
}

TEST_F(StartUp, TheCommandLineNamesADirectoryOrAMission) {
  const std::string mission = "coop Dogfight, med, Japanese D3A1.Mis", folder = Box.Path("m, x");
  Box.Write("m, x/" + mission, "");
  Box.Write("m, x/a.properties", "");
  Box.MakeFolder("plain");
  Box.Write("my properties/b.mis", "");
  // Text; path, mission, the flag, "b" for a briefing, "?" for what names nothing.
  const std::pair<std::string, std::string> rows[] = {
      {"", "||0"},
      {folder, folder + "||0"},
      {folder + "/" + mission, folder + "|" + mission + "|0"},
      {"\"" + folder + "/a.properties\"", folder + "|a.properties|1b"},
      {Box.Path("my properties"), Box.Path("my properties") + "||1"},
      {Box.Path("my properties/b.mis"), Box.Path("my properties") + "|b.mis|1"},
      {Box.Path("plain/a.properties.mis"), "||1?"},
      {Box.Path("missing"), "||0?"},
      {Box.Path("plain") + ",ju87,,four", Box.Path("plain") + "||0"}};
  for (const auto& [text, expected] : rows) {
    Arguments = StartArguments();
    ChkComLine(W.Doc, W.Prefs, Arguments, W.Services, text);
    EXPECT_EQ(Arguments.ComLinePath + "|" + Arguments.ComLineMission +
                  (Arguments.ComLineProperties ? "|1" : "|0") + (Arguments.IsBriefing ? "b" : "") +
                  (Arguments.Unfound.empty() ? "" : "?"),
              expected);
  }
  EXPECT_EQ(W.Doc.ExcludedNames + " " + Arguments.FourthPart, "ju87 four");
  EXPECT_TRUE(Arguments.ThirdPartEmpty);
}

TEST_F(StartUp, TheExactNameGoesBeforeAnotherCase) {
  for (const char* name : {"B.mis", "b.MIS", "b.mis", "c.mis"}) {
    Mission& mission = W.Doc.Missions.emplace_back();
    mission.FileName = name;
    mission.BaseName = std::string(name).substr(0, 1);
  }
  const std::pair<const char*, int> rows[] = {
      {"b.mis", 2}, {"b.properties", 1}, {"C.mis", 3}, {"d.mis", -1}, {"", -1}};
  for (const auto& [name, index] : rows) {
    Arguments.ComLineMission = name;
    EXPECT_EQ(FindComLineMission(W.Doc, Arguments), index) << name;
  }
}

TEST_F(StartUp, RestoreWipesTheSettingsAndWhatWasReadOfThem) {
  const Settings& settings = W.Services.Settings;
  WriteSetting(settings, setting::SaveWarn, "2");
  WriteSetting(settings, setting::ForeColor, "255");
  WriteSetting(settings, setting::DesktopColors, "True");
  WriteSetting(settings, setting::LockWT, "True");
  WriteSetting(settings, setting::BackupsKept, "-3");
  W.Prefs.BackupsKept = 5;
  W.Doc.GamePath = "kept";
  W.Prefs.bBackup = false;
  ReadStartSettings(W.Doc, W.Prefs, W.Services);
  EXPECT_TRUE(W.Prefs.SavePromptMode == kSaveNever && W.Prefs.bLockWT);
  EXPECT_EQ(W.Prefs.BackupsKept, 0);
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
