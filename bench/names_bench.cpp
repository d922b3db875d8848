// Names of a pack of 6,000 aircraft and 30,000 loadouts: a start with lists that were kept, against
// reading them from the pack, and look-ups against those among the tables' own few hundred.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "catalogues/aircraft.h"
#include "catalogues/maps.h"
#include "catalogues/squadrons.h"
#include "catalogues/weapons.h"
#include "gamelists/game_names.h"

namespace rws::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kAircraft = 6000, kLoadouts = 5, kSquadrons = 4200, kMods = 200;

/** The program with its tables, and a game with a large pack. */
struct World {
  explicit World(bool withPack = true)
      : Game((fs::temp_directory_path() / "rws names bench").string()) {
    Services.ProgramPath = Services.AppPath = RWS_DATA_DIR;
    Services.LogSink = [](const std::string&) {};
    if (withPack) Write();
  }
  ~World() { fs::remove_all(Game); }

  void Write() const {
    const fs::path mods = fs::path(Game) / "#UP#", std = mods / "STD";
    for (int i = 0; i < kMods; ++i)
      fs::create_directories(mods / ("Mod" + std::to_string(i)) / "3do");
    for (const char* folder : {"com/maddox/il2/objects", "i18n", "PaintSchemes"})
      fs::create_directories(std / folder);
    std::ofstream air(std / "com/maddox/il2/objects/air.ini"), names(std / "i18n/plane.properties"),
        texts(std / "i18n/weapons.properties"), regiments(std / "PaintSchemes/regiments.ini");
    air << "[AIR]\n";
    for (int i = 0; i < kAircraft; ++i) {
      const std::string key = "Type-" + std::to_string(i) + "A";
      air << key << "  air.TYPE_" << i << "A " << 1 + i % 2 << " NOINFO g01 SUMMER\n";
      names << key << " Maker Type " << i << " A, 1943\n";
      for (int j = 0; j < kLoadouts; ++j)
        texts << key << "." << j << "xSC250_and_more " << j << " bombs of 250 kg and more\n";
    }
    regiments << "[Red]\n";
    for (int i = 0; i < kSquadrons; ++i) regiments << "Sq" << i << "x\n";
  }

  GameNames Find(ReadLists how = ReadLists::IfChanged) const {
    return FindGameNames(Services, Game, {}, Game + "/kept.dat", {}, how);
  }
  void Load(const GameNames& names) {
    Tables = {};
    LoadRegiments(Tables, Services);
    LoadMaps(Doc, Services);
    LoadAircraftArray(Doc, Tables, Services);
    ApplyGameNames(Doc, Tables, Services, names, {});
  }

  std::string Game;
  rws::Services Services;
  Document Doc;
  Catalogues Tables;
};

void StartOnTables(benchmark::State& state) {
  World world(false);
  for (auto _ : state) world.Load({});
}
BENCHMARK(StartOnTables)->Unit(benchmark::kMillisecond);

/** The aim: at most 20 ms more than on the tables. */
void StartOnKeptLists(benchmark::State& state) {
  World world;
  world.Find();
  for (auto _ : state) {
    GameNames names = world.Find();
    world.Load(names);
    state.PauseTiming();
    world.Tables = {};
    names = {};
    state.ResumeTiming();
  }
  world.Load(world.Find());
  if (world.Tables.Aircraft.size() != kAircraft) state.SkipWithError("not the lists");
}
BENCHMARK(StartOnKeptLists)->Unit(benchmark::kMillisecond);

void StartOnAPackReadAnew(benchmark::State& state) {
  World world;
  for (auto _ : state) world.Load(world.Find(ReadLists::Anew));
}
BENCHMARK(StartOnAPackReadAnew)->Unit(benchmark::kMillisecond);

/** Name, skin folder and loadout of each of so many aircraft, over and over: a mission has 128
    flights at most, those of a whole library have all; per aircraft. */
void LookUp(benchmark::State& state, bool withPack, std::size_t different) {
  World world(withPack);
  world.Load(withPack ? world.Find() : GameNames());
  std::vector<std::string> classes;
  const auto& table = world.Tables.Aircraft;
  different = std::min(different, table.size());
  for (std::size_t i = 0; i < different; ++i)
    classes.push_back(table[i * table.size() / different].Class);
  std::size_t i = 0;
  for (auto _ : state) {
    const std::string& wanted = classes[i++ * 7 % classes.size()];
    benchmark::DoNotOptimize(GetPlaneName(world.Tables, world.Services, wanted));
    benchmark::DoNotOptimize(IsKnownPlane(world.Tables, wanted));
    benchmark::DoNotOptimize(GetPlaneFolder(world.Tables, wanted));
    benchmark::DoNotOptimize(DisplayWeps(world.Tables, world.Services, wanted, "none"));
  }
}
BENCHMARK_CAPTURE(LookUp, OfAMissionAmongTheTables, false, 128);
BENCHMARK_CAPTURE(LookUp, OfAMissionAmongSixThousand, true, 128);
BENCHMARK_CAPTURE(LookUp, OfAllAmongTheTables, false, kAircraft);
BENCHMARK_CAPTURE(LookUp, OfAllAmongSixThousand, true, kAircraft);

}  // namespace
}  // namespace rws::bench

BENCHMARK_MAIN();
