// The program with its window, worked by chance until it is killed; and the look at what that has
// left. `scripts/kill-test.sh` runs both.

#include <QApplication>
#include <QTest>
#include <QTimerEvent>
#include <cstdio>
#include <cstring>
#include <random>

#include "app/program.h"
#include "controls/message_bar.h"
#include "platform/desktop.h"
#include "platform/qt_text.h"
#include "services/checksum.h"
#include "services/paths.h"
#include "session/recording.h"
#include "session/recovery.h"
#include "tests/kill/after_kill.h"
#include "tests/kill/diary.h"

namespace rws::test {
namespace {

/** Also one that a rename has left on its way, which is listed and written too. */
bool IsMission(const std::string& path) {
  return path.ends_with(".mis") || path.ends_with(".mistmp");
}

/** A user who does something else every moment. */
class Driver {
 public:
  Driver(Program& program, const std::string& folder, unsigned seed)
      : session_(program.Session),
        window_(program.Window),
        diary_(BuildPath(folder, "diary")),
        chance_(seed) {
    AnswerQuestions();
    session_.Services.Files.BeforeStep = [this](const FileStep& step) { Watch(step); };
    window_.Popups.ShowDialog = [](QDialog& dialog) { dialog.reject(); };
    window_.AskLines = [this](const auto&) {
      return std::optional(Any(2) == 0 ? UntouchedLines::Anew : UntouchedLines::Keep);
    };
  }

  void DoSomething() {
    static constexpr void (Driver::*kDeeds[])() = {
        &Driver::EditWeather,  &Driver::EditWeather, &Driver::EditWeather, &Driver::EditConstant,
        &Driver::EditConstant, &Driver::KeepEdits,   &Driver::KeepEdits,   &Driver::KeepEdits,
        &Driver::Update,       &Driver::Update,      &Driver::Update,      &Driver::Save,
        &Driver::Save,         &Driver::GoElsewhere, &Driver::GoElsewhere, &Driver::GoElsewhere,
        &Driver::Rename,       &Driver::Rename,      &Driver::Rename,      &Driver::RenameAll,
        &Driver::Undo,         &Driver::Redo,        &Driver::PressBar};
    (this->*kDeeds[Any(std::size(kDeeds))])();
    Rest();
  }

 private:
  std::size_t Any(std::size_t count) { return chance_() % count; }

  void AnswerQuestions() {
    Prompts& ask = session_.Services.Ask;
    ask.MsgBox = [this](auto&&, Buttons buttons, auto&&...) {
      if (buttons == Buttons::Ok || buttons == Buttons::OkCancel) return Answer::Ok;
      if (buttons == Buttons::YesNo || Any(2) == 0) return Answer::Yes;
      diary_.MayDrop();
      return Any(2) == 0 ? Answer::No : Answer::Cancel;
    };
    ask.InputBox = [this](const std::string& prompt, auto&&...) {
      const bool isNumber = prompt.find("number") != prompt.npos;
      return std::optional(isNumber ? std::to_string(Any(90)) : "n" + std::to_string(Any(100000)));
    };
    ask.OpenFiles = [](auto&&...) { return std::vector<std::string>(); };
    ask.SaveFile = [](auto&&...) { return std::string(); };
    ask.Folder = [](auto&&...) { return std::string(); };
  }

  /** Each text of a mission is in the diary before the first of its bytes is on disk, and what an
      edit has taken back before what was kept of it is deleted. */
  void Watch(const FileStep& step) {
    if (step.Action == "delete" && step.Path.ends_with(".edits")) NoteClean();
    if (step.Action == "create") written_.clear();
    if (step.Action == "write") written_ += step.Bytes;
    if (step.Action != "flush" || !IsMission(step.Path)) return;
    diary_.Writes(MarkIn(written_), Sha1(written_));
  }

  void EditWeather() {
    auto* box = window_.missionPanel->cboWeather;
    box->SelectRow(static_cast<int>(Any(static_cast<std::size_t>(box->count()))));
  }
  void EditConstant() { window_.missionPanel->chkWL->click(); }
  /** The timer runs out that keeps edits for a crash. */
  void KeepEdits() {
    QTimer* timer = KeepTimer();
    if (!timer->isActive()) return;
    MayKeep();
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
  }
  /** What is unsaved may be kept by what comes next, and what no longer is, forgotten. */
  void MayKeep() {
    Record(session_, nullptr);
    for (const auto& [mark, sum] : UnsavedTexts()) diary_.Keeps(mark, sum);
    NoteClean();
  }
  void NoteClean() {
    std::set<std::string> unsaved;
    for (const auto& [mark, sum] : UnsavedTexts()) unsaved.insert(mark);
    for (const auto& mark : dirty_)
      if (!unsaved.contains(mark)) diary_.Clean(mark);
    std::erase_if(dirty_, [&](const auto& mark) { return !unsaved.contains(mark); });
  }
  QTimer* KeepTimer() { return window_.findChild<QTimer*>("recoveryTimer"); }
  void Update() {
    diary_.MaySave();
    window_.cmd[frmRWS::kUpdate]->click();
  }
  void Save() {
    diary_.MaySave();
    window_.mnuSave->trigger();
  }
  void GoElsewhere() {
    diary_.MaySave();
    auto* list = window_.lstMission;
    const int rows = list->model()->rowCount();
    if (rows == 0) return;
    const int row = static_cast<int>(Any(static_cast<std::size_t>(rows)));
    const QRect place = list->visualRect(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
  }
  void Rename() {
    diary_.MaySave();
    MayKeep();
    window_.mnuCases[Any(window_.mnuCases.size())]->trigger();
  }
  void RenameAll() {
    diary_.MaySave();
    MayKeep();
    window_.mnuTools[frmRWS::kRenameAll]->trigger();
  }
  void Undo() {
    if (window_.mnuUndo->isEnabled()) diary_.MayDrop();
    window_.mnuUndo->trigger();
  }
  void Redo() {
    if (window_.mnuRedo->isEnabled()) diary_.MayDrop();
    window_.mnuRedo->trigger();
  }
  /** What the program offers above the list. */
  void PressBar() {
    const auto bars = window_.bars->findChildren<MessageBar*>();
    if (bars.isEmpty()) return;
    const auto& buttons = bars[static_cast<int>(Any(static_cast<std::size_t>(bars.size())))]->cmd;
    if (buttons.empty()) return;
    diary_.MayDrop();
    buttons[static_cast<int>(Any(static_cast<std::size_t>(buttons.size())))]->click();
  }

  /** Mark and text, as saving would write it, of each mission with unsaved edits. */
  std::vector<std::pair<std::string, std::string>> UnsavedTexts() {
    std::vector<std::pair<std::string, std::string>> texts;
    for (const auto& path : UnsavedMissions(session_)) {
      const Mission mission = Thaw(*session_.History.Known.at(path).Own);
      const std::string text = TextOf(session_.Services, {"", path, "", mission, ""});
      texts.emplace_back(MarkIn(text), Sha1(text));
    }
    return texts;
  }

  /** Nothing is being done: what stands now must stand until the next deed. */
  void Rest() {
    const FileSystem files;
    const std::string& folder = session_.Doc.MissionDir;
    // It runs as long as there are edits that have not been kept.
    const bool areKept = !KeepTimer()->isActive();
    std::set<std::string> unsaved;
    for (const auto& [mark, sum] : UnsavedTexts()) {
      unsaved.insert(mark);
      if (areKept) diary_.Kept(mark, sum);
    }
    for (const auto& entry : files.ListFolder(folder)) {
      if (!IsMission(entry.Name)) continue;
      const std::string bytes = files.ReadFile(BuildPath(folder, entry.Name));
      const std::string mark = MarkIn(bytes), sum = Sha1(bytes);
      if (std::exchange(rests_[mark], sum) != sum) diary_.Rests(mark, sum);
      const bool isClean = !unsaved.contains(mark);
      if (isClean && dirty_.erase(mark) > 0) diary_.Clean(mark);
      if (!isClean) dirty_.insert(mark);
    }
  }

  Session& session_;
  frmRWS& window_;
  Diary diary_;
  std::mt19937 chance_;
  std::string written_;
  std::map<std::string, std::string> rests_;
  std::set<std::string> dirty_;
};

void Say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

/** Never ends by itself. */
int Work(QApplication& application, const std::string& folder, unsigned seed) {
  Program program;
  program.Session.Services.AppPath = BuildPath(folder, "program");
  Driver driver(program, folder, seed);
  program.Window.LoadForm(BuildPath(folder, "missions"));
  if (program.Session.Doc.Closing) return 3;
  Say("ready");
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { driver.DoSomething(); });
  timer.start(0);
  QApplication::exec();
  (void)application;
  return 3;
}

int Check(const std::string& folder, bool begins) {
  Services services = MakeDesktopServices();
  services.AppPath = BuildPath(folder, "program");
  if (begins) {
    BeginDiary(services, folder);
    return 0;
  }
  const AfterKill found = LookAfterKill(services, folder);
  if (!found.Wrong.empty()) Say(found.Wrong);
  Say("found " + std::to_string(found.GivenBack) + " " + std::to_string(found.HalfRenamed) + " " +
      std::to_string(found.Promised) + " " + std::to_string(found.Offered));
  return found.Wrong.empty() ? 0 : 1;
}

}  // namespace
}  // namespace rws::test

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "Usage: %s FOLDER begin | check | SEED\n", argv[0]);
    return 2;
  }
  QApplication application(argc, argv);
  const std::string folder = argv[1], what = argv[2];
  if (what == "begin" || what == "check") return rws::test::Check(folder, what == "begin");
  return rws::test::Work(application, folder, static_cast<unsigned>(std::stoul(what)));
}
