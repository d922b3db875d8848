#include <QHeaderView>

#include "library/forms/frmFind.h"
#include "tests/mainwindow/unsaved_fixture.h"
#include "tools/frmCheck.h"
#include "tools/frmEditMany.h"

namespace rws::test {
namespace {

/** The window for finding over "missions/a", "b" and "c" and "missions/Net/Coop/deep", which has a
    briefing. */
class FindTest : public UnsavedTest {
 protected:
  FindTest() {
    Box.Write("missions/Net/Coop/deep.mis", Replace(MissionText(), "Smolensk", "Crimea"));
    Box.Write("missions/Net/Coop/deep.properties",
              "Name The, bridge\r\nShort In short\\n\r\nDescription At length\\n\r\n");
    Show();
  }
  void Show() {
    Window->mnuFind->trigger();
    Form = Window->Find;
    ReadAll();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Form));
  }
  void ReadAll() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Form->Library->IsBusy(); }));
  }
  std::string Found(const char* line) {
    Form->qryFind->txtQuery->setText(line);
    std::vector<std::string> names;
    for (const auto& path : Form->FoundPaths()) names.push_back(path.substr(Box.Path().size() + 1));
    return Replace(Joined(names), "\\", "/");
  }
  void PressIn(QWidget* control, Qt::Key key) { QTest::keyClick(control, key); }
  std::string Header() {
    std::string titles;
    const auto* header = Form->lstFound->header();
    for (int i = 0; i < header->count(); ++i) {
      const int column = header->logicalIndex(i);
      if (!header->isSectionHidden(column))
        titles += Form->Table->headerData(column, Qt::Horizontal, Qt::DisplayRole)
                      .toString()
                      .toStdString() +
                  "|";
    }
    return titles;
  }

  frmFind* Form = nullptr;
};

TEST_F(FindTest, FindsShowsAndOpensAMissionOfAnotherFolder) {
  EXPECT_EQ(Found(""), "missions/a.mis|missions/b.mis|missions/c.mis|missions/Net/Coop/deep.mis");
  EXPECT_EQ(Found("flights:4"), "missions/a.mis");
  EXPECT_EQ(Found("kind:coop bridge"), "missions/Net/Coop/deep.mis");
  EXPECT_EQ(Form->qryFind->lblCount->text(), "1 of 4");
  PressIn(Form->qryFind->txtQuery, Qt::Key_Return);
  EXPECT_TRUE(Form->lstFound->hasFocus());
  EXPECT_EQ(Form->SelectedPaths(), Form->FoundPaths());
  EXPECT_TRUE(QTest::qWaitFor([this] { return Form->preview->Flights.rowCount() == 1; }));
  EXPECT_EQ(Form->preview->lblName->text(), "The, bridge");
  EXPECT_EQ(Form->preview->txtBriefing->toPlainText(), "In short\n\nAt length");
  Edit();
  World_.Script.Expect(kQuestion, Answer::Cancel);
  PressIn(Form->lstFound, Qt::Key_Return);
  EXPECT_EQ(Shown(), "a") << "pending edits are asked about first";
  World_.Script.Expect(kQuestion, Answer::No);
  PressIn(Form->lstFound, Qt::Key_Return);
  EXPECT_EQ(Shown(), "deep");
  EXPECT_TRUE(Form->isVisible());
  EXPECT_EQ(ReadSetting(World_.Services.Settings, setting::FindQueries), "kind:coop bridge");
}

TEST_F(FindTest, WhatIsSelectedStaysSoWhileRowsComeAndGo) {
  Form->lstFound->SelectSeveral({1, 3}, 3);
  EXPECT_EQ(Found("map:crimea"), "missions/Net/Coop/deep.mis");
  EXPECT_EQ(Form->lstFound->SelectedRows(), QList<int>{0});
  Found("");
  EXPECT_EQ(Form->lstFound->SelectedRows(), QList<int>{3});
  EXPECT_EQ(Found("mapp:x"),
            "missions/a.mis|missions/b.mis|missions/c.mis|missions/Net/Coop/deep.mis");
  EXPECT_TRUE(Form->qryFind->lblMessage->isVisible());
  Form->chkBelow->click();
  ReadAll();
  EXPECT_EQ(Found(""), "missions/a.mis|missions/b.mis|missions/c.mis");
  Form->txtFolder->setText(QString::fromStdString(Box.Path("nowhere")));
  PressIn(Form->txtFolder, Qt::Key_Return);
  ReadAll();
  EXPECT_EQ(Found(""), "");
  EXPECT_TRUE(Form->lblState->text().contains("nowhere")) << Form->lblState->text().toStdString();
}

TEST_F(FindTest, ColumnsAndOrderAreRemembered) {
  const std::string usual = "Mission|Folder|Map|Time|Weather|Flights|Player's aircraft|Changed|";
  EXPECT_EQ(Header(), usual);
  const auto entry = [this](MissionColumn column) {
    return Form->mnuColumns->actions()[static_cast<int>(column)];
  };
  entry(MissionColumn::Folder)->trigger();
  entry(MissionColumn::Kind)->trigger();
  Form->lstFound->header()->resizeSection(static_cast<int>(MissionColumn::Kind), 123);
  for (int i = 0; i < 2; ++i)
    Q_EMIT Form->lstFound->header()->sectionClicked(static_cast<int>(MissionColumn::Map));
  EXPECT_EQ(Found("").find("missions/b.mis|missions/c.mis"), 0U);
  Form->close();
  const std::string changed = Replace(Replace(usual, "Folder|", ""), "Changed|", "Changed|Kind|");
  Window->Find = nullptr;
  Show();
  EXPECT_EQ(Header(), changed);
  EXPECT_EQ(Form->lstFound->header()->sectionSize(static_cast<int>(MissionColumn::Kind)), 123);
  EXPECT_TRUE(Form->Table->IsDescending());
  Form->mnuColumns->actions().back()->trigger();
  EXPECT_EQ(Header(), usual);
  World_.SettingTexts.clear();
  Form->close();
}

TEST_F(FindTest, ExportsWhatIsFoundOrSaysWhyNot) {
  Found("bridge");
  const std::string path = Box.Path("found.csv");
  World_.Script.ExpectPath("Export the list of missions", path);
  Form->cmd[frmFind::kExport]->click();
  const std::string text = Box.Read("found.csv");
  EXPECT_EQ(text.find("\xEF\xBB\xBFMission,Folder,Map,Time,"), 0U) << text;
  EXPECT_NE(text.find("\r\ndeep.mis,"), std::string::npos);
  EXPECT_NE(text.find(",Crimea/sload.ini,12:30,Hazy,1,"), std::string::npos) << text;
  FailSteps(World_.Services.Files, "", "");
  World_.Script.ExpectPath("Export the list of missions", path);
  World_.Script.Expect("disk full");
  Form->cmd[frmFind::kExport]->click();
  EXPECT_EQ(Box.Read("found.csv"), text);
}

TEST_F(FindTest, EscapeEmptiesTheLineAndThenCloses) {
  Found("bridge");
  PressIn(Form->qryFind->txtQuery, Qt::Key_Escape);
  EXPECT_TRUE(Form->isVisible());
  EXPECT_EQ(Form->FoundPaths().size(), 4U);
  PressIn(Form->qryFind->txtQuery, Qt::Key_Escape);
  EXPECT_FALSE(Form->isVisible());
}

TEST_F(FindTest, KeepsTheSelectionWhenTheFolderIsReadAnew) {
  Form->lstFound->SelectSeveral({1, 3}, 3);
  const auto selected = Form->SelectedPaths();
  PressIn(Form->txtFolder, Qt::Key_Return);
  ReadAll();
  EXPECT_EQ(Form->SelectedPaths(), selected);
  EXPECT_EQ(Form->lstFound->CurrentRow(), 3);
  PressIn(Form->txtFolder, Qt::Key_Return);
  Form->chkBelow->click();
  ReadAll();
  EXPECT_EQ(Form->SelectedPaths(), std::vector<std::string>{selected[0]});
  Form->chkBelow->click();
  ReadAll();
  EXPECT_EQ(Form->SelectedPaths(), std::vector<std::string>{selected[0]}) << "the other has gone";
}

TEST_F(FindTest, TellsOfAMissionThatIsGone) {
  Found("bridge");
  Form->lstFound->SelectOnly(0);
  const std::string path = Form->SelectedPaths()[0];
  Box.Remove("missions/Net/Coop/deep.mis");
  PressIn(Form->lstFound, Qt::Key_Return);
  ReadAll();
  EXPECT_EQ(Shown(), "a");
  EXPECT_EQ(Found(""), "missions/a.mis|missions/b.mis|missions/c.mis");
  EXPECT_EQ(Form->lblState->text(), "3 missions; \"" + QString::fromStdString(path) + "\" is gone");
  PressIn(Form->txtFolder, Qt::Key_Return);
  ReadAll();
  EXPECT_EQ(Form->lblState->text(), "3 missions");
}

TEST_F(FindTest, ShowsWhatAnEditOfManyAndItsUndoMadeElsewhere) {
  Window->Popups.ShowDialog = [&](QDialog& dialog) {
    auto& form = dynamic_cast<frmEditMany&>(dialog);
    form.Rows()[0]->SetRow({0, "5", ManyFlights::All, ""});
    Click(form.cmdPreview);
    Click(form.cmd[frmEditMany::kApply]);
  };
  Found("bridge");
  Click(Form->cmd[frmFind::kEdit]);
  ReadAll();
  EXPECT_EQ(Found("weather:rain"), "missions/Net/Coop/deep.mis");
  EXPECT_EQ(Undo(), "Edit of 1 mission");
  ReadAll();
  EXPECT_EQ(Found("weather:rain"), "");
}

TEST_F(FindTest, LeavesOutWhatTheListLeavesOut) {
  Doc().ExcludedNames = "DEEP";
  PressIn(Form->txtFolder, Qt::Key_Return);
  ReadAll();
  EXPECT_EQ(Found(""), "missions/a.mis|missions/b.mis|missions/c.mis");
}

TEST_F(FindTest, HandsOnWhatWasFoundOrSelected) {
  std::vector<std::string> first;
  Window->Popups.ShowDialog = [&](QDialog& dialog) {
    const auto& scope = dynamic_cast<frmEditMany&>(dialog).Scopes[0];
    first.push_back(scope.Caption + ":" + std::to_string(scope.Paths.size()));
  };
  EXPECT_EQ(Found("flights:<4"), "missions/b.mis|missions/c.mis|missions/Net/Coop/deep.mis");
  Click(Form->cmd[frmFind::kEdit]);
  Form->lstFound->SelectOnly(0);
  Click(Form->cmd[frmFind::kEdit]);
  Form->lstFound->selectAll();
  Click(Form->cmd[frmFind::kEdit]);
  Form->hide();
  Form->EditMissions();
  Form->show();
  EXPECT_EQ(Joined(first),
            "Missions found by Find Missions:3|Missions found by Find Missions:3|"
            "Missions selected in Find Missions:3");
  Click(Form->cmd[frmFind::kCheck]);
  const auto* check = Window->findChild<frmCheck*>();
  ASSERT_NE(check, nullptr);
  EXPECT_TRUE(check->isVisible());
  const auto given = [&] { return check->optWhat[frmCheck::kFound]->toolTip(); };
  EXPECT_EQ(given(), "3 missions");
  Form->lstFound->SelectOnly(0);
  Click(Form->cmd[frmFind::kCheck]);
  EXPECT_EQ(given(), "3 missions") << "one is selected without being meant";
  EXPECT_EQ(Found("map:nowhere"), "");
  EXPECT_FALSE(Form->cmd[frmFind::kCheck]->isEnabled());
}

}  // namespace
}  // namespace rws::test
