// Source text laid out means the same, keeps its comments, and is laid out.

#include "language/layout.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "base/read_all.h"
#include "tarn/zu/source_tokens.h"
#include "tarn/zuc/zuc_writer.h"
#include "tests/zu_compile/compiled.h"
#include "tests/zu_compile/program.h"

namespace kiva::test {

namespace {

using language::lay_out;

std::string compiled_text(const std::string& source) {
  const Compiled compiled(source);
  if (!compiled.ok()) return "refused";
  std::ostringstream out;
  write_zuc(compiled.module(), out, false);
  return out.str();
}

/// The same tokens with other blanks, line ends and comments between them.
std::string scattered(const std::string& source, std::mt19937& random) {
  static const std::vector<std::string> between{" ",        " ",     "  ",         "\n",
                                                "\n\n\n\t", " ;;\n", "\n;; <[\"\n"};
  std::string text;
  for (const SourceToken& token : source_tokens(source))
    text +=
        std::string(token.text) + (token.kind == TokenKind::comment ? "\n" : pick(random, between));
  return text;
}

std::vector<std::string> tokens(const std::string& text) {
  std::vector<std::string> all;
  for (const SourceToken& token : source_tokens(text)) all.emplace_back(token.text);
  return all;
}

void expect_laid_out(const std::string& source) {
  const language::LaidOut once = lay_out(source);
  ASSERT_EQ(once.reason, "") << source;
  EXPECT_EQ(tokens(once.text), tokens(source));
  EXPECT_EQ(lay_out(once.text).text, once.text) << source;
}

}  // namespace

TEST(Layout, RandomProgramsMeanTheSame) {
  std::mt19937 random(7);
  for (int n = 0; n < 90; ++n) {
    Program program = n % 3 == 0   ? random_automaton(random, 8)
                      : n % 3 == 1 ? random_mealy(random, 5)
                                   : random_program(random, 5 + n % 40);
    if (n % 3 == 2) enrich(program, random);
    const std::string source = module_text(program);
    const std::string other = scattered(source, random);
    expect_laid_out(other);
    EXPECT_EQ(compiled_text(lay_out(other).text), compiled_text(source)) << source;
    if (HasFailure()) return;
  }
}

TEST(Layout, OfExamplesChangesNothingTheSecondTime) {
  for (const auto& entry : std::filesystem::recursive_directory_iterator(KIVA_SOURCE "/examples")) {
    if (entry.path().extension() != ".zu") continue;
    std::ifstream in(entry.path());
    expect_laid_out(read_all(in));
  }
}

TEST(Layout, SetsWhatIsOpenOffAndBreaksLongLines) {
  const std::string long_one(95, 'x');
  std::string list = "Input: abcd";  // of a hundred columns with its last comma
  while (list.size() < 99) list += ", xy";
  struct {
    std::string source, laid_out;
  } const rows[] = {
      {"", ""},
      {"\n\n;; a", ";; a\n"},
      {"module m:Input:a,\nb:t;emit o(-1+-#a*- 1.5)end;;x",
       "module m:\nInput: a,\n  b: t;\nemit o(-1 + -#a * - 1.5)\nend  ;;x\n"},
      {"present a\npresent b\nemit\no\nelse\n;; no\nnothing>>\npause",
       "present a\n  present b\n    emit\n      o\n  else\n    ;; no\n    nothing >>\npause\n"},
      {"{ emit " + long_one + " || loop{a>>b} }",
       "{\n  emit " + long_one + "\n  || loop { a >> b }\n}\n"},
      {"Input: a, " + long_one + ";Run: \"a\":b;\"c/d\":e:f;halt",
       "Input: a,\n  " + long_one + ";\nRun: \"a\" : b;\n  \"c/d\" : e : f;\nhalt\n"},
      {list + ", z;nothing", list + ",\n  z;\nnothing\n"},
      {"automaton state:s geometry:<1.0,-2.>3. /a;transition:initial->s;s 1[a|\nb]->s;;k\n;\nend",
       "automaton\nstate: s geometry: <1.0,-2.> 3. / a;\ntransition:\ninitial-> s;\n"
       "s 1 [a |\n  b] -> s  ;;k\n  ;\nend\n"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(lay_out(row.source).text, row.laid_out);
    expect_laid_out(row.source);
  }
  for (const char* source : {"a \r\n", "{ } }", "( ]", "\"", "loop {", "caf\xc3\xa9"}) {
    EXPECT_NE(lay_out(source).reason, "") << source;
    EXPECT_EQ(lay_out(source).text, source);
  }
}

}  // namespace kiva::test
