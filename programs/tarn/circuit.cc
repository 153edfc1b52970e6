// The circuit is made of the machine that proofs are made of, reduced: a property may name signals
// that outputs do not need, and signals of the instant before.

#include "programs/tarn/circuit.h"

#include <cctype>
#include <set>

#include "base/translation.h"
#include "programs/told_text.h"
#include "proof/property.h"
#include "proof/reduction.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/source_properties.h"

namespace kiva::tarn_program {

namespace {

using proof::Property;

std::vector<Property> properties_of(const Module& module, const Options& options) {
  std::vector<Property> all = options.properties;
  Property::Kind kind{};
  for (const SourceProperty& written : source_properties(module))
    if (proof::find_kind(written.word, kind)) all.push_back({kind, written.text});
  return all;
}

/// "never_give10_and_empty": what every reader takes as one name.
std::string name_of(const Property& property, std::set<std::string>& taken) {
  std::string name = proof::word(property.kind);
  bool gap = true;
  for (char c : property.text) {
    const bool word = std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
    if (word && gap) name += '_';
    if (word) name += c;
    gap = !word;
  }
  while (!taken.insert(name).second) name += '_';
  return name;
}

class Builder {
 public:
  explicit Builder(Module* module) : simulation_(module), module_(simulation_, false) {}

  void add(const std::vector<Property>& properties, aig::Circuit& circuit) {
    std::vector<proof::Literal> assumed, roots;
    for (const Property& property : properties)
      if (property.kind == Property::assume) assumed.push_back(literal(property));
    for (size_t row = 0; row < circuit.outputs.size(); ++row)
      roots.push_back(module_.is_one({SignalPlace::output, row}));
    circuit.bad_states.clear();
    std::set<std::string> taken;
    for (const auto& output : circuit.outputs) taken.insert(output.name);
    for (const Property& property : properties) {
      if (property.kind == Property::assume) continue;
      const bool negated = property.kind == Property::always;
      proof::set_bad(module_.machine, aig::negated_if(literal(property), negated), assumed);
      if (const std::string reason = module_.undefined(module_.machine); !reason.empty())
        throw proof::MachineError{reason};
      roots.push_back(module_.machine.bad);
      circuit.bad_states.push_back({0, name_of(property, taken)});
    }
    take(proof::Reduction(module_.machine, roots), circuit);
  }

 private:
  proof::Literal literal(const Property& property) {
    std::vector<SignalPlace> named;
    return proof::expression_literal(module_, SignalNames(simulation_), property.text, named);
  }

  /// Inputs keep their places and names, also those that nothing reads.
  void take(const proof::Reduction& reduction, aig::Circuit& circuit) {
    const proof::Machine& machine = reduction.machine();
    circuit.graph = machine.aig;
    std::vector<bool> read(circuit.inputs.size(), false);
    for (size_t input = 0; input < machine.inputs.size(); ++input) {
      const size_t row = reduction.input_of(input);
      circuit.inputs.at(row).literal = machine.inputs[input].literal;
      read[row] = true;
    }
    for (size_t row = 0; row < read.size(); ++row)
      if (!read[row]) circuit.inputs[row].literal = circuit.graph.variable();
    circuit.latches.clear();
    for (const proof::Machine::Latch& latch : machine.latches)
      circuit.latches.push_back({latch.now, latch.next, latch.initial, latch.name});
    size_t root = 0;
    for (auto* list : {&circuit.outputs, &circuit.bad_states})
      for (auto& named : *list) named.literal = reduction.roots().at(root++);
  }

  Simulation simulation_;
  proof::ModuleMachine module_;
};

}  // namespace

void add_properties(aig::Circuit& circuit, Module* module, const Options& options) {
  const std::vector<Property> properties = properties_of(*module, options);
  if (std::ranges::all_of(properties, [](const Property& p) { return p.kind == Property::assume; }))
    return;
  std::string reason;
  try {
    const std::unique_ptr<Builder> builder = std::make_unique<Builder>(module);
    aig::Circuit with = circuit;
    builder->add(properties, with);
    circuit = std::move(with);
    return;
  } catch (const ConditionError& error) {
    reason = error.reason;
  } catch (const proof::MachineError& error) {
    reason = error.reason;
  }
  const std::string told = "its properties cannot be written: " + reason;
  if (!options.properties.empty())
    throw explained(IllegalOperationException("properties", reason), told);
  programs::errors() << module->getName() << ": note: " << translated(told) << '\n';
}

}  // namespace kiva::tarn_program
