#include "mainwindow/frmUnsaved.h"
#include "mission/update_note.h"
#include "services/checksum.h"
#include "tests/mainwindow/unsaved_fixture.h"

namespace rws::test {
namespace {

class RecoveryTest : public UnsavedTest {
 protected:
  /** What the box about unsaved missions is answered; -1 closes it. */
  void Answer_(int button) {
    Work = [this, button](QDialog& dialog) {
      auto& form = dynamic_cast<frmUnsaved&>(dialog);
      for (int row = 0; row < form.lst->count(); ++row)
        Asked += form.lst->item(row)->text().toStdString();
      if (button >= 0) Click(form.cmd[static_cast<std::size_t>(button)]);
    };
    Asked.clear();
  }

  std::string Asked;
};

TEST_F(RecoveryTest, LeavingAsksAboutWhatUpdateDoesNotShow) {
  const struct {
    int Button;
    bool Leaves, Writes;
  } rows[] = {{-1, false, false},
              {frmUnsaved::kCancel, false, false},
              {frmUnsaved::kDiscard, true, false},
              {frmUnsaved::kSaveAll, true, true}};
  for (const auto& row : rows)
    for (const bool byTitleBar : {false, true}) {
      SCOPED_TRACE(::testing::Message() << row.Button << byTitleBar);
      Box.Write("missions/b.mis", MissionText());
      StartAnew();
      ClickRow(1);
      EditDark();
      Tick();
      EXPECT_EQ(Kept(), 1U);
      Answer_(row.Button);
      byTitleBar ? static_cast<void>(Window->close()) : Click(Window->cmd[frmRWS::kExit]);
      EXPECT_EQ(Asked, "b");
      EXPECT_EQ(!Window->isVisible(), row.Leaves);
      EXPECT_EQ(FileText("b") != MissionText(), row.Writes);
      EXPECT_EQ(Kept(), row.Leaves ? 0U : 1U) << "no later start offers what was settled";
      if (!row.Leaves) Window->mnuRevert->trigger();
    }
}

TEST_F(RecoveryTest, TheQuestionAboutUpdateComesFirst) {
  for (const auto answer : {Answer::Cancel, Answer::No, Answer::Yes}) {
    SCOPED_TRACE(static_cast<int>(answer));
    StartAnew();
    ClickRow(0);
    EditDark();
    ClickRow(1);
    Edit();
    World_.Script.Expect(kExitQuestion, answer);
    Answer_(frmUnsaved::kCancel);
    Click(Window->cmd[frmRWS::kExit]);
    EXPECT_EQ(Asked, answer == Answer::Cancel ? "" : "a") << "of the rest";
    EXPECT_TRUE(Window->isVisible());
    EXPECT_EQ(Lit(), answer != Answer::Yes);
    EXPECT_EQ(Rows(), answer == Answer::Yes ? "*a|b|c" : "*a|*b|c") << "nothing is dropped yet";
    Answer_(frmUnsaved::kDiscard);
    if (Lit()) World_.Script.Expect(kExitQuestion, Answer::No);
    Click(Window->cmd[frmRWS::kExit]);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(Kept(), 0U);
  }
}

TEST_F(RecoveryTest, EditsLieOnDiskInTwoSecondsAndGoWhenSaved) {
  EXPECT_FALSE(Tick()) << "nothing to keep";
  EditDark();
  ASSERT_TRUE(Tick());
  EXPECT_LE(Interval, 2000);
  EXPECT_EQ(Kept(), 1U);
  Save();
  EXPECT_EQ(Kept(), 0U);
  EditDark();
  Tick();
  EXPECT_EQ(Kept(), 1U);
  Undo();
  EXPECT_EQ(Kept(), 0U) << "it no longer differs";
}

TEST_F(RecoveryTest, AFullDiskIsToldOnceAndTriedAgain) {
  FailSteps(World_.Services.Files, "");
  Edit();
  ASSERT_TRUE(Tick());
  EXPECT_NE(Told().find("disk full"), std::string::npos);
  Window->staBar->clearMessage();
  ASSERT_TRUE(Tick()) << "tried again";
  EXPECT_EQ(Told(), "");
  EXPECT_EQ(Kept(), 0U);
  World_.Services.Files.BeforeStep = {};
  ASSERT_TRUE(Tick());
  EXPECT_EQ(Kept(), 1U);
}

TEST_F(RecoveryTest, TheNextStartOffersWhatTheMenuLeftUnasked) {
  // Showing alone writes this time as 06.75.
  const std::string early = Replace(MissionText(), "TIME 12.5", "TIME 6.75");
  Box.Write("missions/b.mis", early);
  ClickRow(1);
  Edit();
  Window->mnuExit->trigger();
  EXPECT_FALSE(Window->isVisible());
  EXPECT_EQ(Kept(), 1U);
  StartAnew();
  EXPECT_EQ(Bars(), "Unsaved edits of 1 mission were kept. b.mis");
  EXPECT_EQ(Unsaved() + Rows(), "a|b|c") << "nothing changes before the click";
  EXPECT_EQ(Press("Restore"), "");
  EXPECT_EQ(Bars(), "");
  EXPECT_EQ(Shown() + Rows(), "ba|*b|c");
  EXPECT_EQ(Panel().cboWeather->currentIndex(), 5);
  EXPECT_EQ(FileText("b"), early);
  EXPECT_EQ(Undo(), "Restored edits");
  EXPECT_EQ(Unsaved(), "");
  EXPECT_FALSE(Lit());
  EXPECT_EQ(Redo(), "Restored edits");
  Save();
  EXPECT_NE(FileText("b").find("CloudType 5"), std::string::npos);
  EXPECT_EQ(Kept(), 0U);
  EditDark();
  Tick();
  Window.reset();
  {
    const auto otherRun = World_.Services.Files.Hold(Box.Path("program/Recovery.lock"), 0);
    StartAnew();
    EXPECT_EQ(Bars(), "");
    EXPECT_EQ(Kept(), 1U);
  }
  EditDark();
  Tick();
  EXPECT_ANY_THROW(World_.Services.Files.Hold(Box.Path("program/Recovery.lock"), 0));
  Box.Write("program/Recovery/x.edits", "");
  StartAnew();
  EXPECT_EQ(Bars(),
            "Unsaved edits of 3 missions were kept. 1 of the files cannot be read: The file is "
            "damaged. x.edits, a.mis, b.mis");
  EXPECT_EQ(Press("Discard"), "");
  EXPECT_EQ(Bars(), "");
  EXPECT_EQ(Kept(), 0U);
}

TEST_F(RecoveryTest, EditsFollowRenamesOfTheirMission) {
  Box.Write("missions/b.mis", Replace(MissionText(), "TIME 12.5", "TIME 6.75"));
  ClickRow(1);
  Edit();
  Window->mnuExit->trigger();
  StartAnew();
  ClickRow(1);
  World_.Script.Expect("Are you sure you want to delete\nb?", Answer::Yes);
  Window->mnuMissionPop[frmRWS::kDelete]->trigger();
  EXPECT_NE(Bars().find("has changed or gone"), std::string::npos);
  Undo();
  World_.Services.Ask.InputBox = [](auto&&...) { return std::optional<std::string>("1"); };
  Window->mnuTools[frmRWS::kRenameAll]->trigger();
  EXPECT_EQ(Rows() + Bars(), "101|102|103Unsaved edits of 1 mission were kept. 102.mis");
  Undo();
  EXPECT_EQ(Bars(), "Unsaved edits of 1 mission were kept. b.mis");
  Redo();
  // Another one takes the name, and the program ends before the edits are restored.
  Box.Write("missions/1.mis", MissionText());
  LookOutside();
  Window->mnuTools[frmRWS::kRenameAll]->trigger();
  StartAnew();
  EXPECT_EQ(Bars(), "Unsaved edits of 1 mission were kept. 103.mis");
  EXPECT_EQ(Press("Restore"), "");
  EXPECT_EQ(Rows(), "101|102|*103|104");
}

TEST_F(RecoveryTest, ACopyThatIsPutBackIsShownAsItIs) {
  Edit();
  Tick();
  const std::string old = FileText("a");
  Box.Write("program/$$$TEMP", old);
  const Services& services = World_.Services;
  WriteNote(services, CopyPath(services), {Box.Path("missions/a.mis"), Sha1(old), Sha1("new")});
  Box.Write("missions/a.mis", "torn");
  StartAnew();
  EXPECT_NE(Bars().find("has changed or gone"), std::string::npos);
  Click(Window->bars->Bar("interrupted")->cmd[0]);
  EXPECT_EQ(Bars(), "Unsaved edits of 1 mission were kept. a.mis");
  EXPECT_EQ(FileText("a"), old);
  EXPECT_FALSE(At(Doc().Missions, 0).Flights.empty());
}

}  // namespace
}  // namespace rws::test
