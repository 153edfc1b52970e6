// A boolean automaton as a module of the source language.

#include <ostream>

#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/model/compilation.h"
#include "tarn/targets/frame/target_rules.h"

namespace kiva {

void b_automaton::ZU_put(std::ostream& out, int, const std::string& name) const {
  out << "module " << name << ":\n";
  if (nb_inputs() > 0) out << "Input: " << joined(names_.inputs, ", ") << ";\n";
  if (nb_outputs() > 0) out << "Output: " << joined(names_.outputs, ", ") << ";\n";
  // Told: locals stand in a block, which the language does not have.
  const bool section = Compilation::target_rules().own;
  if (nb_locals() > 0 && section) out << "Local: " << joined(names_.locals, ", ") << ";\n";
  out << '\n';
  const bool block = nb_locals() > 0 && !section;
  if (block) out << "local " << joined(names_.locals, ", ") << "\n{\n";
  out << "Mealy Machine\n\n";
  if (nb_state_vars() > 0) {
    out << "Register: \n";
    for (int k = 0; k < nb_state_vars(); ++k)
      out << nom_state_var(k) << " : " << (valeur_initiale_state_var(k) == 1 ? "1" : "0") << " : "
          << nom_next_state_var(k) << (k + 1 < nb_state_vars() ? ",\n" : ";\n\n");
  }
  // The language's constants are digits, where a document has words.
  for (long index : wood_->earliest_sort()) {
    const bdd& f = wood_->exp_by_index(index)->my_bdd_exp();
    if (!f.initialised()) continue;
    out << nom_associe(index) << " = ";
    manager_associe()->Print_sop(" or ", " and ", "not ", "", out, f, 1);
    out << ";\n";
  }
  if (block) out << "}\n";
  out << "end\n";
}

}  // namespace kiva
