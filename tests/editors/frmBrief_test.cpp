#include "editors/frmBrief.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>

#include "services/faults.h"
#include "tests/support/failing_step.h"
#include "tests/support/form_test.h"

namespace rws::test {
namespace {

struct BriefForm : FormTest<frmBrief> {
  frmBrief& Open() {
    return FormTest::Open([this](frmBrief& form) {
      form.BriefName = Box.Path("m.properties");
      form.Map = "Map\xA0X";
      form.Clouds = "1000.0";
      form.MisTime = "7:30";
      form.AircraftCount = [] { return "one\r\ntwo"; };
    });
  }
  std::string File() const { return Box.Read("m.properties"); }
  static std::string Text(const TextBox* box) { return box->Text().toStdString(); }
};

TEST_F(BriefForm, KeepsEveryByte) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    if (byte != '\r' && byte != '\n') all += static_cast<char>(byte);
  Box.Write("m.properties", "Name " + all + "\nShort " + all + "\nDescription " + all + "\\n");
  frmBrief& form = Open();
  form.txtBrief->selectAll();
  form.txtBrief->cut();
  form.txtBrief->paste();
  form.cmd[frmBrief::kApply]->click();
  EXPECT_EQ(File(),
            "Name " + all + "\r\nShort " + all + "\\n\r\nDescription " + all + "\\n\\n\r\n");
}

TEST_F(BriefForm, TypesAndLeaves) {
  frmBrief& form = Open();
  QTest::keyClicks(form.txtName, "A");
  QTest::keyClick(form.txtName, Qt::Key_Tab);
  EXPECT_TRUE(form.txtShort->hasFocus());
  QTest::keyClick(form.txtShort, Qt::Key_Return, Qt::ShiftModifier);
  for (const QChar letter : QString("\u0416\u20AC"))
    QTest::sendKeyEvent(QTest::Click, form.txtShort, Qt::Key_unknown, letter, {});
  for (const auto& pasted : {"x\u0416", "d\r\ne"}) {
    QApplication::clipboard()->setText(pasted);
    form.txtShort->paste();
  }
  Box.Write("RWS.HLP.html", "help");
  form.cmd[frmBrief::kHelp]->click();
  EXPECT_EQ(Joined(W.ShellCalls), "open " + Box.Path("RWS.HLP.at.html"));
  EXPECT_NE(Box.Read("RWS.HLP.at.html").find("#frmBrief\""), std::string::npos);
  EXPECT_TRUE(form.isVisible());
  form.cmd[frmBrief::kApply]->click();
  const std::string written =
      "Name A\r\nShort \\n\\u0416\x80x\\u0416d\\ne\\n\r\nDescription \\n\r\n";
  EXPECT_EQ(File(), written);
  for (const bool byButton : {false, true}) {
    Open().txtName->setPlainText("other");
    byButton ? Form->cmd[frmBrief::kCancel]->click() : Form->mnuExit->trigger();
    EXPECT_FALSE(Form->isVisible());
    EXPECT_EQ(File(), written);
  }
}

TEST_F(BriefForm, ShowsEscapedLettersAndKeepsTheirSpelling) {
  Box.Write("m.properties", "Name \\u0416\\u00E9 \xE9\r\nShort s\r\nDescription d");
  frmBrief& form = Open();
  EXPECT_EQ(form.txtName->Text(), "\u0416\u00E9 \u00E9");
  form.txtName->moveCursor(QTextCursor::End);
  QTest::keyClicks(form.txtName, "!");
  form.cmd[frmBrief::kApply]->click();
  EXPECT_EQ(File(), "Name \\u0416\\u00E9 \xE9!\r\nShort s\\n\r\nDescription d\\n\r\n");
}

TEST_F(BriefForm, EscapeAsksBeforeATextIsDropped) {
  QTest::keyClick(Open().txtName, Qt::Key_Escape);
  EXPECT_FALSE(Form->isVisible()) << "nothing was typed";
  for (const auto answer : {Answer::No, Answer::Yes}) {
    QTest::keyClicks(Open().txtShort, "x");
    W.Script.Expect("not stored yet.\nDo you want to drop them?", answer);
    QTest::keyClick(Form->txtShort, Qt::Key_Escape);
    EXPECT_EQ(Form->isVisible(), answer == Answer::No);
  }
  QTest::keyClicks(Open().txtShort, "x");
  Form->close();
  EXPECT_FALSE(Form->isVisible()) << "the title bar asks nothing";
}

TEST_F(BriefForm, InsertsAtTheActiveControl) {
  frmBrief& form = Open();
  form.mnuInsert[frmBrief::kMap]->trigger();
  EXPECT_EQ(Text(form.txtName), "");
  form.txtShort->setFocus();
  form.mnuInsert[frmBrief::kCloudHeight]->trigger();
  form.mnuConvert->trigger();
  form.mnuInsert[frmBrief::kCloudHeight]->trigger();
  EXPECT_EQ(Text(form.txtShort), "1000.0 meters3281 feet");
  form.txtBrief->setFocus();
  form.mnuLabel->trigger();
  form.mnuInsert[frmBrief::kMap]->trigger();
  form.mnuInsert[frmBrief::kTime]->trigger();
  EXPECT_EQ(Text(form.txtBrief), "Mission Map:  Map\u00A0XMission Time:  07:30");
  form.txtBrief->undo();
  EXPECT_EQ(Text(form.txtBrief), "Mission Map:  Map\u00A0X") << "the last insert alone";
  form.txtBrief->selectAll();
  // By keys through the menu bar, which takes the focus.
  QTest::keyPress(form.txtBrief, Qt::Key_Alt);
  QTest::keyRelease(form.txtBrief, Qt::Key_Alt, Qt::AltModifier);
  EXPECT_FALSE(form.txtBrief->hasFocus());
  for (const auto key : {Qt::Key_Right, Qt::Key_Down})
    QTest::keyClick(QApplication::focusWidget(), key);
  ASSERT_TRUE(form.mnuMain->isVisible());
  QTest::keyClick(form.mnuMain, Qt::Key_A);
  EXPECT_EQ(Text(form.txtBrief), "one\r\ntwo");
  form.AircraftCount = []() -> std::string { throw SubscriptFault(); };
  form.txtBrief->setFocus();
  form.mnuInsert[frmBrief::kAircraftCount]->trigger();
  EXPECT_NE(Joined(W.Log).find("mnuInsert_Click"), std::string::npos) << "and goes no further";
  form.close();
  EXPECT_TRUE(Open().mnuLabel->isChecked() && Form->mnuConvert->isChecked());
}

TEST_F(BriefForm, LabelsTagsAndPopup) {
  frmBrief& form = Open();
  W.Services.Ask.InputBox = [](const std::string&, const std::string&, const std::string& text) {
    return text == "Mission Map: " ? "R & D:" : "";
  };
  for (auto* item : form.mnuMod) item->trigger();
  W.Script.Expect("in the mission\nbriefing window so that the will tags will inclose the text.");
  form.mnuTags[frmBrief::kArmyRed]->trigger();
  form.txtBrief->setPlainText("one\ntwo\u00A0");
  form.txtBrief->selectAll();
  form.mnuTags[frmBrief::kArmyRed]->trigger();
  EXPECT_EQ(Text(form.txtBrief), "<ARMY RED>one\r\ntwo\u00A0</ARMY>");

  EXPECT_EQ(Open().mnuMod[frmBrief::kMap]->text().toStdString(), "R && D:");
  QTest::mouseClick(Form->txtBrief->viewport(), Qt::RightButton);
  EXPECT_TRUE(Form->mnuMain->isVisible());
  Form->mnuMain->close();
  Form->txtBrief->setFocus();
  QTest::keyClick(Form->txtBrief, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(Form->mnuMain->isVisible());
}

TEST_F(BriefForm, FailuresLoseNoText) {
  Box.Write("m.properties", "Name old");
  const auto applyFails = [&](const std::string& message) {
    W.Script.Expect(message);
    Form->cmd[frmBrief::kApply]->click();
    EXPECT_TRUE(Form->isVisible());
    EXPECT_EQ(File(), "Name old");
  };
  const std::string reason = ": \"" + Box.Path("m.properties") + "\": no disk";
  FailSteps(W.Services.Files, "read", "", "no disk");
  W.Script.Expect("Cannot read" + reason);
  Open();
  W.Services.Files.BeforeStep = {};
  applyFails("is not replaced.\nCannot read" + reason);
  Open().txtName->setPlainText("new");
  Box.Write("m.properties", "Name theirs");
  W.Script.Expect("Another program has changed", Answer::No);
  Form->cmd[frmBrief::kApply]->click();
  EXPECT_TRUE(Form->isVisible());
  EXPECT_EQ(File(), "Name theirs");
  Box.Write("m.properties", "Name old");
  FailSteps(W.Services.Files, "write", "", "no disk");
  applyFails("Cannot write" + reason);
  W.Services.Files.BeforeStep = {};
  Form->cmd[frmBrief::kApply]->click();
  EXPECT_FALSE(Form->isVisible());
  EXPECT_EQ(File(), "Name new\r\nShort \\n\r\nDescription \\n\r\n");
}

}  // namespace
}  // namespace rws::test
