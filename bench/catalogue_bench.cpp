// Loading the shipped tables, and the flight list of a mission of 128 flights with them.

#include <benchmark/benchmark.h>

#include "catalogues/aircraft.h"
#include "catalogues/countries.h"
#include "catalogues/dogfight.h"
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

void FlightListOf128(benchmark::State& state) {
  Loaded loaded;
  loaded.LoadAll();
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
BENCHMARK(FlightListOf128)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rws::bench
