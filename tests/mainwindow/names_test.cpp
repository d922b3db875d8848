#include "controls/message_bar.h"
#include "platform/qt_text.h"
#include "services/forms/frmPrefs.h"
#include "tests/mainwindow/window_fixture.h"
#include "tools/frmLists.h"

namespace rws::test {
namespace {

/** A game that has a pack of its own aircraft, and a mission that flies it. */
class NamesTest : public WindowTest {
 protected:
  NamesTest() {
    PrepareStart();
    WritePack("#UP#", "Fokker of UP");
    WritePack("#DBW", "Fokker of DBW");
    Switch("#UP#");
    Box.Write("missions/a.mis", Replace(MissionText(), "air.IL_2", "air.FOKKER_DXXI"));
  }
  void WritePack(const std::string& pack, const std::string& name) {
    const std::string root = "game/" + pack + "/one/";
    Box.Write(root + "com/maddox/il2/objects/air.ini", "[AIR]\nDXXI air.FOKKER_DXXI 2 r01\n");
    Box.Write(root + "i18n/plane.properties", "DXXI " + name + "\n");
    Box.Write(root + "i18n/plane_de.properties", "DXXI Niederlande\n");
    Box.Write(root + "i18n/regShort.properties", "r01 Lentolaivue 24\n");
    Box.Write(root + "PaintSchemes/regiments.ini", "[Blue]\nr01\n");
    Box.Write(root + "maps/all.ini", "[all]\nIsthmus Smolensk/sload.ini\n");
  }
  void Switch(const std::string& mods) {
    Box.Write("game/il2fb.ini",
              "[Settings]\nModType=6\n[Modtype_06]\nFiles=none\nMods=" + mods + "\n");
  }
  /** Aircraft and tip of its squadron, side and map of the flight on show. */
  std::string Shown() {
    const auto& model = *Window->flightArea->lstPlanes->model();
    const auto text = [&](int column, int role) {
      return ToPath(model.index(0, column).data(role).toString());
    };
    return text(0, Qt::AccessibleTextRole) + "|" + text(1, Qt::ToolTipRole) + "|" +
           ToPath(Panel().fraMission->title());
  }
  /** Chooses in the dialog, as the button of the preferences opens it. */
  void Choose(const std::function<void(frmLists&)>& choose) {
    Window->Popups.ShowDialog = [=, this](QDialog& dialog) {
      dialog.show();
      if (auto* prefs = dynamic_cast<frmPrefs*>(&dialog)) {
        prefs->cmdNames->click();
        namesText_ = ToPath(prefs->lblNames->text());
      } else {
        choose(dynamic_cast<frmLists&>(dialog));
        dynamic_cast<frmLists&>(dialog).cmd[frmLists::kOk]->click();
      }
      dialog.close();
    };
    Window->SetPrefs();
  }

  std::string namesText_;
};

TEST_F(NamesTest, AreThoseOfThePackThatIsOn) {
  Load(Box.Path("missions"));
  const std::string ofPack = ", Blue army|Lentolaivue 24|Mission Map: Isthmus";
  EXPECT_EQ(Shown(), "Fokker of UP" + ofPack);
  Switch("#DBW");
  Window->mnuReread->trigger();
  EXPECT_EQ(Shown(), "Fokker of DBW" + ofPack);
  Edit();
  Choose([](frmLists& form) { form.cboLanguage->setCurrentText("German (de)"); });
  EXPECT_EQ(Shown(), "Niederlande" + ofPack);
  EXPECT_TRUE(Lit()) << "an edit stays";
  Choose([](frmLists& form) { form.chkUse->click(); });
  EXPECT_TRUE(Lit());
  EXPECT_NE(namesText_.find("not used"), std::string::npos) << namesText_;
  EXPECT_EQ(Shown().substr(0, 15), "FOKKER_DXXI, No");
  const auto* panel = Window->flightArea->fraFlight;
  EXPECT_TRUE(panel->toolTip().startsWith("The class \"FOKKER_DXXI\" is not in the tables"));
  EXPECT_TRUE(Window->bars->Texts().isEmpty());
  Choose([](frmLists& form) { form.chkUse->click(); });
  EXPECT_EQ(Shown(), "Niederlande" + ofPack);
  EXPECT_EQ(panel->toolTip(), QString());
  Box.Remove("program/RWS_Weapons.txt");
  Choose([](frmLists& form) { form.chkUse->click(); });
  EXPECT_EQ(Shown(), "Niederlande" + ofPack) << "what the program cannot do without is gone";
  EXPECT_FALSE(Doc().Closing);
}

TEST_F(NamesTest, OfOneOfSeveralPacksAreChosenByABar) {
  Box.Remove("game/il2fb.ini");
  Load(Box.Path("missions"));
  EXPECT_EQ(Shown().substr(0, 15), "FOKKER_DXXI, No");
  Window->Popups.ShowDialog = [](QDialog& dialog) {
    auto& form = dynamic_cast<frmLists&>(dialog);
    form.cboPack->setCurrentText("#UP#");
    form.cmd[frmLists::kOk]->click();
  };
  auto* bar = Window->bars->Bar(frmRWS::kNamesBar);
  ASSERT_TRUE(bar);
  EXPECT_TRUE(bar->Text().contains("2 packs"));
  bar->findChild<QPushButton*>()->click();
  EXPECT_EQ(Shown().substr(0, 12), "Fokker of UP");
  EXPECT_FALSE(Window->bars->Bar(frmRWS::kNamesBar));
}

TEST_F(NamesTest, StoppedAtTheStartAreReadByTheNextF5) {
  Window = std::make_unique<frmRWS>(World_);
  Window->Popups.ToolStep = [](QProgressDialog& dialog) { dialog.cancel(); };
  Window->LoadForm(Box.Path("missions"));
  EXPECT_EQ(Shown().substr(0, 15), "FOKKER_DXXI, No");
  EXPECT_TRUE(Window->bars->Bar(frmRWS::kNamesBar));
  Window->Popups.ToolStep = [](QProgressDialog&) {};
  Window->mnuReread->trigger();
  EXPECT_EQ(Shown().substr(0, 12), "Fokker of UP");
  EXPECT_FALSE(Window->bars->Bar(frmRWS::kNamesBar));
}

}  // namespace
}  // namespace rws::test
