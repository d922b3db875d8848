#include "services/paths.h"
#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

TEST_F(WindowTest, KeepsWhatACurrentValueCannotReplace) {
  Box.Write("missions/a.mis", MissionText());
  Box.Write("missions/b.mis", Crlf({"[MAIN]", "  TIME x", "  CloudType 7", "  CloudHeight 9000",
                                    "  weaponsConstant 2", "[Wing]", "[BornPlace]", "[Chiefs]"}));
  Open();
  ClickRow(1);
  EXPECT_EQ(Panel().cboWeather->currentText(), "Hazy");
  EXPECT_EQ(Panel().dtMission->time(), QTime(12, 30));
  EXPECT_EQ(Doc().Missions[1].CloudHeight, "9000") << "showing a height must not change it";
  EXPECT_TRUE(Window->mnuMissionPop[frmRWS::kSpawnPoints]->isVisible());
  const auto logged = World_.Log.size();
  Panel().dtMission->setTime(QTime(3, 0));
  EXPECT_EQ(World_.Log.size(), logged) << "no flight is no fault";
  Click(Panel().chkWL);
  EXPECT_EQ(Doc().Missions[1].WeaponsConstant, 0);
}

TEST_F(WindowTest, AnotherDirectoryMayHoldNoMission) {
  Box.Write("missions/c.mis", Replace(MissionText(), "  army 1",
                                      "  army 1\r\n  player r0100\r\n"
                                      "  briefSound Quick/go.wav"));
  Open();
  ClickRow(0);
  Edit();
  WriteSetting(World_.Services.Settings, setting::LastDirPath, Box.Path("missions/gone/deeper"));
  World_.Script.ExpectPath("Select a mission directory", "");
  Click(Window->cmd[frmRWS::kDirectory]);
  EXPECT_EQ(World_.Script.StartFolders.back(), Box.Path("missions"));
  EXPECT_EQ(Window->lstMission->RowCount(), 1);
  EXPECT_NE(Window->staPanels[1]->text(), "");
  EXPECT_TRUE(Lit()) << "cancelled";

  World_.Script.ExpectPath("Select a mission directory", Box.Path("program"));
  Click(Window->cmd[frmRWS::kDirectory]);
  EXPECT_EQ(Window->lstMission->RowCount(), 0);
  EXPECT_FALSE(Lit() || Panel().isEnabled() || Window->mnuMisPop->isEnabled());
  EXPECT_EQ(Window->staPanels[1]->text(), "");
  EXPECT_FALSE(Window->flightArea->planes->fraPlane[0]->IsHighlighted());
  const auto text = [this] { return Window->lstMission->EmptyText().toStdString(); };
  EXPECT_TRUE(Contains(text(), "no missions in \"" + Box.Path("program") + "\"")) << text();
  EXPECT_EQ(Window->staPanels[0]->text().toStdString(), Box.Path("program"));
  EXPECT_EQ(ReadSetting(World_.Services.Settings, setting::LastDirPath), Box.Path("program"));
  Window->Popups.OpenMenu = [](QMenu&, QPoint) { FAIL() << "a menu over no mission"; };
  QTest::mouseClick(Window->lstMission->viewport(), Qt::RightButton);
  PressMenuKey(*Window->lstMission);
  FailSteps(World_.Services.Files, "list", "", "denied");
  Window->Start();
  EXPECT_TRUE(Contains(text(), "cannot be read") && Contains(text(), "denied")) << text();
  Doc().MissionDir = Box.Path("gone");
  Window->Start();
  EXPECT_TRUE(Contains(text(), "does not exist")) << text();
  World_.Services.Files.BeforeStep = {};
  Doc().MissionDir = Box.Path("missions");
  Window->Start();
  EXPECT_EQ(text(), "");
}

TEST_F(WindowTest, PlaysAndStopsTheSound) {
  Box.Write("game/Quick/Go.WAV", "x");
  Box.Write("missions/a.mis", Crlf({"[MAIN]", "  briefSound quick/go.wav", "[Wing]", "[x]"}));
  Box.Write("missions/b.mis", Crlf({"[MAIN]", "  briefSound quick/none.wav", "[Wing]", "[x]"}));
  Box.Write("own.wav", "x");
  Box.Write("missions/c.mis",
            Crlf({"[MAIN]", "  briefSound quick/../../own.wav", "[Wing]", "[x]"}));
  Open();
  Click(Panel().imgSnd);
  QTest::mouseClick(Panel().imgSnd, Qt::RightButton);
  ASSERT_EQ(World_.ShellCalls.size(), 2u);
  // Only where the letter case counts is a folder's own spelling needed.
  EXPECT_EQ(World_.ShellCalls[0],
            "start " + Box.Path(kPosixFiles ? "game/Quick/Go.WAV" : "game/quick/Go.WAV"));
  EXPECT_EQ(World_.ShellCalls[1], "stop");
  ClickRow(1);
  Click(Panel().imgSnd);
  EXPECT_EQ(World_.ShellCalls.size(), 2u) << "a missing sound is silent";
  ClickRow(2);
  const std::string outside = BuildPath(Box.Path("game"), "quick\\..\\..\\own.wav");
  World_.Script.Expect("\"" + outside + "\" lies outside the game's folder and is not played.",
                       Answer::Ok);
  Click(Panel().imgSnd);
  EXPECT_EQ(World_.ShellCalls.size(), 2u);
}

}  // namespace
}  // namespace rws::test
