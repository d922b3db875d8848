#include "editors/frmBrief.h"
#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

class LoadFormTest : public WindowTest {
 protected:
  LoadFormTest() {
    PrepareStart();
    Box.Write("missions/a.mis", MissionText());
    Box.Write("missions/b.mis", MissionText());
    Box.Write("program/Error.txt", "of the run before");
    World_.Services.LogSink = {};
  }
};

TEST_F(LoadFormTest, StartsOnTheDirectoryUsedLast) {
  WriteSetting(World_.Services.Settings, setting::LastDirPath, Box.Path("missions"));
  Load("");
  EXPECT_TRUE(Window->isVisible());
  EXPECT_EQ(Window->windowTitle(), "RWS Edit - 2.0.0[*]");
  EXPECT_EQ(Window->lstMission->RowCount(), 2);
  EXPECT_EQ(Window->flightArea->fraGroup->title(), "IL-2 Series 1");
  EXPECT_EQ(Tables.Skins.size(), 1u);
  const std::string log = Crlf({"Debian 12Start Up", Box.Path("program") + "Start Up",
                                "en_GBStart Up", Box.Path("game") + "Start Up"});
  EXPECT_EQ(Box.Read("program/Error.txt").substr(0, log.size()), log);
  EXPECT_TRUE(Box.Exists("program/Aircraft Images"));
  EXPECT_EQ(ReadSetting(World_.Services.Settings, setting::WorkDir), Box.Path("program"));
  EXPECT_FALSE(Doc().bLoading);
  Window->mnuExit->trigger();
  EXPECT_EQ(ReadSetting(World_.Services.Settings, setting::ForeColor, ""), "8388608");
}

TEST_F(LoadFormTest, OpensAMissionFromTheFileManagerOnce) {
  Box.Write("missions/coop Dogfight, med, Japanese D3A1.Mis", MissionText());
  Load(Box.Path("missions/COOP Dogfight, med, Japanese D3A1.Mis"));
  EXPECT_EQ(Doc().CurMission, 2);
  EXPECT_EQ(Row(), 2);
  ClickRow(0);
  Window->Start();
  EXPECT_EQ(Doc().CurMission, 0) << "an Update must not jump back to that mission";
}

TEST_F(LoadFormTest, WithoutAGameTheProgramEnds) {
  World_.SettingTexts.clear();
  World_.Script.ExpectPath("Please locate the install directory for IL2", "");
  World_.Script.Expect("Game path error.", Answer::No);
  Load("");
  EXPECT_TRUE(Doc().Closing);
  EXPECT_FALSE(Window->isVisible());
  EXPECT_EQ(ReadSetting(World_.Services.Settings, setting::GamePath), "");
}

TEST_F(LoadFormTest, AFaultBeforeTheWindowIsThereEndsTheProgram) {
  World_.Services.System.LocaleText = [](int) -> std::string { throw PathNotFoundFault("locale"); };
  World_.Script.Expect("locale");
  Load("");
  EXPECT_TRUE(Doc().Closing);
  EXPECT_FALSE(Window->isVisible());
}

TEST_F(LoadFormTest, SettingsThatCannotBeKeptAreToldAndStopNothing) {
  World_.Services.Settings.Backend.Write = [](SettingsRoot, const std::string&, const std::string&,
                                              const SettingData&) {
    throw FileFault(fault::FileIo, "write", "settings", "no space left");
  };
  Load(Box.Path("missions"));
  EXPECT_TRUE(Window->isVisible());
  EXPECT_EQ(Window->lstMission->RowCount(), 2);
  EXPECT_TRUE(Window->staBar->currentMessage().contains("no space left"));
}

TEST_F(LoadFormTest, AFileInThePlaceOfTheImagesDoesNotStopTheStart) {
  Box.Write("program/Aircraft Images", "");
  Load(Box.Path("missions"));
  EXPECT_TRUE(Window->isVisible());
  EXPECT_EQ(Window->lstMission->RowCount(), 2);
}

TEST_F(LoadFormTest, OnlyABriefingsFileOpensTheBriefing) {
  Box.Write("my properties/b.mis", MissionText());
  Box.Write("my properties/b.properties", "");
  // Argument, dialogs that open, whether the status bar tells that there is no such thing.
  const std::tuple<const char*, int, bool> rows[] = {{"my properties/b.mis", 0, false},
                                                     {"my properties/B.properties", 1, false},
                                                     {"my properties", 0, false},
                                                     {"properties", 0, true}};
  for (const auto& [argument, dialogs, told] : rows) {
    SCOPED_TRACE(argument);
    int shown = 0;
    Window = std::make_unique<frmRWS>(World_);
    Window->Popups.ShowDialog = [&](QDialog&) { ++shown; };
    Window->LoadForm(Box.Path(argument));
    EXPECT_EQ(shown, dialogs);
    EXPECT_EQ(Window->staBar->currentMessage().contains("properties\" was not found"), told);
    Window->Unload();
    Doc() = Document();
  }
}

TEST_F(LoadFormTest, WithoutSkinsTheProgramEnds) {
  World_.Services.Files.DeleteFile(Box.Path("game/PaintSchemes/Skins/IL_2/a.bmp"));
  Box.Write("bare/il2fb.exe", "");
  WriteSetting(World_.Services.Settings, setting::GamePath, Box.Path("bare"));
  World_.Script.Expect("Check the error log file for errors.");
  Load("");
  EXPECT_TRUE(Doc().Closing);
  EXPECT_FALSE(Window->isVisible());
  EXPECT_EQ(ReadSetting(World_.Services.Settings, setting::GamePath), "");
}

/** Whatever another program, or a hand, has put in the place of the settings. */
TEST_F(LoadFormTest, StartsWithSettingsOfNonsense) {
  WriteSetting(World_.Services.Settings, setting::LastDirPath, Box.Path("missions"));
  Load();
  Window->mnuExit->trigger();
  Window.reset();
  const auto usual = World_.SettingTexts;
  ASSERT_GT(usual.size(), 10U);
  for (const std::string& junk :
       {std::string(), std::string("-1"), std::string("99999999999999999999"), std::string("1e999"),
        std::string("True,False;\t\n\\"), std::string("\xFF\xFE\x80"), std::string(100'000, '9')}) {
    SCOPED_TRACE(junk.substr(0, 30));
    World_.SettingTexts = usual;
    for (auto& [name, value] : World_.SettingTexts) value = junk;
    WriteSetting(World_.Services.Settings, setting::GamePath, Box.Path("game"));
    WriteSetting(World_.Services.Settings, setting::LastDirPath, Box.Path("missions"));
    static_cast<Session&>(World_).Doc = Document();
    Load();
    EXPECT_TRUE(Window->isVisible());
    EXPECT_EQ(Window->lstMission->RowCount(), 2);
    EXPECT_TRUE(Window->screen()->geometry().intersects(Window->frameGeometry()));
    Window->mnuExit->trigger();
    Window.reset();
  }
}

}  // namespace
}  // namespace rws::test
