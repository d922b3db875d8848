// An Update of one mission, with a backup, beside the bare calls to the system that its steps need:
// the same files, the same bytes, the same flushes.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "bench/compare.h"
#include "bench/mission_text.h"
#include "mission/reader.h"
#include "mission/update.h"
#include "services/os_files.h"
#include "services/paths.h"

namespace rws::bench {
namespace {

namespace fs = std::filesystem;

/** Two folders on the disk on which this runs, deleted at the end. */
class Folders {
 public:
  explicit Folders(const std::string& mission) {
    for (const auto& folder : {Program() + "/RWS Backup", Missions()})
      fs::create_directories(folder);
    for (const auto& path : {MissionPath(), BarePath()})
      os::OpenOutput(path, os::OpenMode::CreateNew, path)->Write(mission);
  }
  ~Folders() { fs::remove_all(root_); }
  Folders(const Folders&) = delete;
  Folders& operator=(const Folders&) = delete;

  std::string Program() const { return root_ + "/program"; }
  std::string Missions() const { return root_ + "/missions"; }
  std::string MissionPath() const { return Missions() + "/m.mis"; }
  std::string BarePath() const { return Missions() + "/m.bare"; }

 private:
  /** Beside the program, which is on a disk: in memory a flush would take no time. */
  std::string root_ = fs::read_symlink("/proc/self/exe").parent_path().string() + "/update-" +
                      std::to_string(getpid());
};

void Replace(const std::string& path, const std::string& bytes) {
  const std::string beside = path + ".rws0";
  {
    const auto file = os::OpenOutput(beside, os::OpenMode::CreateNew, beside);
    file->Write(bytes);
    file->Sync();
    file->Close();
  }
  os::RenameOver(beside, path, false);
  os::SyncFolderOf(path);
}

void Delete(const std::string& path) {
  os::DeleteFile(path, false);
  os::SyncFolderOf(path);
}

/** Lock, note and copy; a backup and its note; the mission; copy, note and lock deleted. */
void BareUpdate(const Folders& folders, const std::string& bytes, int round) {
  const std::string copy = folders.Program() + "/$$$TEMP", note = copy + ".note";
  const std::string backups = folders.Program() + "/RWS Backup/", mission = folders.BarePath();
  const auto lock = os::TryHold(copy + ".lock");
  const std::string old = os::ReadFile(mission, UINT64_MAX, nullptr);
  Replace(note, std::string(300, 'n'));
  Replace(copy, old);
  const std::string backup = backups + "bare" + std::to_string(round) + ".bak";
  os::Link(mission, backup);
  os::SyncFolderOf(backup);
  const std::string origins = backups + "bare.txt";
  os::OpenOutput(origins, os::OpenMode::Append, origins)->Write(std::string(80, 'o'));
  Replace(mission, bytes);
  Delete(copy);
  Delete(note);
}

void Update(benchmark::State& state) {
  const std::string bytes = MissionText(static_cast<std::size_t>(state.range(0)));
  const Folders folders(bytes);
  Document doc;
  Services services;
  int round = 0;
  services.AppPath = folders.Program();
  services.LogSink = [&](const std::string& line) { state.SkipWithError(line.c_str()); };
  services.Ask.MsgBox = [&](const std::string& text, Buttons, Icon, const std::string&) {
    state.SkipWithError(text.c_str());
    return Answer::No;
  };
  services.System.Now = [&] {
    return DateTime{2001, 1, 1, round / 3600, round / 60 % 60, round % 60};
  };
  doc.MissionDir = folders.Missions();
  GetMissionFiles(doc, services);
  LoadMissionArray(doc, services);
  LoadMission(doc, services, 0);
  const auto edit = [&] {
    doc.Missions[0].Flights[0].Fuel = std::to_string(10 + ++round % 80);
    doc.Missions[0].Modified = true;
  };
  Compare(
      state, [&] { BareUpdate(folders, bytes, round); },
      [&] {
        if (!UpdateChanges(doc, services, {}, {})) state.SkipWithError("not written");
      },
      edit);
}
BENCHMARK(Update)->Arg(100000)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace rws::bench
