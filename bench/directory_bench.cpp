// Opening a directory of 20,000 missions, from the click to the filled window, beside a bare read
// and sort of the same directory in the same run.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "mainwindow/frmRWS.h"

namespace rws::bench {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kMissions = 20000;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

class Folder {
 public:
  Folder() : path_(fs::temp_directory_path() / "rws directory bench") {
    fs::remove_all(path_);
    fs::create_directories(path_);
    for (int i = 0; i < kMissions; ++i) {
      std::ofstream file(path_ / ("Mission " + std::to_string(i * 7919 % 100003) + ".mis"));
      file << "[MAIN]\r\n  TIME 12.0\r\n[Wing]\r\n[x]\r\n";
    }
  }
  ~Folder() { fs::remove_all(path_); }
  std::string Path() const { return path_.string(); }

 private:
  fs::path path_;
};

void BareList(const std::string& path) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(path))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  benchmark::DoNotOptimize(names.data());
}

void OpenDirectory(benchmark::State& state) {
  const Folder folder;
  Session session;
  Document& doc = session.Doc;
  session.Services.LogSink = [](const std::string&) {};
  frmRWS window(session);
  window.show();
  window.InitForm();
  doc.MissionDir = folder.Path();
  double floor = 0, work = 0;
  for (auto _ : state) {
    auto start = Clock::now();
    BareList(folder.Path());
    floor += SecondsSince(start);
    start = Clock::now();
    window.Start();
    const double seconds = SecondsSince(start);
    work += seconds;
    state.SetIterationTime(seconds);
  }
  if (doc.Missions.size() != kMissions) state.SkipWithError("missions are missing");
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_ms"] = floor / runs * 1e3;
  state.counters["work_ms"] = work / runs * 1e3;
  state.counters["ratio"] = work / floor;
}

BENCHMARK(OpenDirectory)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rws::bench

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
