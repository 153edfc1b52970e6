#include "proof/unrolling.h"

namespace kiva::proof {

Unrolling::Unrolling(const Machine& machine, bool from_start)
    : machine_(machine), image_(machine.aig.size(), zero) {
  std::vector<Literal> roots{machine.bad};
  for (const Machine::Latch& latch : machine.latches) {
    roots.push_back(latch.next);
    state_.push_back(from_start ? (latch.initial ? one : zero) : aig_.variable());
  }
  cone_ = machine.aig.cone(roots);
}

Literal Unrolling::add() {
  states_.push_back(state_);
  for (size_t k = 0; k < state_.size(); ++k) image_[node_of(machine_.latches[k].now)] = state_[k];
  std::vector<Literal>& inputs = inputs_.emplace_back();
  for (const Machine::Input& input : machine_.inputs) {
    inputs.push_back(aig_.variable());
    image_[node_of(input.literal)] = inputs.back();
  }
  copy_nodes(machine_.aig, cone_, aig_, image_);
  for (size_t k = 0; k < state_.size(); ++k) state_[k] = image_of(machine_.latches[k].next, image_);
  return image_of(machine_.bad, image_);
}

}  // namespace kiva::proof
