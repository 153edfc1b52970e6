#pragma once

#include "tarn/targets/frame/bench.h"

namespace kiva {

// The benches of the languages: what a language's row names. Each puts its text, and gives the
// commands that run it.

std::string c_bench_run(const BenchJob& job);
void put_c_bench(const BenchJob& job, std::ostream& out);

std::string c_step_bench_run(const BenchJob& job);
void put_c_step_bench(const BenchJob& job, std::ostream& out);

std::string cpp_bench_run(const BenchJob& job);
void put_cpp_bench(const BenchJob& job, std::ostream& out);

std::string python_bench_run(const BenchJob& job);
void put_python_bench(const BenchJob& job, std::ostream& out);
std::string javascript_bench_run(const BenchJob& job);
void put_javascript_bench(const BenchJob& job, std::ostream& out);
std::string json_bench_run(const BenchJob& job);
void put_json_bench(const BenchJob& job, std::ostream& out);

/// A value of the stimuli as an expression of C: of a type of the user's own it may be a name.
std::string value_literal(const std::string& type, const std::string& text);
bool is_number_text(const std::string& text);

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
std::string aiger_bench_run(const BenchJob& job);
void put_blif_bench(const BenchJob& job, std::ostream& out);

}  // namespace kiva
