// Where statements, states, transitions and equations say that they stand.

#include "tests/zu/zu_fixture.h"

namespace kiva::test {

namespace {

using ZuPositions = ZuReading;

std::string extent(const SourceSpan& span) {
  return std::to_string(span.first_line) + ":" + std::to_string(span.first_column) + "-" +
         std::to_string(span.last_line) + ":" + std::to_string(span.last_column);
}

/// Spans, depth first, a statement before its children.
std::string extents(const Statement* statement) {
  std::string text = extent(statement->getSpan());
  for (const Statement* child : statement->children()) text += " " + extents(child);
  return text;
}

TEST_F(ZuPositions, Statements) {
  Module* m = module(
      "module m: Input: a, b; Output: x; ;; comment\n"
      "  emit x >> present a and\n"
      "\tb\n"
      "    pause || nothing >>\n"
      "  loop { wait 2 a }\n"
      "end\n");
  const Statement* root = m->getStatement();
  EXPECT_EQ(tree_text(root),
            "Pn(Sn(emit x, present (a*b)(pause)), Sn(nothing, loop(Sn(wait a, wait a))))");
  EXPECT_EQ(extents(root),
            "2:3-5:19 2:3-4:9 2:3-2:8 2:13-4:9 4:5-4:9 "
            "4:14-5:19 4:14-4:20 5:3-5:19 5:10-5:17 5:10-5:17 5:10-5:17");
  EXPECT_EQ(*root->getSpan().file, file);
  EXPECT_EQ(root->getSpan().text(), file + ":2:3");
}

TEST_F(ZuPositions, AListGrowsWithItsMembers) {
  EXPECT_EQ(extent(module("module m: pause >>\npause\n>> {pause}\nend")->getStatement()->getSpan()),
            "1:11-3:10");
}

TEST_F(ZuPositions, CopiesStandWhereTheirOriginalsDo) {
  const Statement* root = module("module m:\nrepeat 2 { pause >>\n halt } end")->getStatement();
  EXPECT_EQ(extents(root), "2:1-3:7 2:12-3:5 2:12-2:16 3:2-3:5 2:12-3:5 2:12-2:16 3:2-3:5");
}

TEST_F(ZuPositions, AnEmptyBodyIsAPoint) {
  EXPECT_EQ(extent(module("module m:\n\n end")->getStatement()->getSpan()), "1:9-1:9");
}

TEST_F(ZuPositions, StatesAndTransitions) {
  const Statement* automaton = module(
                                   "module m: Input: a; automaton\n"
                                   "state: s\n"
                                   "  run n;\n"
                                   "transition:\n"
                                   "  initial-> s;\n"
                                   "  s [a] ->\n"
                                   "    t;\n"
                                   "end")
                                   ->getStatement();
  EXPECT_EQ(extent(automaton->getSpan()), "1:21-7:6");
  const auto& states = *automaton->getStateTable();
  EXPECT_EQ(extent(states.at("s")->span), "2:1-3:8");
  EXPECT_EQ(extents(automaton->children().front()), "3:3-3:7");
  const auto& transitions = *automaton->getTransitionList();
  EXPECT_EQ(extent(transitions.front()->span), "5:3-5:14");
  EXPECT_EQ(extent(transitions.back()->span), "6:3-7:6");
  EXPECT_EQ(extent(states.at("t")->span), "6:3-7:6");  // named by a transition only
}

TEST_F(ZuPositions, Equations) {
  const auto* machine = dynamic_cast<MealyMachine*>(
      module("module m: Input: a; Output: x, y; Mealy Machine\n x = a\n and a;\ny = 0; end")
          ->getStatement());
  EXPECT_EQ(extent(machine->getMachineTable().at("x")->span), "2:2-3:6");
  EXPECT_EQ(extent(machine->getMachineTable().at("y")->span), "4:1-4:5");
}

}  // namespace

}  // namespace kiva::test
