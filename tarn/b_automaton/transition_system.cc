// The order of variables is that of a descent from the output through the equations, a register's
// next value behind what reads the register. Registers that bear one name in two composed instances
// stand side by side: what the walk has to store is mostly that they agree.

#include "tarn/b_automaton/transition_system.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace kiva {

namespace {

class Builder {
 public:
  Builder(b_automaton& automaton, TransitionSystem& system)
      : automaton_(automaton), system_(system), source_(*automaton.manager_associe()) {
    for (int k = 0; k < automaton_.nb_state_vars(); ++k)
      by_name_[instance_free(automaton_.nom_state_var(k))].push_back(k);
  }

  void build(int output) {
    order_from(automaton_.output_index(output));
    std::vector<bdd> functions(static_cast<size_t>(source_.Nb_bdd_vars()));
    for (const TransitionSystem::Register& reg : system_.registers)
      functions[static_cast<size_t>(reg.position)] = system_.manager->Bdd_var_by_index(reg.now);
    for (const TransitionSystem::Input& input : system_.inputs)
      functions[static_cast<size_t>(automaton_.input_index(input.position))] =
          system_.manager->Bdd_var_by_index(input.index);
    automaton_.sort();
    for (long index : automaton_.wood_associee()->earliest_sort())
      if (seen_.contains(index))
        functions[static_cast<size_t>(index)] =
            rebuilt(automaton_.wood_associee()->exp_by_index(index)->my_bdd_exp(), functions);
    for (TransitionSystem::Register& reg : system_.registers)
      reg.f = functions[static_cast<size_t>(automaton_.next_state_index(reg.position))];
    system_.goal = functions[static_cast<size_t>(automaton_.output_index(output))];
  }

 private:
  static std::string instance_free(const std::string& name) {
    return name.substr(name.find('_') + 1);
  }

  /// Makes the variables in the order of the descent.
  void order_from(long root) {
    std::vector<long> open = {root};
    std::vector<int> waiting;  // registers whose next values are to come, first in first out
    size_t served = 0;
    for (;;) {
      while (!open.empty()) {
        const long index = open.back();
        open.pop_back();
        if (!seen_.insert(index).second) continue;
        if (index < automaton_.nb_state_vars()) {
          for (int k : by_name_[instance_free(automaton_.nom_state_var(static_cast<int>(index)))])
            if (placed_.insert(k).second) place_register(k, waiting);
        } else if (const Bddexpression* e = automaton_.wood_associee()->exp_by_index(index)) {
          const index_set& reads = e->set_of_var_dependances();
          const std::vector<long> ascending(reads.begin(), reads.end());
          open.insert(open.end(), ascending.rbegin(), ascending.rend());
        } else if (index >= automaton_.input_index(0) && index < automaton_.output_index(0)) {
          const long made = system_.manager->Index_var_by_bdd(
              system_.manager->New_var_last(automaton_.nom_associe(index)));
          system_.inputs.push_back({static_cast<int>(index - automaton_.input_index(0)), made});
        }
      }
      if (served == waiting.size()) return;
      open.push_back(automaton_.next_state_index(waiting[served++]));
    }
  }

  void place_register(int k, std::vector<int>& waiting) {
    const auto make = [&](const std::string& name) {
      return system_.manager->Index_var_by_bdd(system_.manager->New_var_last(name));
    };
    const long now = make(automaton_.nom_state_var(k));
    const long next = make(automaton_.nom_next_state_var(k));
    system_.registers.push_back(
        {k, now, next, automaton_.valeur_initiale_state_var(k) == 1, bdd()});
    waiting.push_back(k);
  }

  /// f with its variables replaced; results are kept from function to function, since what a
  /// variable stands for never changes.
  bdd rebuilt(const bdd& f, const std::vector<bdd>& functions) {
    const bdd positive = f.link_type() == 1 ? f : source_.Bdd_not(f);
    const auto whole = [&](const bdd& g) {
      return f.link_type() == 1 ? g : system_.manager->Bdd_not(g);
    };
    if (source_.Bdd_is_tautology(positive)) return whole(system_.manager->Bdd_one());
    const auto known = rebuilt_.find(positive.node());
    if (known != rebuilt_.end()) return whole(known->second);
    const bdd then_part = rebuilt(source_.Bdd_then(positive), functions);
    const bdd else_part = rebuilt(source_.Bdd_else(positive), functions);
    const bdd& test = functions[static_cast<size_t>(source_.Bdd_if_index(positive))];
    const bdd result = system_.manager->Bdd_ite(test, then_part, else_part);
    rebuilt_.emplace(positive.node(), result);
    return whole(result);
  }

  b_automaton& automaton_;
  TransitionSystem& system_;
  bddpp_manager& source_;
  std::unordered_map<std::string, std::vector<int>> by_name_;
  std::unordered_set<long> seen_;
  std::unordered_set<int> placed_;
  std::unordered_map<const bdd_node*, bdd> rebuilt_;
};

}  // namespace

TransitionSystem::TransitionSystem(b_automaton& automaton, int output) {
  Builder(automaton, *this).build(output);
  keep_cone();
}

void TransitionSystem::keep_cone() {
  std::unordered_map<long, const Register*> at;
  for (const Register& reg : registers) at[reg.now] = &reg;
  std::unordered_set<long> needed;
  std::vector<bdd> open = {goal};
  while (!open.empty()) {
    const bdd f = open.back();
    open.pop_back();
    for (long index : manager->set_of_index_depend_on(f)) {
      if (!needed.insert(index).second) continue;
      if (const auto reg = at.find(index); reg != at.end()) open.push_back(reg->second->f);
    }
  }
  std::erase_if(registers, [&](const Register& reg) { return !needed.contains(reg.now); });
  std::erase_if(inputs, [&](const Input& input) { return !needed.contains(input.index); });
}

}  // namespace kiva
