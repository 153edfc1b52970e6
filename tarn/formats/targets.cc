#include "tarn/formats/targets.h"

#include <algorithm>
#include <utility>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"

namespace kiva {

namespace {

void print_vhdl(Module* module, bool altera) {
  const bool before = std::exchange(Compilation::VHDLALTERAFlag, altera);
  module->printVHDL();
  Compilation::VHDLALTERAFlag = before;
}

}  // namespace

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
      {.option = "vhdl",
       .help = "write a VHDL entity of bits, MODULE.vhdl",
       .file = {.extension = ".vhdl"},
       .print = [](Module* module) { print_vhdl(module, false); }},
      {.option = "vhdl-altera",
       .help = "write a VHDL entity of std_logic, MODULE.vhdl",
       .file = {.extension = ".vhdl"},
       .print = [](Module* module) { print_vhdl(module, true); }},
      {.option = "systemc",
       .help = "write functions for a SystemC model, MODULE_sc.cpp and MODULE_sc.h",
       .file = {.extension = "_sc.cpp"},
       .print = print_systemc,
       .beside = "_sc.h"},
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
