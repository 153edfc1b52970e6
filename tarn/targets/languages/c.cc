// C as functions: one that computes a reaction, and one that puts the registers back to their first
// values. The state is the text's own, so a program holds a module once.

#include <algorithm>
#include <ostream>

#include "tarn/b_automaton/writing.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/languages/c_automaton.h"
#include "tarn/targets/languages/c_family.h"

namespace kiva {

namespace {

const TargetText::Language language{
    .shape = {.target = "C",
              .keywords = {"auto",         "break",   "case",     "char",      "const",
                           "continue",     "default", "do",       "double",    "else",
                           "enum",         "extern",  "float",    "for",       "goto",
                           "if",           "inline",  "int",      "long",      "register",
                           "restrict",     "return",  "short",    "signed",    "sizeof",
                           "static",       "struct",  "switch",   "typedef",   "union",
                           "unsigned",     "void",    "volatile", "while",     "bool",
                           "true",         "false",   "asm",      "typeof",    "main",
                           "alignas",      "alignof", "nullptr",  "constexpr", "static_assert",
                           "thread_local", "EOF",     "NULL",     "errno",     "stdin",
                           "stdout",       "stderr",  "linux",    "unix"}},
    .has_data = true,
    .names_module = false,
    .own_names = [](const std::string& module) {
      return std::vector<std::string>{module + "_node", module + "_automaton",
                                      module + "_reset_automaton", module + "_H"};
    }};

constexpr ValuedOutputTexts output_texts{.open_if = "    if (",
                                         .open = ")\n      {\n",
                                         .first = "      ",
                                         .other = "        else",
                                         .otherwise = "        else { ",
                                         .close = "      }\n"};

void put_module(const TargetJob& job) {
  std::ostream &body = job.out, &header = job.beside;
  const TargetText text(job.module, language, job.rules);
  const std::string& m = text.module_name();
  const CFamilyText c(text, m + "_node");

  header << "#ifndef " << m << "_H\n#define " << m << "_H\n#include \"C_data_user_"
         << job.module->getName() << ".h\"\n\n";
  body << "#include \"" << job.beside_name << "\"\n";
  c.put_truth(body);
  body << '\n';
  c.put_data_declarations(body, header);

  if (!text.state().empty()) {
    body << "/* global state variables */\n"
         << (c_family_rules(job.rules.own).static_state ? "static " : "") << "int ";
    c.put_state_names(body, job.rules.own);
    body << ";\n";
  }
  c.put_reset_function(body, header);
  c.put_reaction_head(body, header);
  c.put_locals(body);
  const long nodes = text.count_nodes([&](std::ostream& out) { c.put_equations(out); });
  if (nodes > 0) body << "  int " << c.array() << '[' << nodes << "];\n";
  body << "   /* outputs computing */\n";
  c.put_equations(body);
  c.put_valued_outputs(body, output_texts);
  body << "  /* refresh registers */\n";
  c.put_state_moves(body);
  body << "}\n";
  header << "#endif\n";
}

/// The equations; an output is a pointer where it is read, too.
void put_automaton_equations(std::ostream& out, const b_automaton& automaton,
                             const std::string& array, const std::string& prefix) {
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

const Bench bench{.language = &language,
                  .extension = ".c",
                  .run = c_bench_run,
                  .put = put_c_bench,
                  .tool = "gcc --version"};

}  // namespace

extern const Target c_functions_target{.option = "c-functions",
                                       .help = "C functions, .c and .h",
                                       .file = {.extension = ".c"},
                                       .put = put_module,
                                       .beside = ".h",
                                       .comment = "// ",
                                       .bench = &bench};

// A boolean automaton.

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
  put_c_state(body, *this, prefix);
  put_head("reset_automaton");
  put_c_initial_state(body, *this, prefix);
  body << "}\n\n";
  put_head("automaton");
  if (nb_locals() > 0) body << "  int " << joined(names_.locals, ", ", prefix) << ";\n\n";
  body << "  int " << array << '[' << manager_associe()->Bdd_total_size() << "];\n";
  if (nb_equ_def() > 0) {
    body << "  /* internal definitions */\n";
    put_automaton_equations(body, *this, array, prefix);
  }
  put_c_moves(body, *this, prefix);
  body << "}\n\n";
}

// The told operations of other classes.

void Module::C_put(std::ostream& body, std::ostream& header) {
  put_target(c_functions_target, this, body, header);
}

void Module::printC() {
  print_target(c_functions_target, this);
}

void Module::C_put_equation(std::ostream& out, const std::string& array,
                            const std::list<std::string>& outputs) {
  const TargetText text(this, language, TargetRules::told());
  CFamilyText(text, array, &outputs).put_equations(out);
}

void Bddexpression::put_c(std::ostream& out, const std::string& array,
                          const std::list<std::string>& outputs, const std::string& prefix,
                          const std::string& suffix) {
  if (my_bdd_manager() == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  put_equation_code(out, c_equation_texts(my_bdd_manager(), array, outputs, prefix, suffix),
                    my_index_var(), bdd_exp);
}

void Bddexpressionwood::Put_c(std::ostream& out, const std::string& array,
                              const std::list<std::string>& outputs) {
  Put_c(out, array, outputs, "", "");
}

void Bddexpressionwood::Put_c(std::ostream& out, const std::string& array,
                              const std::list<std::string>& outputs, const std::string& prefix,
                              const std::string& suffix) {
  man->Bdd_global_clear_marks();
  for (long index : earliest_sort()) exp_table[index]->put_c(out, array, outputs, prefix, suffix);
}

void DataExpr::C_put(std::ostream& out, Module* module) const {
  put_told_c_data(out, "DataExpr::C_opname", *this, module);
}

void DataTypeTable::C_put(std::ostream& out) const {
  for (const auto& [name, index] : entries())
    out << "extern const " << name << " zero_" << name << ";\n";
}

void DataMethodTable::C_put(std::ostream& out) const {
  for (const MethodDecl* method : method_list) method->C_put(out);
}

void MethodDecl::C_put(std::ostream& out) const {
  out << "extern " << return_type << ' ' << name << '(';
  const char* separator = "";
  for (const std::string& type : arg_type_list) {
    out << separator << type;
    separator = ", ";
  }
  out << ");\n";
}

void ConstantDecl::C_put(std::ostream& body, std::ostream& header) const {
  if (value == nullptr) {
    header << "extern const " << type << ' ' << name << ";\n";
    return;
  }
  body << "const " << type << ' ' << name << " = ";
  value->C_put(body, nullptr);
  body << ";\n";
}

}  // namespace kiva
