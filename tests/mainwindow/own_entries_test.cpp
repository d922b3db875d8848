#include "catalogues/own_entries.h"

#include "platform/qt_text.h"
#include "tests/mainwindow/window_fixture.h"
#include "tools/frmAddAircraft.h"
#include "tools/frmAddMap.h"

namespace rws::test {
namespace {

/** A mission with a known aircraft and two flights of an unknown one, over an unknown map; another
    mission flies that too. */
class OwnEntriesTest : public WindowTest {
 protected:
  OwnEntriesTest() {
    PrepareStart();
    for (const auto& [name, loadout] : {std::pair{"a", "4xB"}, {"b", "8xC"}, {"c", "none"}}) {
      const std::string other = name[0] == 'c' ? "I_16" : "DU_CK";
      Box.Write(std::string("missions/") + name + ".mis",
                Replace(MissionText(), "[r0100]\r\n",
                        std::string("  r0101\r\n[r0101]\r\n  Planes 1\r\n  Class air.") + other +
                            "\r\n  weapons " + loadout + "\r\n[r0100]\r\n"));
    }
    Load(Box.Path("missions"));
    ClickRow(0);
  }
  QAction& AddAircraft() { return *Window->flightArea->mnuAddAircraft; }
  /** Selects the flight at an index and opens the menu. */
  void SelectFlight(int flight) {
    auto& list = *Window->flightArea->lstPlanes;
    const QRect place = list.visualRect(list.model()->index(list.RowOf(flight), 0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place.center());
    Q_EMIT Window->mnuFlight->aboutToShow();
  }
  int Flight(const char* aircraftClass) {
    const auto& flights = Doc().Missions[0].Flights;
    for (int i = 0; i < 2; ++i)
      if (flights[static_cast<std::size_t>(i)].Class == aircraftClass) return i;
    return -1;
  }
  bool MayAddMap() {
    Q_EMIT Window->mnuMission->aboutToShow();
    return Window->mnuAddMap->isEnabled();
  }
  std::string OwnText() { return Box.Read("program/RWS_Own.txt"); }
};

TEST_F(OwnEntriesTest, AnAircraftBecomesKnownAtOnce) {
  HookDialogs();
  Box.Write("program/RWS_Own.txt", "# mine\n");
  SelectFlight(Flight("IL_2"));
  EXPECT_FALSE(AddAircraft().isEnabled());
  SelectFlight(Flight("DU_CK"));
  ASSERT_TRUE(AddAircraft().isEnabled());
  Edit();
  const auto* panel = Window->flightArea->fraFlight;
  EXPECT_FALSE(panel->CurAircraftOK);
  Work = [this](QDialog& dialog) {
    auto& form = dynamic_cast<frmAddAircraft&>(dialog);
    auto* ok = form.cmd[frmAddAircraft::kOk];
    EXPECT_EQ(ToPath(form.lblSeen->text()), "Seen in 2 missions: a.mis, b.mis.");
    EXPECT_EQ(ToPath(form.txtName->text()), "DU-CK");
    EXPECT_TRUE(form.chkFlyable->isChecked());
    EXPECT_EQ(form.lstLoadouts->count(), 2);
    form.txtName->setText("il_2");
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_TRUE(form.lblWhyNot->text().contains("Another aircraft"));
    form.txtName->setText("Ente, die");
    form.lstLoadouts->item(1)->setCheckState(Qt::Unchecked);
    form.txtKey->setText("a b");
    EXPECT_FALSE(ok->isEnabled());
    form.txtKey->setText("Du-ck");
    form.cboSide->setCurrentIndex(1);
    form.txtMore->setText("1xD");
    QTest::keyClick(form.txtMore, Qt::Key_Return);
    EXPECT_EQ(form.lstLoadouts->count(), 3);
    EXPECT_TRUE(form.isVisible()) << "Enter adds";
    form.txtMore->setText("1xE");
    FailSteps(World_.Services.Files, "", "", "disk full");
    World_.Script.Expect("disk full");
    ok->click();
    World_.Services.Files.BeforeStep = nullptr;
    EXPECT_TRUE(form.isVisible() && !form.IsAdded);
    EXPECT_EQ(form.txtName->text(), "Ente, die");
    EXPECT_EQ(OwnText(), "# mine\n");
    ok->click();
    EXPECT_FALSE(form.isVisible());
  };
  AddAircraft().trigger();
  EXPECT_EQ(
      OwnText(),
      "# mine\n[aircraft DU_CK]\r\nname=Ente, die\r\nside=blue\r\nflyable=yes\r\nkey=Du-ck\r\n"
      "loadout=4xB\r\nloadout=1xD\r\nloadout=1xE\r\nfrom=a.mis, b.mis\r\n");
  EXPECT_EQ(Doc().CurFlight, Flight("DU_CK"));
  EXPECT_TRUE(panel->CurAircraftOK && panel->cboWeap->isEnabled());
  EXPECT_GE(panel->cboWeap->findText("1xD"), 0);
  EXPECT_EQ(Shown(), "a");
  EXPECT_TRUE(Lit()) << "an edit stays";
  SelectFlight(Flight("DU_CK"));
  EXPECT_FALSE(AddAircraft().isEnabled());
  Box.Remove("program/RWS_Own.txt");
  World_.Script.Expect(kQuestion, Answer::No);
  Window->mnuReread->trigger();
  SelectFlight(Flight("DU_CK"));
  EXPECT_FALSE(panel->CurAircraftOK) << "the entry has been taken out by hand";
}

TEST_F(OwnEntriesTest, AMapBecomesKnownAtOnce) {
  HookDialogs();
  ASSERT_TRUE(MayAddMap());
  const auto work = [this](const char* name, bool fails) {
    Work = [=, this](QDialog& dialog) {
      auto& form = dynamic_cast<frmAddMap&>(dialog);
      EXPECT_EQ(ToPath(form.txtName->text()), "Smolensk Summer");
      form.txtName->setText(" ");
      EXPECT_FALSE(form.cmd[frmAddMap::kOk]->isEnabled());
      form.txtName->setText(name);
      if (fails) FailSteps(World_.Services.Files, "", "", "disk full");
      if (fails) World_.Script.Expect("disk full");
      form.cmd[frmAddMap::kOk]->click();
      World_.Services.Files.BeforeStep = nullptr;
      EXPECT_EQ(form.isVisible(), fails);
    };
    Window->mnuAddMap->trigger();
  };
  work("Isthmus", true);
  EXPECT_TRUE(MayAddMap());
  work("Isthmus", false);
  EXPECT_EQ(ToPath(Panel().fraMission->title()), "Mission Map: Isthmus");
  EXPECT_EQ(ParseOwnEntries(OwnText()).Maps,
            (std::vector<OwnMap>{{"Smolensk/sload.ini", "Isthmus", "a.mis"}}));
  EXPECT_FALSE(MayAddMap());
}

TEST_F(OwnEntriesTest, TheSearchForAnAircraftCanBeStopped) {
  HookDialogs();
  SelectFlight(Flight("DU_CK"));
  Window->Popups.ToolStep = [](QProgressDialog& dialog) { dialog.cancel(); };
  Work = [](QDialog& dialog) {
    auto& form = dynamic_cast<frmAddAircraft&>(dialog);
    EXPECT_TRUE(form.lblSeen->text().contains("stopped"));
    form.cmd[frmAddAircraft::kCancel]->click();
  };
  AddAircraft().trigger();
  EXPECT_FALSE(Box.Exists("program/RWS_Own.txt"));
}

}  // namespace
}  // namespace rws::test
