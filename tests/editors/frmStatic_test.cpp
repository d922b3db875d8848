#include "editors/frmStatic.h"

#include <gtest/gtest.h>

#include <QHeaderView>

#include "editors/frmChgAC.h"
#include "mission/update.h"
#include "tests/support/form_test.h"

namespace rws::test {
namespace {

struct StaticForm : FormTest<frmStatic> {
  StaticForm() {
    Tables.Aircraft = {{"Red", "I-16", "I_16", "", "", {}, true, false},
                       {"Blue", "Bf 109", "BF_109", "", "", {}, false, false}};
    Tables.Squadrons = {{"red", "USSR", "USSR", {}}, {"blue", "Germany", "Germany", {}}};
    Tables.Countries = {{"USSR", "VVS", "ru", "red"},
                        {"Germany", "Luftwaffe", "de", "blue"},
                        {"Default", "n", "null", ""}};
  }

  void Open(const std::string& lines) {
    ReadLines(W, lines).BaseName = "Dawn & dusk";
    W.Doc.MissionShadow = W.Doc.Missions;
    FormTest::Open([this](frmStatic& form) {
      form.ShowDialog = [this](QDialog& dialog) {
        auto& change = dynamic_cast<frmChgAC&>(dialog);
        change.show();
        Asked.push_back(change.ACName + " " + change.Group);
        Choose(change);
        EXPECT_FALSE(change.isVisible());
      };
    });
  }
  /** The rows in list order: aircraft, flyable and country; selected ones in brackets. */
  std::string Rows() const {
    QStringList rows;
    for (int row = 0; row < Form->lstStatic->RowCount(); ++row) {
      QStringList cells;
      for (const int column : {0, 1, 2}) cells << Data(row, column, Qt::DisplayRole).toString();
      const bool selected = Form->lstStatic->SelectedRows().contains(row);
      rows << QString(selected ? "[%1]" : "%1").arg(cells.join(","));
    }
    return rows.join("|").toStdString();
  }
  QVariant Data(int row, int column, int role) const {
    return Form->lstStatic->model()->index(row, column).data(role);
  }
  void ClickHeader(int column) {
    auto* header = Form->lstStatic->header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 8, header->height() / 2});
  }

  std::function<void(frmChgAC&)> Choose;
  std::vector<std::string> Asked;
};

const std::string kLines =
    "[NStationary]|  0 p.planes.Plane$I_16 1 1 2 3 0 ru|  1 p.ships.Ship$I_16 1 1 2 3 0|"
    "  2 p.planes.Plane$BF_109 1 1 2 3 0 de 2 1.0|  3 p.planes.Plane$HE_999 1 1 2 3 0 de";

TEST_F(StaticForm, ChangesTheSelectedRowsAndAppliesThem) {
  Open(kLines);
  EXPECT_EQ(Form->fra->Caption().toStdString(), "Stationary Aircraft for Dawn & dusk");
  EXPECT_EQ(Rows(), "[I-16,F,USSR]|Bf 109, ,Germany|HE_999, ,Germany");
  EXPECT_FALSE(Form->cmd[frmStatic::kApply]->isEnabled());
  EXPECT_EQ(Data(2, 1, Qt::ToolTipRole).toString().toStdString(),
            "Installed game does not support this aircraft you need to change it.");
  EXPECT_EQ(Data(2, 0, Qt::AccessibleTextRole).toString().toStdString(),
            "HE_999, Not supported by the installed game");
  EXPECT_EQ(Data(1, 0, Qt::ForegroundRole).value<QColor>().name().toStdString(), "#0000ff");

  ClickHeader(0);
  EXPECT_EQ(Rows(), "Bf 109, ,Germany|HE_999, ,Germany|[I-16,F,USSR]");
  ClickHeader(2);
  EXPECT_EQ(Rows(), "[I-16,F,USSR]|HE_999, ,Germany|Bf 109, ,Germany");
  QTest::keyClick(Form->lstStatic, Qt::Key_Down);
  QTest::keyClick(Form->lstStatic, Qt::Key_Down, Qt::ShiftModifier);
  Choose = [](frmChgAC& change) {
    QTest::keyClicks(change.lstPlanes, "i");
    change.tview->setCurrentIndex(change.tview->model()->index(2, 0));
    change.cmd[frmChgAC::kApply]->click();
  };
  QTest::keyClick(Form->lstStatic, Qt::Key_Return);
  EXPECT_EQ(Rows(), "I-16,F,USSR|[I-16,F,Default]|[I-16,F,Default]");
  EXPECT_FALSE(MissionChanged(W.Doc, 0)) << "nothing before Apply";
  EXPECT_EQ(TakeEdits(), "");
  W.Script.Expect("Do you want to drop them?", Answer::No);
  QTest::keyClick(Form->lstStatic, Qt::Key_Escape);
  Form->cmd[frmStatic::kApply]->click();
  EXPECT_FALSE(Form->isVisible());
  EXPECT_TRUE(Form->Static());
  EXPECT_EQ(TakeEdits(), "Parked aircraft");
  EXPECT_EQ(W.Doc.Missions[0].Lines[1], W.Doc.MissionShadow[0].Lines[1]);
  EXPECT_EQ(W.Doc.Missions[0].Lines[3], "  2 p.planes.Plane$I_16 1 1 2 3 0 null 2 1.0");
  EXPECT_EQ(Joined(Asked), "HE_999 de");
  EXPECT_TRUE(W.Log.empty());
}

TEST_F(StaticForm, LeavesTheMissionAlone) {
  Open(kLines);
  QTest::keyClick(Form->lstStatic, Qt::Key_Down);
  for (const bool escape : {true, false}) {
    Choose = [&](frmChgAC& change) {
      escape ? change.close() : (change.cmd[frmChgAC::kCancel]->click(), true);
    };
    const QPoint place = Form->lstStatic->visualRect(Form->lstStatic->currentIndex()).center();
    QTest::mouseClick(Form->lstStatic->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(Form->lstStatic->viewport(), Qt::LeftButton, {}, place);
    EXPECT_FALSE(Form->cmd[frmStatic::kApply]->isEnabled());
  }
  Choose = [](frmChgAC& change) { change.cmd[frmChgAC::kApply]->click(); };
  Form->cmd[frmStatic::kChange]->click();
  EXPECT_EQ(Rows(), "I-16,F,USSR|[Bf 109, ,Germany]|HE_999, ,Germany");
  Form->cmd[frmStatic::kApply]->click();
  EXPECT_TRUE(Form->Static());
  EXPECT_FALSE(MissionChanged(W.Doc, 0)) << "the same aircraft and country";

  Open("[NStationary]|  1 p.ships.Ship$I_16 1 1 2 3 0");
  EXPECT_EQ(Rows(), "");
  EXPECT_FALSE(Form->cmd[frmStatic::kChange]->isEnabled());
  ClickHeader(0);
  QTest::keyClick(Form->lstStatic, Qt::Key_Return);
  EXPECT_TRUE(Form->isVisible());
  Form->cmd[frmStatic::kExit]->click();
  EXPECT_FALSE(Form->Static());
  EXPECT_EQ(Joined(Asked), "BF_109 de|BF_109 de|BF_109 de");
}

}  // namespace
}  // namespace rws::test
