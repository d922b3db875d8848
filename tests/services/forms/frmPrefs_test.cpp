#include "services/forms/frmPrefs.h"

#include <gtest/gtest.h>

#include <QTest>

#include "platform/qt_text.h"
#include "services/forms/frmCam.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

constexpr char kPick[] = "Please select where IL2 is installed";

class PrefsTest : public ::testing::Test {
 protected:
  PrefsTest() : World_(Box.Path()), Form(World_, nullptr) {
    Box.MakeFolder("old/PaintSchemes/Skins");
    Box.MakeFolder("new/paintschemes/skins");
    Box.MakeFolder("wrong/place");
    World_.Doc.GamePath = Form.GamePath = Box.Path("old");
    Form.Backup = true;
    Form.ForeColor = World_.Prefs.ForeColor;
    Form.BackColor = World_.Prefs.BackColor;
    Form.LoadForm();
    Form.show();
  }

  Sandbox Box;
  World World_;
  Catalogues& Tables = World_.Tables;
  frmPrefs Form;
};

TEST_F(PrefsTest, ApplyIsLitWhileSomethingDiffers) {
  EXPECT_FALSE(Form.cmd[0]->isEnabled());
  World_.Services.Ask.Color = [](std::int32_t before) { return before ^ 1; };
  const std::array<QAbstractButton*, 6> twice{Form.chkBackup, Form.chkWA,       Form.chkLock,
                                              Form.chkSnd,    Form.cmdColor[0], Form.cmdColor[1]};
  for (auto* control : twice) {
    SCOPED_TRACE(ToPath(control->objectName()));
    control->click();
    EXPECT_TRUE(Form.cmd[0]->isEnabled());
    if (control == Form.cmdColor[0]) {
      EXPECT_EQ(Form.lblColor[1]->palette().color(QPalette::WindowText), QColor(1, 0, 128));
    }
    control->click();
    EXPECT_FALSE(Form.cmd[0]->isEnabled());
  }
}

TEST_F(PrefsTest, APathWithoutSkinsClosesTheForm) {
  World_.Script.ExpectPath(kPick, Box.Path("wrong/place"));
  Form.cmdChg->click();
  EXPECT_TRUE(Form.isHidden() && !Form.Applied);
  EXPECT_EQ(World_.Doc.GamePath, Box.Path("wrong")) << "the parent, until it is read again";
  const std::string log = Joined(World_.Log);
  EXPECT_NE(log.find("SkinsDoes not exist! RWS will not run!"), std::string::npos) << log;
  Form.show();
  World_.Script.ExpectPath(kPick, "");
  Form.cmdChg->click();
  EXPECT_TRUE(Form.isHidden() && !Form.Applied) << "a cancelled question closes it too";
  Form.show();
#ifndef _WIN32
  World_.Script.ExpectPath(kPick, "/");
  World_.Script.Expect("The game path is incorrect, please try again.");
  Form.cmdChg->click();
  EXPECT_TRUE(Form.isHidden());
#endif
}

TEST_F(PrefsTest, TheCompatibilityFormOpensAndKeepsItsPlace) {
  frmCam form(World_, nullptr);
  form.LoadForm();
  form.show();
  EXPECT_EQ(ToPath(form.windowTitle()), kProgramTitle);
  form.cmd->click();
  EXPECT_TRUE(form.isHidden());
  EXPECT_NE(
      GetRegValue(World_.Services.Settings, SettingsRoot::CurrentUser, kSetPath, "frmCamTop", ""),
      "");
}

}  // namespace
}  // namespace rws::test
