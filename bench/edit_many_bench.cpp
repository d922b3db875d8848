// An edit of 500 missions of 17 KB, with backups and with what Undo needs, beside the bare writes
// of the same texts to the same places with the same flushes in the same run; and its preview,
// beside the bare read of the same bytes.

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/mission_text.h"
#include "services/text.h"
#include "tools/logic/edit_many_step.h"

namespace rws::bench {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kBytes = 17'000;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

/** Missions of one folder, and a program that keeps its files beside them. */
struct Place {
  explicit Place(int missions) : Root(fs::temp_directory_path() / "rws edit many bench") {
    fs::remove_all(Root);
    fs::create_directories(Root / "in");
    fs::create_directories(Root / "app" / "kept");
    for (int i = 0; i < missions; ++i) {
      const fs::path path = Root / "in" / ("Mission " + std::to_string(i) + ".mis");
      std::ofstream(path, std::ios::binary) << Text;
      Paths.push_back(path.string());
    }
    World.Services.AppPath = (Root / "app").string();
    World.Services.LogSink = [](const std::string&) {};
    World.Services.System.Now = [] { return DateTime{2026, 3, 4, 5, 6, 7}; };
    World.Services.Window.ShowBusy = [](bool) {};
    World.Doc.Untouched = UntouchedLines::Keep;
  }
  ~Place() { fs::remove_all(Root); }

  fs::path Root;
  std::string Text = MissionText(kBytes, 8);
  std::vector<std::string> Paths;
  Session World;
};

/** What is on disk at each moment is what the edit has there: what Undo needs, the copy and its
    note, the backup, the list of backups, the new text. */
void BareWrites(const Place& place, const std::string& text) {
  const FileSystem& files = place.World.Services.Files;
  const std::string app = place.World.Services.AppPath + "/";
  for (const auto& path : place.Paths) {
    const std::string name = fs::path(path).filename().string();
    const std::string old = files.ReadFile(path);
    files.LinkOrCopy(path, app + "kept/" + name);
    files.ReplaceFile(app + "copy.note", path);
    files.ReplaceFile(app + "copy", old);
    files.LinkOrCopy(path, app + name);
    files.AppendToFile(app + "list", path);
    files.ReplaceFile(path, text, path);
    files.DeleteFile(app + "copy");
    files.DeleteFile(app + "copy.note");
  }
}

void EditOfMany(benchmark::State& state) {
  const auto missions = static_cast<int>(state.range(0));
  double floor = 0, work = 0, preview = 0, reading = 0;
  EditOrder order;
  order.Sets = {ParseAssignment("flight[*].Fuel=33"), ParseAssignment("CloudType=5")};
  for (auto _ : state) {
    {
      Place place(missions);
      auto start = Clock::now();
      for (const auto& path : place.Paths)
        benchmark::DoNotOptimize(place.World.Services.Files.ReadFile(path));
      reading += SecondsSince(start);
      start = Clock::now();
      const EditContext context = EditContextOf(place.World);
      const EditPlan plan = PlanEdits(context, order, place.Paths, {});
      preview += SecondsSince(start);
      start = Clock::now();
      const EditReport report = ApplyAsStep(place.World, context, plan, nullptr);
      const double seconds = SecondsSince(start);
      work += seconds;
      state.SetIterationTime(seconds);
      if (report.Done.size() != place.Paths.size()) return state.SkipWithError("not all done");
    }
    Place place(missions);
    const auto start = Clock::now();
    BareWrites(place, Replace(place.Text, "Fuel 100", "Fuel 33"));
    floor += SecondsSince(start);
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_s"] = floor / runs;
  state.counters["work_s"] = work / runs;
  state.counters["ratio"] = work / floor;
  state.counters["preview_s"] = preview / runs;
  state.counters["read_s"] = reading / runs;
}
BENCHMARK(EditOfMany)->Arg(500)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rws::bench
