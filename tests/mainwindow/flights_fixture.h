#pragma once

#include "tests/mainwindow/window_fixture.h"

namespace rws::test {

/** A mission of four flights: a red fighter, a blue bomber, a plane that the game lacks, and
   another red fighter, which the player flies in. The fighters' names go on from one another. */
class FlightsTest : public WindowTest {
 protected:
  enum Index { kFighterFlight, kBomberFlight, kMysteryFlight, kLateFighterFlight };
  enum ListRow { kBomber, kMystery, kFighter, kLateFighter };

  FlightsTest() {
    AddAircraft("I-16", "I_16", true);
    AddAircraft("Ju 88", "JU_88", false);
    AddAircraft("I-16 Type 24", "I_16T24", true);
    Tables.Squadrons = {{"red", "ru", "USSR", {{"r01", "First regiment"}}},
                        {"blue", "de", "Germany", {{"g01", ""}}}};
    std::vector<std::string> lines = {"[MAIN]", "  TIME 23.8", "  player r0101", "  playerNum 1",
                                      "[Wing]"};
    for (const char* name : {"r0100", "g0110", "x0100", "r0101"})
      lines.push_back(std::string("  ") + name);
    AddFlight(lines, "r0100", "I_16", {"  Skill 1"});
    AddFlight(lines, "g0110", "JU_88", {"  Skill0 3", "  Skill1 2"});
    AddFlight(lines, "x0100", "MYSTERY", {"  Skill 3"});
    AddFlight(lines, "r0101", "I_16T24", {"  Skill 2"});
    lines.push_back("[NStationary]");
    Box.Write("missions/a.mis", Crlf(lines));
  }

  static void AddFlight(std::vector<std::string>& lines, const std::string& name,
                        const std::string& aircraft, const std::vector<std::string>& skill) {
    lines.insert(lines.end(), {"[" + name + "]", "  Planes 2"});
    lines.insert(lines.end(), skill.begin(), skill.end());
    lines.insert(lines.end(),
                 {"  Class air." + aircraft, "  Fuel 40", "  weapons default", "[" + name + "_Way]",
                  "  NORMFLY 1.00 2.00 500.0 300.0 &0", "  NORMFLY 5.00 2.00 500.0 300.0 &0"});
  }

  FlightArea& Area() { return *Window->flightArea; }
  FlightList& List() { return *Area().lstPlanes; }
  FlightPanel& Panel_() { return *Area().fraFlight; }
  Flight& Record(int index) { return At(Doc().Missions[0].Flights, index); }
  QString Cell(int row, int column) {
    return List().model()->index(row, column).data(Qt::DisplayRole).toString();
  }
  void ClickFlight(int row, Qt::MouseButton button = Qt::LeftButton,
                   Qt::KeyboardModifiers keys = {}) {
    const QRect place = List().visualRect(List().model()->index(row, 0));
    QTest::mouseClick(List().viewport(), button, keys, place.center());
  }
  void SelectFighters() {
    ClickFlight(kFighter);
    ClickFlight(kLateFighter, Qt::LeftButton, Qt::ControlModifier);
  }
};

}  // namespace rws::test
