#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

#include "editors/frmBrief.h"
#include "platform/qt_text.h"
#include "services/paths.h"
#include "tests/mainwindow/window_fixture.h"

namespace rws::test {
namespace {

class FoldersTest : public WindowTest {
 protected:
  FoldersTest() {
    for (const char* name : {"x", "y"})
      Box.Write(std::string("other/") + name + ".mis", MissionText());
    OpenThree();
    Window->Popups.ShowDialog = [this](QDialog& dialog) {
      Dialogs.push_back(dynamic_cast<frmBrief&>(dialog).BriefName);
    };
  }

  std::string Folder() { return GetFileName(Doc().MissionDir); }
  /** The entries of the menu as it opens, without separators; those that are disabled in brackets.
   */
  std::string Recent() {
    Q_EMIT Window->mnuRecent->aboutToShow();
    std::vector<std::string> entries;
    for (const auto* entry : Window->mnuRecent->actions()) {
      if (entry->isSeparator()) continue;
      const std::string text = GetFileName(ToPath(entry->toolTip()));
      entries.push_back(entry->isEnabled() ? text : "(" + text + ")");
    }
    return Joined(entries);
  }
  /** Drags these onto a control and drops them; "" if they were refused, else the action. */
  std::string Drop(QWidget* target, const std::vector<std::string>& paths,
                   Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction) {
    QMimeData data;
    QList<QUrl> urls;
    for (const auto& path : paths) urls << QUrl::fromLocalFile(FromPath(path));
    data.setUrls(urls);
    data.setText("as text");
    // With this key the sender means a move.
    constexpr auto kKey = Qt::ShiftModifier;
    QDragEnterEvent enter(QPoint(5, 5), offered, &data, Qt::LeftButton, kKey);
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) return "";
    EXPECT_NE(enter.dropAction(), Qt::MoveAction) << "the sender would delete the file";
    QDropEvent drop(QPointF(5, 5), offered, &data, Qt::LeftButton, kKey);
    QApplication::sendEvent(Window.get(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(Folder(), "missions") << "nothing happens before the drop has ended";
    QCoreApplication::processEvents();
    return drop.dropAction() == Qt::CopyAction ? "copy" : "link";
  }

  std::vector<std::string> Dialogs;
};

TEST_F(FoldersTest, RecentFoldersComeNewestFirstAndAskAboutEdits) {
  EXPECT_FALSE(Window->mnuRecent->menuAction()->isEnabled());
  for (const char* name : {"a & b", "other", "missions"}) {
    Box.MakeFolder(name);
    World_.Script.ExpectPath("Select a mission directory", Box.Path(name));
    Window->mnuOpenFolder->trigger();
  }
  EXPECT_EQ(Recent(), "missions|other|a & b|Clear");
  EXPECT_TRUE(Window->mnuRecent->actions()[2]->text().endsWith("a && b"));
  EXPECT_EQ(ToPath(Window->mnuRecent->actions()[2]->toolTip()), Box.Path("a & b"));
  EXPECT_TRUE(Window->mnuRecent->actions()[2]->text().startsWith("&3 "));
  World_.Services.Files.MoveFile(Box.Path("a & b"), Box.Path("a & c"));
  EXPECT_EQ(Recent(), "missions|other|(a & b)|Clear");

  Edit();
  World_.Script.Expect(kQuestion, Answer::Cancel);
  Window->mnuRecent->actions()[1]->trigger();
  EXPECT_EQ(Folder(), "missions");
  EXPECT_TRUE(Lit());
  World_.Script.Expect(kQuestion, Answer::Yes);
  Window->mnuRecent->actions()[1]->trigger();
  EXPECT_EQ(Folder() + "|" + Shown(), "other|x");
  EXPECT_NE(FileText("a"), MissionText()) << "the edit was saved";
  EXPECT_EQ(Recent(), "other|missions|(a & b)|Clear");
  EXPECT_EQ(ReadSetting(World_.Services.Settings, setting::LastDirPath), Box.Path("other"));
  Window->mnuRecent->actions().last()->trigger();
  EXPECT_FALSE(Window->mnuRecent->menuAction()->isEnabled());
  EXPECT_EQ(Recent(), "Clear");
}

TEST_F(FoldersTest, RereadAsksAboutEditsAndStaysAtItsMission) {
  ClickRow(1);
  Box.Write("missions/aa.mis", MissionText());
  Edit();
  World_.Script.Expect(kQuestion, Answer::Cancel);
  Window->mnuReread->trigger();
  EXPECT_EQ(Window->lstMission->RowCount(), 3);
  World_.Script.Expect(kQuestion, Answer::No);
  Window->mnuReread->trigger();
  EXPECT_EQ(Window->lstMission->RowCount(), 4);
  EXPECT_EQ(Shown(), "b");
  EXPECT_EQ(Row(), 2);
  EXPECT_EQ(FileText("b"), MissionText());
}

TEST_F(FoldersTest, WhatIsDroppedIsOpened) {
  Box.Write("other/y.properties", "Name Y");
  Box.Write("other/readme.txt", "");
  Box.MakeFolder("other/folder.mis");
  QWidget* window = Window.get();
  const auto path = [this](const char* name) { return Box.Path(name); };
  const struct {
    std::vector<std::string> Paths;
    std::string Shown, Dialog;
  } rows[] = {{{path("other")}, "x", ""},
              {{path("other/y.mis")}, "y", ""},
              {{path("other/Y.MIS"), path("other/x.mis")}, "y", ""},
              {{path("other/readme.txt"), path("other/y.mis")}, "y", ""},
              {{path("other/y.properties")}, "y", path("other/y.properties")},
              {{path("other/readme.txt")}, "", ""},
              {{path("other/gone.mis")}, "", ""},
              {{path("other/folder.mis")}, "", ""}};
  for (const auto& row : rows)
    for (QWidget* target : {window, static_cast<QWidget*>(Panel().txtWeather)}) {
      SCOPED_TRACE(Joined(row.Paths) + " " + target->objectName().toStdString());
      Doc().MissionDir = Box.Path("missions");
      Doc().MissionFiles.clear();
      Doc().CurMission = 0;
      Window->Start();
      Dialogs.clear();
      EXPECT_EQ(Drop(target, row.Paths), row.Shown.empty() ? "" : "copy");
      const std::string shown = row.Shown.empty() ? "missions|a" : "other|" + row.Shown;
      EXPECT_EQ(Folder() + "|" + Shown(), shown);
      EXPECT_EQ(Joined(Dialogs), row.Dialog);
      EXPECT_NE(Panel().txtWeather->text(), "as text");
    }
}

TEST_F(FoldersTest, ADropIsRefusedWhereItCouldDoHarm) {
  QWidget* window = Window.get();
  EXPECT_EQ(Drop(window, {Box.Path("other")}, Qt::MoveAction), "") << "the sender would delete it";
  {
    QDialog modal(window);
    modal.setModal(true);
    modal.show();
    EXPECT_EQ(Drop(window, {Box.Path("other")}), "") << "a question is open";
  }
  Edit();
  World_.Script.Expect(kQuestion, Answer::Cancel);
  EXPECT_EQ(Drop(window, {Box.Path("other")}, Qt::LinkAction), "link");
  EXPECT_EQ(Folder(), "missions");
  EXPECT_TRUE(Lit());

  QMimeData text;
  text.setText("750");
  QDragEnterEvent enter(QPoint(2, 2), Qt::CopyAction, &text, Qt::LeftButton, {});
  QApplication::sendEvent(Panel().txtWeather, &enter);
  EXPECT_TRUE(enter.isAccepted()) << "text can still be dragged there";
  QDragEnterEvent elsewhere(QPoint(2, 2), Qt::CopyAction, &text, Qt::LeftButton, {});
  QApplication::sendEvent(window, &elsewhere);
  EXPECT_FALSE(elsewhere.isAccepted());
}

TEST_F(FoldersTest, AnUpdateOnTheWayDoesNotTakeTheMissionThatIsWanted) {
  Box.Write("other/b.mis", MissionText());
  Edit();
  World_.Script.Expect(kQuestion, Answer::Yes);
  Drop(Window.get(), {Box.Path("other/b.mis")});
  EXPECT_EQ(Folder() + "|" + Shown(), "other|b");
  Window->OpenPath(Box.Path("nowhere"));
  EXPECT_TRUE(Window->staBar->currentMessage().endsWith("nowhere\" was not found."));
  EXPECT_EQ(Folder(), "other");
}

/** Two starts over a double of the desktop. */
struct SecondStartTest : FoldersTest {
  void LoadFirst() {
    PrepareStart();
    WriteSetting(World_.Services.Settings, setting::LastDirPath, Box.Path("missions"));
    World_.Services.System.HearOtherStarts = [this](auto heard) { Heard = heard; };
    Load();
  }

  std::function<void(const std::string&)> Heard;
};

TEST_F(SecondStartTest, TellsTheFirstWhatItWasToOpenAndNothingElse) {
  std::vector<std::string> told;
  World second(Box.Path("program"));
  second.Services.System.TakeInstance = [] { return false; };
  second.Services.System.TellInstance = [&](const std::string& path) { told.push_back(path); };
  const std::string x = Box.Path("other/x.mis"), comma = Box.Write("other/a,b.mis", "");
  for (const auto& line : {std::string(), std::string("-restore"), x, "\"" + x + "\"", x + ",tmp",
                           comma, Box.Path("other/../gone.mis")}) {
    second.Script.Expect("Only one instance may be running at one time.");
    second.Doc.Closing = false;
    frmRWS(second).LoadForm(line);
  }
  EXPECT_EQ(Joined(told), Joined({x, x, x, comma, Box.Path("gone.mis")}));
  EXPECT_EQ(second.SettingTexts, World().SettingTexts);
}

TEST_F(SecondStartTest, IsOfferedByTheFirst) {
  LoadFirst();
  EXPECT_EQ(Recent(), "missions|Clear") << "where the program starts counts as opened";
  Heard(Box.Path("gone.mis"));
  Heard(Box.Path("other/y.mis"));
  EXPECT_EQ(Folder(), "missions") << "nothing changes before the click";
  const std::string asked = Box.Path("other/y.mis");
  EXPECT_EQ(Window->bars->Texts(),
            QStringList(FromPath("\"" + asked + "\" was asked for by a second start.")));
  Edit();
  World_.Script.Expect(kQuestion, Answer::No);
  Window->bars->Bar("second start")->cmd[0]->click();
  EXPECT_EQ(Folder() + "|" + Shown(), "other|y");
  EXPECT_TRUE(Window->bars->Texts().isEmpty());
  Window.reset();
  Heard(asked);
}

}  // namespace
}  // namespace rws::test
