// JavaScript: a module as a class of an ECMAScript module, and its types for TypeScript beside it.
// There is no told form.

#include <ostream>

#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/languages/script_family.h"

namespace kiva {

namespace {

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
    .node_prefix = [](const std::string&) { return "part_"; },
    .own_names =
        [](const std::string&) {
          return std::vector<std::string>{"step", "reset", "copy", "Object", "constructor"};
        }};

void put_class(const TargetText& text, const ScriptText& script, std::ostream& out) {
  const std::string& m = text.module_name();
  out << "// " << text.module()->getName() << ": const m = new " << m
      << "(), then m.step({...}) for each instant.\n\nexport class " << m << " {\n"
      << broken("  static INPUTS = [" + script.inputs("\"@\"") + "];\n")
      << broken("  static OUTPUTS = [" + script.outputs("\"@\"") + "];\n")
      << "\n  constructor() {\n    this.reset();\n  }\n\n"
      << "  // Back to the first state.\n  reset() {\n"
      << script.first_values("    ", ";", "// ")
      << "  }\n\n  // Another one in the same state.\n  copy() {\n    return Object.assign(new "
      << m << "(), this);\n  }\n\n  // Runs one instant, in which these inputs are present.\n"
      << broken("  step({" + script.inputs("@ = false") + "} = {}) {\n");
  for (long index : text.input_rails())
    if (text.is_read(index))
      out << "    " << text.name(index) << " = !!" << text.name(index) << ";\n";
  for (const StraightLine& line : script.lines()) {
    text.put_note(out, "    // ", line.index);
    out << broken("    const " + script.left(line) + " = " + line.right + ";\n");
  }
  for (const StateRail& rail : text.state())
    if (text.is_output(rail.index))
      out << "    const " << text.name(rail.index) << " = " << script.read(rail.index) << ";\n";
  out << script.moves("    ", ";") << broken("    return {" + script.outputs("@") + "};\n")
      << "  }\n}\n";
}

void put_types(const TargetText& text, std::ostream& out) {
  const std::string& m = text.module_name();
  out << "export interface Inputs {\n";
  for (long index : text.input_rails()) out << "  " << text.name(index) << "?: boolean;\n";
  out << "}\n\nexport interface Outputs {\n";
  for (long index : text.output_rails()) out << "  " << text.name(index) << ": boolean;\n";
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
                          "this.");
  put_class(text, script, job.out);
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
