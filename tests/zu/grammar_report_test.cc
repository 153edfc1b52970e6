// The numbered list of productions against the parser generator's own report. Others know the
// productions by number, so neither order nor number may change.

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "tests/support/temp_dir.h"

namespace kiva::test {

namespace {

/// Productions from number 1 on, as "left: right".
const char* const productions[] = {
    "$accept: entry end",
    "entry: data_part module_list",
    "entry: module_list",
    "data_part: DATA type_decl method_decl constant_decl ENDDATA",
    "type_decl:",
    "$@1:",
    "type_decl: TYPE $@1 type_name_list ;",
    "type_name_list: type_name",
    "type_name_list: type_name_list , type_name",
    "method_decl:",
    "$@2:",
    "method_decl: METHOD $@2 method_decl_list",
    "method_decl_list: method",
    "method_decl_list: method_decl_list method",
    "method: type_name method_name ( ident_list ) ;",
    "method: type_name method_name ( ) ;",
    "ident_list: ident",
    "ident_list: ident_list , ident",
    "constant_decl:",
    "$@3:",
    "constant_decl: CONSTANT $@3 ne_constant_decl_list",
    "ne_constant_decl_list: constant",
    "ne_constant_decl_list: ne_constant_decl_list constant",
    "constant: type_name constant_name ASSIGN constant_value ;",
    "constant: type_name constant_name ;",
    "constant: type_name basic_value ;",
    "constant_value:",
    "constant_value: data_exp_not_basic",
    "constant_value: basic_value",
    "basic_value: INT",
    "basic_value: REAL",
    "basic_value: STRING",
    "type_name: ident",
    "constant_name: ident",
    "module_list: program",
    "module_list: module_list program",
    "$@4:",
    "program: MODULE module_name : $@4 corps",
    "corps: module_interface module_body END",
    "corps: { module_interface module_body }",
    "module_interface: input_signal_list output_signal_list local_signal_list run_decl_list",
    "input_signal_list:",
    "input_signal_list: INPUT ne_input_signal_list ;",
    "ne_input_signal_list: input_signal",
    "ne_input_signal_list: ne_input_signal_list , input_signal",
    "input_signal: signal_name opt_type_decl",
    "output_signal_list:",
    "output_signal_list: OUTPUT ne_output_signal_list ;",
    "ne_output_signal_list: output_signal",
    "ne_output_signal_list: ne_output_signal_list , output_signal",
    "output_signal: signal_name opt_type_decl",
    "local_signal_list:",
    "local_signal_list: LOCAL ne_local_signal_list ;",
    "ne_local_signal_list: local_signal",
    "ne_local_signal_list: ne_local_signal_list , local_signal",
    "local_signal: signal_name opt_type_decl",
    "opt_type_decl:",
    "opt_type_decl: : ident",
    "run_decl_list:",
    "run_decl_list: RUN_DECL ne_run_decl_list ;",
    "ne_run_decl_list: run_decl",
    "ne_run_decl_list: ne_run_decl_list ; run_decl",
    "run_decl: STRING : module_name",
    "run_decl: STRING : file_name : module_name",
    "file_name: ident",
    "module_name: ident",
    "module_body: instruction",
    "module_body: automaton",
    "module_body: mealy_machine",
    "module_body:",
    "instruction: operator",
    "instruction: parallel",
    "instruction: sequence",
    "instruction: { instruction }",
    "operator: present",
    "operator: if_inst",
    "operator: loop",
    "operator: sustain_until",
    "operator: wait",
    "operator: emit",
    "operator: noemit",
    "operator: abort",
    "operator: strongabort",
    "operator: nothing",
    "operator: pause",
    "operator: halt",
    "operator: run",
    "operator: repeat",
    "parallel: instruction PARALLEL instruction",
    "sequence: instruction SEQUENCE instruction",
    "pause: PAUSE",
    "nothing: NOTHING",
    "halt: HALT",
    "present: PRESENT quadrival_exp instruction ELSE instruction",
    "present: PRESENT quadrival_exp instruction",
    "if_inst: IF data_exp instruction ELSE instruction",
    "if_inst: IF data_exp instruction",
    "loop: LOOP { instruction }",
    "repeat: REPEAT INT { instruction }",
    "wait: WAIT quadrival_exp",
    "wait: WAIT INT quadrival_exp",
    "abort: WEAK ABORT { instruction } WHEN quadrival_exp",
    "strongabort: STRONG ABORT { instruction } WHEN quadrival_exp",
    "emit: EMIT signal_name",
    "noemit: NOEMIT signal_name",
    "emit: EMIT signal_name ( data_exp )",
    "sustain_until: SUSTAIN signal_name UNTIL quadrival_exp",
    "sustain_until: SUSTAIN signal_name ( data_exp ) UNTIL quadrival_exp",
    "run: RUN ID opt_renaming",
    "opt_renaming:",
    "opt_renaming: [ renaming_list ]",
    "renaming_list: renaming",
    "renaming_list: renaming_list , renaming",
    "renaming: signal_name BACKSLASH signal_name",
    "$@5:",
    "automaton: AUTOMATON $@5 aut_geometry state_list transition_def",
    "aut_geometry: pair_geometry",
    "pair_geometry:",
    "pair_geometry: GEOMETRY real_pair",
    "real_pair: EQ_INF REAL , REAL EQ_SUP",
    "real_pair: EQ_INF REAL , INT EQ_SUP",
    "real_pair: EQ_INF INT , REAL EQ_SUP",
    "real_pair: EQ_INF INT , INT EQ_SUP",
    "state_list: state",
    "state_list: state_list state",
    "state: STATE ID opt_final opt_run action opt_geometry ;",
    "opt_geometry:",
    "opt_geometry: GEOMETRY real_pair REAL",
    "opt_run:",
    "opt_run: run",
    "transition_def: TRANSITION transition_list",
    "transition_list: transition",
    "transition_list: transition_list transition",
    "transition: state_name trigger action tpe state_name trans_geometry ;",
    "state_name: INIT",
    "state_name: ID",
    "opt_final:",
    "opt_final: FINAL",
    "tpe:",
    "tpe: ARROW",
    "tpe: STRONGARROW",
    "tpe: WEAKARROW",
    "tpe: NORMALTERMARROW",
    "trigger:",
    "trigger: [ ]",
    "trigger: INT [ ]",
    "trigger: OTHER [ ]",
    "trigger: [ quadrival_exp ]",
    "trigger: INT [ quadrival_exp ]",
    "trigger: OTHER [ quadrival_exp ]",
    "trigger: [ VALUE data_exp ]",
    "trigger: INT [ VALUE data_exp ]",
    "trigger: OTHER [ VALUE data_exp ]",
    "action:",
    "action: / valued_signal_list",
    "quadrival_exp: quadrival_exp OR quadrival_term",
    "quadrival_exp: quadrival_term",
    "quadrival_term: quadrival_term AND quadrival_factor",
    "quadrival_term: quadrival_factor",
    "quadrival_factor: ( quadrival_exp )",
    "quadrival_factor: NOT quadrival_factor",
    "quadrival_factor: ABS quadrival_factor",
    "quadrival_factor: quadrival_signal",
    "quadrival_factor: ~",
    "quadrival_factor: FF",
    "quadrival_factor: TT",
    "quadrival_signal: signal_name",
    "trans_geometry: pair_geometry",
    "valued_signal_list: signal_name",
    "valued_signal_list: signal_name ( data_exp )",
    "valued_signal_list: valued_signal_list , signal_name",
    "valued_signal_list: valued_signal_list , signal_name ( data_exp )",
    "signal_name: ident",
    "mealy_machine: MEALY_MACHINE register_decl_list equation_decl_list",
    "register_decl_list:",
    "register_decl_list: REG_DECL ne_register_list ;",
    "ne_register_list: reg",
    "ne_register_list: ne_register_list , reg",
    "reg: ident : INT : ident",
    "equation_decl_list: equation ;",
    "equation_decl_list: equation_decl_list equation ;",
    "equation: variable = right_part",
    "equation: variable ( data_exp ) = right_part",
    "variable: ident",
    "right_part: ident",
    "right_part: right_part AND right_part",
    "right_part: right_part OR right_part",
    "right_part: right_part NOR right_part",
    "right_part: right_part XOR right_part",
    "right_part: right_part NAND right_part",
    "right_part: NOT right_part",
    "right_part: ABS right_part",
    "right_part: INT",
    "right_part: ( right_part )",
    "ident: ID",
    "data_exp: data_exp_not_basic",
    "data_exp: basic_value",
    "data_exp: ( data_exp )",
    "data_exp_not_basic: const_expr",
    "data_exp_not_basic: method_call",
    "data_exp_not_basic: binary_func_call",
    "data_exp_not_basic: unary_func_call",
    "data_exp_not_basic: signal_value",
    "const_expr: ident",
    "method_call: method_name ( data_exp_list )",
    "method_call: method_name ( )",
    "method_name: ident",
    "method_name: method_name . ident",
    "data_exp_list: data_exp",
    "data_exp_list: data_exp_list , data_exp",
    "binary_func_call: data_exp + data_exp",
    "binary_func_call: data_exp - data_exp",
    "binary_func_call: data_exp * data_exp",
    "binary_func_call: data_exp / data_exp",
    "binary_func_call: data_exp AND data_exp",
    "binary_func_call: data_exp OR data_exp",
    "binary_func_call: data_exp EQ_EG data_exp",
    "binary_func_call: data_exp EQ_NEG data_exp",
    "binary_func_call: data_exp EQ_INF data_exp",
    "binary_func_call: data_exp EQ_INFE data_exp",
    "binary_func_call: data_exp EQ_SUP data_exp",
    "binary_func_call: data_exp EQ_SUPE data_exp",
    "unary_func_call: - data_exp",
    "unary_func_call: NOT data_exp",
    "signal_value: # signal_name",
};

/// The report's rules, where the accept rule has the number 0, in the form of the table.
std::vector<std::string> reported(const std::string& report) {
  std::vector<std::string> rules;
  std::istringstream lines(report.substr(report.find("\nGrammar\n")));
  std::string left;
  for (std::string line; std::getline(lines, line) && line.find("Terminals") != 0;) {
    std::istringstream words(line);
    size_t number = 0;
    std::string word;
    if (!(words >> number >> word)) continue;
    if (word != "|") left = word;
    std::string rule = left;
    while (words >> word) {
      if (word == "ε" || word == "%empty") continue;
      if (word == "\"end") {  // the name of the end of input has blanks
        rule += " end";
        break;
      }
      if (word.front() == '\'') word = word.substr(1, word.size() - 2);
      rule += " " + word;
    }
    EXPECT_EQ(number, rules.size());
    rules.push_back(rule);
  }
  return rules;
}

TEST(ZuGrammar, ProductionsHaveTheirNumbers) {
  const std::vector<std::string> rules = reported(read_text(KIVA_PARSE_ZU_REPORT));
  ASSERT_GE(rules.size(), std::size(productions));
  // What comes later stands behind them.
  for (size_t i = 0; i < std::size(productions); ++i) EXPECT_EQ(rules[i], productions[i]) << i + 1;
}

// Whatever else is ambiguous is decided by levels of precedence.
TEST(ZuGrammar, OneConflictBehindTheHeadOfAModule) {
  const std::string report = read_text(KIVA_PARSE_ZU_REPORT);
  const std::string conflicts = report.substr(0, report.find("Grammar\n"));
  EXPECT_NE(conflicts.find("conflicts: 1 shift/reduce\n"), std::string::npos);
  EXPECT_EQ(conflicts.find("conflicts:"), conflicts.rfind("conflicts:"));
}

}  // namespace

}  // namespace kiva::test
