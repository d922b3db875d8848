#include "editors/frmChgAC.h"
#include "editors/frmWPEdit.h"
#include "tests/mainwindow/flights_fixture.h"

namespace rws::test {
namespace {

/** An American flight with everything that a flight can carry on disk. */
class AllControlsTest : public FlightsTest {
 protected:
  AllControlsTest() {
    AddPainted(
        "P-51D", "P_51D", "P51D",
        {"Skins/P-51D/Red Nose.bmp", "Skins/P-51D/Old.bmp", "Pilots/Cap.bmp", "Noseart/Star.bmp"});
  }

  /** A mission of that flight: its lines, and those of the player. */
  static std::string Mustangs(const std::string& lines, const std::string& player) {
    return CrlfText("[MAIN]|  TIME 12.5|" + player + "|[Wing]|  usa0100|[usa0100]|" + lines +
                    "|[usa0100_Way]|  NORMFLY 1.00 2.00 500.0 300.0 &0|[NStationary]");
  }
  void OpenMustangs() {
    Box.Write("missions/a.mis", Mustangs("  Planes 1|  Skill 1|  skin0 old.bmp|  Class air.P_51D|"
                                         "  Fuel 100|  weapons default",
                                         "  player usa0100|  playerNum 0"));
    Open();
  }
  PlanePanel& Plane(std::size_t i) { return *Area().planes->fraPlane[i]; }
  void TypeDelay(const char* text) {
    Panel_().txtDStart->setFocus();
    Panel_().txtDStart->selectAll();
    QTest::keyClicks(Panel_().txtDStart, text);
  }
};

TEST_F(AllControlsTest, EveryControlOfFlightAndPlaneReachesTheFile) {
  OpenMustangs();
  Panel_().cboPlanes->SelectRow(1);
  Panel_().cboSkill->SelectRow(4);
  Panel_().cboWeap->SelectRow(1);
  Click(Panel_().udFuel->Down);
  TypeDelay("20");
  Click(Panel_().chkPara);
  Plane(0).cboSL->SelectRow(3);
  Plane(1).cboSL->SelectRow(2);
  Plane(1).cboAPSkin->SelectText("red nose");
  Plane(1).cboPSkin->SelectText("Cap");
  Plane(0).cboPNoseArt->SelectText("Star");
  Click(Plane(0).chkMark);
  Click(Plane(1).chkPlayer);
  EXPECT_TRUE(Plane(1).IsHighlighted());
  EXPECT_FALSE(Plane(2).isEnabled());
  Click(Window->cmd[frmRWS::kUpdate]);
  EXPECT_EQ(FileText("a"),
            Mustangs("  Planes 2|  Parachute 0|  Skill0 3|  Skill1 2|  skin0 old.bmp|"
                     "  skin1 Red Nose.bmp|  pilot1 Cap.bmp|  noseart0 Star.bmp|  numberOn0 0|"
                     "  Class air.P_51D|  Fuel 95|  weapons 2xB|  StartTime 20",
                     "  player usa0100|  playerNum 1"));
  EXPECT_EQ(Plane(1).cboAPSkin->currentText(), "Red Nose") << "read again, the skin is found";

  World_.Script.Expect("This will clear the player selected plane.", Answer::Yes);
  Click(Panel_().chkAI);
  Click(Window->cmd[frmRWS::kUpdate]);
  EXPECT_NE(FileText("a").find("  Planes 2\r\n  OnlyAI 1\r\n"), std::string::npos);
}

/** What a listener of the session is told. */
class DoorsTest : public AllControlsTest {
 protected:
  DoorsTest() {
    World_.Listeners.push_back([this](const Change& change) {
      if (change.Kind)
        Heard.push_back(change.Kind->What);
      else
        ++Shown;
    });
  }
  std::vector<std::string> Heard;
  int Shown = 0;
};

TEST_F(DoorsTest, EachEditIsHeardOnce) {
  OpenMustangs();
  ClickFlight(0);
  const auto plane = [this]() -> PlanePanel& { return Plane(0); };
  const struct {
    const char* What;
    std::function<void()> Edit;
  } rows[] = {
      {"Weather", [&] { Panel().cboWeather->SelectRow(4); }},
      {"Cloud height", [&] { Panel().txtWeather->setText("9000"); }},
      {"Cloud height", [&] { Click(Panel().udClouds->Down); }},
      {"Mission time", [&] { Panel().dtMission->setTime(QTime(9, 5)); }},
      {"Static time", [&] { Click(Panel().chkST); }},
      {"No user loadout", [&] { Click(Panel().chkWL); }},
      {"Number of planes", [&] { Panel_().cboPlanes->SelectRow(1); }},
      {"Skill", [&] { Panel_().cboSkill->SelectRow(4); }},
      {"Weapon load", [&] { Panel_().cboWeap->SelectRow(1); }},
      {"Fuel", [&] { Panel_().txtFuel->setText("-3"); }},
      {"Fuel", [&] { Click(Panel_().udFuel->Up); }},
      {"Delayed start", [&] { TypeDelay("7"); }},
      {"Delayed start", [&] { Click(Panel_().udDStart->Up); }},
      {"Parachute", [&] { Click(Panel_().chkPara); }},
      {"Plane skill", [&] { plane().cboSL->SelectRow(2); }},
      {"Plane skin", [&] { plane().cboAPSkin->SelectText("Red Nose"); }},
      {"Pilot skin", [&] { plane().cboPSkin->SelectRow(1); }},
      {"Nose art", [&] { plane().cboPNoseArt->SelectRow(1); }},
      {"Nose art", [&] { plane().cboPNoseArt->setEditText("Moon"); }},
      {"Markings", [&] { Click(plane().chkMark); }},
      {"Player", [&] { Click(plane().chkPlayer); }},
      {"AI only", [&] { Click(Panel_().chkAI); }},
      {"Plane skin",
       [&] {
         World_.Services.Files.DeleteFile(Box.Path("game/PaintSchemes/Skins/P-51D/Red Nose.bmp"));
         World_.Script.Expect("The file is not valid");
         Click(plane().lbl2);
       }},
      {"Plane skin",
       [&] {
         World_.Script.ExpectPath("Plane Skins", Box.Write("new/Zebra.bmp", "image"));
         QTest::mouseClick(plane().lbl2, Qt::RightButton);
       }},
      {"Markings", [&] { Area().mnuAC[FlightArea::kMarkings]->trigger(); }},
      {"Change Flight Skin", [&] { Area().mnuSkin->actions().at(1)->trigger(); }},
      {"Create Duplicate Groups",
       [&] {
         Window->Popups.ShowDialog = [](QDialog& dialog) {
           dynamic_cast<frmWPEdit&>(dialog).cmd[1]->click();
         };
         Area().mnuAC[FlightArea::kDuplicate]->trigger();
       }},
      {"Fuel",
       [&] {
         ClickFlight(0);
         ClickFlight(1, Qt::LeftButton, Qt::ControlModifier);
         Panel_().txtFuel->setText("33");
       }},
      {"Change Aircraft",
       [&] {
         Window->Popups.ShowDialog = [](QDialog& dialog) {
           dynamic_cast<frmChgAC&>(dialog).cmd[0]->click();
         };
         Area().mnuAC[FlightArea::kChangeAircraft]->trigger();
       }},
      {"Remove Selected Flight",
       [&] {
         World_.Script.Expect("Are you sure?", Answer::Yes);
         Area().mnuAC[FlightArea::kRemove]->trigger();
       }},
      {"Add Sound File",
       [&] {
         const std::string sound = Box.Write("game/Sounds/Alarm.wav", "RIFF");
         World_.Script.ExpectPath("Choose sound file to copy", sound);
         World_.Script.Expect("ready to copy");
         World_.Script.ExpectPath("Select destination", sound);
         Window->mnuMissionPop[frmRWS::kAddSound]->trigger();
       }},
  };
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    SCOPED_TRACE(std::to_string(i) + " " + rows[i].What);
    Heard.clear();
    rows[i].Edit();
    EXPECT_EQ(Joined(Heard), rows[i].What);
  }
}

TEST_F(DoorsTest, LookingAndCancellingAreNoEdits) {
  // Time and delay in spellings that showing them replaces.
  const std::string mission = Mustangs(
      "  Planes 3|  Skill 2|  Class air.P_51D|  Fuel 70|"
      "  weapons 2xB|  StartTime 5.0",
      "  player usa0100");
  Box.Write("missions/b.mis", Replace(mission, "12.5", "7.5"));
  Open();
  for (const int row : {kFighter, kBomber, kLateFighter, kMystery}) ClickFlight(row);
  SelectFighters();
  World_.Script.Expect("Are you sure?", Answer::No);
  Area().mnuAC[FlightArea::kRemove]->trigger();
  Window->Popups.ShowDialog = [](QDialog& dialog) {
    dialog.show();
    dialog.close();
  };
  for (const auto entry : {FlightArea::kChangeAircraft, FlightArea::kDuplicate})
    Area().mnuAC[entry]->trigger();
  Window->Popups.ShowDialog = [](QDialog& dialog) {
    dialog.show();
    dynamic_cast<frmChgAC&>(dialog).cmd[1]->click();
  };
  Area().mnuAC[FlightArea::kChangeAircraft]->trigger();
  ClickRow(1);
  PressKey(Qt::Key_Up);
  EXPECT_EQ(Joined(Heard), "");
  EXPECT_GT(Shown, 0);
  EXPECT_FALSE(Lit() || Doc().Missions[0].Modified || Doc().Missions[1].Modified);
}

}  // namespace
}  // namespace rws::test
