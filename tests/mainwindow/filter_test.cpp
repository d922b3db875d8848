#include "library/forms/library_query.h"
#include "services/text.h"
#include "tests/mainwindow/unsaved_fixture.h"
#include "tools/frmEditMany.h"

namespace rws::test {
namespace {

/** The window over "a", of four flights over no map, "b" and "c" over Smolensk, and "d" over
    Crimea by night. */
class FilterTest : public UnsavedTest {
 protected:
  FilterTest() {
    Box.Write("missions/d.mis", Replace(Replace(MissionText(), "Smolensk", "Crimea"), "12.5", "2"));
    Box.Write("missions/d.properties", "Name The bridge\r\n");
    Window->mnuReread->trigger();
    ReadAll();
    Activate();
  }
  void ReadAll() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Window->Library->IsBusy(); }));
  }
  QLineEdit& Line() { return *Window->qryFilter->txtQuery; }
  std::string Count() { return Window->qryFilter->lblCount->text().toStdString(); }
  std::string Message() { return Window->qryFilter->lblMessage->text().toStdString(); }
  /** The rows that a line leaves. */
  std::string Filtered(const char* line) {
    Line().setText(line);
    auto* query = Window->findChild<LibraryQuery*>();
    EXPECT_TRUE(QTest::qWaitFor([query] { return !query->IsLooking(); }));
    return Rows();
  }
};

TEST_F(FilterTest, LeavesWhatMatchesAndSaysWhatItCannotRead) {
  const struct {
    const char *Line, *Rows, *Count, *Message;
  } rows[] = {{"", "a|b|c|d", "", ""},         {"b", "b|d", "2 of 4", ""},
              {"-b", "a|c", "2 of 4", ""},     {"map:crim", "d", "1 of 4", ""},
              {"map:", "a|b|c|d", "", ""},     {"flights:>3 ", "a", "1 of 4", ""},
              {"time:0-5", "d", "1 of 4", ""}, {"text:\"il_2\" -d", "b|c", "2 of 4", ""},
              {"nowhere", "", "0 of 4", ""},   {"mapp:x", "a|b|c|d", "", "mapp"},
              {"\"b", "a|b|c|d", "", "quote"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Line);
    EXPECT_EQ(Filtered(row.Line), row.Rows);
    EXPECT_EQ(Count(), row.Count);
    EXPECT_NE(Message().find(row.Message), std::string::npos) << Message();
    EXPECT_EQ(Message().empty(), std::string(row.Message).empty());
    EXPECT_EQ(Window->lstMission->EmptyText().isEmpty(), std::string(row.Rows) != "");
  }
}

TEST_F(FilterTest, WhatItLeavesCanBeEditedTogether) {
  ClickRow(1);
  EXPECT_EQ(Filtered("b"), "b|d");
  const int before = Window->missionPanel->cboWeather->currentIndex();
  Window->Popups.ShowDialog = [&](QDialog& dialog) {
    auto& form = dynamic_cast<frmEditMany&>(dialog);
    EXPECT_EQ(form.cboScope->currentText(), "Missions that the filter shows (2)");
    form.Rows()[0]->SetRow({0, "6", ManyFlights::All, ""});
    form.cmdPreview->click();
    form.cmd[frmEditMany::kApply]->click();
  };
  Window->mnuEditMany->trigger();
  for (const char* name : {"a", "b", "c", "d"})
    EXPECT_EQ(Contains(FileText(name), "CloudType 6"), *name == 'b' || *name == 'd') << name;
  EXPECT_EQ(Shown(), "b");
  EXPECT_EQ(Window->missionPanel->cboWeather->currentIndex(), 6);
  EXPECT_FALSE(Lit());
  EXPECT_EQ(Filtered("weather:thunder"), "");
  ReadAll();
  EXPECT_EQ(Rows(), "b|d");
  EXPECT_EQ(Window->mnuUndo->text(), "&Undo Edit of 2 missions");
  Window->mnuUndo->trigger();
  EXPECT_EQ(Window->missionPanel->cboWeather->currentIndex(), before);
  EXPECT_FALSE(Contains(FileText("d"), "CloudType 6"));
}

TEST_F(FilterTest, TheMissionOnShowStaysWithItsEditsWhileItsRowIsAway) {
  ClickRow(1);
  EXPECT_EQ(Filtered("c"), "c");
  EXPECT_EQ(Row(), -1);
  EXPECT_EQ(Shown(), "b");
  Edit();
  EXPECT_TRUE(Lit());
  EXPECT_EQ(Unsaved(), "1 unsaved");
  EXPECT_EQ(Filtered("is:unsaved"), "*b");
  EXPECT_EQ(Row(), 0) << "lit again";
  EXPECT_EQ(Undo(), "Weather of b");
  EXPECT_EQ(Rows(), "") << "follows the history";
  Redo();
  EXPECT_EQ(Rows(), "*b");
  Save();
  EXPECT_EQ(Rows(), "");
  EXPECT_NE(FileText("b").find("CloudType 5"), std::string::npos);
  EXPECT_EQ(Shown(), "b");
  Filtered("c");
  Panel().chkST->click();
  Update();
  EXPECT_EQ(Rows(), "c") << "an Update reads the folder anew, and the filter stays";
  EXPECT_EQ(Shown(), "b");
  ReadAll();
  Filtered("weather:rain");
  EXPECT_EQ(Rows(), "b") << "the file has been read again";
  EXPECT_EQ(Filtered(""), "a|b|c|d");
  EXPECT_EQ(Row(), 1);
  Panel().chkST->click();
  World_.Script.Expect(kQuestion, Answer::Cancel);
  ClickRow(0);
  Filtered("-c");
  EXPECT_EQ(Row(), 0) << "where the answer has left it";
}

TEST_F(FilterTest, KeysAndCommandsWorkOnTheRowsThatAreLeft) {
  Filtered("-c");
  QTest::keyClick(&Line(), Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), Window->lstMission);
  EXPECT_EQ(Shown(), "a") << "it is lit already";
  for (const char* expected : {"b", "d"}) {
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Shown(), expected);
  }
  Window->mnuCases[frmRWS::kUppercase]->trigger();
  EXPECT_EQ(Rows(), "a|b|D");
  ReadAll();
  EXPECT_EQ(Filtered("map:crimea"), "D") << "under its new name";
  EXPECT_EQ(Filtered("b"), "b|D") << "and so is its briefing";
  Box.MakeFolder("out");
  FailSteps(World_.Services.Files, "move", ".properties", "denied");
  World_.Script.ExpectPath("Select a directory to move the mission to", Box.Path("out"));
  Window->mnuMissionPop[frmRWS::kMove]->trigger();
  EXPECT_EQ(Filtered("D"), "-D");
  EXPECT_EQ(Filtered(""), "a|b|c|-D") << "the mark is that of the mission";
  Filtered("c");
  QTest::keyClick(&Line(), Qt::Key_Return);
  EXPECT_EQ(Shown(), "c") << "the first that is left";
}

TEST_F(FilterTest, TheMenuOfARowWorksOnItWhileTheShownOneIsAway) {
  Filtered("c");
  PressMenuKey(*Window->lstMission);
  EXPECT_TRUE(Contains(Told(), "leaves out the mission on show, \"a\"")) << Told();
  Edit();
  World_.Script.Expect(kQuestion, Answer::Cancel);
  ClickRow(0, Qt::RightButton);
  EXPECT_EQ(Shown(), "a") << "no menu either";
  std::string menuOf;
  Window->Popups.OpenMenu = [&](QMenu&, QPoint) { menuOf = Shown(); };
  World_.Script.Expect(kQuestion, Answer::No);
  ClickRow(0, Qt::RightButton);
  EXPECT_EQ(menuOf, "c");
  EXPECT_EQ(Row(), 0);
}

TEST_F(FilterTest, OthersBringMissionsWhileItIsOn) {
  Filtered("map:smolensk");
  Box.Write("missions/aa.mis", MissionText());
  Box.Remove("missions/c.mis");
  LookOutside();
  ReadAll();
  EXPECT_EQ(Rows(), "aa|b");
  EXPECT_EQ(Filtered(""), "a|aa|b|d");
  EXPECT_EQ(Row(), 0);
  EXPECT_EQ(Shown(), "a");
}

TEST_F(FilterTest, EscapeEmptiesItAndGivesTheFocusBack) {
  Panel_().txtFuel->setFocus();
  Window->mnuFilter->trigger();
  EXPECT_EQ(QApplication::focusWidget(), &Line());
  QTest::keyClicks(&Line(), "zz");
  EXPECT_EQ(Rows(), "");
  QTest::keyClick(&Line(), Qt::Key_Escape);
  EXPECT_EQ(Rows(), "a|b|c|d");
  EXPECT_EQ(QApplication::focusWidget(), Panel_().txtFuel);
}

TEST_F(FilterTest, CompletesWhatIsTyped) {
  Line().setFocus();
  const auto choose = [this] {
    QCoreApplication::processEvents();
    auto* popup = Window->qryFilter->findChild<QCompleter*>()->popup();
    ASSERT_TRUE(popup->isVisible());
    QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, Qt::Key_Return);
  };
  QTest::keyClicks(&Line(), "-ma");
  choose();
  EXPECT_EQ(Line().text(), "-map:");
  QTest::keyClicks(&Line(), "crim");
  choose();
  EXPECT_EQ(Line().text(), "-map:Crimea/sload.ini ");
  EXPECT_EQ(Rows(), "a|b|c");
  // A line that cannot be read may mean something else by its words.
  Line().clear();
  QTest::keyClicks(&Line(), "mapp:x ma");
  QCoreApplication::processEvents();
  EXPECT_FALSE(Window->qryFilter->findChild<QCompleter*>()->popup()->isVisible());
}

TEST_F(FilterTest, StopLeavesTheNamesAndAnotherFolderBeginsWithoutAFilter) {
  Box.Write("others/x.mis", MissionText());
  Filtered("b");
  Window->OpenPath(Box.Path("others"));
  EXPECT_EQ(Rows(), "x");
  EXPECT_EQ(Line().text(), "");
  Window->cmdStopReading->click();
  EXPECT_NE(Told().find("0 of 0 missions read"), std::string::npos) << Told();
  EXPECT_EQ(Filtered("map:smolensk"), "");
  Window->mnuReread->trigger();
  ReadAll();
  EXPECT_EQ(Rows(), "x");
}

}  // namespace
}  // namespace rws::test
