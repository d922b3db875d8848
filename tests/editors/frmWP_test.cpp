#include "editors/frmWP.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>

#include "tests/support/form_test.h"

namespace rws::test {
namespace {

/** The real form over a route of five waypoints, ten kilometers and 250 km/h each. */
struct WaypointForm : FormTest<frmWP> {
  WaypointForm() {
    Flight flight;
    flight.Class = "IL_2";
    flight.Name = "1_GvIAP01";
    flight.Waypoints.assign(5, {"1000", "250", "NORMFLY", "&0", 0, 0, 1000, {}, -1, {}});
    W.Doc.Missions.resize(1);
    W.Doc.Missions[0].Flights = {flight};
    W.Doc.MissionShadow = W.Doc.Missions;
    W.Services.Ask.InputBox = [this](const std::string& prompt, const std::string& title,
                                     const std::string&) {
      EXPECT_EQ(title, kProgramTitle);
      Prompts_.push_back(prompt);
      return Typed;
    };
  }

  Waypoint& Point(int row) {
    return W.Doc.Missions[0].Flights[0].Waypoints[static_cast<std::size_t>(row - 1)];
  }
  QPoint Place(int row, int column) {
    return Form->grd->visualRect(Form->grd->model()->index(row - 1, column - 1)).center();
  }
  void Click(int row, int column, Qt::MouseButton button = Qt::LeftButton,
             Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(Form->grd->viewport(), button, keys, Place(row, column));
  }
  /** Selects the rows of a column and right-clicks the last. */
  void RightClickRows(int first, int last, int column) {
    Click(first, column);
    Click(last, column, Qt::LeftButton, Qt::ShiftModifier);
    Click(last, column, Qt::RightButton);
  }
  void Type(int row, int column, const char* text) {
    Click(row, column);
    QTest::keyClick(Form->grd, Qt::Key_F2);
    auto* box = Form->grd->findChild<QLineEdit*>();
    ASSERT_NE(box, nullptr);
    if (text) box->setText(QLatin1String(text));
    QTest::keyClick(box, Qt::Key_Return);
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  std::string Heading(int column, int role = Qt::DisplayRole) {
    return Form->grd->model()
        ->headerData(column - 1, Qt::Horizontal, role)
        .toString()
        .toStdString();
  }
  std::string Shown(int row, int column) { return Form->grd->Text(row, column).toStdString(); }
  bool Applies() { return Form->cmd[frmWP::kApply]->isEnabled(); }

  std::optional<std::string> Typed;
  std::vector<std::string> Prompts_;
};

TEST_F(WaypointForm, TakesWhatIsTypedIntoACell) {
  Open();
  EXPECT_EQ(Form->fra->title(), "IL_2 - 1 GvIAP");
  EXPECT_FALSE(Applies());
  EXPECT_EQ(Heading(3), "   Alt [meters] ") << "the blanks make the column's width";
  EXPECT_EQ(Heading(2, Qt::TextAlignmentRole), std::to_string(Qt::AlignCenter));
  EXPECT_EQ(Heading(7, Qt::TextAlignmentRole), std::to_string(Qt::AlignRight | Qt::AlignVCenter));
  Type(2, 3, "1500.5");
  EXPECT_EQ(Point(2).Alt, "1500.5");
  EXPECT_TRUE(Applies() && Form->WPModified);

  Form->cmd[frmWP::kApply]->setEnabled(false);
  Type(3, 3, "high");
  EXPECT_EQ(Point(3).Alt, "1000");
  EXPECT_EQ(Shown(3, 3), "1000");
  EXPECT_TRUE(Applies()) << "also after a refused entry";

  // What is being typed belongs to the units it was begun in, and is not lost when the form closes.
  Click(4, 4);
  QTest::keyClick(Form->grd, '5');
  QTest::keyClicks(QApplication::focusWidget(), "00");
  Form->opt[frmWP::kNonMetric]->toggle();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Point(4).Speed, "500");
  EXPECT_EQ(Shown(4, 4), "311");
  EXPECT_EQ(Heading(3), "     Alt   [feet] ");
  Form->cmd[frmWP::kApply]->setEnabled(false);
  Type(1, 4, nullptr);
  EXPECT_EQ(Point(1).Speed, "250") << "left as it was, nothing is rounded";
  EXPECT_TRUE(Applies());
  Type(1, 3, "1000");
  EXPECT_EQ(Point(1).Alt, "305");
  EXPECT_EQ(Shown(1, 3), "1001");
  QTest::keyClick(Form->grd, Qt::Key_F2);
  Form->grd->findChild<QLineEdit*>()->setText("2000");
  Form->close();
  EXPECT_EQ(Point(1).Alt, "610");
  EXPECT_EQ(TakeEdits(), "Altitude|Speed|Altitude|Altitude") << "no refused or untouched text";
  EXPECT_EQ(W.SettingTexts["software\\hollowbyte\\rws edit\\wpmetric"], "False");
}

TEST_F(WaypointForm, FlipsRadioSilenceAndChoosesTypes) {
  Open();
  Click(2, 7);
  EXPECT_EQ(Point(2).Marker, "&1");
  QTest::keyClick(Form->grd, Qt::Key_Space);
  EXPECT_EQ(Point(2).Marker, "&0");
  EXPECT_TRUE(Applies() && !Form->WPModified);

  Form->cmd[frmWP::kApply]->setEnabled(false);
  Click(1, 2, Qt::RightButton);
  ASSERT_TRUE(Form->mnuPop->isVisible());
  Form->mnuPop->close();
  QTest::keyClick(Form->grd, Qt::Key_F10, Qt::ShiftModifier);
  ASSERT_TRUE(Form->mnuPop->isVisible());
  const QPoint below = Form->mnuPop->pos() - Form->grd->viewport()->mapToGlobal(Place(1, 2));
  EXPECT_TRUE(below.y() > 0 && below.y() < 20) << "at its row, wherever the pointer is";
  Form->mnuPop->close();
  EXPECT_FALSE(Form->mnuPop1[3]->isEnabled());
  Form->mnuPop1[2]->trigger();
  EXPECT_EQ(Point(1).Type, "GATTACK");
  EXPECT_EQ(TakeEdits(), "Radio silence|Radio silence|Waypoint type");
  EXPECT_FALSE(Applies());
  for (const int column : {1, 3, 4, 5, 6, 7}) Click(3, column, Qt::RightButton);
  RightClickRows(2, 4, 5);
  // Several columns: nothing happens, whichever button.
  Click(2, 6);
  Click(3, 7, Qt::LeftButton, Qt::ShiftModifier);
  Click(3, 7, Qt::RightButton);
  EXPECT_FALSE(Form->mnuPop->isVisible());
  EXPECT_EQ(Point(3).Marker, "&0");
  EXPECT_FALSE(Applies());
  Form->mnuMain1->trigger();
  EXPECT_FALSE(Form->isVisible());
}

TEST_F(WaypointForm, EditsSeveralRowsAtOnce) {
  Open();
  RightClickRows(2, 4, 4);
  EXPECT_EQ(Point(2).Speed, "250") << "cancelled";
  EXPECT_FALSE(Applies());
  Typed = "300";
  RightClickRows(2, 4, 4);
  for (const int row : {2, 3, 4}) EXPECT_EQ(Shown(row, 4), "300");
  EXPECT_EQ(Point(5).Speed, "250");
  EXPECT_TRUE(Applies());
  Form->opt[frmWP::kNonMetric]->click();
  Typed = "1000";
  RightClickRows(1, 2, 3);
  EXPECT_EQ(Point(1).Alt, "305");
  EXPECT_EQ(Joined(Prompts_),
            "Enter a new numeric value in Kph|Enter a new numeric value in Kph|"
            "Enter a new numeric value in feet");
  for (const auto& [answer, marker] : {std::pair{Answer::Yes, "&1"}, {Answer::Cancel, "&1"}}) {
    W.Script.Expect("Radio Silence?", answer);
    // A click on the first row alone would flip it.
    Click(1, 6);
    QTest::keyClick(Form->grd, Qt::Key_Right);
    QTest::keyClick(Form->grd, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(Form->grd, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(Point(1).Marker, marker);
    EXPECT_EQ(Point(2).Marker, marker);
  }

  EXPECT_EQ(TakeEdits(), "Speed|Altitude|Radio silence") << "several rows are one edit";
  W.Doc.MissionShadow.clear();
  W.Script.Expect("Subscript out of range");
  RightClickRows(3, 4, 3);
  EXPECT_EQ(W.Script.Boxes.back().Icon, Icon::Critical);
  EXPECT_EQ(Point(3).Alt, "305") << "what was written stays";
  EXPECT_EQ(Point(4).Alt, "1000");
}

TEST_F(WaypointForm, LeavesTriggersAlone) {
  auto& triggers = Point(3);
  triggers.Type = "TRIGGERS";
  const Waypoint before = triggers;
  Open();
  for (const int column : {3, 4}) {
    Click(3, column);
    QTest::keyClick(Form->grd, Qt::Key_F2);
    QTest::keyClick(Form->grd, Form->grd->Text(4, column)[0].toLatin1());
    EXPECT_EQ(Form->grd->Row(), 3) << "what is typed leads to no other row";
    EXPECT_EQ(Form->grd->findChild<QLineEdit*>(), nullptr);
  }
  Click(3, 7);
  QTest::keyClick(Form->grd, Qt::Key_Space);
  Click(3, 2, Qt::RightButton);
  EXPECT_FALSE(Form->mnuPop->isVisible());
  for (const auto* kind : Form->mnuPop1) EXPECT_FALSE(kind->isEnabled());
  EXPECT_EQ(TakeEdits(), "");
  Typed = "300";
  RightClickRows(2, 4, 4);
  EXPECT_EQ(Point(4).Speed, "300");
  EXPECT_EQ(Joined({triggers.Alt, triggers.Speed, triggers.Type, triggers.Marker}),
            Joined({before.Alt, before.Speed, before.Type, before.Marker}));
}

}  // namespace
}  // namespace rws::test
