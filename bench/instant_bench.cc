// Instants of the engine, no text written. "equations" is the rate over all equations of the
// module; "pass" counts the equations alone, "step" a whole instant. KIVA_CIRCUITS names a folder
// with circuits to add.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "bench/module_text.h"
#include "engine/simulation.h"
#include "engine/stimuli.h"
#include "tarn/zuc/zuc_reader.h"

namespace {

using kiva::Simulation;

Simulation* load(benchmark::State& state, const std::string& file) {
  const kiva::ZucRead read = kiva::read_zuc_file(file, "", "");
  if (read.module == nullptr) {
    state.SkipWithError(read.problem.c_str());
    return nullptr;
  }
  return new Simulation(read.module);
}

void count(benchmark::State& state, const Simulation& simulation) {
  state.counters["equations"] = benchmark::Counter(
      static_cast<double>(simulation.equation_number()) * static_cast<double>(state.iterations()),
      benchmark::Counter::kIsRate);
}

/// Each instant changes some inputs, as stimuli do.
void steps(benchmark::State& state, const std::string& file) {
  std::unique_ptr<Simulation> simulation(load(state, file));
  if (simulation == nullptr) return;
  unsigned pattern = 1;
  for (auto _ : state) {
    pattern = pattern * 1664525u + 1013904223u;
    for (size_t row = 0; row < simulation->input_rows().size(); ++row)
      simulation->choose_input(row, ((pattern >> (row % 32)) & 1) != 0 ? kiva::SignalState::one
                                                                       : kiva::SignalState::zero);
    simulation->step(nullptr);
  }
  count(state, *simulation);
}

/// The equations alone, over and over on one context.
void passes(benchmark::State& state, const std::string& file) {
  std::unique_ptr<Simulation> simulation(load(state, file));
  if (simulation == nullptr) return;
  simulation->step(nullptr);
  std::vector<int> context = simulation->state().context;
  for (auto _ : state) {
    simulation->run_equations(context.data());
    benchmark::ClobberMemory();
  }
  count(state, *simulation);
}

void register_file(const std::string& name, const std::string& file) {
  benchmark::RegisterBenchmark(("step/" + name).c_str(),
                               [file](benchmark::State& state) { steps(state, file); });
  benchmark::RegisterBenchmark(("pass/" + name).c_str(),
                               [file](benchmark::State& state) { passes(state, file); });
}

}  // namespace

int main(int argc, char** argv) {
  const std::filesystem::path scratch = std::filesystem::temp_directory_path();
  for (long equations : {200L, 2000L, 20000L}) {
    const auto file = scratch / ("kiva_generated_" + std::to_string(equations) + ".zuc");
    std::ofstream(file) << kiva::bench::generated_module(equations, equations / 20);
    register_file("generated " + std::to_string(equations), file.string());
  }
  if (const char* circuits = std::getenv("KIVA_CIRCUITS"))
    for (const char* name : {"s1423", "s5378", "s38417"}) {
      const auto copy = scratch / (std::string("kiva_") + name + ".zuc");
      std::filesystem::copy_file(std::filesystem::path(circuits) / (std::string(name) + ".zuc"),
                                 copy, std::filesystem::copy_options::overwrite_existing);
      register_file(name, copy.string());
    }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
