#include "proof/machine.h"

namespace kiva::proof {

namespace {
std::uint64_t all(bool bit) {
  return bit ? ~std::uint64_t{0} : 0;
}
}  // namespace

Literal Machine::new_input(const std::string& name) {
  inputs.push_back({aig.variable(), name});
  return inputs.back().literal;
}

size_t Machine::new_latch(const std::string& name, bool initial) {
  latches.push_back({aig.variable(), zero, initial, name});
  return latches.size() - 1;
}

Stepper::Stepper(const Machine& machine)
    : machine_(machine), words_(machine.aig.size()), next_(machine.latches.size()) {
  start();
}

void Stepper::start() {
  for (const Machine::Latch& latch : machine_.latches)
    words_[node_of(latch.now)] = all(latch.initial);
}

void Stepper::look(const std::vector<std::uint64_t>& inputs) {
  for (size_t k = 0; k < inputs.size(); ++k)
    words_[node_of(machine_.inputs[k].literal)] = inputs[k];
  const Aig& aig = machine_.aig;
  for (std::uint32_t node = 1; node < aig.size(); ++node)
    if (aig.is_and(node)) words_[node] = word(aig.left(node)) & word(aig.right(node));
}

void Stepper::move() {
  for (size_t k = 0; k < next_.size(); ++k) next_[k] = word(machine_.latches[k].next);
  for (size_t k = 0; k < next_.size(); ++k) words_[node_of(machine_.latches[k].now)] = next_[k];
}

std::vector<bool> undetermined(const Machine& machine) {
  const Aig& aig = machine.aig;
  std::vector<bool> open(aig.size(), false);
  for (std::uint32_t node = 0; node < aig.size(); ++node) open[node] = aig.is_variable(node);
  for (const Machine::Input& input : machine.inputs) open[node_of(input.literal)] = false;
  for (const Machine::Latch& latch : machine.latches) open[node_of(latch.now)] = false;
  for (bool changed = true; changed;) {
    changed = false;
    for (std::uint32_t node = 0; node < aig.size(); ++node)
      if (aig.is_and(node))
        open[node] = open[node_of(aig.left(node))] || open[node_of(aig.right(node))];
    for (const Machine::Latch& latch : machine.latches) {
      changed = changed || (open[node_of(latch.next)] && !open[node_of(latch.now)]);
      if (open[node_of(latch.next)]) open[node_of(latch.now)] = true;
    }
  }
  return open;
}

std::vector<std::uint64_t> words_of(const std::vector<bool>& inputs) {
  std::vector<std::uint64_t> words;
  for (bool input : inputs) words.push_back(all(input));
  return words;
}

Machine after(const Machine& machine, const Run& run) {
  Stepper stepper(machine);
  for (const std::vector<bool>& inputs : run) {
    stepper.look(words_of(inputs));
    stepper.move();
  }
  Machine left = machine;
  for (Machine::Latch& latch : left.latches) latch.initial = (stepper.word(latch.now) & 1) != 0;
  return left;
}

size_t first_bad(const Machine& machine, const Run& run) {
  Stepper stepper(machine);
  for (size_t instant = 0; instant < run.size(); ++instant) {
    stepper.look(words_of(run[instant]));
    if ((stepper.word(machine.bad) & 1) != 0) return instant + 1;
    stepper.move();
  }
  return 0;
}

}  // namespace kiva::proof
