// Registers that always agree, found as the coarsest partition that one instant preserves (van
// Eijk, 1998): all start in one class with the constant; as long as two members of a class get
// different next values, each member standing for its class's first, they part. Values are taken
// against the initial one, so that a class also holds opposites.

#include <map>

#include "tarn/b_automaton/transition_system.h"

namespace kiva {

std::vector<bdd> merge_registers(TransitionSystem& system) {
  bddpp_manager& manager = *system.manager;
  const size_t count = system.registers.size();
  const auto against = [&](bool initial, const bdd& f) { return initial ? manager.Bdd_not(f) : f; };
  const auto literal = [&](size_t k) {
    const TransitionSystem::Register& reg = system.registers[k];
    return against(reg.initial, manager.Bdd_var_by_index(reg.now));
  };

  constexpr long constant = -1;
  std::vector<long> first(count, constant);  ///< of each register's class; the constant for none
  std::vector<bdd> next(count);
  std::vector<std::pair<long, bdd>> values;
  for (bool changed = true; changed;) {
    values.clear();
    for (size_t k = 0; k < count; ++k) {
      const TransitionSystem::Register& reg = system.registers[k];
      const bdd shared =
          first[k] == constant ? manager.Bdd_zero() : literal(static_cast<size_t>(first[k]));
      values.emplace_back(reg.now, against(reg.initial, shared));
    }
    changed = false;
    // Members of one class that have one next value stay together.
    std::map<std::tuple<long, const bdd_node*, int>, long> parts;
    std::vector<long> parted(count);
    for (size_t k = 0; k < count; ++k) {
      const TransitionSystem::Register& reg = system.registers[k];
      next[k] = manager.Bdd_vector_compose(reg.f, values);
      const bdd g = against(reg.initial, next[k]);
      if (first[k] == constant && g == manager.Bdd_zero()) {
        parted[k] = constant;
        continue;
      }
      parted[k] = parts.emplace(std::tuple(first[k], g.node(), g.link_type()), static_cast<long>(k))
                      .first->second;
    }
    // A register that parts from its class makes the next round necessary.
    if (parted != first) changed = true;
    first = parted;
  }
  for (size_t k = 0; k < count; ++k) system.registers[k].f = next[k];
  std::vector<bdd> shared;
  for (const auto& [index, value] : values) shared.push_back(value);
  return shared;
}

}  // namespace kiva
