// Which tree a text makes.

#include "tarn/zu/statements/present.h"
#include "tests/zu/zu_fixture.h"

namespace kiva::test {

namespace {

using ZuPrecedence = ZuReading;

TEST_F(ZuPrecedence, Statements) {
  const std::pair<const char*, const char*> cases[] = {
      {"emit x >> emit y >> emit z", "Sn(emit x, emit y, emit z)"},
      {"emit x || emit y || emit z", "Pn(emit x, emit y, emit z)"},
      {"emit x || emit y >> emit z", "Pn(emit x, Sn(emit y, emit z))"},
      {"emit x >> emit y || emit z", "Pn(Sn(emit x, emit y), emit z)"},
      // Braces make no node, so a list on the left grows and one on the right is a member.
      {"emit l >> nothing >> {emit x >> emit y} >> emit z",
       "Sn(emit l, nothing, Sn(emit x, emit y), emit z)"},
      {"nothing || {emit x || emit y}", "Pn(nothing, Pn(emit x, emit y))"},
      // A brace right behind the head would open the module.
      {"loop {{emit x >> emit y} >> emit z}", "loop(Sn(emit x, emit y, emit z))"},
      {"wait 2 a >> pause", "Sn(wait a, wait a, pause)"},
      {"repeat 2 {pause} >> halt", "Sn(pause, pause, halt)"},
      {"loop { wait a >> emit x }", "loop(Sn(wait a, emit x))"},
      // Operators bind tighter than both lists.
      {"present a emit x >> emit y", "Sn(present a(emit x), emit y)"},
      {"present a emit x || emit y", "Pn(present a(emit x), emit y)"},
      {"present a emit x else emit y >> emit z", "Sn(present a(emit x, emit y), emit z)"},
      {"present a emit x else emit y || emit z", "Pn(present a(emit x, emit y), emit z)"},
      {"present a {emit x >> emit y}", "present a(Sn(emit x, emit y))"},
      {"weak abort { halt } when a >> pause", "Sn(weak(halt) when a, pause)"},
      {"strong abort { halt || pause } when a or b", "strong(Pn(halt, pause)) when (a+b)"},
      {"sustain x until a >> noemit l", "Sn(sustain x until a, noemit l)"},
      {"wait a and b >> emit x", "Sn(wait (a*b), emit x)"},
      // An else goes to the nearest head.
      {"present a present b emit x else emit y", "present a(present b(emit x, emit y))"},
      {"present a present b emit x else emit y else emit z",
       "present a(present b(emit x, emit y), emit z)"},
      {"present a {present b emit x} else emit y", "present a(present b(emit x), emit y)"},
      {"present a emit x else present b emit y else emit z",
       "present a(emit x, present b(emit y, emit z))"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(tree(text), expected) << text;
}

TEST_F(ZuPrecedence, SignalExpressions) {
  const std::pair<const char*, const char*> cases[] = {
      {"a or b and c", "(a+(b*c))"},
      {"a and b or c", "((a*b)+c)"},
      {"a or b or c", "((a+b)+c)"},
      {"a and b and c", "((a*b)*c)"},
      {"a and (b or c)", "(a*(b+c))"},
      {"not a and b", "(np a*b)"},
      {"not (a and b)", "np (a*b)"},
      {"abs not ~ a", "~np np a"},
      {"not abs a | b & TT", "(np ~a+(b*1))"},
      {"FF", "0"},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(tree(std::string("wait ") + text), std::string("wait ") + expected) << text;
}

TEST_F(ZuPrecedence, RightPartsOfEquations) {
  const std::pair<const char*, const char*> cases[] = {
      {"a or b and c", "(a+(b*c))"},
      {"a and b or c", "((a*b)+c)"},
      {"a or b nor c", "(~(a+b)*~c)"},
      {"a nor b or c", "((~a*~b)+c)"},
      {"a xor b", "((a*~b)+(~a*b))"},
      {"a nor b and c", "(~a*~(b*c))"},
      {"a xor b and c", "((a*~(b*c))+(~a*(b*c)))"},
      {"a nand b", "(~a+~b)"},
      {"a nand b and c", "((~a+~b)*c)"},
      {"not a and abs b", "(np a*~b)"},
      {"not (a or 1) or 0", "(np (a+1)+0)"},
  };
  for (const auto& [text, expected] : cases) {
    const auto* machine =
        dynamic_cast<MealyMachine*>(body(std::string("Mealy Machine x = ") + text + ";"));
    ASSERT_NE(machine, nullptr);
    EXPECT_EQ(tree_text(machine->getMachineTable().at("x")->expression), expected) << text;
  }
}

TEST_F(ZuPrecedence, DataExpressions) {
  const std::pair<const char*, const char*> cases[] = {
      {"p - q - r", "((p - q) - r)"},
      {"p + q * r", "(p + (q * r))"},
      {"p / q * r", "((p / q) * r)"},
      {"- p * q", "(-(p) * q)"},
      {"- p + q", "(-(p) + q)"},
      // From here on tighter than arithmetic.
      {"p + q == r", "(p + (q == r))"},
      {"p == q + r", "((p == q) + r)"},
      {"p * q < r", "(p * (q < r))"},
      {"p < q <= r", "((p < q) <= r)"},
      {"p != q > r >= p", "(((p != q) > r) >= p)"},
      {"p | q == r", "((p | q) == r)"},
      {"p == q | r", "(p == (q | r))"},
      {"p | q & r", "(p | (q && r))"},
      {"p & q | r", "((p && q) | r)"},
      {"- p & q", "-((p && q))"},
      {"not p & q", "(!(p) && q)"},
      {"not p == q", "(!(p) == q)"},
      {"(p + q) * r", "((p + q) * r)"},
      {"f(p, g.h(), #v) + #v", "(f(p, g.h(), #v) + #v)"},
      {"1 - -1.5 + \"a b\"", "((C__1 - C__-1.5) + C__a b)"},
  };
  read(
      "data: Type: int; Method: int f(int, int, int); int g.h();\n"
      "Constant: int p; int q; int r := 3; int 1; int -1.5; int \"a b\"; end data\n"
      "module none: end");
  ASSERT_EQ(thrown + outcome.err, "");
  for (const auto& [text, expected] : cases) {
    const auto* present = dynamic_cast<Present*>(body(std::string("if ") + text + " halt"));
    ASSERT_NE(present, nullptr) << text;
    std::ostringstream name;
    present->getExpression()->print(name);
    const DataBinding* binding = Compilation::ModTable()->get("m")->getBinding(name.str());
    ASSERT_NE(binding, nullptr) << text;
    std::string made = tree_text(binding->getValue());
    EXPECT_EQ(made, expected) << text;
  }
}

TEST_F(ZuPrecedence, IfIsAPresent) {
  read("data: Type: int; Constant: int p; end data module none: end");
  EXPECT_EQ(tree("if p emit x else emit y >> emit z"),
            "Sn(present IData_mIF_00(emit x, emit y), emit z)");
  EXPECT_EQ(tree("if p if p emit x else emit y"),
            "present IData_mIF_22(present IData_mIF_11(emit x, emit y))");
}

}  // namespace

}  // namespace kiva::test
