// Parallel composition. Every automaton gets a table from its variables to those of the result:
// inputs and outputs that no connector names keep their names and are shared under them; all else
// is prefixed with the instance's name, connected inputs and outputs becoming locals.

#include <algorithm>
#include <map>

#include "tarn/b_automaton/b_automaton.h"
#include "tarn/session/diagnostic.h"

namespace kiva {

std::ostream& operator<<(std::ostream& out, const b_automaton_connector& connector) {
  return out << connector.source_automaton << ", " << connector.source_output << " --> "
             << connector.destination_automaton << ", " << connector.destination_input;
}

namespace {

[[noreturn]] void refuse(const std::string& reason) {
  end_with("Error in b_automaton::b_automaton(): " + reason);
}

/// The composition under way: names of the result, and where each variable of each part goes.
class Layout {
 public:
  Layout(int n, b_automaton* const* automata, const std::string* instance_names, int nb_connectors,
         const b_automaton_connector* connectors)
      : automata_(automata, automata + n), instances_(instance_names, instance_names + n) {
    for (const b_automaton* part : automata_)
      tables_.emplace_back(static_cast<size_t>(part->manager_associe()->Nb_bdd_vars()), -1);
    take_connectors(nb_connectors, connectors);
    take_state();
    take_ports(false);
    take_ports(true);
    take_locals();
    names_.refuse_twins("b_automaton::b_automaton()");
    resolve();
  }

  const automaton_names& names() const { return names_; }
  const std::vector<int>& table(size_t part) const { return tables_[part]; }

 private:
  std::string prefixed(size_t part, const std::string& name) const {
    return instances_[part] + "_" + name;
  }
  const b_automaton* checked(int automaton) const {
    return automaton < 0 || automaton >= static_cast<int>(automata_.size())
               ? nullptr
               : automata_[static_cast<size_t>(automaton)];
  }

  void take_connectors(int count, const b_automaton_connector* connectors) {
    for (int k = 0; k < count; ++k) {
      const b_automaton_connector& wire = connectors[k];
      const b_automaton* source = checked(wire.source_automaton);
      const b_automaton* destination = checked(wire.destination_automaton);
      if (source == nullptr || destination == nullptr || wire.source_output < 0 ||
          wire.source_output >= source->nb_outputs() || wire.destination_input < 0 ||
          wire.destination_input >= destination->nb_inputs())
        refuse("connector " + std::to_string(k) + " leads nowhere");
      connected_.insert({{wire.source_automaton, source->output_index(wire.source_output)}, ""});
      const bool fresh = connected_
                             .insert({{wire.destination_automaton,
                                       destination->input_index(wire.destination_input)},
                                      ""})
                             .second;
      if (!fresh)
        refuse("input \"" + destination->nom_input(wire.destination_input) +
               "\" is the end of two connectors");
    }
  }

  /// The same part of both tables' order: state of all, then next state of all.
  void take_state() {
    for (size_t part = 0; part < automata_.size(); ++part)
      for (int k = 0; k < automata_[part]->nb_state_vars(); ++k) {
        names_.state.push_back(prefixed(part, automata_[part]->nom_state_var(k)));
        names_.next_state.push_back(prefixed(part, automata_[part]->nom_next_state_var(k)));
      }
  }

  void take_ports(bool outputs) {
    std::vector<std::string>& ports = outputs ? names_.outputs : names_.inputs;
    for (size_t part = 0; part < automata_.size(); ++part) {
      const b_automaton& automaton = *automata_[part];
      const int count = outputs ? automaton.nb_outputs() : automaton.nb_inputs();
      for (int k = 0; k < count; ++k) {
        const std::string name = outputs ? automaton.nom_output(k) : automaton.nom_input(k);
        const long index = outputs ? automaton.output_index(k) : automaton.input_index(k);
        const auto wire = connected_.find({static_cast<int>(part), index});
        if (wire != connected_.end()) {
          wire->second = prefixed(part, name);
          names_.locals.push_back(wire->second);
        } else if (std::find(ports.begin(), ports.end(), name) == ports.end()) {
          ports.push_back(name);
        }
      }
    }
  }

  void take_locals() {
    for (size_t part = 0; part < automata_.size(); ++part)
      for (int k = 0; k < automata_[part]->nb_locals(); ++k)
        names_.locals.push_back(prefixed(part, automata_[part]->nom_local(k)));
  }

  void resolve() {
    std::map<std::string, int> index_of;
    int next = 0;
    for (const auto* kind :
         {&names_.state, &names_.next_state, &names_.inputs, &names_.outputs, &names_.locals})
      for (const std::string& name : *kind) index_of[name] = next++;
    for (size_t part = 0; part < automata_.size(); ++part) {
      const b_automaton& automaton = *automata_[part];
      std::vector<int>& table = tables_[part];
      for (size_t index = 0; index < table.size(); ++index) {
        const std::string own = automaton.nom_associe(static_cast<long>(index));
        const bool port = static_cast<long>(index) >= automaton.input_index(0) &&
                          static_cast<long>(index) < automaton.local_index(0);
        const bool bare =
            port && !connected_.contains({static_cast<int>(part), static_cast<long>(index)});
        const auto found = index_of.find(bare ? own : prefixed(part, own));
        if (found != index_of.end()) table[index] = found->second;
      }
    }
  }

  std::vector<const b_automaton*> automata_;
  std::vector<std::string> instances_;
  std::vector<std::vector<int>> tables_;
  /// By part and variable: the local that a connected port becomes.
  std::map<std::pair<int, long>, std::string> connected_;
  automaton_names names_;
};

}  // namespace

bdd b_automaton::bdd_isomorphe(bddpp_manager* manager, const bdd& f, const int* table) const {
  const std::vector<long> map(table, table + manager_associe()->Nb_bdd_vars());
  return Bdd_isomorphe(manager, manager_associe(), f, map.data());
}

b_automaton::b_automaton(int n, b_automaton* const* automata, const std::string* instance_names,
                         int nb_connectors, const b_automaton_connector* connectors) {
  const Layout layout(n, automata, instance_names, nb_connectors, connectors);
  names_ = layout.names();
  wood_ = std::make_unique<Bddexpressionwood>();
  names_.create(*wood_);
  bddpp_manager* manager = manager_associe();
  assertion_ = invariant_ = manager->Bdd_one();
  for (int part = 0; part < n; ++part) {
    b_automaton& automaton = *automata[part];
    const std::vector<int>& table = layout.table(static_cast<size_t>(part));
    const auto moved = [&](const bdd& f) {
      return automaton.bdd_isomorphe(manager, f, table.data());
    };
    initial_values_.insert(initial_values_.end(), automaton.initial_values_.begin(),
                           automaton.initial_values_.end());
    const index_set equations = automaton.wood_->Set_of_exp();
    for (long index : equations) {
      const Bddexpression& e = *automaton.wood_->Exp_table()[index];
      if (e.getAbstraction() != 0) refuse("an equation without function cannot be composed");
      const long at = table[static_cast<size_t>(index)];
      if (Bddexpression* shared = wood_->Exp_table()[at])
        shared->append_or_exp(moved(e.my_bdd_exp()));
      else
        new Bddexpression(wood_.get(), manager->Bdd_var_by_index(at), moved(e.my_bdd_exp()), 0, 0);
    }
    assertion_ = manager->Bdd_and(assertion_, moved(automaton.assertion_));
    invariant_ = manager->Bdd_and(invariant_, moved(automaton.invariant_));
  }
  for (int k = 0; k < nb_connectors; ++k) {
    const b_automaton_connector& wire = connectors[k];
    const auto end_of = [&](int automaton, long index) {
      return manager->Bdd_var_by_index(
          layout.table(static_cast<size_t>(automaton))[static_cast<size_t>(index)]);
    };
    const b_automaton& source = *automata[wire.source_automaton];
    const b_automaton& destination = *automata[wire.destination_automaton];
    const bdd local =
        end_of(wire.destination_automaton, destination.input_index(wire.destination_input));
    new Bddexpression(wood_.get(), local,
                      end_of(wire.source_automaton, source.output_index(wire.source_output)), 0, 0);
  }
  keep_outputs_registers_equations();
}

std::unique_ptr<b_automaton> merge(b_automaton* a, b_automaton* b) {
  if (a == nullptr || b == nullptr) return nullptr;
  b_automaton* const parts[] = {a, b};
  const std::string instances[] = {"inst0", "inst1"};
  std::vector<b_automaton_connector> wires;
  for (int source = 0; source < 2; ++source)
    for (int k = 0; k < parts[source]->nb_outputs(); ++k) {
      const int input = parts[1 - source]->num_input(parts[source]->nom_output(k));
      if (input >= 0) wires.push_back({source, k, 1 - source, input});
    }
  return std::make_unique<b_automaton>(2, parts, instances, static_cast<int>(wires.size()),
                                       wires.data());
}

std::unique_ptr<b_automaton> equiv_observer(const std::list<std::string>& outputs1,
                                            const std::list<std::string>& outputs2, int* nb,
                                            b_automaton_connector** connectors) {
  const auto place = [](const std::list<std::string>& names, const std::string& name) {
    return static_cast<int>(
        std::distance(names.begin(), std::find(names.begin(), names.end(), name)));
  };
  std::list<std::string> inputs;
  std::vector<b_automaton_connector> wires;
  for (const std::string& name : outputs1) {
    const int second = place(outputs2, name);
    if (second == static_cast<int>(outputs2.size())) continue;
    const int input = static_cast<int>(inputs.size());
    wires.push_back({0, place(outputs1, name), 2, input});
    wires.push_back({1, second, 2, input + 1});
    inputs.push_back("equiv_observer_autom1_" + name);
    inputs.push_back("equiv_observer_autom2_" + name);
  }
  b_autom_dec declaration({}, {}, inputs, {"equiv"}, std::list<std::string>());
  bddpp_manager* manager = declaration.manager_associe();
  bdd equal = manager->Bdd_one();
  const long count = static_cast<long>(inputs.size());
  for (long index = count - 2; index >= 0; index -= 2)
    equal = manager->Bdd_and(
        manager->Bdd_eq(manager->Bdd_var_by_index(index), manager->Bdd_var_by_index(index + 1)),
        equal);
  new Bddexpression(declaration.wood_associee(), manager->Bdd_var_by_name("equiv"), equal, 0, 0);
  *nb = static_cast<int>(wires.size());
  *connectors = new b_automaton_connector[wires.size()];
  std::copy(wires.begin(), wires.end(), *connectors);
  return std::make_unique<b_automaton>(&declaration, nullptr, manager->Bdd_zero(),
                                       manager->Bdd_zero());
}

std::unique_ptr<b_automaton> observateur_equivalence(b_automaton* a, b_automaton* b) {
  if (a == nullptr || b == nullptr) return nullptr;
  int nb = 0;
  b_automaton_connector* wires = nullptr;
  const auto observer = equiv_observer(a->outputs_list(), b->outputs_list(), &nb, &wires);
  const std::unique_ptr<b_automaton_connector[]> owned(wires);
  b_automaton* const parts[] = {a, b, observer.get()};
  const std::string instances[] = {"autom1", "autom2", "observer"};
  return std::make_unique<b_automaton>(3, parts, instances, nb, wires);
}

}  // namespace kiva
