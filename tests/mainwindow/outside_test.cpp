#include "tests/mainwindow/unsaved_fixture.h"
#include "tools/frmCompare.h"

namespace rws::test {
namespace {

class OutsideTest : public UnsavedTest {
 protected:
  OutsideTest() { ClickRow(1); }

  /** Another program gives "b" other clouds. */
  void ChangeOutside() {
    Box.Write("missions/b.mis", MissionText("1750.0"));
    LookOutside();
  }
};

TEST_F(OutsideTest, AMissionWithEditsStaysStruckAndCanBeSavedAgain) {
  ClickRow(0);
  EditDark();
  ClickRow(1);
  Box.Remove("missions/a.mis");
  LookOutside();
  EXPECT_EQ(Rows(), "*-a|b|c");
  ClickRow(0);
  EXPECT_EQ(Shown(), "a") << "its edits can be looked at";
  EXPECT_FALSE(Window->mnuRevert->isEnabled());
  Save();
  EXPECT_EQ(Rows(), "a|b|c");
  EXPECT_NE(FileText("a").find("numberOn0 0"), std::string::npos);
  for (const char* name : {"a", "b"}) Box.Remove(std::string("missions/") + name + ".mis");
  Box.Write("missions/c.mis", MissionText("1750.0"));
  LookOutside();
  EXPECT_EQ(Rows(), "c");
  EXPECT_EQ(Panel().txtWeather->text(), "1750") << "the next one is shown";
}

TEST_F(OutsideTest, AChangedFileIsOfferedAndReloadIsAStep) {
  LookOutside();
  EXPECT_EQ(Bars(), "");
  ChangeOutside();
  EXPECT_NE(Bars().find("Another program has changed \"b.mis\""), std::string::npos);
  EXPECT_EQ(Panel().txtWeather->text(), "1000") << "nothing is reread by itself";
  EXPECT_NE(Press("Keep mine"), "") << "there is nothing to keep";
  std::string compared;
  Work = [&](QDialog& dialog) {
    auto& form = dynamic_cast<frmCompare&>(dialog);
    compared = form.Before + form.After;
  };
  EXPECT_EQ(Press("Compare"), "");
  EXPECT_EQ(compared, MissionText("1750.0") + MissionText());
  EXPECT_EQ(Press("Reload"), "");
  EXPECT_EQ(Bars(), "");
  EXPECT_EQ(Panel().txtWeather->text(), "1750");
  EXPECT_FALSE(Lit());
  EXPECT_EQ(Undo(), "Reload of b");
  EXPECT_EQ(Panel().txtWeather->text(), "1000");
  EXPECT_EQ(Unsaved(), "1 unsaved");
  EXPECT_EQ(Redo(), "Reload of b");
  EXPECT_EQ(Unsaved(), "");
}

TEST_F(OutsideTest, OwnEditsAreKeptAndSavedOverItOnlyWhenAsked) {
  Edit();
  ChangeOutside();
  EXPECT_NE(Bars().find("Your edits are still here, unsaved."), std::string::npos);
  EXPECT_EQ(Press("Keep mine"), "");
  LookOutside();
  EXPECT_EQ(Bars(), "") << "told once";
  for (const auto answer : {Answer::No, Answer::Yes}) {
    World_.Script.Expect("Another program has changed \"" + Box.Path("missions/b.mis"), answer);
    Save();
    World_.Script.AllAsked();
    EXPECT_EQ(FileText("b") == MissionText("1750.0"), answer == Answer::No);
    EXPECT_EQ(Panel().cboWeather->currentIndex(), 5);
    EXPECT_EQ(Unsaved(), answer == Answer::No ? "1 unsaved" : "");
  }
  Save();
  LookOutside();
  EXPECT_EQ(Bars(), "") << "its own writing is no change from outside";
}

TEST_F(OutsideTest, AChangeIsAlsoToldWhenItCameBeforeTheMissionWasShownAgain) {
  EditDark();
  ClickRow(0);
  ChangeOutside();
  EXPECT_EQ(Bars(), "");
  ClickRow(1);
  LookOutside();
  EXPECT_NE(Bars().find("Another program has changed \"b.mis\""), std::string::npos);
  ClickRow(2);
  EXPECT_EQ(Bars(), "") << "it is that of the mission on show";
}

TEST_F(OutsideTest, HalfRenamedFilesAreOfferedTheirNames) {
  Box.Write("missions/d.mistmp", MissionText());
  Box.Write("missions/b.mistmp", "another");
  Window->mnuReread->trigger();
  EXPECT_NE(Bars().find("b.mistmp, d.mistmp"), std::string::npos);
  EXPECT_EQ(Press("Give them their names"), "");
  EXPECT_EQ(Rows(), "a|b|c|d");
  EXPECT_EQ(FileText("b"), MissionText()) << "never over an existing file";
  EXPECT_NE(Bars().find("b.mistmp"), std::string::npos);
  EXPECT_EQ(Undo(), "Names of half renamed files");
  EXPECT_EQ(Rows(), "a|b|c");
  Box.Remove("missions/b.mistmp");
  Box.Remove("missions/d.mistmp");
  Window->mnuReread->trigger();
  EXPECT_EQ(Bars(), "");
}

}  // namespace
}  // namespace rws::test
