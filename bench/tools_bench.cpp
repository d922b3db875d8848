// Rename All over 2,000 missions with briefings, beside the bare renames of the same files with the
// same flushes in the same run.

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "mission/reader.h"
#include "services/os_files.h"
#include "session/session.h"
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

}  // namespace
}  // namespace rws::bench

BENCHMARK_MAIN();
