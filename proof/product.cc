#include "proof/product.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace kiva::proof {

namespace {

/// Copies the side into the machine; gives the images of its nodes. An input of a known name is
/// that input.
std::vector<Literal> add_side(Machine& to, const Machine& side,
                              std::map<std::string, Literal>& inputs) {
  std::vector<Literal> image(side.aig.size(), zero);
  for (const Machine::Input& input : side.inputs) {
    const auto [at, fresh] = inputs.emplace(input.name, zero);
    if (fresh) at->second = to.new_input(input.name);
    image[node_of(input.literal)] = at->second;
  }
  const size_t first = to.latches.size();
  for (const Machine::Latch& latch : side.latches)
    image[node_of(latch.now)] = to.latches[to.new_latch(latch.name, latch.initial)].now;
  std::vector<std::uint32_t> nodes(side.aig.size());
  std::iota(nodes.begin(), nodes.end(), 0U);
  copy_nodes(side.aig, nodes, to.aig, image);
  for (size_t k = 0; k < side.latches.size(); ++k)
    to.latches[first + k].next = image_of(side.latches[k].next, image);
  return image;
}

}  // namespace

namespace {

/// Why the module cannot be compared, "" where it can.
std::string incomparable_for(Module& module) {
  if (module.getFinalised() == 0) return "is not finalised";
  for (const signal_list* signals :
       {&module.getInputSignalList(), &module.getOutputSignalList(), &module.getLocalSignalList()})
    for (const Signal* signal : *signals)
      if (signal->isValued(&module, module.getBddWood()))
        return "carries values: " + signal->getOriginalName();
  return module.getDataTable() != nullptr && !module.getDataTable()->empty() ? "computes values"
                                                                             : "";
}

}  // namespace

void require_comparable(Module& module) {
  if (const std::string reason = incomparable_for(module); !reason.empty())
    throw MachineError{"module " + module.getName() + ' ' + reason};
}

Side side_of(const Simulation& simulation, ModuleMachine& module) {
  Side side;
  for (size_t row = 0; row < simulation.output_names().size(); ++row)
    side.outputs.push_back(
        {simulation.output_names()[row], module.is_one({SignalPlace::output, row})});
  Machine whole = module.machine;
  for (const Side::Output& output : side.outputs)
    whole.bad = whole.aig.either(whole.bad, output.present);
  if (const std::string reason = module.undefined(whole); !reason.empty())
    throw MachineError{reason};
  side.machine = module.machine;
  return side;
}

std::string missing_in(const Side& second, const Side& first) {
  const auto missing = [](const auto& mine, const auto& others, const std::string& kind) {
    for (const auto& entry : mine)
      if (std::ranges::none_of(others, [&](const auto& o) { return o.name == entry.name; }))
        return kind + " \"" + entry.name + '"';
    return std::string();
  };
  const std::string input = missing(first.machine.inputs, second.machine.inputs, "input");
  return input.empty() ? missing(first.outputs, second.outputs, "output") : input;
}

Product::Product(const Side& first, const Side& second) {
  std::map<std::string, Literal> inputs, other;
  this->first = add_side(machine, first.machine, inputs);
  const std::vector<Literal> right = add_side(machine, second.machine, inputs);
  for (const Side::Output& output : second.outputs)
    other[output.name] = image_of(output.present, right);
  for (const Side::Output& output : first.outputs) {
    outputs.push_back(
        {output.name, {image_of(output.present, this->first), other.at(output.name)}});
    machine.bad = machine.aig.either(
        machine.bad, machine.aig.differ(outputs.back().present[0], outputs.back().present[1]));
  }
}

}  // namespace kiva::proof
