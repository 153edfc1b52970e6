// C, its sketch for a small board, and a C# class around the same equations.

#include <algorithm>
#include <ostream>

#include "pert_exp/equation_code.h"
#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"

namespace kiva {

namespace {

std::vector<std::string> state_names(const b_automaton& automaton) {
  std::vector<std::string> names;
  for (const std::string& name : automaton.state_vars_list()) names.push_back(name);
  for (const std::string& name : automaton.next_state_vars_list()) names.push_back(name);
  return names;
}

void put_state(std::ostream& out, const b_automaton& automaton, const std::string& prefix) {
  if (automaton.nb_state_vars() > 0)
    out << "int " << joined(state_names(automaton), ",\n    ", prefix) << ";\n\n";
}

void put_initial_state(std::ostream& out, const b_automaton& automaton, const std::string& prefix) {
  for (int k = 0; k < automaton.nb_state_vars(); ++k)
    out << "  " << prefix << automaton.nom_state_var(k) << "= "
        << (automaton.valeur_initiale_state_var(k) == 1 ? "!0" : "0") << ";\n";
}

void put_moves(std::ostream& out, const b_automaton& automaton, const std::string& prefix) {
  if (automaton.nb_state_vars() == 0) return;
  out << "  /* internal transitions */\n";
  for (int k = 0; k < automaton.nb_state_vars(); ++k)
    out << "  " << prefix << automaton.nom_state_var(k) << "= " << prefix
        << automaton.nom_next_state_var(k) << ";\n";
}

/// The equations; an output is a pointer where it is read, too.
void put_equations(std::ostream& out, const b_automaton& automaton, const std::string& array,
                   const std::string& prefix) {
  bddpp_manager* manager = automaton.manager_associe();
  equation_code_texts texts =
      c_equation_texts(manager, array, automaton.outputs_list(), prefix, "");
  texts.nodes.var_prefix.clear();
  texts.read = texts.nodes.name = [&automaton, prefix](long index) {
    const bool is_output = index >= automaton.output_index(0) && index < automaton.local_index(0);
    const std::string name = prefix + automaton.nom_associe(index);
    return is_output ? "(*" + name + ")" : name;
  };
  manager->Bdd_global_clear_marks();
  for (long index : automaton.wood_associee()->earliest_sort()) {
    const bdd& f = automaton.wood_associee()->exp_by_index(index)->my_bdd_exp();
    if (f.initialised()) put_equation_code(out, texts, index, f);
  }
}

}  // namespace

void b_automaton::C_put(std::ostream& body, std::ostream& header, int,
                        const std::string& name) const {
  const std::string prefix = name + "_", array = name + "_def_node";
  const std::string parameters =
      (nb_inputs() > 0 ? "int " + joined(names_.inputs, ", int ", prefix) : "") +
      (nb_inputs() > 0 && nb_outputs() > 0 ? ", " : "") +
      (nb_outputs() > 0 ? "int *" + joined(names_.outputs, ", int *", prefix) : "");
  const auto put_head = [&](const std::string& function) {
    body << "void " << prefix << function << '(' << parameters << ")\n{\n";
    header << "extern void " << prefix << function << '(' << parameters << ");\n";
  };
  put_state(body, *this, prefix);
  put_head("reset_automaton");
  put_initial_state(body, *this, prefix);
  body << "}\n\n";
  put_head("automaton");
  if (nb_locals() > 0) body << "  int " << joined(names_.locals, ", ", prefix) << ";\n\n";
  body << "  int " << array << '[' << manager_associe()->Bdd_total_size() << "];\n";
  if (nb_equ_def() > 0) {
    body << "  /* internal definitions */\n";
    put_equations(body, *this, array, prefix);
  }
  put_moves(body, *this, prefix);
  body << "}\n\n";
}

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
  put_state(out, *this, prefix);
  out << "void setup()\n{\n  my_setup();\n";
  put_initial_state(out, *this, prefix);
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
  put_moves(out, *this, prefix);
  out << "  /* user after() function call */\n  my_after();\n}\n";
}

void b_automaton::CSHARP_put(std::ostream& out, int, const std::string& name) const {
  const std::string prefix = name + "_", array = name + "_def_node";
  const std::string dots(60, '.');
  const auto section = [&](const std::string& title) {
    out << "//" << dots << "\n// " << title << "\n//" << dots << '\n';
  };
  const auto fields = [&](const std::string& kind, const std::vector<std::string>& names,
                          const std::string& none) {
    out << "// private " << kind << " variables :\n";
    if (names.empty()) out << none << '\n';
    put_lines(out, names, "private bool ", ";");
  };
  const auto properties = [&](const std::string& kind, const std::vector<std::string>& names,
                              const std::string& before) {
    out << "// get & set methods for " << kind << " from the FSM " << kind << " :\n";
    for (const std::string& field : names)
      out << " public bool " << before << field << "\n {\n  get { return " << field
          << "; }\n  set { if (value != " << field << ") " << field << " = value; }\n }\n";
  };
  section("Libraries :");
  out << " using System; \n";
  section("Class :");
  out << " public class " << name << "\n{\n";
  section("private attributs:");
  fields("input", names_.inputs, "// No inputs ...");
  fields("output", names_.outputs, "// No output ...");
  out << "// private registers variables :\n";
  if (nb_state_vars() > 0)
    out << "private bool " << joined(state_names(*this), ", ", prefix) << ";\n";
  section("The constructor :");
  out << "public " << name << "()\n{\n  Reset_Automaton();\n}\n";
  section("The methods :");
  properties("inputs", names_.inputs, "P_");
  properties("outputs", names_.outputs, "GS_");
  out << " private void Reset_Automaton()\n{\n  Reset_Inputs();\n  Reset_Outputs();\n"
         "  Reset_Registers();\n}\n private void Reset_Inputs()\n{\n";
  put_lines(out, names_.inputs, "  ", " = false;");
  out << "}\n private void Reset_Outputs()\n{\n";
  put_lines(out, names_.outputs, "  ", " = false;");
  out << "}\n private void Reset_Registers()\n{\n";
  for (int k = 0; k < nb_state_vars(); ++k)
    out << "  " << prefix << nom_state_var(k) << " = "
        << (valeur_initiale_state_var(k) == 1 ? "!false" : "false") << ";\n";
  out << "}\n// FSM Transition methods:\npublic void Automaton()\n{\n  React();\n  Next();\n"
         "  Reset_Inputs();\n}\n// Next state method computing:\n private void React()\n{\n";
  if (nb_locals() > 0) out << "  bool " << joined(names_.locals, ", ") << ";\n";
  out << "  int " << array << '[' << manager_associe()->Bdd_total_size() << "];\n";
  if (nb_equ_def() > 0) {
    out << "// internal definitions \n";
    equation_code_texts texts = c_equation_texts(manager_associe(), array, {}, "", "");
    texts.read = texts.nodes.name = [&](long index) {
      return (index < input_index(0) ? prefix : "") + nom_associe(index);
    };
    texts.left = [read = texts.read](long index) { return "  " + read(index); };
    manager_associe()->Bdd_global_clear_marks();
    for (long index : wood_->earliest_sort()) {
      const bdd& f = wood_->exp_by_index(index)->my_bdd_exp();
      if (f.initialised()) put_equation_code(out, texts, index, f);
    }
  }
  out << "}\n// Changing method X=Xnext\n private void Next()\n{\n";
  for (int k = 0; k < nb_state_vars(); ++k)
    out << "  " << prefix << nom_state_var(k) << " = " << prefix << nom_next_state_var(k) << ";\n";
  out << "}\n}\n";
}

}  // namespace kiva
