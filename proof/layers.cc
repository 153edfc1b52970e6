// The order of variables is that of a descent from the roots through the graph, a latch's next
// value behind what reads the latch, with the next value's variable behind the latch's own.

#include "proof/layers.h"

#include <algorithm>
#include <new>

#include "bdd/work_guard.h"

namespace kiva::proof {

namespace {
constexpr long most_nodes = 100'000'000;
// In steps: for an operator, and between two looks of its guard, with what each node there is adds.
constexpr double operator_steps = 2000, guard_steps = 300'000, guard_node_steps = 10;
struct Paused {};
}  // namespace

Layers::Layers(const Machine& machine, std::vector<Literal> roots, Literal allowed)
    : machine_(machine), roots_(std::move(roots)) {
  roots_.push_back(allowed);
}

bool Layers::until(const Stop& stop, const std::function<void()>& work) {
  try {
    const WorkGuard guard([&] {
      if (nodes() > most_nodes) throw std::bad_alloc();
      stop.count(guard_steps + guard_node_steps * static_cast<double>(nodes()));
      if (stop()) throw Paused();
    });
    work();
    return true;
  } catch (const Paused&) {
    return false;
  } catch (const std::bad_alloc&) {
    too_large_ = true;
    return false;
  }
}

void Layers::make(const Stop& stop) {
  if (functions_.empty()) order_variables();
  for (std::uint32_t node : nodes_) {
    bdd& f = functions_[node];
    if (f.node() != nullptr) continue;
    if (stop()) throw Paused();
    stop.count(operator_steps);
    f = manager().Bdd_and(function(machine_.aig.left(node)), function(machine_.aig.right(node)));
  }
  system_.roots.clear();
  for (Literal root : roots_) system_.roots.push_back(function(root));
  for (size_t k = 0; k < order_.size(); ++k)
    system_.registers[k].f = function(machine_.latches[order_[k]].next);
  reached_ = manager().Bdd_zero();
  layer_ = manager().Bdd_one();
  for (auto reg = system_.registers.rbegin(); reg != system_.registers.rend(); ++reg) {
    const bdd variable = manager().Bdd_var_by_index(reg->now);
    layer_ = manager().Bdd_and(reg->initial ? variable : manager().Bdd_not(variable), layer_);
  }
  image_ = std::make_unique<Image>(system_);
  functions_.clear();
}

bdd Layers::function(Literal a) const {
  const bdd& f = functions_[node_of(a)];
  return is_negated(a) ? system_.manager.Bdd_not(f) : f;
}

/// Makes the variables; `nodes_` becomes all ands that are needed, ascending.
void Layers::order_variables() {
  const Aig& aig = machine_.aig;
  functions_.resize(aig.size());
  functions_[0] = manager().Bdd_zero();
  std::vector<long> latch_at(aig.size(), -1), input_at(aig.size(), -1);
  for (size_t k = 0; k < machine_.latches.size(); ++k)
    latch_at[node_of(machine_.latches[k].now)] = static_cast<long>(k);
  for (size_t k = 0; k < machine_.inputs.size(); ++k)
    input_at[node_of(machine_.inputs[k].literal)] = static_cast<long>(k);
  std::vector<bool> seen(aig.size(), false);
  std::vector<Literal> roots = roots_;
  for (size_t root = 0; root < roots.size(); ++root) {
    std::vector<std::uint32_t> open{node_of(roots[root])};
    while (!open.empty()) {
      const std::uint32_t node = open.back();
      open.pop_back();
      if (seen[node]) continue;
      seen[node] = true;
      if (aig.is_and(node)) {
        nodes_.push_back(node);
        // What was made later lies deeper, and is seen first.
        open.push_back(node_of(aig.left(node)));
        open.push_back(node_of(aig.right(node)));
      } else if (latch_at[node] >= 0) {
        const size_t latch = static_cast<size_t>(latch_at[node]);
        const long now = new_variable(), next = new_variable();
        order_.push_back(latch);
        system_.registers.push_back({now, next, machine_.latches[latch].initial, bdd()});
        functions_[node] = manager().Bdd_var_by_index(now);
        roots.push_back(machine_.latches[latch].next);
      } else if (input_at[node] >= 0) {
        const long index = new_variable();
        system_.inputs.push_back({static_cast<size_t>(input_at[node]), index});
        functions_[node] = manager().Bdd_var_by_index(index);
      }
    }
  }
  std::sort(nodes_.begin(), nodes_.end());
}

long Layers::new_variable() {
  const std::string name = "v" + std::to_string(manager().Nb_bdd_vars());
  return manager().Index_var_by_bdd(manager().New_var_last(name));
}

void Layers::go_on() {
  const bdd reached = manager().Bdd_or(reached_, layer_);
  const bdd next = manager().Bdd_and((*image_)(manager().Bdd_and(layer_, allowed())),
                                     manager().Bdd_not(reached));
  layers_.push_back(layer_);
  reached_ = reached;
  layer_ = next;
  manager().collect_when_doubled();  // what images were made of is needed no more
}

Run Layers::run_to(bdd found, size_t number) {
  Run run(number + 1, std::vector<bool>(machine_.inputs.size(), false));
  for (size_t instant = number + 1; instant-- > 0;) {
    const std::vector<bool> values = point(found);
    for (const TransitionSystem::Input& input : system_.inputs)
      run[instant][input.position] = values[static_cast<size_t>(input.index)];
    if (instant == 0) break;
    found = manager().Bdd_and(layers_[instant - 1], allowed());
    for (const TransitionSystem::Register& reg : system_.registers)
      found = manager().Bdd_and(
          found, values[static_cast<size_t>(reg.now)] ? reg.f : manager().Bdd_not(reg.f));
  }
  return run;
}

/// An assignment under which f, not zero, holds; a variable is 0 wherever that will do.
std::vector<bool> Layers::point(bdd f) {
  std::vector<bool> values(static_cast<size_t>(manager().Nb_bdd_vars()), false);
  while (!manager().Bdd_is_tautology(f)) {
    const bdd without = manager().Bdd_else(f);
    const bool needed = without == manager().Bdd_zero();
    values[static_cast<size_t>(manager().Bdd_if_index(f))] = needed;
    f = needed ? manager().Bdd_then(f) : without;
  }
  return values;
}

}  // namespace kiva::proof
