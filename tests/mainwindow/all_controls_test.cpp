#include "catalogues/paint_schemes.h"
#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

/** An American flight of one plane with everything that a flight can carry on disk. */
TEST_F(WindowTest, EveryControlOfFlightAndPlaneReachesTheFile) {
  for (const char* file :
       {"Skins/P-51D/Red Nose.bmp", "Skins/P-51D/Old.bmp", "Pilots/Cap.bmp", "Noseart/Star.bmp"})
    Box.Write(std::string("game/PaintSchemes/") + file, "image");
  Tables.Aircraft.resize(1);
  auto& aircraft = Tables.Aircraft[0];
  aircraft.Name = "P-51D";
  aircraft.Class = "P_51D";
  aircraft.Folder = "P51D";
  aircraft.Flyable = aircraft.NoseArtOk = true;
  aircraft.Weapons = {"Default,default", "2 x Bombs,2xB", "Empty (No Ammo),none"};
  Tables.Squadrons = {{"red", "usa", "USA", {{"usa01", ""}}}};
  LoadPilotSkins(Doc(), Tables, World_.Services);
  LoadNoseArt(Doc(), Tables, World_.Services);
  LoadPlaneSkins(Doc(), Tables, World_.Services);
  const std::vector<std::string> head = {"[MAIN]", "  TIME 12.5"},
                                 last = {"[usa0100_Way]", "  NORMFLY 1.00 2.00 500.0 300.0 &0",
                                         "[NStationary]"};
  const auto whole = [&](std::vector<std::string> lines, const std::vector<std::string>& player) {
    std::vector<std::string> all = head;
    all.insert(all.end(), player.begin(), player.end());
    all.insert(all.end(), {"[Wing]", "  usa0100", "[usa0100]"});
    all.insert(all.end(), lines.begin(), lines.end());
    all.insert(all.end(), last.begin(), last.end());
    return Crlf(all);
  };
  Box.Write("missions/a.mis", whole({"  Planes 1", "  Skill 1", "  skin0 old.bmp",
                                     "  Class air.P_51D", "  Fuel 100", "  weapons default"},
                                    {"  player usa0100", "  playerNum 0"}));
  Open();
  FlightPanel& flight = *Window->flightArea->fraFlight;
  const auto& panel = Window->flightArea->planes->fraPlane;
  flight.cboPlanes->SelectRow(1);
  flight.cboSkill->SelectRow(4);
  flight.cboWeap->SelectRow(1);
  Click(flight.udFuel->Down);
  flight.txtDStart->setFocus();
  flight.txtDStart->selectAll();
  QTest::keyClicks(flight.txtDStart, "20");
  Click(flight.chkPara);
  panel[0]->cboSL->SelectRow(3);
  panel[1]->cboSL->SelectRow(2);
  panel[1]->cboAPSkin->SelectText("red nose");
  panel[1]->cboPSkin->SelectText("Cap");
  panel[0]->cboPNoseArt->SelectText("Star");
  Click(panel[0]->chkMark);
  Click(panel[1]->chkPlayer);
  EXPECT_TRUE(panel[1]->IsHighlighted());
  EXPECT_FALSE(panel[2]->isEnabled());
  Click(Window->cmd[frmRWS::kUpdate]);
  const std::vector<std::string> written = {
      "  Planes 2",      "  Parachute 0",        "  Skill0 3",       "  Skill1 2",
      "  skin0 old.bmp", "  skin1 Red Nose.bmp", "  pilot1 Cap.bmp", "  noseart0 Star.bmp",
      "  numberOn0 0",   "  Class air.P_51D",    "  Fuel 95",        "  weapons 2xB",
      "  StartTime 20"};
  EXPECT_EQ(FileText("a"), whole(written, {"  player usa0100", "  playerNum 1"}));
  EXPECT_EQ(panel[1]->cboAPSkin->currentText(), "Red Nose") << "read again, the skin is found";

  World_.Script.Expect("This will clear the player selected plane.", Answer::Yes);
  Click(flight.chkAI);
  Click(Window->cmd[frmRWS::kUpdate]);
  EXPECT_NE(FileText("a").find("  Planes 2\r\n  OnlyAI 1\r\n"), std::string::npos);
}

}  // namespace
}  // namespace rws::test
