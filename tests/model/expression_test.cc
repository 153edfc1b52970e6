// Four-valued expressions: the rails of each operator over all pairs of states, against tables
// written from what the operators mean.

#include "tarn/model/expression.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "tarn/model/module.h"
#include "tarn/model/sexception.h"

namespace kiva::test {
namespace {

struct Rails {
  bool status, value;
  friend bool operator==(const Rails&, const Rails&) = default;
};
constexpr Rails True{true, false}, False{false, true}, Bottom{false, false}, Error{true, true};
constexpr Rails all[] = {True, False, Bottom, Error};

void PrintTo(const Rails& rails, std::ostream* out) {
  *out << '(' << rails.status << ", " << rails.value << ')';
}

class Expressions : public testing::Test {
 protected:
  Expressions() : module("expressions"), wood(module.getBddWood()) {
    for (const char* name : {"x", "y"}) {
      Signal* signal = new Signal(name, &module, wood);
      signal->setOutput();
      signals.emplace_back(signal);
    }
  }
  Signal* x() { return signals[0].get(); }
  Signal* y() { return signals[1].get(); }

  /// The rails of `e` where x and y, in their occurrence 0, are as given and later occurrences are
  /// Bottom.
  Rails evaluate(Expression& e, Rails at_x, Rails at_y, bool initial = false) {
    std::vector<int> literals(static_cast<size_t>(wood->my_bdd_manager()->Nb_bdd_vars()), 0);
    literals[0] = at_x.status;
    literals[1] = at_x.value;
    literals[2] = at_y.status;
    literals[3] = at_y.value;
    const auto truth = [&](const bdd& f) {
      return wood->my_bdd_manager()->Bdd_eval_for_literal(f, literals.data()) == 1;
    };
    return initial
               ? Rails{truth(e.getInitialBddStatus(&module, wood)),
                       truth(e.getInitialBddValue(&module, wood))}
               : Rails{truth(e.getBddStatus(&module, wood)), truth(e.getBddValue(&module, wood))};
  }
  void expect(Expression& e, const std::function<Rails(Rails, Rails)>& meaning) {
    std::ostringstream text;
    e.print(text);
    for (Rails a : all)
      for (Rails b : all) {
        EXPECT_EQ(evaluate(e, a, b), meaning(a, b)) << text.str();
        EXPECT_EQ(evaluate(e, a, b, true), meaning(a, b)) << text.str();
      }
  }

  Module module;
  Bddexpressionwood* wood;
  std::vector<std::unique_ptr<Signal>> signals;
};

TEST_F(Expressions, HaveTheRailsOfTheirMeaning) {
  AndExpression meet(x(), y());
  expect(meet, [](Rails a, Rails b) { return Rails{a.status && b.status, a.value || b.value}; });
  OrExpression join(x(), y());
  expect(join, [](Rails a, Rails b) { return Rails{a.status || b.status, a.value && b.value}; });
  NotExpression inverse(x());
  expect(inverse, [](Rails a, Rails) { return Rails{a.value, a.status}; });
  NpExpression absent(x());
  expect(absent, [](Rails a, Rails) { return a == True ? False : a == Error ? Error : True; });
  ThenExpression then(x(), y());
  expect(then, [](Rails a, Rails b) { return a == True ? b : Bottom; });
  ElseExpression otherwise(x(), y());
  expect(otherwise, [](Rails a, Rails b) { return a == True ? Bottom : b; });
  CondExpression cond(y(), x());
  expect(cond, [](Rails a, Rails b) { return a == True ? b : Bottom; });
}

TEST_F(Expressions, ReadTheLatestOrTheInitialOccurrence) {
  x()->newOccurrence(wood, &module);
  // The latest occurrence is Bottom here, occurrence 0 is as given.
  EXPECT_EQ(evaluate(*x(), True, Bottom), Bottom);
  EXPECT_EQ(evaluate(*x(), True, Bottom, true), True);
  // The guard of Cond keeps the current value in the initial view: x_1 is not Zero, so only the
  // status of occurrence 0 counts.
  CondExpression cond(y(), x());
  EXPECT_EQ(evaluate(cond, Error, True, true), True);
  EXPECT_EQ(evaluate(cond, Error, True), Bottom);
}

TEST_F(Expressions, FoldConstants) {
  TrueExpression t;
  FalseExpression f;
  BottomExpression b;
  ErrorExpression e;
  Expression* const constants[] = {&t, &f, &b, &e};
  // Rows: the operation's left side; columns: True, False, Bottom, Error. A letter is the constant
  // the result is; capitals: a new object.
  const auto kind = [](const Expression* result) {
    return result->isTrueExpr()     ? 't'
           : result->isFalseExpr()  ? 'f'
           : result->isBottomExpr() ? 'b'
                                    : 'e';
  };
  const char* const plus[] = {"tEte", "Effe", "tfbe", "eeee"};
  const char* const mult[] = {"tBbt", "Bfbf", "bbbb", "tfbe"};
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column) {
      for (bool sum : {true, false}) {
        Expression* result = sum ? constants[row]->plus(constants[column], &module)
                                 : constants[row]->mult(constants[column], &module);
        const char wanted = (sum ? plus : mult)[row][column];
        EXPECT_EQ(kind(result), std::tolower(wanted)) << sum << row << column;
        const bool fresh =
            std::find(std::begin(constants), std::end(constants), result) == std::end(constants);
        EXPECT_EQ(fresh, std::isupper(wanted) != 0) << sum << row << column;
      }
    }
  EXPECT_EQ(x()->plus(&b, &module), x());
  EXPECT_EQ(x()->plus(&f, &module), x());
  EXPECT_EQ(x()->plus(&t, &module), &t);
  EXPECT_EQ(x()->mult(&e, &module), x());
  EXPECT_EQ(x()->mult(&f, &module), &f);
  EXPECT_EQ(t.plus(x(), &module), &t);
  EXPECT_EQ(f.mult(x(), &module), &f);
  EXPECT_EQ(f.plus(x(), &module), x());
  EXPECT_NE(dynamic_cast<OrExpression*>(x()->plus(y(), &module)), nullptr);
  EXPECT_NE(dynamic_cast<AndExpression*>(x()->mult(y(), &module)), nullptr);
}

TEST_F(Expressions, PrintTheRails) {
  const auto rails = [&](Expression& e) {
    std::ostringstream out;
    e.printBddStatus(out, &module, wood);
    out << " / ";
    e.printBddValue(out, &module, wood);
    return out.str();
  };
  TrueExpression t;
  NotExpression inverse(x());
  AndExpression meet(&inverse, y());
  EXPECT_EQ(rails(t), "1 / 0");
  EXPECT_EQ(rails(*x()), "_s_x / _v_x");
  EXPECT_EQ(rails(inverse), "_v_x / _s_x");
  EXPECT_EQ(rails(meet), "_v_x * _s_y / _s_x + _v_y");
  Expression plain;
  std::ostringstream out;
  EXPECT_THROW(plain.printBddStatus(out, &module, wood), AbstractMethodCallException);
}

TEST_F(Expressions, PrintDuplicateAndRefuse) {
  TrueExpression t;
  NotExpression inverse(x());
  NpExpression absent(y());
  AndExpression meet(&inverse, &t);
  OrExpression join(&meet, &absent);
  ThenExpression then(&join, x());
  ElseExpression otherwise(x(), &then);
  CondExpression cond(&otherwise, y());
  std::unique_ptr<std::ostringstream> text = std::make_unique<std::ostringstream>();
  cond.print(*text);
  EXPECT_EQ(text->str(), "(Cond((SET_else(x, (SET_then(((~x *  1 ) + np y), x)))), y))");
  Expression* copy = cond.duplicate();
  std::ostringstream copied;
  copy->print(copied);
  EXPECT_EQ(copied.str(), text->str());
  EXPECT_EQ(copy->getBddStatus(&module, wood), cond.getBddStatus(&module, wood));
  Expression* current = join.buildCurrentExpression(nullptr, &module);
  EXPECT_NE(current, &join);
  EXPECT_EQ(current->getBddValue(&module, wood), join.getBddValue(&module, wood));
  EXPECT_EQ(x()->buildCurrentExpression(nullptr, &module), x());

  Expression plain;
  EXPECT_EQ(plain.duplicate(), nullptr);
  EXPECT_THROW(plain.getBddStatus(&module, wood), AbstractMethodCallException);
  try {
    plain.getInitialBddValue(&module, wood);
    FAIL();
  } catch (const AbstractMethodCallException& e) {
    EXPECT_EQ(e.text(), "AbstractMethodCallException: Expression getBddValue");
  }
}

}  // namespace
}  // namespace kiva::test
