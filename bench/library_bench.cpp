// A library of 20,000 missions of 17 KB: read into an index beside the bare read of the same bytes
// with one search for a byte, by as many threads; what the index holds; keystrokes in its filter; a
// text looked for in the files, and how that compares with words kept in memory; rws-cli beside
// grep; the check of 500 of them beside reading their records.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "bench/heap_count.h"
#include "bench/mission_text.h"
#include "catalogues/aircraft.h"
#include "catalogues/maps.h"
#include "catalogues/squadrons.h"
#include "library/completion.h"
#include "library/filter.h"
#include "library/mission_checker.h"
#include "library/mission_reader.h"
#include "mission/kept_reader.h"
#include "services/text.h"

namespace rws::bench {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kBytes = 17'000;
constexpr int kFolders = 100;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

/** Takes the place of a word by others in turn, so that missions differ as those of an install do.
 */
void Vary(std::string& text, const std::string& word, const std::vector<std::string>& others,
          std::size_t seed) {
  text = Replace(text, word, others[seed % others.size()]);
}

class Library {
 public:
  explicit Library(int missions) : path_(fs::temp_directory_path() / "rws library bench") {
    Services_.AppPath = Services_.ProgramPath = RWS_DATA_DIR;
    Services_.LogSink = [](const std::string&) {};
    Services_.Ask.MsgBox = [](const std::string&, Buttons, Icon, const std::string&) {
      return Answer::Ok;
    };
    LoadMaps(Doc_, Services_);
    LoadRegiments(Tables_, Services_);
    LoadAircraftNames(Tables_, Services_);
    std::vector<std::string> maps, classes, squadrons;
    for (const auto& map : Doc_.Maps) maps.push_back(map.Path);
    for (const auto& aircraft : Tables_.Aircraft) classes.push_back(aircraft.Class);
    for (const auto& row : Tables_.Squadrons)
      for (const auto& regiment : row.Regiments) squadrons.push_back(regiment.Code);
    fs::remove_all(path_);
    for (int i = 0; i < missions; ++i) {
      const auto seed = static_cast<std::size_t>(i);
      const fs::path folder = path_ / ("Campaign " + std::to_string(i % kFolders));
      if (i < kFolders) fs::create_directories(folder);
      std::string text = MissionText(kBytes, 8);
      Vary(text, "Smolensk/sload.ini", maps, seed * 7);
      Vary(text, "IL_2_1941Early", classes, seed * 13);
      Vary(text, "r01", squadrons, seed * 31);
      if (i % 1000 == 0) text += "[Needle]\r\n  sought_word 1\r\n";
      const std::string name = "Mission" + std::to_string(i * 7919 % 100'000);
      std::ofstream(folder / (name + ".mis"), std::ios::binary) << text;
      std::ofstream(folder / (name + ".properties"), std::ios::binary)
          << "Name Patrol over the river " + std::to_string(i) + "\r\nShort " +
                 std::string(120, 'x') + "\\n\r\nDescription " + std::string(600, 'y') + "\\n\r\n";
      files_.push_back((folder / (name + ".mis")).string());
      files_.push_back((folder / (name + ".properties")).string());
    }
  }
  ~Library() { fs::remove_all(path_); }

  std::string Path() const { return path_.string(); }
  const std::vector<std::string>& Files() const { return files_; }
  IndexNames Names() const { return NamesFrom(Doc_.Maps, Tables_, Services_.Page); }
  const FileSystem& Disk() const { return Services_.Files; }
  const Services& Quiet() const { return Services_; }

 private:
  fs::path path_;
  std::vector<std::string> files_;
  Services Services_;
  Document Doc_;
  Catalogues Tables_;
};

/** One library for all rows of as many missions. */
const Library& LibraryOf(int missions) {
  static std::unique_ptr<Library> library;
  static int made = 0;
  if (made != missions) {
    library.reset();
    library = std::make_unique<Library>(missions);
    made = missions;
  }
  return *library;
}

/** All bytes read and looked through once for a byte that is not there. */
void BareRead(const Library& library) {
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    const auto& files = library.Files();
    for (std::size_t i = next++; i < files.size(); i = next++) {
      const std::string bytes = library.Disk().ReadFile(files[i]);
      benchmark::DoNotOptimize(std::memchr(bytes.data(), '\x01', bytes.size()));
    }
  };
  std::vector<std::jthread> threads;
  for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) threads.emplace_back(work);
}

void ReadInto(MissionIndex& index, const Library& library) {
  MissionReader reader(library.Disk(), index.Page());
  ReadRequest request{{library.Path()}};
  request.Tree = true;
  reader.Add(std::move(request));
  for (auto batch = reader.Wait(); !batch.empty(); batch = reader.Wait())
    for (const auto& facts : batch) index.Put(facts);
}

void Report(benchmark::State& state, double floor, double work) {
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_ms"] = floor / runs * 1e3;
  state.counters["work_ms"] = work / runs * 1e3;
  state.counters["ratio"] = work / floor;
}

void IndexRead(benchmark::State& state) {
  const Library& library = LibraryOf(static_cast<int>(state.range(0)));
  const auto missions = static_cast<double>(state.range(0));
  double floor = 0, work = 0, heap = 0;
  BareRead(library);
  for (auto _ : state) {
    auto start = Clock::now();
    BareRead(library);
    floor += SecondsSince(start);
    const std::size_t before = HeapInUse();
    MissionIndex index(library.Names(), CodePage());
    start = Clock::now();
    ReadInto(index, library);
    const double seconds = SecondsSince(start);
    work += seconds;
    state.SetIterationTime(seconds);
    heap = static_cast<double>(HeapInUse() - before);
    if (index.Missions() != static_cast<std::size_t>(missions))
      return state.SkipWithError("missions are missing");
  }
  Report(state, floor, work);
  state.counters["heap_MB"] = heap / 1e6;
  state.counters["heap_a_mission"] = heap / missions;
  state.counters["row_bytes"] = sizeof(IndexedMission);
}

/** What was read is taken as the window does it; the longest time that one taking holds it up. */
void LongestTaking(benchmark::State& state) {
  const Library& library = LibraryOf(static_cast<int>(state.range(0)));
  constexpr std::size_t kBatch = 500;
  double longest = 0;
  for (auto _ : state) {
    MissionIndex index(library.Names(), CodePage());
    MissionReader reader(library.Disk(), index.Page());
    ReadRequest request{{library.Path()}};
    request.Tree = true;
    reader.Add(std::move(request));
    while (true) {
      const auto start = Clock::now();
      const bool isIdle = reader.Progress().Idle;
      const auto batch = reader.Take(kBatch);
      for (const auto& facts : batch) index.Put(facts);
      longest = std::max(longest, SecondsSince(start));
      if (isIdle && batch.empty()) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }
  state.counters["longest_ms"] = longest * 1e3;
}

/** Lines typed letter by letter, each letter until it is known which rows are shown. */
void Keystrokes(benchmark::State& state) {
  const Library& library = LibraryOf(static_cast<int>(state.range(0)));
  MissionIndex index(library.Names(), CodePage());
  ReadInto(index, library);
  const std::vector<std::string> lines = {"mission77 -patrol",
                                          "map:crimea aircraft:\"bf 109\"",
                                          "squadron:jg52 player:yes",
                                          "river 12 army:red time:5-13 weather:good",
                                          "-map:a -aircraft:p-51 -squadron:iap flights:>7",
                                          "kind:single is:broken",
                                          "aircraft:e squadron:a map:o mission patrol"};
  std::vector<double> times;
  std::size_t shown = 0;
  for (auto _ : state)
    for (const auto& line : lines)
      for (std::size_t length = 1; length <= line.size(); ++length) {
        const auto start = Clock::now();
        const Query query = ParseQuery(std::string_view(line).substr(0, length));
        Filter filter(query, index);
        for (std::size_t row = 0; row < index.size(); ++row) shown += filter.Matches(row);
        times.push_back(SecondsSince(start));
      }
  benchmark::DoNotOptimize(shown);
  std::sort(times.begin(), times.end());
  state.counters["p50_ms"] = times[times.size() / 2] * 1e3;
  state.counters["p99_ms"] = times[times.size() * 99 / 100] * 1e3;
  state.counters["max_ms"] = times.back() * 1e3;
}

void Completing(benchmark::State& state) {
  const Library& library = LibraryOf(static_cast<int>(state.range(0)));
  MissionIndex index(library.Names(), CodePage());
  ReadInto(index, library);
  for (auto _ : state) benchmark::DoNotOptimize(Complete("squadron:", 9, index));
}

/** A text looked for in all files, beside the bare read. */
void TextSought(benchmark::State& state) {
  const Library& library = LibraryOf(static_cast<int>(state.range(0)));
  double floor = 0, work = 0;
  for (auto _ : state) {
    auto start = Clock::now();
    BareRead(library);
    floor += SecondsSince(start);
    start = Clock::now();
    MissionReader reader(library.Disk(), CodePage());
    ReadRequest request{{library.Path()}};
    request.Tree = true;
    request.Texts = {"sought_word"};
    reader.Add(std::move(request));
    std::size_t found = 0;
    for (auto batch = reader.Wait(); !batch.empty(); batch = reader.Wait())
      for (const auto& facts : batch) found += facts.TextsFound;
    const double seconds = SecondsSince(start);
    work += seconds;
    state.SetIterationTime(seconds);
    if (found == 0) return state.SkipWithError("nothing found");
  }
  Report(state, floor, work);
}

/** What the other way would take: the words of each mission but its numbers, as numbers of words
    that are kept once. Finds no part of a word and no two words beside each other. */
void WordsKept(benchmark::State& state) {
  const Library& library = LibraryOf(static_cast<int>(state.range(0)));
  double bytes = 0;
  for (auto _ : state) {
    std::set<std::string> words;
    bytes = 0;
    for (const auto& file : library.Files()) {
      std::set<std::string> own;
      std::string text = library.Disk().ReadFile(file);
      std::replace_if(
          text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) <= ' '; },
          ' ');
      for (const auto word : SplitAt(text, ' '))
        if (word.find_first_not_of("0123456789.-") != word.npos) own.emplace(word);
      bytes += 4.0 * static_cast<double>(own.size());
      words.merge(own);
    }
    for (const auto& word : words) bytes += static_cast<double>(sizeof(word) + word.size());
  }
  state.counters["words_MB"] = bytes / 1e6;
}

double SecondsOf(const std::string& command) {
  const auto start = Clock::now();
  if (std::system(command.c_str()) < 0) return -1;
  return SecondsSince(start);
}

void FindBesideGrep(benchmark::State& state) {
  const Library& library = LibraryOf(static_cast<int>(state.range(0)));
  double floor = 0, work = 0;
  for (auto _ : state) {
    floor += SecondsOf("grep -rl sought_word \"" + library.Path() + "\" > /dev/null");
    const double seconds = SecondsOf("\"" RWS_CLI "\" --tables \"" RWS_DATA_DIR
                                     "\" find --recursive --where text:sought_word \"" +
                                     library.Path() + "\" > /dev/null");
    work += seconds;
    state.SetIterationTime(seconds);
  }
  Report(state, floor, work);
}

/** Every mission read into records with its lines kept, by as many threads as the check has. */
void BareRecords(const Library& library) {
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    const Document doc;
    const Services services = library.Quiet();
    const auto& files = library.Files();
    // A mission and its briefing follow each other.
    for (std::size_t i = next += 2; i <= files.size(); i = next += 2) {
      Mission mission;
      ReadKeptMission(doc, services, mission, library.Disk().ReadFile(files[i - 2]));
      benchmark::DoNotOptimize(mission.Flights.data());
    }
  };
  std::vector<std::jthread> threads;
  for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) threads.emplace_back(work);
}

void CheckedMissions(benchmark::State& state) {
  const Library& library = LibraryOf(static_cast<int>(state.range(0)));
  const auto tables = ReadCheckTables(library.Quiet());
  double floor = 0, work = 0;
  BareRecords(library);
  for (auto _ : state) {
    auto start = Clock::now();
    BareRecords(library);
    floor += SecondsSince(start);
    start = Clock::now();
    MissionChecker checker(library.Disk(), tables, "");
    CheckRequest request{{library.Path()}};
    request.Tree = true;
    checker.Add(request);
    std::size_t missions = 0;
    for (auto batch = checker.Wait(); !batch.empty(); batch = checker.Wait())
      missions += batch.size();
    const double seconds = SecondsSince(start);
    work += seconds;
    state.SetIterationTime(seconds);
    if (missions != static_cast<std::size_t>(state.range(0)))
      return state.SkipWithError("missions are missing");
  }
  Report(state, floor, work);
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(20'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(IndexRead)->Apply(Sizes)->UseManualTime();
BENCHMARK(LongestTaking)->Apply(Sizes);
BENCHMARK(Keystrokes)->Apply(Sizes);
BENCHMARK(Completing)->Apply(Sizes);
BENCHMARK(TextSought)->Apply(Sizes)->UseManualTime();
BENCHMARK(WordsKept)->Apply(Sizes)->Iterations(1);
BENCHMARK(FindBesideGrep)->Apply(Sizes)->UseManualTime();
BENCHMARK(CheckedMissions)->Arg(500)->Unit(benchmark::kMillisecond)->UseManualTime();

}  // namespace
}  // namespace rws::bench

BENCHMARK_MAIN();
