#include <gtest/gtest.h>

#include "editors/frmChgAC.h"
#include "editors/frmWPEdit.h"
#include "tests/support/form_test.h"

namespace rws::test {
namespace {

struct ChangeForm : FormTest<frmChgAC> {
  ChangeForm() {
    Tables.Aircraft = {{"Red", "I-16", "I_16", "", "", {}, true, false},
                       {"Red", "TB-3 & I-16", "TB_3", "", "", {}, false, false}};
    Tables.Squadrons = {{"red", "USSR", "USSR", {{"r01", "First"}, {"2_IAP", "Rest & more"}}},
                        {"blue", "Germany", "Germany", {{"g01", "JG"}}}};
    Tables.Countries = {{"USSR", "VVS", "ru", "red"}, {"Germany", "Luftwaffe", "de", "blue"}};
  }

  frmChgAC* Change(const char* mode, const char* group, const char* name) {
    return &Open([&](frmChgAC& form) {
      form.Mode = mode;
      form.Group = group;
      form.ACName = name;
    });
  }

  void ExpectAnswer(const frmChgAC& form, const char* name, const char* squad, const char* code) {
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.ACName, name);
    EXPECT_EQ(form.Squad, squad);
    EXPECT_EQ(form.CodeOut, code);
  }
};

using DuplicateForm = FormTest<frmWPEdit>;

TEST_F(ChangeForm, AnotherAircraftAndSquadronByKeyboard) {
  auto form = Change("red", "r0100", "I_16");
  EXPECT_EQ(form->fraPlane->Caption().toStdString(), "I-16 Selected");
  EXPECT_EQ(form->fraSq->Caption().toStdString(), "r01 - First");
  EXPECT_FALSE(form->Changed);
  QTest::keyClicks(form->lstPlanes, "tb");
  EXPECT_TRUE(form->Changed);
  EXPECT_EQ(form->fraPlane->Caption().toStdString(), "TB-3 & I-16 Selected");
  QTest::keyClick(form->tview, Qt::Key_Down);
  EXPECT_EQ(form->fraSq->Caption().toStdString(), "2 IAP - Rest & more");
  QTest::keyClick(form->lstPlanes, Qt::Key_Return);
  ExpectAnswer(*form, "TB-3 & I-16", "2_IAP", "red");
  EXPECT_EQ(W.SettingTexts.count("software\\hollowbyte\\rws edit\\frmchgacleft"), 1u);
}

TEST_F(ChangeForm, WaysOutOfTheChange) {
  auto form = Change("red", "r0100", "unknown");
  EXPECT_EQ(form->fraPlane->Caption().toStdString(), "unknown Selected");
  const QRect first = form->lstPlanes->visualRect(form->lstPlanes->model()->index(0, 0));
  QTest::mouseClick(form->lstPlanes->viewport(), Qt::LeftButton, {}, first.center());
  EXPECT_TRUE(form->Changed) << "a click on the row that is selected already";
  EXPECT_EQ(form->fraPlane->Caption().toStdString(), "I-16 Selected");
  form->cmd[frmChgAC::kCancel]->click();
  ExpectAnswer(*form, "  ", "", "");

  form = Change("red", "r0100", "I_16");
  QTest::keyClick(form->tview, Qt::Key_Escape);
  ExpectAnswer(*form, "Cancel", "", "");

  form = Change("STATIC", "xx", "TB_3");
  EXPECT_EQ(form->fraSq->Caption().toStdString(), "Default");
  form->cmd[frmChgAC::kApply]->click();
  ExpectAnswer(*form, "TB-3 & I-16", "", "xx");

  Tables = {};
  form = Change("red", "r0100", "I_16");
  form->cmd[frmChgAC::kApply]->click();
  ExpectAnswer(*form, "", "", "");
  EXPECT_TRUE(W.Log.empty());
}

TEST_F(DuplicateForm, OffsetsAreTypedOrStepped) {
  frmWPEdit& form = Open([](frmWPEdit& made) { made.AirCraftType = "R & D"; });
  EXPECT_EQ(form.fra1->title().toStdString(), "Duplicate Flight - R && D");
  const auto type = [&](std::size_t box, const char* text) {
    form.txtInput[box]->setFocus();
    form.txtInput[box]->selectAll();
    QTest::keyClicks(form.txtInput[box], QLatin1String(text));
    return form.txtInput[box]->text().toStdString();
  };
  EXPECT_EQ(type(frmWPEdit::kHeight, "500"), "500") << "beyond the arrows";
  EXPECT_EQ(form.Altitude, 500);
  EXPECT_EQ(form.txtInput[frmWPEdit::kHeight]->toolTip().toStdString(), "152 feet");
  form.udWP[frmWPEdit::kHeight]->Up->click();
  EXPECT_EQ(form.Altitude, 100);
  EXPECT_EQ(type(frmWPEdit::kDistance, "-5x0"), "-50");
  EXPECT_EQ(form.Distance, -50);
  EXPECT_EQ(type(frmWPEdit::kSpeed, "2.5"), "2.5");
  EXPECT_EQ(form.Speed, 2);
  EXPECT_EQ(type(frmWPEdit::kSpeed, "-"), "-");
  EXPECT_EQ(form.Speed, 2) << "the beginning of a number is not stored";
  QTest::keyClick(form.txtInput[frmWPEdit::kSpeed], Qt::Key_Tab);
  EXPECT_EQ(form.txtInput[frmWPEdit::kSpeed]->text().toStdString(), "2.5");
  W.Script.Expect("The number of flights must be a number from -32768 to 32767.");
  EXPECT_EQ(type(frmWPEdit::kNumber, "32768"), "3276");
  EXPECT_EQ(form.ACNumber, 3276);
  W.Script.AllAsked();
  EXPECT_EQ(type(frmWPEdit::kNumber, "0"), "0");
  QTest::keyClick(form.txtInput[frmWPEdit::kNumber], Qt::Key_Return);
  EXPECT_FALSE(form.isVisible());
  EXPECT_FALSE(form.frmCancel);
  EXPECT_EQ(form.ACNumber, 0);
  for (const bool escape : {false, true}) {
    form.show();
    if (escape) {
      QTest::keyClick(form.txtInput[frmWPEdit::kHeight], Qt::Key_Escape);
    } else {
      form.close();
    }
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.frmCancel, escape) << "the title bar applies";
  }
}

}  // namespace
}  // namespace rws::test
