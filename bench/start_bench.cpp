// From an empty process to the first mission painted, beside an empty window painted in the same
// run.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMainWindow>
#include <chrono>

#include "app/program.h"

namespace rws::bench {
namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double EmptyWindow() {
  const auto start = Clock::now();
  QMainWindow window;
  window.resize(900, 530);
  window.show();
  benchmark::DoNotOptimize(window.grab());
  return SecondsSince(start);
}

double FirstMission() {
  const auto start = Clock::now();
  Program program;
  program.Window.LoadForm(RWS_SAMPLES_DIR);
  benchmark::DoNotOptimize(program.Window.grab());
  return program.Doc.Missions.size() > 1 ? SecondsSince(start) : -1;
}

void Start(benchmark::State& state) {
  qputenv("RWS_GAME_PATH", RWS_SAMPLES_DIR "/game");
  qputenv("RWS_SETTINGS_FILE", RWS_SAMPLES_DIR "/settings.ini");
  double floor = 0, work = 0;
  for (auto _ : state) {
    floor += EmptyWindow();
    const double seconds = FirstMission();
    if (seconds < 0) state.SkipWithError("no missions");
    work += seconds;
    state.SetIterationTime(seconds);
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_ms"] = floor / runs * 1e3;
  state.counters["work_ms"] = work / runs * 1e3;
  state.counters["ratio"] = work / floor;
}
BENCHMARK(Start)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rws::bench
