// Listings for people, and a module of the source language.

#include <ostream>

#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/formats/target_rules.h"
#include "tarn/model/compilation.h"

namespace kiva {

namespace {

/// What a document says of an initial value.
const char* initial_word(int value) {
  return value == 1 ? "true" : value == 0 ? "false" : "???";
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const b_automaton& automaton) {
  out << "state " << joined(automaton.state_vars_list(), ", ") << ";\ninputs "
      << joined(automaton.inputs_list(), ", ") << ";\noutputs "
      << joined(automaton.outputs_list(), ", ") << ";\nlocals "
      << joined(automaton.locals_list(), ", ") << ";\n\ninitial ";
  for (int k = 0; k < automaton.nb_state_vars(); ++k) {
    const int value = automaton.valeur_initiale_state_var(k);
    out << (k == 0 ? "" : " and ") << (value == 1 ? "" : "not ") << automaton.nom_state_var(k);
  }
  out << ";\n\ndefinitions\n";
  automaton.wood_associee()->Put_basic_doc(out);
  return out << "\nassertion " << automaton.bddtoString(automaton.assertion(), 1) << ";\ninvariant "
             << automaton.bddtoString(automaton.invariant(), 1) << ";\n";
}

void b_automaton::BAC_put(std::ostream& out) const {
  out << "to do !";
}

void b_automaton::LATEX_put(std::ostream& out, int, const std::string& name) const {
  out << "\\documentclass[11pt,a4paper]{article}\n\\usepackage[francais]{babel}\n"
         "\\usepackage{epsfig}\n\\usepackage{float}\n\\usepackage{amsmath}\n"
         "\\usepackage{amssymb}\n\\usepackage{times}\n"
         "\\setlength{\\textwidth}{16cm}\n\\setlength{\\textheight}{24cm}\n"
         "\\setlength{\\oddsidemargin}{0cm}\n\\setlength{\\topmargin}{-1cm}\n"
         "\\pagestyle{empty}\n\\begin{document}\n\\begin{center}\n{\\huge module: "
      << name << "}\n\\end{center}\n\n";
  const auto section = [&](const std::string& title, const std::vector<std::string>& names) {
    if (names.empty()) return;
    out << "\\section{" << title << "\n\\begin{itemize}\n";
    put_lines(out, names, "\\item $", "$");
    out << "\\end{itemize}\n\n";
  };
  section("Entr\\'ee(s) bool\\'eenne(s):} ", names_.inputs);
  section("Sortie(s) bool\\'eenne(s):} ", names_.outputs);
  if (nb_state_vars() > 0) {
    out << "\\section{Registre(s):}\n\\begin{itemize}\n";
    for (int k = 0; k < nb_state_vars(); ++k)
      out << "\\item $" << nom_state_var(k) << "$ valeur initiale: $"
          << initial_word(valeur_initiale_state_var(k)) << "$, nouvelle valeur sur front: $"
          << nom_next_state_var(k) << "$\n";
    out << "\\end{itemize}\n\n";
  }
  if (nb_equ_def() > 0) {
    out << "\\section{\\'Equation(s):}\n\n";
    wood_->Put_latex(out);
  }
  out << "\\end{document}\n";
}

void b_automaton::DOC_put(std::ostream& out, int, const std::string& name) const {
  out << "module: " << name << "\n\n";
  const auto ports = [&](const std::string& kind, const std::vector<std::string>& names) {
    if (names.empty())
      out << "Aucune " << kind << " ...\n\n";
    else
      out << kind << "(s) booleenne(s): " << joined(names, ", ") << "\n\n";
  };
  ports("Entree", names_.inputs);
  ports("Sortie", names_.outputs);
  out << "Registre(s):\n";
  for (int k = 0; k < nb_state_vars(); ++k)
    out << " - " << nom_state_var(k)
        << "valeur initiale: " << initial_word(valeur_initiale_state_var(k))
        << ", prochaine valeur: " << nom_next_state_var(k) << '\n';
  out << '\n';
  if (nb_equ_def() > 0) {
    out << "Equation(s):\n";
    wood_->Put_basic_doc(out);
    out << '\n';
  }
  out << "fin de la documentation ...\n";
}

void b_automaton::ZU_put(std::ostream& out, int, const std::string& name) const {
  out << "module " << name << ":\n";
  if (nb_inputs() > 0) out << "Input: " << joined(names_.inputs, ", ") << ";\n";
  if (nb_outputs() > 0) out << "Output: " << joined(names_.outputs, ", ") << ";\n";
  const bool section = Compilation::target_rules().local_section;
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
