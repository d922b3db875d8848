// Loading the shipped tables, and the flight list of a mission of 128 flights with them and with
// the lists of a large pack.

#include <benchmark/benchmark.h>

#include "catalogues/aircraft.h"
#include "catalogues/countries.h"
#include "catalogues/dogfight.h"
#include "catalogues/listed_names.h"
#include "catalogues/maps.h"
#include "catalogues/squadrons.h"
#include "mainwindow/flight_area.h"

namespace rws::bench {
namespace {

struct Loaded : Session {
  Loaded() {
    Services.ProgramPath = RWS_DATA_DIR;
    Services.LogSink = [](const std::string&) {};
  }
  void LoadAll() {
    LoadRegiments(Tables, Services);
    LoadAC(Tables, Services);
    LoadMaps(Doc, Services);
    LoadAircraftArray(Doc, Tables, Services);
    ReadDogFight(Tables, Services);
  }
};

void LoadTables(benchmark::State& state) {
  for (auto _ : state) {
    Loaded loaded;
    loaded.LoadAll();
    if (loaded.Tables.Aircraft.empty()) state.SkipWithError("no tables");
  }
}
BENCHMARK(LoadTables)->Unit(benchmark::kMillisecond);

/** A pack of 6,000 aircraft with five loadouts each, and of 4,200 squadrons. */
ListedNames LargePack() {
  constexpr int kAircraft = 6000, kLoadouts = 5, kSquadrons = 4200;
  ListedNames names;
  for (int i = 0; i < kAircraft; ++i) {
    const std::string number = std::to_string(i) + "A";
    auto& aircraft = names.Aircraft.emplace_back();
    aircraft.Key = "Type-" + number;
    aircraft.Class = "TYPE_" + number;
    aircraft.Name = "Maker Type " + number + ", 1943";
    aircraft.Army = i % 2 ? ListedArmy::Blue : ListedArmy::Red;
    for (int j = 0; j < kLoadouts; ++j)
      aircraft.Loadouts.push_back(
          {std::to_string(j) + "xSC250_and_more", std::to_string(j) + " bombs of 250 kg and more"});
  }
  // As in packs, codes have many lengths and last letters.
  const std::string starts[] = {"", "RA_", "IJA_", "USA_FG_"}, ends[] = {"P", "S", "z", "a", "N"};
  for (int i = 0; i < kSquadrons; ++i)
    names.Regiments.push_back({starts[i % 4] + "Sq" + std::to_string(i) + ends[i % 5],
                               "Squadron " + std::to_string(i), "", "ru", "ru", ListedArmy::Red});
  return names;
}

void FillFlightList(benchmark::State& state, Loaded& loaded) {
  loaded.Doc.Missions.resize(1);
  auto& flights = loaded.Doc.Missions[0].Flights;
  flights.resize(128);
  for (std::size_t i = 0; i < flights.size(); ++i) {
    const auto& squadrons = loaded.Tables.Squadrons;
    const auto& regiments = squadrons[i % squadrons.size()].Regiments;
    flights[i].Name = regiments[i * 37 % regiments.size()].Code + "0" + std::to_string(i % 4);
    flights[i].Class = loaded.Tables.Aircraft[i * 13 % loaded.Tables.Aircraft.size()].Class;
    flights[i].Planes = "4";
  }
  Popups popups;
  FlightArea area(loaded, popups, nullptr);
  area.show();
  for (auto _ : state) area.LoadPlaneList(-1);
}

void FlightListOf128(benchmark::State& state) {
  Loaded loaded;
  loaded.LoadAll();
  FillFlightList(state, loaded);
}
BENCHMARK(FlightListOf128)->Unit(benchmark::kMillisecond);

/** The aim: less than 4 ms. */
void FlightListOf128OfALargePack(benchmark::State& state) {
  Loaded loaded;
  loaded.LoadAll();
  ApplyListedNames(loaded.Doc, loaded.Tables, loaded.Services, LargePack(), Unlisted::Flyable);
  if (loaded.Tables.Aircraft.size() != 6000) state.SkipWithError("not the lists");
  FillFlightList(state, loaded);
}
BENCHMARK(FlightListOf128OfALargePack)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rws::bench
