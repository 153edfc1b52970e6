// A module as one C function, which computes a reaction, and one that puts the registers back to
// their first values.

#include <filesystem>
#include <ostream>
#include <sstream>

#include "tarn/formats/c_family.h"
#include "tarn/formats/targets.h"
#include "tarn/model/compilation.h"

namespace kiva {

namespace {

const TargetText::Target c_target{
    .shape = {.target = "C",
              .keywords = {"auto",        "break",   "case",     "char",      "const",
                           "continue",    "default", "do",       "double",    "else",
                           "enum",        "extern",  "float",    "for",       "goto",
                           "if",          "inline",  "int",      "long",      "register",
                           "restrict",    "return",  "short",    "signed",    "sizeof",
                           "static",      "struct",  "switch",   "typedef",   "union",
                           "unsigned",    "void",    "volatile", "while",     "bool",
                           "true",        "false",   "asm",      "typeof",    "main",
                           "alignas",     "alignof", "nullptr",  "constexpr", "static_assert",
                           "thread_local"}},
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

void put_c(Module* module, const TargetRules& rules, const std::string& header_name,
           std::ostream& body, std::ostream& header) {
  const TargetText text(module, c_target, rules);
  const std::string m = text.module_name();
  const CFamilyText c(text, m + "_node");

  header << "#ifndef " << m << "_H\n#define " << m << "_H\n#include \"C_data_user_"
         << module->getName() << ".h\"\n\n";
  body << "#include \"" << header_name << "\"\n";
  c.put_truth(body);
  body << '\n';
  c.put_data_declarations(body, header);

  if (!text.state().empty()) {
    body << "/* global state variables */\n" << (rules.static_state ? "static " : "") << "int ";
    c.put_state_names(body);
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

}  // namespace

void Module::C_put(std::ostream& body, std::ostream& header) {
  put_c(this, Compilation::target_rules(), name + ".h", body, header);
}

void Module::C_put_equation(std::ostream& out, const std::string& array,
                            const std::list<std::string>& outputs) {
  const TargetText text(this, c_target, TargetRules::told());
  CFamilyText(text, array, &outputs).put_equations(out);
}

void Module::printC() {
  const TargetRules& rules = Compilation::target_rules();
  const Target& c = target("c");
  const std::vector<std::string> paths = c.paths(*this, rules);
  const std::string header_file = std::filesystem::path(paths[1]).filename().string();
  std::ostringstream body, header;
  put_c(this, rules, rules.real_header ? header_file : name + ".h", body, header);
  write_print_file(paths[0], body.str(), c.file, rules);
  write_print_file(paths[1], header.str(), c.file, rules);
}

}  // namespace kiva
