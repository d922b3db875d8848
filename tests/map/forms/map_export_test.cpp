#include "map/forms/map_export.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLocale>

#include "map/forms/briefing_pdf.h"
#include "platform/svg_file.h"
#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws {
namespace {

using std::string;

/** Red, with the size it was asked for. */
struct Export : testing::Test {
  QImage Saved(const char* name) const {
    return QImage::fromData(QByteArray::fromStdString(Box.Read(name)), "PNG");
  }
  string Failure(const std::function<void()>& act) {
    string text;
    Trap(act, [&](const Fault& caught) { text = caught.Text; });
    return text;
  }

  test::Sandbox Box;
  test::World World;
  QSize Asked;
  PaintMapInto Paint = [this](QPainter& painter, QSize size) {
    Asked = size;
    painter.fillRect(QRect(QPoint(), size), Qt::red);
    painter.drawText(5, 20,
                     "<m\x01"
                     "ap>");
  };
};

TEST_F(Export, SavesPicturesOfEachSize) {
  const struct {
    PictureSize Size;
    QSize Pixels;
  } rows[] = {{PictureSize::AsShown, {300, 150}},
              {PictureSize::Twice, {600, 300}},
              {PictureSize::Wide, {4096, 2048}}};
  for (const auto& row : rows) {
    SavePng(World.Services, Box.Path("a.png"), Paint, {300, 150}, row.Size);
    const QImage image = Saved("a.png");
    EXPECT_EQ(image.size(), row.Pixels);
    // All of it is larger, so that the far corner is painted.
    EXPECT_EQ(Asked, QSize(300, 150));
    EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1), QColor(Qt::red));
  }
  CopyPicture(Paint, {30, 20});
  EXPECT_EQ(QGuiApplication::clipboard()->image().size(), QSize(30, 20));
}

TEST_F(Export, RefusesAbsurdSizes) {
  const struct {
    QSize Shown;
    PictureSize Size;
  } rows[] = {{{0, 100}, PictureSize::AsShown},
              {{10, 5000}, PictureSize::Wide},
              {{9000, 10}, PictureSize::Twice},
              {{11'000, 11'000}, PictureSize::AsShown}};
  for (const auto& row : rows) {
    const string text =
        Failure([&] { SavePng(World.Services, Box.Path("a.png"), Paint, row.Shown, row.Size); });
    EXPECT_NE(text.find("pixels cannot be made"), string::npos) << text;
  }
  EXPECT_FALSE(Asked.isValid() && !Asked.isNull());
  EXPECT_FALSE(Box.Exists("a.png"));
}

TEST_F(Export, SavesSvg) {
  if (!CanWriteSvg()) GTEST_SKIP() << "Qt comes without SVG here";
  SaveSvg(World.Services, Box.Path("a.svg"), Paint, {300, 150}, "Iasi\x02 & <more>");
  const string svg = Box.Read("a.svg");
  for (const char* part :
       {"viewBox=\"0 0 300 150\"", "<title>Iasi &amp; &lt;more&gt;</title>", "&lt;map&gt;"})
    EXPECT_NE(svg.find(part), string::npos) << svg;
}

BriefingPages PagesOf(int rows, int lines) {
  BriefingPages pages;
  pages.Title = "Iasi";
  BriefingTable& table = pages.Tables.emplace_back();
  table.Caption = "r0100";
  table.Headings = {"Waypoint", "Height"};
  for (int i = 0; i < rows; ++i) table.Rows.push_back({QString::number(i), "7 m"});
  for (int i = 0; i < lines; ++i) pages.Text += "Line of the briefing\r\n";
  return pages;
}

int PageCount(const QByteArray& pdf) { return int(pdf.count("/Type /Page\n")); }

TEST_F(Export, PrintsAsManyPagesAsItTakes) {
  const QLocale before;
  const struct {
    QLocale Locale;
    const char* Box;
  } papers[] = {{QLocale::c(), "/MediaBox [0 0 595"},
                {QLocale(QLocale::English, QLocale::UnitedStates), "/MediaBox [0 0 612"}};
  for (const auto& paper : papers) {
    QLocale::setDefault(paper.Locale);
    BriefingPages pages = PagesOf(10, 5);
    pages.Map = Paint;
    const QByteArray pdf = BriefingPdf(pages);
    EXPECT_TRUE(pdf.contains(paper.Box));
    // Letters are in it; where fonts cannot be read, as shapes.
    EXPECT_TRUE(!test::kPosixFiles || pdf.contains("/FontFile2"));
    EXPECT_EQ(PageCount(pdf), 1);
    EXPECT_GT(Asked.width(), 600);
  }
  QLocale::setDefault(before);
  const int table = PageCount(BriefingPdf(PagesOf(200, 0)));
  const int text = PageCount(BriefingPdf(PagesOf(0, 400)));
  EXPECT_GE(table, 3);
  EXPECT_GE(text, 5);
  EXPECT_NEAR(PageCount(BriefingPdf(PagesOf(200, 400))), table + text, 1);
  EXPECT_EQ(PageCount(BriefingPdf({})), 1);
  BriefingPages endless;
  endless.Text = QString(1'000'001, QLatin1Char('x'));
  EXPECT_EQ(Failure([&] { BriefingPdf(endless); }), "The briefing is too long to be printed.");
}

}  // namespace
}  // namespace rws
