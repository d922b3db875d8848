#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMouseEvent>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include "platform/event_pump.h"
#include "platform/form_placement.h"
#include "platform/qt_prompts.h"
#include "platform/qt_text.h"
#include "platform/settings_store.h"
#include "services/faults.h"
#include "services/setting_values.h"
#include "tests/support/doubles.h"
#include "tests/support/sandbox.h"

namespace rws::test {
namespace {

TEST(SettingsStore, KeepsValuesInAnIniFile) {
  const Sandbox box;
  const QString file = QString::fromStdString(box.Path("settings.ini"));
  constexpr auto kUser = SettingsRoot::CurrentUser, kClasses = SettingsRoot::ClassesRoot;
  const Settings settings{std::string(kSettingsBaseKey), MakeSettingsStore(file)};
  const std::string odd = "C:\\IL 2, \xC3\xA9\\50%\\\xFF; =x";
  WriteSetting(settings, setting::GamePath, odd);
  SetRegValue(settings, kUser, kSetPath, "BackUp", std::string("False"));
  SetRegValue(settings, kUser, kSetPath, "Number", 42);
  SetRegValue(settings, kClasses, "rws.mis", "", std::string("open"));
  const Settings again{std::string(kSettingsBaseKey), MakeSettingsStore(file)};
  EXPECT_EQ(ReadSetting(again, setting::GamePath), odd);
  EXPECT_FALSE(ReadFlag(again, setting::Backup)) << "both spellings are one value";
  EXPECT_EQ(GetRegValue(again, kUser, kSetPath, "number", ""), "42");
  DeleteRegKey(again, kUser, kSettingsBaseKey);
  EXPECT_EQ(ReadSetting(again, setting::GamePath), "");
  EXPECT_EQ(GetRegValue(again, kClasses, "rws.mis", "", ""), "open");
  box.Write("settings.ini", "junk\n[open\n%zz=\n");
  WriteSetting(settings, setting::GamePath, odd);
  EXPECT_EQ(ReadSetting(again, setting::GamePath), odd) << "beside what another has put there";
  const QString nowhere = file + "/below.ini";
  const Settings lost{std::string(kSettingsBaseKey), MakeSettingsStore(nowhere)};
  std::string told;
  Trap([&] { WriteSetting(lost, setting::GamePath, odd); },
       [&](const Fault& caught) { told = caught.Text; });
  EXPECT_NE(told.find(ToPath(QDir::toNativeSeparators(nowhere))), told.npos) << told;
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
