// A module as one VHDL entity with one architecture: registers and outputs change on the falling
// edge of the clock, inputs are sampled on the rising edge, equations are concurrent assignments.

#include <map>
#include <ostream>
#include <sstream>

#include "pert_exp/vhdl_code.h"
#include "tarn/formats/target_text.h"
#include "tarn/formats/targets.h"
#include "tarn/model/compilation.h"

namespace kiva {

namespace {

const TargetText::Target vhdl_target{
    // Reserved words of all revisions of the language.
    .shape = {.target = "VHDL",
              .keywords = {"abs", "access", "after", "alias", "all", "and", "architecture", "array",
                           "assert", "assume", "assume_guarantee", "attribute", "begin", "block",
                           "body", "buffer", "bus", "case", "component", "configuration",
                           "constant", "context", "cover", "default", "disconnect", "downto",
                           "else", "elsif", "end", "entity", "exit", "fairness", "file", "for",
                           "force", "function", "generate", "generic", "group", "guarded", "if",
                           "impure", "in", "inertial", "inout", "is", "label", "library", "linkage",
                           "literal", "loop", "map", "mod", "nand", "new", "next", "nor", "not",
                           "null", "of", "on", "open", "or", "others", "out", "package",
                           "parameter", "port", "postponed", "procedure", "process", "property",
                           "protected", "private", "pure", "range", "record", "register", "reject",
                           "release", "rem", "report", "restrict", "restrict_guarantee", "return",
                           "rol", "ror", "select", "sequence", "severity", "shared", "signal",
                           "sla", "sll", "sra", "srl", "strong", "subtype", "then",
                           "to", "transport", "type", "unaffected", "units", "until", "use",
                           "variable", "view", "vmode", "vprop", "vunit", "wait", "when",
                           "while", "with", "xnor", "xor",

                           // Types and packages that the text names.
                           "bit", "std_logic", "std_logic_1164", "ieee", "std", "work"},
              .case_matters = false,
              .may_begin_with_underscore = false,
              .may_end_with_underscore = false,
              .may_double_underscore = false},
    .own_names = [](const std::string& module) {
      return std::vector<std::string>{"reset", "clk", module + "_node", module + "_a",
                                      "array_" + module};
    }};

class VhdlText {
 public:
  VhdlText(Module* module, const TargetRules& rules)
      : text_(module, vhdl_target, rules), m_(text_.module_name()) {
    take_ports();
    take_code();
    for (const TargetEquation& equation : text_.equations())
      equations_.push_back({equation.index, equation.f});
  }

  void put(std::ostream& out, bool altera) {
    const std::string type = altera ? "std_logic" : "bit";
    out << "-- VHDL generation by ORVEL from " << m_ << " Zulang compiled code\n\n";
    if (altera) out << "LIBRARY ieee;\nUSE ieee.std_logic_1164.all;\n";
    put_entity(out, type);
    out << "architecture " << m_ << "_a of " << m_ << " is\n\n";
    put_declarations(out, type);
    out << "begin\n-- state and output computation\n";
    put_code(out);
    out << "end " << m_ << "_a;\n\n";
  }

 private:
  void take_ports() {
    texts_.inputs = text_.input_rails();
    texts_.outputs = text_.rtl_rails();
    for (const Signal* output : text_.outputs()) {
      const bool is_bound = text_.module()->getBinding(output->getInternalName()) != nullptr;
      if (is_bound && !text_.rules().complete) continue;
      texts_.outputs.push_back(text_.status(output));
      if (!text_.finalised()) texts_.outputs.push_back(text_.value(output));
    }
    if (!text_.rules().inner_outputs) return;
    for (const StateRail& rail : text_.state())
      if (text_.is_output(rail.index)) inner_name_[rail.index] = text_.state_name(rail.index);
    for (long index : texts_.outputs)
      if (text_.is_read(index) && !inner_name_.contains(index))
        inner_name_[index] = text_.own_name(text_.name(index) + "_inner");
    for (const auto& [index, name] : inner_name_) texts_.inner.insert(index);
  }

  void take_code() {
    texts_.code = vhdl_equation_texts(text_.manager(), m_ + "_node");
    if (text_.rules().brackets) {
      texts_.code.nodes.first_open = "(";
      texts_.code.nodes.first_close = ")";
    }
    texts_.port = [this](long index) { return text_.name(index); };
    texts_.code.read = [this](long index) { return read(index); };
    texts_.code.left = [this](long index) { return "      " + variable(index); };
    texts_.code = text_.numbered(texts_.code);
    if (text_.rules().sampled_inputs) sampled_.insert(texts_.inputs.begin(), texts_.inputs.end());
    for (const StateRail& rail : text_.state()) {
      const std::string name = variable(rail.index);
      texts_.resets.push_back(name + " <= " + (rail.initial ? "'1'" : "'0'"));
      texts_.updates.push_back(name + " <= " + read(rail.next));
    }
  }

  /// The signal that is assigned.
  std::string variable(long index) const {
    auto at = inner_name_.find(index);
    return at != inner_name_.end() ? at->second : text_.name(index);
  }

  std::string read(long index) const {
    if (!sampled_.contains(index)) return variable(index);
    const bdd_node* node = text_.manager()->Bdd_var_by_index(index).node();
    return m_ + "_node(" + std::to_string(text_.node_number(node)) + ")";
  }

  void put_code(std::ostream& out) const {
    put_vhdl_code(out, texts_, text_.manager(), equations_);
  }

  void put_entity(std::ostream& out, const std::string& type) const {
    out << "entity " << m_ << " is\n  port(";
    if (!text_.finalised() && !text_.rules().both_rails)
      out << " s_SET" << m_ << ", s_RESET" << m_ << ',';
    for (long index : texts_.inputs) out << texts_.port(index) << ", ";
    const bool closed = texts_.outputs.empty() && text_.rules().closed_ports;
    out << "reset, clk: in " << type << (closed ? "\n" : ";\n");
    if (texts_.outputs.empty()) {
      out << "     );\n";
    } else {
      const char* separator = "       ";
      for (long index : texts_.outputs) {
        out << separator << texts_.port(index);
        separator = ", ";
      }
      out << ": out " << type << ");\n";
    }
    out << "end " << m_ << ";\n\n";
  }

  void put_declarations(std::ostream& out, const std::string& type) const {
    std::map<long, std::string> variables = inner_name_;
    const std::unordered_set<long> outputs(texts_.outputs.begin(), texts_.outputs.end());
    const auto add = [&](long index) {
      if (!outputs.contains(index)) variables.emplace(index, text_.name(index));
    };
    for (long index : text_.locals()) add(index);
    for (const StateRail& rail : text_.state()) add(rail.index);
    // Told: an output that is no port.
    for (const TargetEquation& equation : text_.equations())
      if (text_.is_output(equation.index)) add(equation.index);

    const long nodes = text_.count_nodes([&](std::ostream& nowhere) { put_code(nowhere); });
    const bool used_nodes = text_.rules().used_nodes;
    if (nodes > 0)
      out << "TYPE array_" << m_ << " IS ARRAY (" << (used_nodes ? nodes - 1 : nodes)
          << " downto 0) OF " << type << " ;\n";
    for (const auto& [index, name] : variables) out << "signal " << name << " : " << type << ";\n";
    if (nodes > 0) out << "signal " << m_ << "_node : array_" << m_ << ";\n";
    out << '\n';
  }

  TargetText text_;
  std::string m_;
  vhdl_code_texts texts_;
  std::vector<vhdl_equation> equations_;
  std::map<long, std::string> inner_name_;
  std::unordered_set<long> sampled_;
};

}  // namespace

void Module::VHDL_put(std::ostream& out, int altera) {
  VhdlText(this, Compilation::target_rules()).put(out, altera != 0);
}

void Module::printVHDL() {
  const TargetRules& rules = Compilation::target_rules();
  const Target& vhdl = target("vhdl");
  std::ostringstream text;
  VHDL_put(text, Compilation::VHDLALTERAFlag() ? 1 : 0);
  write_print_file(vhdl.paths(*this, rules)[0], text.str(), vhdl.file, rules);
}

}  // namespace kiva
