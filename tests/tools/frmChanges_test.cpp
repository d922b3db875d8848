#include "tools/frmChanges.h"

#include <QClipboard>
#include <QGuiApplication>

#include "mission/reader.h"
#include "platform/qt_text.h"
#include "session/lines_rule.h"
#include "session/recording.h"
#include "session/undo.h"
#include "tests/support/form_test.h"

namespace rws::test {
namespace {

/** A mission of which a writing anew loses "spawn0", with another fuel. */
struct ChangesForm : FormTest<frmChanges> {
  ChangesForm() {
    const std::string path = Box.Write(
        "m/A.mis", CrlfText("[MAIN]|  MAP x|  TIME 12|  CloudType 2|  CloudHeight 1000.0|  army 1|"
                            "  playerNum 0|[Wing]|  r0100|[r0100]|  Planes 1|  Skill 1|"
                            "  Class air.IL_2|  Fuel 100|  weapons default|  spawn0 \xC4|"
                            "[r0100_Way]|  TAKEOFF 100.00 200.00 0 0 &0|[NStationary]|"));
    W.Services.Window.IsUp = [] { return true; };
    W.Doc.MissionFiles = {path};
    NameMission(W.Doc.Missions.emplace_back(), path);
    LoadMission(W.Doc, W.Services, 0);
    W.Doc.MissionShadow = W.Doc.Missions;
    NoteRead(W, 0);
    Edit(W, {"Test", "Fuel"}, [&] { W.Doc.Missions[0].Flights[0].Fuel = "50"; });
  }
  void Show(bool mayChange = true) {
    Open([&](frmChanges& form) {
      form.MissionPath = W.Doc.MissionFiles[0];
      if (!mayChange) return;
      form.Choose = [this](UntouchedLines choice) { ChooseLines(W, 0, choice); };
      form.Changed = [this] { ++changed_; };
    });
  }
  CompareModel& Model() { return Form->cmpTexts->Model; }
  QString Cell(int row, int column, int role = Qt::DisplayRole) {
    return Model().data(Model().index(row, column), role).toString();
  }
  /** "label: text" of the rows that differ. */
  std::string Differences() {
    QStringList all;
    for (int row = 0; row < Model().rowCount(); ++row)
      if (!Cell(row, CompareModel::kLabel).isEmpty())
        all << Cell(row, CompareModel::kLabel) + ": " + Cell(row, CompareModel::kOldText).trimmed();
    return ToPath(all.join('|'));
  }
  std::string Counts() { return ToPath(Form->cmpTexts->lblCounts->text()); }
  std::string Fuel() { return W.Doc.Missions[0].Flights[0].Fuel; }

  int changed_ = 0;
};

TEST_F(ChangesForm, TellsEditsFromRewrittenLinesInBothWays) {
  Show();
  EXPECT_TRUE(Form->optWay[frmChanges::kAnew]->isChecked());
  EXPECT_EQ(Differences(), "your edit: Fuel 100|rewritten: spawn0 Ä|rewritten: ");
  EXPECT_EQ(Counts(), "1 line changed, 2 more rewritten.");
  const int row = Form->cmpTexts->CurrentRow();
  EXPECT_EQ(Cell(row, CompareModel::kNewText, Qt::AccessibleTextRole),
            "changed, your edit:   Fuel 50; what differs: 50");
  const auto marks = Model().Marks(Model().index(row, CompareModel::kOldText));
  ASSERT_EQ(marks.size(), 1U);
  EXPECT_EQ(Cell(row, CompareModel::kOldText).mid(marks[0].First, marks[0].Count), "100");
  Form->optWay[frmChanges::kKeep]->click();
  EXPECT_EQ(Differences(), "your edit: Fuel 100");
  EXPECT_EQ(Counts(), "1 line changed.");
  EXPECT_FALSE(W.Doc.Missions[0].KeepsLines) << "only looked at";
  Form->cmd[frmChanges::kUse]->click();
  EXPECT_TRUE(W.Doc.Missions[0].KeepsLines);
  EXPECT_EQ(Differences(), "your edit: Fuel 100");
  EXPECT_FALSE(Form->cmd[frmChanges::kUse]->isEnabled()) << "in use now";
}

TEST_F(ChangesForm, TakesAnEditBackByButtonAndKey) {
  for (const bool keeps : {false, true})
    for (const bool byKey : {false, true}) {
      SCOPED_TRACE(::testing::Message() << keeps << byKey);
      if (W.Doc.Missions[0].KeepsLines != keeps) ChooseLines(W, 0, UntouchedLines::Keep);
      changed_ = 0;
      Show();
      if (byKey)
        QTest::keyClick(Form->cmpTexts->lstSide[1], Qt::Key_Backspace, Qt::ControlModifier);
      else
        Form->cmd[frmChanges::kTakeBack]->click();
      EXPECT_EQ(Fuel(), "100");
      EXPECT_EQ(changed_, 1);
      EXPECT_EQ(Differences(), keeps ? "" : "rewritten: spawn0 Ä|rewritten: ");
      EXPECT_FALSE(Form->cmd[frmChanges::kTakeBack]->isEnabled()) << "no edit of the user";
      EXPECT_TRUE(Form->lblNote->text().contains("Taken back"));
      ASSERT_TRUE(UndoStep(W).Done);
      EXPECT_EQ(Fuel(), "50");
    }
}

TEST_F(ChangesForm, CopiesAllChangesAsADiff) {
  Show();
  Form->optWay[frmChanges::kKeep]->click();
  Form->mnuCopy->trigger();
  const QString text = QGuiApplication::clipboard()->text();
  EXPECT_TRUE(text.startsWith("--- A.mis\n+++ A.mis\n@@ -11,7 +11,7 @@\n")) << ToPath(text);
  EXPECT_TRUE(text.contains("-  Fuel 100\r\n+  Fuel 50\r\n")) << ToPath(text);
  EXPECT_TRUE(text.contains("   spawn0 Ä\r\n"));
}

TEST_F(ChangesForm, SaysWhyAWayCannotWrite) {
  W.Doc.Missions[0].Flights[0].Fuel = "5 // x";
  Show(false);
  Form->optWay[frmChanges::kKeep]->click();
  EXPECT_TRUE(Form->txtFault->isVisible());
  EXPECT_FALSE(Form->cmpTexts->isVisible());
  EXPECT_TRUE(Form->txtFault->toPlainText().contains("cannot be written this way"));
  for (const auto command : {frmChanges::kUse, frmChanges::kTakeBack})
    EXPECT_FALSE(Form->cmd[command]->isVisible()) << "only to look at";
  EXPECT_FALSE(Form->mnuCopy->isEnabled());
  Form->optWay[frmChanges::kAnew]->click();
  EXPECT_TRUE(Form->cmpTexts->isVisible());
}

}  // namespace
}  // namespace rws::test
