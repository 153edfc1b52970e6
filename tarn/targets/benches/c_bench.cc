// The bench of C's functions: a table of instants, functions that give the values of valued inputs,
// and one that runs an instant.

#include <cstdlib>
#include <ostream>
#include <sstream>

#include "tarn/targets/benches/benches.h"
#include "tarn/targets/languages/c_family.h"

namespace kiva {

bool is_number_text(const std::string& text) {
  char* end = nullptr;
  std::strtod(text.c_str(), &end);
  return end != text.c_str() && *end == '\0';
}

std::string value_literal(const std::string& type, const std::string& text) {
  if (type != "string") return text;
  std::string quoted = "\"";
  for (char c : text) quoted += c == '"' || c == '\\' ? std::string{'\\', c} : std::string{c};
  return quoted + '"';
}

namespace {

class CBench {
 public:
  CBench(const BenchJob& job, std::ostream& out)
      : job_(job), text_(job.text), m_(job.name), parameters_(c_parameters(job.text)), out_(out) {}

  void put() const {
    put_table();
    for (const CParameter& parameter : parameters_)
      if (parameter.valued != nullptr) put_values(parameter);
    put_check();
    put_instant();
  }

  std::string count() const { return std::to_string(job_.instants.size()); }

 private:
  std::string value_function(const CParameter& parameter) const {
    return m_ + "_" + text_.value_name(parameter.valued);
  }

  void put_table() const {
    out_ << "static const struct { const char *given, *awaited; } " << m_ << "_rows[] = {\n";
    for (const BenchInstant& instant : job_.instants) {
      std::string given, awaited;
      for (const CParameter& p : parameters_) {
        const auto& bits = p.is_output ? instant.awaited : instant.given;
        const auto at = bits.find(p.index);
        (p.is_output ? awaited : given) += at != bits.end() ? (at->second ? '1' : '0')
                                           : p.is_output    ? '-'
                                                            : '0';
      }
      out_ << "  {\"" << given << "\", \"" << awaited << "\"},\n";
    }
    out_ << "  {\"\", \"\"}};\n\n";
  }

  /// Of an input what it carries; of an output whether a number is awaited, and which.
  void put_values(const CParameter& parameter) const {
    const std::string type = text_.type(parameter.valued);
    out_ << "static " << (parameter.is_output ? "int " : type + " ") << value_function(parameter)
         << "(int instant" << (parameter.is_output ? ", double* awaited" : "")
         << ")\n{\n  switch (instant) {\n";
    for (size_t n = 0; n < job_.instants.size(); ++n) {
      const auto& values =
          parameter.is_output ? job_.instants[n].awaited_values : job_.instants[n].given_values;
      const auto at = values.find(parameter.index);
      if (at == values.end() || (parameter.is_output && !is_number_text(at->second))) continue;
      out_ << "  case " << n << ": ";
      if (parameter.is_output)
        out_ << "*awaited = " << at->second << "; return 1;\n";
      else
        out_ << "return " << value_literal(type, at->second) << ";\n";
    }
    if (parameter.is_output)
      out_ << "  default: *awaited = 0; return 0;\n  }\n}\n\n";
    else
      out_ << "  default: return zero_" << type << ";\n  }\n}\n\n";
  }

  void put_check() const {
    out_ << "static int " << m_ << "_faults = 0;\n\nstatic void " << m_
         << "_check(int instant, const char* name, int is, char awaited)\n{\n"
            "  if (awaited == '-' || (is != 0) == (awaited == '1')) return;\n  ++"
         << m_
         << "_faults;\n  printf(\"instant %d: expected %s%s, is %s\\n\", instant + 1,\n"
            "         awaited == '1' ? \"\" : \"not \", name, is ? \"present\" : \"absent\");\n"
            "}\n\n";
  }

  void put_instant() const {
    std::ostringstream arguments, declarations, checks;
    const char* separator = "";
    size_t given = 0, awaited = 0;
    for (const CParameter& p : parameters_) {
      const std::string bit = "o[" + std::to_string(awaited) + "]";
      arguments << separator;
      separator = ", ";
      if (!p.is_output)
        arguments << "given[" << given++ << "] == '1'";
      else
        arguments << '&' << bit;
      if (p.valued != nullptr && !p.is_output)
        arguments << ", " << value_function(p) << "(instant)";
      if (p.valued != nullptr && p.is_output) put_output_value(p, awaited, declarations, checks);
      if (p.valued != nullptr && p.is_output) arguments << ", &value" << awaited;
      if (p.is_output)
        checks << "  " << m_ << "_check(instant, \"" << text_.name(p.index) << "\", " << bit << ", "
               << m_ << "_rows[instant].awaited[" << awaited++ << "]);\n";
    }
    const std::string module = text_.module_name();
    out_ << "static void " << m_ << "_instant(int instant)\n{\n";
    if (given > 0) out_ << "  const char* given = " << m_ << "_rows[instant].given;\n";
    if (awaited > 0) out_ << "  int o[" << awaited << "] = {0};\n";
    out_ << declarations.str() << "  if (instant == 0) " << module << "_reset_automaton();\n  "
         << module << "_automaton(" << arguments.str() << ");\n"
         << checks.str() << "}\n\n";
  }

  void put_output_value(const CParameter& p, size_t number, std::ostream& declarations,
                        std::ostream& checks) const {
    const std::string value = "value" + std::to_string(number);
    declarations << "  " << text_.type(p.valued) << ' ' << value << " = zero_"
                 << text_.type(p.valued) << ";\n";
    for (const BenchInstant& instant : job_.instants)
      if (const auto at = instant.awaited_values.find(p.index);
          at != instant.awaited_values.end() && is_number_text(at->second)) {
        checks << "  double awaited" << number << ";\n  if (" << value_function(p)
               << "(instant, &awaited" << number << ") && fabs(" << value << " - awaited" << number
               << ") > 1e-4 * (1 + fabs(" << value << "))) {\n    ++" << m_
               << "_faults;\n    printf(\"instant %d: expected " << text_.name(p.index)
               << "=%g, is %g\\n\", instant + 1, awaited" << number << ", (double)" << value
               << ");\n  }\n";
        return;
      }
    checks << "  (void)" << value << "; (void)" << value_function(p) << ";\n";
  }

  const BenchJob& job_;
  const TargetText& text_;
  const std::string& m_;
  std::vector<CParameter> parameters_;
  std::ostream& out_;
};

std::string verdict(const std::string& m, const std::string& count, const std::string& margin) {
  return margin + "if (" + m + "_faults == 0) printf(\"" + count + " instants agree\\n\");\n" +
         margin + "return " + m + "_faults == 0 ? 0 : 1;\n";
}

}  // namespace

std::string c_bench_run(const BenchJob& job) {
  return "touch C_data_user_" + job.text.module()->getName() + ".h && gcc -o " + job.name + ' ' +
         job.name + ".c " + job.file + " -lm && ./" + job.name;
}

void put_c_bench(const BenchJob& job, std::ostream& out) {
  out << "/*\n"
      << bench_comment(job, "   ", "*/\n") << "#include <math.h>\n#include <stdio.h>\n#include \""
      << job.beside << "\"\n\n";
  const CBench bench(job, out);
  bench.put();
  out << "int main(void)\n{\n  int instant;\n  for (instant = 0; instant < " << bench.count()
      << "; ++instant) " << job.name << "_instant(instant);\n"
      << verdict(job.name, bench.count(), "  ") << "}\n";
}

}  // namespace kiva
