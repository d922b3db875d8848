#include "map/forms/map_view.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QWheelEvent>

#include "tests/map/forms/small_scene.h"

namespace rws::test {
namespace {

/** What a view has told, in words. */
class MapViewTest : public testing::Test {
 protected:
  MapViewTest() : Model(SmallModel()) {
    View.Describe = [](const MapHit& hit) {
      return QString("%1 %2 %3").arg(hit.Is).arg(hit.Index).arg(hit.Point);
    };
    QObject::connect(&View, &MapView::FlightChosen, [this](std::size_t i) { Tell("flight", i); });
    QObject::connect(&View, &MapView::BaseChosen, [this](std::size_t i) { Tell("base", i); });
    QObject::connect(&View, &MapView::WaypointOpened, [this](std::size_t i) { Tell("open", i); });
    QObject::connect(&View, &MapView::PointsChosen, [this](const auto& points) {
      Told += "points";
      for (const auto i : points) Told += " " + std::to_string(i);
      Told += "; ";
    });
    QObject::connect(&View, &MapView::PointsMoved,
                     [this](const auto& points, double east, double north) {
                       Told += "move";
                       for (const auto i : points) Told += " " + std::to_string(i);
                       Told += ": " + Metres(east) + " " + Metres(north) + "; ";
                     });
    QObject::connect(&View, &MapView::BaseMoved, [this](std::size_t i, const MapPoint& to) {
      Told += "base " + std::to_string(i) + ": " + Metres(to.X) + " " + Metres(to.Y) + "; ";
    });
    QObject::connect(&View, &MapView::BaseResized, [this](std::size_t i, double radius) {
      Told += "radius " + std::to_string(i) + ": " + Metres(radius) + "; ";
    });
    QObject::connect(&View, &MapView::Refused, [this](const QString&) { Told += "refused; "; });
    View.resize(600, 500);
    View.SetModel(&Model);
    View.show();
    View.SetProjection({{3000, 2500}, 10, 600, 500});
  }

  void Tell(const char* what, std::size_t number) {
    Told += std::string(what) + " " + std::to_string(number) + "; ";
  }
  static std::string Metres(double metres) { return std::to_string(std::lround(metres)); }
  std::string TakeTold() { return std::exchange(Told, {}); }

  void Click(int x, int y, Qt::KeyboardModifiers with = {}) {
    QTest::mouseClick(&View, Qt::LeftButton, with, {x, y});
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers with = {}) {
    QTest::mousePress(&View, Qt::LeftButton, with, from);
    QTest::mouseMove(&View, (from + to) / 2);
    QTest::mouseMove(&View, to);
    QTest::mouseRelease(&View, Qt::LeftButton, with, to);
  }
  void Key(int key, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(&View, static_cast<Qt::Key>(key), with);
  }

  MapModel Model;
  MapView View;
  std::string Told;
};

TEST_F(MapViewTest, AClickSelects) {
  Click(300, 401);
  EXPECT_EQ(TakeTold(), "flight 0; points; ");
  Click(501, 399);
  EXPECT_EQ(TakeTold(), "points 1; ");
  EXPECT_EQ(View.accessibleDescription(), "1 0 1");
  Click(500, 100, Qt::ControlModifier);
  EXPECT_EQ(TakeTold(), "points 1 2; ");
  Click(500, 400, Qt::ShiftModifier);
  EXPECT_EQ(TakeTold(), "points 2; ");
  Click(201, 151);
  EXPECT_EQ(TakeTold(), "flight 1; points 0; ");
  Click(200, 300);
  EXPECT_EQ(TakeTold(), "points; base 3; ");
  Click(50, 50);
  EXPECT_EQ(TakeTold(), "points; ");
  EXPECT_FALSE(View.Shown().Selection.Base);
  QTest::mouseDClick(&View, Qt::LeftButton, {}, {500, 400});
  EXPECT_EQ(TakeTold(), "flight 0; points 1; open 1; ");
}

TEST_F(MapViewTest, ADragMovesWhatIsSelectedAndNothingElse) {
  View.SetSelection({0, {1}, {}});
  const QImage before = View.grab().toImage();
  QTest::mousePress(&View, Qt::LeftButton, {}, {500, 400});
  QTest::mouseMove(&View, {470, 380});
  EXPECT_GT(Difference(before, View.grab().toImage()), 100) << "no preview";
  QTest::keyClick(&View, Qt::Key_Escape);
  EXPECT_EQ(Difference(before, View.grab().toImage()), 0);
  QTest::mouseRelease(&View, Qt::LeftButton, {}, {470, 380});
  QTest::mousePress(&View, Qt::LeftButton, {}, {500, 400});
  QTest::mouseMove(&View, {470, 380});
  QTest::mousePress(&View, Qt::RightButton, {}, {470, 380});
  QTest::mouseRelease(&View, Qt::LeftButton, {}, {470, 380});
  EXPECT_EQ(TakeTold(), "") << "another button lets go of it, too";
  Drag({500, 400}, {452, 377});
  EXPECT_EQ(TakeTold(), "move 1: -480 230; ");
  Drag({500, 400}, {501, 400});
  EXPECT_EQ(TakeTold(), "") << "a shaky click";
  Drag({500, 100}, {530, 140});
  EXPECT_EQ(TakeTold(), "") << "a point that is not selected";
  EXPECT_EQ(View.Shown().Projection.Centre, (MapPoint{2700, 2900}));
}

TEST_F(MapViewTest, LockedPointsStayUntilUnlocked) {
  View.SetSelection({0, {0}, {}});
  Drag({100, 400}, {150, 400});
  Key(Qt::Key_Up);
  EXPECT_EQ(TakeTold(), "refused; refused; ");
  View.SetSelection({0, {0, 1}, {}});
  Drag({100, 400}, {150, 400});
  EXPECT_EQ(TakeTold(), "move 1: 500 0; ");
  View.UnlockEnds = true;
  Drag({100, 400}, {150, 400});
  EXPECT_EQ(TakeTold(), "move 0 1: 500 0; ");
  View.ReadOnly = true;
  Drag({100, 400}, {150, 400});
  EXPECT_EQ(TakeTold(), "refused; ");
}

TEST_F(MapViewTest, HomeBasesAreMovedAndSized) {
  View.SetSelection({{}, {}, 0});
  Drag({200, 300}, {230, 290});
  Drag({260, 300}, {300, 300});
  Drag({260, 300}, {210, 300});
  EXPECT_EQ(TakeTold(), "base 3: 2300 2100; radius 3: 1000; radius 3: 500; ");
  Key(Qt::Key_Left, Qt::ShiftModifier);
  Key(Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(TakeTold(), "base 3: 1990 2000; radius 3: 700; ");
  View.MayMoveBases = false;
  Drag({200, 300}, {230, 290});
  EXPECT_EQ(TakeTold(), "refused; ");
}

TEST_F(MapViewTest, KeysDoAllOfIt) {
  Key(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(TakeTold(), "flight 0; points; ");
  Key(Qt::Key_N);
  Key(Qt::Key_PageDown);
  EXPECT_EQ(TakeTold(), "points 0; points 1; ");
  Key(Qt::Key_Right);
  Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(TakeTold(), "move 1: 100 0; move 1: 0 -10; ");
  Key(Qt::Key_Return);
  Key(Qt::Key_A, Qt::ControlModifier);
  Key(Qt::Key_Escape);
  Key(Qt::Key_B);
  EXPECT_EQ(TakeTold(), "open 1; points 0 1 2; points; base 3; ");
  Key(Qt::Key_N);
  EXPECT_FALSE(View.Shown().Selection.Base);
  Key(Qt::Key_Escape);
  TakeTold();
  Key(Qt::Key_Right);
  EXPECT_EQ(View.Shown().Projection.Centre, (MapPoint{3800, 2500})) << "nothing is selected";
  Key(Qt::Key_F);
  EXPECT_TRUE(View.Shown().Projection.Seen().Holds({0, 0}));
  Key(Qt::Key_F, Qt::ShiftModifier);
  EXPECT_FALSE(View.Shown().Projection.Seen().Holds({0, 0}));
  EXPECT_TRUE(View.Shown().Projection.Seen().Holds({5000, 4000}));
  EXPECT_EQ(TakeTold(), "");
}

TEST_F(MapViewTest, ABandSelectsPoints) {
  View.SetSelection({0, {}, {}});
  Drag({450, 50}, {550, 450}, Qt::ShiftModifier);
  EXPECT_EQ(TakeTold(), "points 1 2; ");
}

TEST_F(MapViewTest, TheRulerMeasures) {
  Key(Qt::Key_M);
  Drag({100, 100}, {400, 500});
  EXPECT_EQ(View.RulerText().toStdString(), "5 km, 143\xC2\xB0");
  View.SetSelection({0, {1}, {}});
  EXPECT_EQ(View.RulerText().toStdString(), "5 km, 143\xC2\xB0, 1 min 00 s at 300 km/h");
  View.SetMetric(false);
  EXPECT_EQ(View.RulerText().toStdString(), "3.1 miles, 143\xC2\xB0, 1 min 00 s at 186 mph");
  Key(Qt::Key_Escape);
  EXPECT_EQ(View.RulerText(), QString());
  EXPECT_EQ(TakeTold(), "");
}

TEST_F(MapViewTest, TheWheelKeepsThePlaceUnderThePointer) {
  const QPointF at(430, 120);
  const MapPoint held = View.Shown().Projection.ToMap({at.x(), at.y()});
  for (const int turn : {120, 360, -240, 90'000, -90'000}) {
    QWheelEvent event(at, View.mapToGlobal(at), {}, {0, turn}, Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&View, &event);
    const MapPoint now = View.Shown().Projection.ToMap({at.x(), at.y()});
    EXPECT_NEAR(DistanceOf(held, now), 0, 1e-3) << turn;
  }
}

TEST_F(MapViewTest, WhatIsNotThereAnyMoreIsNotSelected) {
  View.SetSelection({1, {0, 1}, 0});
  Model.Scene.Routes[1].Points.pop_back();
  Model.Scene.Bases.clear();
  View.SetModel(&Model);
  EXPECT_EQ(View.Shown().Selection, (MapSelection{1, {0}, {}}));
  Model.Scene.Routes.pop_back();
  View.SetModel(&Model);
  EXPECT_EQ(View.Shown().Selection, MapSelection{});
  View.SetModel(nullptr);
  Click(100, 100);
  for (const int key : {Qt::Key_F, Qt::Key_N, Qt::Key_B, Qt::Key_Up, Qt::Key_Escape}) Key(key);
  View.grab();
  EXPECT_EQ(TakeTold(), "");
}

TEST_F(MapViewTest, TheLegendGivesWayInASmallView) {
  const struct {
    int Width, Height;
    bool Has;
  } rows[] = {{1200, 600, true}, {250, 600, false}, {1200, 600, true}, {500, 90, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Height + row.Width * 1000);
    View.resize(row.Width, row.Height);
    QImage image(View.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    const auto entries = LegendOf(Model, {});
    EXPECT_EQ(View.LegendRoom() > 0, row.Has);
    EXPECT_EQ(PaintLegend(painter, entries, View.rect(), false).isEmpty(), !row.Has);
  }
  View.setPalette(QPalette(Qt::black));
  EXPECT_TRUE(View.Shown().Dark);
  View.SetLegend(false);
  View.resize(1200, 600);
  EXPECT_EQ(View.LegendRoom(), 0);
}

}  // namespace
}  // namespace rws::test
