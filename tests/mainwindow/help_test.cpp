#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QRegularExpression>
#include <QTcpServer>

#include "editors/frmBrief.h"
#include "editors/frmChgAC.h"
#include "editors/frmDogFight.h"
#include "editors/frmStatic.h"
#include "editors/frmWP.h"
#include "editors/frmWPEdit.h"
#include "library/forms/frmFind.h"
#include "mainwindow/frmLines.h"
#include "mainwindow/frmUnsaved.h"
#include "platform/fetch.h"
#include "platform/qt_text.h"
#include "services/forms/frmCam.h"
#include "services/forms/frmPrefs.h"
#include "services/help_file.h"
#include "tests/mainwindow/window_fixture.h"
#include "tests/support/places.h"
#include "tools/frmAddAircraft.h"
#include "tools/frmAddMap.h"
#include "tools/frmBackups.h"
#include "tools/frmChanges.h"
#include "tools/frmCheck.h"
#include "tools/frmCompare.h"
#include "tools/frmEditMany.h"
#include "tools/frmLists.h"
#include "tools/frmSkins.h"
#include "tools/frmView.h"

namespace rws::test {
namespace {

struct HelpTest : WindowTest {
  HelpTest() { Make(); }

  template <class... Forms>
  void AddForms(std::vector<std::unique_ptr<QWidget>>& windows) {
    (windows.push_back(std::make_unique<Forms>(World_, nullptr)), ...);
  }
  static QString HelpText() {
    QFile file(FromPath(SourceFolder() + "/data/" + kHelpFile));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
  }
};

/** Captions of the menu entries and buttons of a window. */
QStringList Captions(const QWidget& window) {
  QStringList captions;
  for (const auto* entry : window.findChildren<QAction*>()) captions << entry->text();
  for (const auto* button : window.findChildren<QAbstractButton*>()) captions << button->text();
  captions.replaceInStrings("&&", "\n").replaceInStrings("&", "").replaceInStrings("\n", "&");
  captions.removeDuplicates();
  // Menus that only pop up have no caption on screen.
  for (const char* other : {"", "...", "Pop"}) captions.removeAll(other);
  return captions;
}

TEST_F(HelpTest, TellsOfEveryWindowMenuEntryAndButton) {
  const QString help = HelpText();
  std::vector<std::unique_ptr<QWidget>> windows;
  windows.push_back(std::move(Window));
  windows.push_back(std::make_unique<frmView>(World_.Services, nullptr));
  windows.push_back(std::make_unique<frmUnsaved>(World_.Services, nullptr));
  windows.push_back(std::make_unique<frmLines>(World_.Services, nullptr));
  AddForms<frmWP, frmWPEdit, frmBrief, frmDogFight, frmStatic, frmChgAC, frmPrefs, frmSkins,
           frmBackups, frmChanges, frmCheck, frmCompare, frmCam, frmFind, frmEditMany, frmLists,
           frmAddAircraft, frmAddMap>(windows);
  ASSERT_FALSE(Captions(*windows[0]).isEmpty());
  for (const auto& window : windows) {
    const QString name = window->objectName();
    EXPECT_TRUE(help.contains("<h2 id=\"" + name + "\">")) << name.toStdString();
    for (const QString& caption : Captions(*window))
      EXPECT_TRUE(help.contains(">" + caption.toHtmlEscaped() + "</"))
          << name.toStdString() << ": " << caption.toStdString();
  }
}

TEST_F(HelpTest, StandsAloneAndItsLinksLead) {
  const QString help = HelpText();
  EXPECT_FALSE(help.contains(QRegularExpression("<script|<img|<link|src=|url\\(|https?:")));
  auto links = QRegularExpression("href=\"([^\"]*)\"").globalMatch(help);
  ASSERT_TRUE(links.hasNext());
  while (links.hasNext()) {
    const QString link = links.next().captured(1);
    EXPECT_TRUE(link.startsWith('#') && help.contains("id=\"" + link.mid(1) + "\""))
        << link.toStdString();
  }
}

TEST_F(HelpTest, OpensFromTheMenuOrSaysWhyNot) {
  World_.Script.Expect(Box.Path("program/RWS.HLP.html") + "\" cannot be shown: the file does not");
  Window->mnuH[frmRWS::kContents]->trigger();
  Box.Write("program/RWS.HLP.html", "help");
  Window->mnuH[frmRWS::kContents]->trigger();
  EXPECT_EQ(Joined(World_.ShellCalls), "open " + Box.Path("program/RWS.HLP.html"));
  Window->show();
  Activate();
  QTest::keyClick(Window.get(), Qt::Key_F1);
  EXPECT_NE(Box.Read("program/RWS.HLP.at.html").find("RWS.HLP.html#frmRWS"), std::string::npos);
  World_.Services.System.Execute = [](auto&, auto&) { return 31; };
  World_.Script.Expect("no program could be started");
  Window->mnuH[frmRWS::kContents]->trigger();
  World_.Script.Expect(" Version 2.0.0\n - ");
  Window->mnuH[frmRWS::kAbout]->trigger();
}

TEST_F(HelpTest, ACheckLeavesCommandsFreeAndClosingCancelsIt) {
  QTcpServer silent;
  ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
  Fetcher fetcher;
  World_.Services.UpdateSite = "http://127.0.0.1";
  auto& shell = World_.Services.System;
  shell.Fetch = [&](const std::string&) {
    return fetcher.Fetch("http://127.0.0.1:" + std::to_string(silent.serverPort()) + "/");
  };
  shell.CancelFetch = [&] { fetcher.Cancel(); };
  Box.Write("missions/a.mis", MissionText());
  Window->show();
  Window->Start();
  QObject::connect(&silent, &QTcpServer::newConnection, [&] {
    EXPECT_FALSE(Window->mnuH[frmRWS::kCheckForUpdates]->isEnabled());
    EXPECT_EQ(fetcher.Fetch("http://127.0.0.1/"), std::nullopt) << "a second one does not start";
    Edit();
    EXPECT_TRUE(Lit());
    Window->Unload();
  });
  // In the program's own event loop, which has to end as well.
  QMetaObject::invokeMethod(Window->mnuH[frmRWS::kCheckForUpdates], &QAction::trigger,
                            Qt::QueuedConnection);
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_TRUE(Doc().Closing);
  EXPECT_TRUE(World_.Script.Boxes.empty());
}

}  // namespace
}  // namespace rws::test
