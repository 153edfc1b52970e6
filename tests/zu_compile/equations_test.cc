// The equations of each small statement, as functions, against tables written by hand. A rail is
// named as its variable: "_s_" status, "_v_" value.

#include <gtest/gtest.h>

#include "tarn/model/arena.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/statements/halt.h"
#include "tarn/zu/statements/nothing.h"
#include "tarn/zu/statements/pause.h"
#include "tarn/zu/statements/parallel.h"
#include "tarn/zu/statements/sequence.h"
#include "tests/zu_compile/compiled.h"

namespace kiva::test {
namespace {

using Bits = std::vector<bool>;

std::string body(const std::string& text) {
  return "module main: Input: x; Output: o; " + text + " end";
}

TEST(Equations, OuterWiresAndPause) {
  const Compiled c(body("pause"));
  const auto copies = [](const Bits& b) { return b[0]; };
  const auto negates = [](const Bits& b) { return !b[0]; };
  expect_equation(c, "_s_SETmainPS_0", {"_s_SETmain"}, copies);
  expect_equation(c, "_s_RESETmainPS_0", {"_s_RESETmain"}, copies);
  expect_equation(c, "_s_RTLmain", {"_s_RTLmainPS_0"}, copies);
  expect_equation(c, "_s_RTLmainPS_0", {"_s_ACTIFmainPS_0"}, copies);
  // Wires and registers are True or False.
  expect_equation(c, "_v_SETmainPS_0", {"_s_SETmainPS_0"}, negates);
  expect_equation(c, "_v_RTLmainPS_0", {"_s_RTLmainPS_0"}, negates);
  expect_equation(c, "_v_ACTIFmainPS_0", {"_s_ACTIFmainPS_0"}, negates);
  expect_equation(c, "_v_ACTIFPLUSmainPS_0", {"_s_ACTIFPLUSmainPS_0"}, negates);
  expect_equation(c, "_s_ACTIFPLUSmainPS_0", {"_s_SETmainPS_0", "_v_RESETmainPS_0"},
                  [](const Bits& b) { return b[0] && b[1]; });
  EXPECT_TRUE(c.module()->getSet()->isWire());
}

TEST(Equations, EmissionAndItsOccurrences) {
  const Compiled c(body("emit o >> pause >> noemit o"));
  const auto present = [](const Bits& b) { return b[0] && !b[1]; };
  const auto never = [](const Bits&) { return false; };
  expect_equation(c, "_s_o_1", {"_s_RTLmainE_0", "_v_RTLmainE_0"}, present);
  expect_equation(c, "_v_o_1", {}, never);
  expect_equation(c, "_s_o_2", {}, never);
  expect_equation(c, "_v_o_2", {"_s_RTLmainNE_0", "_v_RTLmainNE_0"}, present);
  expect_equation(c, "_s_o", {"_s_o_1", "_s_o_2"}, [](const Bits& b) { return b[0] || b[1]; });
  expect_equation(c, "_v_o", {"_v_o_1", "_v_o_2"}, [](const Bits& b) { return b[0] && b[1]; });
  expect_equation(c, "_s_SETmainPS_0", {"_s_RTLmainE_0"}, [](const Bits& b) { return b[0]; });
  expect_equation(c, "_s_RTLmainSn_0", {"_s_RTLmainNE_0"}, [](const Bits& b) { return b[0]; });
}

TEST(Equations, Wait) {
  const Compiled c(body("wait x"));
  expect_equation(c, "_s_RTLmainW_0", {"_s_ACTIFmainW_0", "_s_x"},
                  [](const Bits& b) { return b[0] && b[1]; });
  expect_equation(c, "_s_ACTIFPLUSmainW_0",
                  {"_s_SETmainW_0", "_v_RESETmainW_0", "_s_ACTIFmainW_0", "_s_x", "_v_x"},
                  [](const Bits& b) {
                    const bool x_is_one = b[3] && !b[4];
                    return b[1] && (b[0] || (b[2] && !x_is_one));
                  });
}

TEST(Equations, SustainUnderBothRules) {
  const std::vector<std::string> rails{
      "_s_ACTIFmainSU_0", "_v_ACTIFmainSU_0", "_s_SETmainSU_0", "_v_SETmainSU_0", "_s_x", "_v_x"};
  const auto status = [](const Bits& b) { return (b[0] || b[2]) && (!b[4] || b[5]); };
  const auto value = [](const Bits& b) { return (b[1] && b[3]) || b[4]; };
  const Compiled classic(body("sustain o until x"), Rules::classic());
  expect_equation(classic, "_s_o_1", rails, status);
  expect_equation(classic, "_v_o_1", rails, value);
  const Compiled sound(body("sustain o until x"));
  expect_equation(sound, "_s_o_1", rails, [&](const Bits& b) { return status(b) && !value(b); });
  expect_equation(sound, "_v_o_1", {}, [](const Bits&) { return false; });
  // The register gives the value of a sustain's state, not an equation.
  const Bddexpressionwood* wood = sound.wood();
  EXPECT_EQ(wood->exp_by_index(wood->Index_var_by_name("_v_ACTIFmainSU_0")), nullptr);
}

TEST(Equations, PresentWithAndWithoutElse) {
  const auto taken = [](const Bits& b) { return b[0] && !b[1] && b[2]; };
  const auto skipped = [](const Bits& b) { return (!b[0] || b[1]) && b[2]; };
  const Compiled with(body("present x halt else pause"));
  expect_equation(with, "_s_SETmainH_0", {"_s_x", "_v_x", "_s_SETmainPR_0"}, taken);
  expect_equation(with, "_s_SETmainPS_0", {"_s_x", "_v_x", "_s_SETmainPR_0"}, skipped);
  expect_equation(with, "_s_RTLmainPR_0", {"_s_RTLmainH_0", "_s_RTLmainPS_0"},
                  [](const Bits& b) { return b[0] || b[1]; });
  const Compiled without(body("present x halt"));
  expect_equation(without, "_s_RTLmainPR_0", {"_s_x", "_v_x", "_s_SETmainPR_0", "_s_RTLmainH_0"},
                  [&](const Bits& b) { return b[3] || skipped(b); });
}

TEST(Equations, Loop) {
  const Compiled c(body("loop { pause }"));
  expect_equation(c, "_s_SETmainPS_0", {"_s_SETmainL_0", "_s_RTLmainPS_0"},
                  [](const Bits& b) { return b[0] || b[1]; });
  expect_equation(c, "_s_RTLmainL_0", {}, [](const Bits&) { return false; });
  EXPECT_EQ(c.wood()->Index_var_by_name("_s_SETmainPS_0_bis"), -1) << "needs no copy";
  const Compiled copied(body("loop { pause || pause >> nothing }"));
  EXPECT_EQ(copied.wood()->Index_var_by_name("_s_SETmainPS_0_bis"), -1) << "needs no copy";
  const Compiled twice(body("loop { weak abort { pause } when x }"));
  expect_equation(twice, "_s_SETmainA_0_bis", {"_s_RTLmainA_0"},
                  [](const Bits& b) { return b[0]; });
}

TEST(Equations, WeakAbort) {
  const std::string text = body("weak abort { pause } when x");
  const auto not_one = [](bool s, bool v) { return !s || v; };
  for (bool sound : {false, true}) {
    const Compiled c(text, sound ? Rules::sound() : Rules::classic());
    expect_equation(c, "_s_SETmainPS_0", {"_s_SETmainA_0"}, [](const Bits& b) { return b[0]; });
    expect_equation(c, "_s_RESETmainPS_0",
                    {"_s_ACTIFmainA_0", "_v_RESETmainA_0", "_s_x", "_s_RESETmainA_0"},
                    [](const Bits& b) { return (b[0] && b[1] && b[2]) || b[3]; });
    expect_equation(c, "_s_RTLmainA_0", {"_s_RTLmainPS_0", "_s_x", "_v_x", "_s_ACTIFmainA_0"},
                    [&](const Bits& b) {
                      const bool body_ends = b[0] && (sound || not_one(b[1], b[2]));
                      return body_ends || (b[1] && b[3]);
                    });
    expect_equation(
        c, "_s_ACTIFPLUSmainA_0",
        {"_v_RESETmainA_0", "_s_ACTIFmainA_0", "_s_x", "_v_x", "_s_SETmainA_0", "_v_RTLmainPS_0"},
        [&](const Bits& b) { return b[0] && ((b[1] && not_one(b[2], b[3])) || b[4]) && b[5]; });
  }
}

TEST(Equations, StrongAbortMasks) {
  const std::string text = body("emit o >> strong abort { emit o >> halt } when x");
  const std::vector<std::string> rails{"_s_RTLmainE_0",   "_v_RTLmainE_0", "_s_RTLmainE_1",
                                       "_v_RTLmainE_1",   "_s_x",          "_v_x",
                                       "_s_ACTIFmainSA_0"};
  const auto before = [](const Bits& b) { return b[0] && !b[1]; };
  const auto inside = [](const Bits& b) { return b[2] && !b[3]; };
  const auto mask = [](const Bits& b) { return b[5] || !b[4] || !b[6]; };
  expect_equation(Compiled(text, Rules::classic()), "_s_o_1", rails,
                  [&](const Bits& b) { return mask(b) && (before(b) || inside(b)); });
  expect_equation(Compiled(text), "_s_o_1", rails,
                  [&](const Bits& b) { return before(b) || (mask(b) && inside(b)); });
  expect_equation(Compiled(body("strong abort { emit o } when FF")), "_s_o_1",
                  {"_s_RTLmainE_0", "_v_RTLmainE_0"}, before);
}

TEST(Equations, ParallelOfMany) {
  const Compiled c(body("pause || pause || pause"));
  expect_equation(c, "_s_RTLmainPn_00", {"_s_ACTIFmainPn_00", "_s_RTLmainPS_0"},
                  [](const Bits& b) { return b[0] || b[1]; });
  expect_equation(c, "_s_RTLmainPn_02", {"_s_ACTIFmainPn_02", "_s_RTLmainPS_2", "_s_RTLmainPn_01"},
                  [](const Bits& b) { return (b[0] || b[1]) && b[2]; });
  expect_equation(c, "_s_RTLmainPn_0", {"_s_RTLmainPn_02"}, [](const Bits& b) { return b[0]; });
  expect_equation(c, "_s_ACTIFPLUSmainPn_01",
                  {"_s_ACTIFmainPn_01", "_s_RTLmainPS_1", "_v_RTLmainPn_0", "_v_RESETmainPn_0"},
                  [](const Bits& b) { return (b[0] || b[1]) && b[2] && b[3]; });
}

TEST(Equations, ParallelOfTwo) {
  auto* module = make_kept<Module>("main");
  module->addBodyStatement(
      make_kept<Parallel>("P", make_kept<Pause>("left"), make_kept<Pause>("right")));
  const Compiled c(module);
  const auto with = [](const char* other) {
    return std::vector<std::string>{"_s_ACTIFP",    "_v_ACTIFP",   "_s_ACTIFBISP",
                                    "_v_ACTIFBISP", "_s_RTLleft",  "_v_RTLleft",
                                    "_s_RTLright",  "_v_RTLright", other};
  };
  // The two rails of a wire or register say the same; elsewhere the table says nothing.
  const auto on_states = [](auto expected) {
    return [expected](const Bits& b) {
      const bool A = b[0], not_A = b[1], B = b[2], not_B = b[3];
      const bool L = b[4], not_L = b[5], R = b[6], not_R = b[7];
      return expected(A, not_A, B, not_B, L, not_L, R, not_R, b[8]);
    };
  };
  expect_equation(c, "_s_RTLP", with("_v_RESETP"),
                  on_states([](bool A, bool nA, bool B, bool nB, bool L, bool, bool R, bool, bool) {
                    return (nA && nB && L && R) || (A && nB && R) || (B && nA && L);
                  }));
  expect_equation(c, "_s_ACTIFPLUSP", with("_v_RESETP"),
                  on_states([](bool A, bool, bool, bool nB, bool L, bool, bool, bool nR, bool run) {
                    return run && nR && (A || (L && nB));
                  }));
  expect_equation(c, "_s_ACTIFBISPLUSP", with("_v_RESETP"),
                  on_states([](bool, bool nA, bool B, bool, bool, bool nL, bool R, bool, bool run) {
                    return run && nL && (B || (R && nA));
                  }));
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

std::string valued(const std::string& text) {
  return "data: Type: int; Constant: int 1; end data module main: Input: x; Output: o: int; " +
         text + " end";
}

/// The names of the signals bound to values, in table order.
std::vector<std::string> bound_signals(const Compiled& c) {
  std::vector<std::string> names;
  for (const auto& [name, binding] : *c.module()->getDataTable()) names.push_back(name);
  return names;
}

TEST(Equations, ValuesGoWithTheirEmission) {
  const Compiled emission(valued("emit o(1) >> pause"));
  ASSERT_TRUE(emission.ok()) << emission.report();
  const std::string carrier = bound_signals(emission).at(0);
  const Signal* local = emission.module()->getLocalSignal(carrier);
  ASSERT_NE(local, nullptr);
  const std::string current = local->getName(emission.module());
  expect_equation(emission, "_s_" + current, {"_s_RTLmainE_0", "_v_RTLmainE_0"},
                  [](const Bits& b) { return b[0] && !b[1]; });
  // It has no further stages: what is bound is bound once.
  Instants instants(emission);
  instants.step({{}, true, false});
  EXPECT_EQ(instants.state(carrier), '1');
  instants.step({});
  EXPECT_EQ(instants.state(carrier), '_');

  const Compiled sustained(valued("sustain o(1) until x"));
  ASSERT_TRUE(sustained.ok()) << sustained.report();
  const std::string output = bound_signals(sustained).at(0);
  EXPECT_NE(sustained.module()->getOutputSignal(output), nullptr);
  Instants going(sustained);
  const auto expect_both = [&](char state) {
    EXPECT_EQ(going.state(output), state);
    EXPECT_EQ(going.state("o"), state);
  };
  going.step({{}, true, false});
  expect_both('1');
  going.step({});
  expect_both('1');
  going.step({{"x"}});
  expect_both('_');
}

TEST(Equations, AnIfLooksAtItsDataSignal) {
  const Compiled c(valued("if #o == 1 halt else pause"));
  ASSERT_TRUE(c.ok()) << c.report();
  const std::string condition = bound_signals(c).at(0);
  expect_equation(c, "_s_SETmainPS_0", {"_s_" + condition, "_v_" + condition, "_s_SETmainIF_0"},
                  [](const Bits& b) { return (!b[0] || b[1]) && b[2]; });
}

}  // namespace
}  // namespace kiva::test
