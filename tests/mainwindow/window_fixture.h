#pragma once

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "catalogues/paint_schemes.h"
#include "mainwindow/frmRWS.h"
#include "services/setting_values.h"
#include "services/text.h"
#include "tests/support/doubles.h"
#include "tests/support/failing_step.h"
#include "tests/support/sandbox.h"

namespace rws::test {

constexpr char kQuestion[] = "Do you wish to save the changes to this mission?";
constexpr char kExitQuestion[] = "Would you like to save your updates before exiting?";

/** The real main window over a sandbox of missions. */
class WindowTest : public ::testing::Test {
 protected:
  WindowTest() : World_(Box.Path("program")) {
    Box.MakeFolder("program");
    Box.MakeFolder("missions");
    World_.Doc.MissionDir = Box.Path("missions");
    World_.Doc.GamePath = Box.Path("game");
    World_.Doc.bLoading = true;
  }

  void AddAircraft(const char* name, const char* aircraftClass, bool flyable,
                   const char* folder = "", bool noseArt = false) {
    const std::vector<Loadout> loadouts = {
        {"Default", "default"}, {"2 x Bombs", "2xB"}, {"Empty (No Ammo)", "none"}};
    Tables.Aircraft.push_back({"", name, aircraftClass, folder, "", loadouts, flyable, noseArt});
  }
  /** An aircraft that wears nose art, in a game with these images: "Pilots/Ace.bmp". */
  void AddPainted(const char* name, const char* aircraftClass, const char* folder,
                  const std::vector<std::string>& images) {
    AddAircraft(name, aircraftClass, true, folder, true);
    for (const auto& image : images) Box.Write("game/PaintSchemes/" + image, image);
    LoadPlaneSkins(Doc(), Tables, World_.Services);
    LoadPilotSkins(Doc(), Tables, World_.Services);
    LoadNoseArt(Doc(), Tables, World_.Services);
  }

  /** A mission of one value each, with one flight. */
  static std::string MissionText(const std::string& cloudHeight = "1000.0") {
    return Crlf({"[MAIN]",
                 "  MAP Smolensk/sload.ini",
                 "  TIME 12.5",
                 "  CloudType 2",
                 "  CloudHeight " + cloudHeight,
                 "  army 1",
                 "  playerNum 0",
                 "[SEASON]",
                 "  Year 1941",
                 "[Wing]",
                 "  r0100",
                 "[r0100]",
                 "  Planes 2",
                 "  Skill 1",
                 "  Class air.IL_2",
                 "  Fuel 100",
                 "  weapons default",
                 "[r0100_Way]",
                 "  TAKEOFF 100.00 200.00 0 0 &0",
                 "  LANDING 300.00 400.00 0 0 &0",
                 "[NStationary]"});
  }

  /** Writes the missions a, b and c and shows the first. */
  void OpenThree() {
    for (const char* name : {"a", "b", "c"})
      Box.Write(std::string("missions/") + name + ".mis", MissionText());
    Open();
  }

  void Open() {
    Make();
    Window->show();
    Window->Start();
  }

  /** Gives the window the keyboard. */
  void Activate() {
    Window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Window.get()));
  }

  /** What the program looks for as it starts: a game, tables and the settings. */
  void PrepareStart() {
    Box.Write("game/il2fb.exe", "");
    Box.Write("game/PaintSchemes/Skins/IL_2/a.bmp", "");
    Box.Write("program/RWS_Weapons.txt", Crlf({"Rockets,8xRS82,IL_2", "none"}));
    Box.Write("program/RWS_Aircraft.txt", Crlf({"F,IL-2 Series 1,IL_2,,,,", "F,I-16,I_16,,,,"}));
    WriteSetting(World_.Services.Settings, setting::GamePath, Box.Path("game"));
    World_.Services.System.Version = [] { return OsVersion{3, 6, 1, "Debian 12"}; };
    World_.Services.System.LocaleText = [](int) { return std::string("en_GB"); };
  }
  /** The whole start of the program. */
  void Load(const std::string& commandLine = "") {
    Window = std::make_unique<frmRWS>(World_);
    Window->LoadForm(commandLine);
  }

  /** The window, filled with nothing but its fixed lists. */
  void Make() {
    Window = std::make_unique<frmRWS>(World_);
    Window->InitForm();
  }

  Document& Doc() { return World_.Doc; }
  MissionPanel& Panel() { return *Window->missionPanel; }
  bool Lit() { return Window->cmd[3]->isEnabled(); }
  int Row() { return Window->lstMission->CurrentRow(); }

  void Click(QWidget* control) { QTest::mouseClick(control, Qt::LeftButton); }
  void ClickRow(int row, Qt::MouseButton button = Qt::LeftButton) {
    auto* list = Window->lstMission;
    const QRect place = list->visualRect(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), button, {}, place.center());
  }
  void PressKey(Qt::Key key) { QTest::keyClick(Window->lstMission, key); }
  /** As Qt does for the Menu key and for Shift+F10. */
  static void PressMenuKey(QWidget& list) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(&list, &event);
  }
  /** Where the menu of a row opens by the keyboard. */
  static QPoint BelowRow(const QTreeView& list, int row) {
    const QRect place = list.visualRect(list.model()->index(row, 0));
    return list.viewport()->mapToGlobal(place.bottomLeft());
  }
  /** The next dialogs are shown, worked on by `Work` and closed. */
  void HookDialogs() {
    Window->Popups.ShowDialog = [this](QDialog& dialog) {
      dialog.show();
      Work(dialog);
      dialog.close();
    };
  }
  std::string Shown() { return At(Doc().Missions, Doc().CurMission).BaseName; }
  /** The rows of the list; an asterisk before those that are unsaved, a dash before those gone. */
  std::string Rows() {
    std::vector<std::string> rows;
    const auto* model = Window->lstMission->model();
    for (int row = 0; row < model->rowCount(); ++row) {
      const auto index = model->index(row, 0);
      const QString spoken = index.data(Qt::AccessibleTextRole).toString();
      rows.push_back(std::string(spoken.contains("unsaved") ? "*" : "") +
                     (spoken.contains("no longer") ? "-" : "") +
                     index.data().toString().toStdString());
    }
    return Joined(rows);
  }
  /** Any edit: another weather. */
  void Edit() { Panel().cboWeather->SelectRow(5); }
  std::string FileText(const std::string& name) { return Box.Read("missions/" + name + ".mis"); }

  std::function<void(QDialog&)> Work = [](QDialog&) { ADD_FAILURE() << "a dialog"; };
  Sandbox Box;
  World World_;
  Catalogues& Tables = World_.Tables;
  Preferences& Prefs = World_.Prefs;
  std::unique_ptr<frmRWS> Window;
};

}  // namespace rws::test
