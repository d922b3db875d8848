#include <QWheelEvent>

#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

TEST_F(WindowTest, EveryValueReachesTheFileThroughUpdate) {
  Box.Write("missions/a.mis", MissionText());
  Open();
  Panel().cboWeather->SelectRow(4);
  Panel().txtWeather->setText("1250");
  Panel().dtMission->setTime(QTime(6, 45));
  Click(Panel().chkST);
  Click(Panel().chkWL);
  EXPECT_TRUE(Lit());
  Click(Window->cmd[frmRWS::kUpdate]);
  EXPECT_FALSE(Lit());
  std::string written = MissionText("1250.0");
  written = Replace(written, "TIME 12.5", "TIME 06.75\r\n  TIMECONSTANT 1\r\n  WEAPONSCONSTANT 1");
  EXPECT_EQ(FileText("a"), Replace(written, "CloudType 2", "CloudType 4"));
  EXPECT_EQ(Box.Read("program/RWS Backup/a.mis.bak"), MissionText());
  EXPECT_EQ(Box.Names("program"), "RWS Backup");
  EXPECT_EQ(Box.Names("missions"), "a.mis");
  // The reader takes the constant's line for the time as well.
  EXPECT_EQ(Panel().dtMission->time(), QTime(1, 0));
}

TEST_F(WindowTest, CloudHeightIsCutAsTyped) {
  OpenThree();
  struct Row {
    const char *Typed, *Shown, *ToolTip;
  };
  const Row rows[] = {{"3000", "2500", "8202 feet"}, {"10", "50", "164 feet"},
                      {"", "50", "164 feet"},        {"abc", "50", "164 feet"},
                      {"1000", "1000", "3281 feet"}, {"2500.5", "2500", "8202 feet"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Typed);
    Panel().txtWeather->setText(row.Typed);
    EXPECT_EQ(Panel().txtWeather->text(), row.Shown);
    EXPECT_EQ(Panel().txtWeather->toolTip(), row.ToolTip);
    EXPECT_EQ(Doc().Missions[0].CloudHeight, row.Shown);
  }
}

TEST_F(WindowTest, ABadCloudHeightKeepsTheFocusAndSwallowsTheClick) {
  OpenThree();
  Activate();
  Panel().txtWeather->setFocus();
  const auto spoil = [&] { Panel().txtWeather->setText("100abc"); };
  spoil();
  Click(Panel().chkST);
  EXPECT_FALSE(Panel().chkST->isChecked()) << "the click that tried to leave must do nothing";
  EXPECT_TRUE(Panel().txtWeather->hasFocus());
  EXPECT_EQ(Panel().txtWeather->text(), "1000") << "junk has not reached the record";
  spoil();
  QTest::keyClick(Panel().txtWeather, Qt::Key_Tab);
  EXPECT_TRUE(Panel().txtWeather->hasFocus());
  QTest::keyClick(Panel().txtWeather, Qt::Key_Tab);
  EXPECT_FALSE(Panel().txtWeather->hasFocus()) << "a good number may be left";
  Click(Panel().chkST);
  EXPECT_TRUE(Panel().chkST->isChecked());
}

TEST_F(WindowTest, TheTimeIsTypedOverAndTheWheelPassesBy) {
  OpenThree();
  Activate();
  TimePicker& picker = *Panel().dtMission;
  auto* text = picker.findChild<QLineEdit*>();
  const auto turn = [&] {
    const QPointF middle = picker.rect().center();
    QWheelEvent wheel(middle, picker.mapToGlobal(middle), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&picker, &wheel);
  };
  turn();
  EXPECT_FALSE(Lit()) << "the pointer only passed by";
  // Between the digits, where a third one would make no time.
  const int digit = picker.fontMetrics().horizontalAdvance(u'0');
  QTest::mouseClick(text, Qt::LeftButton, {}, QPoint(digit * 3 / 2, text->height() / 2));
  QTest::keyClicks(&picker, "0745");
  EXPECT_EQ(picker.time(), QTime(7, 45));
  QTest::keyClick(&picker, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(&picker, "2105");
  EXPECT_EQ(picker.time(), QTime(21, 5));
  EXPECT_EQ(Doc().Missions[0].Time, "21.08333");
  turn();
  EXPECT_NE(picker.time(), QTime(21, 5));
}

TEST_F(WindowTest, AFailedUpdateKeepsTheEdits) {
  OpenThree();
  Edit();
  FailSteps(World_.Services.Files, "take name", "a.mis");
  World_.Script.Expect("Update fail. Reason unknown. Mission file restored.");
  Click(Window->cmd[frmRWS::kUpdate]);
  EXPECT_EQ(FileText("a"), MissionText());
  EXPECT_FALSE(Lit()) << "counts as saved until the next edit";
  EXPECT_EQ(Doc().Missions[0].CloudType, "5");

  World_.Services.Files.BeforeStep = {};
  ClickRow(1);
  Edit();
  Click(Window->cmd[frmRWS::kUpdate]);
  EXPECT_NE(FileText("b"), MissionText());
  ClickRow(0);
  EXPECT_EQ(Panel().cboWeather->currentIndex(), 5) << "an Update of another mission drops nothing";
  Panel().txtWeather->setText("1300");
  EXPECT_TRUE(Lit());
  Click(Window->cmd[frmRWS::kUpdate]);
  EXPECT_NE(FileText("a").find("CloudType 5"), std::string::npos);
}

}  // namespace
}  // namespace rws::test
