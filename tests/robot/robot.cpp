// A user who acts by chance at the real window, and looks at it after each action.
//
//   robot [--seconds N | --actions N] [--seed S] [--length N] [--shrink N]
//   robot --replay FILE [told]
//
// A run is made of episodes, each in a process of its own that starts from the same files. One that
// ends in a fault is made shorter for some seconds and then printed, to be played again; "told"
// says what each action does.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <optional>
#include <thread>

#include "session/current.h"
#include "session/recording.h"
#include "tests/robot/checks.h"
#include "tests/robot/hand.h"

namespace rws::robot {
namespace {

constexpr int kBroken = 3, kHung = 4;
constexpr char kFound[] = "FOUND ", kPlayed[] = "PLAYED ";

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
  int Beats() const { return beats_; }
  /** What it does now, for a run that hangs. */
  const char* State() const { return state_; }

 private:
  void Turn() {
    state_ = stage_.Pumping ? "pumping after" : "waiting for work after";
    if (stage_.Pumping || stage_.IsBusy()) return PlayNext(1);
    state_ = "looking after";
    ++beats_;
    const bool isIdle = depth_ == 0 && !QApplication::activePopupWidget();
    if (isIdle && !stage_.World.Doc.Closing) Judge(checks_.Look());
    if (depth_ == 0 && !stage_.Window->isVisible()) return End();
    if (next_ >= episode_.Actions.size()) {
      if (isIdle) return Judge(checks_.LookAtTheEnd()), End();
      if (++closings_ > 200) return Judge("dialog: it does not close");
      PlayNext();
      stage_.Begin(static_cast<std::uint32_t>(closings_));
      return Deeper([this] { CloseOne(stage_); });
    }
    const Action& action = episode_.Actions[next_++];
    PlayNext();
    stage_.Begin(action.N[3]);
    state_ = "playing";
    Deeper([&] { Perform(stage_, action); });
  }

  template <class Deed>
  void Deeper(Deed deed) {
    ++depth_;
    deed();
    --depth_;
    if (isTold_) Tell();
  }

  void Tell() const {
    const Document& doc = stage_.World.Doc;
    std::cout << next_ << ' ' << depth_ << ' ' << LastDeed() << '\n';
    for (const auto& line : stage_.World.Log) std::cout << "    log: " << line << '\n';
    for (const auto& asked : stage_.Asked) std::cout << "    asked: " << asked << '\n';
    for (const auto& path : UnsavedMissions(stage_.World))
      std::cout << "    unsaved: " << path << '\n';
    if (!doc.Missions.empty())
      std::cout << "    shown: " << CurrentMission(stage_.World).BaseName << ", flight "
                << doc.CurFlight << " DBG " << CurrentMission(stage_.World).Flights.size()
                << " shadows " << doc.MissionShadow.size() << " : "
                << (doc.MissionShadow.size() > (size_t)doc.CurMission
                        ? doc.MissionShadow[(size_t)doc.CurMission].Flights.size()
                        : 999)
                << " mod " << CurrentMission(stage_.World).Modified << '\n';
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
  int depth_ = 0, closings_ = 0;
  std::atomic<int> beats_ = 0;
  std::atomic<const char*> state_ = "";
};

/** Ends the process when no action has come to its end for long. */
class Watchdog {
 public:
  explicit Watchdog(const Player& player)
      : thread_([this, &player] {
          constexpr int kMostSeconds = 20;
          int beats = -1, same = 0;
          while (!ended_) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            same = std::exchange(beats, player.Beats()) == player.Beats() ? same + 1 : 0;
            if (same < kMostSeconds * 10) continue;
            std::cout << kFound << "0 hang: for " << kMostSeconds << " s " << player.State() << " "
                      << LastDeed() << std::endl;
            std::_Exit(kHung);
          }
        }) {}
  ~Watchdog() {
    ended_ = true;
    thread_.join();
  }

 private:
  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

QByteArray ReadAll(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

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

int Replay(int argc, char** argv, const QString& name, bool isTold) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // The order of what is hashed is the same in each run.
  QHashSeed::setDeterministicGlobalSeed();
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  QApplication::setQuitOnLastWindowClosed(false);
  // No time passes between two clicks or keys, and none counts as the other's second one.
  QApplication::setDoubleClickInterval(0);
  QApplication::setKeyboardInputInterval(-1);
  const Episode episode = FromText(ReadAll(name).toStdString());
  const OneFolder folder;
  Stage stage(episode.Setup);
  Player player(stage, episode, isTold);
  const Watchdog watchdog(player);
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

/** Plays an episode in a process of its own. */
Outcome PlayApart(const QTemporaryDir& folder, const Episode& episode, bool isTold = false) {
  const QString name = folder.filePath(QStringLiteral("episode"));
  QFile file(name);
  if (!file.open(QIODevice::WriteOnly)) return {"no file", 0, ""};
  file.write(QByteArray::fromStdString(ToText(episode)));
  file.close();
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  QStringList arguments{QStringLiteral("--replay"), name};
  if (isTold) arguments << QStringLiteral("told");
  process.start(QCoreApplication::applicationFilePath(), arguments);
  constexpr int kMostMilliseconds = 600000;
  if (!process.waitForFinished(kMostMilliseconds)) {
    process.kill();
    process.waitForFinished();
    return {"no end", 0, ""};
  }
  Outcome outcome{"", 0, process.readAll().toStdString()};
  const auto behind = [&](const std::string& word) {
    const auto at = outcome.Output.find(word);
    return at == outcome.Output.npos ? "" : outcome.Output.substr(at + word.size());
  };
  const std::string played = behind(kPlayed), found = behind(kFound);
  if (!played.empty()) outcome.Actions = std::stoul(played);
  if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return outcome;
  if (found.empty()) return outcome.Fault = "crash", outcome;
  outcome.Actions = std::stoul(found);
  outcome.Fault = KindOf(found);
  return outcome;
}

/** Leaves out of a failing episode what it fails without, for so many seconds. */
Episode Shrunk(const QTemporaryDir& folder, Episode episode, Outcome& outcome, int seconds) {
  QElapsedTimer time;
  time.start();
  if (outcome.Actions > 0 && outcome.Actions < episode.Actions.size())
    episode.Actions.resize(outcome.Actions);
  for (std::size_t part = (episode.Actions.size() + 1) / 2; part > 0; part /= 2)
    for (std::size_t from = 0; from < episode.Actions.size();) {
      if (time.elapsed() > seconds * 1000) return episode;
      Episode less = episode;
      const auto first = less.Actions.begin() + static_cast<std::ptrdiff_t>(from);
      less.Actions.erase(first, first + static_cast<std::ptrdiff_t>(
                                            std::min(part, episode.Actions.size() - from)));
      Outcome again = PlayApart(folder, less);
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
    const QCommandLineOption made(QLatin1String(name), QString(), QStringLiteral("n"),
                                  QLatin1String(value));
    parser.addOption(made);
    return made;
  };
  const auto seconds = option("seconds", "0"), actions = option("actions", "0"),
             seed = option("seed", "1"), length = option("length", "200"),
             shrink = option("shrink", "120"), told = option("told", "0");
  parser.process(application);
  const auto number = [&](const QCommandLineOption& of) { return parser.value(of).toUInt(); };

  const QTemporaryDir folder;
  QElapsedTimer time;
  time.start();
  std::size_t played = 0;
  std::uint32_t next = number(seed);
  const std::size_t most = number(seconds) ? SIZE_MAX : std::max(number(actions), 1U);
  while (played < most && (!number(seconds) || time.elapsed() < number(seconds) * 1000LL)) {
    const Episode episode = MakeEpisode(next, number(length));
    Outcome outcome = PlayApart(folder, episode, number(told));
    if (number(told)) std::cout << outcome.Output;
    if (!outcome.Fault.empty()) {
      std::cout << "Seed " << next << ": " << outcome.Output << '\n';
      const Episode shortest = Shrunk(folder, episode, outcome, static_cast<int>(number(shrink)));
      std::cout << outcome.Output << "\nThe shortest that was found, for --replay:\n"
                << ToText(shortest) << std::flush;
      return 1;
    }
    played += std::max<std::size_t>(outcome.Actions, 1);
    ++next;
  }
  std::cout << played << " actions of the seeds " << number(seed) << " to " << next - 1 << " in "
            << time.elapsed() / 1000.0 << " s" << std::endl;
  return 0;
}

}  // namespace
}  // namespace rws::robot

int main(int argc, char** argv) {
  const bool isReplay = argc >= 3 && std::string_view(argv[1]) == "--replay";
  if (!isReplay) return rws::robot::Run(argc, argv);
  return rws::robot::Replay(argc, argv, QString::fromLocal8Bit(argv[2]), argc > 3);
}
