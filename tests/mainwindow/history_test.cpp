#include "editors/frmDogFight.h"
#include "editors/frmWP.h"
#include "tests/mainwindow/unsaved_fixture.h"

namespace rws::test {
namespace {

constexpr char kBase[] = "[BornPlace]\r\n  1 3000 500 600\r\n[StaticCamera]\r\n";

class HistoryTest : public UnsavedTest {
 protected:
  /** Gives "c" a home base and shows it. */
  void OpenHomeBase() {
    Box.Write("missions/c.mis", MissionText() + kBase);
    Box.Write("program/RWS_DF.txt", "F,P-51D,P-51D\r\n,I-16,I-16\r\n");
    Window->mnuReread->trigger();
    ClickRow(2);
  }
  /** Moves an aircraft to the base and leaves the form. */
  void EditHomeBase(bool apply) {
    Work = [this, apply](QDialog& dialog) {
      auto& form = dynamic_cast<frmDogFight&>(dialog);
      form.lstAC[1]->selectAll();
      form.cmd1[1]->setEnabled(true);
      Click(form.cmd1[1]);
      if (apply) Click(form.cmd[frmDogFight::kApply]);
    };
    Window->mnuMissionPop[frmRWS::kSpawnPoints]->trigger();
  }
  void EditWaypointType() {
    Work = [](QDialog& dialog) {
      auto& form = dynamic_cast<frmWP&>(dialog);
      const auto cell = form.grd->visualRect(form.grd->model()->index(0, 1));
      QTest::mouseClick(form.grd->viewport(), Qt::LeftButton, {}, cell.center());
      form.mnuPop1[2]->trigger();
    };
    Area().mnuAC[FlightArea::kWaypoints]->trigger();
  }
};

TEST_F(HistoryTest, SaveWritesWhereUpdateIsDarkAndStaysAtItsFlight) {
  OpenHomeBase();
  ClickRow(0);
  const struct {
    const char *Name, *File, *Holds;
    std::function<void()> Edit;
  } rows[] = {{"markings", "a", "  numberOn0 0\r\n", [this] { EditDark(); }},
              {"waypoint type", "a", "  GATTACK 1.00 2.00", [this] { EditWaypointType(); }},
              {"home base", "c", "[BornPlace0]\r\n", [this] {
                 ClickRow(2);
                 EditHomeBase(true);
               }}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name);
    if (row.File[0] == 'a') ClickFlight(kFighter);
    const int flight = Doc().CurFlight;
    row.Edit();
    EXPECT_FALSE(Lit());
    EXPECT_EQ(Unsaved(), "1 unsaved");
    EXPECT_TRUE(Window->isWindowModified());
    EXPECT_NE(Rows().find(std::string("*") + row.File), std::string::npos);
    EXPECT_EQ(FileText(row.File).find(row.Holds), std::string::npos);
    Save();
    EXPECT_NE(FileText(row.File).find(row.Holds), std::string::npos);
    EXPECT_EQ(Unsaved() + Rows(), "a|b|c");
    EXPECT_FALSE(Window->isWindowModified());
    EXPECT_FALSE(Window->mnuSave->isEnabled() || Window->mnuRevert->isEnabled());
    EXPECT_EQ(Shown() + std::to_string(Doc().CurFlight), row.File + std::to_string(flight));
  }
}

TEST_F(HistoryTest, SaveAllWritesEveryMissionWhateverBecomesOfAnother) {
  EditDark();
  ClickRow(1);
  Edit();
  FailSteps(World_.Services.Files, "take name", "a.mis");
  World_.Script.Expect("Update fail. Reason unknown. Mission file restored.");
  Window->mnuSaveAll->trigger();
  EXPECT_EQ(Rows(), "*a|b|c") << "the second is saved all the same";
  EXPECT_NE(FileText("b").find("CloudType 5"), std::string::npos);
  EXPECT_EQ(Shown(), "b");
  EXPECT_FALSE(Lit());
}

TEST_F(HistoryTest, RevertIsAStep) {
  ClickRow(1);
  Edit();
  Window->mnuRevert->trigger();
  EXPECT_EQ(Panel().cboWeather->currentIndex(), 2);
  EXPECT_EQ(Unsaved(), "");
  EXPECT_FALSE(Lit());
  ClickRow(0);
  EXPECT_EQ(Undo(), "Reverted");
  EXPECT_EQ(Shown(), "b");
  EXPECT_EQ(Panel().cboWeather->currentIndex(), 5);
  EXPECT_TRUE(Lit()) << "as it was";
  EXPECT_EQ(Redo(), "Reverted");
  EXPECT_FALSE(Lit());
  Box.Remove("missions/b.mis");
  Edit();
  Window->mnuRevert->trigger();
  EXPECT_EQ(Panel().cboWeather->currentIndex(), 5);
  EXPECT_NE(Told().find("cannot be read"), std::string::npos);
}

TEST_F(HistoryTest, UndoGoesToWhereItHappened) {
  ClickFlight(kFighter);
  EditDark();
  ClickFlight(kLateFighter);
  Panel_().txtFuel->setText("70");
  ClickFlight(kBomber);
  World_.Script.Expect(kQuestion, Answer::Yes);
  ClickRow(1);
  EXPECT_EQ(Unsaved(), "") << "both were written";
  EXPECT_EQ(Undo(), "Fuel of r0101");
  EXPECT_EQ(Shown(), "a");
  EXPECT_EQ(Doc().CurFlight, kLateFighterFlight);
  EXPECT_EQ(Panel_().txtFuel->text(), "40");
  EXPECT_EQ(Rows(), "*a|b|c") << "the file holds the later state";
  EXPECT_EQ(Undo(), "Markings of r0100");
  EXPECT_EQ(Doc().CurFlight, kFighterFlight);
  EXPECT_EQ(Record(kFighterFlight).PlaneSlots[0].NumberOn, "");
  EXPECT_EQ(Redo(), "Markings of r0100");
  EXPECT_EQ(Redo(), "Fuel of r0101");
  EXPECT_EQ(Unsaved(), "");
  EXPECT_EQ(Doc().CurFlight, kLateFighterFlight);
  EXPECT_EQ(Redo(), "");
}

TEST_F(HistoryTest, WhatIsDroppedComesBackAsItWas) {
  Box.Write("other/x.mis", MissionText());
  const struct {
    const char* By;
    bool IsLit;
    std::function<void()> Drop;
  } rows[] = {{"leaving", true,
               [this] {
                 World_.Script.Expect(kQuestion, Answer::No);
                 ClickRow(2);
               }},
              {"Save As", true,
               [this] {
                 World_.Script.ExpectPath("SaveAs", Box.Path("missions/z.mis"));
                 Window->mnuMissionPop[frmRWS::kSaveAs]->trigger();
               }},
              {"leaving", false, [this] {
                 World_.Script.ExpectPath("Select a mission directory", Box.Path("other"));
                 Click(Window->cmd[frmRWS::kDirectory]);
                 EXPECT_EQ(Rows(), "x");
               }}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.By) + (row.IsLit ? " lit" : " dark"));
    ClickRow(0);
    ClickFlight(kFighter);
    row.IsLit ? Panel_().txtFuel->setText("70") : EditDark();
    row.Drop();
    EXPECT_EQ(Unsaved(), "");
    EXPECT_EQ(Undo(), std::string("Edits dropped by ") + row.By);
    EXPECT_EQ(Shown() + Rows().substr(0, 2), "a*a");
    EXPECT_TRUE(Window->staPanels[0]->text().contains("missions"));
    EXPECT_EQ(Doc().CurFlight, kFighterFlight);
    EXPECT_EQ(Lit(), row.IsLit);
    EXPECT_EQ(Record(kFighterFlight).Fuel, row.IsLit ? "70" : "40");
    Save();
    EXPECT_EQ(Unsaved(), "");
    // As new for the next one.
    Panel_().txtFuel->setText("40");
    Save();
  }
}

TEST_F(HistoryTest, WhatCannotBeUndoneIsToldAndCanBeLeftOut) {
  ClickRow(1);
  Edit();
  Save();
  World_.Script.Expect("Are you sure you want to delete\nb?", Answer::Yes);
  Window->mnuMissionPop[frmRWS::kDelete]->trigger();
  Box.Write("missions/b.mis", "another");
  EXPECT_EQ(Undo(), "Delete of b");
  EXPECT_NE(Bars().find("\"Delete of b\" cannot be undone."), std::string::npos);
  EXPECT_NE(Bars().find("b.mis\" is there again."), std::string::npos);
  EXPECT_EQ(FileText("b"), "another");
  EXPECT_EQ(Window->mnuUndo->text(), "&Undo Delete of b");
  Panel().chkST->click();
  EXPECT_EQ(Bars(), "") << "of a step that is not the next one";
  Undo();
  Undo();
  EXPECT_EQ(Press("Leave it out"), "");
  EXPECT_EQ(Bars(), "");
  EXPECT_EQ(Window->mnuUndo->text(), "&Undo Weather of b");
}

TEST_F(HistoryTest, TypingIsOneStepUntilTheFocusMoves) {
  Activate();
  ClickFlight(kFighter);
  const auto type = [this](const char* text) {
    Panel_().txtFuel->setFocus();
    Panel_().txtFuel->selectAll();
    QTest::keyClicks(Panel_().txtFuel, text);
  };
  type("75");
  Panel().txtWeather->setFocus();
  type("62");
  EXPECT_EQ(Record(kFighterFlight).Fuel, "62");
  QTest::keyClick(Panel_().txtFuel, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Record(kFighterFlight).Fuel, "75") << "the program's Undo, not that of the box";
  EXPECT_EQ(Panel_().txtFuel->text(), "75");
  EXPECT_EQ(Undo(), "Fuel of r0100");
  EXPECT_EQ(Record(kFighterFlight).Fuel, "40");
  EXPECT_EQ(Undo(), "");
  EXPECT_FALSE(Lit());
}

TEST_F(HistoryTest, ClosedHomeBasesAreTakenOverByUndo) {
  OpenHomeBase();
  EditHomeBase(false);
  EXPECT_TRUE(Doc().Missions[2].BornPlaces[0].Planes.empty());
  EXPECT_EQ(Undo(), "Edits dropped by closing the home bases");
  EXPECT_EQ(Doc().Missions[2].BornPlaces[0].Planes.size(), 2U);
  EXPECT_EQ(Rows(), "a|b|*c");
  Save();
  EXPECT_NE(FileText("c").find("[BornPlace0]\r\n"), std::string::npos);
}

}  // namespace
}  // namespace rws::test
