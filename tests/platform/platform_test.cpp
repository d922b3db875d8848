#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMouseEvent>
#include <QProgressDialog>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include "platform/event_pump.h"
#include "platform/form_placement.h"
#include "platform/qt_prompts.h"
#include "platform/qt_text.h"
#include "services/ini_settings.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

/** The settings that earlier versions left were written by `QSettings`. */
TEST(SettingsStore, ReadsAndWritesTheFilesOfQSettings) {
  const Sandbox box;
  constexpr auto kRoot = SettingsRoot::CurrentUser;
  std::string odd = "\xC3\xA9\xD0\x98", mixed;
  for (char c = ' '; c < '\x7F'; ++c) {
    if (c != '/' && c != '\\') odd += c;
    mixed.append(1, '\x01').append(1, c).append(1, c);
  }
  const QString group = "HKEY_CURRENT_USER/Software/" + QString::fromStdString(odd);
  const std::string key = "Software\\" + odd;
  int number = 0;
  for (const std::string text :
       {"", "a", " a ", "C:\\IL 2, \xC3\xA9\\50%; =x", "\xD0\x98\xD0\xB3\xF0\x9F\x98\x80", "\"q\"",
        "a,b , c", "@x", "@ByteArray(x)", "@@", "l\nm\r\n\tn\v", mixed.c_str(), "#;[x]", "42",
        "\xFF\xC3", "a\\"}) {
    SCOPED_TRACE(text);
    const std::string theirs = box.Path(std::to_string(++number)), ours = theirs + ".ours";
    QVariant value = QString::fromStdString(text);
    if (text == "\xFF\xC3") value = QByteArray::fromStdString(text);
    {
      QSettings settings(QString::fromStdString(theirs), QSettings::IniFormat);
      settings.beginGroup(group);
      settings.setValue("Val", value);
    }
    EXPECT_EQ(StoredSetting(box.Read(std::to_string(number)), kRoot, key, "vAL"), text);
    box.Write(std::to_string(number) + ".ours", WithSetting("", kRoot, key, "Val", text));
    QSettings settings(QString::fromStdString(ours), QSettings::IniFormat);
    settings.beginGroup(group);
    EXPECT_EQ(settings.value("Val"), value);
  }
}

TEST(QtPrompts, AskBeforeAFileIsReplacedUnlessItIsOnlyNamed) {
  for (const bool asks : {true, false}) {
    bool confirms = !asks;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      confirms = !dialog->testOption(QFileDialog::DontConfirmOverwrite);
      dialog->reject();
    });
    EXPECT_EQ(MakeQtPrompts().SaveFile({"Save", "Sound|*.wav", "/", "a.wav", asks}), "");
    EXPECT_EQ(confirms, asks);
  }
}

TEST(FormPlacement, ComesBackWhereItWasOrToTheMiddle) {
  World world;
  QWidget form;
  form.setObjectName("frmX");
  form.resize(200, 100);
  form.move(120, 80);
  SaveFormPos(world.Services, form);
  form.move(0, 0);
  LoadFormPos(world.Services, form);
  EXPECT_EQ(form.pos(), QPoint(120, 80));
  for (const char* left : {"-30000", "3000000"}) {
    world.SettingTexts["software\\hollowbyte\\rws edit\\frmxleft"] = left;
    form.move(0, 0);
    LoadFormPos(world.Services, form);
    const QRect screen = form.screen()->availableGeometry();
    EXPECT_EQ(form.pos(), QPoint((screen.width() - 200) / 2, (screen.height() - 100) / 2)) << left;
  }
}

TEST(FormPlacement, AMaximisedWindowKeepsWhereItGoesBackTo) {
  World world;
  struct Window : QWidget {
    Window() {
      setObjectName("frmX");
      setGeometry(20, 30, 300, 200);
      Sides->setObjectName("splX");
      for (int i = 0; i < 2; ++i) Sides->addWidget(new QWidget);
      Sides->resize(400, 300);
    }
    QSplitter* Sides = new QSplitter(this);
  };
  const auto save = [&](const Window& window) {
    SaveFormPos(world.Services, window);
    SaveWindowSize(world.Services, window);
    SaveSplitter(world.Services, *window.Sides);
  };
  Window window, again;
  window.setGeometry(120, 80, 400, 300);
  window.Sides->setSizes({100, 300 - window.Sides->handleWidth()});
  save(window);
  window.showMaximized();
  QCoreApplication::processEvents();
  EXPECT_NE(window.size(), QSize(400, 300));
  save(window);
  LoadWindowSize(world.Services, again);
  LoadFormPos(world.Services, again);
  EXPECT_EQ(again.geometry(), QRect(120, 80, 400, 300));
  LoadMaximized(world.Services, again);
  LoadSplitter(world.Services, *again.Sides);
  EXPECT_TRUE(again.isMaximized());
  EXPECT_NEAR(again.Sides->sizes().value(0), 100, 2);
}

TEST(EventPump, RefusesCommandsAndRemembersAClose) {
  struct Form : QWidget {
    int Keys = 0, Closes = 0;
    void keyPressEvent(QKeyEvent*) override { ++Keys; }
    void closeEvent(QCloseEvent*) override { ++Closes; }
  };
  Form form;
  form.show();
  QApplication::postEvent(&form, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a"));
  QApplication::postEvent(&form, new QCloseEvent);
  EventPump(0).Pump();
  EXPECT_EQ(form.Closes, 0);
  QCoreApplication::processEvents();
  EXPECT_EQ(form.Closes, 1);
  EXPECT_EQ(form.Keys, 0) << "a key pressed during a scan is gone";

  QProgressDialog progress(&form);
  progress.setMinimumDuration(1 << 30);
  progress.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&progress));
  const QPointF middle = progress.findChild<QPushButton*>()->geometry().center();
  QWindow* window = progress.windowHandle();
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
    QApplication::postEvent(
        window, new QMouseEvent(type, middle, window->mapToGlobal(middle), Qt::LeftButton,
                                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                                Qt::NoModifier));
  EventPump(0).Pump();
  EXPECT_TRUE(progress.wasCanceled()) << "what ends the scan is no command to refuse";
}

}  // namespace
}  // namespace rws::test
