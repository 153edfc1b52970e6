#include "engine/stimuli.h"

#include <gtest/gtest.h>

#include <sstream>

#include "engine/trace.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

class Stimuli : public testing::Test {
 protected:
  Stimuli() {
    // A, B in; JOIN takes both rails from A; no other equations.
    file = dir.write("m.zuc",
                     "module: m 0 0 input: A B:int ; output: O P ; connexion: S R T; equation_def: "
                     "3 0: -1:-3:-3,1 1: 0:0:0,-1 2: 1:0:0,-1 expressions: 1 0 4:1,1,(0) "
                     "1 0 5:2,1,(1) end:\n");
    simulation = std::make_unique<Simulation>(read_zuc_file(file, "", "").module);
  }
  std::string refused(const std::string& text) {
    std::istringstream in(text);
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
  EXPECT_EQ(refused("=5"), "1: the module has no input \"\"");
}

TEST_F(Stimuli, RunsAreTracedAsJsonAndAsText) {
  std::ostringstream json, text;
  JsonTrace json_trace(*simulation);
  TextTrace text_trace(*simulation);
  std::istringstream in("A\nA:top\n");
  StimuliReader reader(in, *simulation);
  while (const auto stimulus = reader.next()) {
    apply(*stimulus, *simulation);
    simulation->step(nullptr);
    json_trace.write(json, simulation->state());
    text_trace.write(text, simulation->state());
  }
  EXPECT_EQ(json.str(),
            "{\"instant\":1,\"outputs\":{\"O\":[\"one\",\"--\"],\"P\":[\"unknown\",\"--\"]},"
            "\"locals\":{},\"registers\":{}}\n"
            "{\"instant\":2,\"outputs\":{\"O\":[\"top\",\"--\"],\"P\":[\"unknown\",\"--\"]},"
            "\"locals\":{},\"registers\":{}}\n");
  EXPECT_EQ(text.str(), "     1  O | unknown: P\n     2  - | top: O unknown: P\n");
}

}  // namespace
}  // namespace kiva::test
