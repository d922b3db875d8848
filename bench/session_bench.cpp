// What the history costs: a step recorded against the bare change, the heap of a thousand steps,
// the selection of a mission with many read against that with few, and unsaved edits put on disk
// against a bare write of as many bytes. Floor and work alternate in one run.

#include <benchmark/benchmark.h>

#include <filesystem>

#include "bench/compare.h"
#include "bench/heap_count.h"
#include "bench/mission_text.h"
#include "mission/reader.h"
#include "session/current.h"
#include "session/doors.h"
#include "session/reading.h"
#include "session/recording.h"
#include "session/recovery.h"

namespace rws::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kFlights = 20;
constexpr EditKind kFuel{"txtFuel_Change", "Fuel"};

/** A session with one mission, or many that share their text, all read. */
struct Desk : Session {
  explicit Desk(std::size_t bytes, std::size_t missions = 1) {
    Services.LogSink = [](const std::string&) {};
    Services.Window.IsUp = [] { return true; };
    Services.Window.LightUpdate = [](bool) {};
    Services.System.Now = [] { return DateTime(); };
    Doc.Missions.resize(1);
    ReadMissionText(Doc, Services, 0, MissionText(bytes, kFlights));
    Doc.Missions.resize(missions, Doc.Missions[0]);
    Doc.MissionShadow = Doc.Missions;
    for (std::size_t i = 0; i < missions; ++i) {
      Doc.MissionFiles.push_back("/missions/" + std::to_string(i) + ".mis");
      NoteRead(*this, i);
    }
  }
  std::string& Fuel() { return CurrentMission(*this).Flights[++edits_ % kFlights].Fuel; }
  std::string Value() const { return std::to_string(10 + edits_ / kFlights % 90); }
  void EditFuel() {
    CloseStep(*this);
    Edit(*this, kFuel, [&] { Fuel() = Value(); });
  }

 private:
  std::size_t edits_ = 0;
};

void StepRecorded(benchmark::State& state) {
  const auto bytes = static_cast<std::size_t>(state.range(0));
  Desk bare(bytes), recorded(bytes);
  Compare(
      state,
      [&] {
        bare.Fuel() = bare.Value();
        SetModify(bare);
      },
      [&] { recorded.EditFuel(); });
}

void ThousandSteps(benchmark::State& state) {
  constexpr int kSteps = 1000;
  const auto bytes = static_cast<std::size_t>(state.range(0));
  double used = 0, counted = 0;
  for (auto _ : state) {
    Desk desk(bytes);
    desk.EditFuel();
    const std::size_t before = HeapInUse(), countedBefore = desk.History.Bytes;
    for (int i = 0; i < kSteps; ++i) desk.EditFuel();
    used = static_cast<double>(HeapInUse() - before);
    counted = static_cast<double>(desk.History.Bytes - countedBefore);
    if (desk.History.Steps.size() != kSteps + 1) state.SkipWithError("steps are missing");
  }
  state.counters["heap_bytes"] = used;
  state.counters["bytes_a_step"] = used / kSteps;
  state.counters["counted"] = counted / used;
  state.counters["ratio"] = used / static_cast<double>(bytes);
}

/** What a mission that is read takes beside its record and its shadow. */
void Known(benchmark::State& state) {
  const auto bytes = static_cast<std::size_t>(state.range(0));
  double used = 0;
  for (auto _ : state) {
    Desk desk(bytes);
    const std::size_t before = HeapInUse();
    desk.History.Known.clear();
    desk.History.Seen.clear();
    used = static_cast<double>(before - HeapInUse());
  }
  state.counters["heap_bytes"] = used;
  state.counters["ratio"] = used / static_cast<double>(bytes);
}

/** As the window leaves one mission and shows another. */
void Select(Session& session) {
  session.Doc.CurMission = (session.Doc.CurMission + 1) % 10;
  ReadCurrent(session, Baseline::Take, false);
  Record(session, nullptr);
  benchmark::DoNotOptimize(UnsavedMissions(session));
}

void SelectAmong(benchmark::State& state) {
  constexpr std::size_t kBytes = 20'000;
  Desk few(kBytes, 10), many(kBytes, static_cast<std::size_t>(state.range(0)));
  Compare(
      state, [&] { Select(few); }, [&] { Select(many); });
}

void KeepEdits(benchmark::State& state) {
  const fs::path folder = fs::temp_directory_path() / "rws session bench";
  fs::remove_all(folder);
  fs::create_directories(folder);
  Desk desk(static_cast<std::size_t>(state.range(0)));
  desk.Services.AppPath = folder.string();
  desk.EditFuel();
  RecoveryState recovery;
  if (!KeepUnsaved(desk, recovery).empty()) state.SkipWithError("not kept");
  const std::string kept = desk.Services.Files.ReadFile(recovery.Written.begin()->second.File);
  const std::string bare = (folder / "bare").string();
  double floor = 0, work = 0;
  for (auto _ : state) {
    floor += Seconds([&] { desk.Services.Files.ReplaceFile(bare, kept); });
    desk.EditFuel();
    const double seconds = Seconds([&] { KeepUnsaved(desk, recovery); });
    work += seconds;
    state.SetIterationTime(seconds);
  }
  fs::remove_all(folder);
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_us"] = floor / runs * 1e6;
  state.counters["work_us"] = work / runs * 1e6;
  state.counters["ratio"] = work / floor;
  state.counters["bytes"] = static_cast<double>(kept.size());
}

void Sizes(benchmark::internal::Benchmark* bench) {
  for (const int bytes : {20'000, 1'000'000}) bench->Arg(bytes);
  bench->Unit(benchmark::kMicrosecond);
}

BENCHMARK(StepRecorded)->Apply(Sizes)->UseManualTime();
BENCHMARK(ThousandSteps)->Apply(Sizes);
BENCHMARK(Known)->Apply(Sizes);
BENCHMARK(SelectAmong)->Arg(10)->Arg(2000)->Unit(benchmark::kMicrosecond)->UseManualTime();
BENCHMARK(KeepEdits)->Apply(Sizes)->UseManualTime();

}  // namespace
}  // namespace rws::bench

BENCHMARK_MAIN();
