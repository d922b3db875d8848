#include "tools/frmBackups.h"

#include <filesystem>

#include "platform/qt_text.h"
#include "services/paths.h"
#include "tests/support/failing_step.h"
#include "tests/support/form_test.h"
#include "tools/frmCompare.h"

namespace rws::test {
namespace {

/** Lines "0" to "n - 1"; those given stand as "other". */
std::string Lines(int count, const std::vector<int>& others = {}) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    const bool other = std::find(others.begin(), others.end(), i) != others.end();
    text += (other ? "other" : std::to_string(i)) + "\r\n";
  }
  return text;
}

struct CompareForm : FormTest<frmCompare> {
  void Show(const std::string& before, const std::string& after) {
    Open([&](frmCompare& form) {
      form.BeforeCaption = "before";
      form.AfterCaption = "after";
      form.Before = before;
      form.After = after;
    });
    View = Form->cmpTexts;
  }
  QString Cell(int row, CompareModel::Column column, int role = Qt::DisplayRole) {
    return View->Model.data(View->Model.index(row, column), role).toString();
  }
  void Key(int key, Qt::KeyboardModifiers modifiers = {}, int side = 0) {
    QTest::keyClick(View->lstSide[static_cast<std::size_t>(side)], static_cast<Qt::Key>(key),
                    modifiers);
  }
  QString Place() { return View->lblPlace->text(); }

  CompareView* View = nullptr;
};

TEST_F(CompareForm, GoesFromDifferenceToDifferenceByKeyboard) {
  Show(Lines(60, {10, 40}), Lines(60) + "\xC4 new\r\n");
  EXPECT_EQ(View->lblCounts->text(), "2 lines changed, 1 line added.");
  EXPECT_EQ(Place(), "Difference 1 of 3");
  EXPECT_EQ(Cell(View->CurrentRow(), CompareModel::kOldNumber), "11 ~");
  EXPECT_EQ(Cell(View->CurrentRow(), CompareModel::kOldText, Qt::AccessibleTextRole),
            "changed: other");
  const std::pair<int, const char*> keys[] = {{Qt::Key_Down, "41 ~"},
                                              {Qt::Key_Down, ""},
                                              {Qt::Key_Down, "11 ~"},
                                              {Qt::Key_Up, ""},
                                              {Qt::Key_Up, "41 ~"}};
  for (const auto& [key, number] : keys) {
    Key(key, Qt::AltModifier, 1);
    EXPECT_EQ(Cell(View->CurrentRow(), CompareModel::kOldNumber), QLatin1String(number));
  }
  View->cmdGo[CompareView::kNext]->click();
  EXPECT_EQ(Cell(View->CurrentRow(), CompareModel::kNewText), "Ä new");
  EXPECT_EQ(Cell(View->CurrentRow(), CompareModel::kOldText, Qt::AccessibleTextRole),
            "no line here");
  Key(Qt::Key_Up);
  EXPECT_EQ(Place(), "3 differences") << "on an equal line";
}

TEST_F(CompareForm, ReturnShowsFoldedLines) {
  Show(Lines(60, {40}), Lines(60));
  EXPECT_EQ(Cell(0, CompareModel::kOldText), "... 37 equal lines ...");
  const int rows = View->Model.rowCount();
  Key(Qt::Key_Return);
  EXPECT_EQ(View->Model.rowCount(), rows) << "not a fold";
  EXPECT_TRUE(Form->isVisible());
  Key(Qt::Key_Home);
  Key(Qt::Key_Return);
  EXPECT_EQ(View->Model.rowCount(), rows + 36);
  EXPECT_EQ(Cell(0, CompareModel::kOldText) + Cell(36, CompareModel::kNewText), "036");
  EXPECT_EQ(Cell(40, CompareModel::kNewNumber), "41 ~");
  Key(Qt::Key_End);
  const auto last = View->Model.index(44, CompareModel::kNewText);
  auto* right = View->lstSide[1];
  const QPoint place = right->visualRect(last).center();
  QTest::mouseClick(right->viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(right->viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(View->Model.rowCount(), 60);
}

TEST_F(CompareForm, TellsTextsThatDifferInNothingOrLineEnds) {
  Show(Lines(30), Lines(30));
  EXPECT_EQ(View->lblCounts->text() + Place(), "No difference.");
  EXPECT_FALSE(View->cmdGo[CompareView::kNext]->isEnabled());
  EXPECT_EQ(View->Model.rowCount(), 30);
  Key(Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(View->CurrentRow(), 0);
  Show("a\nb\n", "a\r\nb\r\n");
  EXPECT_EQ(View->lblCounts->text(), "All lines are equal; their line ends are not.");
  Show("a\n", "b\n");
  EXPECT_EQ(Place(), "Difference 1 of 1");
  Show("", "");
  EXPECT_EQ(View->Model.rowCount(), 0);
  Key(Qt::Key_Return);
  Key(Qt::Key_End);
}

struct BackupsForm : FormTest<frmBackups> {
  BackupsForm() { Box.Write("m/X.mis", Lines(30)); }

  /** A backup, older the later it is made. */
  void Add(const std::string& ending, const std::string& text, const std::string& folder = "") {
    const std::string path = Box.Write("RWS Backup/X.mis" + ending, text);
    namespace fs = std::filesystem;
    if (made_ == fs::file_time_type()) made_ = fs::last_write_time(ToFsPath(path));
    fs::last_write_time(ToFsPath(path), made_ -= std::chrono::seconds(60));
    if (!folder.empty()) NoteBackup(W.Services, path, Box.Path(folder + "/X.mis"));
  }
  void Show() {
    Open([this](frmBackups& form) { form.MissionPath = Box.Path("m/X.mis"); });
  }
  std::string Cell(int row, BackupModel::Column column) {
    return ToPath(Form->Model.data(Form->Model.index(row, column), Qt::DisplayRole).toString());
  }
  std::string Differences() {
    std::vector<std::string> cells;
    for (int row = 0; row < Form->Model.rowCount(); ++row)
      cells.push_back(Cell(row, BackupModel::kDifference));
    return Joined(cells);
  }
  bool CanRestore() { return Form->cmd[frmBackups::kRestore]->isEnabled(); }

 private:
  std::filesystem::file_time_type made_;
};

constexpr char kA[] = ".03-04-26 05-06-07.bak", kB[] = ".03-04-26 05-06-08.bak";

TEST_F(BackupsForm, ComparesEachWithWhatStandsOnDiskAndGivesTheChosenOne) {
  Add(kA, Lines(30), "m");
  Add(kB, Lines(29, {3, 4}));
  Add(".bak", "a\r\n", "other");
  Show();
  EXPECT_EQ(Form->Model.rowCount(), 3);
  EXPECT_EQ(Joined({Cell(0, BackupModel::kOrigin), Cell(1, BackupModel::kOrigin),
                    Cell(2, BackupModel::kOrigin), Cell(2, BackupModel::kSize)}),
            "this mission|some folder|" + Box.Path("other") + "|3 bytes");
  EXPECT_FALSE(CanRestore()) << "it is what stands there";
  EXPECT_TRUE(QTest::qWaitFor([this] { return Differences() == "none|+1 ~2|+29 ~1"; }))
      << Differences();
  QTest::keyClick(Form->lstBackups, Qt::Key_Down);
  EXPECT_TRUE(CanRestore());
  EXPECT_EQ(Form->cmpTexts->lblCounts->text(), "2 lines changed, 1 line added.");
  EXPECT_NE(Form->lblState->text().indexOf("not known"), -1);
  QTest::keyClick(Form->lstBackups, Qt::Key_Down);
  EXPECT_NE(Form->lblState->text().indexOf(FromPath(Box.Path("other"))), -1);
  QTest::keyClick(Form->lstBackups, Qt::Key_Return);
  EXPECT_TRUE(Form->isHidden() && Form->Chosen.empty()) << "Return closes, and restores nothing";
  Show();
  Form->lstBackups->SelectOnly(1);
  Form->cmd[frmBackups::kRestore]->click();
  EXPECT_TRUE(Form->isHidden());
  EXPECT_EQ(Form->Chosen, Box.Path("RWS Backup/X.mis" + std::string(kB)));
  EXPECT_EQ(Box.Read("m/X.mis"), Lines(30)) << "the caller restores";
}

TEST_F(BackupsForm, ASentenceStandsInForAnEmptyList) {
  Show();
  EXPECT_FALSE(Form->lstBackups->isVisible() || CanRestore());
  EXPECT_TRUE(Form->lblEmpty->text().startsWith("There is no backup of a mission named \"X.mis\""));
  QTest::keyClick(Form.get(), Qt::Key_Escape);
  EXPECT_TRUE(Form->isHidden());
}

TEST_F(BackupsForm, AMissionThatHasGoneCanBeRestored) {
  Add(kA, Lines(2), "m");
  Box.Remove("m/X.mis");
  Show();
  EXPECT_EQ(Cell(0, BackupModel::kDifference), "-2");
  EXPECT_EQ(Form->cmpTexts->lblSide[1]->text(), "The mission is not on disk any more");
  EXPECT_TRUE(CanRestore());
}

TEST_F(BackupsForm, WhatCannotBeReadIsTold) {
  Add(kA, Lines(2), "m");
  Add(kB, Lines(3), "m");
  FailSteps(W.Services.Files, "read", kA, "device error");
  Show();
  EXPECT_EQ(Cell(0, BackupModel::kDifference), "cannot be read");
  EXPECT_NE(Form->lblState->text().indexOf("device error"), -1);
  EXPECT_FALSE(CanRestore());
  EXPECT_TRUE(QTest::qWaitFor([this] { return Cell(1, BackupModel::kDifference) == "+27"; }));
  EXPECT_NE(Form->lblState->text().indexOf("device error"), -1) << "of the row that is lit";
  QTest::keyClick(Form->lstBackups, Qt::Key_Down);
  EXPECT_TRUE(CanRestore() && Form->lblState->text().isEmpty());

  FailSteps(W.Services.Files, "read", BuildPath("m", "X.mis"), "device error");
  Show();
  EXPECT_EQ(Cell(0, BackupModel::kDifference), "?");
  EXPECT_NE(Form->lblState->text().indexOf("device error"), -1);
  EXPECT_EQ(Form->cmpTexts->lblSide[1]->text(), "Unreadable");
}

}  // namespace
}  // namespace rws::test
