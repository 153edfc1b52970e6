// The order of variables is that of a descent from the output through the equations, a register's
// next value behind what reads the register. Registers that bear one name in two composed instances
// stand side by side: what the walk has to store is mostly that they agree.

#include "tarn/b_automaton/transition_system.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "base/graph_walk.h"

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
    automaton_.sort();
    order_from(automaton_.output_index(output));
    std::vector<bdd> values;
    for (const TransitionSystem::Register& reg : system_.registers)
      values.push_back(system_.manager->Bdd_var_by_index(reg.now));
    std::vector<long> roots;
    for (const TransitionSystem::Register& reg : system_.registers)
      roots.push_back(automaton_.next_state_index(reg.position));
    const std::vector<bdd> next = functions_of(roots, values);
    for (size_t k = 0; k < next.size(); ++k) system_.registers[k].f = next[k];
    // The output comes last: as long as two registers that agree have two variables, it may be a
    // relation between all of them.
    values = merge_registers(system_);
    system_.goal = functions_of({automaton_.output_index(output)}, values).front();
  }

 private:
  static std::string instance_free(const std::string& name) {
    return name.substr(name.find('_') + 1);
  }

  long depth(long index) const {
    const Bddexpression* e = automaton_.wood_associee()->exp_by_index(index);
    return e == nullptr ? 0 : e->getEarlyDate();
  }

  /// Makes the variables in the order of the descent.
  void order_from(long root) {
    std::vector<int> waiting;  // registers whose next values are to come, first in first out
    const auto enters = [this](long index) { return seen_.insert(index).second; };
    const auto place = [&](long index, auto more) {
      if (index < automaton_.nb_state_vars()) {
        for (int k : by_name_[instance_free(automaton_.nom_state_var(static_cast<int>(index)))])
          if (placed_.insert(k).second) place_register(k, waiting);
      } else if (const Bddexpression* e = automaton_.wood_associee()->exp_by_index(index)) {
        const index_set& reads = e->set_of_var_dependances();
        std::vector<long> deepest_last(reads.begin(), reads.end());
        std::stable_sort(deepest_last.begin(), deepest_last.end(),
                         [&](long a, long b) { return depth(a) < depth(b); });
        for (long read : deepest_last) more(read);
      } else if (index >= automaton_.input_index(0) && index < automaton_.output_index(0)) {
        const long made = system_.manager->Index_var_by_bdd(
            system_.manager->New_var_last(automaton_.nom_associe(index)));
        system_.inputs.push_back({static_cast<int>(index - automaton_.input_index(0)), made});
      }
    };
    walk_from(std::vector<long>{root}, enters, place);
    for (size_t served = 0; served < waiting.size(); ++served)
      walk_from(std::vector<long>{automaton_.next_state_index(waiting[served])}, enters, place);
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

  /// The functions of computed variables, each register standing for its value.
  std::vector<bdd> functions_of(const std::vector<long>& roots, const std::vector<bdd>& values) {
    rebuilt_.clear();
    Bddexpressionwood& wood = *automaton_.wood_associee();
    std::vector<bdd> functions(static_cast<size_t>(source_.Nb_bdd_vars()));
    for (size_t k = 0; k < values.size(); ++k)
      functions[static_cast<size_t>(system_.registers[k].position)] = values[k];
    for (const TransitionSystem::Input& input : system_.inputs)
      functions[static_cast<size_t>(automaton_.input_index(input.position))] =
          system_.manager->Bdd_var_by_index(input.index);
    const std::unordered_set<long> needed = dependence_cone(wood, roots);
    for (long index : wood.earliest_sort())
      if (needed.contains(index))
        functions[static_cast<size_t>(index)] =
            rebuilt(wood.exp_by_index(index)->my_bdd_exp(), functions);
    std::vector<bdd> found;
    for (long root : roots) found.push_back(functions[static_cast<size_t>(root)]);
    return found;
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
  const auto enters = [&](long index) { return needed.insert(index).second; };
  const index_set roots = manager->set_of_index_depend_on(goal);
  walk_from(std::vector<long>(roots.begin(), roots.end()), enters, [&](long index, auto more) {
    if (const auto reg = at.find(index); reg != at.end())
      for (long read : manager->set_of_index_depend_on(reg->second->f)) more(read);
  });
  std::erase_if(registers, [&](const Register& reg) { return !needed.contains(reg.now); });
  std::erase_if(inputs, [&](const Input& input) { return !needed.contains(input.index); });
}

}  // namespace kiva
