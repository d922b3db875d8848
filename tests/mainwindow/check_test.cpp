#include "services/forms/frmCam.h"
#include "tests/mainwindow/unsaved_fixture.h"
#include "tools/frmCheck.h"

namespace rws::test {
namespace {

/** The check over the mission of four flights and two more. */
class CheckTest : public UnsavedTest {
 protected:
  CheckTest() {
    Doc().Untouched = UntouchedLines::Keep;
    Box.Write("program/RWS_Weapons.txt", Crlf({"Rockets,8xRS82,I_16", "none"}));
    Box.Write("program/RWS_Aircraft.txt", Crlf({"F,IL-2,IL_2,,,,", "F,I-16,I_16,,,,"}));
    Box.Write("program/RWS_Maps.txt", "Crimea,Crimea/load.ini\r\n");
    Box.Write("program/RWS_Squadron.txt", Crlf({"USSR,USSR,r01,red,,1"}));
    Window->mnuCheck->trigger();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Form()));
  }
  frmCheck& Form() { return *Window->Check(); }
  void GoTo(const char* kind, const std::string& mission) {
    for (int row = 0; row < Form().Model.rowCount(); ++row) {
      const Finding* finding = Form().Model.FindingAt(row);
      if (!finding || finding->Kind != kind || !Form().Model.MissionAt(row).Path.ends_with(mission))
        continue;
      Form().lstFindings->SelectOnly(row);
      return QTest::keyClick(Form().lstFindings, Qt::Key_Return);
    }
    ADD_FAILURE() << kind << " of " << mission;
  }
};

TEST_F(CheckTest, GoesToTheFlightOfAFinding) {
  GoTo("squadron", "a.mis");
  EXPECT_EQ(Doc().CurFlight, kBomberFlight);
  EXPECT_TRUE(Contains(Told(), "lack the squadron \"g01\"")) << Told();
  Form().optWhat[frmCheck::kFolder]->click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return !Form().cmd[frmCheck::kStop]->isEnabled(); }));
  GoTo("map", "c.mis");
  EXPECT_EQ(Shown(), "c");
  EXPECT_EQ(Row(), 2);
}

TEST_F(CheckTest, MendsWhatTheWindowShowsAndUndoTakesItBack) {
  rws::Edit(World_, {"Test", "Time"}, [&] { Doc().Missions[0].Time = "25.5"; });
  Click(Form().cmd[frmCheck::kCheck]);
  Click(Form().cmd[frmCheck::kMendAll]);
  EXPECT_EQ(Doc().Missions[0].Time, "1.5");
  EXPECT_EQ(Panel().dtMission->time(), QTime(1, 30));
  EXPECT_EQ(Undo(), "Mending of a");
  EXPECT_EQ(Doc().Missions[0].Time, "25.5");
}

TEST_F(CheckTest, TellsWhetherTheMissionSuitsTheGame) {
  Work = [this](QDialog& dialog) {
    auto& form = dynamic_cast<frmCam&>(dialog);
    EXPECT_EQ(form.lblSq->text(), "Squadrons that the game may not know");
    EXPECT_TRUE(form.imgWarn[0]->isVisible());
    World_.Script.Expect("\"MYSTERY\"");
    Click(form.imgWarn[1]);
    World_.Script.Expect("\"MYSTERY\"");
    QTest::keyClick(form.imgWarn[1], Qt::Key_Space);
    EXPECT_EQ(form.lblMap->text().left(26), "Map that the game may not ");
  };
  Window->mnuCompatibility->trigger();
  for (const char* name : {"a", "b", "c"}) Box.Remove(std::string("missions/") + name + ".mis");
  Window->Start();
  Click(Form().cmd[frmCheck::kCompatibility]);
  EXPECT_FALSE(Form().cmd[frmCheck::kCompatibility]->isEnabled());
  Window->close();
  EXPECT_FALSE(Form().isVisible());
}

}  // namespace
}  // namespace rws::test
