#include <QApplication>
#include <QTcpServer>

#include "platform/fetch.h"
#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

struct HelpTest : WindowTest {
  HelpTest() { Make(); }
};

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
