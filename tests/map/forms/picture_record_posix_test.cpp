#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>

#include "map/forms/map_legend.h"
#include "map/forms/profile_view.h"
#include "platform/svg_file.h"
#include "tests/app/records.h"
#include "tests/map/forms/meeting_flights.h"
#include "tests/map/forms/small_scene.h"

namespace rws::test {
namespace {

/** A drawing against the one that was looked over when it last changed; a browser shows it. */
void ExpectDrawn(const char* name, QSize size, const std::function<void(QPainter&)>& paint) {
  if (!CanWriteSvg()) GTEST_SKIP() << "Qt comes without SVG here";
  // Letters are drawn as shapes, and those that fit pixels are others after other tests.
  const QFont before = QApplication::font();
  QFont exact = before;
  exact.setHintingPreference(QFont::PreferNoHinting);
  QApplication::setFont(exact);
  const QByteArray drawn = SvgOf(size, QString(), paint);
  QApplication::setFont(before);
  ExpectRecord("tests/map/forms/records/" + std::string(name) + ".svg",
               [&] { return drawn.toStdString(); });
}

TEST(PictureRecord, MapInEachOfItsLooks) {
  const MapModel model = ModelOfAll();
  MapShown shown = ShownOf(model);
  const auto paint = [&](QPainter& painter) { PaintMap(painter, shown); };
  ExpectDrawn("map", {600, 500}, paint);
  shown.Dark = true;
  shown.Selection = {0, {1}, {}};
  shown.Compared = {1};
  shown.Minute = 0.4;
  ExpectDrawn("map_selected", {600, 500}, paint);
  shown.Dark = false;
  shown.Metric = false;
  shown.Selection = {{}, {}, 0};
  shown.Projection = {{3000, 2500}, 40, 600, 500};
  ExpectDrawn("map_small", {600, 500}, paint);
  MapPreview preview;
  preview.Points = {1, 2};
  preview.East = 500;
  preview.North = -200;
  shown.Selection = {0, {1, 2}, {}};
  ExpectDrawn("map_dragged", {600, 500},
              [&](QPainter& painter) { PaintMapTop(painter, shown, preview); });
}

struct ProfileRecord : Flights {};

TEST_F(ProfileRecord, FlightsFromTheSide) {
  ProfileView view;
  view.resize(600, 300);
  const auto paint = [&](QPainter& painter) {
    view.render(&painter, {}, {}, QWidget::DrawChildren);
  };
  view.Show(From, 0, {1, 2});
  ExpectDrawn("profile", view.size(), paint);
  view.SetAxis(ProfileAxis::Time);
  view.SetMinute(3);
  ExpectDrawn("profile_over_time", view.size(), paint);
}

}  // namespace
}  // namespace rws::test
