// C++: a module as a class in a header of its own. There is no told form.

#include <ostream>

#include "tarn/targets/benches/benches.h"
#include "tarn/targets/languages/step_family.h"

namespace kiva {

namespace {

void put_step(const StepText& c, const std::string& word, std::ostream& out) {
  out << "  " << word << "out step(" << (c.reads_inputs() ? "" : "[[maybe_unused]] ")
      << "const in& given) {\n    out shown;\n";
  if (c.parts() > 1) {
    out << "    wires w;\n";
    for (size_t part = 0; part < c.parts(); ++part)
      out << "    part_" << part << "(given, shown, w);\n";
  } else {
    c.put_lines(out, 0, "    ");
  }
  c.put_end(out, "    ");
  out << "    return shown;\n  }\n";
}

void put_parts(const StepText& c, std::ostream& out) {
  out << "  struct wires {\n";
  c.put_wires(out);
  out << "  };\n";
  for (size_t part = 0; part < c.parts(); ++part) {
    out << "  [[gnu::noinline]] constexpr void part_" << part
        << "([[maybe_unused]] const in& given, [[maybe_unused]] out& shown, wires& w) const {\n";
    c.put_lines(out, part, "    ");
    out << "  }\n";
  }
}

void put_module(const TargetJob& job) {
  std::ostream& out = job.out;
  const TargetText text(job.module, cpp_step_language, job.rules.without_told());
  const StepText c(text,
                   {.cpp = true, .state = "", .in = "given.", .out = "shown.", .wires = "w."});
  const std::string& m = text.module_name();
  out << "#pragma once\n\n";
  c.put_comment(out, "// ", "a new object, then step() for each instant. C++20.");
  out << "// An object holds all that the module keeps: a copy is what to come back to.\n\n";
  if (c.wants_types()) out << "#include \"" << job.module->getName() << "_types.h\"\n\n";
  c.put_data_declarations(out, "");
  c.put_constants(out);
  out << "class " << m << " {\n public:\n  struct in {\n";
  c.put_inputs(out);
  out << "    bool operator==(const in&) const = default;\n  };\n  struct out {\n";
  c.put_outputs(out);
  out << "    bool operator==(const out&) const = default;\n  };\n\n";
  const bool has_data = !data_methods().empty() || !data_constants().empty() || c.wants_types();
  put_step(c, has_data ? "" : "constexpr ", out);
  out << "  bool operator==(const " << m << "&) const = default;\n\n private:\n";
  if (c.parts() > 1) put_parts(c, out);
  c.put_state(out);
  out << "};\n";
}

const Bench bench{.language = &cpp_step_language,
                  .extension = ".cpp",
                  .run = cpp_bench_run,
                  .put = put_cpp_bench,
                  .tool = "g++ --version"};

}  // namespace

extern const Target cpp_target{.option = "cpp",
                               .help = "C++ class, .hpp",
                               .file = {.extension = ".hpp"},
                               .put = put_module,
                               .comment = "// ",
                               .use =
                                   "A new object, then step() for each instant. An object holds "
                                   "all that the module keeps; copies are free.",
                               .bench = &bench};

}  // namespace kiva
