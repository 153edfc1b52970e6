// JavaScript: a module as a class of an ECMAScript module, and its types for TypeScript beside it.
// There is no told form.

#include <ostream>
#include <set>

#include "base/text_stream.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/languages/script_family.h"

namespace kiva {

namespace {

const char* const operators[] = {" + ", " - ",   " * ",   " / ", "-",    " && ", " || ",
                                 "!",   " === ", " !== ", " < ", " <= ", " > ",  " >= "};

const TargetText::Language language{
    .shape = {.target = "JavaScript",
              .keywords = {"await",      "break",     "case",       "catch",     "class",
                           "const",      "continue",  "debugger",   "default",   "delete",
                           "do",         "else",      "enum",       "export",    "extends",
                           "false",      "finally",   "for",        "function",  "if",
                           "import",     "in",        "instanceof", "new",       "null",
                           "return",     "super",     "switch",     "this",      "throw",
                           "true",       "try",       "typeof",     "var",       "void",
                           "while",      "with",      "yield",      "let",       "static",
                           "implements", "interface", "package",    "private",   "protected",
                           "public",     "arguments", "eval",       "undefined", "NaN",
                           "Infinity"}},
    .has_data = true,
    .node_prefix = [](const std::string&) { return "part_"; },
    .own_names =
        [](const std::string& module) {
          return std::vector<std::string>{
              ScriptText::users(module), "step", "reset", "copy", "Object", "constructor"};
        }};

void put_class(const TargetText& text, const ScriptText& script, std::ostream& out) {
  const std::string& m = text.module_name();
  script.put_constants(out, "const ", "\n");
  out << "export class " << m << " {\n"
      << broken("  static INPUTS = [" + script.inputs("\"@\"") + "];\n")
      << broken("  static OUTPUTS = [" + script.outputs("\"@\"") + "];\n")
      << "\n  constructor() {\n    this.reset();\n  }\n\n"
      << "  // Back to the first state.\n  reset() {\n"
      << script.first_values("    ", ";", "// ")
      << "  }\n\n  // Another one in the same state.\n  copy() {\n    return Object.assign(new "
      << m << "(), this);\n  }\n\n  // Runs one instant, in which these inputs are present.\n"
      << broken("  step({" + script.inputs("@ = false", "@") + "} = {}) {\n");
  for (long index : text.input_rails())
    if (text.is_read(index))
      out << "    " << text.name(index) << " = !!" << text.name(index) << ";\n";
  script.put_lines(out, "    ", "const ", "// ");
  for (const StateRail& rail : text.state())
    if (text.is_output(rail.index))
      out << "    const " << text.name(rail.index) << " = " << script.read(rail.index) << ";\n";
  script.put_values(out, "    ");
  out << script.moves("    ", ";") << broken("    return {" + script.outputs("@", "@") + "};\n")
      << "  }\n}\n";
}

std::string type_text(const std::string& type) {
  if (type == "bool") return "boolean";
  if (type == "string") return "string";
  for (const char* number : {"byte", "short", "int", "long", "float", "double"})
    if (type == number) return "number";
  return type;
}

void put_types(const TargetText& text, std::ostream& out) {
  const std::string& m = text.module_name();
  std::set<std::string> users;
  for (const auto& signals : {text.inputs(), text.outputs()})
    for (const Signal* signal : signals)
      if (text.is_valued(signal) && type_text(text.type(signal)) == text.type(signal) &&
          text.type(signal) != "string")
        users.insert(text.type(signal));
  std::string types;
  for (const std::string& type : users) types += (types.empty() ? "" : ", ") + type;
  if (!types.empty())
    out << "import type { " << types << " } from \"./" << ScriptText::users(m) << ".mjs\";\n\n";
  out << "export interface Inputs {\n";
  for (long index : text.input_rails()) out << "  " << text.name(index) << "?: boolean;\n";
  for (const Signal* input : text.inputs())
    if (text.is_valued(input))
      out << "  " << text.value_name(input) << "?: " << type_text(text.type(input)) << ";\n";
  out << "}\n\nexport interface Outputs {\n";
  for (long index : text.output_rails()) out << "  " << text.name(index) << ": boolean;\n";
  for (const Signal* output : text.outputs())
    if (text.is_valued(output))
      out << "  " << text.value_name(output) << ": " << type_text(text.type(output))
          << " | undefined;\n";
  out << "}\n\nexport class " << m
      << " {\n  static INPUTS: string[];\n  static OUTPUTS: string[];\n"
      << "  /** Back to the first state. */\n  reset(): void;\n"
      << "  /** Another one in the same state. */\n  copy(): " << m
      << ";\n  /** Runs one instant, in which these inputs are present. */\n"
      << "  step(inputs?: Inputs): Outputs;\n}\n";
}

void put_module(const TargetJob& job) {
  const TargetText text(job.module, language, job.rules.without_told());
  const ScriptText script(text,
                          {.and_text = " && ",
                           .or_text = " || ",
                           .not_text = "!",
                           .differ_text = " !== ",
                           .same_text = " === ",
                           .zero = "false",
                           .one = "true"},
                          {operators, "!!(", ")", "if (", ")", "let ", "", ";"}, "this.");
  const std::string users = ScriptText::users(text.module_name());
  TextStream classes;
  put_class(text, script, classes);
  job.out << "// " << job.module->getName() << ": const m = new " << text.module_name()
          << "(), then m.step({...}) for each instant.\n\n";
  if (classes.str().find(users + '.') != std::string::npos)
    job.out << "import * as " << users << " from \"./" << users << ".mjs\";  // is yours\n\n";
  job.out << classes.str();
  put_types(text, job.beside);
}

const Bench bench{.language = &language,
                  .extension = ".mjs",
                  .run = javascript_bench_run,
                  .put = put_javascript_bench,
                  .tool =
                      "node --version | sed "
                      "'s|^|node |'"};

}  // namespace

extern const Target javascript_target{
    .option = "javascript",
    .help = "class, .mjs and .d.ts",
    .file = {.extension = ".mjs"},
    .put = put_module,
    .beside = ".d.ts",
    .beside_again = ".d.mts",  // where a compiler looks for the types of a .mjs
    .comment = "// ",
    .use = "An object, then step() for each instant. An object holds all that the module keeps.",
    .bench = &bench};

}  // namespace kiva
