// Reading a mission as a ratio to a plain line scan of the same bytes, writing one as a ratio to
// their being split and joined, and the heap that a mission takes with its shadow. Every ratio is
// taken in one run: floor and work alternate.

#include <benchmark/benchmark.h>

#include <cstring>

#include "bench/compare.h"
#include "bench/heap_count.h"
#include "bench/mission_text.h"
#include "mission/document.h"
#include "mission/kept_merge.h"
#include "mission/kept_reader.h"
#include "mission/reader.h"
#include "mission/writer.h"

namespace rws::bench {
namespace {

std::size_t ScanLines(const std::string& bytes) {
  std::size_t lines = 0;
  const char* at = bytes.data();
  const char* end = at + bytes.size();
  while (const void* hit = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
    ++lines;
    at = static_cast<const char*>(hit) + 1;
  }
  return lines;
}

/** The least that a writer does which looks at each line: parts the text and puts it together. */
std::size_t SplitAndJoin(const std::string& bytes) {
  std::vector<std::string_view> lines;
  for (std::size_t start = 0, end; (end = bytes.find('\n', start)) != bytes.npos; start = end + 1)
    lines.push_back(std::string_view(bytes).substr(start, end + 1 - start));
  std::string joined;
  for (const std::string_view line : lines) joined += line;
  return joined.size();
}

Document NewDocument() {
  Document doc;
  doc.Missions.resize(1);
  return doc;
}

Services NewServices() {
  Services services;
  services.LogSink = [](const std::string&) {};
  return services;
}

void ReadBytes(benchmark::State& state, const std::string& bytes) {
  const Services services = NewServices();
  std::string read;
  // The bytes that were read from the disk become the mission's own.
  Compare(
      state, [&] { benchmark::DoNotOptimize(ScanLines(bytes)); },
      [&] {
        Document doc = NewDocument();
        ReadMissionText(doc, services, 0, std::move(read));
        benchmark::DoNotOptimize(doc.Missions[0].Lines.size());
      },
      [&] { read = bytes; });
}

void Read(benchmark::State& state) {
  ReadBytes(state, MissionText(static_cast<std::size_t>(state.range(0))));
}

/** A multiplayer mission without flights has no end of its head: every line may hold a header
 * value. */
void ReadWithoutWing(benchmark::State& state) {
  std::string bytes = MissionText(static_cast<std::size_t>(state.range(0)));
  bytes.replace(bytes.find("[Wing]"), 6, "[None]");
  ReadBytes(state, bytes);
}

void Write(benchmark::State& state) {
  const std::string bytes = MissionText(static_cast<std::size_t>(state.range(0)));
  const Services services = NewServices();
  Document doc = NewDocument();
  ReadMissionText(doc, services, 0, bytes);
  Compare(
      state, [&] { benchmark::DoNotOptimize(SplitAndJoin(bytes)); },
      [&] {
        LineArray lines;
        if (!BuildMissionFile(doc, services, lines, 0, {})) state.SkipWithError("not built");
        benchmark::DoNotOptimize(lines.FileText().data());
      });
}

void ReadKept(benchmark::State& state) {
  const std::string bytes = MissionText(static_cast<std::size_t>(state.range(0)));
  const Services services = NewServices();
  const Document doc = NewDocument();
  Compare(
      state, [&] { benchmark::DoNotOptimize(ScanLines(bytes)); },
      [&] {
        Mission mission;
        ReadKeptMission(doc, services, mission, bytes);
        benchmark::DoNotOptimize(mission.Lines.size());
      });
}

/** One edit, merged into the file's lines and proved. */
void Merge(benchmark::State& state) {
  const std::string bytes = MissionText(static_cast<std::size_t>(state.range(0)));
  const Services services = NewServices();
  const Document doc = NewDocument();
  Mission mission;
  ReadKeptMission(doc, services, mission, bytes);
  mission.Flights[0].Fuel = "37";
  Compare(
      state, [&] { benchmark::DoNotOptimize(ScanLines(bytes)); },
      [&] {
        LineArray lines;
        if (!BuildKeptFile(doc, services, mission, lines)) state.SkipWithError("not built");
        benchmark::DoNotOptimize(lines.FileText().data());
      });
}

void Heap(benchmark::State& state) {
  const std::string bytes = MissionText(static_cast<std::size_t>(state.range(0)));
  const Services services = NewServices();
  std::size_t used = 0;
  for (auto _ : state) {
    const std::size_t before = HeapInUse();
    Document doc = NewDocument();
    ReadMissionText(doc, services, 0, bytes);
    doc.MissionShadow = doc.Missions;
    used = HeapInUse() - before;
  }
  state.counters["heap_bytes"] = static_cast<double>(used);
  state.counters["ratio"] = static_cast<double>(used) / static_cast<double>(bytes.size());
}

void Sizes(benchmark::internal::Benchmark* bench) {
  for (const int kilobytes : {20, 100, 300, 1000}) bench->Arg(kilobytes * 1000);
}

BENCHMARK(Read)->Apply(Sizes)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadWithoutWing)->Arg(300000)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(Write)->Apply(Sizes)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadKept)->Apply(Sizes)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(Merge)->Apply(Sizes)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(Heap)->Apply(Sizes)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace rws::bench

BENCHMARK_MAIN();
