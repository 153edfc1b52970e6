#include "tarn/targets/languages/c_automaton.h"

#include "tarn/b_automaton/writing.h"

namespace kiva {

std::vector<std::string> c_state_names(const b_automaton& automaton) {
  std::vector<std::string> names;
  for (const std::string& name : automaton.state_vars_list()) names.push_back(name);
  for (const std::string& name : automaton.next_state_vars_list()) names.push_back(name);
  return names;
}

void put_c_state(std::ostream& out, const b_automaton& automaton, const std::string& prefix) {
  if (automaton.nb_state_vars() > 0)
    out << "int " << joined(c_state_names(automaton), ",\n    ", prefix) << ";\n\n";
}

void put_c_initial_state(std::ostream& out, const b_automaton& automaton,
                         const std::string& prefix) {
  for (int k = 0; k < automaton.nb_state_vars(); ++k)
    out << "  " << prefix << automaton.nom_state_var(k) << "= "
        << (automaton.valeur_initiale_state_var(k) == 1 ? "!0" : "0") << ";\n";
}

void put_c_moves(std::ostream& out, const b_automaton& automaton, const std::string& prefix) {
  if (automaton.nb_state_vars() == 0) return;
  out << "  /* internal transitions */\n";
  for (int k = 0; k < automaton.nb_state_vars(); ++k)
    out << "  " << prefix << automaton.nom_state_var(k) << "= " << prefix
        << automaton.nom_next_state_var(k) << ";\n";
}

}  // namespace kiva
