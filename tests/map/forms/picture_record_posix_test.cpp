#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QStandardItemModel>
#include <QTest>
#include <QVBoxLayout>

#include "controls/label_button.h"
#include "controls/list_box.h"
#include "controls/list_colors.h"
#include "map/forms/briefing_pdf.h"
#include "map/forms/map_legend.h"
#include "map/forms/profile_view.h"
#include "platform/svg_file.h"
#include "tests/app/records.h"
#include "tests/map/forms/meeting_flights.h"
#include "tests/map/forms/small_scene.h"
#include "tools/compare_view.h"

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
  ExpectDrawn("legend", {1200, 600}, [&](QPainter& painter) {
    PaintLegend(painter, LegendOf(model, {}), {0, 0, 1200, 600}, false);
  });
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

TEST(PictureRecord, WhatIsFarOffOrNowhereDoesNoHarm) {
  constexpr double kFar = 1e9, kNan = std::numeric_limits<double>::quiet_NaN();
  MapModel model = SmallModel();
  // Straight up from a point that is seen, and things that are not seen at all.
  model.Scene.Routes.push_back(RouteOf(1, {{4000, 2000}, {4000, kFar}, {-kFar, kFar}}));
  model.Scene.Routes.push_back(RouteOf(2, {{kFar, kFar}}));
  model.Scene.Routes.push_back(RouteOf(2, {{kNan, kNan}, {100, 100}}));
  model.Scene.Routes.back().Points[0].HasPlace = false;
  model.Scene.Bases.push_back({1, {-kFar, -kFar}, 10, 1});
  model.Scene.Bases.push_back({1, {kFar, 2500}, kFar - 5900, 1});
  model.Scene.Things.Targets.push_back({{kFar, -kFar}, 5, 0, 0, 0});
  Complete(model);
  MapShown shown = ShownOf(model);
  shown.Selection.Route = model.Scene.Routes.size() - 1;
  shown.Minute = 10;
  const auto paint = [&](QPainter& painter) { PaintMap(painter, shown); };
  ExpectDrawn("map_far_off", {600, 500}, paint);
  shown.Projection.Centre = {kFar, kFar};
  PictureOf(shown, paint);
}

/** What the pages of a PDF draw. */
std::string PagesOf(const QByteArray& pdf) {
  std::string pages;
  for (qsizetype at = pdf.indexOf("\nstream\n"); at >= 0; at = pdf.indexOf("\nstream\n", at + 1)) {
    if (pdf.at(at + 8) != 'x') continue;
    const QByteArray stream = qUncompress(QByteArray("\0\1\0\0", 4) + pdf.mid(at + 8));
    if (stream.contains(" cm\n")) pages += stream.toStdString();
  }
  return pages;
}

TEST(PictureRecord, BriefingOnPages) {
  BriefingPages pages{"Iasi", "Night", nullptr, {}, "One\r\n\r\nTwo"};
  pages.Map = [](QPainter& painter, QSize size) { painter.drawRect(QRect(QPoint(), size)); };
  // The second caption would stand alone at the end of the first page.
  const QStringList row = {"Normal Fly", "7 m"};
  pages.Tables = {{"r0100", {"Type", "Height"}, {row, {QString(25, u'\n')}}},
                  {"g0100", {"Type", "Height"}, {row}}};
  ExpectRecord("tests/map/forms/records/briefing.txt", [&] { return PagesOf(BriefingPdf(pages)); });
}

TEST(PictureRecord, LinesCompared) {
  const CodePage page;
  CompareView view(page);
  view.SetTexts("one\n  Fuel 100\nthree\n", "one\n  Fuel 50\nthree\nfour\n");
  view.resize(500, 200);
  view.show();
  ExpectDrawn("compared", view.size(), [&](QPainter& painter) { view.render(&painter); });
}

TEST(PictureRecord, MarksOfAListAndWhyItIsEmpty) {
  ListBox list;
  list.SetEmptyText("No missions in \"Unbreakablename\"");
  list.resize(120, 90);
  const auto paint = [&](QPainter& painter) { list.render(&painter); };
  ExpectDrawn("list_empty", list.size(), paint);
  list.SetRows({"saved", "unsaved", "gone"});
  list.MarkRows({1}, "unsaved");
  list.StrikeRow(2, "gone");
  ExpectDrawn("list_marked", list.size(), paint);
}

TEST(PictureRecord, ColorsOfListsAndLabels) {
  QWidget form;
  std::array<ReportList*, 2> lists{new ReportList(&form), new ReportList(&form)};
  auto* label = new LabelButton("MMMMM", &form);
  label->SetColor(LabelColor::Blue, "file to view");
  QStandardItemModel model;
  for (const auto color : {Qt::blue, Qt::black}) {
    model.appendRow(new QStandardItem("MMMMM"));
    model.item(model.rowCount() - 1)->setForeground(color);
  }
  auto* column = new QVBoxLayout(&form);
  for (auto* list : lists) {
    column->addWidget(list);
    list->setModel(&model);
    list->SelectOnly(1);
  }
  column->addWidget(label);
  form.resize(200, 250);
  QPalette desktop(QColor(60, 60, 64));
  desktop.setColor(QPalette::Base, Qt::black);
  form.setPalette(desktop);
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  const auto paint = [&](QPainter& painter) { form.render(&painter); };
  for (const bool isDesktops : {true, false}) {
    ApplyListColors(form,
                    {.ForeColor = 0x00FFFF, .BackColor = 0x008000, .bDesktopColors = isDesktops});
    lists[isDesktops]->setFocus();
    ExpectDrawn(isDesktops ? "lists_on_dark_desktop" : "lists", form.size(), paint);
  }
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
