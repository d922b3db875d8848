#include "editors/frmDogFight.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QWheelEvent>

#include "tests/support/form_test.h"

namespace rws::test {
namespace {

/** The real form over two bases: the default aircraft, then one with a list of its own whose colour
    and size the controls do not have. */
struct HomeBaseForm : FormTest<frmDogFight> {
  HomeBaseForm() {
    Tables.DogFightAircraft = {{"Bf 109", "Bf-109", "R", false},
                               {"B-17", "B-17D", "R", true},
                               {"P-51", "P-51D", "R", false}};
    W.Doc.Missions.resize(1);
    W.Doc.Missions[0].BornPlaces = {{1, 3000, {}, 0, 0, true, {}},
                                    {40, 10000, {"P-51D", "UFO"}, 0, 0, true, {}}};
    W.Doc.MissionShadow = W.Doc.Missions;
  }
  BornPlace& Shadow(std::size_t base) { return W.Doc.MissionShadow[0].BornPlaces[base]; }
  BornPlace& Own(std::size_t base) { return W.Doc.Missions[0].BornPlaces[base]; }
  std::string Shown(std::size_t list) {
    std::vector<std::string> texts;
    const auto* model = Form->lstAC[list]->model();
    for (int row = 0; row < model->rowCount(); ++row)
      texts.push_back(model->index(row, 0).data().toString().toStdString());
    return Joined(texts);
  }
  void ClickItem(std::size_t list, int row) {
    auto* view = Form->lstAC[list];
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      view->visualRect(view->model()->index(row, 0)).center());
  }
  QColor Swatch() { return Form->lblColor->palette().color(Form->lblColor->backgroundRole()); }
};

TEST_F(HomeBaseForm, ShowsEachBaseAndKeepsWhatItCannotShow) {
  Open();
  EXPECT_EQ(Form->BaseCount, 1);
  EXPECT_EQ(Form->RowCount, 2);
  EXPECT_EQ(Form->cbo->currentText(), "Red");
  EXPECT_EQ(Swatch(), QColor(192, 0, 0));
  EXPECT_EQ(Shown(kAvailable) + "/" + Shown(kReserve), "Bf 109|P-51/B-17");
  QTest::mouseClick(Form->upd->Up, Qt::LeftButton);
  EXPECT_EQ(Form->lbl->text(), "1");
  EXPECT_EQ(Form->cbo->currentIndex(), -1);
  EXPECT_EQ(Form->lblSize->text(), "10000 m") << "beyond the slider";
  EXPECT_EQ(Swatch(), Form->palette().color(QPalette::Button));
  EXPECT_EQ(Shown(kAvailable) + "/" + Shown(kReserve), "P-51|/Bf 109|B-17");
  QTest::mouseClick(Form->slide, Qt::RightButton);
  QTest::mouseClick(Form->upd->Up, Qt::LeftButton);
  QTest::mouseClick(Form->cmd[frmDogFight::kApply], Qt::LeftButton);
  EXPECT_EQ(TakeEdits(), "Home bases");
  EXPECT_EQ(Own(1).Army, 40);
  EXPECT_EQ(Own(1).Radius, 10000);
  EXPECT_EQ(Joined(Own(1).Planes), "P-51D|UFO");
  EXPECT_FALSE(Form->frmCancel || Form->isVisible());
}

TEST_F(HomeBaseForm, TakesColorAndTheSizeOfTheMouseAlone) {
  Open();
  QTest::keyClick(Form->cbo, Qt::Key_Down);
  EXPECT_EQ(Shadow(0).Army, 2);
  EXPECT_EQ(Swatch(), QColor(0, 0, 192));
  QTest::keyClick(Form->slide, Qt::Key_End);
  EXPECT_EQ(Form->slide->value(), 9950);
  EXPECT_EQ(Form->lblSize->text(), "9950 m");
  QWheelEvent wheel({5, 5}, Form->slide->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(Form->slide, &wheel);
  EXPECT_LT(Form->slide->value(), 9950);
  EXPECT_EQ(Shadow(0).Radius, 3000);
  const int before = Form->slide->value();
  QTest::mouseClick(Form->slide, Qt::LeftButton, {}, {2, 5});
  EXPECT_LT(Form->slide->value(), before);
  EXPECT_EQ(Shadow(0).Radius, Form->slide->value());
  EXPECT_EQ(TakeEdits(), "Home base colour|Home base size");

  QTest::keyClick(Form.get(), Qt::Key_Escape);
  EXPECT_TRUE(Form->frmCancel);
  EXPECT_EQ(Own(0).Army, 1);
  Open();
  EXPECT_EQ(Form->cbo->currentText(), "Blue") << "kept for the next time";
  QTest::mouseClick(Form->cmd[frmDogFight::kCancel], Qt::LeftButton);
  EXPECT_TRUE(Form->frmCancel && !Form->isVisible());
}

TEST_F(HomeBaseForm, MovesTheAircraftSelectedByMouseOrKeys) {
  Open();
  EXPECT_FALSE(Form->cmd1[0]->isEnabled() || Form->cmd1[1]->isEnabled());
  QTest::keyClick(Form->lstAC[kReserve], Qt::Key_Return);
  EXPECT_EQ(Joined(Shadow(0).Planes), "") << "nothing is selected";
  ClickItem(kReserve, 0);
  QTest::mouseDClick(
      Form->lstAC[kReserve]->viewport(), Qt::LeftButton, {},
      Form->lstAC[kReserve]->visualRect(Form->lstAC[kReserve]->currentIndex()).center());
  EXPECT_TRUE(Form->isVisible());
  EXPECT_EQ(Joined(Shadow(0).Planes), "Bf-109|B-17D|P-51D");
  EXPECT_EQ(Shown(kAvailable) + "/" + Shown(kReserve), "Bf 109|B-17|P-51/");
  EXPECT_FALSE(Form->cmd1[0]->isEnabled() || Form->cmd1[1]->isEnabled());

  ClickItem(kAvailable, 0);
  QTest::keyClick(Form->lstAC[kAvailable], Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(Form->lstAC[kAvailable], Qt::Key_Return);
  EXPECT_TRUE(Form->isVisible());
  EXPECT_EQ(Joined(Shadow(0).Planes), "P-51D");
  QTest::keyClick(Form->lstAC[kAvailable], Qt::Key_A, Qt::ControlModifier);
  QTest::mouseClick(Form->cmd1[kAvailable], Qt::LeftButton);
  EXPECT_TRUE(Shadow(0).Planes.empty());
  EXPECT_EQ(Shown(kAvailable), "Bf 109|P-51") << "nothing left means the default";
  const std::string kind = "Aircraft of a home base";
  EXPECT_EQ(TakeEdits(), Joined({kind, kind, kind}));

  QTest::keyClick(Form->upd->Up, Qt::Key_Up);
  W.Script.Expect("Are you sure you want to do this?", Answer::No);
  QTest::mouseClick(Form->cmd2, Qt::LeftButton);
  EXPECT_EQ(Joined(Shadow(1).Planes) + TakeEdits(), "P-51D|UFO");
  W.Script.Expect("This will set all flyable aircraft to this Home Base.", Answer::Yes);
  QTest::mouseClick(Form->cmd2, Qt::LeftButton);
  EXPECT_TRUE(Shadow(1).Planes.empty());
  EXPECT_EQ(TakeEdits(), kind);
  EXPECT_EQ(Shown(kAvailable), "Bf 109|P-51");

  W.Doc.Missions[0].KeepsLines = true;
  W.Doc.MissionShadow = W.Doc.Missions;
  Open();
  QTest::keyClick(Form->upd->Up, Qt::Key_Up);
  ClickItem(kReserve, 1);
  QTest::keyClick(Form->lstAC[kReserve], Qt::Key_Return);
  EXPECT_EQ(Joined(Shadow(1).Planes), "P-51D|UFO|B-17D") << "behind what its lines hold";
}

}  // namespace
}  // namespace rws::test
