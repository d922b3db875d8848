#include "controls/list_colors.h"

#include <gtest/gtest.h>

namespace rws::test {
namespace {

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

}  // namespace
}  // namespace rws::test
