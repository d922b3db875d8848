#include "controls/list_colors.h"

#include <gtest/gtest.h>

#include <QStandardItemModel>
#include <QTest>
#include <QVBoxLayout>
#include <cstdlib>

#include "controls/label_button.h"
#include "controls/report_list.h"

namespace rws::test {
namespace {

/** True if a pixel has this colour; `off` for the soft edges of letters. */
bool Holds(QWidget& control, const QColor& color, int off = 0) {
  const auto near = [off](int a, int b) { return std::abs(a - b) <= off; };
  const QImage picture = control.grab().toImage();
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      if (const QColor c = picture.pixelColor(x, y); near(c.red(), color.red()) &&
                                                     near(c.green(), color.green()) &&
                                                     near(c.blue(), color.blue()))
        return true;
  return false;
}

TEST(ListColors, AFixedColorKeepsABackgroundThatItIsReadOn) {
  const QColor red(Qt::red), blue(Qt::blue), black(Qt::black), white(Qt::white), dark(40, 40, 43);
  const struct {
    QColor Told, Behind, Background;
  } rows[] = {{red, white, white},   {blue, white, white}, {red, black, black},
              {blue, black, white},  {blue, dark, white},  {black, dark, white},
              {white, white, black}, {black, white, white}};
  for (const auto& row : rows)
    EXPECT_EQ(BackgroundFor(row.Told, row.Behind), row.Background)
        << row.Told.name().toStdString() << " on " << row.Behind.name().toStdString();
}

TEST(ListColors, OfRowsAndLabelsStayAsToldOnADarkDesktop) {
  QWidget form;
  auto* list = new ReportList(&form);
  auto* label = new LabelButton(QStringLiteral("MMMMM"), &form);
  label->SetColor(LabelColor::Blue, QStringLiteral("file to view"));
  auto* column = new QVBoxLayout(&form);
  column->addWidget(list);
  column->addWidget(label);
  QStandardItemModel model;
  model.appendRow(new QStandardItem(QStringLiteral("MMMMM")));
  model.item(0)->setForeground(Qt::blue);
  list->setModel(&model);
  QPalette desktop(QColor(60, 60, 64));
  desktop.setColor(QPalette::Base, Qt::black);
  form.setPalette(desktop);
  ApplyListColors(form, {.ForeColor = 0x00FFFF, .BackColor = 0x008000, .bDesktopColors = true});
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  for (QWidget* control : {static_cast<QWidget*>(list), static_cast<QWidget*>(label)}) {
    EXPECT_TRUE(Holds(*control, Qt::blue, 90)) << control->metaObject()->className();
    EXPECT_TRUE(Holds(*control, Qt::white)) << "the pair's other colour";
  }
  EXPECT_TRUE(Holds(*list, Qt::black)) << "the list itself is the desktop's";
  ApplyListColors(form, {.ForeColor = 0x00FFFF, .BackColor = 0x008000});
  EXPECT_TRUE(Holds(*list, QColor(0, 128, 0)));
  EXPECT_FALSE(Holds(*list, Qt::black));
}

TEST(ListColors, TellTheListWithTheFocusFromTheOther) {
  QWidget form;
  QStandardItemModel model(1, 1);
  std::array<ReportList*, 2> lists{new ReportList(&form), new ReportList(&form)};
  auto* row = new QVBoxLayout(&form);
  for (auto* list : lists) {
    list->setModel(&model);
    list->SelectOnly(0);
    row->addWidget(list);
  }
  ApplyListColors(form, {});
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  for (const std::size_t focused : {0, 1}) {
    lists[focused]->setFocus();
    const QColor strong = form.palette().color(QPalette::Highlight);
    EXPECT_TRUE(Holds(*lists[focused]->viewport(), strong));
    EXPECT_FALSE(Holds(*lists[1 - focused]->viewport(), strong));
  }
}

}  // namespace
}  // namespace rws::test
