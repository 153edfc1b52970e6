#include "tarn/targets/frame/bench.h"

#include <filesystem>
#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/targets/frame/target.h"

namespace kiva {

namespace {

char bit_of(const std::unordered_map<long, bool>& bits, long index, char missing) {
  const auto at = bits.find(index);
  return at == bits.end() ? missing : at->second ? '1' : '0';
}

}  // namespace

std::string BenchJob::given(const BenchInstant& instant) const {
  std::string bits;
  for (long index : text.input_rails()) bits += bit_of(instant.given, index, '0');
  return bits;
}

std::string BenchJob::awaited(const BenchInstant& instant, char any) const {
  std::string bits;
  for (long index : text.output_rails()) bits += bit_of(instant.awaited, index, any);
  return bits;
}

BenchFile print_bench(const Target& target, Module* module, const BenchInstants& instants) {
  TargetRules rules = Compilation::target_rules();
  const std::vector<std::string> paths = target.paths(*module, rules);
  rules.untold = true;  // the text itself has told it
  const TargetText text(module, *target.bench->language, rules);
  const auto file_name = [](const std::string& path) {
    return std::filesystem::path(path).filename().string();
  };
  BenchJob job{text, instants, file_name(paths[0]), file_name(paths.back()),
               text.module_name() + "_bench"};
  job.run = target.bench->run(job);
  const std::filesystem::path folder = std::filesystem::path(paths[0]).parent_path();
  const std::string path = (folder / (job.name + target.bench->extension)).string();
  std::ostringstream out;
  target.bench->put(job, out);
  write_print_file(path, out.str(), target.file, rules);
  return {path, job.run};
}

std::string bench_comment(const BenchJob& job, const std::string& start, const std::string& end) {
  return start + "Gives " + job.file + " " + std::to_string(job.instants.size()) +
         " instants, and says where an output is another than awaited.\n" + start + "To run it:\n" +
         start + "  " + job.run + '\n' + end;
}

}  // namespace kiva
