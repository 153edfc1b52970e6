#pragma once

#include "tarn/targets/frame/bench.h"

namespace kiva {

// The benches of the languages: what a language's row names. Each puts its text, and gives the
// commands that run it.

std::string c_bench_run(const BenchJob& job);
void put_c_bench(const BenchJob& job, std::ostream& out);

std::string systemc_bench_run(const BenchJob& job);
void put_systemc_bench(const BenchJob& job, std::ostream& out);

std::string csharp_bench_run(const BenchJob& job);
void put_csharp_bench(const BenchJob& job, std::ostream& out);

std::string vhdl_bench_run(const BenchJob& job);
void put_vhdl_bench(const BenchJob& job, std::ostream& out);
void put_vhdl_altera_bench(const BenchJob& job, std::ostream& out);

std::string verilog_bench_run(const BenchJob& job);
void put_verilog_bench(const BenchJob& job, std::ostream& out);

std::string blif_bench_run(const BenchJob& job);
void put_blif_bench(const BenchJob& job, std::ostream& out);

}  // namespace kiva
