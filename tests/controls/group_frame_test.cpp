#include "controls/group_frame.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLineEdit>
#include <QVBoxLayout>

namespace rws::test {
namespace {

template <class Frame>
QImage Painted(const QRect& part) {
  Frame frame("Caption");
  (new QVBoxLayout(&frame))->addWidget(new QLineEdit("text"));
  frame.resize(200, 100);
  frame.ensurePolished();
  frame.layout()->activate();
  QImage image(frame.size(), QImage::Format_RGB32);
  image.fill(Qt::green);
  frame.render(&image, part.topLeft(), part);
  return image;
}

TEST(GroupFrame, LooksAsAnyOtherWhateverPartIsPainted) {
  for (const QRect& part : {QRect(0, 0, 200, 100), QRect(60, 50, 80, 20), QRect(0, 0, 120, 12)})
    EXPECT_EQ(Painted<GroupFrame>(part), Painted<QGroupBox>(part)) << part.height();
}

}  // namespace
}  // namespace rws::test
