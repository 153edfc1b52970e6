// Netlists of others, and ours written and read again.

#include <gtest/gtest.h>

#include "tests/targets/target_case.h"

namespace kiva::test {
namespace {

/// What tarn makes of a netlist, over the stimuli of a case that has its inputs.
void expect_same_run(const TargetCase& test, const std::string& netlist) {
  SCOPED_TRACE(netlist);
  const TempDir again;
  run_tool(KIVA_PROGRAMS "/tarn -q -o read -d '" + again.path().string() + "' '" + netlist + "'",
           again.path());
  std::string stimuli;
  for (const TargetCase::Instant& instant : test.instants()) {
    for (size_t i = 0; i < test.inputs().size(); ++i)
      if (instant.inputs[i] == SignalState::one)
        stimuli += test.inputs()[i]->getOriginalName() + " ";
    stimuli += "\n";
  }
  const TargetCase reread("read.zuc", read_text(again.file("read.zuc")), stimuli);
  ASSERT_EQ(reread.instants().size(), test.instants().size());
  for (size_t i = 0; i < test.instants().size(); ++i)
    ASSERT_EQ(reread.instants()[i].statuses, test.instants()[i].statuses) << "instant " << i + 1;
}

TEST(Netlists, OfOthersRunAsTheirModules) {
  for (const char* name : {"s27.bench", "planet.blif"})
    expect_same_run(named_case(std::string(name).substr(0, std::string(name).find('.')) + ".zuc"),
                    std::string(KIVA_SOURCE "/tests/system/circuits/") + name);
}

void check_written(const TargetCase& test) {
  test.write("--blif --aiger -o again");
  for (const char* file : {"again.blif", "again.aag", "again.aig"})
    expect_same_run(test, test.file(file));
}

TEST(Netlists, AreWrittenAndReadAgain) {
  check_written(named_case("s1423.zuc"));
  check_written(named_case("shown_register.zuc"));
  for_random_cases(8, check_written);
}

TEST(Netlists, WhatIsWrongIsToldWithItsLine) {
  const std::string blif = ".model m\n.inputs a\n.outputs b\n";
  const TempDir dir;
  for (const auto& [ending, text, told] : std::vector<std::array<std::string, 3>>{
           {"blif", "", ": error: holds no .model"},
           {"blif", ".inputs a\n", ":1: error: a .model is awaited, not .inputs"},
           {"blif", blif + "# c\n.names a \\\nb\n11 1\n",
            ":7: error: a row of this table has 1 of 0, 1 or -, then 0 or 1"},
           {"blif", blif + ".names a b\n1 1\n0 0\n", ":6: error: rows for 0 and for 1"},
           {"blif", blif + ".names a b\n1 2\n", ":5: error: a row ends with 0 or 1, not \"2\""},
           {"blif", blif + "1 1\n", ":4: error: \"1\" stands in no table"},
           {"blif", blif + ".subckt x\n", ":4: error: \".subckt\" is not read"},
           {"blif", blif + ".latch a\n", ":4: error: .latch wants two nets"},
           {"blif", blif + ".latch a b 7\n", ":4: error: \"7\" is no initial value of a latch"},
           {"blif", blif + ".names b\n.names b\n", ":5: error: \"b\" is driven twice"},
           {"blif", blif + ".names c b\n1 1\n", ":4: error: nothing drives \"c\""},
           {"blif", blif + ".names c b\n1 1\n.names b c\n1 1\n",
            ":4: error: \"c\" depends on itself"},
           {"bench", "INPUT(a)\nOUTPUT(b)\nb = MAYBE(a)\n",
            ":3: error: no gate \"MAYBE\" of 1 nets is known"},
           {"bench", "b = NOT(a, c)\n", ":1: error: no gate \"NOT\" of 2 nets is known"},
           {"bench", "INPUT(a)\nINPUT(a)\n", ":2: error: \"a\" is driven twice"},
           {"bench", "OUTPUT(a)\n", ":1: error: nothing drives \"a\""},
           {"bench", "x\n", ":1: error: no gate \"X\" of 0 nets is known"},
           {"aag", "agg 1 1 0 0 0\n", ":1: error: begins neither with aag nor with aig"},
           {"aag", "aag 1 1 0\n", ":1: error: the head wants five numbers: M I L O A"},
           {"aag", "aag 1 1 0 1 0\n2\n4\n", ":3: error: 4 is no literal here"},
           {"aag", "aag 3 1 1 0 1\n2\n4 2\n6\n", ":4: error: 3 numbers are awaited"},
           {"aag", "aag 1 1 0 0 0\n3\n", ":2: error: 3 is no variable"},
           {"aag", "aag 1 1 0 0 0 0 1\n2\n",
            ":1: error: constraints, justice and fairness are not read"},
           {"aig", "aig 2 1 0 1 1\n4\n\x82", ":2: error: ends too early"},
           {"aig", "aig 900000000 900000000 0 0 0\n", ":1: error: more than 1000000 inputs"}}) {
    const std::string file = dir.write("bad." + ending, text);
    const std::string out =
        run_tool("! " KIVA_PROGRAMS "/tarn -q -d '" + dir.path().string() + "' '" + file + "' 2>&1",
                 dir.path());
    EXPECT_NE(out.find("bad." + ending + told), std::string::npos) << text << out;
  }
  EXPECT_FALSE(std::filesystem::exists(dir.file("bad.zuc")));
}

}  // namespace
}  // namespace kiva::test
