#include "tests/robot/stage.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QProgressDialog>
#include <QTimerEvent>
#include <algorithm>
#include <filesystem>
#include <set>

#include "platform/folder_watch.h"
#include "services/setting_values.h"
#include "services/text.h"
#include "session/current.h"
#include "session/doors.h"

namespace rws::robot {

namespace fs = std::filesystem;

namespace {

/** What comes back as soon as this works in the background, and is waited for: milliseconds. */
constexpr int kWorking = 30;

/** -1 if there is no such timer. */
int IntervalOf(QObject* object, int id) {
  for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(object))
    if (timer.timerId == id) return timer.interval;
  return -1;
}

void CopyFolder(const test::Sandbox& box, const fs::path& from, const std::string& to,
                const std::string& ending, std::uintmax_t most) {
  std::error_code none;
  for (const auto& entry : fs::recursive_directory_iterator(from, none)) {
    const std::string name = fs::relative(entry.path(), from).generic_string();
    if (entry.is_regular_file() && entry.file_size() < most && name.ends_with(ending))
      box.Write(to + "/" + name, test::FileBytes(entry.path()));
  }
}

Answer AnswerOf(Buttons buttons, std::size_t dice) {
  switch (buttons) {
    case Buttons::Ok:
      return Answer::Ok;
    case Buttons::OkCancel:
      return dice % 2 ? Answer::Ok : Answer::Cancel;
    case Buttons::YesNo:
      return dice % 2 ? Answer::Yes : Answer::No;
    default:
      return dice % 3 == 0 ? Answer::Yes : dice % 3 == 1 ? Answer::No : Answer::Cancel;
  }
}

}  // namespace

std::string Junk(std::mt19937& dice) {
  static const char* const kTexts[] = {"",       "0",   "-1",    "99999999999", "1e9",
                                       "\"",     "3.5", "r0100", "a&b",         "\xC3\xA4",
                                       "[Wing]", "  ",  "1,5"};
  if (dice() % 2) return kTexts[dice() % std::size(kTexts)];
  std::string text;
  for (auto count = dice() % (dice() % 8 == 0 ? 200 : 12); count > 0; --count)
    text += static_cast<char>(' ' + dice() % 95);
  return text;
}

Stage::Stage(std::uint32_t setup) : World(Box.Path("program")), setup_(setup) {
  FillBox();
  Wire();
  // Flights pasted over and over would take the oldest steps away, and with them the start.
  World.History.MostBytes = std::size_t{1} << 32;
  qApp->installEventFilter(this);
  Window = std::make_unique<frmRWS>(World);
  Window->Popups.ToolStep = [this](QProgressDialog& dialog) {
    if (Once(40)) dialog.cancel();
  };
  World.Services.LogSink = [this](const std::string& line) {
    const Document& doc = World.Doc;
    const bool isThere = !doc.Missions.empty() && doc.CurFlight >= 0 &&
                         doc.CurFlight < std::ssize(CurrentMission(World).Flights);
    World.Log.push_back(line +
                        (isThere || !line.ends_with("LoadFlight") ? "" : ", which is not there"));
  };
  World.Listeners.push_back([this](const Change& change) {
    Unlit |= !change.Kind || change.Kind->Lights == Lighting::None;
  });
  Begin(setup);
  Window->LoadForm("");
  World.Log.clear();
  Asked.clear();
}

Stage::~Stage() {
  Window.reset();
  // Folders that were made read-only are to be removed.
  std::error_code none;
  for (const auto& entry : fs::recursive_directory_iterator(test::ToFsPath(Box.Path()), none))
    fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, none);
}

void Stage::FillBox() {
  const fs::path source = RWS_SOURCE_DIR;
  constexpr std::uintmax_t kMost = 60000;
  CopyFolder(Box, source / "data", "program", "", std::uintmax_t{1} << 30);
  CopyFolder(Box, source / "samples" / "game", "game", "", kMost);
  Box.Write("game/il2fb.exe", "");
  for (const char* ending : {".mis", ".properties"}) {
    CopyFolder(Box, source / "samples", "missions", ending, kMost);
    if (const char* real = std::getenv("RWS_MISSIONS"))
      CopyFolder(Box, real, "missions", ending, kMost);
  }
  Box.Write("missions/below/patrol.mis", Box.Read("missions/single_bridge_patrol.mis"));
  Box.MakeFolder("home");
  for (const auto& path : Files()) Start[path] = test::FileBytes(test::ToFsPath(path));
}

std::vector<std::string> Stage::Files() const {
  std::set<std::string> names;
  std::error_code none;
  for (const auto& entry : fs::directory_iterator(test::ToFsPath(Box.Path("missions")), none))
    if (entry.is_regular_file(none)) {
      const auto name = entry.path().filename().u8string();
      names.insert(Box.Path("missions/" + std::string(name.begin(), name.end())));
    }
  return {names.begin(), names.end()};
}

void Stage::Wire() {
  Settings& settings = World.Services.Settings;
  WriteSetting(settings, setting::GamePath, Box.Path("game"));
  WriteSetting(settings, setting::LastDirPath, Box.Path("missions"));
  WriteSetting(settings, setting::LaterVersions, std::to_string(setup_ % 4 % 3));
  WriteSetting(settings, setting::SaveWarn,
               (setup_ & 16) ? std::to_string((setup_ >> 5) % 3) : "0");
  Shell& shell = World.Services.System;
  shell.Version = [] { return OsVersion{3, 6, 1, "Debian 12"}; };
  shell.LocaleText = [](int) { return std::string("en_GB"); };
  shell.HomeFolder = [this] { return Box.Path("home"); };
  shell.Fetch = [this](const std::string&) {
    return Once(2) ? std::nullopt : std::optional<std::string>("9.9");
  };
  shell.PumpEvents = [this] {
    const bool outer = std::exchange(Pumping, true);
    pump_.Pump();
    Pumping = outer;
  };
  Prompts& ask = World.Services.Ask;
  ask.MsgBox = [this](const std::string& text, Buttons buttons, Icon, const std::string&) {
    const Answer answer = AnswerOf(buttons, Random(6));
    Asked.push_back(text + " -> " + std::to_string(static_cast<int>(answer)));
    return answer;
  };
  ask.InputBox = [this](const std::string& prompt, const std::string&,
                        const std::string& initial) -> std::optional<std::string> {
    Asked.push_back(prompt);
    if (Once(3)) return std::nullopt;
    return Once(2) ? initial + "2" : Junk(dice_);
  };
  ask.OpenFiles = [this](const FileQuestion& question, bool) -> std::vector<std::string> {
    Asked.push_back(question.Title);
    if (Once(4)) return {};
    return {AnyPath(false)};
  };
  ask.SaveFile = [this](const FileQuestion& question) {
    Asked.push_back(question.Title);
    const std::string path = Once(4) ? std::string() : AnyPath(false);
    // A file that the user writes over is no longer what it was.
    Start.erase(path);
    return path;
  };
  ask.Folder = [this](const std::string& title, bool, const std::string&) {
    Asked.push_back(title);
    return Once(3) ? std::string() : AnyPath(true);
  };
  ask.Color = [this](std::int32_t initial) -> std::optional<std::int32_t> {
    if (Once(2)) return std::nullopt;
    return initial ^ static_cast<std::int32_t>(Random(0xFFFFFF));
  };
}

/** A path of the sandbox; not everything that is chosen is there. */
std::string Stage::AnyPath(bool folder) {
  static const char* const kFolders[] = {"missions", "missions/below", "missions",
                                         "game",     "home",           "not there"};
  static const char* const kFiles[] = {"missions/new.mis", "missions/below/new.mis", "home/x.png",
                                       "missions",         "none/new.mis",           "home/junk"};
  if (folder) return Box.Path(kFolders[Random(std::size(kFolders))]);
  const auto files = Files();
  if (!files.empty() && Once(2)) return files[Random(files.size())];
  return Box.Path(kFiles[Random(std::size(kFiles))]);
}

void Stage::Begin(std::uint32_t chance) {
  dice_.seed(chance);
  World.ShellCalls.clear();
  World.Clock.Second = (World.Clock.Second + 1) % 60;
  if (World.Clock.Second == 0) World.Clock.Minute = (World.Clock.Minute + 1) % 60;
}

/** Everything of the windows that may wait for a time. */
QObjectList Stage::Waiting() const {
  auto windows = QApplication::topLevelWidgets();
  // The set of all windows has no order of its own.
  std::sort(windows.begin(), windows.end(),
            [](const QWidget* a, const QWidget* b) { return a->objectName() < b->objectName(); });
  QObjectList all = QAbstractEventDispatcher::instance()->children();
  for (auto* window : windows) all << window << window->findChildren<QObject*>();
  return all;
}

bool Stage::IsBusy() const {
  const auto works = [](const QAbstractEventDispatcher::TimerInfo& timer) {
    return timer.interval <= kWorking;
  };
  const auto waiting = Waiting();
  return std::any_of(waiting.begin(), waiting.end(), [&](QObject* object) {
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(object);
    return std::any_of(timers.begin(), timers.end(), works);
  });
}

void Stage::RunTimers() {
  if (auto* watch = Window->findChild<FolderWatch*>()) watch->LookAgain();
  std::vector<std::pair<QPointer<QObject>, int>> due;
  for (auto* object : Waiting())
    for (const auto& timer : QAbstractEventDispatcher::instance()->registeredTimers(object))
      if (timer.interval > kWorking) due.emplace_back(object, timer.timerId);
  timersRun_ = true;
  for (const auto& [object, timer] : due)
    if (object && IntervalOf(object, timer) >= 0) {
      QTimerEvent event(timer);
      QCoreApplication::sendEvent(object, &event);
    }
  timersRun_ = false;
}

bool Stage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Timer || timersRun_) return false;
  return IntervalOf(watched, static_cast<QTimerEvent*>(event)->timerId()) > kWorking;
}

void Stage::ActOutside() {
  if (IsPrivate()) return;
  const auto files = Files();
  if (files.empty()) return;
  const std::string& path = files[Random(files.size())];
  const fs::path file = test::ToFsPath(path);
  const std::string name = "missions/" + std::string(path.substr(path.rfind('/') + 1));
  const std::string bytes = test::FileBytes(file);
  std::error_code none;
  // Under another name it comes back as it is made here.
  if (Start.erase(path) == 0) Start.clear();
  switch (Random(8)) {
    case 0:
      return void(Box.Write(name, Replace(bytes, "Fuel 100", "Fuel 40")));
    case 1:
      return void(Box.Write(name, bytes));
    case 2:
      return void(fs::remove(file, none));
    case 3:
      return void(Box.Write("missions/new" + std::to_string(Random(5)) + ".mis", bytes));
    case 4:
      return fs::permissions(file, fs::perms::owner_write, fs::perm_options::remove, none);
    case 5:
      return void(Box.Write(name, bytes.substr(0, Random(bytes.size() + 1))));
    case 6:
      return void(Box.Write(name, bytes + "[Extra]\r\n  line 1\r\n"));
    default:
      return fs::rename(file, test::ToFsPath(path + ".x.mis"), none);
  }
}

}  // namespace rws::robot
