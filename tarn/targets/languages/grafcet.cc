// A boolean automaton as a sketch for a small board: C whose outputs are calls of actions.

#include <algorithm>
#include <ostream>

#include "tarn/b_automaton/writing.h"
#include "tarn/targets/languages/c_automaton.h"
#include "tarn/targets/languages/c_family.h"

namespace kiva {

void b_automaton::INO_put_grafcet(std::ostream& out, int, const std::string& name,
                                  const std::list<std::string>& actions) const {
  const std::string prefix = name + "_", array = name + "_def_node";
  const auto is_action = [&](const std::string& output) {
    return std::find(actions.begin(), actions.end(), output) != actions.end();
  };
  out << "extern void my_setup(void);\nextern void my_before(void);\n"
         "extern void my_after(void);\n";
  put_lines(out, names_.inputs, "extern int ", "(void);");
  for (const std::string& output : names_.outputs)
    if (is_action(output))
      out << "extern void " << output << "(void);\n";
    else
      out << "extern void " << output << "_true(void);\nextern void " << output
          << "_false(void);\n";
  put_c_state(out, *this, prefix);
  out << "void setup()\n{\n  my_setup();\n";
  put_c_initial_state(out, *this, prefix);
  out << "}\n\nvoid loop()\n{\n";
  // An output is a call, and a variable as well where another equation reads it.
  const auto is_read = [&](long index) { return !wood_->set_of_amont_dependances(index).empty(); };
  std::vector<std::string> variables = names_.locals;
  variables.insert(variables.end(), names_.inputs.begin(), names_.inputs.end());
  for (int k = 0; k < nb_outputs(); ++k)
    if (is_read(output_index(k))) variables.push_back(nom_output(k));
  if (!variables.empty()) out << "  int " << joined(variables, ", ", prefix) << ";\n\n";
  out << "  int " << array << '[' << manager_associe()->Bdd_total_size() << "];\n"
      << "  /* user before() function call */\n  my_before();\n  /* inputs reading */\n";
  for (const std::string& input : names_.inputs)
    out << "  " << prefix << input << '=' << input << "();\n";
  std::vector<int> two_sided(static_cast<size_t>(manager_associe()->Nb_bdd_vars()), 1);
  for (size_t index = 0; index < two_sided.size(); ++index)
    if (is_action(nom_associe(static_cast<long>(index)))) two_sided[index] = 0;
  if (nb_equ_def() > 0) {
    out << "  /* internal definitions */\n";
    manager_associe()->Bdd_global_clear_marks();
    for (long index : wood_->earliest_sort()) {
      Bddexpression& e = *wood_->exp_by_index(index);
      const bool is_output = index >= output_index(0) && index < local_index(0);
      if (!is_output || is_read(index)) e.put_ino_grafcet(out, array, prefix);
      if (is_output) e.put_ino_grafcet(out, array, prefix, two_sided[static_cast<size_t>(index)]);
    }
  }
  put_c_moves(out, *this, prefix);
  out << "  /* user after() function call */\n  my_after();\n}\n";
}

void Bddexpression::put_ino_grafcet(std::ostream& out, const std::string& array,
                                    const std::string& prefix) {
  put_c(out, array, {}, prefix, "");
}

void Bddexpression::put_ino_grafcet(std::ostream& out, const std::string& array,
                                    const std::string& prefix, int two_sided) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  const equation_code_texts texts = c_equation_texts(manager, array, {}, prefix, "");
  std::string condition;
  if (is_copy(bdd_exp)) {
    condition = texts.read(manager->Bdd_if_index(bdd_exp));
  } else {
    manager->Print_node_code(texts.nodes, out, bdd_exp.node());
    condition = (bdd_exp.link_type() == -1 ? "!" : "") + array + "[" +
                std::to_string(bdd_exp.node()->global_id()) + "]";
  }
  out << "  if(" << condition << ")\n  {\n     " << my_bddname()
      << (two_sided != 0 ? "_true();\n  }\n  else\n  {\n     " + my_bddname() + "_false();\n  }\n"
                         : "();\n  }\n");
}

void Bddexpressionwood::Put_ino_grafcet(std::ostream& out, const std::string& array,
                                        const std::list<std::string>& outputs,
                                        const std::string& prefix, const int* two_sided) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) {
    Bddexpression& e = *exp_table[index];
    if (std::find(outputs.begin(), outputs.end(), man->Name_var_by_index(index)) == outputs.end())
      e.put_ino_grafcet(out, array, prefix);
    else
      e.put_ino_grafcet(out, array, prefix, two_sided[index]);
  }
}

}  // namespace kiva
