#include "tools/frmSkins.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include "platform/qt_text.h"
#include "tests/support/failing_step.h"
#include "tests/support/form_test.h"

namespace rws::test {
namespace {

std::string Picture(const char* format, QColor color) {
  QImage image(64, 32, QImage::Format_RGB32);
  image.fill(color);
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&buffer, format));
  return buffer.data().toStdString();
}

struct SkinsForm : FormTest<frmSkins> {
  SkinsForm() {
    Tables.Aircraft = {{"Red", "U-2", "U_2", "U2", "", {}, false, false},
                       {"Red", "P-39\xC4", "P_39", "P39", "", {}, true, false}};
    Tables.Skins = {{"P39", Box.Path("P-39"), {"default", "A.bmp", "B.bmp", "C.bmp", "Void.bmp"}}};
    W.Doc.ImagesPath = Box.Path("images");
    Box.MakeFolder("images");
    Box.Write("P-39/A.BMP", Picture("BMP", Qt::red));
    Box.Write("P-39/C.bmp", "no picture");
    Box.Write("images/A.jpg", Picture("JPG", Qt::blue));
    Box.Write("own/B.jpg", Picture("JPG", Qt::green));
    Box.Write("RWS.HLP.html", "help");
  }

  void Open(const char* plane) {
    FormTest::Open([&](frmSkins& form) { form.Plane = plane; });
  }
  void Choose(DropDown* list, int row) {
    list->setCurrentIndex(row);
    Q_EMIT list->activated(row);
  }
  void Press(frmSkins::Command button) { Form->cmd[button]->click(); }
  void Locate(const std::string& path) {
    W.Script.ExpectPath("Locate aircarft image", path);
    Press(frmSkins::kLocate);
  }
  bool IsBlue(int x, int y) const {
    const QColor color = Form->imgPic->grab().toImage().pixelColor(x, y);
    return color.blue() > 200 && color.red() < 100;
  }
  /** Pictures on show, then what is available, a letter each. */
  std::string State() const {
    std::string state;
    const auto add = [&](bool on, char letter) { state += on ? letter : '-'; };
    add(!Form->imgSkin->IsEmpty(), 'S');
    add(!Form->imgPic->IsEmpty(), 'P');
    add(Form->cmd[frmSkins::kLink]->isEnabled() && Form->lbl[0]->isEnabled(), 'L');
    add(Form->fraClear->isEnabled(), 'C');
    add(Form->fraInfo->isEnabled(), 'I');
    return state;
  }
};

TEST_F(SkinsForm, ShowsTheSchemesOfTheAircraft) {
  Open("P_39");
  EXPECT_EQ(Form->cboPlanes->currentText(), "P-39Ä");
  EXPECT_EQ(Form->cboSkins->count(), 3);
  EXPECT_EQ(State(), "SP-CI");
  EXPECT_EQ(Form->SkinSection, "A");
  EXPECT_EQ(Form->SkinIniFile, Box.Path("images/P-39Ä.ini"));
  Form->imgPic->setFixedSize(200, 200);
  EXPECT_TRUE(IsBlue(5, 100) && IsBlue(195, 100));
  EXPECT_FALSE(IsBlue(100, 5)) << "twice as wide as high, not stretched";
  Choose(Form->cboSkins, 1);
  EXPECT_EQ(State(), "S----") << "a scheme without a bitmap leaves that of the last one";
  Choose(Form->cboSkins, 2);
  EXPECT_EQ(State(), "-----");
  ASSERT_EQ(W.Script.Notices.size(), 1u);
  EXPECT_NE(W.Script.Notices[0].find("C.bmp"), std::string::npos);
  Choose(Form->cboSkins, 0);
  Choose(Form->cboPlanes, 0);
  EXPECT_EQ(Form->cboSkins->currentText(), "None");
  EXPECT_EQ(State(), "-----");
  Open("none of them");
  EXPECT_EQ(Form->cboPlanes->currentIndex(), -1);
  Locate(Box.Path("own/B.jpg"));
  EXPECT_EQ(State(), "-P---") << "there is no scheme to link it to";
  EXPECT_TRUE(W.Log.empty());
}

TEST_F(SkinsForm, LinksAndClearsAnImage) {
  Open("P_39");
  Choose(Form->cboSkins, 1);
  Locate(Box.Path("own/B.jpg"));
  EXPECT_EQ(State(), "SPLCI");
  Press(frmSkins::kClear);
  EXPECT_EQ(State(), "S----");
  EXPECT_TRUE(Box.Exists("own/B.jpg")) << "not linked: the user's own file stays";
  Locate(Box.Path("own/B.jpg"));
  Form->txt[frmSkins::kSkinner]->insert("Ivan");
  Press(frmSkins::kLink);
  EXPECT_EQ(State(), "SP-CI");
  EXPECT_EQ(Box.Read("images/B.jpg"), Box.Read("own/B.jpg"));
  EXPECT_EQ(Form->txt[frmSkins::kSkinner]->text(), "Ivan") << "typed and not stored yet";
  Press(frmSkins::kUpdate);
  Press(frmSkins::kClear);
  EXPECT_EQ(Box.Names("images"), "A.jpg,B-bak.jpg,P-39Ä.ini");
  EXPECT_EQ(State(), "S----");

  Choose(Form->cboSkins, 0);
  Locate(Box.Path("own/B.jpg"));
  Press(frmSkins::kClear);
  EXPECT_EQ(State(), "S----");
  EXPECT_EQ(Box.Names("images") + " " + Box.Names("own"), "A-bak.jpg,B-bak.jpg,P-39Ä.ini B.jpg")
      << "the linked image, not the one on show";
  Box.Write("images/A.jpg", Picture("JPG", Qt::green));
  Locate(Box.Path("images/A-bak.jpg"));
  const std::string backup = Box.Read("images/A-bak.jpg");
  Press(frmSkins::kClear);
  EXPECT_EQ(Box.Names("images"), "A-bak.jpg,A.jpg,B-bak.jpg,P-39Ä.ini");
  EXPECT_EQ(Box.Read("images/A-bak.jpg"), backup) << "a backup on show is not replaced";
  Choose(Form->cboSkins, 0);
  FailSteps(W.Services.Files, "delete", "", "locked");
  Press(frmSkins::kClear);
  EXPECT_EQ(State(), "SP-CI");
  EXPECT_NE(W.Script.Notices.back().find("locked"), std::string::npos);
  EXPECT_TRUE(W.Log.empty());
}

TEST_F(SkinsForm, KeepsNotesInTheSideFile) {
  Open("P_39");
  Press(frmSkins::kUpdate);
  EXPECT_EQ(Box.Read("images/P-39Ä.ini"),
            Crlf({"[A]", "Skinner=Empty", "Country=Empty", "Comments=Empty"}));
  for (const char* part : {"J", "Ж", "ürgen"})
    Form->txt[frmSkins::kSkinner]->insert(QString::fromUtf8(part));
  EXPECT_EQ(Form->txt[frmSkins::kSkinner]->text(), "Jürgen") << "the code page lacks one letter";
  Form->txt[frmSkins::kComments]->insert("one\ntwo");
  Press(frmSkins::kUpdate);
  EXPECT_EQ(Box.Read("images/P-39Ä.ini"),
            Crlf({"[A]", "Skinner=J\xFCrgen", "Country=Empty", "Comments=one two"}));
  Choose(Form->cboSkins, 1);
  EXPECT_EQ(Form->txt[frmSkins::kSkinner]->text(), QString());
  Choose(Form->cboSkins, 0);
  EXPECT_EQ(Form->txt[frmSkins::kSkinner]->text(), "Jürgen");
  EXPECT_EQ(Form->txt[frmSkins::kCountry]->text(), QString());

  Form->txt[frmSkins::kCountry]->insert("USSR");
  const auto chooseAsks = [&](DropDown* list, int row, Answer answer) {
    W.Script.Expect("Do you want to drop them?", answer);
    Choose(list, row);
    return ToPath(Form->cboPlanes->currentText() + QLatin1Char(' ') +
                  Form->cboSkins->currentText() + QLatin1Char(' ') +
                  Form->txt[frmSkins::kCountry]->text());
  };
  EXPECT_EQ(chooseAsks(Form->cboSkins, 1, Answer::No), "P-39Ä A USSR");
  EXPECT_EQ(chooseAsks(Form->cboPlanes, 0, Answer::No), "P-39Ä A USSR");
  W.Script.Expect("Do you want to drop them?", Answer::No);
  QTest::keyClick(Form->txt[frmSkins::kCountry], Qt::Key_Escape);
  EXPECT_TRUE(Form->isVisible());
  EXPECT_EQ(chooseAsks(Form->cboSkins, 1, Answer::Yes), "P-39Ä B ");
  Choose(Form->cboSkins, 0);

  FailSteps(W.Services.Files, "", ".ini");
  Choose(Form->cboSkins, 0);
  EXPECT_EQ(State(), "SP-C-") << "notes that cannot be read cannot be written over";
  Press(frmSkins::kHelp);
  EXPECT_EQ(W.ShellCalls.back(), "open " + Box.Path("RWS.HLP.at.html"));
  EXPECT_NE(Box.Read("RWS.HLP.at.html").find("#frmSkins\""), std::string::npos);
  Press(frmSkins::kExit);
  EXPECT_FALSE(Form->isVisible());
  EXPECT_TRUE(W.SettingTexts.count("software\\hollowbyte\\rws edit\\frmskinsleft"));
}

}  // namespace
}  // namespace rws::test
