#include "proof/product.h"

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

Product::Product(const Side& first, const Side& second) {
  std::map<std::string, Literal> inputs, other;
  const std::vector<Literal> left = add_side(machine, first.machine, inputs);
  const std::vector<Literal> right = add_side(machine, second.machine, inputs);
  for (const Side::Output& output : second.outputs)
    other[output.name] = image_of(output.present, right);
  for (const Side::Output& output : first.outputs) {
    outputs.push_back({output.name, {image_of(output.present, left), other.at(output.name)}});
    machine.bad = machine.aig.either(
        machine.bad, machine.aig.differ(outputs.back().present[0], outputs.back().present[1]));
  }
}

}  // namespace kiva::proof
