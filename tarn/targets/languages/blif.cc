// BLIF: a module as a netlist, a latch for each bit of state, a table for each function of few
// products. The told form has one for each node.

#include <iostream>
#include <map>
#include <unordered_map>

#include "base/graph_walk.h"
#include "bdd/literal_list.h"
#include "pert_exp/equation_code.h"
#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/model/equationtable.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/sum_text.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

// Names that begin with a digit are taken by some tools and changed by others.
const TargetText::Language language{
    .shape = {.target = "BLIF", .more_characters = ".@"},
    .told_wires = true,
    .names_module = false,
    .node_prefix = [](const std::string& module) { return module + "_node_"; }};

/// A table for each unmarked node from `root` down, children first, which marks them. Of the texts
/// only `table`, `number` and `name` count.
void put_nodes(const node_code_texts& t, const bddpp_manager& manager, std::ostream& out,
               bdd_node* root) {
  const auto entry = [&](const bdd_node* node) {
    return t.table + "_" + std::to_string(t.number ? t.number(node) : node->global_id());
  };
  for_each_from_below(root, [&](const bdd_node& node) {
    if (&node == manager.Bdd_node_one()) {
      out << ".names " << entry(&node) << "\n1\n";
      return;
    }
    out << ".names "
        << (t.name ? t.name(node.var_index()) : manager.Name_var_by_index(node.var_index())) << ' ';
    if (node.is_var(manager.Bdd_node_one())) {
      out << entry(&node) << "\n1 1\n";
      return;
    }
    // Inputs: the variable, the then side, the else side.
    out << entry(node.then_node()) << ' ' << entry(node.else_node()) << ' ' << entry(&node)
        << "\n11- 1\n0-" << (node.else_link_type() == -1 ? '0' : '1') << " 1\n";
  });
}

/// The tables of f, where `left` and `read` name the two variables.
void put_equation(std::ostream& out, const equation_code_texts& texts, long index, const bdd& f) {
  bddpp_manager* manager = f.manager_ref();
  if (is_copy(f)) {
    out << ".names " << texts.read(manager->Bdd_if_index(f)) << ' ' << texts.left(index)
        << "\n1 1\n";
    return;
  }
  put_nodes(texts.nodes, *manager, out, f.node());
  out << ".names " << texts.nodes.table << '_'
      << (texts.nodes.number ? texts.nodes.number(f.node()) : f.node()->global_id()) << ' '
      << texts.left(index) << (f.link_type() == -1 ? "\n0 1\n" : "\n1 1\n");
}

/// Names behind what a line of so many characters begins with, on as many lines as they fill.
std::string name_list(size_t column, const std::vector<std::string>& names) {
  constexpr size_t width = 98;
  std::string text;
  for (const std::string& name : names) {
    column += name.size() + 1;
    if (column > width) {
      text += " \\\n ";
      column = name.size() + 2;
    }
    text += ' ' + name;
  }
  return text;
}

/// Equations as tables of products: of a function of few its cover, of another a choice between two
/// functions that have tables of their own, which others share.
class Tables {
 public:
  Tables(const TargetText& text, std::ostream& out)
      : text_(text), manager_(*text.manager()), one_(manager_.Bdd_node_one()), out_(out) {}

  void put() {
    for (const TargetEquation& equation : text_.equations()) {
      text_.put_note(out_, "# ", equation.index);
      put_below(equation.f.node());
      if (known_.contains(equation.f.node()))
        put_copy(equation);
      else
        put_table(equation.f, text_.name(equation.index));
    }
  }

 private:
  using Node = const bdd_node*;
  static constexpr long most_products = 8;
  static constexpr size_t most_columns = 10;  ///< some readers take no more than twelve

  bool is_small(Node node) const {
    const bdd f = positive(node);
    const auto few = [](const bdd& g) {
      return count_products(g, most_products + 1) <= most_products;
    };
    return (few(f) || few(manager_.Bdd_not(f))) &&
           manager_.set_of_index_depend_on(f).size() <= most_columns;
  }
  bdd positive(Node node) const { return {&manager_, 1, const_cast<bdd_node*>(node)}; }

  /// The tables that the one of `root` reads.
  void put_below(Node root) {
    const auto is_done = [&](Node node) { return node == one_ || known_.contains(node); };
    walk_from_below(
        root, is_done,
        [&](Node node, auto ask) {
          if (is_small(node)) return;
          ask(node->then_node());
          ask(node->else_node());
        },
        [&](Node node) {
          if (node == root) return;
          const std::string name =
              text_.module_name() + "_node_" + std::to_string(text_.node_number(node));
          put_table(positive(node), name);
          known_.emplace(node, name);
        });
  }

  void put_copy(const TargetEquation& equation) {
    out_ << ".names " << known_.at(equation.f.node()) << ' ' << text_.name(equation.index)
         << (equation.f.link_type() == -1 ? "\n0 1\n" : "\n1 1\n");
  }

  void put_table(const bdd& f, const std::string& name) {
    if (manager_.Bdd_is_tautology(f))
      out_ << ".names " << name << (manager_.Bdd_is_one_tautologic(f) ? "\n1\n" : "\n");
    else if (is_small(f.node()))
      put_cover(f, name);
    else
      put_choice(f, name);
  }

  /// The products of the function, or those of its complement where they are fewer.
  void put_cover(const bdd& f, const std::string& name) {
    const bdd complement = manager_.Bdd_not(f);
    const bool turned =
        count_products(complement, most_products + 1) < count_products(f, most_products + 1);
    std::map<long, size_t> column;
    std::vector<std::string> names;
    for (long index : manager_.set_of_index_depend_on(f)) column.emplace(index, 0);
    for (auto& [index, at] : column) {
      at = names.size();
      names.push_back(text_.name(index));
    }
    names.push_back(name);
    out_ << ".names" << name_list(6, names) << '\n';
    for (const bdd& product : manager_.Bdd_sop(turned ? complement : f, 1)) {
      std::string row(column.size(), '-');
      for (int code : literals_of(manager_, product))
        row[column.at(code / 2)] = code % 2 == 0 ? '0' : '1';
      out_ << row << (turned ? " 0\n" : " 1\n");
    }
  }

  /// The variable on top decides between the two sides.
  void put_choice(const bdd& f, const std::string& name) {
    const Node node = f.node();
    const bool negated = f.link_type() == -1;
    out_ << ".names " << text_.name(node->var_index()) << entry(node->then_node())
         << entry(node->else_node()) << ' ' << name << '\n';
    const char yes = negated ? '0' : '1', no = negated ? '1' : '0';
    put_side('1', node->then_node(), yes, 0, node);
    put_side('0', node->else_node(), node->else_link_type() == -1 ? no : yes, 1, node);
  }
  std::string entry(Node node) const { return node == one_ ? "" : " " + known_.at(node); }
  /// A row in which the side has the bit; a constant side has no column.
  void put_side(char test, Node side, char bit, int place, Node of) {
    if (side == one_ && bit == '0') return;
    std::string row(1, test);
    if (of->then_node() != one_) row += place == 0 ? bit : '-';
    if (of->else_node() != one_) row += place == 1 ? bit : '-';
    out_ << row << " 1\n";
  }

  const TargetText& text_;
  bddpp_manager& manager_;
  Node one_;
  std::ostream& out_;
  std::unordered_map<Node, std::string> known_;  ///< nodes that have tables
};

void put_told_equations(const TargetText& text, std::ostream& out) {
  equation_code_texts texts;
  texts.nodes.table = text.module_name() + "_node";
  texts = text.numbered(texts);
  text.manager()->Bdd_global_clear_marks();
  for (const TargetEquation& equation : text.equations())
    put_equation(out, texts, equation.index, equation.f);
}

void put_module(const TargetJob& job) {
  Module* module = job.module;
  const char* missing =
      module->getCompilation() == nullptr ? "equationtable"
      : module->getBddWood() == nullptr || module->getBddWood()->my_bdd_manager() == nullptr
          ? "bdd manager"
          : nullptr;
  if (missing != nullptr) {
    std::cerr << "ERROR in Module::BLIF_put(): no " << missing << " defined! " << module->getName()
              << '\n';
    return;
  }
  std::ostream& out = job.out;
  const TargetText text(module, language, job.rules);
  const auto put_names = [&](const std::vector<long>& rails) {
    std::vector<std::string> names;
    for (long index : rails) names.push_back(text.name(index));
    if (job.rules.own)
      out << name_list(8, names);
    else
      for (const std::string& name : names) out << ' ' << name;
    out << '\n';
  };
  out << ".model " << text.module_name() << "\n.inputs";
  put_names(text.input_rails());
  out << ".outputs";
  put_names(text.output_rails());
  for (const StateRail& rail : text.state()) {
    text.put_note(out, "# ", rail.index);
    out << ".latch " << text.name(rail.next) << ' ' << text.name(rail.index) << ' '
        << (rail.initial ? 1 : 0) << '\n';
  }
  out << '\n';
  if (job.rules.own)
    Tables(text, out).put();
  else
    put_told_equations(text, out);
  out << ".end\n\n";
}

/// `marks` may be null: everything.
void put_automaton(std::ostream& out, const b_automaton& automaton, const std::string& name,
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

const Bench bench{.language = &language,
                  .extension = ".v",
                  .run = blif_bench_run,
                  .put = put_blif_bench,
                  .tool = "berkeley-abc -h | head -n 1"};

}  // namespace

extern const Target blif_target{
    .option = "blif",
    .help = "netlist, .blif",
    .file = {.extension = ".blif", .in_folder = true, .tells_failure = true},
    .put = put_module,
    .comment = "# ",
    .bench = &bench};

// A boolean automaton.

void b_automaton::BLIF_put(std::ostream& out, int, const std::string& name) const {
  put_automaton(out, *this, name, nullptr);
}

void b_automaton::BLIF_restrict_put(std::ostream& out, int, const std::string& name,
                                    const std::vector<int>& marks) const {
  put_automaton(out, *this, name, marks.data());
}

// The told operations of other classes.

void Module::BLIF_put(std::ostream& out, int) {
  put_target(blif_target, this, out);
}

void Module::printBLIF() {
  print_target(blif_target, this);
}

void Bddexpression::put_blif(std::ostream& out, const std::string& prefix) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  equation_code_texts texts;
  texts.nodes.table = prefix;
  texts.read = texts.left = [manager](long index) { return manager->Name_var_by_index(index); };
  put_equation(out, texts, my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_blif(std::ostream& out, const std::string& prefix) {
  Put_blif(out, prefix, nullptr);
}

void Bddexpressionwood::Put_blif(std::ostream& out, const std::string& prefix, const int* marks) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort())
    if (marks == nullptr || marks[index] != 0) exp_table[index]->put_blif(out, prefix);
}

void bddpp_manager::Print_node_for_eval_BLIF(const std::string& table, std::ostream& out,
                                             bdd_node* root) {
  node_code_texts texts;
  texts.table = table;
  put_nodes(texts, *this, out, root);
}

void bddpp_manager::BLIF_print(std::ostream& out, const bdd& var, const bdd& f, int mode) {
  PLA_print_pref_suff(out, var, f, "", "", ".names  ", "\n", "\n", "\n", "", mode);
}

}  // namespace kiva
