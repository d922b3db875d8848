// Opening the dialogs with long lists, up to their first picture, against a bare tree of as many
// rows that is filled and painted in the same run.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDialog>
#include <QTreeWidget>
#include <chrono>

#include "bench/mission_text.h"
#include "catalogues/aircraft.h"
#include "catalogues/countries.h"
#include "catalogues/dogfight.h"
#include "catalogues/squadrons.h"
#include "editors/frmChgAC.h"
#include "editors/frmDogFight.h"
#include "editors/frmStatic.h"
#include "editors/frmWP.h"
#include "mission/reader.h"
#include "session/recording.h"
#include "session/session.h"
#include "tools/frmChanges.h"

namespace rws::bench {
namespace {

struct World : Session {
  World() {
    Services.ProgramPath = RWS_DATA_DIR;
    Services.LogSink = [](const std::string&) {};
    LoadRegiments(Tables, Services);
    LoadAC(Tables, Services);
    LoadAircraftArray(Doc, Tables, Services);
    ReadDogFight(Tables, Services);
    Doc.Missions.resize(1);
  }
  void Read(const std::string& text) {
    ReadMissionText(Doc, Services, 0, text);
    Doc.MissionShadow = Doc.Missions;
  }
};

template <class Work>
double Seconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void OpenBare(int rows) {
  QTreeWidget tree;
  for (int row = 0; row < rows; ++row)
    tree.addTopLevelItem(new QTreeWidgetItem({QString::number(row), QStringLiteral("text")}));
  tree.show();
  tree.grab();
}

template <class Form, class Prepare>
void Open(benchmark::State& state, World& world, int rows, Prepare prepare) {
  double floor = 0, work = 0;
  for (auto _ : state) {
    floor += Seconds([&] { OpenBare(rows); });
    const double seconds = Seconds([&] {
      Form form(world, nullptr);
      prepare(form);
      form.LoadForm();
      form.show();
      form.grab();
    });
    work += seconds;
    state.SetIterationTime(seconds);
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_ms"] = floor / runs * 1e3;
  state.counters["work_ms"] = work / runs * 1e3;
  state.counters["ratio"] = work / floor;
}

void RouteOf2000(benchmark::State& state) {
  World world;
  std::string text = "[MAIN]\r\n[Wing]\r\n  r0100\r\n[r0100]\r\n  Planes 1\r\n[r0100_Way]\r\n";
  for (int i = 0; i < 2000; ++i)
    text += "  NORMFLY " + std::to_string(i * 100) + ".00 5000.00 500.00 300.00 &0\r\n";
  world.Read(text + "[NStationary]\r\n");
  Open<frmWP>(state, world, 2000, [](frmWP&) {});
}
BENCHMARK(RouteOf2000)->UseManualTime()->Unit(benchmark::kMillisecond);

void ChangeAircraft(benchmark::State& state) {
  World world;
  Open<frmChgAC>(state, world, 4238, [](frmChgAC& form) {
    form.ACName = "BF_109G6";
    form.Group = "I_JG100";
  });
}
BENCHMARK(ChangeAircraft)->UseManualTime()->Unit(benchmark::kMillisecond);

void Parked2000(benchmark::State& state) {
  World world;
  std::string text = "[MAIN]\r\n[Wing]\r\n[NStationary]\r\n";
  for (int i = 0; i < 2000; ++i)
    text +=
        "  " + std::to_string(i) + "_Static vehicles.planes.Plane$" +
        world.Tables.Aircraft[static_cast<std::size_t>(i) % world.Tables.Aircraft.size()].Class +
        " 1 1000.00 2000.00 360.00 0.0 de\r\n";
  world.Read(text);
  Open<frmStatic>(state, world, 2000, [](frmStatic&) {});
}
BENCHMARK(Parked2000)->UseManualTime()->Unit(benchmark::kMillisecond);

void HomeBaseOf365(benchmark::State& state) {
  World world;
  world.Read("[MAIN]\r\n[BornPlace]\r\n  1 3000 5000 6000\r\n[NStationary]\r\n");
  Open<frmDogFight>(state, world, 365, [](frmDogFight& form) { form.Idx = 0; });
}
BENCHMARK(HomeBaseOf365)->UseManualTime()->Unit(benchmark::kMillisecond);

void ChangesOf1MB(benchmark::State& state) {
  World world;
  world.Read(MissionText(1'000'000, 20));
  world.Doc.MissionFiles = {"/missions/a.mis"};
  NoteRead(world, 0);
  for (auto& flight : world.Doc.Missions[0].Flights) flight.Fuel = "33";
  Open<frmChanges>(state, world, 1, [](frmChanges& form) {
    form.MissionPath = "/missions/a.mis";
    form.Changed = [] {};
  });
}
BENCHMARK(ChangesOf1MB)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace rws::bench
