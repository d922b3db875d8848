// A user who acts by chance at the real window, and looks at it after each action.
//
//   robot [--seconds N | --actions N] [--seed S] [--length N] [--shrink N]
//   robot --replay SEED NUMBER... [told]
//
// A run is made of episodes, each in a process of its own that starts from the same files. One that
// ends in a fault is made shorter for some seconds; the numbers of the actions that are left are
// printed, to be played again. "told" says what each action does.

#include <unistd.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QLockFile>
#include <QProcess>
#include <QTimer>
#include <csignal>
#include <iostream>
#include <numeric>
#include <optional>

#include "session/current.h"
#include "session/recording.h"
#include "tests/robot/checks.h"
#include "tests/robot/hand.h"

namespace rws::robot {
namespace {

constexpr int kBroken = 3, kHung = 4;
constexpr char kFound[] = "FOUND ", kPlayed[] = "PLAYED ";

/** One run of the program from its start on: some of the actions of a seed. */
struct Episode {
  std::uint32_t Seed = 0;
  std::vector<std::uint32_t> Numbers;
};

/** Ends the process when no action has come to its end for long. */
void EndHung(int) {
  const std::string& deed = LastDeed();
  constexpr std::string_view kText = "FOUND 0 hang: no end of ";
  const bool isTold = write(1, kText.data(), kText.size()) > 0 &&
                      write(1, deed.data(), deed.size()) > 0 && write(1, "\n", 1) > 0;
  _exit(isTold ? kHung : kBroken);
}

/** Plays one episode from the event loop, also from those of the dialogs that it opens. */
class Player : public QObject {
 public:
  Player(Stage& stage, const Episode& episode, bool isTold)
      : stage_(stage), checks_(stage), episode_(episode), isTold_(isTold) {}

  /** The next turn, when all that waits for the event loop is done. */
  void PlayNext(int milliseconds = 0) {
    auto* timer = new QTimer(this);
    timer->setSingleShot(true);
    // Twice: what was to be done at once may have begun to wait later than this.
    connect(timer, &QTimer::timeout, this, [this, timer, waited = false]() mutable {
      if (!std::exchange(waited, true)) return timer->start(0);
      timer->deleteLater();
      Turn();
    });
    timer->start(milliseconds);
  }

 private:
  void Turn() {
    if (stage_.Pumping || stage_.IsBusy()) return PlayNext(1);
    constexpr unsigned kMostSeconds = 60;
    alarm(kMostSeconds);
    const bool isIdle = depth_ == 0 && !QApplication::activePopupWidget();
    if (isIdle && !stage_.World.Doc.Closing) Judge(checks_.Look());
    if (depth_ == 0 && !stage_.Window->isVisible()) return End();
    const bool isOver = next_ >= episode_.Numbers.size();
    if (isOver && isIdle) return Judge(checks_.LookAtTheEnd()), End();
    if (isOver && ++closings_ > 200) return Judge("dialog: it does not close");
    const Action action = isOver ? Action{kClose, {0, 0, 0, closings_}}
                                 : ActionOf(episode_.Seed, episode_.Numbers[next_++]);
    PlayNext();
    stage_.Begin(action.N[3]);
    ++depth_;
    Perform(stage_, action);
    --depth_;
    if (isTold_) Tell();
  }

  void Tell() const {
    const auto list = [](const char* what, const std::vector<std::string>& texts) {
      for (const auto& text : texts) std::cout << "    " << what << ": " << text << '\n';
    };
    std::cout << next_ << ' ' << depth_ << ' ' << LastDeed() << '\n';
    list("log", stage_.World.Log);
    list("asked", stage_.Asked);
    list("unsaved", UnsavedMissions(stage_.World));
    if (!stage_.World.Doc.Missions.empty())
      std::cout << "    shown: " << CurrentMission(stage_.World).BaseName << ", flight "
                << stage_.World.Doc.CurFlight << '\n';
    std::cout << "    bars: " << stage_.Window->bars->Texts().join(u'|').toStdString()
              << stage_.Window->staBar->currentMessage().toStdString() << '\n';
  }

  /** Ends the process at once: what is behind a fault tells no more. */
  void Judge(const std::string& found) {
    if (found.empty()) return;
    std::cout << kFound << next_ << " " << found << "\n  last: " << LastDeed() << std::endl;
    stage_.~Stage();
    std::_Exit(kBroken);
  }

  void End() {
    if (!ended_) std::cout << kPlayed << next_ << std::endl, QCoreApplication::exit(0);
    ended_ = true;
  }

  Stage& stage_;
  Checks checks_;
  const Episode& episode_;
  bool isTold_, ended_ = false;
  std::size_t next_ = 0;
  int depth_ = 0;
  std::uint32_t closings_ = 0;
};

/** Names the folder of a run, which is shown and sorted by, the same in all runs but for those that
    go on at the same time. */
class OneFolder {
 public:
  OneFolder() {
    for (int number = 0; !lock_ || !lock_->tryLock(); ++number) {
      test::Sandbox::OneName = "rws robot " + std::to_string(number);
      lock_.emplace(QDir::temp().filePath(QString::fromStdString(test::Sandbox::OneName)));
      lock_->setStaleLockTime(0);
    }
    // What a run that was ended has left.
    const test::Sandbox rest;
  }

 private:
  std::optional<QLockFile> lock_;
};

int Replay(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // The order of what is hashed is the same in each run.
  QHashSeed::setDeterministicGlobalSeed();
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  QApplication application(argc, argv);
  QApplication::setStyle("Fusion");
  QApplication::setQuitOnLastWindowClosed(false);
  // No time passes between two clicks or keys, and none counts as the other's second one.
  QApplication::setDoubleClickInterval(0);
  QApplication::setKeyboardInputInterval(-1);
  std::signal(SIGALRM, EndHung);
  QStringList words = QApplication::arguments().mid(2);
  const bool isTold = words.removeAll("told") > 0;
  Episode episode{words.takeFirst().toUInt(), {}};
  for (const auto& word : words) episode.Numbers.push_back(word.toUInt());
  const OneFolder folder;
  Stage stage(SetupOf(episode.Seed));
  Player player(stage, episode, isTold);
  player.PlayNext();
  return QApplication::exec();
}

/** How an episode has ended. */
struct Outcome {
  /** What kind of fault; "" for none. */
  std::string Fault;
  /** How many actions were played until then, 0 if that is not known. */
  std::size_t Actions = 0;
  std::string Output;
};

/** A fault without what is another in each run: numbers, and what is quoted. */
std::string KindOf(const std::string& found) {
  std::string kind;
  bool isQuoted = false;
  for (const char letter : found.substr(0, found.find('\n'))) {
    isQuoted ^= letter == '"';
    if (!isQuoted && (letter < '0' || letter > '9')) kind += letter;
  }
  return kind;
}

QStringList Arguments(const Episode& episode) {
  QStringList words{"--replay", QString::number(episode.Seed)};
  for (const auto number : episode.Numbers) words << QString::number(number);
  return words;
}

/** Plays an episode in a process of its own. */
Outcome PlayApart(const Episode& episode) {
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(QCoreApplication::applicationFilePath(), Arguments(episode));
  process.waitForFinished(-1);
  Outcome outcome{"", 0, process.readAll().toStdString()};
  const auto behind = [&](const std::string& word) {
    const auto at = outcome.Output.find(word);
    return at == outcome.Output.npos ? "" : outcome.Output.substr(at + word.size());
  };
  const std::string played = behind(kPlayed), found = behind(kFound);
  if (!played.empty()) outcome.Actions = std::stoul(played);
  if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return outcome;
  outcome.Fault = found.empty() ? "crash" : KindOf(found);
  if (!found.empty()) outcome.Actions = std::stoul(found);
  return outcome;
}

/** Leaves out of a failing episode what it fails without, for so many seconds. */
Episode Shrunk(Episode episode, Outcome& outcome, int seconds) {
  QElapsedTimer time;
  time.start();
  if (outcome.Actions > 0)
    episode.Numbers.resize(std::min(outcome.Actions, episode.Numbers.size()));
  for (std::size_t part = (episode.Numbers.size() + 1) / 2; part > 0; part /= 2)
    for (std::size_t from = 0; from < episode.Numbers.size();) {
      if (time.elapsed() > seconds * 1000) return episode;
      Episode less = episode;
      const auto first = less.Numbers.begin() + static_cast<std::ptrdiff_t>(from);
      const auto count = std::min(part, episode.Numbers.size() - from);
      less.Numbers.erase(first, first + static_cast<std::ptrdiff_t>(count));
      Outcome again = PlayApart(less);
      if (again.Fault == outcome.Fault)
        episode = std::move(less), outcome = std::move(again);
      else
        from += part;
    }
  return episode;
}

int Run(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  const auto option = [&](const char* name, const char* value) {
    parser.addOption({QLatin1String(name), {}, "n", QLatin1String(value)});
  };
  option("seconds", "0"), option("actions", "0"), option("seed", "1");
  option("length", "200"), option("shrink", "120");
  parser.process(application);
  const auto number = [&](const char* name) { return parser.value(QLatin1String(name)).toUInt(); };
  QElapsedTimer time;
  time.start();
  std::size_t played = 0;
  Episode episode{number("seed"), std::vector<std::uint32_t>(number("length"))};
  std::iota(episode.Numbers.begin(), episode.Numbers.end(), 0U);
  const std::size_t most = number("seconds") ? SIZE_MAX : std::max(number("actions"), 1U);
  for (; played < most && (!number("seconds") || time.elapsed() < number("seconds") * 1000LL);
       ++episode.Seed) {
    Outcome outcome = PlayApart(episode);
    played += std::max<std::size_t>(outcome.Actions, 1);
    if (outcome.Fault.empty()) continue;
    std::cout << "Seed " << episode.Seed << ": " << outcome.Output << std::endl;
    const Episode shortest = Shrunk(episode, outcome, static_cast<int>(number("shrink")));
    std::cout << outcome.Output << "\nThe shortest that was found:\n"
              << Arguments(shortest).join(u' ').toStdString() << std::endl;
    return 1;
  }
  std::cout << played << " actions of the seeds " << number("seed") << " to " << episode.Seed - 1
            << " in " << time.elapsed() / 1000.0 << " s" << std::endl;
  return 0;
}

}  // namespace
}  // namespace rws::robot

int main(int argc, char** argv) {
  const bool isReplay = argc >= 3 && std::string_view(argv[1]) == "--replay";
  return isReplay ? rws::robot::Replay(argc, argv) : rws::robot::Run(argc, argv);
}
