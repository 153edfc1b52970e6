#include "engine/stimuli.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "base/lines.h"
#include "engine/condition.h"
#include "engine/expectations.h"
#include "engine/trace.h"
#include "engine/vcd_trace.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

class Stimuli : public testing::Test {
 protected:
  Stimuli() {
    // A, B in; O takes both rails from A; no other equations.
    file = dir.write(
        "m.zuc",
        "module: m 0 0 input: A B:int ; output: O P ; local: L ; connexion: S R T; equation_def: "
        "3 0: -1:-3:-3,1 1: 0:0:0,-1 2: 1:0:0,-1 expressions: 1 0 4:1,1,(0) "
        "1 0 5:2,1,(1) end:\n");
    simulation = std::make_unique<Simulation>(read_zuc_file(file, "", "").module);
  }
  std::string refused(const std::string& text) {
    std::istringstream in(text);
    return refused(std::move(in));
  }
  std::string refused(std::istream&& in) {
    StimuliReader reader(in, *simulation);
    try {
      while (reader.next()) {
      }
    } catch (const StimuliError& error) {
      return std::to_string(error.line) + ": " + error.reason;
    }
    return "accepted";
  }
  TempDir dir;
  std::string file;
  std::unique_ptr<Simulation> simulation;
};

TEST_F(Stimuli, SayWhatEachInputIsInEachInstant) {
  std::istringstream in("A B=a=b\n# skipped\n\nA:top B:one=5\r\n  \t\n!set A:bottom !reset\nB");
  StimuliReader reader(in, *simulation);
  const auto next = [&] {
    apply(*reader.next(), *simulation);
    return simulation->state();
  };
  using enum SignalState;
  SimulationState state = next();
  EXPECT_EQ(state.inputs, (std::vector{one, one}));
  EXPECT_EQ(state.input_texts, (std::vector<std::string>{"--", "a=b"}));
  EXPECT_TRUE(state.set);  // raised by the load
  EXPECT_EQ(next().inputs, (std::vector{zero, zero}));
  state = next();
  EXPECT_EQ(state.inputs, (std::vector{top, one}));
  EXPECT_EQ(state.input_texts[1], "5");
  EXPECT_EQ(next().inputs, (std::vector{zero, zero}));
  simulation->step(nullptr);
  state = next();
  EXPECT_EQ(state.inputs, (std::vector{bottom, zero}));
  EXPECT_TRUE(state.set && state.reset);
  // A value text does not stay for a later bare name.
  EXPECT_EQ(next().input_texts[1], "--");
  EXPECT_FALSE(reader.next());
}

TEST_F(Stimuli, AreRefusedWithTheirLine) {
  EXPECT_EQ(refused("A\nC"), "2: the module has no input \"C\"");
  EXPECT_EQ(refused("#\n\nA:blue"),
            "3: unknown state \"blue\" in \"A:blue\": one, zero, top or bottom is expected");
  EXPECT_EQ(refused("A B:zero=4"), "1: only an input in state one carries a value: \"B:zero=4\"");
  EXPECT_EQ(refused("A B A:top"), "1: an input stands twice on the line: \"A:top\"");
  EXPECT_EQ(refused("!go"), "1: the module has no input \"!go\"");
  EXPECT_EQ(refused("A\n" + std::string(longest_line, ' ') + "\n\n"), "accepted");
  EXPECT_EQ(refused("A\n" + std::string(longest_line + 1, ' ')),
            "2: the line is longer than 16 MiB");
  EXPECT_EQ(refused("=5"), "1: the module has no input \"\"");
  EXPECT_EQ(refused(std::ifstream(dir.path())), "1: cannot be read to its end");
}

TEST_F(Stimuli, HoldWhatIsAwaited) {
  // What is seen, read again, is met; what is not seen is told. O is what A is, P is unknown.
  const struct {
    const char* line;
    const char* told;  ///< lines of differences
    const char* seen;
  } cases[] = {
      {"A -> O !P P:unknown", "a signal is awaited twice on the line: \"P:unknown\"", ""},
      {"A -> O P:unknown", "", "O P:unknown"},
      {"A:top ->", "", "O:top P:unknown"},
      {"A:bottom -> O", "expected O, is absent; no output is present", "!O"},
      {"A -> !O", "expected not O, is present; present: O", "O"},
      {"A -> O=\"5 6\"", "expected O=\"5 6\", is present without value; present: O", "O"},
      {" -> O:zero", "", "!O"},
      {"A -> o", "the module shows no signal \"o\"", ""},
      {"A -> A", "the module shows no signal \"A\"", ""},
      {"A -> !O=5", "a signal that is not awaited has no state and no value: \"!O=5\"", ""},
  };
  for (const auto& [line, told, shown] : cases) {
    simulation->load();
    std::istringstream in(line);
    StimuliReader reader(in, *simulation);
    try {
      const Stimulus stimulus = *reader.next();
      apply(stimulus, *simulation);
      simulation->step(nullptr);
      std::string differences;
      for (const std::string& d : unmet(stimulus.expectations, simulation->state(), *simulation))
        differences += d;
      EXPECT_EQ(differences, told) << line;
      EXPECT_EQ(seen(stimulus.expectations, simulation->state(), *simulation), shown) << line;
    } catch (const StimuliError& error) {
      EXPECT_EQ(error.reason, told) << line;
    }
  }
}

TEST_F(Stimuli, WrittenFromChoicesAskForTheSame) {
  const Choices all[] = {{{SignalState::one, SignalState::one}, {"--", "a \"b\" \\"}, true, false},
                         {{SignalState::top, SignalState::bottom}, {"--", "--"}, false, true},
                         {{SignalState::zero, SignalState::one}, {"--", ""}, false, false},
                         {{SignalState::zero, SignalState::zero}, {"--", "--"}, false, false}};
  for (const Choices& choices : all) {
    std::istringstream in(stimulus_line(choices, *simulation) + "\n");
    simulation->raise_set(false);
    simulation->raise_reset(false);
    apply(*StimuliReader(in, *simulation).next(), *simulation);
    EXPECT_EQ(choices_of(simulation->state()), choices) << in.str();
  }
}

TEST_F(Stimuli, ConditionsAskWhatAnInstantShows) {
  std::istringstream in("A B=5");
  apply(*StimuliReader(in, *simulation).next(), *simulation);
  simulation->step(nullptr);
  const std::pair<const char*, const char*> cases[] = {
      {"A and O", "yes"},
      {"not P and instant=1", "yes"},
      {"B = 5 and B == 5", "yes"},
      {"(B=\"5\") xor instant > 0", "no"},
      {"B=55 or instant != 1", "no"},
      {"instant >= 1 and instant <= 1 and not (instant < 1 or instant > 1)", "yes"},
      {"Q", "1: \"Q\" is no signal of the module"},
      {"A and", "6: the expression ends too early"},
      {"A ) B", "3: \")\" cannot stand here"},
      {"instant", "8: \"instant\" is compared with a number: instant >= 7"},
      {"instant > 9999999999999999999", "30: \"instant\" is compared with a number: instant >= 7"},
      {"B=\"5", "3: a \" without its end"},
      {"B < 5", "3: a signal's value is compared by \"=\" alone"},
  };
  for (const auto& [text, expected] : cases) {
    std::string result;
    try {
      result = Condition(text, *simulation).holds(simulation->state()) ? "yes" : "no";
    } catch (const ConditionError& error) {
      result = std::to_string(error.character) + ": " + error.reason;
    }
    EXPECT_EQ(result, expected) << text;
  }
}

TEST_F(Stimuli, RunsAreTraced) {
  const auto traced = [&](TraceWriter&& writer, const std::string& stimuli) {
    std::ostringstream out;
    std::istringstream in(stimuli);
    StimuliReader reader(in, *simulation);
    simulation->load();
    writer.begin(out);
    while (const auto stimulus = reader.next()) {
      apply(*stimulus, *simulation);
      simulation->step(nullptr);
      writer.write(out, simulation->state());
    }
    return out.str();
  };
  EXPECT_EQ(traced(JsonTrace(*simulation), "A\nA:top\n"),
            "{\"instant\":1,\"outputs\":{\"O\":[\"one\",\"--\"],\"P\":[\"unknown\",\"--\"]},"
            "\"locals\":{\"L\":\"unknown\"},\"registers\":{}}\n"
            "{\"instant\":2,\"outputs\":{\"O\":[\"top\",\"--\"],\"P\":[\"unknown\",\"--\"]},"
            "\"locals\":{\"L\":\"unknown\"},\"registers\":{}}\n");
  EXPECT_TRUE(traced(TextTrace(*simulation), "A\nA:top\n")
                  .ends_with("\n     1  O | unknown: P | locals: unknown: L\n"
                             "     2  - | top: O unknown: P | locals: unknown: L\n"));
  EXPECT_TRUE(traced(VcdTrace(*simulation), "A B=\"\"\nA B=\"\\\\ b\"\nA B=\"\\\\ b\"\n\n")
                  .ends_with("$enddefinitions $end\n#1\n$dumpvars\n1!\n1\"\ns #\n1$\nx%\nx&\n$end\n"
                             "#2\ns\\134\\040b #\n#3\n#4\n0!\n0\"\ns-- #\n0$\n"));
}

}  // namespace
}  // namespace kiva::test
