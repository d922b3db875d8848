#include <gtest/gtest.h>

#include <QTest>
#include <memory>

#include "editors/frmChgAC.h"
#include "editors/frmWPEdit.h"
#include "tests/support/doubles.h"

namespace rws::test {
namespace {

struct Dialogs : testing::Test {
  Dialogs() {
    Tables.Aircraft = {{"Red", "I-16", "I_16", "", "", {}, true, false},
                       {"Red", "TB-3 & I-16", "TB_3", "", "", {}, false, false}};
    Tables.Squadrons = {{"red", "USSR", "USSR", {{"r01", "First"}, {"2_IAP", "Rest & more"}}},
                        {"blue", "Germany", "Germany", {{"g01", "JG"}}}};
    Tables.Countries = {{"USSR", "VVS", "ru", "red"}, {"Germany", "Luftwaffe", "de", "blue"}};
  }

  std::unique_ptr<frmChgAC> Change(const char* mode, const char* group, const char* name) {
    auto form = std::make_unique<frmChgAC>(Context, nullptr);
    form->Mode = mode;
    form->Group = group;
    form->ACName = name;
    form->LoadForm();
    form->show();
    return form;
  }

  void ExpectAnswer(const frmChgAC& form, const char* name, const char* squad, const char* code) {
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.ACName, name);
    EXPECT_EQ(form.Squad, squad);
    EXPECT_EQ(form.CodeOut, code);
  }

  World W;
  Catalogues& Tables = W.Tables;
  Session& Context = W;
};

TEST_F(Dialogs, AnotherAircraftAndSquadronByKeyboard) {
  auto form = Change("red", "r0100", "I_16");
  EXPECT_EQ(form->fraPlane->Caption().toStdString(), "I-16 Selected");
  EXPECT_EQ(form->fraSq->Caption().toStdString(), "r01 - First");
  EXPECT_FALSE(form->Changed);
  QTest::keyClicks(form->lstPlanes, QStringLiteral("tb"));
  EXPECT_TRUE(form->Changed);
  EXPECT_EQ(form->fraPlane->Caption().toStdString(), "TB-3 & I-16 Selected");
  QTest::keyClick(form->tview, Qt::Key_Down);
  EXPECT_EQ(form->fraSq->Caption().toStdString(), "2 IAP - Rest & more");
  QTest::keyClick(form->lstPlanes, Qt::Key_Return);
  ExpectAnswer(*form, "TB-3 & I-16", "2_IAP", "red");
  EXPECT_EQ(W.SettingTexts.count("software\\hollowbyte\\rws edit\\frmchgacleft"), 1u);
}

TEST_F(Dialogs, WaysOutOfTheChange) {
  auto form = Change("red", "r0100", "unknown");
  EXPECT_EQ(form->fraPlane->Caption().toStdString(), "unknown Selected");
  const QRect first = form->lstPlanes->visualRect(form->lstPlanes->model()->index(0, 0));
  QTest::mouseClick(form->lstPlanes->viewport(), Qt::LeftButton, {}, first.center());
  EXPECT_TRUE(form->Changed) << "a click on the row that is selected already";
  EXPECT_EQ(form->fraPlane->Caption().toStdString(), "I-16 Selected");
  form->cmd[1]->click();
  ExpectAnswer(*form, "  ", "", "");

  form = Change("red", "r0100", "I_16");
  QTest::keyClick(form->tview, Qt::Key_Escape);
  ExpectAnswer(*form, "Cancel", "", "");

  form = Change("STATIC", "xx", "TB_3");
  EXPECT_EQ(form->fraSq->Caption().toStdString(), "Default");
  form->cmd[0]->click();
  ExpectAnswer(*form, "TB-3 & I-16", "", "xx");

  Tables = {};
  form = Change("red", "r0100", "I_16");
  form->cmd[0]->click();
  ExpectAnswer(*form, "", "", "");
  EXPECT_TRUE(W.Log.empty());
}

TEST_F(Dialogs, OffsetsAreTypedOrStepped) {
  frmWPEdit form(Context, nullptr);
  form.AirCraftType = "R & D";
  form.LoadForm();
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  EXPECT_EQ(form.windowTitle().toStdString(), kProgramTitle);
  EXPECT_EQ(form.fra1->title().toStdString(), "Duplicate Flight - R && D");
  EXPECT_EQ(form.txtInput[0]->toolTip().toStdString(), "3 feet");
  EXPECT_EQ(form.txtInput[2]->toolTip().toStdString(), "16 Mph");
  const auto type = [&](std::size_t box, const char* text) {
    form.txtInput[box]->setFocus();
    form.txtInput[box]->selectAll();
    QTest::keyClicks(form.txtInput[box], QLatin1String(text));
    return form.txtInput[box]->text().toStdString();
  };
  EXPECT_EQ(type(0, "500"), "500") << "beyond the arrows";
  EXPECT_EQ(form.Altitude, 500);
  EXPECT_EQ(form.txtInput[0]->toolTip().toStdString(), "152 feet");
  form.udWP[0]->Up->click();
  EXPECT_EQ(form.Altitude, 100);
  EXPECT_EQ(type(1, "-5x0"), "-50");
  EXPECT_EQ(form.Distance, -50);
  EXPECT_EQ(type(2, "2.5"), "2.5");
  EXPECT_EQ(form.Speed, 2);
  EXPECT_EQ(type(2, "-"), "-");
  EXPECT_EQ(form.Speed, 2) << "the beginning of a number is not stored";
  QTest::keyClick(form.txtInput[2], Qt::Key_Tab);
  EXPECT_EQ(form.txtInput[2]->text().toStdString(), "2.5");
  W.Script.Expect("The number of flights must be a number from -32768 to 32767.");
  EXPECT_EQ(type(3, "32768"), "3276");
  EXPECT_EQ(form.ACNumber, 3276);
  W.Script.AllAsked();
  EXPECT_EQ(type(3, "0"), "0");
  QTest::keyClick(form.txtInput[3], Qt::Key_Return);
  EXPECT_FALSE(form.isVisible());
  EXPECT_FALSE(form.frmCancel);
  EXPECT_EQ(form.ACNumber, 0);
  for (const bool escape : {false, true}) {
    form.show();
    if (escape) {
      QTest::keyClick(form.txtInput[0], Qt::Key_Escape);
    } else {
      form.close();
    }
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.frmCancel, escape) << "the title bar applies";
  }
}

}  // namespace
}  // namespace rws::test
