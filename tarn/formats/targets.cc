#include "tarn/formats/targets.h"

#include <algorithm>

#include "tarn/model/module.h"

namespace kiva {

std::span<const Target> targets() {
  static const std::vector<Target> table = {
      {.option = "c",
       .help = "C function, .c and .h",
       .file = {.extension = ".c"},
       .print = [](Module* module) { module->printC(); },
       .beside = ".h"},
      {.option = "blif",
       .help = "netlist, .blif",
       .file = {.extension = ".blif", .in_folder = true, .tells_failure = true},
       .print = [](Module* module) { module->printBLIF(); }},
  };
  return table;
}

const Target& target(const std::string& option) {
  const auto all = targets();
  return *std::find_if(all.begin(), all.end(), [&](const Target& t) { return t.option == option; });
}

std::vector<std::string> Target::paths(const Module& module, const TargetRules& rules) const {
  std::vector<std::string> files{print_path(module, file, rules)};
  if (!beside.empty())
    files.push_back(files[0].substr(0, files[0].size() - file.extension.size()) + beside);
  return files;
}

}  // namespace kiva
