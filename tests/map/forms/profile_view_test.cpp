#include "map/forms/profile_view.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>
#include <cmath>

#include "map/forms/frmFlightTable.h"
#include "map/forms/time_bar.h"
#include "tests/map/forms/meeting_flights.h"

namespace rws {
namespace {

using test::Flights;

struct Profile : Flights {
  Profile() {
    View.resize(600, 300);
    View.Show(From, 0, {1, 2, 0, 99});
    View.show();
  }
  /** Where a value is in the widget. */
  QPoint At(double at, double altitude) const {
    const ProfileScale scale = View.Scale();
    return QPointF(scale.ToX(at), scale.ToY(altitude)).toPoint();
  }

  ProfileView View;
};

TEST_F(Profile, ShowsTheSelectedFlightAboveTheOthers) {
  View.SetAxis(ProfileAxis::Time);
  View.SetMinute(13);
  // It is over by then, only the cursor goes on.
  EXPECT_EQ(View.Picture().Lines.back().Place, 13);
  EXPECT_FALSE(View.Picture().Lines.back().Altitude);
  View.Show(From, 2, {});
  EXPECT_EQ(View.Picture().Note, "No clock from waypoint 1 on: no speed is set.");
  EXPECT_TRUE(View.accessibleDescription().contains(View.Picture().Note));
  View.Show(From, 99, {});
  EXPECT_TRUE(View.Picture().Lines.empty());
  EXPECT_EQ(View.Picture().Note, "No flight is selected.");
}

TEST_F(Profile, ClicksAndKeysMoveTheMinute) {
  QSignalSpy minutes(&View, &ProfileView::MinuteChosen);
  View.SetAxis(ProfileAxis::Time);
  QTest::mouseClick(&View, Qt::LeftButton, {}, At(6, 200));
  ASSERT_EQ(minutes.count(), 1);
  EXPECT_NEAR(minutes.takeFirst()[0].toDouble(), 6, 0.05);
  // Half of the way is half of the time, and both say so in words.
  View.SetAxis(ProfileAxis::Distance);
  QTest::mouseClick(&View, Qt::LeftButton, {}, At(15'000, 200));
  EXPECT_NEAR(minutes.takeFirst()[0].toDouble(), 3, 0.05);
  View.SetMinute(3);
  EXPECT_TRUE(minutes.isEmpty());
  EXPECT_EQ(View.accessibleDescription().section(QLatin1Char('\n'), 0, 1).toStdString(),
            "r0100 at 12:03:00: 1250 m, 300 km/h, heading 090\xC2\xB0, 15 km along its route\n"
            "g0101 at 12:03:00: No clock from waypoint 1 on: no speed is set.");
  const struct {
    Qt::Key Key;
    Qt::KeyboardModifiers Modifiers;
    double Minute;
  } keys[] = {{Qt::Key_Right, {}, 4}, {Qt::Key_Right, Qt::ControlModifier, 12},
              {Qt::Key_Left, {}, 11}, {Qt::Key_Left, Qt::ControlModifier, 1},
              {Qt::Key_End, {}, 12},  {Qt::Key_Home, {}, 0}};
  for (const auto& key : keys) {
    QTest::keyClick(&View, key.Key, key.Modifiers);
    ASSERT_EQ(minutes.count(), 1);
    EXPECT_EQ(minutes.takeFirst()[0].toDouble(), key.Minute);
    EXPECT_EQ(View.Minute(), key.Minute);
  }
  QTest::keyClick(&View, Qt::Key_Left);
  EXPECT_TRUE(minutes.isEmpty());
}

TEST_F(Profile, AClickOnAMarkChoosesThePoint) {
  QSignalSpy points(&View, &ProfileView::PointChosen);
  QTest::mouseClick(&View, Qt::LeftButton, {}, At(60'000, 2000));
  QTest::mouseClick(&View, Qt::LeftButton, {}, At(9000, 2000));
  ASSERT_EQ(points.count(), 2);
  EXPECT_TRUE(points[0][0].toULongLong() == 0 && points[0][1].toULongLong() == 1);
  EXPECT_TRUE(points[1][0].toULongLong() == 2 && points[1][1].toULongLong() == 1);
  EXPECT_FALSE(View.Minute());
}

TEST_F(Profile, PaintsOddValuesToo) {
  View.SetMinute(6);
  Model.Scene.Routes[0].Points[1].At = {1e308, -1e308};
  Model.Scene.Routes[0].Points[0].Altitude = -500;
  Model.Scene.Routes[1].Points.clear();
  Model.Clocks[0] = ClockOf(Model.Scene.Routes[0]);
  Model.Clocks[1] = {};
  for (const auto axis : {ProfileAxis::Distance, ProfileAxis::Time}) {
    View.SetAxis(axis);
    View.Show(From, 0, {1, 2});
    View.grab();
    const ProfileScale scale = View.Scale();
    for (const auto& line : View.Picture().Lines)
      for (const auto& corner : line.Series.Corners)
        EXPECT_TRUE(scale.Plot.adjusted(-1, -1, 1, 1)
                        .contains(QPointF(scale.ToX(corner.At), scale.ToY(corner.Altitude))));
    QTest::mouseClick(&View, Qt::LeftButton, {}, QPoint(300, 200));
  }
  View.resize(1, 1);
  View.grab();
  View.Clear();
  View.grab();
}

struct Time : testing::Test {
  Time() {
    QObject::connect(&Bar, &TimeBar::MinuteChanged,
                     [this](std::optional<double> minute) { Heard.push_back(minute); });
    Bar.SetMission("12.5", 35.5);
    Bar.show();
  }
  void Tick() { ASSERT_TRUE(QMetaObject::invokeMethod(Bar.findChild<QTimer*>(), "timeout")); }
  QString Clock() const { return Bar.lblClock->text(); }

  TimeBar Bar;
  std::vector<std::optional<double>> Heard;
};

TEST_F(Time, MovesBySliderKeysAndSteps) {
  Bar.SetMinute(3.25);
  EXPECT_TRUE(Heard.empty());
  EXPECT_EQ(Clock(), "12:33:15, 3 min 15 s");
  Bar.cmdStep[1]->click();
  QTest::keyClick(Bar.sldMinute, Qt::Key_PageUp);
  Bar.cmdStep[0]->click();
  QTest::keyClick(Bar.sldMinute, Qt::Key_End);
  Bar.cmdStep[1]->click();
  EXPECT_EQ(Heard, (std::vector<std::optional<double>>{4.25, 14.25, 13.25, 35.5, 35.5}));
  Bar.chkPositions->click();
  EXPECT_EQ(Heard.back(), std::nullopt);
  EXPECT_EQ(Bar.Minute(), std::nullopt);
  // Who moves the time wants to see them.
  Bar.cmdStep[0]->click();
  EXPECT_EQ(Bar.Minute(), 34.5);
  EXPECT_TRUE(Bar.chkPositions->isChecked());
  Bar.SetMission("12.5", 10);
  EXPECT_EQ(Bar.Minute(), 10);
  Bar.SetMission("12.5", HUGE_VAL);
  EXPECT_EQ(Bar.sldMinute->maximum(), 60);
}

TEST_F(Time, PlaysToTheEndAtItsPace) {
  Bar.chkPositions->click();
  Bar.cmdPlay->click();
  EXPECT_TRUE(Bar.IsPlaying());
  Heard.clear();
  for (int i = 0; i < 20; ++i) Tick();
  ASSERT_EQ(Heard.size(), 20U);
  EXPECT_NEAR(*Heard.back(), 1, 1e-6);
  Bar.cmbPace->setCurrentIndex(2);
  for (int i = 0; i < 20; ++i) Tick();
  EXPECT_NEAR(*Heard.back(), 17, 1e-6);
  Bar.SetMinute(35);
  Tick();
  EXPECT_EQ(Heard.back(), 35.5);
  EXPECT_FALSE(Bar.IsPlaying());
  // From the end it begins anew; what is not seen does not run.
  Bar.cmdPlay->click();
  Tick();
  EXPECT_LT(*Heard.back(), 1);
  Bar.hide();
  EXPECT_FALSE(Bar.IsPlaying());
}

struct Tables : Flights {
  Tables() {
    World.Services.System.SetClipboard = [this](const std::string& text) { Copied = text; };
    Form.Refresh(From, 3, 1, 1);
    Form.show();
  }
  /** The flights in the order shown. */
  std::string Names() const {
    std::vector<std::string> names;
    const auto* model = Form.lstFlights->model();
    for (int i = 0; i < model->rowCount(); ++i)
      names.push_back(model->index(i, 0).data().toString().toStdString());
    return test::Joined(names);
  }
  void SortBy(int column, Qt::SortOrder order) {
    Form.lstFlights->header()->setSortIndicator(column, order);
  }

  std::string Copied;
  frmFlightTable Form{World.Services};
};

TEST_F(Tables, FollowTheSelectionAndTellIt) {
  QSignalSpy flights(&Form, &frmFlightTable::FlightChosen);
  QSignalSpy points(&Form, &frmFlightTable::PointChosen);
  EXPECT_EQ(Form.lblMoment->text(), "12:03:00, 3 min 00 s after the mission's start");
  EXPECT_EQ(Form.lstFlights->SelectedRows(), QList<int>{1});
  EXPECT_EQ(Form.lstPoints->SelectedRows(), QList<int>{1});
  SortBy(kFlightName, Qt::AscendingOrder);
  EXPECT_EQ(Names(), "g0100|g0101|r0100");
  EXPECT_EQ(Form.lstFlights->SelectedRows(), QList<int>{0});
  Form.Refresh(From, 4, 0, {});
  EXPECT_EQ(Form.lstFlights->SelectedRows(), QList<int>{2});
  EXPECT_TRUE(Form.lstPoints->SelectedRows().isEmpty());
  EXPECT_TRUE(flights.isEmpty() && points.isEmpty());
  QTest::keyClick(Form.lstFlights, Qt::Key_Up);
  ASSERT_EQ(flights.count(), 1);
  EXPECT_EQ(flights[0][0].toULongLong(), 2U);
  Form.Refresh(From, 4, 2, 0);
  QTest::keyClick(Form.lstPoints, Qt::Key_Down);
  ASSERT_EQ(points.count(), 1);
  EXPECT_TRUE(points[0][0].toULongLong() == 2 && points[0][1].toULongLong() == 1);
}

TEST_F(Tables, SortByNumbersWithEmptyCellsLast) {
  for (const auto& [name, x] : {std::pair("a", 9000.0), {"b", 10'000.0}, {"c", -500.0}}) {
    Add(name, 0, {{x, 0}}, 0);
  }
  Model.Scene.Routes[2].Points[0].HasPlace = false;
  Model.Clocks[2] = ClockOf(Model.Scene.Routes[2]);
  Form.Refresh(From, 0, {}, {});
  SortBy(kFlightX, Qt::AscendingOrder);
  EXPECT_EQ(Names(), "c|r0100|a|b|g0100|g0101");
  SortBy(kFlightX, Qt::DescendingOrder);
  EXPECT_EQ(Names(), "g0100|b|a|r0100|c|g0101");
}

TEST_F(Tables, CopyWhatIsShown) {
  SortBy(kFlightName, Qt::DescendingOrder);
  Form.cmd[0]->click();
  EXPECT_EQ(Copied.substr(0, Copied.find('\t')), "Flight");
  EXPECT_NE(Copied.find("\r\nr0100\t"), std::string::npos);
  EXPECT_LT(Copied.find("r0100"), Copied.find("g0101"));
  EXPECT_LT(Copied.find("g0101"), Copied.find("g0100"));
  Form.tabTables->setCurrentIndex(1);
  Form.cmd[0]->click();
  EXPECT_EQ(Copied,
            "Waypoint\tType\tx [km]\ty [km]\tHeight\tSpeed\tDistance\tHeading\tTime\tTarget\r\n"
            "0\tNormal Fly\t60.00\t0.40\t1000 m\t300 km/h\t0 m\t\t12:00:00\t\r\n"
            "1\tNormal Fly\t0.00\t0.40\t2000 m\t300 km/h\t60 km\t270\xC2\xB0\t12:12:00\t\r\n");
}

}  // namespace
}  // namespace rws
