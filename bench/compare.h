#pragma once

#include <benchmark/benchmark.h>

#include <chrono>

namespace rws::bench {

template <class Work>
double Seconds(Work work) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  work();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

/** Runs floor and work in turn and reports their times and ratio; `prepare` ahead of the work is
   not counted. */
template <class Floor, class Work, class Prepare = void (*)()>
void Compare(
    benchmark::State& state, Floor floor, Work work, Prepare prepare = [] {}) {
  double floorSeconds = 0, workSeconds = 0;
  for (auto _ : state) {
    floorSeconds += Seconds(floor);
    prepare();
    const double seconds = Seconds(work);
    workSeconds += seconds;
    state.SetIterationTime(seconds);
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["floor_us"] = floorSeconds / runs * 1e6;
  state.counters["work_us"] = workSeconds / runs * 1e6;
  state.counters["ratio"] = workSeconds / floorSeconds;
}

}  // namespace rws::bench
