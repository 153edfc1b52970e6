// Python: a module as a class, without packages. There is no told form.

#include <ostream>

#include "base/text_stream.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/languages/script_family.h"

namespace kiva {

namespace {

const char* const operators[] = {" + ",  " - ",  " * ",  " / ", "-",    " and ", " or ",
                                 "not ", " == ", " != ", " < ", " <= ", " > ",   " >= "};

const TargetText::Language language{
    .shape = {.target = "Python",
              .keywords = {"False",  "None",   "True",    "and",      "as",       "assert", "async",
                           "await",  "break",  "class",   "continue", "def",      "del",    "elif",
                           "else",   "except", "finally", "for",      "from",     "global", "if",
                           "import", "in",     "is",      "lambda",   "nonlocal", "not",    "or",
                           "pass",   "raise",  "return",  "try",      "while",    "with",   "yield",
                           "match",  "case",   "type",    "print"},
              .may_begin_with_underscore = false},
    .has_data = true,
    .node_prefix = [](const std::string&) { return "part_"; },
    .own_names =
        [](const std::string& module) {
          return std::vector<std::string>{ScriptText::users(module),
                                          "self",
                                          "bool",
                                          "isinstance",
                                          "NamedTuple",
                                          "Outputs",
                                          "other",
                                          "object",
                                          "all",
                                          "getattr"};
        }};

void put_class(const TargetText& text, const ScriptText& script, std::ostream& out) {
  const std::string& m = text.module_name();
  script.put_constants(out, "", "\n\n");
  out << "class Outputs(NamedTuple):\n    \"\"\"What is present in an instant.\"\"\"\n\n";
  for (long index : text.output_rails()) out << "    " << text.name(index) << ": bool\n";
  for (const Signal* output : text.outputs())
    if (text.is_valued(output)) out << "    " << text.value_name(output) << ": object = None\n";
  out << "\n\nclass " << m << ":\n    \"\"\"All that the module keeps from one instant to the next."
      << "\"\"\"\n\n"
      << broken("    INPUTS = [" + script.inputs("\"@\"") + "]\n")
      << broken("    OUTPUTS = [" + script.outputs("\"@\"") + "]\n")
      << "\n    def __init__(self):\n        self.reset()\n\n"
      << "    def __eq__(self, other):\n        return isinstance(other, " << m
      << ") and self.__dict__ == other.__dict__\n\n    def reset(self):\n"
      << "        \"\"\"Back to the first state.\"\"\"\n"
      << script.first_values("        ", "", "# ") << '\n'
      << broken("    def step(self" + std::string(text.input_rails().empty() ? "" : ", *, ") +
                script.inputs("@=False", "@=None") + "):\n")
      << "        \"\"\"Runs one instant, in which these inputs are present.\"\"\"\n";
  for (long index : text.input_rails())
    if (text.is_read(index))
      out << "        " << text.name(index) << " = bool(" << text.name(index) << ")\n";
  script.put_lines(out, "        ", "", "# ");
  for (const StateRail& rail : text.state())
    if (text.is_output(rail.index))
      out << "        " << text.name(rail.index) << " = " << script.read(rail.index) << '\n';
  script.put_values(out, "        ");
  out << script.moves("        ", "")
      << broken("        return Outputs(" + script.outputs("@", "@") + ")\n");
}

void put_module(const TargetJob& job) {
  const TargetText text(job.module, language, job.rules.without_told());
  const ScriptText script(text,
                          {.and_text = " and ",
                           .or_text = " or ",
                           .not_text = "not ",
                           .differ_text = " is not ",
                           .same_text = " is ",
                           .zero = "False",
                           .one = "True"},
                          {operators, "bool(", ")", "if ", ":", "", " = None", ""}, "self.");
  const std::string users = ScriptText::users(text.module_name());
  TextStream classes;
  put_class(text, script, classes);
  job.out << "\"\"\"" << job.module->getName() << ": m = " << text.module_name()
          << "(), then m.step(...) for each instant.\"\"\"\n\nfrom typing import NamedTuple\n";
  if (classes.str().find(users + '.') != std::string::npos)
    job.out << "\nimport " << users << "  # is yours\n";
  job.out << "\n\n" << classes.str();
}

const Bench bench{.language = &language,
                  .extension = ".py",
                  .run = python_bench_run,
                  .put = put_python_bench,
                  .tool = "python3 --version"};

}  // namespace

extern const Target python_target{
    .option = "python",
    .help = "Python class, .py",
    .file = {.extension = ".py"},
    .put = put_module,
    .comment = "# ",
    .use = "An object, then step() for each instant. An object holds all that the module keeps.",
    .bench = &bench};

}  // namespace kiva
