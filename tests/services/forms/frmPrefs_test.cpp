#include "services/forms/frmPrefs.h"

#include <gtest/gtest.h>

#include "platform/qt_text.h"
#include "services/setting_values.h"
#include "tests/support/form_test.h"

namespace rws::test {
namespace {

constexpr char kPick[] = "Please select where IL2 is installed";

struct PrefsTest : FormTest<frmPrefs> {
  PrefsTest() {
    Box.MakeFolder("old/PaintSchemes/Skins");
    Box.MakeFolder("new/paintschemes/skins");
    Box.MakeFolder("wrong/place");
    W.Doc.GamePath = Box.Path("old");
    Open([this](frmPrefs& form) {
      form.GamePath = W.Doc.GamePath;
      form.Backup = true;
      form.LaterVersions = 2;
      form.StoreDays = W.Prefs.StoreDays;
      form.StoreMegabytes = W.Prefs.StoreMegabytes;
      form.ForeColor = W.Prefs.ForeColor;
      form.BackColor = W.Prefs.BackColor;
    });
  }
};

TEST_F(PrefsTest, ApplyIsLitWhileSomethingDiffers) {
  EXPECT_FALSE(Form->cmd[frmPrefs::kApply]->isEnabled());
  W.Services.Ask.Color = [](std::int32_t before) { return before ^ 1; };
  const std::array<QAbstractButton*, 7> twice{Form->chkBackup,
                                              Form->chkWA,
                                              Form->chkLock,
                                              Form->chkSnd,
                                              Form->cmdColor[frmPrefs::kText],
                                              Form->cmdColor[frmPrefs::kBackground],
                                              Form->chkDesktop};
  for (auto* control : twice) {
    SCOPED_TRACE(ToPath(control->objectName()));
    control->click();
    EXPECT_TRUE(Form->cmd[frmPrefs::kApply]->isEnabled());
    control->click();
    EXPECT_FALSE(Form->cmd[frmPrefs::kApply]->isEnabled());
  }
  Form->chkDesktop->click();
  EXPECT_FALSE(Form->cmdColor[frmPrefs::kText]->isEnabled());
  EXPECT_EQ(Form->lblColor[frmPrefs::kText]->palette().color(QPalette::Window),
            Form->palette().color(QPalette::Base));
  Form->cmd[frmPrefs::kApply]->click();
  EXPECT_TRUE(Form->DesktopColors);
  EXPECT_EQ(Form->BackColor, 0xFFFFFF) << "what was told stays";
}

TEST_F(PrefsTest, LimitsBackupsAndTellsTheirSpace) {
  EXPECT_EQ(Form->spnKept->text(), "all");
  EXPECT_EQ(Form->lblSpace->text(), "All backups take 0 bytes");
  Box.Write("RWS Backup/a.mis.bak", std::string(2048, 'x'));
  WriteSetting(W.Services.Settings, setting::BackupsKept, "7");
  Form->Backup = true;
  Form->BackupsKept = 7;
  Form->LoadForm();
  EXPECT_EQ(Form->spnKept->value(), 7);
  EXPECT_EQ(Form->lblSpace->text(), "All backups take 2 KB");
  for (const int kept : {20, 7, 0}) {
    Form->spnKept->setValue(kept);
    EXPECT_EQ(Form->cmd[frmPrefs::kApply]->isEnabled(), kept != 7) << kept;
  }
  Form->cmd[frmPrefs::kApply]->click();
  EXPECT_TRUE(Form->Applied);
  EXPECT_EQ(Form->BackupsKept, 0);
}

TEST_F(PrefsTest, APathWithoutSkinsClosesTheForm) {
  W.Script.ExpectPath(kPick, Box.Path("wrong/place"));
  Form->cmdChg->click();
  EXPECT_TRUE(Form->isHidden() && !Form->Applied);
  EXPECT_EQ(W.Doc.GamePath, Box.Path("wrong")) << "the parent, until it is read again";
  const std::string log = Joined(W.Log);
  EXPECT_NE(log.find("SkinsDoes not exist! RWS will not run!"), std::string::npos) << log;
  const auto shown = [this] {
    Open([this](frmPrefs& form) { form.GamePath = W.Doc.GamePath; });
    return ToPath(Form->lblPath->text());
  };
  EXPECT_EQ(shown(), Box.Path("wrong")) << "nothing is stored";
  WriteSetting(W.Services.Settings, setting::GamePath, Box.Path("old"));
  EXPECT_EQ(shown(), Box.Path("old"));
  Form->show();
  W.Script.ExpectPath(kPick, "");
  Form->cmdChg->click();
  EXPECT_TRUE(Form->isHidden() && !Form->Applied) << "a cancelled question closes it too";
  Form->show();
  W.Script.ExpectPath(kPick, kPosixFiles ? "/" : "C:\\");
  W.Script.Expect("The game path is incorrect, please try again.");
  Form->cmdChg->click();
  EXPECT_TRUE(Form->isHidden());
}

}  // namespace
}  // namespace rws::test
