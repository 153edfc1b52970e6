// Lustre: a module as a node. Registers are delayed variables, and the order of equations means
// nothing: they stand in the order of evaluation for the reader alone.

#include <iostream>
#include <unordered_set>

#include "pert_exp/equation_code.h"
#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/targets/frame/data_text.h"
#include "tarn/targets/frame/straight_code.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

const TargetText::Language language{
    .shape = {.target = "Lustre",
              .keywords = {"and",     "assert", "bool",     "call",  "const",    "current",
                           "div",     "do",     "done",     "else",  "end",      "enum",
                           "extern",  "false",  "fby",      "fill",  "fillred",  "function",
                           "if",      "in",     "include",  "int",   "is",       "body",
                           "let",     "map",    "merge",    "mod",   "model",    "needs",
                           "node",    "nor",    "not",      "of",    "operator", "or",
                           "package", "pre",    "provides", "quote", "real",     "red",
                           "returns", "step",   "struct",   "tel",   "then",     "true",
                           "type",    "unsafe", "uses",     "var",   "when",     "with",
                           "xor"}},
    .has_data = true,
    .told_wires = true,
    .node_prefix = [](const std::string&) { return std::string("part_"); },
    .own_names = [](const std::string&) { return std::vector<std::string>{"useless"}; }};

struct OwnRules {
  /// Equations are expressions; else the nodes of their diagrams are elements of an array that
  /// nothing declares.
  bool expressions;
  /// A signal's further bindings are tested as the first is; else their values stand without test.
  bool tested_bindings;
  /// A constant without value has its type.
  bool typed_constants;
  /// The operator Not keeps a blank to its operand.
  bool spaced_not;
};

constexpr OwnRules own_rules(bool working) {
  return {working, working, working, working};
}

equation_code_texts equation_texts(bddpp_manager* manager, const std::string& array) {
  equation_code_texts texts;
  texts.nodes.table = array;
  texts.nodes.or_text = " or ";
  texts.nodes.and_text = " and ";
  texts.nodes.not_open = "not ";
  texts.nodes.constant = "not false";
  texts.read = [=](long index) { return manager->Name_var_by_index(index); };
  texts.left = [=](long index) { return "  " + manager->Name_var_by_index(index); };
  texts.not_text = "not ";
  return texts;
}

equation_code_texts arrayless_texts(bddpp_manager* manager, const std::string& array) {
  equation_code_texts texts = equation_texts(manager, array);
  texts.nodes.entry_open = "_";
  texts.nodes.entry_close = "";
  return texts;
}

constexpr const char* told_operators[] = {" + ", " - ", " * ",  " / ", " -",   " and ", " or ",
                                          "not", " = ", " <> ", " < ", " <= ", " > ",   " >= "};
constexpr const char* working_operators[] = {" + ",  " - ", " * ",  " / ", " -",   " and ", " or ",
                                             "not ", " = ", " <> ", " < ", " <= ", " > ",   " >= "};

DataTexts data_texts(const TargetRules& rules, std::function<std::string(const Signal*)> value) {
  return {own_rules(rules.own).spaced_not ? working_operators : told_operators,
          "DataExpr::LUSTRE_opname", std::move(value), rules.brackets};
}

class LustreText {
 public:
  LustreText(const TargetText& text, const std::string& array, std::ostream& out)
      : text_(text), rules_(text.rules()), own_(own_rules(rules_.own)), out_(out) {
    texts_ = equation_texts(text.manager(), array);
    texts_.read = [this](long index) { return text_.name(index); };
    texts_.left = [this](long index) { return "  " + text_.name(index); };
    texts_ = text.numbered(texts_);
    words_.read = texts_.read;
    if (own_.expressions) lines_ = straight_code(text, words_);
    data_ = data_texts(rules_, [this](const Signal* s) { return text_.value_name(s); });
    for (const Signal* output : text.outputs())
      if (text.is_valued(output)) valued_.push_back(output);
    valued_.insert(valued_.end(), text.valued_locals().begin(), text.valued_locals().end());
  }

  void put_node() {
    for (const ConstantDecl* constant : data_constants()) put_constant(*constant);
    out_ << "node " << text_.module_name() << '(';
    put_inputs();
    out_ << ")\n     returns (";
    put_outputs();
    out_ << ");\n";
    put_variables();
    out_ << "let\n";
    for (const StateRail& rail : text_.state()) {
      text_.put_note(out_, "  -- ", rail.index);
      out_ << "  " << text_.name(rail.index) << "= " << (rail.initial ? "true" : "false")
           << "->pre(" << text_.name(rail.next) << ");\n";
    }
    if (own_.expressions) {
      put_lines();
    } else {
      out_ << "  -- outputs computing\n";
      put_equations(out_);
    }
    out_ << "tel\n";
  }

  void put_equations(std::ostream& out) const {
    text_.manager()->Bdd_global_clear_marks();
    for (const TargetEquation& equation : text_.equations()) {
      if (equation.kind != TargetEquation::function) {
        put_test(out, equation);
        continue;
      }
      put_equation_code(out, texts_, equation.index, equation.f);
      for (const Signal* signal : valued_)
        if (text_.status(signal) == equation.index) put_value(out, *signal);
    }
  }

 private:
  /// Values behind what tells them, the others at the end.
  void put_lines() {
    std::unordered_set<const Signal*> given;
    for (const StraightLine& line : lines_) {
      text_.put_note(out_, "  -- ", line.index);
      if (line.equation != nullptr) {
        put_test(out_, *line.equation);
        continue;
      }
      out_ << broken("  " + left_of(line, words_) + " = " + line.right + ";\n");
      for (const Signal* signal : valued_)
        if (text_.status(signal) == line.index && given.insert(signal).second)
          put_value(out_, *signal);
    }
    for (const Signal* signal : valued_)
      if (!given.contains(signal)) put_value(out_, *signal);
  }

  void put_constant(const ConstantDecl& constant) {
    if (constant.getValue() == nullptr && own_.typed_constants) {
      out_ << "const " << constant.getName() << ": " << constant.getType() << ";\n";
    } else {
      constant.LUSTRE_put(out_);
    }
  }

  void put_list(const std::vector<std::string>& names) {
    const char* separator = "";
    for (const std::string& name : names) {
      out_ << separator << name;
      separator = "; ";
    }
  }

  /// Of each signal its status, its value, and its value rail unless the module is finalised.
  void add_signals(const std::vector<Signal*>& signals, std::vector<std::string>& names) const {
    for (const Signal* signal : signals) {
      names.push_back(text_.name(signal) + ": bool");
      if (text_.is_valued(signal))
        names.push_back(text_.value_name(signal) + ": " + text_.type(signal));
      if (!text_.finalised()) names.push_back(text_.name(text_.value(signal)) + ": bool");
    }
  }

  void put_inputs() {
    std::vector<std::string> names;
    const auto& wires = text_.set_reset_rails();
    if (rules_.proper_lists) {
      for (long index : wires) names.push_back(text_.name(index) + ": bool");
    } else if (!wires.empty()) {
      names.push_back(" " + text_.name(wires[0]) + ", " + text_.name(wires[1]));
    }
    add_signals(text_.inputs(), names);
    for (long index : text_.further_inputs()) names.push_back(text_.name(index) + ": bool");
    if (names.empty()) names.push_back("useless : bool");
    put_list(names);
  }

  void put_outputs() {
    std::vector<std::string> names;
    for (long index : text_.rtl_rails())
      names.push_back(text_.name(index) + (rules_.proper_lists ? ": bool" : ":bool"));
    add_signals(text_.outputs(), names);
    put_list(names);
  }

  /// All that is computed but the outputs.
  std::vector<std::string> inner_variables() const {
    std::vector<std::string> variables;
    if (!own_.expressions)
      for (long index : text_.locals()) variables.push_back(text_.name(index));
    for (const StraightLine& line : lines_)
      if (line.index < 0 || !text_.is_output(line.index))
        variables.push_back(left_of(line, words_));
    for (const StateRail& rail : text_.state())
      if (!text_.is_output(rail.index)) variables.push_back(text_.name(rail.index));
    return variables;
  }

  void put_variables() {
    const std::vector<std::string> variables = inner_variables();
    const long nodes =
        own_.expressions ? 0 : text_.count_nodes([&](std::ostream& out) { put_equations(out); });
    if (variables.empty() && nodes == 0 && text_.valued_locals().empty() && rules_.proper_lists)
      return;
    out_ << "var\n";
    const char* separator = "  ";
    for (const std::string& variable : variables) {
      out_ << separator << variable;
      separator = ",\n  ";
    }
    if (!variables.empty() || !rules_.proper_lists) out_ << ": bool;\n";
    for (long node = 0; node < nodes; ++node)
      out_ << "  " << text_.module_name() << '_' << node << ": bool;\n";
    for (const Signal* signal : text_.valued_locals())
      out_ << "  " << text_.value_name(signal) << ':' << text_.type(signal) << ";\n";
  }

  void put_test(std::ostream& out, const TargetEquation& equation) const {
    const std::string test = data_text(data_, *equation.binding->getValue());
    out << "  " << text_.name(equation.index) << " = ";
    if (!rules_.data_tests) {
      out << test << ";\n";
      return;
    }
    // Without a value there is nothing to test.
    if (const auto signals = equation.binding->getValue()->computeDependencySet()) {
      std::set<std::string> present;  // in an order of its own
      for (const Signal* signal : *signals) present.insert(text_.name(signal));
      for (const std::string& name : present) out << name << " and ";
    }
    out << (equation.kind == TargetEquation::data_complement ? "not (" : "(") << test << ");\n";
  }

  /// The value of an output or a local: that of the first binding whose signal is present.
  void put_value(std::ostream& out, const Signal& signal) const {
    const std::string zero = zero_lustre(text_.type(&signal));
    const bool tests_status = signal.isOutput() || !rules_.data_triggers;
    out << "  " << text_.value_name(&signal) << " =\n";
    if (tests_status) out << "    if " << text_.name(&signal) << " then \n";
    bool first = true;
    for (const DataBinding* binding : text_.value_bindings(&signal)) {
      out << (first ? "      " : "      else ");
      if (first || own_.tested_bindings)
        out << "if " << text_.name(text_.status(binding->getSignal())) << " then ";
      out << data_text(data_, *binding->getValue()) << '\n';
      first = false;
    }
    out << (first ? "      " : "      else ") << zero << (tests_status ? "\n" : ";\n");
    if (tests_status) out << "    else " << zero << ";\n";
  }

  const TargetText& text_;
  const TargetRules& rules_;
  OwnRules own_;
  std::ostream& out_;
  equation_code_texts texts_;
  ExpressionTexts words_{.and_text = " and ",
                         .or_text = " or ",
                         .not_text = "not ",
                         .differ_text = " <> ",
                         .same_text = " = ",
                         .zero = "false",
                         .one = "true",
                         .part = [](long number) { return "part_" + std::to_string(number); }};
  std::vector<StraightLine> lines_;  ///< of the working form
  DataTexts data_;
  std::vector<const Signal*> valued_;  ///< outputs and locals
};

void put_module(const TargetJob& job) {
  const TargetText text(job.module, language, job.rules);
  LustreText(text, text.module_name() + "_node", job.out).put_node();
}

}  // namespace

extern const Target lustre_target{.option = "lustre",
                                  .help = "Lustre node, .lus",
                                  .file = {.extension = ".lus"},
                                  .put = put_module,
                                  .comment = "-- ",
                                  .use = "Each step of the node is an instant."};

// A boolean automaton.

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

// The told operations of other classes.

void Module::LUSTRE_put(std::ostream& out, int) {
  put_target(lustre_target, this, out);
}

void Module::LUSTRE_put_equation(std::ostream& out, const std::string& array) {
  const TargetText text(this, language, TargetRules::told());
  LustreText(text, array, out).put_equations(out);
}

void Bddexpression::put_lustre(std::ostream& out, const std::string& array) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_equation_code(out, equation_texts(my_bdd_manager(), array), my_index_var(), bdd_exp);
}

void Bddexpression::put_lustre_arrayless(std::ostream& out, const std::string& array) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_equation_code(out, arrayless_texts(my_bdd_manager(), array), my_index_var(), bdd_exp);
}

void Bddexpression::put_lustre_compatibilite(std::ostream& out) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  out << "  " << my_bddname() << "= ";
  if (manager->Bdd_is_tautology(bdd_exp)) {
    out << (manager->Bdd_is_one_tautologic(bdd_exp) ? "true" : "false");
  } else {
    manager->Print_sop(" or ", " and ", "not ", "", out, bdd_exp, 0);
  }
  out << ";\n";
}

void Bddexpressionwood::Put_lustre(std::ostream& out, const std::string& array) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_lustre(out, array);
}

void Bddexpressionwood::Put_lustre_arrayless(std::ostream& out, const std::string& array) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_lustre_arrayless(out, array);
}

std::string zero_lustre(const std::string& type) {
  if (type == "bool") return "false";
  if (type == "int") return "0";
  if (type == "real") return "0.0";
  return "zero_" + type;
}

std::string DataExpr::LUSTRE_opname(int op) {
  if (op < 0 || op > Supe)
    throw IllegalOperationException("DataExpr::LUSTRE_opname", "invalid_operator");
  return told_operators[op];
}

void DataExpr::LUSTRE_put(std::ostream& out, Module* module) const {
  const auto value = [&](const Signal* signal) {
    const long index = signal->isOutput()
                           ? signal->getInitialBddStatusId(module, module->getBddWood())
                           : signal->getBddStatusId(module, module->getBddWood());
    return module->getBddWood()->Name_var_by_index(index) + "_val";
  };
  put_data(out, data_texts(TargetRules::told(), value), *this);
}

void DataTypeTable::LUSTRE_put(std::ostream& out) const {
  for (const auto& [name, index] : entries())
    out << "const " << name << ' ' << zero_lustre(name) << ";\n";
}

void ConstantDecl::LUSTRE_put(std::ostream& out) const {
  out << "const  " << name;
  if (value != nullptr) {
    out << " = ";
    value->LUSTRE_put(out, nullptr);
  }
  out << ";\n";
}

}  // namespace kiva
