// Equations in VHDL. Each entry of the node table has one driver: the process for the inputs, which
// it samples, and a concurrent assignment for every other node. The marks of the nodes see to that:
// what the process writes is marked before the equations are written.

#include "pert_exp/vhdl_code.h"

#include <algorithm>
#include <map>
#include <ostream>

namespace kiva {

namespace {

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

void put_process(std::ostream& out, const vhdl_code_texts& texts, bddpp_manager* manager,
                 std::span<const vhdl_equation> equations,
                 const std::unordered_set<long>& in_process) {
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

}  // namespace

equation_code_texts vhdl_equation_texts(bddpp_manager* manager, const std::string& array) {
  equation_code_texts texts;
  texts.nodes = vhdl_node_texts(array);
  texts.read = [manager](long index) { return manager->Name_var_by_index(index); };
  texts.left = [manager](long index) { return "      " + manager->Name_var_by_index(index); };
  texts.assign = " <= ";
  texts.not_text = "not ";
  return texts;
}

void put_vhdl_code(std::ostream& out, const vhdl_code_texts& texts, bddpp_manager* manager,
                   std::span<const vhdl_equation> equations) {
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

void Bddexpression::put_vhdl(std::ostream& out, const std::string& array,
                             const std::list<std::string>& outputs) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  const equation_code_texts texts = vhdl_equation_texts(my_bdd_manager(), array);
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
  vhdl_code_texts texts{.code = vhdl_equation_texts(man, array),
                        .port = [this](long index) { return man->Name_var_by_index(index); },
                        .inputs = indices(inputs),
                        .outputs = indices(outputs),
                        .resets = {resets.begin(), resets.end()},
                        .updates = {updates.begin(), updates.end()}};
  std::vector<vhdl_equation> equations;
  for (long index : earliest_sort())
    if (exp_table[index]->my_bdd_exp().initialised())
      equations.push_back({index, exp_table[index]->my_bdd_exp()});
  put_vhdl_code(out, texts, man, equations);
}

}  // namespace kiva
