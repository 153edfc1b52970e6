// BLIF, VHDL and SystemC.

#include <ostream>

#include "pert_exp/vhdl_code.h"
#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"

namespace kiva {

namespace {

/// `marks` may be null: everything.
void put_blif(std::ostream& out, const b_automaton& automaton, const std::string& name,
              const int* marks) {
  const auto marked = [&](long index) { return marks == nullptr || marks[index] != 0; };
  out << ".model " << name << '\n';
  std::string inputs;
  for (int k = 0; k < automaton.nb_inputs(); ++k)
    if (marked(automaton.input_index(k))) inputs += ' ' + automaton.nom_input(k);
  if (automaton.nb_inputs() > 0) out << ".inputs" << inputs;
  out << '\n';
  if (automaton.nb_outputs() > 0)
    out << ".outputs " << joined(automaton.outputs_list(), " ") << '\n';
  for (int k = 0; k < automaton.nb_state_vars(); ++k)
    if (marked(k))
      out << ".latch " << automaton.nom_next_state_var(k) << ' ' << automaton.nom_state_var(k)
          << ' ' << (automaton.valeur_initiale_state_var(k) == 1 ? "1" : "0") << '\n';
  out << '\n';
  automaton.wood_associee()->Put_blif(out, "node", marks);
  out << "\n.end\n\n";
}

}  // namespace

void b_automaton::BLIF_put(std::ostream& out, int, const std::string& name) const {
  put_blif(out, *this, name, nullptr);
}

void b_automaton::BLIF_restrict_put(std::ostream& out, int, const std::string& name,
                                    const std::vector<int>& marks) const {
  put_blif(out, *this, name, marks.data());
}

void b_automaton::SYSTEMC_put(std::ostream& body, std::ostream& header, int,
                              const std::string& name) const {
  header << "#ifndef " << name << "_H\n#define " << name << "_H\n#include <systemc.h>\n"
         << "SC_MODULE(" << name << ")\n{\n    // Port Declaration\n";
  put_lines(header, names_.inputs, "    sc_in<bool> ", ";");
  header << "    sc_in<bool> reset;\n    sc_in<bool> clk;\n";
  put_lines(header, names_.outputs, "    sc_out<bool> ", ";");
  header << "   // Data Members\n";
  for (const auto* names : {&names_.state, &names_.next_state, &names_.locals})
    put_lines(header, *names, "    sc_signal<bool> ", ";");
  header << "    // Constructor\n    SC_CTOR(" << name << ")\n    {\n      SC_METHOD(" << name
         << "_thread);\n";
  put_lines(header, names_.inputs, "      sensitive(", ");");
  header << "      sensitive(reset);\n      sensitive << clk.pos();\n    }\n    // Processes\n"
         << "    void " << name << "_thread();\n};\n#endif\n";

  body << "#include <systemc.h>\n#include \"" << name << ".h\"\n// Processes\nvoid " << name
       << "::" << name << "_thread()\n{\n  // state and output computation\n"
       << "  if (reset == !false){\n";
  put_lines(body, names_.outputs, "    ", " = false;");
  for (int k = 0; k < nb_state_vars(); ++k)
    body << "    " << nom_state_var(k) << " = "
         << (valeur_initiale_state_var(k) == 1 ? "!false" : "false") << ";\n";
  body << "  }\n  elsif ( clk.event()){ \n";
  if (nb_equ_def() > 0) {
    body << " //internal definitions\n";
    wood_->Put_systemc(body);
  }
  for (int k = 0; k < nb_state_vars(); ++k)
    body << "    " << nom_state_var(k) << " = " << nom_next_state_var(k) << ";\n";
  body << "  }\n};\n";
}

void b_automaton::VHDL_put(std::ostream& out, int mode, const std::string& name) const {
  const std::string node = name + "_node", type = mode != 0 ? "std_logic" : "bit";
  bddpp_manager* manager = manager_associe();
  index_set read;
  for (long index : wood_->Set_of_exp())
    for (long dep : wood_->exp_by_index(index)->set_of_var_dependances()) read.insert(dep);

  vhdl_code_texts texts;
  texts.code = vhdl_equation_texts(manager, node);
  texts.code.nodes.first_open = "(";
  texts.code.nodes.first_close = ")";
  texts.port = [this](long index) { return nom_associe(index); };
  for (int k = 0; k < nb_inputs(); ++k) texts.inputs.push_back(input_index(k));
  for (int k = 0; k < nb_outputs(); ++k) {
    texts.outputs.push_back(output_index(k));
    // A port that goes out cannot be read.
    if (read.contains(output_index(k))) texts.inner.insert(output_index(k));
  }
  const auto variable = [&](long index) {
    return nom_associe(index) + (texts.inner.contains(index) ? "_inner" : "");
  };
  // An input is read as the process has sampled it.
  texts.code.read = texts.code.nodes.name = [&](long index) {
    const bool is_input = index >= input_index(0) && index < output_index(0);
    return is_input ? manager->Bdd_var_by_index(index).vhdl_node_name(node) : variable(index);
  };
  texts.code.left = [&](long index) { return "      " + variable(index); };
  for (int k = 0; k < nb_state_vars(); ++k) {
    texts.resets.push_back(nom_state_var(k) +
                           " <= " + (valeur_initiale_state_var(k) == 1 ? "'1'" : "'0'"));
    texts.updates.push_back(nom_state_var(k) + " <= " + nom_next_state_var(k));
  }
  std::vector<vhdl_equation> equations;
  for (long index : wood_->earliest_sort())
    if (wood_->exp_by_index(index)->my_bdd_exp().initialised())
      equations.push_back({index, wood_->exp_by_index(index)->my_bdd_exp()});

  out << "-- VHDL generation from " << name << '\n';
  if (mode != 0) out << "LIBRARY ieee;\nUSE ieee.std_logic_1164.all;\n";
  out << "entity " << name << " is\n  port(" << joined(names_.inputs, "", "", ", ")
      << "reset, clk: in " << type << (nb_outputs() > 0 ? ";\n" : "\n");
  if (nb_outputs() > 0)
    out << "       " << joined(names_.outputs, ", ") << ": out " << type << ");\n";
  else
    out << "     );\n";
  out << "end " << name << ";\narchitecture " << name << "_a of " << name << " is\n"
      << "TYPE array_" << node << " IS ARRAY (" << manager->Bdd_total_size() << " downto 0) OF "
      << type << " ;\n";
  for (long index = 0; index < manager->Nb_bdd_vars(); ++index)
    if (index < input_index(0) || index >= local_index(0) || texts.inner.contains(index))
      out << "signal " << variable(index) << " : " << type << ";\n";
  out << "signal " << node << " : array_" << node << ";\nbegin\n"
      << "-- state and output computation\n";
  put_vhdl_code(out, texts, manager, equations);
  out << "end " << name << "_a;\n";
}

}  // namespace kiva
