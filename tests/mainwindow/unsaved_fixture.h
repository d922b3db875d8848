#pragma once

#include <QTimerEvent>

#include "platform/folder_watch.h"
#include "tests/mainwindow/flights_fixture.h"

namespace rws::test {

/** The window over the mission of four flights, "a", and two more, "b" and "c". */
class UnsavedTest : public FlightsTest {
 protected:
  UnsavedTest() {
    for (const char* name : {"b", "c"})
      Box.Write(std::string("missions/") + name + ".mis", MissionText());
    Open();
    HookDialogs();
  }
  /** The next start of the program, after the end of this one or its crash. */
  void StartAnew(const char* folder = "missions") {
    Window.reset();
    Doc() = Document();
    World_.History = History();
    World_.Listeners.clear();
    PrepareStart();
    WriteSetting(World_.Services.Settings, setting::LastDirPath, Box.Path(folder));
    Load();
    HookDialogs();
  }
  void Save() {
    ++World_.Clock.Hour;  // names the backup
    Window->mnuSave->trigger();
  }
  /** The step that was taken back, "" if none was offered. */
  std::string Undo() { return Take(Window->mnuUndo); }
  std::string Redo() { return Take(Window->mnuRedo); }
  /** An edit that leaves Update dark: the markings of the flights that are selected. */
  void EditDark() { Area().mnuAC[FlightArea::kMarkings]->trigger(); }
  void Update() { Click(Window->cmd[frmRWS::kUpdate]); }
  std::string Unsaved() { return Window->lblUnsaved->text().toStdString(); }
  std::string Told() { return Window->staBar->currentMessage().toStdString(); }
  std::string Bars() { return Window->bars->Texts().join('\n').toStdString(); }
  /** Presses a button of the bar that is on show; its captions are given if there is none. */
  std::string Press(const char* caption) {
    std::string captions;
    for (auto* bar : Window->bars->findChildren<MessageBar*>())
      for (auto* button : bar->cmd) {
        // Every letter is taken by the window itself.
        const std::string text = button->text().toStdString();
        if (text == caption) return button->click(), "";
        captions += text + "|";
      }
    return captions + " has no " + caption;
  }
  /** What the folder watch tells some moments after something has changed. */
  void LookOutside() { Q_EMIT Window->findChild<FolderWatch*>()->Changed(); }
  /** The timer that keeps edits for a crash runs out. */
  bool Tick() { return RunOut("recoveryTimer"); }
  /** A timer of the window runs out now; false if it is not running. */
  bool RunOut(const char* name) {
    auto* timer = Window->findChild<QTimer*>(QLatin1String(name));
    if (!timer->isActive()) return false;
    Interval = timer->interval();
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
    return true;
  }
  /** How many missions have edits in "Recovery". */
  std::size_t Kept() {
    std::string names = Box.Exists("program/Recovery") ? Box.Names("program/Recovery") : "";
    std::size_t count = 0;
    for (auto at = names.find(".edits"); at != names.npos; at = names.find(".edits", at + 1))
      ++count;
    return count;
  }

  int Interval = 0;

 private:
  std::string Take(QAction* entry) {
    if (!entry->isEnabled()) return "";
    const QString text = entry->text().remove("&Undo ").remove("&Redo ");
    entry->trigger();
    return text.toStdString();
  }
};

}  // namespace rws::test
