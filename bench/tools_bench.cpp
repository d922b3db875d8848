// Rename All over 2,000 missions with briefings, beside the bare renames of the same files with the
// same flushes in the same run; the window of changes opened, beside the bare split of both texts
// into lines.

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "bench/mission_text.h"
#include "mission/line_diff.h"
#include "mission/pending_lines.h"
#include "mission/reader.h"
#include "services/os_files.h"
#include "session/session.h"
#include "tools/logic/change_rows.h"
#include "tools/logic/folder_tools.h"

namespace rws::bench {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

class Folder {
 public:
  explicit Folder(int missions) : path_(fs::temp_directory_path() / "rws tools bench") {
    fs::remove_all(path_);
    fs::create_directories(path_);
    for (int i = 0; i < missions; ++i)
      for (const char* ending : {".mis", ".properties"})
        std::ofstream(path_ / ("Mission " + std::to_string(i) + ending)) << "[MAIN]\r\n";
  }
  ~Folder() { fs::remove_all(path_); }
  std::string Path() const { return path_.string(); }
  std::vector<std::string> Files() const {
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(path_)) files.push_back(entry.path().string());
    return files;
  }

 private:
  fs::path path_;
};

/** To a detour and on to another name, as the tool does it. */
void BareRenames(const Folder& folder) {
  std::vector<std::string> files = folder.Files();
  for (const char* behind : {"tmp", "x"})
    for (auto& file : files) {
      os::RenameNew(file, file + behind);
      file += behind;
      os::SyncFolderOf(file);
    }
}

double SecondsOfRenameAll(const Folder& folder) {
  Session session;
  session.Services.LogSink = [](const std::string&) {};
  session.Services.Ask.InputBox = [](const std::string& prompt, const std::string&,
                                     const std::string&) -> std::optional<std::string> {
    return prompt.find("starting") == prompt.npos ? "New" : "1";
  };
  session.Doc.MissionDir = folder.Path();
  GetMissionFiles(session.Doc, session.Services);
  LoadMissionArray(session.Doc, session.Services);
  const auto start = Clock::now();
  const ToolResult result = RenameAll(session.Doc, session.Services);
  const double seconds = SecondsSince(start);
  return result.Outcome == ToolOutcome::Reread ? seconds : -1;
}

void RenameAllMissions(benchmark::State& state) {
  const int missions = static_cast<int>(state.range(0));
  double floor = 0, work = 0;
  for (auto _ : state) {
    {
      const Folder folder(missions);
      const auto start = Clock::now();
      BareRenames(folder);
      floor += SecondsSince(start);
    }
    const Folder folder(missions);
    const double seconds = SecondsOfRenameAll(folder);
    if (seconds < 0) return state.SkipWithError("the tool failed");
    work += seconds;
    state.SetIterationTime(seconds);
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_ms"] = floor / runs * 1e3;
  state.counters["work_ms"] = work / runs * 1e3;
  state.counters["ratio"] = work / floor;
}
BENCHMARK(RenameAllMissions)->Arg(1000)->Arg(2000)->UseManualTime()->Unit(benchmark::kMillisecond);

/** A mission on disk, read to be written anew, with an edit of every second flight. */
struct EditedMission {
  explicit EditedMission(std::size_t bytes) {
    World.Services.LogSink = [](const std::string&) {};
    const fs::path path = fs::temp_directory_path() / "rws changes bench.mis";
    std::ofstream(path, std::ios::binary) << MissionText(bytes, 20);
    Mission& record = World.Doc.Missions.emplace_back();
    record.DirPath = path.parent_path().string() + "/";
    record.FileName = path.filename().string();
    LoadMission(World.Doc, World.Services, 0);
    Saved = record;
    for (std::size_t i = 0; i < record.Flights.size(); i += 2) record.Flights[i].Fuel = "33";
  }
  ~EditedMission() { fs::remove(Saved.DirPath + Saved.FileName); }

  Session World;
  Mission Saved;
};

void ChangesOpened(benchmark::State& state) {
  EditedMission mission(static_cast<std::size_t>(state.range(0)));
  const Document& doc = mission.World.Doc;
  double floor = 0, work = 0;
  std::size_t different = 0;
  for (auto _ : state) {
    auto start = Clock::now();
    const PendingLines pending = LookAhead(doc, mission.World.Services, doc.Missions[0], {},
                                           mission.Saved, PendingPart::Both);
    const ChangeLabels labels(pending.File.FileText(), pending.Kept.FileText());
    const auto before = SplitLines(pending.File.FileText());
    const auto after = SplitLines(pending.Anew.FileText());
    const auto rows = MakeCompareRows(DiffLines(before, after));
    benchmark::DoNotOptimize(ChangeCountText(pending, false));
    const double seconds = SecondsSince(start);
    work += seconds;
    state.SetIterationTime(seconds);
    different = DifferenceRows(rows).size();
    if (!pending.KeptFault.empty() || different == 0) return state.SkipWithError("no changes");
    start = Clock::now();
    benchmark::DoNotOptimize(SplitLines(pending.File.FileText()));
    benchmark::DoNotOptimize(SplitLines(pending.Anew.FileText()));
    floor += SecondsSince(start);
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_ms"] = floor / runs * 1e3;
  state.counters["work_ms"] = work / runs * 1e3;
  state.counters["ratio"] = work / floor;
  state.counters["differences"] = static_cast<double>(different);
}
BENCHMARK(ChangesOpened)
    ->Arg(20'000)
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rws::bench

BENCHMARK_MAIN();
