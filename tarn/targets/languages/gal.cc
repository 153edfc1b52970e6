// GAL: a module's interface as sections, for a tool that encapsulates it.

#include <ostream>

#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

const TargetText::Language language{
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

void put_module(const TargetJob& job) {
  std::ostream& out = job.out;
  const TargetText text(job.module, language, job.rules);
  out << "Name: " << text.module_name() << ": zulang_model:;\nType:\n;\n\nInput:";
  // Told: set and reset stand before one "pure".
  const bool told_wires = !job.rules.both_rails && !text.finalised();
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

}  // namespace

extern const Target gal_target{.option = "gal",
                               .help = "interface as sections, .gal",
                               .file = {.extension = ".gal"},
                               .put = put_module};

// The told operations of other classes.

void Module::ENCAPSULATEDGAL_put(std::ostream& out) {
  put_target(gal_target, this, out);
}

void Module::printENCAPSULATEDGAL() {
  print_target(gal_target, this);
}

}  // namespace kiva
