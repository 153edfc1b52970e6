// The past of a long run: what it takes in memory, and how fast any instant of it is there.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "bench/module_text.h"
#include "engine/recording.h"
#include "tarn/zuc/zuc_reader.h"

namespace {

using kiva::Recording;
using kiva::Simulation;

constexpr long instants = 1'000'000;

/// A million instants of a module of 200 signals, with random inputs.
struct LongRun {
  LongRun() {
    const std::string file = std::filesystem::temp_directory_path() / "kiva_recording_bench.zuc";
    std::ofstream(file) << kiva::bench::generated_module(200, 40);
    simulation = std::make_unique<Simulation>(kiva::read_zuc_file(file, "", "").module);
    recording = std::make_unique<Recording>(simulation.get());
    std::mt19937 random(1);
    recording->run(
        instants, nullptr,
        [&] {
          const unsigned bits = random();
          for (size_t row = 0; row < simulation->input_rows().size(); ++row)
            simulation->choose_input(row, (bits >> (row % 32) & 1) != 0 ? kiva::SignalState::one
                                                                        : kiva::SignalState::zero);
        },
        nullptr, nullptr);
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
