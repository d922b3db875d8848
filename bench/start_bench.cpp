// From the start of the process to the picture of the first mission, in a folder of few and of
// many, beside a Qt program that does the same with an empty window, in turn.

#include <benchmark/benchmark.h>

#include <QProcess>
#include <QTemporaryDir>
#include <chrono>
#include <filesystem>
#include <string>

namespace rws::bench {
namespace {

using Clock = std::chrono::steady_clock;

/** Seconds that a program took; negative when it failed. */
double Run(const char* program, const QStringList& arguments) {
  const auto start = Clock::now();
  const int code = QProcess::execute(QString::fromUtf8(program), arguments);
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  return code == 0 ? seconds : -1;
}

/** So many names of one sample, in a folder of the disk on which that lies. */
void Fill(const std::filesystem::path& folder, int missions) {
  const std::filesystem::path sample = RWS_SAMPLES_DIR "/single_bridge_patrol.mis";
  for (int i = 0; i < missions; ++i)
    std::filesystem::create_hard_link(sample, folder / ("m" + std::to_string(i) + ".mis"));
}

void Start(benchmark::State& state) {
  qputenv("RWS_GAME_PATH", RWS_SAMPLES_DIR "/game");
  qputenv("RWS_SETTINGS_FILE", RWS_SAMPLES_DIR "/settings.ini");
  // A format that takes no time to write.
  const QString picture = QStringLiteral(RWS_SAMPLES_DIR "/picture.bmp");
  const QTemporaryDir folder(QStringLiteral(RWS_SAMPLES_DIR "/start-XXXXXX"));
  Fill(folder.path().toStdString(), static_cast<int>(state.range(0)));
  double floor = 0, work = 0;
  for (auto _ : state) {
    const double empty = Run(RWS_EMPTY_WINDOW, {picture});
    const double first = Run(RWS_PICTURE, {picture, folder.path()});
    if (empty < 0 || first < 0) return state.SkipWithError("a program failed");
    floor += empty;
    work += first;
    state.SetIterationTime(first);
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_ms"] = floor / runs * 1e3;
  state.counters["work_ms"] = work / runs * 1e3;
  state.counters["ratio"] = work / floor;
}
BENCHMARK(Start)->Arg(8)->Arg(20000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rws::bench
