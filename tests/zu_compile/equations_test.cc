// The equations of each statement, as formulas. A rail is named as its variable: "_s_" status,
// "_v_" value.

#include <gtest/gtest.h>

#include <utility>

#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/statements/parallel.h"
#include "tarn/zu/statements/pause.h"
#include "tarn/zu/statements/sequence.h"
#include "tests/zu_compile/compiled.h"

namespace kiva::test {
namespace {

enum class Under { both, classic, sound };

struct Case {
  std::string body, variable, formula;
  Under rules = Under::both;
};

void check(const std::vector<Case>& cases) {
  for (const Case& c : cases)
    for (const bool sound : {false, true}) {
      if (c.rules == (sound ? Under::classic : Under::sound)) continue;
      SCOPED_TRACE(c.body + (sound ? ", sound" : ", classic"));
      expect_equation(Compiled("module main: Input: x; Output: o; " + c.body + " end",
                               sound ? Rules::sound() : Rules::classic()),
                      c.variable, c.formula);
    }
}

TEST(Equations, OfTheOuterWires) {
  check({{"pause", "_s_SETmainPS_0", "_s_SETmain"},
         {"pause", "_s_RESETmainPS_0", "_s_RESETmain"},
         {"pause", "_s_RTLmain", "_s_RTLmainPS_0"},
         {"pause", "_s_RTLmainPS_0", "_s_ACTIFmainPS_0"},
         // Wires and registers are True or False.
         {"pause", "_v_SETmainPS_0", "!_s_SETmainPS_0"},
         {"pause", "_v_RTLmainPS_0", "!_s_RTLmainPS_0"},
         {"pause", "_v_ACTIFmainPS_0", "!_s_ACTIFmainPS_0"},
         {"pause", "_v_ACTIFPLUSmainPS_0", "!_s_ACTIFPLUSmainPS_0"},
         {"pause", "_s_ACTIFPLUSmainPS_0", "_s_SETmainPS_0 & _v_RESETmainPS_0"}});
  const Compiled c("module main: pause end");
  EXPECT_TRUE(c.module()->getSet()->isWire());
}

TEST(Equations, OfEmissions) {
  const std::string text = "emit o >> pause >> noemit o", sustain = "sustain o until x";
  const std::string on = "(_s_ACTIFmainSU_0 | _s_SETmainSU_0) & (!_s_x | _v_x)",
                    off = "(_v_ACTIFmainSU_0 & _v_SETmainSU_0) | _s_x";
  check({{text, "_s_o_1", "_s_RTLmainE_0 & !_v_RTLmainE_0"},
         {text, "_v_o_1", "0"},
         {text, "_s_o_2", "0"},
         {text, "_v_o_2", "_s_RTLmainNE_0 & !_v_RTLmainNE_0"},
         {text, "_s_o", "_s_o_1 | _s_o_2"},
         {text, "_v_o", "_v_o_1 & _v_o_2"},
         {text, "_s_SETmainPS_0", "_s_RTLmainE_0"},
         {text, "_s_RTLmainSn_0", "_s_RTLmainNE_0"},
         {sustain, "_s_o_1", on, Under::classic},
         {sustain, "_v_o_1", off, Under::classic},
         {sustain, "_s_o_1", on + " & !(" + off + ")", Under::sound},
         {sustain, "_v_o_1", "0", Under::sound}});
  // The register gives the value of a sustain's state, not an equation.
  const Compiled c("module main: Input: x; Output: o; sustain o until x end");
  EXPECT_EQ(c.wood()->exp_by_index(c.wood()->Index_var_by_name("_v_ACTIFmainSU_0")), nullptr);
}

TEST(Equations, OfBranchesAndLoops) {
  const std::string skipped = "(!_s_x | _v_x) & _s_SETmainPR_0";
  const std::string with = "present x halt else pause", without = "present x halt",
                    many = "pause || pause || pause";
  check({{with, "_s_SETmainH_0", "_s_x & !_v_x & _s_SETmainPR_0"},
         {with, "_s_SETmainPS_0", skipped},
         {with, "_s_RTLmainPR_0", "_s_RTLmainH_0 | _s_RTLmainPS_0"},
         {without, "_s_RTLmainPR_0", "_s_RTLmainH_0 | " + skipped},
         {many, "_s_RTLmainPn_00", "_s_ACTIFmainPn_00 | _s_RTLmainPS_0"},
         {many, "_s_RTLmainPn_02", "(_s_ACTIFmainPn_02 | _s_RTLmainPS_2) & _s_RTLmainPn_01"},
         {many, "_s_RTLmainPn_0", "_s_RTLmainPn_02"},
         {many, "_s_ACTIFPLUSmainPn_01",
          "(_s_ACTIFmainPn_01 | _s_RTLmainPS_1) & _v_RTLmainPn_0 & _v_RESETmainPn_0"},
         {"loop { pause }", "_s_SETmainPS_0", "_s_SETmainL_0 | _s_RTLmainPS_0"},
         {"loop { pause }", "_s_RTLmainL_0", "0"},
         {"loop { weak abort { pause } when x }", "_s_SETmainA_0_bis", "_s_RTLmainA_0"}});
  for (const char* text : {"loop { pause }", "loop { pause || pause >> nothing }"})
    EXPECT_EQ(Compiled("module main: " + std::string(text) + " end")
                  .wood()
                  ->Index_var_by_name("_s_SETmainPS_0_bis"),
              -1)
        << text << " needs no copy";
}

TEST(Equations, OfAborts) {
  const std::string weak = "weak abort { pause } when x",
                    strong = "emit o >> strong abort { emit o >> halt } when x";
  const std::string before = "(_s_RTLmainE_0 & !_v_RTLmainE_0)",
                    inside = "(_s_RTLmainE_1 & !_v_RTLmainE_1)",
                    mask = "(_v_x | !_s_x | !_s_ACTIFmainSA_0)";
  check({{weak, "_s_SETmainPS_0", "_s_SETmainA_0"},
         {weak, "_s_RESETmainPS_0", "_s_ACTIFmainA_0 & _v_RESETmainA_0 & _s_x | _s_RESETmainA_0"},
         {weak, "_s_RTLmainA_0", "_s_RTLmainPS_0 & (!_s_x | _v_x) | _s_x & _s_ACTIFmainA_0",
          Under::classic},
         {weak, "_s_RTLmainA_0", "_s_RTLmainPS_0 | _s_x & _s_ACTIFmainA_0", Under::sound},
         {weak, "_s_ACTIFPLUSmainA_0",
          "_v_RESETmainA_0 & (_s_ACTIFmainA_0 & (!_s_x | _v_x) | _s_SETmainA_0) & _v_RTLmainPS_0"},
         {strong, "_s_o_1", mask + " & (" + before + " | " + inside + ")", Under::classic},
         {strong, "_s_o_1", before + " | " + mask + " & " + inside, Under::sound},
         {"strong abort { emit o } when FF", "_s_o_1", before}});
}

TEST(Equations, OfAParallelOfTwo) {
  auto* module = make_kept<Module>("main");
  module->addBodyStatement(make_kept<Parallel>("P", make_kept<Pause>("l"), make_kept<Pause>("r")));
  const Compiled c(module);
  const std::string A = "_s_ACTIFP", nA = "_v_ACTIFP", B = "_s_ACTIFBISP", nB = "_v_ACTIFBISP";
  expect_equation(c, "_s_RTLP",
                  nA + " & " + nB + " & _s_RTLl & _s_RTLr | " + A + " & " + nB + " & _s_RTLr | " +
                      B + " & " + nA + " & _s_RTLl");
  expect_equation(c, "_s_ACTIFPLUSP", "_v_RESETP & _v_RTLr & (" + A + " | _s_RTLl & " + nB + ")");
  expect_equation(c, "_s_ACTIFBISPLUSP",
                  "_v_RESETP & _v_RTLl & (" + B + " | _s_RTLr & " + nA + ")");
}

TEST(Equations, NeedWiresOfChildren) {
  auto* module = make_kept<Module>("main");
  auto* sequence = make_kept<Sequence>("S", make_kept<Pause>("l"), make_kept<Pause>("r"));
  module->createCompileEnv();
  try {
    sequence->createEquations(module, module->getCompilation());
    FAIL();
  } catch (const StatementWireException& exception) {
    EXPECT_EQ(exception.first(), "set");
  }
  delete module;
}

/// The states of the signal bound to o's value, and of o where both are outputs.
std::string carrier_states(const Compiled& c, const std::vector<Stimulus>& stimuli) {
  const std::string carrier = c.module()->getDataTable()->begin()->first;
  EXPECT_NE(c.module()->getOutputLocalSignal(carrier), nullptr);
  Instants instants(c);
  std::string states;
  for (const Stimulus& stimulus : stimuli) {
    instants.step(stimulus);
    states += instants.state(carrier);
    EXPECT_EQ(instants.state(carrier), instants.state("o"));
  }
  return states;
}

TEST(Equations, ValuesGoWithTheirEmission) {
  const auto valued = [](const std::string& text) {
    return "data: Type: int; Constant: int 1; end data module main: Input: x; Output: o: int; " +
           text + " end";
  };
  const Compiled emission(valued("emit o(1) >> pause")), sustained(valued("sustain o(1) until x")),
      chosen(valued("if #o == 1 halt else pause"));
  ASSERT_TRUE(emission.ok() && sustained.ok() && chosen.ok());
  EXPECT_EQ(carrier_states(emission, {{{}, true}, {}}), "1_");
  EXPECT_EQ(carrier_states(sustained, {{{}, true}, {}, {{"x"}}}), "11_");
  const std::string condition = chosen.module()->getDataTable()->begin()->first;
  expect_equation(chosen, "_s_SETmainPS_0",
                  "(!_s_" + condition + " | _v_" + condition + ") & _s_SETmainIF_0");
}

/// Nodes ever made for so many parts, each put before or around the others.
long nodes_for(int parts, const std::string& before, const std::string& behind) {
  std::string body = "pause";
  for (int i = 0; i < parts; ++i) body = before + body + behind;
  const Compiled c("module main: Input: x; Output: o; " + body + " end");
  EXPECT_TRUE(c.ok()) << c.report();
  return c.wood()->my_bdd_manager()->Bdd_total_size();
}

TEST(Equations, TakeNodesAsTheTextTakesLines) {
  const std::pair<const char*, const char*> parts[] = {
      {"present x {pause >> emit o} else pause >> ", ""},
      {"{emit o >> pause || ", " >> emit o}"},
      {"{present x {pause >> ", "} else emit o} >> emit o"},
      {"emit o >> {emit o || pause} >> ", ""}};
  for (const auto& [before, behind] : parts)
    EXPECT_LT(nodes_for(160, before, behind), 2.6 * nodes_for(80, before, behind)) << before;
}

}  // namespace
}  // namespace kiva::test
