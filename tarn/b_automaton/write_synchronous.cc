// Lustre and Esterel.

#include <iostream>

#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"

namespace kiva {

void b_automaton::ESTEREL_put(std::ostream& out, int, const std::string& name) const {
  out << "module " << name << ":\n"
      << "input " << joined(names_.inputs, ",\n       ") << ";\n"
      << "output " << joined(names_.outputs, ",\n        ") << ";\n\n";
  std::vector<std::string> inner = names_.state;
  inner.insert(inner.end(), names_.next_state.begin(), names_.next_state.end());
  inner.insert(inner.end(), names_.locals.begin(), names_.locals.end());
  out << "signal " << joined(inner, ", ") << " in\n";
  for (int k = 0; k < nb_state_vars(); ++k) {
    out << "  [\n";
    if (valeur_initiale_state_var(k) == 1) out << "    emit " << nom_state_var(k) << ";\n";
    out << "    run my_pre [signal " << nom_next_state_var(k) << " / S, " << nom_state_var(k)
        << " / preS]\n  ]\n  ||\n";
  }
  if (nb_equ_def() > 0) {
    out << "  loop\n    [\n";
    wood_->Put_esterel(out);
    out << "    ]\n  each tick\n";
  }
  out << "end signal\nend module\n";
}

void b_automaton::LUSTRE_put(std::ostream& out, int, const std::string& name) const {
  const std::string inputs =
      names_.inputs.empty() ? "(useless : bool)" : "(" + joined(names_.inputs, ", ") + ": bool)";
  out << "node " << name << inputs << "\n     returns (" << joined(names_.outputs, ", ")
      << ": bool);\n\n";
  std::cerr << "nb_var locale detecte: " << nb_locals() << '\n';
  std::vector<std::string> inner = names_.locals;
  inner.insert(inner.end(), names_.state.begin(), names_.state.end());
  inner.insert(inner.end(), names_.next_state.begin(), names_.next_state.end());
  if (!inner.empty()) out << "var " << joined(inner, ", ") << ": bool;\n";
  out << "let\n";
  for (int k = 0; k < nb_state_vars(); ++k)
    out << "  " << nom_state_var(k) << "= "
        << (valeur_initiale_state_var(k) == 1 ? "true" : "false") << "-> pre("
        << nom_next_state_var(k) << ");\n";
  if (nb_equ_def() > 0) {
    out << "  /* internal definitions */\n";
    wood_->Put_basic_doc(out);
  }
  out << "tel\n";
}

}  // namespace kiva
