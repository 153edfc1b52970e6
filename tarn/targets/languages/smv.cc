// SMV: a module for model checking. Registers are variables, all else is defined. A main module
// runs it with free inputs.

#include <ostream>

#include "pert_exp/equation_code.h"
#include "tarn/targets/frame/straight_code.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

const TargetText::Language language{
    .shape = {.target = "SMV",
              .keywords = {"A", "ABF", "ABG", "AF", "AG", "ASSIGN", "AX", "BU", "COMPASSION",
                           "COMPID", "COMPUTE", "COMPWFF", "CONSTANTS", "CONSTARRAY", "CONSTRAINT",
                           "CTLSPEC", "CTLWFF", "DEFINE", "E", "EBF", "EBG", "EF", "EG", "EX", "F",
                           "FAIRNESS", "FALSE", "FROZENVAR", "FUN", "G", "H", "IN", "INIT", "INVAR",
                           "INVARSPEC", "ISA", "ITYPE", "IVAR", "Integer", "JUSTICE", "LTLSPEC",
                           "LTLWFF", "MAX", "MDEFINE", "MIN", "MIRROR", "MODULE", "NAME", "NEXTWFF",
                           "O", "PARSYNTH", "PRED", "PREDICATES", "PSLSPEC", "READ", "Real", "S",
                           "SAT", "SIMPWFF", "SPEC", "T", "TRANS", "TRUE", "U", "V", "VALID", "VAR",
                           "WRITE", "Word", "X", "Y", "Z", "abs", "array", "at", "bool", "boolean",
                           "case", "cos", "count", "esac", "exp", "extend", "floor", "in", "init",
                           "integer", "max", "min", "mod", "next", "noncount", "of", "pi", "pow2",
                           "process", "real", "resize", "self", "signed", "sin", "sizeof",
                           "swconst", "tan", "time", "toint", "typeof", "union", "unsigned",
                           "uwconst", "word", "word1", "xnor", "xor",
                           // The text's own module, and a name whose instance would be "mod".
                           "main", "od"},
              .more_characters = "$#"},
    .told_wires = true,
    .node_prefix = [](const std::string&) { return std::string("part_"); },
    .own_names = [](const std::string& module) { return std::vector<std::string>{"m" + module}; }};

/// A module's parameters are its inputs, and its outputs definitions that are read from outside;
/// else outputs are parameters too, which the module defines a second time.
bool input_parameters(const TargetRules& rules) {
  return rules.own;
}

node_code_texts node_texts(const std::string& table) {
  node_code_texts texts;
  texts.table = table;
  texts.entry_open = "_";
  texts.entry_close = "";
  texts.assign = ":= ";
  texts.or_text = " | ";
  texts.and_text = " & ";
  texts.not_open = "!";
  texts.constant = "TRUE";
  return texts;
}

equation_code_texts equation_texts(bddpp_manager* manager) {
  equation_code_texts texts;
  texts.nodes = node_texts("node");
  texts.read = [=](long index) { return manager->Name_var_by_index(index); };
  texts.left = [=](long index) { return "   " + manager->Name_var_by_index(index); };
  texts.assign = " := ";
  return texts;
}

class SmvText {
 public:
  SmvText(const TargetText& text, std::ostream& out) : text_(text), out_(out) {
    const std::vector<long> inputs = text.input_rails(), outputs = text.output_rails();
    if (input_parameters(text.rules())) {
      parameters_ = inputs;
      return;
    }
    const auto input = inputs.begin() + static_cast<long>(text.set_reset_rails().size());
    const auto output = outputs.begin() + static_cast<long>(text.rtl_rails().size());
    parameters_ = text.set_reset_rails();
    parameters_.insert(parameters_.end(), outputs.begin(), output);
    parameters_.insert(parameters_.end(), input, inputs.end());
    parameters_.insert(parameters_.end(), output, outputs.end());
  }

  void put_module() {
    out_ << "MODULE " << text_.module_name() << '(';
    put_parameters();
    out_ << ")\n";
    const bool state = !text_.state().empty();
    put_heading("VAR", state);
    for (const StateRail& rail : text_.state()) {
      text_.put_note(out_, "-- ", rail.index);
      out_ << text_.name(rail.index) << ": boolean;\n";
    }
    put_heading("ASSIGN", state);
    for (const StateRail& rail : text_.state())
      out_ << "init(" << text_.name(rail.index) << ") := " << (rail.initial ? " TRUE;" : "FALSE;")
           << '\n';
    put_heading("DEFINE", !text_.equations().empty());
    text_.rules().own ? put_definitions() : put_told_definitions();
    put_heading("ASSIGN", state);
    for (const StateRail& rail : text_.state())
      out_ << "next(" << text_.name(rail.index) << ") := " << text_.name(rail.next) << ";\n";
  }

  void put_main() {
    const std::string& m = text_.module_name();
    out_ << "\nMODULE  main\nVAR\n";
    for (long index : parameters_) out_ << text_.name(index) << ": boolean;\n";
    out_ << 'm' << m << ": " << m << '(';
    put_parameters();
    out_ << ");\n";
    const std::vector<long> inputs = text_.input_rails();
    put_heading("ASSIGN", !inputs.empty());
    for (long index : inputs) out_ << text_.name(index) << ":= {FALSE, TRUE};\n";
  }

 private:
  void put_heading(const char* heading, bool heads_something) {
    if (heads_something || !text_.rules().proper_lists) out_ << heading << '\n';
  }

  void put_parameters() {
    const char* separator = "";
    for (long index : parameters_) {
      out_ << separator << text_.name(index);
      separator = ", ";
    }
  }

  void put_definitions() {
    ExpressionTexts texts{.and_text = " & ",
                          .or_text = " | ",
                          .not_text = "!",
                          .differ_text = " != ",
                          .same_text = " = ",
                          .zero = "FALSE",
                          .one = "TRUE"};
    texts.read = [this](long index) { return text_.name(index); };
    texts.part = [](long number) { return "part_" + std::to_string(number); };
    for (const StraightLine& line : straight_code(text_, texts)) {
      text_.put_note(out_, "   -- ", line.index);
      out_ << broken("   " + left_of(line, texts) + " := " + line.right + ";\n");
    }
  }

  void put_told_definitions() {
    equation_code_texts texts = equation_texts(text_.manager());
    texts = text_.numbered(texts);
    text_.manager()->Bdd_global_clear_marks();
    for (const TargetEquation& equation : text_.equations())
      put_equation_code(out_, texts, equation.index, equation.f);
  }

  const TargetText& text_;
  std::ostream& out_;
  std::vector<long> parameters_;
};

void put_module(const TargetJob& job) {
  const TargetText text(job.module, language, job.rules);
  SmvText smv(text, job.out);
  smv.put_module();
  smv.put_main();
}

}  // namespace

extern const Target smv_target{
    .option = "smv",
    .help = "model checking, .smv",
    .file = {.extension = ".smv", .in_folder = true, .tells_existing = true, .tells_failure = true},
    .put = put_module,
    .finalises = true,
    .comment = "-- ",
    .use = "Each step is an instant; outputs are read from outside as mMODULE.OUTPUT."};

// The told operations of other classes.

void Module::NUSMV_put(std::ostream& out, int, int) {
  put_target(smv_target, this, out);
}

void Module::printSMV() {
  print_target(smv_target, this);
}

void bddpp_manager::Print_node_for_eval_NUSMV(const std::string& table, std::ostream& out,
                                              bdd_node* node) {
  Print_node_code(node_texts(table), out, node);
}

}  // namespace kiva
