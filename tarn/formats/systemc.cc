// A module as a pair of files for a model of SystemC to wrap: the functions of C, with the
// registers where the model sees them.

#include <filesystem>
#include <ostream>
#include <sstream>

#include "tarn/formats/c_family.h"
#include "tarn/formats/targets.h"
#include "tarn/model/compilation.h"

namespace kiva {

namespace {

const TargetText::Target systemc_target{
    .shape = {.target = "SystemC",
              .keywords = {"alignas", "alignof", "and", "and_eq", "asm", "auto", "bitand", "bitor",
                           "bool", "break", "case", "catch", "char", "char8_t", "char16_t",
                           "char32_t", "class", "compl", "concept", "const", "consteval",
                           "constexpr", "constinit", "const_cast", "continue", "co_await",
                           "co_return", "co_yield", "decltype", "default", "delete", "do", "double",
                           "dynamic_cast", "else", "enum", "explicit", "export", "extern", "false",
                           "float", "for", "friend", "goto", "if", "inline", "int", "long",
                           "mutable", "namespace", "new", "noexcept", "not", "not_eq", "nullptr",
                           "operator", "or", "or_eq", "private", "protected", "public", "register",
                           "reinterpret_cast", "requires", "return", "short", "signed", "sizeof",
                           "static", "static_assert", "static_cast", "struct", "switch", "template",
                           "this", "thread_local", "throw", "true", "try", "typedef", "typeid",
                           "typename", "typeof", "union", "unsigned", "using", "virtual", "void",
                           "volatile", "wchar_t", "while", "xor", "xor_eq",
                           // Macros of the library and its headers.
                           "linux", "unix", "errno", "assert", "NULL", "EOF"}},
    .has_data = true,
    .names_module = false,
    .module_in_state = true,
    .own_names = [](const std::string& module) {
      return std::vector<std::string>{module + "_node", module + "_automaton",
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

void put_data_section(std::ostream& body, const TargetText& text, const CFamilyText& c) {
  const DataTable* bindings = text.module()->getDataTable();
  const bool tests_only = text.rules().data_order;
  if (bindings == nullptr || (tests_only && c.early_tests().empty())) return;
  body << "//Data Handling\n//-------------\n";
  if (tests_only) {
    for (const TargetEquation* test : c.early_tests()) c.put_test(body, *test);
  } else {
    for (const auto& [bound, binding] : *bindings)
      body << text.name(binding->getSignal()) << " = " << c.expression(*binding) << ";\n";
  }
}

void put_equations(std::ostream& body, const TargetText& text, const CFamilyText& c) {
  if (text.rules().data_order) {
    c.put_equations(body);
    return;
  }
  std::list<std::string> outputs;
  for (long index : text.output_rails()) outputs.push_back(text.name(index));
  text.wood()->Put_c(body, c.array(), outputs);
}

void put_systemc(Module* module, const TargetRules& rules, const std::string& header_name,
                 std::ostream& body, std::ostream& header) {
  const TargetText text(module, systemc_target, rules);
  const std::string m = text.module_name();
  CFamilyText c(text, m + "_node");
  if (rules.data_order) c.take_early_tests();

  put_header_start(header, m, module->getName());
  body << "#include \"" << header_name << "\"\n";
  c.put_truth(body);
  body << '\n';
  c.put_data_declarations(body, header);

  if (!text.state().empty()) {
    header << "/* global state variables */\n" << (rules.extern_state ? "extern " : "") << "int ";
    c.put_state_names(header);
    header << ";\n";
    if (rules.extern_state) {
      body << "int ";
      c.put_state_names(body);
      body << ";\n";
    }
  }
  c.put_reset_function(body, header);
  c.put_reaction_head(body, header);
  c.put_locals(body);
  const long nodes = text.count_nodes([&](std::ostream& out) { put_equations(out, text, c); });
  if (nodes > 0) body << "  int " << c.array() << '[' << nodes << "];\n";
  put_data_section(body, text, c);
  body << "  /* outputs computing */\n";
  put_equations(body, text, c);
  c.put_valued_outputs(body, output_texts, !rules.status_values);
  body << "  /* refresh registers */\n";
  c.put_state_moves(body);
  body << "}\n";
  header << "#endif\n";
}

}  // namespace

void Module::SYSTEMC_put(std::ostream& body, std::ostream& header) {
  put_systemc(this, Compilation::target_rules(), name + "_sc.h", body, header);
}

void print_systemc(Module* module) {
  const TargetRules& rules = Compilation::target_rules();
  const Target& systemc = target("systemc");
  const std::vector<std::string> paths = systemc.paths(*module, rules);
  const std::string header_file = std::filesystem::path(paths[1]).filename().string();
  std::ostringstream body, header;
  put_systemc(module, rules, rules.real_header ? header_file : module->getName() + "_sc.h", body,
              header);
  write_print_file(paths[0], body.str(), systemc.file, rules);
  write_print_file(paths[1], header.str(), systemc.file, rules);
}

}  // namespace kiva
