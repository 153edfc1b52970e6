// C: a module as an object of the user's, with a structure for the inputs and one for the outputs.
// Its classic form is that of the functions.

#include <ostream>

#include "tarn/targets/benches/benches.h"
#include "tarn/targets/languages/step_family.h"

namespace kiva {

extern const Target c_functions_target;

namespace {

void put_header(const StepText& c, const std::string& m, const std::string& name,
                std::ostream& out) {
  out << "/*\n";
  c.put_comment(out, "   ", m + "_init once, then " + m + "_step for each instant.");
  out << "   All that the module keeps is in its object, which is yours; use as many as you like.\n"
         "*/\n#ifndef "
      << m << "_H\n#define " << m << "_H\n\n#include <stdbool.h>\n";
  if (c.wants_types()) out << "#include \"" << name << "_types.h\"\n";
  out << "\n#ifdef __cplusplus\nextern \"C\" {\n#endif\n\n";
  c.put_data_declarations(out, "");
  out << "typedef struct {\n";
  c.put_inputs(out);
  out << "} " << m << "_in;\n\ntypedef struct {\n";
  c.put_outputs(out);
  out << "} " << m << "_out;\n\ntypedef struct {\n";
  c.put_state(out);
  out << "} " << m << "_t;\n\nvoid " << m << "_init(" << m << "_t *m);\nvoid " << m << "_step(" << m
      << "_t *m, const " << m << "_in *in, " << m
      << "_out *out);\n\n#ifdef __cplusplus\n}\n#endif\n\n#endif\n";
}

void put_parts(const StepText& c, const std::string& m, const std::string& parameters,
               std::ostream& out) {
  out << "typedef struct {\n";
  c.put_wires(out);
  out << "} " << m << "_wires;\n\n";
  for (size_t part = 0; part < c.parts(); ++part) {
    out << "static void " << m << "_part_" << part << "(const " << parameters << ", " << m
        << "_wires *w)\n{\n  (void)m;\n  (void)in;\n  (void)out;\n";
    c.put_lines(out, part, "  ");
    out << "}\n\n";
  }
  // By a table: a compiler that put them all into one function would take minutes over it.
  out << "static void (*const " << m << "_parts[])(const " << parameters << ", " << m
      << "_wires *w) = {\n";
  for (size_t part = 0; part < c.parts(); ++part) out << "  " << m << "_part_" << part << ",\n";
  out << "};\n\n";
}

void put_module(const TargetJob& job) {
  if (!job.rules.own) return c_functions_target.put(job);
  const TargetText text(job.module, c_step_language, job.rules);
  const StepText c(text, {.state = "m->", .in = "in->", .out = "out->", .wires = "w->"});
  const std::string& m = text.module_name();
  put_header(c, m, job.module->getName(), job.beside);

  std::ostream& out = job.out;
  const std::string parameters = m + "_t *m, const " + m + "_in *in, " + m + "_out *out";
  out << "#include \"" << job.beside_name << "\"\n\n";
  c.put_constants(out);
  out << "void " << m << "_init(" << m << "_t *m)\n{\n";
  c.put_first_values(out, "  ");
  if (text.state().empty()) out << "  m->nothing = false;\n";
  out << "}\n\n";
  if (c.parts() > 1) put_parts(c, m, parameters, out);
  out << "void " << m << "_step(" << parameters << ")\n{\n";
  if (text.state().empty()) out << "  (void)m;\n";
  if (!c.reads_inputs()) out << "  (void)in;\n";
  if (c.parts() > 1) {
    out << "  " << m << "_wires wires;\n  " << m << "_wires *const w = &wires;\n";
    out << "  int part;\n  for (part = 0; part < " << c.parts() << "; ++part) {\n    " << m
        << "_parts[part](m, in, out, w);\n  }\n";
  } else {
    c.put_lines(out, 0, "  ");
  }
  if (text.output_rails().empty()) out << "  out->nothing = false;\n";
  c.put_end(out, "  ");
  out << "}\n";
}

const Bench bench{.language = &c_step_language,
                  .extension = ".c",
                  .run = c_step_bench_run,
                  .put = put_c_step_bench,
                  .tool = "gcc --version"};

}  // namespace

extern const Target c_target{
    .option = "c",
    .help = "C object, .c and .h",
    .file = {.extension = ".c"},
    .put = put_module,
    .beside = ".h",
    .comment = "// ",
    .use = "Init once, then step for each instant; the object that holds its state is yours.",
    .bench = &bench};

}  // namespace kiva
