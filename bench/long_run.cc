#include "bench/long_run.h"

#include <filesystem>
#include <fstream>
#include <random>

#include "bench/module_text.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva::bench {

std::unique_ptr<Simulation> generated_simulation(long equations, long registers) {
  const std::string file = std::filesystem::temp_directory_path() / "kiva_bench_module.zuc";
  std::ofstream(file) << generated_module(equations, registers);
  return std::make_unique<Simulation>(read_zuc_file(file, "", "").module);
}

void run_at_random(Recording& recording, Simulation& simulation, long instants) {
  std::mt19937 random(1);
  const auto choose = [&] {
    const unsigned bits = random();
    for (size_t row = 0; row < simulation.input_rows().size(); ++row)
      simulation.choose_input(row,
                              (bits >> (row % 32) & 1) != 0 ? SignalState::one : SignalState::zero);
  };
  recording.run(instants, nullptr, choose, nullptr, nullptr);
}

}  // namespace kiva::bench
