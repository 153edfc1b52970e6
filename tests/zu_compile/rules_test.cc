// The programs that tell the two sets of rules apart. Their traces are those of finalised modules,
// in which more signals have a known state than here, so what is compared is whether an output is
// One.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/support/temp_dir.h"
#include "tests/zu_compile/compiled.h"

namespace kiva::test {
namespace {

std::string probe(const std::string& name) {
  return std::string(KIVA_RULE_PROBES) + "/" + name;
}

/// Of one line of a trace: is the output "one"?
bool is_one(const std::string& line, const std::string& output) {
  return line.find("\"" + output + "\": [\"one\"") != std::string::npos;
}

void check(const std::string& name, const Rules& rules, const std::string& trace_file) {
  const std::string expected = read_text(probe(trace_file));
  const Compiled compiled(read_text(probe(name + ".zu")), rules);
  // An empty trace: the program is refused.
  ASSERT_EQ(compiled.ok(), !expected.empty()) << trace_file << ": " << compiled.report();
  if (expected.empty()) return;
  Instants instants(compiled);
  std::ifstream stimuli(probe(name + ".stim"));
  std::istringstream lines(expected);
  long instant = 0;
  for (std::string line, inputs; std::getline(lines, line);) {
    ASSERT_TRUE(std::getline(stimuli, inputs)) << trace_file;
    Stimulus stimulus;
    stimulus.set = ++instant == 1;
    std::istringstream names(inputs);
    for (std::string input; names >> input;) stimulus.present.insert(input);
    instants.step(stimulus);
    for (const Signal* output : compiled.module()->getOutputSignalList())
      EXPECT_EQ(instants.state(output->getOriginalName()) == '1',
                is_one(line, output->getOriginalName()))
          << trace_file << ": " << output->getOriginalName() << " at instant " << instant;
  }
}

class RuleProbe : public testing::TestWithParam<const char*> {};

TEST_P(RuleProbe, GivesBothTraces) {
  const std::string name = GetParam();
  check(name, Rules::classic(), name + ".classic.json");
  check(name, Rules::sound(), name + ".sound.json");
}

INSTANTIATE_TEST_SUITE_P(Rules, RuleProbe,
                         testing::Values("values", "sustain", "abort-start", "abort-mask",
                                         "abort-signal", "skip", "copies", "final", "state-mask",
                                         "state-reset", "kill", "mealy", "run-join"));

}  // namespace
}  // namespace kiva::test
