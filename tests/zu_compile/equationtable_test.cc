// The equation table by itself: single signals, whole tables, the report of a cycle.

#include "tarn/model/equationtable.h"

#include <gmock/gmock.h>

#include "tarn/model/compilation.h"
#include "tarn/model/expression.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tests/support/process_end.h"
#include "tests/zu_compile/compiled.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class Table : public testing::Test {
 protected:
  ~Table() override { Compilation::rules() = Rules::classic(); }

  Signal* add(const char* name, void (Signal::*mark)(bool), EquationTable* to = nullptr) {
    EquationTable* in = to == nullptr ? &table : to;
    auto* signal = make_kept<Signal>(name, &module, in->getBddexpressionWood());
    (signal->*mark)(true);
    if (mark == &Signal::setOutput) {
      module.addOutputSignal(signal);
    } else if (mark == &Signal::setInput) {
      module.addInputSignal(signal);
    } else {
      module.addLocalSignal(signal);
    }
    return signal;
  }
  Signal* output(const char* name) { return add(name, &Signal::setOutput); }
  Signal* input(const char* name) { return add(name, &Signal::setInput); }
  Signal* local(const char* name) { return add(name, &Signal::setLocal); }
  Signal* wire(const char* name) { return add(name, &Signal::setWire); }

  /// Two letters for the two rails of an occurrence: '0', '1', or '?' for a function.
  std::string rails(EquationTable& in, const std::string& name) {
    Bddexpressionwood* wood = in.getBddexpressionWood();
    std::string letters;
    for (const char* rail : {"_s_", "_v_"}) {
      const Bddexpression* e = wood->exp_by_index(wood->Index_var_by_name(rail + name));
      letters += e == nullptr                                 ? '-'
                 : wood->Bdd_is_tautology(e->my_bdd_exp(), 1) ? '1'
                 : wood->Bdd_is_tautology(e->my_bdd_exp(), 0) ? '0'
                                                              : '?';
    }
    return letters;
  }
  bdd function(EquationTable& in, const std::string& variable) {
    Bddexpressionwood* wood = in.getBddexpressionWood();
    return wood->exp_by_index(wood->Index_var_by_name(variable))->my_bdd_exp();
  }
  bdd variable(const std::string& name) { return wood()->Bdd_var_by_name(name); }
  Bddexpressionwood* wood() { return table.getBddexpressionWood(); }

  Module module{"main"};
  EquationTable& table = *module.getCompilation();
  TrueExpression yes;
  FalseExpression no;
  BottomExpression bottom;
};

TEST_F(Table, EquationsOfSignalsAndWires) {
  Signal* o = output("o");
  Signal* w = wire("w");
  for (Expression* e : {static_cast<Expression*>(&yes), static_cast<Expression*>(&no),
                        static_cast<Expression*>(&bottom)}) {
    table.createEquation(o, e, &module);
    table.createEquation(w, e, &module);
    EXPECT_EQ(rails(table, "o"), e == &yes ? "10" : e == &no ? "01" : "00");
    EXPECT_EQ(rails(table, "w"), e == &yes ? "1?" : "0?");
    EXPECT_EQ(function(table, "_v_w"), wood()->Bdd_not(variable("_s_w")));
  }
  EXPECT_EQ(wood()->exp_by_name("o")->getUserType(), Compilation::SOUTPUT);
  EXPECT_EQ(wood()->exp_by_name("w")->getUserType(), Compilation::SWIRE);
  EXPECT_EQ(wood()->exp_number(), 4) << "an equation replaces the one before";
}

TEST_F(Table, WritersJoinInBothRails) {
  Signal* o = output("o");
  table.createBottomEquation(o, &module);
  table.createUnifyEquation(o, &yes, &module, true);
  EXPECT_EQ(rails(table, "o"), "10");
  table.createUnifyEquation(o, &no, &module, true);
  EXPECT_EQ(rails(table, "o"), "11");
  Signal* silent = output("p");
  const Outcome outcome =
      run_captured([&] { table.createUnifyEquation(silent, &yes, &module, true); });
  EXPECT_EQ(outcome.err,
            "internal error 1 in createUnifyEquation()! about sid=2\n"
            "internal error 2 in createUnifyEquation()! about vid=3\n");
}

TEST_F(Table, InitialViewReadsTheWholeSignal) {
  Signal* o = output("o");
  table.createBottomEquation(o, &module);
  table.pre(&module);
  Signal* p = output("p");
  table.createEquation(p, o, &module, true);
  EXPECT_EQ(function(table, "_s_p"), variable("_s_o"));
  table.createEquation(p, o, &module, false);
  EXPECT_EQ(function(table, "_s_p"), variable("_s_o_1"));
}

TEST_F(Table, OccurrencesGatherInTheWhole) {
  Signal* o = output("o");
  Signal* l = local("l");
  wire("w");
  table.createEquation(o, &no, &module);
  table.createEquation(l, &yes, &module);
  for (int i = 0; i < 3; ++i) table.pre(&module);
  EXPECT_EQ(
      function(table, "_v_o"),
      wood()->Bdd_and(variable("_v_o_1"), wood()->Bdd_and(variable("_v_o_2"), variable("_v_o_3"))));
  EXPECT_EQ(
      function(table, "_s_o"),
      wood()->Bdd_or(variable("_s_o_1"), wood()->Bdd_or(variable("_s_o_2"), variable("_s_o_3"))));
  EXPECT_EQ(rails(table, "o_2"), "00");
  EXPECT_EQ(rails(table, "l"), "10");
  EXPECT_EQ(wood()->Index_var_by_name("_s_w_1"), -1);
  table.createBottomEquation(o, &module, 0);
  EXPECT_EQ(rails(table, "o"), "00");
  EXPECT_THROW(table.createBottomEquation(o, &module, 9), IllegalOperationException);
}

TEST_F(Table, PreStopsAtASignalWithoutEquation) {
  output("o");
  const Outcome outcome = run_captured([&] { table.pre(&module); });
  EXPECT_TRUE(outcome.ended);
  EXPECT_EQ(outcome.err, "undefined equation for status of :o\n");

  // A signal that the table has never heard of is no fault.
  Module other("other");
  auto* foreign = make_kept<Signal>("f", &other, other.getBddWood());
  foreign->setOutput();
  module.getOutputSignalList().clear();
  module.addOutputSignal(foreign);
  EXPECT_FALSE(run_captured([&] { table.pre(&module); }).ended);
}

TEST_F(Table, CondGuardsAllButWires) {
  Signal* c = input("c");
  table.createEquation(output("o"), &yes, &module);
  table.createEquation(local("l"), &no, &module);
  table.createEquation(wire("w"), &yes, &module);
  table.cond(c, &module);
  EXPECT_EQ(function(table, "_s_o"), variable("_v_c"));
  EXPECT_EQ(rails(table, "o"), "?0");
  EXPECT_EQ(function(table, "_v_l"), variable("_v_c"));
  EXPECT_EQ(rails(table, "w"), "1?");
}

TEST_F(Table, BranchesMeet) {
  Signal* x = input("x");
  Signal* y = input("y");
  Signal* o = output("o");
  for (bool sound : {false, true}) {
    Compilation::rules() = sound ? Rules::sound() : Rules::classic();
    table.createEquation(o, &bottom, &module);
    const std::unique_ptr<EquationTable> other(table.duplicate(&module));
    EXPECT_EQ(other->getBddexpressionWood()->exp_number(), wood()->exp_number());
    table.createUnifyEquation(o, x, &module, true);
    other->createUnifyEquation(o, y, &module, true);
    Signal* made_there = add(sound ? "w1" : "w0", &Signal::setWire, other.get());
    other->createEquation(made_there, &yes, &module);
    table.unify(other.get(), &module);
    // A signal without further occurrences is or-ed in both rails, by either rule.
    EXPECT_EQ(function(table, "_s_o"), wood()->Bdd_or(variable("_s_x"), variable("_s_y")));
    EXPECT_EQ(function(table, "_v_o"), wood()->Bdd_or(variable("_v_x"), variable("_v_y")));
    EXPECT_EQ(rails(table, made_there->getInternalName()), "1?");
    EXPECT_EQ(other->getBddexpressionWood(), nullptr);
  }
}

TEST_F(Table, BranchesMeetAfterUnequalWaits) {
  Signal* o = output("o");
  for (bool sound : {false, true}) {
    Compilation::rules() = sound ? Rules::sound() : Rules::classic();
    table.createEquation(o, &no, &module);
    o->setCurrentOccurrence(wood(), 0);
    std::unique_ptr<EquationTable> other(table.branch(&module));
    if (!sound) {
      other->pre(&module);
      other->pre(&module);
    }
    table.unify(other.get(), &module);
    if (sound) break;
    EXPECT_EQ(o->getCurrentOccurrence(wood()), 2);
    EXPECT_EQ(rails(table, "o"), "?1") << "True, or what the waits left";
    EXPECT_EQ(rails(table, "o_2"), "00");
  }
  // Now o has occurrences, and the other table makes another.
  Compilation::rules() = Rules::sound();
  o->setCurrentOccurrence(wood(), 2);
  table.createBottomEquation(o, &module, 0);
  wood()->exp_by_index(wood()->Index_var_by_name("_v_o"))->setBddExp(variable("_v_o_1"));
  std::unique_ptr<EquationTable> other(table.branch(&module));
  other->pre(&module);
  table.unify(other.get(), &module);
  EXPECT_EQ(function(table, "_v_o"), wood()->Bdd_and(variable("_v_o_1"), variable("_v_o_3")));
  EXPECT_EQ(function(table, "_s_o"), variable("_s_o_3"));
  EXPECT_EQ(o->getCurrentOccurrence(wood()), 3);
}

TEST_F(Table, UnifyWithAnEmptyTableOnlyDeletesIt) {
  table.createEquation(output("o"), &yes, &module);
  EquationTable empty;
  table.unify(&empty, &module);
  EXPECT_EQ(wood()->exp_number(), 2);
  EXPECT_EQ(wood()->Nb_bdd_vars(), 2);
}

TEST_F(Table, UnifyCarriesByNameBetweenManagers) {
  Signal* x = input("x");
  Signal* o = output("o");
  table.createEquation(o, &bottom, &module);
  EquationTable other;  // a manager of its own, in which the indices are others
  other.getBddexpressionWood()->New_var_last("unrelated");
  other.learnSignal(x, &module);
  other.learnSignal(o, &module);
  other.learnSignal(o, &module);
  EXPECT_EQ(o->getBddStatusId(&module, other.getBddexpressionWood()), 3);
  other.createEquation(o, x, &module);
  Signal* made_there = add("l", &Signal::setLocal, &other);
  other.createEquation(made_there, o, &module);
  table.unify(&other, &module);
  EXPECT_EQ(function(table, "_s_o"), variable("_s_x"));
  EXPECT_EQ(function(table, "_v_l"), variable("_v_o"));
  EXPECT_EQ(made_there->getCurrentOccurrence(wood()), 0);
  EXPECT_EQ(module.getSignalById(made_there->getBddValueId(&module, wood()), wood()), made_there);
}

TEST_F(Table, AddNeedsASignal) {
  EquationTable other;
  Bddexpressionwood* from = other.getBddexpressionWood();
  auto* e = new Bddexpression("n", from, from->New_var_last("_s_nobody"), from->Bdd_one(), 0, 0);
  EXPECT_THROW(table.add(e, &module), IllegalOperationException);
}

TEST_F(Table, ReplaceAndRemove) {
  Signal* o = output("o");
  Signal* p = output("p");
  table.replaceEquation(o, p, &module);
  EXPECT_EQ(function(table, "_s_o"), variable("_s_p"));
  EXPECT_EQ(wood()->exp_by_name("o")->getUserType(), Compilation::STAT);
  table.createEquation(o, &yes, &module);
  table.replaceEquation(o, p, &module);
  EXPECT_EQ(function(table, "_v_o"), variable("_v_p"));
  table.removeSignal(o);
  EXPECT_EQ(wood()->exp_number(), 0);
}

TEST_F(Table, DatesWithoutAWordAndEndsOnACycle) {
  Signal* o = output("o");
  Signal* p = output("p");
  table.createEquation(o, &yes, &module);
  table.createEquation(p, o, &module);
  const Outcome silent = run_captured([&] { EXPECT_EQ(table.callPert(), 2); });
  EXPECT_THAT(silent.out + silent.err, IsEmpty());
  table.createEquation(o, p, &module);
  const std::list<long> all{0, 1, 2, 3};
  const Outcome cycle = run_captured([&] { table.callPert(all); });
  EXPECT_EQ(cycle.exit_status, 1);
  EXPECT_EQ(cycle.err,
            "ERROR in Module `main': detecting variables in a dependance cycle:\n"
            "_s_o\n_v_o\n_s_p\n_v_p\n\n\nwhen sorting equations: \n"
            "_s_o = f(_s_p)\n\n_s_p = f(_s_o)\n\n_v_o = f(_v_p)\n\n_v_p = f(_v_o)\n\n\n");
  std::list<long> ids{0, 1, 2, 3};
  EXPECT_THAT(table.computeDependence(ids), HasSubstr("_v_o = f(_v_p)"));
  EXPECT_EQ(ids, (std::list<long>{1, 3})) << "the cycle of the first id is taken out";
}

TEST(Cycle, ReportNamesTheSourceLines) {
  const Compiled c(
      "module main: Output: a, b;\n"
      "{ loop {\n"
      "  pause ||\n"
      "  emit a  ;; here\n"
      "} }\n"
      "|| emit b\n"
      "end\n",
      Rules::classic());
  EXPECT_THAT(c.report(), HasSubstr("dependance cycle:\n"));
  EXPECT_THAT(c.report(), HasSubstr("main.zu:3:   pause ||\n"));
  EXPECT_THAT(c.report(), HasSubstr("main.zu:4:   emit a  ;; here\n"));
  EXPECT_THAT(c.report(), Not(HasSubstr("main.zu:6:")));
}

TEST(Refusals, LoopsThatWouldCopyWithoutEnd) {
  std::string body = "pause";
  for (int i = 0; i < 120; ++i) body = "loop { weak abort { " + body + " } when x }";
  const Compiled c("module main: Input: x; " + body + " end");
  EXPECT_THAT(c.report(), HasSubstr("too many copies of loop bodies"));
}

}  // namespace
}  // namespace kiva::test
