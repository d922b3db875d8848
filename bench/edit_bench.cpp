// Selecting a mission with few and with many read; and from a changed fuel value to the repainted
// window, on a mission of 15,000 lines and 100 flights, against a bare spin box that is changed and
// repainted in the same run.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QSpinBox>
#include <algorithm>
#include <chrono>
#include <vector>

#include "bench/mission_text.h"
#include "mainwindow/frmRWS.h"
#include "mission/reader.h"

namespace rws::bench {
namespace {

constexpr std::size_t kFlights = 100, kLines = 15000, kBytes = 1'100'000;

using Times = std::vector<double>;

/** Runs an edit and all that it asks to be painted; adds its milliseconds. */
template <class Edit>
void Time(Times& times, Edit edit) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  edit();
  QCoreApplication::processEvents();
  times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
}

double Percentile(Times& times, std::size_t percent) {
  std::sort(times.begin(), times.end());
  return times[times.size() * percent / 100];
}

void FuelEdit(benchmark::State& state) {
  Session session;
  Services& services = session.Services;
  Document& doc = session.Doc;
  Catalogues& tables = session.Tables;
  services.ProgramPath = RWS_DATA_DIR;
  services.LogSink = [](const std::string&) {};
  frmRWS window(session);
  window.InitForm();
  window.resize(1200, 900);
  window.show();
  doc.Missions.resize(1);
  ReadMissionText(doc, services, 0, MissionText(kBytes, kFlights));
  const std::string aircraft = "IL_2_1941Early";
  tables.Aircraft = {
      {"", aircraft, aircraft, "", "", {{"Default", "default"}, {"Empty (No Ammo)", "none"}}}};
  window.ShowMission();
  QCoreApplication::processEvents();
  if (doc.Missions[0].Flights.size() != kFlights || doc.Missions[0].Lines.size() < kLines)
    return state.SkipWithError("not the mission that was meant");
  QSpinBox box;
  box.show();
  GuardedEdit& fuel = *window.flightArea->fraFlight->txtFuel;
  Times floor, work;
  int value = 0;
  for (auto _ : state) {
    value = 10 + (value + 1) % 80;
    Time(floor, [&] { box.setValue(value); });
    Time(work, [&] { fuel.setText(QString::number(value)); });
    state.SetIterationTime(work.back() / 1e3);
  }
  state.counters["floor_ms"] = Percentile(floor, 50);
  state.counters["work_ms"] = Percentile(work, 50);
  state.counters["ratio"] = Percentile(work, 50) / Percentile(floor, 50);
  state.counters["p99_ms"] = Percentile(work, 99);
  if (doc.Missions[0].Flights[static_cast<std::size_t>(doc.CurFlight)].Fuel !=
      fuel.text().toStdString())
    state.SkipWithError("the edit did not reach the record");
}
BENCHMARK(FuelEdit)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(2000);

/** The selection of a mission that has been read already, with this many read: it must not matter
    how many. */
void SelectMission(benchmark::State& state) {
  constexpr std::size_t kSmall = 20'000;
  Session session;
  Document& doc = session.Doc;
  session.Services.ProgramPath = RWS_DATA_DIR;
  session.Services.LogSink = [](const std::string&) {};
  frmRWS window(session);
  window.InitForm();
  window.show();
  doc.Missions.resize(1);
  ReadMissionText(doc, session.Services, 0, MissionText(kSmall));
  doc.Missions.resize(static_cast<std::size_t>(state.range(0)), doc.Missions[0]);
  window.ShowMission();
  QCoreApplication::processEvents();
  Times work;
  for (auto _ : state) {
    doc.CurMission = (doc.CurMission + 1) % 10;
    Time(work, [&] { window.ShowMission(); });
    state.SetIterationTime(work.back() / 1e3);
  }
  state.counters["work_ms"] = Percentile(work, 50);
}
BENCHMARK(SelectMission)
    ->Arg(10)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(200);

}  // namespace
}  // namespace rws::bench
