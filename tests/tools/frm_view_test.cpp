#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QTest>
#include <QTimer>
#include <vector>

#include "platform/images.h"
#include "services/faults.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"
#include "tools/frmView.h"

namespace rws::test {
namespace {

/** Red above, blue below. */
QImage Skin() {
  QImage skin(1, 2, QImage::Format_RGB32);
  skin.setPixel(0, 0, qRgb(200, 0, 0));
  skin.setPixel(0, 1, qRgb(0, 0, 200));
  return skin.scaled(64, 64);
}

std::string Encoded(const QImage& image, const char* format) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&buffer, format)) << format;
  return buffer.data().toStdString();
}

std::string Number(std::uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i));
  return text;
}

/** A BMP with this header; its pixels follow a palette of 256 greys. */
std::string Bmp(std::uint32_t width, std::uint32_t height, std::uint32_t compression,
                const std::string& pixels) {
  std::string palette;
  for (std::uint64_t i = 0; i < 256; ++i) palette += Number(i * 0x010101, 4);
  return "BM" + Number(0, 8) + Number(54 + 1024, 4) + Number(40, 4) + Number(width, 4) +
         Number(height, 4) + Number(1, 2) + Number(8, 2) + Number(compression, 4) +
         std::string(20, 0) + palette + pixels;
}

TEST(ReadPicture, GoesByTheContentAndClearsWhatRunsLeaveOut) {
  const Sandbox box;
  const FileSystem files;
  box.Write("Skins/Red.BMP", Encoded(Skin(), "PNG"));
  EXPECT_EQ(qBlue(ReadPicture(files, box.Path("skins\\red.bmp")).pixel(5, 60)), 200);
  // Four pixels of 7, end of line, two of 250, end of picture.
  const std::string runs("\4\7\0\0\2\xFA\0\1", 8);
  const QImage read = ReadPicture(files, box.Write("rle.bmp", Bmp(4, 2, 1, runs)));
  EXPECT_EQ(qRed(read.pixel(1, 0)), 250);
  EXPECT_EQ(qRed(read.pixel(3, 0)), 0) << "a pixel left out is no chance value";
  EXPECT_EQ(qRed(read.pixel(0, 1)), 7);
  // Its upper row comes first.
  const std::string down = box.Write("down.bmp", Bmp(4, 0u - 3, 0, std::string(12, 9)));
  QSize size;
  EXPECT_EQ(ReadLargePicture(files, down, 4, size).width(), 2);
  EXPECT_EQ(size, QSize(4, 3));
  const std::string flat = box.Write("flat.bmp", Bmp(40, 1, 0, std::string(40, 9)));
  EXPECT_EQ(ReadLargePicture(files, flat, 4, size).size(), QSize(13, 1));
}

TEST(ReadPicture, NamesTheFileAndTheReasonOfAFailure) {
  const Sandbox box;
  const FileSystem files;
  const std::string skin = Encoded(Skin(), "BMP"), photo = Encoded(Skin(), "PNG");
  const struct {
    const char* Name;
    std::string Bytes;
    const char* Reason;
  } cases[] = {
      {"empty.bmp", "", "the file is empty"},
      {"link.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>", "it is no BMP"},
      {"head.bmp", skin.substr(0, 40), "the file is cut short"},
      {"cut.bmp", skin.substr(0, skin.size() - 1), "the file is cut short"},
      {"cut.png", photo.substr(0, 60), ""},
      {"wide.bmp", Bmp(16385, 1, 0, ""), "it claims 16385 x 1 pixels"},
      {"tall.bmp", Bmp(1, 16385, 0, ""), "it claims 1 x 16385 pixels"},
      {"area.bmp", Bmp(16384, 4097, 1, ""), "it claims 16384 x 4097 pixels"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    const std::string path = box.Write(c.Name, c.Bytes);
    std::string text;
    Trap([&] { ReadPicture(files, path); }, [&](const Fault& caught) { text = caught.Text; });
    EXPECT_NE(text.find(path), std::string::npos) << text;
    EXPECT_NE(text.find(c.Reason), std::string::npos) << text;
  }
}

TEST(View, StretchesThePictureOverItsOuterSizeAndComesBackAsItWas) {
  const Sandbox box;
  World world;
  QSize shownSize;
  QWidget parent;
  parent.show();
  {
    frmView view(world.Services, &parent);
    view.FileName = box.Write("Red Star.bmp", Encoded(Skin(), "BMP"));
    view.LoadForm();
    view.show();
    view.resize(700, 300);
    EXPECT_EQ(view.img->geometry(), QRect(QPoint(), view.frameGeometry().size()));
    EXPECT_GT(qBlue(view.grab().toImage().pixel(350, 290)), 190) << "distorted, not cut";
    EXPECT_EQ(view.img->accessibleName(), "Red Star");

    view.resize(50, 300);
    EXPECT_EQ(view.frameGeometry().width(), 134) << "2000 twips";
    EXPECT_EQ(view.height(), 300) << "only the direction that is too small snaps back";
    view.img->resize(1, 1);
    QTest::mouseClick(&view, Qt::RightButton);
    EXPECT_EQ(view.img->width(), 1);
    QTest::mouseClick(&view, Qt::LeftButton);
    EXPECT_EQ(view.img->width(), 134);

    view.move(90, 60);
    view.resize(400, 300);
    shownSize = view.frameGeometry().size();
    view.showMaximized();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.width() > shownSize.width(); }));
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_FALSE(view.isVisible());
  }
  const std::string base = "software\\hollowbyte\\rws edit\\frmview";
  EXPECT_EQ(world.SettingTexts[base + "width"], std::to_string(shownSize.width() * 15));
  EXPECT_EQ(world.SettingTexts[base + "height"], std::to_string(shownSize.height() * 15));
  EXPECT_EQ(world.SettingTexts[base + "left"], "1350");

  world.SettingTexts[base + "height"] = "9000000";
  QTimer::singleShot(0, [&] {
    auto* view = qobject_cast<frmView*>(QApplication::activeModalWidget());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->windowTitle(), "RWS Edit - Red Star");
    EXPECT_EQ(view->frameGeometry().size(),
              QSize(shownSize.width(), view->screen()->availableSize().height()));
    EXPECT_EQ(view->pos(), QPoint(90, 60));
    view->close();
  });
  EXPECT_TRUE(ViewImage(world.Services, &parent, box.Path("red star.BMP"), "RWS Edit - Red Star"));
}

TEST(View, SaysWhyAPictureIsNotShown) {
  const Sandbox box;
  World world;
  for (const std::string& path : {box.Path("gone.bmp"), box.Write("bad.jpg", "no picture")}) {
    world.Script.Expect(path);
    EXPECT_FALSE(ViewImage(world.Services, nullptr, path, "x"));
    EXPECT_EQ(world.Script.Boxes.back().Icon, Icon::Critical);
    EXPECT_EQ(world.Script.Boxes.back().Title, kProgramTitle);
    EXPECT_NE(Joined(world.Log).find(path), std::string::npos);
  }
}

}  // namespace
}  // namespace rws::test
