// VHDL as it was told: registers and outputs change on the falling edge of the clock, inputs are
// sampled on the rising edge, equations are concurrent assignments.
//
// Each entry of the node table has one driver: the process for the inputs, which it samples, and a
// concurrent assignment for every other node. The marks of the nodes see to that: what the process
// writes is marked before the equations are written.

#include <algorithm>
#include <map>
#include <ostream>
#include <span>

#include "pert_exp/equation_code.h"
#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/targets/languages/vhdl.h"

namespace kiva {

namespace {

// Nodes and equations.

node_code_texts node_texts(const std::string& array) {
  node_code_texts texts;
  texts.line_start = texts.constant_start = "      ";
  texts.table = array;
  texts.entry_open = "(";
  texts.entry_close = ")";
  texts.assign = " <= ";
  texts.or_text = " or ";
  texts.and_text = " and ";
  texts.not_open = "not ";
  texts.second_open = "(";
  texts.second_close = ")";
  texts.constant = "'1'";
  return texts;
}

/// Over the names of the manager's variables.
equation_code_texts equation_texts(bddpp_manager* manager, const std::string& array) {
  equation_code_texts texts;
  texts.nodes = node_texts(array);
  texts.read = [manager](long index) { return manager->Name_var_by_index(index); };
  texts.left = [manager](long index) { return "      " + manager->Name_var_by_index(index); };
  texts.assign = " <= ";
  texts.not_text = "not ";
  return texts;
}

/// A process and the equations of one module. On the rising edge of the clock the process
/// copies the inputs into their entries of the node table; on the falling edge it gives the outputs
/// and moves the registers; equations are concurrent assignments between the two.
struct CodeTexts {
  equation_code_texts code;
  /// The port of an input or output.
  std::function<std::string(long index)> port;
  std::vector<long> inputs, outputs;
  /// Outputs that are assigned outside the process, as code.left has it, and copied by it.
  std::unordered_set<long> inner = {};
  /// Assignments to registers, without ";".
  std::vector<std::string> resets, updates;
};

struct Equation {
  long index;
  bdd f;
};

std::string entry(const node_code_texts& nodes, const bdd& f) {
  const bdd_node* node = f.node();
  return (f.link_type() == -1 ? nodes.not_open : "") + nodes.table + nodes.entry_open +
         std::to_string(nodes.number ? nodes.number(node) : node->global_id()) + nodes.entry_close;
}

/// The nodes of an output that the process gives.
void put_output_nodes(std::ostream& out, const node_code_texts& nodes, const std::string& name,
                      const bdd& f) {
  f.manager_ref()->Print_node_code(nodes, out, f.node());
  out << "      -- final output evaluation of " << name << " in process\n";
}

void put_process(std::ostream& out, const CodeTexts& texts, bddpp_manager* manager,
                 std::span<const Equation> equations, const std::unordered_set<long>& in_process) {
  out << "process (reset,clk)\nbegin\n  if (reset = '0') then \n";
  for (long index : texts.outputs) out << "    " << texts.port(index) << " <= '0';\n";
  for (const std::string& text : texts.resets) out << "    " << text << ";\n";
  const node_code_texts& nodes = texts.code.nodes;
  for (long index : texts.inputs)
    out << "      " << entry(nodes, manager->Bdd_var_by_index(index)) << nodes.assign << "'0'"
        << nodes.line_end << '\n';
  out << "  elsif ( clk'event and clk='1') then \n";
  node_code_texts sampling = nodes;
  sampling.name = texts.port;
  for (long index : texts.inputs)
    manager->Print_node_code(sampling, out, manager->Bdd_var_by_index(index).node());
  out << "  elsif ( clk'event and clk='0') then \n";
  std::map<long, std::string> sources;  // in index order
  for (long index : texts.inner) sources.emplace(index, texts.code.read(index));
  for (const auto& [index, f] : equations)
    if (in_process.contains(index)) sources.emplace(index, entry(nodes, f));
  for (const auto& [index, source] : sources)
    out << "      " << texts.port(index) << " <= " << source << ";\n";
  for (const std::string& text : texts.updates) out << "    " << text << ";\n";
  out << "   end if;\nend process;\n\n";
}

/// Writes the process, then the equations in their order.
void put_process_and_equations(std::ostream& out, const CodeTexts& texts, bddpp_manager* manager,
                               std::span<const Equation> equations) {
  manager->Bdd_global_clear_marks();
  std::unordered_set<long> in_process(texts.outputs.begin(), texts.outputs.end());
  for (long index : texts.inner) in_process.erase(index);
  put_process(out, texts, manager, equations, in_process);
  out << "-- actualisation\n";
  for (const auto& [index, f] : equations)
    if (in_process.contains(index))
      put_output_nodes(out, texts.code.nodes, texts.port(index), f);
    else
      put_equation_code(out, texts.code, index, f);
}

// A module.

class VhdlText {
 public:
  explicit VhdlText(const TargetJob& job)
      : text_(job.module, vhdl_language, job.rules), m_(text_.module_name()) {
    take_ports();
    take_code();
    for (const TargetEquation& equation : text_.equations())
      equations_.push_back({equation.index, equation.f});
  }

  void put(std::ostream& out, const std::string& type) {
    out << "-- VHDL generation by ORVEL from " << m_ << " Zulang compiled code\n\n";
    if (type != "bit") out << "LIBRARY ieee;\nUSE ieee.std_logic_1164.all;\n";
    put_entity(out, type);
    out << "architecture " << m_ << "_a of " << m_ << " is\n\n";
    put_declarations(out, type);
    out << "begin\n-- state and output computation\n";
    put_process_and_equations(out, texts_, text_.manager(), equations_);
    out << "end " << m_ << "_a;\n\n";
  }

 private:
  void take_ports() {
    texts_.inputs = text_.input_rails();
    texts_.outputs = text_.rtl_rails();
    for (const Signal* output : text_.outputs()) {
      if (text_.module()->getBinding(output->getInternalName()) != nullptr) continue;
      texts_.outputs.push_back(text_.status(output));
      if (!text_.finalised()) texts_.outputs.push_back(text_.value(output));
    }
  }

  void take_code() {
    texts_.code = equation_texts(text_.manager(), m_ + "_node");
    texts_.port = [this](long index) { return text_.name(index); };
    texts_.code.read = texts_.port;
    texts_.code.left = [this](long index) { return "      " + text_.name(index); };
    texts_.code = text_.numbered(texts_.code);
    for (const StateRail& rail : text_.state()) {
      const std::string name = text_.name(rail.index);
      texts_.resets.push_back(name + " <= " + (rail.initial ? "'1'" : "'0'"));
      texts_.updates.push_back(name + " <= " + text_.name(rail.next));
    }
  }

  void put_entity(std::ostream& out, const std::string& type) const {
    out << "entity " << m_ << " is\n  port(";
    if (!text_.finalised()) out << " s_SET" << m_ << ", s_RESET" << m_ << ',';
    for (long index : texts_.inputs) out << texts_.port(index) << ", ";
    out << "reset, clk: in " << type << ";\n";
    const char* separator = "       ";
    for (long index : texts_.outputs) {
      out << separator << texts_.port(index);
      separator = ", ";
    }
    out << (texts_.outputs.empty() ? "     );\n" : ": out " + type + ");\n") << "end " << m_
        << ";\n\n";
  }

  void put_declarations(std::ostream& out, const std::string& type) const {
    std::map<long, std::string> variables;
    const std::unordered_set<long> outputs(texts_.outputs.begin(), texts_.outputs.end());
    const auto add = [&](long index) {
      if (!outputs.contains(index)) variables.emplace(index, text_.name(index));
    };
    for (long index : text_.locals()) add(index);
    for (const StateRail& rail : text_.state()) add(rail.index);
    // An output that is no port.
    for (const TargetEquation& equation : text_.equations())
      if (text_.is_output(equation.index)) add(equation.index);
    const long nodes = text_.manager()->Bdd_total_size();
    if (nodes > 0)
      out << "TYPE array_" << m_ << " IS ARRAY (" << nodes << " downto 0) OF " << type << " ;\n";
    for (const auto& [index, name] : variables) out << "signal " << name << " : " << type << ";\n";
    if (nodes > 0) out << "signal " << m_ << "_node : array_" << m_ << ";\n";
    out << '\n';
  }

  TargetText text_;
  std::string m_;
  CodeTexts texts_;
  std::vector<Equation> equations_;
};

}  // namespace

void put_told_vhdl(const TargetJob& job, const std::string& type) {
  VhdlText(job).put(job.out, type);
}

// A boolean automaton.

namespace {

std::vector<Equation> equations_of(Bddexpressionwood& wood) {
  std::vector<Equation> equations;
  for (long index : wood.earliest_sort())
    if (const bdd& f = wood.exp_by_index(index)->my_bdd_exp(); f.initialised())
      equations.push_back({index, f});
  return equations;
}

bool is_read(Bddexpressionwood& wood, long index) {
  const index_set equations = wood.Set_of_exp();
  return std::any_of(equations.begin(), equations.end(), [&](long reader) {
    return wood.exp_by_index(reader)->set_of_var_dependances().contains(index);
  });
}

void put_automaton_entity(std::ostream& out, const b_automaton& automaton, const std::string& name,
                          const std::string& type) {
  out << "-- VHDL generation from " << name << '\n';
  if (type != "bit") out << "LIBRARY ieee;\nUSE ieee.std_logic_1164.all;\n";
  const bool closed = automaton.nb_outputs() == 0;
  out << "entity " << name << " is\n  port(" << joined(automaton.inputs_list(), "", "", ", ")
      << "reset, clk: in " << type << (closed ? "\n     );\n" : ";\n");
  if (!closed)
    out << "       " << joined(automaton.outputs_list(), ", ") << ": out " << type << ");\n";
  out << "end " << name << ";\n";
}

}  // namespace

void b_automaton::VHDL_put(std::ostream& out, int mode, const std::string& name) const {
  const std::string node = name + "_node", type = mode != 0 ? "std_logic" : "bit";
  bddpp_manager* manager = manager_associe();
  CodeTexts texts;
  texts.code = equation_texts(manager, node);
  texts.code.nodes.first_open = "(";
  texts.code.nodes.first_close = ")";
  texts.port = [this](long index) { return nom_associe(index); };
  for (int k = 0; k < nb_inputs(); ++k) texts.inputs.push_back(input_index(k));
  for (int k = 0; k < nb_outputs(); ++k) {
    texts.outputs.push_back(output_index(k));
    // A port that goes out cannot be read.
    if (is_read(*wood_, output_index(k))) texts.inner.insert(output_index(k));
  }
  const auto variable = [&](long index) {
    return nom_associe(index) + (texts.inner.contains(index) ? "_inner" : "");
  };
  // An input is read as the process has sampled it.
  texts.code.read = texts.code.nodes.name = [&](long index) {
    const bool is_input = index >= input_index(0) && index < output_index(0);
    return is_input ? entry(texts.code.nodes, manager->Bdd_var_by_index(index)) : variable(index);
  };
  texts.code.left = [&](long index) { return "      " + variable(index); };
  for (int k = 0; k < nb_state_vars(); ++k) {
    texts.resets.push_back(nom_state_var(k) +
                           " <= " + (valeur_initiale_state_var(k) == 1 ? "'1'" : "'0'"));
    texts.updates.push_back(nom_state_var(k) + " <= " + nom_next_state_var(k));
  }
  put_automaton_entity(out, *this, name, type);
  out << "architecture " << name << "_a of " << name << " is\n"
      << "TYPE array_" << node << " IS ARRAY (" << manager->Bdd_total_size() << " downto 0) OF "
      << type << " ;\n";
  for (long index = 0; index < manager->Nb_bdd_vars(); ++index)
    if (index < input_index(0) || index >= local_index(0) || texts.inner.contains(index))
      out << "signal " << variable(index) << " : " << type << ";\n";
  out << "signal " << node << " : array_" << node << ";\nbegin\n"
      << "-- state and output computation\n";
  put_process_and_equations(out, texts, manager, equations_of(*wood_));
  out << "end " << name << "_a;\n";
}

// The told operations of other classes.

void Bddexpression::put_vhdl(std::ostream& out, const std::string& array,
                             const std::list<std::string>& outputs) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  const equation_code_texts texts = equation_texts(my_bdd_manager(), array);
  const std::string name = my_bdd_manager()->Name_var_by_index(my_index_var());
  if (std::find(outputs.begin(), outputs.end(), name) != outputs.end())
    put_output_nodes(out, texts.nodes, name, bdd_exp);
  else
    put_equation_code(out, texts, my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_vhdl(std::ostream& out, const std::string& array,
                                 const std::list<std::string>& inputs,
                                 const std::list<std::string>& outputs,
                                 const std::list<std::string>& resets,
                                 const std::list<std::string>& updates) {
  const auto indices = [&](const std::list<std::string>& names) {
    std::vector<long> found;
    for (const std::string& name : names)
      found.push_back(man->Bdd_if_index(man->Bdd_var_by_name(name)));
    return found;
  };
  CodeTexts texts{.code = equation_texts(man, array),
                  .port = [this](long index) { return man->Name_var_by_index(index); },
                  .inputs = indices(inputs),
                  .outputs = indices(outputs),
                  .resets = {resets.begin(), resets.end()},
                  .updates = {updates.begin(), updates.end()}};
  put_process_and_equations(out, texts, man, equations_of(*this));
}

void bddpp_manager::Print_node_for_eval_VHDL(const std::string& array, std::ostream& out,
                                             bdd_node* node) {
  Print_node_code(node_texts(array), out, node);
}

void bddpp_manager::Print_node_for_eval_VHDL_input(const std::string& array, std::ostream& out,
                                                   bdd_node* node) {
  // A variable is one line of the same code.
  if (node != nullptr && node->is_var(internal_bdd_node_one))
    Print_node_code(node_texts(array), out, node);
}

void bddpp_manager::Print_node_for_eval_VHDL_reset_input(const std::string& array,
                                                         std::ostream& out,
                                                         const bdd_node* node) const {
  if (node == nullptr) return;
  out << "      " << array << '(' << node->global_id() << ") <= '0';\n";
}

std::string bddpp_manager::Print_sop_to_VHDL_String(const bdd& f, int mode) {
  if (Bdd_is_tautology(f)) return Bdd_is_one_tautologic(f) ? "'1'" : "'0'";
  const std::string or_text = ") or (";
  const std::string sum = Print_sop_to_String(or_text, " and ", "not ", "", f, mode);
  return sum.find(or_text) == std::string::npos ? sum : "(" + sum + ")";
}

std::string bdd::vhdl_node_name(const std::string& array) const {
  if (internal_bdd_node == nullptr) return "";
  return (internal_link_type == -1 ? "not " : "") + array + "(" +
         std::to_string(internal_bdd_node->global_id()) + ")";
}

}  // namespace kiva
