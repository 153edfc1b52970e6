// SystemC as it was told: a pair of files for a model to wrap, the functions of C with the
// registers where the model sees them. The working form is in systemc_module.cc.

#include <ostream>

#include "tarn/b_automaton/b_automaton.h"
#include "tarn/b_automaton/writing.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/languages/c_family.h"
#include "tarn/targets/languages/step_family.h"
#include "tarn/targets/languages/systemc_module.h"

namespace kiva {

namespace {

// The told text takes each name as it is.
const TargetText::Language language{.shape = {.target = "SystemC"},
                                    .has_data = true,
                                    .names_module = false,
                                    .module_in_state = true,
                                    .own_names = [](const std::string& module) {
                                      return std::vector<std::string>{
                                          module + "_node", module + "_automaton",
                                          module + "_reset_automaton", module + "_H"};
                                    }};

constexpr ValuedOutputTexts output_texts{.open_if = "if (",
                                         .open = ")  {\n",
                                         .first = "",
                                         .other = "   else",
                                         .otherwise = "   else { ",
                                         .close = "}\n"};

void put_header_start(std::ostream& header, const std::string& m, const std::string& module) {
  header << "#ifndef " << m << "_H\n#define " << m << "_H\n"
         << "/* Following types should be defined in file \"" << module << "_typedecl.h\":\n";
  const char* separator = "";
  for (const std::string& type : data_types()) {
    header << separator << type;
    separator = ", ";
  }
  header << ";\n*/\n#include \"" << module << "_typedecl.h\"\n\n";
}

void put_told(const TargetJob& job) {
  std::ostream &body = job.out, &header = job.beside;
  const TargetText text(job.module, language, job.rules);
  const std::string& m = text.module_name();
  const CFamilyText c(text, m + "_node");

  put_header_start(header, m, job.module->getName());
  body << "#include \"" << job.beside_name << "\"\n";
  c.put_truth(body);
  body << '\n';
  c.put_data_declarations(body, header);
  if (!text.state().empty()) {
    header << "/* global state variables */\nint ";
    c.put_state_names(header);
    header << ";\n";
  }
  c.put_reset_function(body, header);
  c.put_reaction_head(body, header);
  c.put_locals(body);
  const long nodes = text.manager()->Bdd_total_size();
  if (nodes > 0) body << "  int " << c.array() << '[' << nodes << "];\n";
  if (const DataTable* bindings = text.module()->getDataTable()) {
    body << "//Data Handling\n//-------------\n";
    for (const auto& [bound, binding] : *bindings)
      body << text.name(binding->getSignal()) << " = " << c.expression(*binding) << ";\n";
  }
  body << "  /* outputs computing */\n";
  std::list<std::string> outputs;
  for (long index : text.output_rails()) outputs.push_back(text.name(index));
  text.wood()->Put_c(body, c.array(), outputs);
  c.put_valued_outputs(body, output_texts, true);
  body << "  /* refresh registers */\n";
  c.put_state_moves(body);
  body << "}\n";
  header << "#endif\n";
}

void put_module(const TargetJob& job) {
  if (job.rules.own)
    put_systemc_module(job);
  else
    put_told(job);
}

const Bench bench{
    .language = &systemc_step_language,
    .extension = ".cpp",
    .run = systemc_bench_run,
    .put = put_systemc_bench,
    .tool = "printf '#include <systemc>\\nSystemC SC_VERSION' | g++ -E -P -x c++ - | tail -n 1"};

}  // namespace

extern const Target systemc_target{
    .option = "systemc",
    .help = "SystemC, _sc.cpp and _sc.h",
    .file = {.extension = "_sc.cpp"},
    .put = put_module,
    .beside = "_sc.h",
    .comment = "// ",
    .use = "An instant at each rise of clk, in which the outputs are given.",
    .bench = &bench};

// A boolean automaton.

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

// The told operations of other classes.

void Module::SYSTEMC_put(std::ostream& body, std::ostream& header) {
  put_target(systemc_target, this, body, header);
}

void Bddexpression::put_systemc(std::ostream& out) {
  bddpp_manager* manager = my_bdd_manager();
  if (manager == nullptr || !bdd_var.initialised() || !bdd_exp.initialised()) return;
  out << "    " << manager->Name_var_by_index(my_index_var()) << " <= ";
  manager->Print_sop(" || ", " && ", "! ", "", out, bdd_exp, 1);
  out << ";\n";
}

void Bddexpressionwood::Put_systemc(std::ostream& out) {
  for (long index : earliest_sort()) exp_table[index]->put_systemc(out);
}

}  // namespace kiva
