#include "tools/frmCheck.h"

#include "mission/reader.h"
#include "platform/qt_text.h"
#include "services/text.h"
#include "session/recording.h"
#include "session/undo.h"
#include "tests/support/failing_step.h"
#include "tests/support/form_test.h"
#include "tools/logic/shown_check.h"

namespace rws::test {
namespace {

/** A folder of missions that are all wrong somehow; the first is on show. */
struct CheckForm : FormTest<frmCheck> {
  CheckForm() {
    Box.Write("RWS_Aircraft.txt", "F,Il-2,IL_2,,,,\r\n");
    Box.Write("RWS_Weapons.txt", "2 x,2xB,IL_2\r\nnone\r\n");
    Box.Write("RWS_Squadron.txt", "USSR,USSR,r01,red,,1\r\n");
    W.Services.Window.IsUp = [] { return true; };
    W.Doc.MissionDir = Box.Path("m");
    const std::string mission =
        "[MAIN]|  MAP x|  TIME 30.5|  CloudType 2|  CloudHeight 1000|[Wing]|  r0100|  "
        "r0101|[r0100]|"
        "  Planes 1|  Skill 4|  Class air.IL_2|  Fuel 130|  weapons default|[r0100_Way]|  NORMFLY "
        "1.00 2.00 500.00 300.00 &0|  NORMFLY 1.00 3.00 500.00 300.00 &0|[r0101]|  Planes 1|  "
        "Skill "
        "1|  Class air.FOO|  Fuel 100|  weapons default|[r0101_Way]|  NORMFLY 1.00 2.00 500.00 "
        "300.00 xx 0 &0|  LANDING 1.00 3.00 0 0 &0|[NStationary]";
    for (const char* name : {"a", "b"}) {
      W.Doc.MissionFiles.push_back(Box.Write("m/" + std::string(name) + ".mis", CrlfText(mission)));
      NameMission(W.Doc.Missions.emplace_back(), W.Doc.MissionFiles.back());
    }
    W.Doc.Untouched = UntouchedLines::Keep;
    LoadMission(W.Doc, W.Services, 0);
    W.Doc.MissionShadow = W.Doc.Missions;
    NoteRead(W, 0);
    Box.Write("m/right.mis", CrlfText("[MAIN]|MAP x"));
    Open([&](frmCheck& form) {
      form.GoTo = [this](const std::string& path, const Finding* finding) {
        Gone = path.substr(Box.Path("m/").size()) + " " +
               (finding ? finding->Flight + " " + std::to_string(finding->Waypoint) : "-");
        if (MayGo) W.Doc.CurMission = static_cast<int>(rws::MissionAt(W.Doc, path));
        if (MayGo && !W.Doc.Missions[Current()].Loaded) {
          LoadMission(W.Doc, W.Services, Current());
          W.Doc.MissionShadow = W.Doc.Missions;
          NoteRead(W, Current());
        }
        return MayGo;
      };
      form.Mended = [this] { ++TimesMended; };
    });
  }

  std::size_t Current() const { return static_cast<std::size_t>(W.Doc.CurMission); }
  void Check(frmCheck::Subject subject) {
    Form->optWhat[subject]->click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Form->cmd[frmCheck::kStop]->isEnabled(); }));
  }
  QString Cell(int row, int column = FindingModel::kText) {
    return Form->Model.index(row, column).data().toString();
  }
  /** Headings in brackets, kinds of findings. */
  std::string Rows() {
    std::vector<std::string> rows;
    for (int row = 0; row < Form->Model.rowCount(); ++row) {
      const Finding* finding = Form->Model.FindingAt(row);
      const std::string& path = Form->Model.MissionAt(row).Path;
      rows.push_back(finding ? std::string(finding->Kind)
                             : "[" + path.substr(Box.Path("m/").size()) + "]");
    }
    return Joined(rows);
  }
  void Select(const char* kind, const char* mission = "a.mis") {
    for (int row = 0; row < Form->Model.rowCount(); ++row) {
      const Finding* finding = Form->Model.FindingAt(row);
      if (finding && finding->Kind == kind && Form->Model.MissionAt(row).Path.ends_with(mission))
        return Form->lstFindings->SelectOnly(row);
    }
    ADD_FAILURE() << kind;
  }
  void Press(frmCheck::Command command) {
    ASSERT_TRUE(Form->cmd[command]->isEnabled());
    QTest::mouseClick(Form->cmd[command], Qt::LeftButton);
  }
  std::string State() { return ToPath(Form->lblState->text()); }
  const Flight& First() { return W.Doc.Missions[Current()].Flights.at(0); }

  std::string Gone;
  bool MayGo = true;
  int TimesMended = 0;
};

TEST_F(CheckForm, ListsTheMissionOnShowAndMendsItInOneStep) {
  Check(frmCheck::kShown);
  EXPECT_EQ(Rows(), "[a.mis]|briefing|made-anew|time|skill|fuel|aircraft|target");
  EXPECT_TRUE(Cell(0).startsWith("a.mis: 1 error, 4 warnings, 2 notes (")) << ToPath(Cell(0));
  EXPECT_EQ(State(), "1 mission checked: 1 error, 4 warnings, 2 notes");
  Select("skill");
  EXPECT_EQ(Cell(Form->lstFindings->CurrentRow(), FindingModel::kMend), "Skill = 3");
  Press(frmCheck::kMend);
  EXPECT_EQ(First().Skill, "3");
  EXPECT_TRUE(Contains(ToPath(Form->lblText->text()), "fuel")) << "the next one is at hand";
  EXPECT_EQ(First().Fuel, "130");
  Press(frmCheck::kMendAll);
  EXPECT_EQ(First().Fuel, "100");
  EXPECT_EQ(W.Doc.Missions[0].Time, "6.5");
  EXPECT_EQ(TimesMended, 2);
  EXPECT_EQ(Rows(), "[a.mis]|briefing|made-anew|aircraft|target") << "as it would be written";
  EXPECT_FALSE(Form->cmd[frmCheck::kMendAll]->isEnabled());
  EXPECT_TRUE(Contains(Box.Read("m/a.mis"), "Fuel 130")) << "nothing is written";
  UndoStep(W);
  EXPECT_EQ(First().Fuel + First().Skill + W.Doc.Missions[0].Time, "130330.5");
  UndoStep(W);
  EXPECT_EQ(First().Skill, "Custom");
}

TEST_F(CheckForm, ChecksTheFolderWithUnsavedEdits) {
  Edit(W, {"Test", "Fuel"}, [&] { W.Doc.Missions[0].Flights[0].Fuel = "90"; });
  Check(frmCheck::kFolder);
  EXPECT_EQ(Rows(),
            "[a.mis]|briefing|made-anew|time|skill|aircraft|target|"
            "[b.mis]|briefing|made-anew|time|skill|fuel|aircraft|target|[right.mis]|briefing|"
            "made-anew");
  Form->SetFound({W.Doc.MissionFiles[1], Box.Path("m/gone.mis")});
  Check(frmCheck::kFound);
  Form->chkSeverity[0]->click();
  EXPECT_EQ(Rows(), "[b.mis]|time|skill|fuel|aircraft|target|[gone.mis]|unreadable");
  CheckedMission more;
  more.Path = Box.Path("m/more.mis");
  more.FaultText = "gone";
  Form->Model.Add({more});
  const FindingCounts counts = Form->Model.Counts();
  Form->Model.Add({more});
  EXPECT_EQ(Form->Model.Counts(), counts) << "the same mission again";
  EXPECT_TRUE(Rows().ends_with("[more.mis]|unreadable")) << "while others are still read";
}

TEST_F(CheckForm, FiltersAndExportsWhatIsListed) {
  Check(frmCheck::kFolder);
  Form->chkSeverity[0]->click();
  Form->chkSeverity[1]->click();
  EXPECT_EQ(Rows(), "[a.mis]|aircraft|[b.mis]|aircraft");
  QTest::keyClicks(Form->txtFilter, "B.MIS");
  EXPECT_EQ(Rows(), "[b.mis]|aircraft");
  W.Script.ExpectPath("Export Findings", Box.Path("out.csv"));
  Press(frmCheck::kExport);
  const std::string csv = Box.Read("out.csv");
  EXPECT_TRUE(csv.starts_with("Mission,Severity,Kind,")) << csv;
  EXPECT_NE(csv.find("b.mis,error,aircraft,r0101,r0101,,,21,"), csv.npos) << csv;
  EXPECT_EQ(csv.find("a.mis,"), csv.npos) << csv;
  W.Script.ExpectPath("Export Findings", Box.Path("out.TXT"));
  Press(frmCheck::kExport);
  EXPECT_NE(Box.Read("out.TXT").find("  error: flight r0101, line 21: The tables lack"),
            std::string::npos);
  FailSteps(W.Services.Files, "", "out.csv");
  W.Script.ExpectPath("Export Findings", Box.Path("out.csv"));
  W.Script.Expect("out.csv");
  Press(frmCheck::kExport);
  EXPECT_EQ(Box.Read("out.csv"), csv);
}

TEST_F(CheckForm, GoesToThePlace) {
  Check(frmCheck::kFolder);
  Select("target");
  EXPECT_EQ(Gone, "") << "selecting alone goes nowhere";
  auto* list = Form->lstFindings;
  const auto click = [&] {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualRect(list->currentIndex()).center());
  };
  click();
  EXPECT_EQ(Gone, "a.mis r0101 0");
  Gone.clear();
  Select("target", "b.mis");
  click();
  EXPECT_EQ(Gone, "") << "another mission may ask about edits";
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(Gone, "b.mis r0101 0");
  EXPECT_TRUE(Form->isVisible());
  list->SelectOnly(0);
  Press(frmCheck::kGoTo);
  EXPECT_EQ(Gone, "a.mis -");
}

TEST_F(CheckForm, MendsAMissionOnlyWhenItIsShown) {
  Check(frmCheck::kFolder);
  MayGo = false;
  Select("fuel", "b.mis");
  Press(frmCheck::kMend);
  EXPECT_EQ(TimesMended, 0);
  MayGo = true;
  Press(frmCheck::kMend);
  EXPECT_EQ(TimesMended, 1);
  EXPECT_EQ(W.Doc.CurMission, 1);
  EXPECT_EQ(First().Fuel, "100");
}

TEST_F(CheckForm, LeavesAloneWhatWasPutRightSinceTheCheck) {
  Check(frmCheck::kShown);
  Edit(W, {"Test", "Fuel"}, [&] { W.Doc.Missions[0].Flights[0].Fuel = "50"; });
  Select("fuel");
  Press(frmCheck::kMend);
  EXPECT_EQ(First().Fuel, "50");
  EXPECT_EQ(TimesMended, 0);
  EXPECT_TRUE(Contains(State(), "0 findings mended; 1 no longer found")) << State();
}

TEST_F(CheckForm, WhatCannotBeMendedHindersNothingElse) {
  std::vector<Finding> findings;
  for (const char* mend :
       {"flight[r0100].Fuel=500", "flight[none].Fuel=5", "flight[r0100].Fuel=90", "Time=x"})
    findings.emplace_back().Mend = ParseAssignment(mend);
  const MendOutcome outcome = MendShown(W, findings);
  EXPECT_EQ(outcome.Mended, 1U);
  EXPECT_EQ(Joined(outcome.Faults),
            "flight[r0100].Fuel=500: it is to be a whole number from 0 to 100|flight[none].Fuel=5|"
            "Time=x: the time is to be in decimal hours, such as 5.5, from 0 to below 24");
  EXPECT_EQ(First().Fuel, "90");
}

TEST_F(CheckForm, StopsAndClosesAtAnyMoment) {
  for (int i = 0; i < 200; ++i) Box.Write("m/x" + std::to_string(i) + ".mis", "[MAIN]");
  Form->optWhat[frmCheck::kFolder]->click();
  Press(frmCheck::kStop);
  EXPECT_TRUE(Contains(State(), "Stopped: ")) << State();
  Form->optWhat[frmCheck::kFolder]->click();
  QTest::keyClick(Form.get(), Qt::Key_Escape);
  EXPECT_FALSE(Form->isVisible());
  Form->show();
  Check(frmCheck::kFolder);
  EXPECT_TRUE(Contains(State(), "203 done: ")) << State();
}

}  // namespace
}  // namespace rws::test
