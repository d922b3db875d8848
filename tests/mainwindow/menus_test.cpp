#include <QMenuBar>

#include "tests/mainwindow/flights_fixture.h"

namespace rws::test {
namespace {

/** The menu bar over the mission of four flights, and a second one without any. */
class MenusTest : public FlightsTest {
 protected:
  MenusTest() {
    Box.Write("missions/b.mis", CrlfText("[MAIN]|  MAP x|[Wing]|[NStationary]"));
    Open();
    Activate();
  }
  ~MenusTest() override { CloseMenus(); }

  /** Alt and a letter, as a user who has never right clicked. */
  QMenu* OpenByKey(Qt::Key letter) {
    CloseMenus();
    QTest::keyClick(Window.get(), letter, Qt::AltModifier);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  static void CloseMenus() {
    while (auto* popup = QApplication::activePopupWidget()) popup->close();
  }
};

TEST_F(MenusTest, MissionWorksOnTheMissionOnShow) {
  Edit();
  World_.Script.Expect(kQuestion, Answer::Cancel);
  ClickRow(1);
  EXPECT_EQ(Row(), 1);
  EXPECT_EQ(OpenByKey(Qt::Key_M), Window->mnuMission);
  EXPECT_EQ(Row(), 0) << "the row that it works on is lit";
  QTest::keyClick(Window->mnuMission, Qt::Key_V);
  EXPECT_EQ(Joined(World_.ShellCalls), "text " + Box.Path("missions/a.mis"));
}

TEST_F(MenusTest, FlightFollowsTheSelection) {
  ClickFlight(kFighter);
  EXPECT_EQ(OpenByKey(Qt::Key_G), Window->mnuFlight);
  EXPECT_TRUE(Area().mnuAC[FlightArea::kDuplicate]->isEnabled());
  CloseMenus();
  List().selectionModel()->select(List().model()->index(kLateFighter, 0),
                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
  OpenByKey(Qt::Key_G);
  EXPECT_FALSE(Area().mnuAC[FlightArea::kDuplicate]->isEnabled()) << "not for several";
  CloseMenus();
  ClickRow(1);
  EXPECT_FALSE(Window->mnuFlight->menuAction()->isEnabled()) << "no flights";
  EXPECT_TRUE(Window->mnuMission->menuAction()->isEnabled());
  ClickRow(0);
  EXPECT_TRUE(Window->mnuFlight->menuAction()->isEnabled());
}

TEST_F(MenusTest, KeysOfEntriesReachTheWindowButNotPastARefusedText) {
  std::vector<std::string> done;
  for (auto* entry : {Window->mnuSave, Window->mnuSaveAll, Window->mnuUndo, Window->mnuRedo}) {
    QObject::connect(entry, &QAction::triggered,
                     [&done, entry] { done.push_back(entry->objectName().toStdString()); });
  }
  // With nothing to save or to undo they are dark again after each.
  const auto press = [this](QWidget* control, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    for (auto* entry : {Window->mnuSave, Window->mnuSaveAll, Window->mnuUndo, Window->mnuRedo})
      entry->setEnabled(true);
    QTest::keyClick(control, key, modifiers);
  };
  const auto pressAll = [&press](QWidget* control) {
    constexpr auto kShift = Qt::ControlModifier | Qt::ShiftModifier;
    press(control, Qt::Key_S, Qt::ControlModifier);
    press(control, Qt::Key_S, kShift);
    press(control, Qt::Key_Z, Qt::ControlModifier);
    press(control, Qt::Key_Z, kShift);
    press(control, Qt::Key_Y, Qt::ControlModifier);
  };
  Window->lstMission->setFocus();
  pressAll(Window->lstMission);
  EXPECT_EQ(Joined(done), "mnuSave|mnuSaveAll|mnuUndo|mnuRedo|mnuRedo");
  done.clear();
  Panel_().txtFuel->setFocus();
  Panel_().txtFuel->setText("4o");
  press(Panel_().txtFuel, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(Joined(done), "");
  EXPECT_TRUE(Panel_().txtFuel->hasFocus());
  press(Panel_().txtFuel, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(Joined(done), "mnuSave") << "the text has been put right";
}

TEST_F(MenusTest, TheToolBarNamesItsStepsAndStaysHidden) {
  Window->mnuUndo->setText("&Undo Fuel of I_SchG01");
  EXPECT_EQ(Window->mnuUndo->toolTip(), "Undo Fuel of I_SchG01 (Ctrl+Z)");
  const auto stored = [this] { return ReadFlag(World_.Services.Settings, setting::ToolBar); };
  Window->hide();
  EXPECT_TRUE(stored());
  Window->show();
  Window->mnuToolBar->trigger();
  EXPECT_FALSE(Window->tlbMain->isVisible());
  EXPECT_FALSE(stored());
}

}  // namespace
}  // namespace rws::test
