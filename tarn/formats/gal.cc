// A module's interface as sections, for a tool that encapsulates it.

#include <ostream>

#include "tarn/formats/target_text.h"
#include "tarn/formats/targets.h"
#include "tarn/model/compilation.h"

namespace kiva {

namespace {

const TargetText::Target gal_target{
    .shape = {.target = "GAL", .keywords = {"pure"}}, .told_wires = true, .names_module = false};

void put_pure(std::ostream& out, const TargetText& text, const std::vector<long>& rails,
              size_t joined) {
  for (size_t i = 0; i < rails.size(); ++i) {
    out << text.name(rails[i]);
    if (i + 1 < joined)
      out << ", ";
    else
      out << (i + 1 < rails.size() ? ": pure, \n" : ": pure");
  }
  out << ";\n";
}

}  // namespace

void Module::ENCAPSULATEDGAL_put(std::ostream& out) {
  const TargetRules& rules = Compilation::target_rules();
  const TargetText text(this, gal_target, rules);
  out << "Name: " << text.module_name() << ": zulang_model:;\nType:\n;\n\nInput:";
  // Told: set and reset stand before one "pure".
  const bool told_wires = !rules.both_rails && !text.finalised();
  const std::vector<long> inputs = text.input_rails();
  if (!inputs.empty()) out << ' ';
  put_pure(out, text, inputs, told_wires ? 2 : 0);
  out << "\nSensor:\n;\nOutput:";
  const std::vector<long> outputs = text.output_rails();
  if (!outputs.empty()) out << ' ';
  put_pure(out, text, outputs, 0);
  for (const char* section :
       {"Local", "Variable", "Run", "Function", "Constant", "Action", "Encapsulation"})
    out << section << ":\n;\n\n";
}

void Module::printENCAPSULATEDGAL() {
  print_target(*this, target("gal").file, Compilation::target_rules(),
               [this](std::ostream& out) { ENCAPSULATEDGAL_put(out); });
}

}  // namespace kiva
