// The talk with an evaluation server: the bytes of each request, their order, and what the replies
// do to an instant.

#include "tarn/model/sexception.h"
#include "tests/server/valued_module.h"

namespace kiva::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// Answers each request with the number of its turn: 100, 101, ...
FakeServer::Answer counting() {
  return [turn = 100](const std::string&) mutable { return std::to_string(turn++); };
}

FakeServer::Answer always(const std::string& reply) {
  return [reply](const std::string&) { return reply; };
}

TEST_F(ValuedModule, SpellsOperators) {
  FakeServer server(always("true"));
  const struct {
    int op;
    const char* request;
  } binary[] = {{DataExpr::Plus, "BOP,3,int, + ,4,int"}, {DataExpr::Minus, "BOP,3,int, - ,4,int"},
                {DataExpr::Mult, "BOP,3,int, * ,4,int"}, {DataExpr::Div, "BOP,3,int, / ,4,int"},
                {DataExpr::And, "BOP,3,int, && ,4,int"}, {DataExpr::Or, "BOP,3,int, | ,4,int"},
                {DataExpr::Eq, "BOP,3,int, == ,4,int"},  {DataExpr::Neq, "BOP,3,int, != ,4,int"},
                {DataExpr::Inf, "BOP,3,int, < ,4,int"},  {DataExpr::Infe, "BOP,3,int, <= ,4,int"},
                {DataExpr::Sup, "BOP,3,int, > ,4,int"},  {DataExpr::Supe, "BOP,3,int, >= ,4,int"}};
  // The type part of the number is that of the writer, and plays no role.
  for (const auto& c : binary) {
    load(test_is(5), "5: %%" + std::to_string(15 * 7 + c.op) + "(0, 1);\n");
    instant(server.client(), "3", "4");
    EXPECT_THAT(server.take_requests(), ElementsAre(c.request));
    EXPECT_EQ(outcome.err, std::string("Socket_call buffer: ") + c.request + "\n");
  }
  load(test_is(5), "5: %%4(0);\n");
  instant(server.client(), "3");
  EXPECT_THAT(server.take_requests(), ElementsAre("UOP, -,3,int"));
  load(test_is(5), "5: %%7(0);\n");
  instant(server.client(), "yes");
  EXPECT_THAT(server.take_requests(), ElementsAre("UOP, !,yes,int"));
  EXPECT_EQ(test_state(), SignalState::one);
}

TEST_F(ValuedModule, AsksNestedRequestsFirstAndLeftBeforeRight) {
  FakeServer server(counting());
  // x = add(now(), (neg(a) * b)) - add(a, half)
  load(x_by_t1(10),
       "5: %0();\n6: %1(0);\n7: %%2(6, 1);\n8: %2(5, $7);\n9: %2(0, 4);\n10: %%1(8, 9);\n");
  instant(server.client(), "3", "4");
  EXPECT_THAT(server.take_requests(),
              ElementsAre("MC,now,", "MC,neg,3", "BOP,101,int, * ,4,int", "MC,add,100,102",
                          "MC,add,3,0.5", "BOP,103,int, - ,104,int"));
  EXPECT_EQ(x_text(), "105");
}

TEST_F(ValuedModule, AsksAConstantOnceAnInstantWhereItIsUsed) {
  FakeServer server(counting());
  load(test_is(5) + x_by_t1(6), "5: %%0(3, 3);\n6: %2(3, 4);\n7: %1(0);\n");
  // A test that reads no signal takes its value from no binding: its equations are not abstract.
  instant(server.client(), "3");
  EXPECT_THAT(server.take_requests(), ElementsAre("CONST,limit", "MC,add,100,0.5"));
  load(test_is(7) + x_by_t1(6), "5: %%0(0, 3);\n6: %2(3, 4);\n7: %%10(5, 3);\n");
  for (int instants = 0; instants < 2; ++instants) instant(server.client(), "3");
  EXPECT_THAT(server.take_requests(),
              ElementsAre("CONST,limit", "BOP,3,int, + ,102,int", "BOP,103,int, < ,102,int",
                          "MC,add,102,0.5",  //
                          "CONST,limit", "BOP,3,int, + ,106,int", "BOP,107,int, < ,106,int",
                          "MC,add,106,0.5"));
  instant(server.client(), std::nullopt);
  EXPECT_THAT(server.take_requests(),
              ElementsAre("CONST,limit", "BOP,--,int, + ,110,int", "BOP,111,int, < ,110,int"));
}

TEST_F(ValuedModule, TakesTruthFromTwoTextsOnly) {
  std::string reply;
  FakeServer server([&](const std::string&) { return reply; });
  load(test_is(5), "5: %1(0);\n");
  for (const auto& [text, state] :
       {std::pair{"true", SignalState::one}, std::pair{"false", SignalState::zero},
        std::pair{"True", SignalState::bottom}, std::pair{"true ", SignalState::bottom},
        std::pair{"1", SignalState::bottom}, std::pair{"--", SignalState::bottom}}) {
    reply = text;
    instant(server.client(), "3");
    EXPECT_EQ(test_state(), state) << text;
  }
}

TEST_F(ValuedModule, GivesAnOutputTheFirstBindingThatIsTriggered) {
  FakeServer server([](const std::string& request) { return "[" + request + "]"; });
  load(x_by_t2(6) + x_by_t1(5), "5: %1(0);\n6: %1(1);\n");
  EXPECT_EQ(x_text(), "--");
  instant(server.client(), "3", "4");
  EXPECT_EQ(x_text(), "[MC,neg,3]") << "t1 stands before t2 in the table, not in the file";
  EXPECT_THAT(server.take_requests(), ElementsAre("MC,neg,3"));
  instant(server.client(), std::nullopt, "4");
  EXPECT_EQ(x_text(), "[MC,neg,4]");
  instant(server.client(), std::nullopt);
  EXPECT_EQ(x_text(), "[MC,neg,4]") << "an absent output keeps its text";
  simulation->initialise();
  EXPECT_EQ(x_text(), "--");
}

TEST_F(ValuedModule, TellsOfAPresentOutputWithoutValue) {
  const std::string complaint =
      "***error:FenPrincipale:Simuler:  valued output with an undefined value:x\n";
  load(x_by_t1(0), "");
  instant(nullptr, std::nullopt, "4");
  EXPECT_EQ(outcome.err, complaint);
  EXPECT_EQ(x_text(), "--");
  // A literal and a signal's value need no server; "--" as typed is no value.
  instant(nullptr, "3");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(x_text(), "3");
  instant(nullptr, "--");
  EXPECT_THAT(outcome.err, HasSubstr("signal: a  has no value\n" + complaint));
  EXPECT_EQ(x_text(), "--");

  // A trigger that some equation reads triggers nothing.
  load(x_by_t1(0) + x_by_t2(1), "", "2 0 18:1,1,( )\n");
  instant(nullptr, "3", "4");
  EXPECT_EQ(x_text(), "4");
}

TEST_F(ValuedModule, ReadsAValuedLocalThroughItsBinding) {
  FakeServer server(counting());
  load(l_by_t1(5) + x_by_t2(6), "5: %1(0);\n6: %%0(2, 2);\n");
  // The trigger's value entry runs behind its status entry: in the first instant it is unknown
  // there, so the binding does not fire and each read asks for itself.
  instant(server.client(), "3", "4");
  EXPECT_THAT(server.take_requests(),
              ElementsAre("MC,neg,3", "MC,neg,3", "BOP,100,int, + ,101,int"));
  EXPECT_THAT(outcome.err, HasSubstr("Value:100\n"));
  // From now on it fires as its equation runs, and the reads find the value.
  instant(server.client(), "5", "4");
  EXPECT_THAT(server.take_requests(), ElementsAre("MC,neg,5", "BOP,103,int, + ,103,int"));
  EXPECT_THAT(outcome.err, Not(HasSubstr("Value:")));
  instant(server.client(), std::nullopt, "4");
  EXPECT_THAT(server.take_requests(), ElementsAre("BOP,--,int, + ,--,int"));
  EXPECT_THAT(outcome.err, HasSubstr("signal: l  has no value\n"));
}

TEST_F(ValuedModule, WarnsOfACommaInAValue) {
  FakeServer server(always("5,6"));
  load(x_by_t1(5) + test_is(7), "5: %1(0);\n6: %1(1);\n7: %%0(6, 1);\n");
  instant(server.client(), "1,2", "4");
  EXPECT_THAT(server.take_requests(),
              ElementsAre("MC,neg,4", "BOP,5,6,int, + ,4,int", "MC,neg,1,2"));
  EXPECT_THAT(outcome.err,
              HasSubstr("Warning: a value text holds a comma in request: MC,neg,1,2\n"));
  EXPECT_THAT(outcome.err,
              HasSubstr("Warning: a value text holds a comma in request: BOP,5,6,int, + ,4,int\n"));
  EXPECT_THAT(outcome.err, Not(HasSubstr("in request: MC,neg,4")));
  EXPECT_EQ(x_text(), "5,6");
}

TEST_F(ValuedModule, ReadsAReplyUpTo1023Bytes) {
  size_t length = 1022;
  FakeServer server([&](const std::string&) { return std::string(length, '7'); });
  load(x_by_t1(5), "5: %1(0);\n");
  instant(server.client(), "3");
  EXPECT_EQ(x_text().size(), 1022u);
  EXPECT_THAT(outcome.err, Not(HasSubstr("Warning")));
  length = 1023;
  instant(server.client(), "3");
  EXPECT_EQ(x_text().size(), 1023u);
  length = 2000;
  instant(server.client(), "4");
  EXPECT_EQ(x_text().size(), 1023u);
  EXPECT_THAT(outcome.err, HasSubstr("Warning: reply of 1023 bytes or more to request: MC,neg,4"));
}

TEST_F(ValuedModule, EndsAtSignalsAndConstantsThatTheInstantDoesNotKnow) {
  load("", "");
  ValueTexts values;
  ConstantTexts constants;
  DataConstant limit(0), beyond(99);
  DataSignalValue unlisted(module->getInputSignal("a"));
  std::vector<int> context(40, 2);
  const auto evaluate = [&](DataExpr& e) {
    return run_captured([&] { e.Simul_put(module, &constants, &values, context.data(), nullptr); });
  };
  Outcome end = evaluate(limit);
  EXPECT_EQ(end.err, "***error: DataConstant::Simul_put: undefined constant:limit\n");
  EXPECT_EQ(end.exit_status, 1);
  EXPECT_TRUE(evaluate(beyond).ended);
  end = evaluate(unlisted);
  EXPECT_EQ(
      end.err,
      "***error: DataSignalValue:Simul_put: signal: a  undefined in  data signal value table\n");
  EXPECT_EQ(end.exit_status, 1);
}

TEST_F(ValuedModule, EndsAtAnAbstractEquationWithoutBinding) {
  load("", "", "1 0 12:-3,1,(0 )\n1 0 13:-3,1,(0 )\n");
  instant(nullptr, "3");
  EXPECT_EQ(outcome.err, "***error:FenPrincipale::Simuler(): No binding for signal:test\n");
  EXPECT_EQ(outcome.exit_status, 1);
}

TEST_F(ValuedModule, AnInstantThatAnExceptionEndsHasNotTakenPlace) {
  // l takes its value from an expression that reads l.
  load(l_by_t1(5) + x_by_t2(2), "5: %1(2);\n");
  instant(nullptr, std::nullopt, std::nullopt);
  simulation->choose_input(0, SignalState::one);
  simulation->choose_input(1, SignalState::one);
  const SimulationState before = simulation->state();
  try {
    run_captured([&] { simulation->step(nullptr); });
    FAIL() << "l reads itself";
  } catch (const IllegalOperationException& exception) {
    EXPECT_EQ(exception.second(), "l l");
  }
  EXPECT_EQ(simulation->state(), before);
  instant(nullptr, "3");  // l is not read now: nothing fires in the first instant of its trigger
  EXPECT_EQ(register_state(), SignalState::one);
}

}  // namespace
}  // namespace kiva::test
