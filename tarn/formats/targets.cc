#include "tarn/formats/targets.h"

#include <algorithm>
#include <utility>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"

namespace kiva {

namespace {

void print_vhdl(Module* module, bool altera) {
  const bool before = std::exchange(Compilation::VHDLALTERAFlag(), altera);
  module->printVHDL();
  Compilation::VHDLALTERAFlag() = before;
}

/// Prints a text that has no print operation of its own.
template <class Put>
void print_text(Module* module, const char* option, Put put) {
  print_target(*module, target(option).file, Compilation::target_rules(),
               [&](std::ostream& out) { put(*module, out); });
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
       .help = "VHDL of bits, .vhdl",
       .file = {.extension = ".vhdl"},
       .print = [](Module* module) { print_vhdl(module, false); }},
      {.option = "vhdl-altera",
       .help = "VHDL of std_logic, .vhdl",
       .file = {.extension = ".vhdl"},
       .print = [](Module* module) { print_vhdl(module, true); }},
      {.option = "systemc",
       .help = "SystemC, _sc.cpp and _sc.h",
       .file = {.extension = "_sc.cpp"},
       .print = print_systemc,
       .beside = "_sc.h"},
      {.option = "smv",
       .help = "model checking, .smv",
       .file =
           {.extension = ".smv", .in_folder = true, .tells_existing = true, .tells_failure = true},
       .print = [](Module* module) { module->printSMV(); },
       .finalises = true},
      {.option = "lustre",
       .help = "Lustre node, .lus",
       .file = {.extension = ".lus"},
       .print =
           [](Module* module) {
             print_text(module, "lustre",
                        [](Module& m, std::ostream& out) { m.LUSTRE_put(out, 0); });
           }},
      {.option = "esterel",
       .help = "Esterel module, .strl",
       .file = {.extension = ".strl"},
       .print =
           [](Module* module) {
             print_text(module, "esterel",
                        [](Module& m, std::ostream& out) { m.ESTEREL_put(out, 0); });
           }},
      {.option = "csharp",
       .help = "C# component, .cs",
       .file = {.extension = ".cs", .in_folder = true, .tells_failure = true},
       .print = [](Module* module) { module->printCSHARP(); },
       .finalised_only = true},
      {.option = "gal",
       .help = "interface as sections, .gal",
       .file = {.extension = ".gal"},
       .print = [](Module* module) { module->printENCAPSULATEDGAL(); }},
      {.option = "explicit",
       .help = "explicit automaton, .sce",
       .file = {.extension = ".sce"},
       .print =
           [](Module* module) {
             print_text(module, "explicit",
                        [](Module& m, std::ostream& out) { m.WRENCC_put(out, 0); });
           },
       .finalised_only = true},
      {.option = "doc",
       .help = "transition system, .txt",
       .file = {.extension = ".txt"},
       .print =
           [](Module* module) {
             print_text(module, "doc", [](Module& m, std::ostream& out) { m.DOC_put(out, 0); });
           }},
      {.option = "latex",
       .help = "LaTeX document, .tex",
       .file = {.extension = ".tex"},
       .print =
           [](Module* module) {
             print_text(module, "latex", [](Module& m, std::ostream& out) { m.LATEX_put(out); });
           }},
      {.option = "debug",
       .help = "tables in memory, .dbg",
       .file =
           {.extension = ".dbg", .in_folder = true, .tells_existing = true, .tells_failure = true},
       .print = [](Module* module) { module->printDebug(); }},
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
