#include "tests/mainwindow/window_fixture.h"
#include "tools/frmSkins.h"

namespace rws::test {
namespace {

class ToolsMenuTest : public WindowTest {
 protected:
  ToolsMenuTest() { OpenThree(); }

  void Choose(QAction* entry) { entry->trigger(); }
  void ExpectNewName(const std::string& name, const std::string& start) {
    World_.Script.ExpectInput("Enter the new mission name.", name);
    World_.Script.ExpectInput("Please enter a starting number.", start);
  }
};

TEST_F(ToolsMenuTest, SettlesTheEditsBehindItsQuestions) {
  Edit();
  World_.Script.ExpectInput("Enter the new mission name.", "");
  Choose(Window->mnuTools[frmRWS::kRenameAll]);
  EXPECT_TRUE(Lit()) << "a cancelled tool has neither written nor dropped anything";
  World_.Script.ExpectPath("Select files to copy", Box.Write("x.mis", ""));
  World_.Script.Expect(kQuestion, Answer::Cancel);
  Choose(Window->mnuTools[frmRWS::kCopyFrom]);

  ExpectNewName("Sortie", "9");
  World_.Script.Expect(kQuestion, Answer::Cancel);
  Choose(Window->mnuTools[frmRWS::kRenameAll]);
  EXPECT_EQ(Rows(), "*a|b|c");
  EXPECT_TRUE(Lit());

  ExpectNewName("Sortie", "9");
  World_.Script.Expect(kQuestion, Answer::Yes);
  Choose(Window->mnuTools[frmRWS::kRenameAll]);
  EXPECT_EQ(Rows(), "Sortie09|Sortie10|Sortie11");
  EXPECT_NE(FileText("Sortie09").find("CloudType 5"), std::string::npos);
}

TEST_F(ToolsMenuTest, EditsThatAnUpdateFailedToWriteArePending) {
  Edit();
  FailSteps(World_.Services.Files, "take name");
  constexpr char kFailed[] = "Update fail. Reason unknown. Mission file restored.";
  World_.Script.Expect(kFailed);
  Click(Window->cmd[frmRWS::kUpdate]);
  ClickRow(1);
  ExpectNewName("n", "1");
  World_.Script.Expect(std::string(kQuestion) + "\n\nNot written yet:\na", Answer::Yes);
  World_.Script.Expect(kFailed);
  Choose(Window->mnuTools[frmRWS::kRenameAll]);
  EXPECT_EQ(Rows(), "*a|b|c");
  EXPECT_FALSE(Lit());

  World_.Services.Files.BeforeStep = {};
  ExpectNewName("n", "1");
  World_.Script.Expect("Not written yet:\na", Answer::Yes);
  Choose(Window->mnuTools[frmRWS::kRenameAll]);
  EXPECT_NE(FileText("n01").find("CloudType 5"), std::string::npos);
  EXPECT_EQ(Row(), 1) << "the renamed mission stays the current one";
  ExpectNewName("n", "1");
  Choose(Window->mnuTools[frmRWS::kRenameAll]);
}

TEST_F(ToolsMenuTest, CancelInTheProgressGivesTheOldNamesBack) {
  ClickRow(2);
  for (const int at : {2, 5}) {
    SCOPED_TRACE(at);
    Window->Popups.ToolStep = [&](QProgressDialog& dialog) {
      EXPECT_FALSE(dialog.isVisible()) << "only after half a second";
      EXPECT_EQ(dialog.maximum(), 6);
      if (dialog.value() == at) dialog.findChild<QPushButton*>()->click();
    };
    ExpectNewName("n", "1");
    Choose(Window->mnuTools[frmRWS::kRenameAll]);
    EXPECT_EQ(Rows(), "a|b|c");
    EXPECT_EQ(Box.Names("missions"), "a.mis,b.mis,c.mis");
    EXPECT_EQ(Row(), 2);
    EXPECT_TRUE(Window->staBar->currentMessage().startsWith("Cancelled."));
  }
}

TEST_F(ToolsMenuTest, ConvertGoesToTheDestination) {
  Box.Write("campaign/x.mis", Crlf({"[MAIN]", "  player r0100", "  CloudType 1", "[Wing]"}));
  Box.Write("single/a.mis", MissionText());
  ClickRow(1);
  World_.Script.ExpectPath("Please select the campaign directory", Box.Path("campaign"));
  World_.Script.ExpectPath("Please select the destination directory", Box.Path("single"));
  // An empty answer, not a cancelled one.
  World_.Services.Ask.InputBox = [](auto&&...) { return std::optional<std::string>(""); };
  Choose(Window->mnuTools[frmRWS::kConvertFolder]);
  EXPECT_EQ(Box.Read("single/x.mis"), Crlf({"[MAIN]", "  CloudType 1", "[Wing]"}));
  EXPECT_EQ(Rows(), "a|x");
  EXPECT_EQ(Row(), 0);
  EXPECT_EQ(Window->staPanels[0]->text().toStdString(), Box.Path("single"));
  EXPECT_EQ(Window->staBar->currentMessage(), "1 done.");
}

TEST_F(ToolsMenuTest, TheReasonOutlivesTheReread) {
  Box.Write("missions/a.properties", "A");
  Box.Write("missions/z.properties", "Z");
  World_.Script.ExpectInput("Enter the new name for a", "z");
  Choose(Window->mnuCases[frmRWS::kManual]);
  EXPECT_EQ(Rows(), "b|c|z");
  EXPECT_TRUE(Window->staBar->currentMessage().contains("z.properties"));
}

TEST_F(ToolsMenuTest, ARenamedRowIsFoundAgain) {
  Box.Write("missions/a.properties", "Name x\r\n");
  Choose(Window->mnuCases[frmRWS::kUppercase]);
  EXPECT_EQ(Rows(), "A|b|c");
  EXPECT_EQ(Box.Names("missions"), "A.mis,A.properties,b.mis,c.mis");
  ClickRow(1);
  ClickRow(0);
  EXPECT_EQ(Doc().Missions[0].BaseName, "A");
  World_.Script.ExpectInput("Enter the new name for A", "z 1");
  Choose(Window->mnuCases[frmRWS::kManual]);
  EXPECT_EQ(Rows(), "b|c|z 1");
  EXPECT_EQ(Row(), 2) << "under its new name";
  Window->mnuUndo->trigger();
  EXPECT_EQ(Rows(), "A|b|c");
}

TEST_F(ToolsMenuTest, TheSkinManagerOpensForTheCurrentAircraft) {
  std::string plane;
  Window->Popups.ShowDialog = [&](QDialog& dialog) {
    plane = dynamic_cast<frmSkins&>(dialog).Plane;
  };
  Choose(Window->mnuTools[frmRWS::kSkinManager]);
  EXPECT_EQ(plane, "IL_2");
}

}  // namespace
}  // namespace rws::test
