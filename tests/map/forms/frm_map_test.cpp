#include <QImage>
#include <QRadioButton>
#include <QStatusBar>

#include "editors/frmWP.h"
#include "map/forms/frmBaseLines.h"
#include "map/forms/frmFlightTable.h"
#include "map/forms/frmMap.h"
#include "map/forms/frmMapPicture.h"
#include "tests/mainwindow/unsaved_fixture.h"

namespace rws::test {
namespace {

constexpr char kRoute[] =
    "  TAKEOFF 1000.00 2000.00 0 0 &0\r\n"
    "  NORMFLY 4000.25 6000.50 500.00 300.00 &1 F2\r\n"
    "  GATTACK 8000.00 6000.00 700.00 320.00 1_Static 0 &0\r\n"
    "  LANDING 1000.00 2500.00 0 0 &0\r\n";
constexpr char kBases[] =
    "[BornPlace]\r\n  1 3000 20000 20000 1000 200 0\r\n[BornPlace0]\r\n  I-16 5\r\n"
    "[MDS_BornPlace_20000_20000]\r\n  MaxPilots 4\r\n[StaticCamera]\r\n";

/** The map over the mission "d", whose two flights have routes and which has a home base. */
class MapWindowTest : public UnsavedTest {
 protected:
  explicit MapWindowTest(bool keeps = false) {
    Doc().Untouched = keeps ? UntouchedLines::Keep : UntouchedLines::Anew;
    Text = MissionText();
    const auto way = Text.find("  TAKEOFF"), end = Text.find("[NStationary]");
    Text.replace(way, end - way,
                 kRoute + std::string("[g0110]\r\n  Planes 1\r\n  Skill 1\r\n  Class air.JU_88\r\n"
                                      "  Fuel 100\r\n  weapons default\r\n[g0110_Way]\r\n"
                                      "  NORMFLY 2000.00 9000.00 500.00 300.00 &0\r\n"
                                      "  NORMFLY 9000.00 9000.00 500.00 300.00 &0\r\n"));
    Text = Replace(Text, "  r0100\r\n", "  r0100\r\n  g0110\r\n") + kBases;
    Box.Write("missions/d.mis", Text);
    Reread();
    ClickRow(3);
    ClickFlight(List().RowOf(0));
    OpenMap();
  }

  void OpenMap() {
    Activate();
    QTest::keyClick(Window.get(), Qt::Key_M, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Map()));
    LookAt({5000, 5000});
  }
  void Reread() {
    Window->mnuReread->trigger();
    Settle();
  }
  /** What waits for all else to be done is done. */
  static void Settle() { QCoreApplication::processEvents(); }
  frmMap& Map() { return *Window->Map; }
  void LookAt(MapPoint centre) { Map().view->SetProjection({centre, 40, 1, 1}); }
  QPoint Pixel(MapPoint at) {
    const ScreenPoint place = Map().view->Shown().Projection.ToScreen(at);
    return QPointF(place.X, place.Y).toPoint();
  }
  void ClickMap(MapPoint at) {
    QTest::mouseClick(Map().view, Qt::LeftButton, {}, Pixel(at));
    Settle();
  }
  void Drag(MapPoint from, MapPoint to) {
    QTest::mousePress(Map().view, Qt::LeftButton, {}, Pixel(from));
    QTest::mouseMove(Map().view, Pixel({(from.X + to.X) / 2, (from.Y + to.Y) / 2}));
    QTest::mouseMove(Map().view, Pixel(to));
    QTest::mouseRelease(Map().view, Qt::LeftButton, {}, Pixel(to));
    Settle();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(Map().view, key, with);
    Settle();
  }
  void Type(QLineEdit* box, const char* text) {
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QString::fromLatin1(text));
    QTest::keyClick(box, Qt::Key_Return);
    Settle();
  }
  std::string Said() { return Map().statusBar()->currentMessage().toStdString(); }
  std::string Title() { return Map().windowTitle().toStdString(); }
  std::string Caption() { return Area().mnuAC[FlightArea::kWaypoints]->text().toStdString(); }
  Mission& Own() { return Doc().Missions[3]; }
  /** The waypoints of the first flight as words: "TAKEOFF 1000.00 2000.00|...". */
  std::string Places() {
    std::vector<std::string> places;
    for (const auto& waypoint : Own().Flights[0].Waypoints) {
      const auto words = SplitAt(Trim(waypoint.Line), ' ');
      places.push_back(std::string(words[0]) + " " + std::string(words[1]) + " " +
                       std::string(words[2]));
    }
    return Joined(places);
  }
  /** Drags a waypoint, takes that back and does it again. */
  void DragAndUndo() {
    const auto& line = Own().Flights[0].Waypoints[1].Line;
    const auto before = line;
    ClickMap(First);
    EXPECT_EQ(Map().txtX->text() + Map().txtY->text(), "4000.256000.50");
    Drag(First, {4400.25, 5800.5});
    const auto after = line;
    EXPECT_EQ(Trim(after), "NORMFLY 4400.25 5800.50 500.00 300.00 &1 F2");
    EXPECT_EQ(Undo(), "Route of r0100");
    EXPECT_EQ(Own().Flights[0].Waypoints[1].Line, before);
    EXPECT_EQ(Redo(), "Route of r0100");
    EXPECT_EQ(Own().Flights[0].Waypoints[1].Line, after);
    EXPECT_EQ(FileText("d"), Text);
  }
  const MapPoint First{4000.25, 6000.5};
  std::string Text;
};
/** With the lines of missions kept. */
struct KeptMapTest : MapWindowTest {
  KeptMapTest() : MapWindowTest(true) {}
};

TEST_F(MapWindowTest, FollowsTheMainWindowAndLeadsIt) {
  const auto selected = [&] { return Map().view->Shown().Selection.Route; };
  EXPECT_EQ(Title(), "d.mis - Map");
  EXPECT_EQ(selected(), 0U);
  Map().mnuTable->trigger();
  ClickFlight(List().RowOf(1));
  Settle();
  EXPECT_EQ(selected(), 1U);
  EXPECT_EQ(Map().Table->lstFlights->SelectedRows(), QList<int>{1});
  Q_EMIT Map().Table->FlightChosen(0);
  EXPECT_EQ(Doc().CurFlight, 0);
  Q_EMIT Map().profile->MinuteChosen(3);
  EXPECT_EQ(Map().view->Shown().Minute, 3);
  ClickMap({6000, 6000});
  EXPECT_EQ(Doc().CurFlight, 0);
  EXPECT_EQ(List().Selection().Flights, std::vector<std::size_t>{0});
  ClickRow(0);
  Settle();
  EXPECT_EQ(Title(), "a.mis - Map");
  EXPECT_EQ(Map().Model().Scene.Routes.size(), 4U);
  ClickRow(3);
  Box.Write("missions/d.mis", Replace(Text, "4000.25", "4500.75"));
  Reread();
  EXPECT_EQ(Map().Model().Scene.Routes.at(0).Points.at(1).At.X, 4500.75);
  for (const char* name : {"a", "b", "c", "d"})
    Box.Remove(std::string("missions/") + name + ".mis");
  Reread();
  EXPECT_EQ(Title() + std::to_string(Map().Model().Scene.Routes.size()), "Map0");
  for (auto* entry : {Map().mnuInsert, Map().mnuDelete, Map().mnuReverse, Map().mnuPng,
                      Map().mnuSvg, Map().mnuPdf, Map().mnuCopy, Map().mnuPicture})
    EXPECT_FALSE(entry->isEnabled()) << entry->text().toStdString();
  Window->close();
  EXPECT_FALSE(Map().isVisible());
}

TEST_F(MapWindowTest, ADraggedWaypointIsAnUnsavedEditOfItsLineAlone) {
  DragAndUndo();
  EXPECT_EQ(Own().Flights[0].Waypoints[1].X + Own().Flights[0].Waypoints[1].Y, 4400 + 5800);
  EXPECT_FALSE(Lit());
  EXPECT_EQ(Unsaved(), "1 unsaved");
  Save();
  EXPECT_NE(FileText("d").find("  NORMFLY 4400.25 5800.50 500.0 300.0 &1"), std::string::npos);
  EXPECT_EQ(Unsaved(), "");
}

TEST_F(KeptMapTest, ADraggedWaypointIsAnUnsavedEditOfItsLineAlone) {
  DragAndUndo();
  Save();
  EXPECT_EQ(FileText("d"), Replace(Text, "4000.25 6000.50", "4400.25 5800.50"));
}

TEST_F(KeptMapTest, UndoGivesMovedWaypointsTheirOwnLinesBack) {
  const std::string start = Replace(
      Text, "  LANDING", "  NORMFLY_401 6000 7000.5 500 300 &0 F3\r\n  TRIGGERS 1 5\r\n  LANDING");
  const auto triggers = start.find("  TRIGGERS 1");
  for (auto* edit : {Map().mnuReverse, Map().mnuDelete}) {
    SCOPED_TRACE(edit->text().toStdString());
    Box.Write("missions/d.mis", start);
    Reread();
    ClickMap(First);
    edit->trigger();
    Undo();
    Settle();
    ClickMap(First);
    Drag(First, {4400.25, 5800.5});
    Save();
    EXPECT_EQ(FileText("d"), Replace(start, "4000.25 6000.50", "4400.25 5800.50"));
    Undo();
    Save();
    EXPECT_EQ(FileText("d"), start) << "moved back after it was written";
    edit->trigger();
    Save();
    EXPECT_NE(FileText("d"), start);
    if (edit == Map().mnuDelete) continue;
    EXPECT_LT(FileText("d").find("  TRIGGERS 1"), triggers);
    Undo();
    Save();
    EXPECT_EQ(FileText("d"), start) << "turned back after it was written";
  }
}

TEST_F(MapWindowTest, KeysAndTypedPlacesMoveWhatIsNotLocked) {
  ClickMap(First);
  Key(Qt::Key_Right);
  Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Places().substr(24, 23), "NORMFLY 4100.25 5990.50");
  Type(Map().txtX, " 4200,5 ");
  EXPECT_EQ(Map().txtX->text(), "4200.50");
  // What is typed is saved, without Enter.
  Map().txtX->selectAll();
  QTest::keyClicks(Map().txtX, "4300");
  ++World_.Clock.Hour;
  QTest::keyClick(Map().txtX, Qt::Key_S, Qt::ControlModifier);
  EXPECT_NE(FileText("d").find("NORMFLY 4300.00 5990.50"), std::string::npos);
  Type(Map().txtX, "4200.5");
  for (const char* bad : {" ", "x", "nan", "1e9", "-10000001"}) {
    Type(Map().txtY, bad);
    EXPECT_EQ(Map().txtY->text().toStdString() + Said(),
              "5990.50A place is two numbers of metres.");
  }
  Type(Map().txtY, "5980.5");
  EXPECT_EQ(Places().substr(24, 23), "NORMFLY 4200.50 5980.50");
  const std::string locked = Places();
  ClickMap({1000, 2000});
  Drag({1000, 2000}, {3000, 4000});
  EXPECT_NE(Said().find("locked"), std::string::npos);
  Key(Qt::Key_Left);
  Type(Map().txtX, "1500");
  EXPECT_NE(Said().find("locked"), std::string::npos);
  EXPECT_EQ(Places(), locked);
  Map().mnuUnlock->trigger();
  Type(Map().txtX, "1500");
  EXPECT_EQ(Places().substr(0, 23), "TAKEOFF 1500.00 2000.00");
}

TEST_F(MapWindowTest, PointsComeAndGo) {
  const std::string before = Places();
  EXPECT_NE(Caption().find("(3)"), std::string::npos) << Caption();
  Key(Qt::Key_Insert);
  EXPECT_NE(Caption().find("(4)"), std::string::npos) << Caption();
  EXPECT_EQ(Map().view->Shown().Selection.Points.size(), 1U) << "the new one";
  Key(Qt::Key_Delete);
  EXPECT_EQ(Places(), before);
  EXPECT_NE(Caption().find("(3)"), std::string::npos) << Caption();
  Map().mnuReverse->trigger();
  EXPECT_EQ(Places(),
            "TAKEOFF 1000.00 2000.00|GATTACK 8000.00 6000.00|NORMFLY 4000.25 6000.50|"
            "LANDING 1000.00 2500.00");
  Map().mnuWholeRoute->trigger();
  const double scale = Map().view->Shown().Projection.MetresPerPixel;
  Map().mnuZoomOut->trigger();
  EXPECT_GT(Map().view->Shown().Projection.MetresPerPixel, scale);
  Map().mnuZoomIn->trigger();
  Key(Qt::Key_Up);
  EXPECT_EQ(Places(),
            "TAKEOFF 1000.00 2000.00|GATTACK 8000.00 6100.00|NORMFLY 4000.25 6100.50|"
            "LANDING 1000.00 2500.00");
  Key(Qt::Key_A, Qt::ControlModifier);
  Key(Qt::Key_Delete);
  EXPECT_EQ(Said(), "A route keeps one waypoint at least.");
  for (int steps = 0; !Undo().empty();) ASSERT_LT(++steps, 9);
  Settle();
  EXPECT_EQ(Places(), before);
  EXPECT_EQ(Unsaved(), "");
}

TEST_F(MapWindowTest, NothingChangesInAMissionThatIsNotSeenYet) {
  ClickMap(First);
  ClickRow(0);
  const auto points = Doc().Missions[0].Flights[0].Waypoints.size();
  ASSERT_EQ(Map().view->Shown().Selection.Points, std::vector<std::size_t>{1}) << "of the other";
  Map().mnuDelete->trigger();
  EXPECT_EQ(Doc().Missions[0].Flights[0].Waypoints.size(), points);
  EXPECT_TRUE(Map().view->Shown().Selection.Points.empty());
}

TEST_F(MapWindowTest, NothingChangesWhileTheWaypointEditorIsOpen) {
  ClickMap(First);
  Key(Qt::Key_Up);
  const std::string before = Places(), file = FileText("d");
  Work = [&](QDialog& dialog) {
    auto& form = dynamic_cast<frmWP&>(dialog);
    Map().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Map()));
    ClickMap({8000, 6000});
    EXPECT_EQ(form.grd->currentIndex().row(), 2);
    form.grd->setCurrentIndex(form.grd->model()->index(3, 1));
    EXPECT_EQ(Map().view->Shown().Selection.Points, std::vector<std::size_t>{3});
    ClickMap({9000, 9000});
    EXPECT_EQ(Doc().CurFlight, 0) << "the editor is of one flight";
    EXPECT_EQ(form.grd->currentIndex().row(), 3);
    EXPECT_EQ(Map().view->Shown().Selection.Route, 0U);
    form.grd->setCurrentIndex(form.grd->model()->index(1, 1));
    Drag({4000.25, 6100.5}, {5000, 5000});
    for (const auto key : {Qt::Key_Left, Qt::Key_Insert, Qt::Key_Delete}) Key(key);
    for (const auto key : {Qt::Key_Z, Qt::Key_Y, Qt::Key_S}) Key(key, Qt::ControlModifier);
    Type(Map().txtX, "5");
    Map().mnuReverse->trigger();
    EXPECT_EQ(Places(), before);
    EXPECT_EQ(FileText("d"), file);
  };
  Area().mnuAC[FlightArea::kWaypoints]->trigger();
  Settle();
  EXPECT_EQ(Unsaved(), "1 unsaved");
  Map().activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Map()));
  Key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_NE(Places(), before) << "the keys are back";
}

TEST_F(MapWindowTest, HomeBasesStayWhereLinesAreNotKept) {
  LookAt({20000, 20000});
  ClickMap({20000, 20000});
  Drag({20000, 20000}, {21000, 20000});
  EXPECT_NE(Said(), "");
  EXPECT_EQ(Own().BornPlaces.at(0).X, 20000);
  EXPECT_FALSE(Map().mnuBaseText->isEnabled());
}

TEST_F(KeptMapTest, HomeBasesMoveWithAllThatIsNamedByTheirPlace) {
  LookAt({20000, 20000});
  ClickMap({20000, 20000});
  Drag({20000, 20000}, {21000, 19000});
  Drag({21000, 22000}, {21000, 23000});
  Map().ShowDialog = [](QDialog& dialog) {
    auto& form = dynamic_cast<frmBaseLines&>(dialog);
    // As exact as the pixels are, which stand for other lengths beside wider letters.
    auto words = form.txtLine->text().split(u' ');
    EXPECT_NEAR(words.value(1).toInt(), 4000, kPosixFiles ? 0 : 40);
    words.removeAt(1);
    EXPECT_EQ(words.join(u' '), "1 21000 19000 1000 200 0");
    EXPECT_EQ(form.txtAircraft->toPlainText(), "  I-16 5");
    form.show();
    form.txtLine->setText("1 4000 21000 x 1000 200 0");
    form.cmd[0]->click();
    EXPECT_TRUE(form.isVisible() && form.lblFault->isVisible());
    form.txtLine->setText("2 4000 21000 18000 1000 200 0");
    form.txtAircraft->appendPlainText("P-51D");
    form.cmd[0]->click();
    EXPECT_FALSE(form.isVisible());
  };
  Map().mnuBaseText->trigger();
  Save();
  std::string wanted = Replace(Text, "1 3000 20000 20000", "2 4000 21000 18000");
  wanted = Replace(wanted, "20000_20000", "21000_18000");
  EXPECT_EQ(FileText("d"), Replace(wanted, "I-16 5\r\n", "I-16 5\r\nP-51D\r\n"));
}

TEST_F(MapWindowTest, APictureIsRememberedAndItsLossToldOnce) {
  QImage(20, 10, QImage::Format_RGB32).save(QString::fromStdString(Box.Path("my map.png")));
  const auto choose = [&] {
    World_.Script.ExpectPath("Picture for Smolensk/sload.ini", Box.Path("my map.png"));
    Map().ShowDialog = [](QDialog& dialog) {
      auto& form = dynamic_cast<frmMapPicture&>(dialog);
      form.cmd[0]->click();
      form.numSize[0]->setValue(40);
      form.cmd[1]->click();
    };
    Map().mnuPicture->trigger();
  };
  const auto underlay = [&] { return Map().view->Shown().Underlay; };
  const std::string remembered = std::string("program/") + std::string(kMapPicturesFile);
  choose();
  ASSERT_TRUE(underlay());
  EXPECT_EQ(underlay()->Place.Right, 40000);
  Map().ShowDialog = [](QDialog& dialog) {
    auto& form = dynamic_cast<frmMapPicture&>(dialog);
    EXPECT_TRUE(form.lblFile->text().contains("my map.png"));
    EXPECT_EQ(form.numSize[0]->value(), 40);
  };
  Map().mnuPicture->trigger();
  const std::string stored = Box.Read(remembered);
  ClickRow(0);
  Settle();
  EXPECT_FALSE(underlay()) << "of another map";
  Box.Write("my map.png", "broken");
  ClickRow(3);
  Settle();
  EXPECT_NE(Said().find("my map.png"), std::string::npos) << Said();
  EXPECT_FALSE(underlay());
  Map().statusBar()->clearMessage();
  EditDark();
  Settle();
  EXPECT_EQ(Said(), "");
  Map().mnuNoPicture->trigger();
  EXPECT_EQ(Box.Read(remembered), "");
  Box.Remove(remembered);
  Box.Write(remembered, std::string((1 << 20) + 1, 'x'));
  ClickRow(0);
  Settle();
  EXPECT_NE(Said().find("RWS Map Pictures"), std::string::npos) << Said();
}

TEST_F(MapWindowTest, WhatIsShownIsRemembered) {
  const auto chosen = [](const frmMap& map) {
    return std::vector<bool>{map.mnuLayer[0]->isChecked(), map.mnuLayer[4]->isChecked(),
                             map.mnuLegend->isChecked(), map.mnuProfile->isChecked(),
                             map.mnuOverTime->isChecked()};
  };
  for (auto* entry : {Map().mnuLayer[4], Map().mnuLegend, Map().mnuProfile, Map().mnuOverTime})
    entry->trigger();
  Map().close();
  frmMap again(World_);
  again.LoadForm();
  EXPECT_EQ(chosen(again), chosen(Map()));
  EXPECT_NE(chosen(again), chosen(frmMap(World_))) << "as they are at first";
}

TEST_F(MapWindowTest, ExportsTakeThePlaceOfTheOldFileOrLeaveIt) {
  const std::pair<QAction*, const char*> rows[] = {{Map().mnuPng, "Save the map as PNG"},
                                                   {Map().mnuPngLarge, "Save the map as PNG"},
                                                   {Map().mnuSvg, "Save the map as SVG"},
                                                   {Map().mnuPdf, "Save a briefing as PDF"}};
  for (const auto& [entry, title] : rows) {
    SCOPED_TRACE(entry->text().toStdString());
    if (!entry->isVisible()) continue;
    Box.Write("map", "old");
    Map().statusBar()->clearMessage();
    World_.Script.ExpectPath(title, "");
    entry->trigger();
    FailSteps(World_.Services.Files, "write");
    for (const bool fails : {true, false}) {
      World_.Script.ExpectPath(title, Box.Path("map"));
      if (fails) World_.Script.Expect("disk full");
      entry->trigger();
      EXPECT_EQ(Box.Read("map") == "old", fails);
      EXPECT_EQ(Said().empty(), fails);
      World_.Services.Files.BeforeStep = {};
    }
  }
}

}  // namespace
}  // namespace rws::test
