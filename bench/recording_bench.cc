// The past of a long run: what it takes in memory, and how fast any instant of it is there.

#include <benchmark/benchmark.h>

#include <random>

#include "bench/long_run.h"

namespace {

using kiva::Recording;
using kiva::Simulation;

constexpr long instants = 1'000'000;

/// A million instants of a module of 200 signals, with random inputs.
struct LongRun {
  LongRun() {
    simulation = kiva::bench::generated_simulation(200, 40);
    recording = std::make_unique<Recording>(simulation.get());
    kiva::bench::run_at_random(*recording, *simulation, instants);
  }
  std::unique_ptr<Simulation> simulation;
  std::unique_ptr<Recording> recording;
};

LongRun& long_run() {
  static LongRun run;
  return run;
}

void tell_memory(benchmark::State& state) {
  state.counters["MiB"] = static_cast<double>(long_run().recording->memory()) / (1 << 20);
  state.counters["signals"] = static_cast<double>(long_run().simulation->input_names().size() +
                                                  long_run().simulation->output_names().size() +
                                                  long_run().simulation->local_names().size());
}

void any_instant(benchmark::State& state) {
  std::mt19937 random(2);
  for (auto _ : state) long_run().recording->to({0, static_cast<long>(random() % instants)});
  tell_memory(state);
}

void back(benchmark::State& state) {
  long_run().recording->to({0, instants / 2});
  for (auto _ : state) long_run().recording->back();
  tell_memory(state);
}

void forward(benchmark::State& state) {
  long_run().recording->to({0, instants / 2});
  for (auto _ : state) long_run().recording->forward();
  tell_memory(state);
}

}  // namespace

BENCHMARK(any_instant)->Unit(benchmark::kMicrosecond)->Iterations(2000);
BENCHMARK(back)->Unit(benchmark::kMicrosecond)->Iterations(20000);
BENCHMARK(forward)->Unit(benchmark::kMicrosecond)->Iterations(20000);
BENCHMARK_MAIN();
