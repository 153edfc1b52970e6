// Reading a compiled module, whole, with its trace file (/1) and without (/0), of a count of nodes
// to generate. KIVA_CIRCUITS names a folder with s38417.zuc to add.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "bench/module_text.h"
#include "tarn/model/module.h"
#include "tarn/session/session_files.h"
#include "tarn/zuc/zuc_reader.h"

namespace {

void read_file(benchmark::State& state, const std::string& file, bool traced) {
  if (!traced) kiva::SessionFiles::current().trace = nullptr;
  const auto size = static_cast<int64_t>(std::filesystem::file_size(file));
  for (auto _ : state) {
    const kiva::ZucRead read = kiva::read_zuc_file(file, "", "");
    if (read.module == nullptr) {
      state.SkipWithError(read.problem.c_str());
      return;
    }
    state.PauseTiming();
    delete read.module;
    state.ResumeTiming();
  }
  kiva::SessionFiles::current().trace.reset();
  state.SetBytesProcessed(size * static_cast<int64_t>(state.iterations()));
}

void read_generated(benchmark::State& state) {
  const std::string file =
      (std::filesystem::temp_directory_path() / "kiva_read_bench.zuc").string();
  std::ofstream(file) << kiva::bench::generated_nodes(state.range(0));
  read_file(state, file, state.range(1) != 0);
}
BENCHMARK(read_generated)
    ->ArgsProduct({{1000, 10000, 30000}, {1, 0}})
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (const char* circuits = std::getenv("KIVA_CIRCUITS")) {
    const auto source = std::filesystem::path(circuits) / "s38417.zuc";
    const auto copy = std::filesystem::temp_directory_path() / "kiva_s38417.zuc";
    std::filesystem::copy_file(source, copy, std::filesystem::copy_options::overwrite_existing);
    benchmark::RegisterBenchmark(
        "read_s38417",
        [copy](benchmark::State& state) { read_file(state, copy.string(), state.range(0) != 0); })
        ->Arg(1)
        ->Arg(0)
        ->Unit(benchmark::kMillisecond);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
