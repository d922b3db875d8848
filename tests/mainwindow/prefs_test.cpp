#include "platform/qt_text.h"
#include "services/forms/frmPrefs.h"
#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

class SetPrefsTest : public WindowTest {
 protected:
  SetPrefsTest() {
    Box.Write("game/PaintSchemes/Skins/P-51D/Old.bmp", "image");
    for (const char* image : {"Skins/P-51D/New.bmp", "Pilots/Cap.bmp", "Noseart/Star.bmp"})
      Box.Write(std::string("game2/PaintSchemes/") + image, "image");
    Prefs.bBackup = true;
    World_.Services.System.NotifyAssocChanged = [] {};
    Tables.Aircraft = {{"", "", "IL_2", "", "", {}}};
    OpenThree();
  }
  /** Opens the preferences, changes them and clicks Apply. */
  void Apply(const std::function<void(frmPrefs&)>& change) {
    Window->Popups.ShowDialog = [&](QDialog& dialog) {
      auto& form = dynamic_cast<frmPrefs&>(dialog);
      form.show();
      change(form);
      form.cmd[0]->click();
    };
    Window->SetPrefs();
  }
  std::string Stored(const SettingValue& value) {
    return GetRegValue(World_.Services.Settings, SettingsRoot::CurrentUser, kSetPath, value.Name,
                       "<none>");
  }
};

TEST_F(SetPrefsTest, TakesStoresAndShowsEverything) {
  World_.Services.Ask.Color = [](std::int32_t) { return 0x0000FF; };
  World_.Script.ExpectPath("Please select where IL2 is installed", Box.Path("game2"));
  Apply([](frmPrefs& form) {
    for (auto* box : {form.chkBackup, form.chkWA, form.chkLock, form.chkSnd}) box->click();
    form.optSave[1]->click();
    form.spnKept->setValue(12);
    form.cmdColor[1]->click();
    form.cmdChg->click();
  });
  EXPECT_EQ(Joined({Stored(setting::Backup), Stored(setting::LockWT), Stored(setting::SndPlayer),
                    Stored(setting::SaveWarn), Stored(setting::BackColor)}),
            "False|True|True|1|<none>")
      << "colours are stored when the window closes";
  EXPECT_EQ(Stored(setting::GamePath), Box.Path("game2"));
  EXPECT_EQ(Stored(setting::BackupsKept) + "|" + std::to_string(Prefs.BackupsKept), "12|12");
  EXPECT_TRUE(Prefs.bAssociate && Prefs.bLockWT && Prefs.bSndPlayer && !Prefs.bBackup);
  EXPECT_EQ(Prefs.BackColor, 0x0000FF);
  EXPECT_EQ(Window->lstMission->palette().color(QPalette::Base), QColor(255, 0, 0));
  const FlightPanel& flight = *Window->flightArea->fraFlight;
  EXPECT_FALSE(flight.cboWeap->isEnabled() || flight.udDStart->isEnabled() ||
               Panel().dtMission->isEnabled());
  ASSERT_EQ(Tables.Skins.size(), 1u);
  EXPECT_EQ(Joined(Tables.Skins[0].Files), "default|New.bmp");
  const auto& plane = *Window->flightArea->planes->fraPlane[0];
  EXPECT_EQ(Joined({ToPath(plane.cboPSkin->itemText(1)), ToPath(plane.cboPNoseArt->itemText(1))}),
            "Cap|Star");
  Doc().GamePath = Box.Path("parent of a wrong folder");
  Apply([this](frmPrefs& form) {
    EXPECT_FALSE(form.cmd[0]->isEnabled());
    EXPECT_EQ(form.GamePath, Box.Path("game2")) << "the stored one";
    EXPECT_EQ(form.spnKept->value(), 12);
    form.chkWA->click();
    form.chkLock->click();
  });
  EXPECT_FALSE(Prefs.bAssociate);
  EXPECT_TRUE(flight.udDStart->isEnabled() && Panel().dtMission->isEnabled());
  EXPECT_EQ(Stored(setting::LockWT), "False");
}

TEST_F(SetPrefsTest, AsksBeforeEditsAreDropped) {
  struct Row {
    Answer Answered;
    bool Applied, Written;
  };
  for (const Row& row : {Row{Answer::Cancel, false, false}, Row{Answer::No, true, false},
                         Row{Answer::Yes, true, true}}) {
    SCOPED_TRACE(static_cast<int>(row.Answered));
    Prefs.SavePromptMode = kSaveAsk;
    WriteSetting(World_.Services.Settings, setting::SaveWarn, "0");
    Edit();
    World_.Script.Expect(kQuestion, row.Answered);
    Apply([](frmPrefs& form) { form.optSave[2]->click(); });
    World_.Script.AllAsked();
    EXPECT_EQ(Prefs.SavePromptMode == kSaveNever, row.Applied);
    EXPECT_EQ(FileText("a") != MissionText(), row.Written);
    EXPECT_EQ(Lit(), !row.Applied);
  }
}

}  // namespace
}  // namespace rws::test
