// A module as a netlist in BLIF: a latch for each bit of state, a table for each node.

#include <iostream>

#include "tarn/formats/target_text.h"
#include "tarn/formats/targets.h"
#include "tarn/model/compilation.h"

namespace kiva {

namespace {

// Names that begin with a digit are taken by some tools and changed by others.
const TargetText::Target blif_target{
    .shape = {.target = "BLIF", .more_characters = ".@"},
    .told_wires = true,
    .names_module = false,
    .node_prefix = [](const std::string& module) { return module + "_node_"; }};

void put_blif(Module* module, const TargetRules& rules, std::ostream& out) {
  const TargetText text(module, blif_target, rules);
  const auto put_names = [&](const std::vector<long>& rails) {
    for (long index : rails) out << ' ' << text.name(index);
    out << '\n';
  };
  out << ".model " << text.module_name() << "\n.inputs";
  put_names(text.input_rails());
  out << ".outputs";
  put_names(text.output_rails());
  for (const StateRail& rail : text.state())
    out << ".latch " << text.name(rail.next) << ' ' << text.name(rail.index) << ' '
        << (rail.initial ? 1 : 0) << '\n';
  out << '\n';
  equation_code_texts texts;
  texts.nodes.table = text.module_name() + "_node";
  texts = text.numbered(texts);
  text.manager()->Bdd_global_clear_marks();
  for (const TargetEquation& equation : text.equations())
    put_blif_equation(out, texts, equation.index, equation.f);
  out << ".end\n\n";
}

}  // namespace

void Module::BLIF_put(std::ostream& out, int) {
  const char* missing = compilation == nullptr ? "equationtable"
                        : getBddWood() == nullptr || getBddWood()->my_bdd_manager() == nullptr
                            ? "bdd manager"
                            : nullptr;
  if (missing != nullptr) {
    std::cerr << "ERROR in Module::BLIF_put(): no " << missing << " defined! " << name << '\n';
    return;
  }
  put_blif(this, Compilation::target_rules(), out);
}

void Module::printBLIF() {
  print_target(*this, target("blif").file, Compilation::target_rules(),
               [this](std::ostream& out) { BLIF_put(out, Compilation::KeepWiresFlag() ? 0 : 1); });
}

}  // namespace kiva
