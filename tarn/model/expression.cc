// The four-valued expressions. Each operator states its two rails once, over operands whose rails
// come from the view asked for: the current occurrences of the signals, or occurrence 0 of each.

#include "tarn/model/expression.h"

#include <map>
#include <ostream>
#include <tuple>

#include "tarn/model/sexception.h"
#include "tarn/model/signal.h"
#include "tarn/session/session.h"

namespace kiva {

namespace {

bdd status_of(Expression* e, Occurrences view, Module* module, Bddexpressionwood* wood) {
  return view == Occurrences::current ? e->getBddStatus(module, wood)
                                      : e->getInitialBddStatus(module, wood);
}

bdd value_of(Expression* e, Occurrences view, Module* module, Bddexpressionwood* wood) {
  return view == Occurrences::current ? e->getBddValue(module, wood)
                                      : e->getInitialBddValue(module, wood);
}

/// e is True: its status and not its value.
bdd is_true(Expression* e, Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_and(status_of(e, view, module, wood),
                       wood->Bdd_not(value_of(e, view, module, wood)));
}

bdd is_not_true(Expression* e, Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_or(wood->Bdd_not(status_of(e, view, module, wood)),
                      value_of(e, view, module, wood));
}

void put_sum(std::ostream& out, Bddexpressionwood* wood, const bdd& f) {
  wood->my_bdd_manager()->Print_sop(" + ", " * ", "~", "", out, f, 1);
}

}  // namespace

bdd Expression::getBddStatus(Module*, Bddexpressionwood*) {
  throw AbstractMethodCallException("Expression", "getBddStatus");
}
bdd Expression::getBddValue(Module*, Bddexpressionwood*) {
  throw AbstractMethodCallException("Expression", "getBddValue");
}
bdd Expression::getInitialBddStatus(Module*, Bddexpressionwood*) {
  throw AbstractMethodCallException("Expression", "getBddStatus");
}
bdd Expression::getInitialBddValue(Module*, Bddexpressionwood*) {
  throw AbstractMethodCallException("Expression", "getBddValue");
}

Expression* Expression::plus(Expression* e, Module*) {
  if (e->isBottomExpr() || e->isFalseExpr()) return this;
  if (e->isTrueExpr() || e->isErrorExpr()) return e;
  return make_kept<OrExpression>(this, e);
}

Expression* Expression::mult(Expression* e, Module*) {
  if (e->isBottomExpr() || e->isFalseExpr()) return e;
  if (e->isTrueExpr() || e->isErrorExpr()) return this;
  return make_kept<AndExpression>(this, e);
}

Expression* Expression::buildCurrentExpression(EquationTable*, Module*) {
  return this;
}

void Expression::print(std::ostream&) const {}

void Expression::printBddStatus(std::ostream& out, Module* module, Bddexpressionwood* wood) {
  put_sum(out, wood, getBddStatus(module, wood));
}

void Expression::printBddValue(std::ostream& out, Module* module, Bddexpressionwood* wood) {
  put_sum(out, wood, getBddValue(module, wood));
}

// The four constants.

bdd TrueExpression::getBddStatus(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_one();
}
bdd TrueExpression::getBddValue(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_zero();
}
bdd TrueExpression::getInitialBddStatus(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_one();
}
bdd TrueExpression::getInitialBddValue(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_zero();
}
Expression* TrueExpression::plus(Expression* e, Module*) {
  if (e->isFalseExpr()) return make_kept<ErrorExpression>();
  return e->isErrorExpr() ? e : this;
}
Expression* TrueExpression::mult(Expression* e, Module*) {
  if (e->isFalseExpr()) return make_kept<BottomExpression>();
  return e->isErrorExpr() ? this : e;
}
Expression* TrueExpression::duplicate() {
  return make_kept<TrueExpression>();
}
void TrueExpression::print(std::ostream& out) const {
  out << " 1 ";
}

bdd FalseExpression::getBddStatus(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_zero();
}
bdd FalseExpression::getBddValue(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_one();
}
bdd FalseExpression::getInitialBddStatus(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_zero();
}
bdd FalseExpression::getInitialBddValue(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_one();
}
Expression* FalseExpression::plus(Expression* e, Module*) {
  if (e->isBottomExpr()) return this;
  return e->isTrueExpr() ? make_kept<ErrorExpression>() : e;
}
Expression* FalseExpression::mult(Expression* e, Module*) {
  if (e->isBottomExpr()) return e;
  return e->isTrueExpr() ? static_cast<Expression*>(make_kept<BottomExpression>()) : this;
}
Expression* FalseExpression::duplicate() {
  return make_kept<FalseExpression>();
}
void FalseExpression::print(std::ostream& out) const {
  out << " 0 ";
}

bdd BottomExpression::getBddStatus(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_zero();
}
bdd BottomExpression::getBddValue(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_zero();
}
bdd BottomExpression::getInitialBddStatus(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_zero();
}
bdd BottomExpression::getInitialBddValue(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_zero();
}
Expression* BottomExpression::plus(Expression* e, Module*) {
  return e;
}
Expression* BottomExpression::mult(Expression*, Module*) {
  return this;
}
Expression* BottomExpression::duplicate() {
  return make_kept<BottomExpression>();
}
void BottomExpression::print(std::ostream& out) const {
  out << " bottom ";
}

bdd ErrorExpression::getBddStatus(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_one();
}
bdd ErrorExpression::getBddValue(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_one();
}
bdd ErrorExpression::getInitialBddStatus(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_one();
}
bdd ErrorExpression::getInitialBddValue(Module*, Bddexpressionwood* wood) {
  return wood->Bdd_one();
}
Expression* ErrorExpression::plus(Expression*, Module*) {
  return this;
}
Expression* ErrorExpression::mult(Expression* e, Module*) {
  return e;
}
Expression* ErrorExpression::duplicate() {
  return make_kept<ErrorExpression>();
}
void ErrorExpression::print(std::ostream& out) const {
  out << " error ";
}

// The operators.

namespace {

/// The rails found so far within one outermost translation. An operand may be asked for both of its
/// rails by each of several readers, at every level: without the table that costs paths.
class RailTable {
 public:
  using Key = std::tuple<const Expression*, Occurrences, bool>;

  /// Lives as long as one translation of an operator; the outermost one's end clears the table.
  struct Scope {
    explicit Scope(RailTable& table) : table(table) { ++table.depth; }
    ~Scope() {
      if (--table.depth == 0) table.found.clear();
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    RailTable& table;
  };
  int depth = 0;
  std::map<Key, bdd> found;
};

}  // namespace

template <class Formula>
bdd OperatorExpression::translated(Occurrences view, bool of_status, Formula formula) {
  RailTable& table = Session::current().part<RailTable>();
  const RailTable::Scope scope(table);
  const RailTable::Key key(this, view, of_status);
  if (auto at = table.found.find(key); at != table.found.end()) return at->second;
  return table.found.emplace(key, formula()).first->second;
}

bdd OperatorExpression::getBddStatus(Module* module, Bddexpressionwood* wood) {
  return translated(Occurrences::current, true,
                    [&] { return status(Occurrences::current, module, wood); });
}
bdd OperatorExpression::getBddValue(Module* module, Bddexpressionwood* wood) {
  return translated(Occurrences::current, false,
                    [&] { return value(Occurrences::current, module, wood); });
}
bdd OperatorExpression::getInitialBddStatus(Module* module, Bddexpressionwood* wood) {
  return translated(Occurrences::initial, true,
                    [&] { return status(Occurrences::initial, module, wood); });
}
bdd OperatorExpression::getInitialBddValue(Module* module, Bddexpressionwood* wood) {
  return translated(Occurrences::initial, false,
                    [&] { return value(Occurrences::initial, module, wood); });
}

bdd AndExpression::status(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_and(status_of(left, view, module, wood), status_of(right, view, module, wood));
}
bdd AndExpression::value(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_or(value_of(left, view, module, wood), value_of(right, view, module, wood));
}
Expression* AndExpression::duplicate() {
  return make_kept<AndExpression>(left->duplicate(), right->duplicate());
}
Expression* AndExpression::buildCurrentExpression(EquationTable* table, Module* module) {
  return make_kept<AndExpression>(left->buildCurrentExpression(table, module),
                                  right->buildCurrentExpression(table, module));
}
void AndExpression::print(std::ostream& out) const {
  out << '(';
  left->print(out);
  out << " * ";
  right->print(out);
  out << ')';
}

bdd OrExpression::status(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_or(status_of(left, view, module, wood), status_of(right, view, module, wood));
}
bdd OrExpression::value(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_and(value_of(left, view, module, wood), value_of(right, view, module, wood));
}
Expression* OrExpression::duplicate() {
  return make_kept<OrExpression>(left->duplicate(), right->duplicate());
}
Expression* OrExpression::buildCurrentExpression(EquationTable* table, Module* module) {
  return make_kept<OrExpression>(left->buildCurrentExpression(table, module),
                                 right->buildCurrentExpression(table, module));
}
void OrExpression::print(std::ostream& out) const {
  out << '(';
  left->print(out);
  out << " + ";
  right->print(out);
  out << ')';
}

bdd NotExpression::status(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return value_of(expr, view, module, wood);
}
bdd NotExpression::value(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return status_of(expr, view, module, wood);
}
Expression* NotExpression::duplicate() {
  return make_kept<NotExpression>(expr->duplicate());
}
Expression* NotExpression::buildCurrentExpression(EquationTable* table, Module* module) {
  return make_kept<NotExpression>(expr->buildCurrentExpression(table, module));
}
void NotExpression::print(std::ostream& out) const {
  out << '~';
  expr->print(out);
}

bdd NpExpression::status(Occurrences view, Module* module, Bddexpressionwood* wood) {
  bdd s = status_of(expr, view, module, wood);
  return wood->Bdd_or(wood->Bdd_not(s), wood->Bdd_and(s, value_of(expr, view, module, wood)));
}
bdd NpExpression::value(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return status_of(expr, view, module, wood);
}
Expression* NpExpression::duplicate() {
  return make_kept<NpExpression>(expr->duplicate());
}
Expression* NpExpression::buildCurrentExpression(EquationTable* table, Module* module) {
  return make_kept<NpExpression>(expr->buildCurrentExpression(table, module));
}
void NpExpression::print(std::ostream& out) const {
  out << "np ";
  expr->print(out);
}

bdd GuardedExpression::status(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_and(guard(view, module, wood), status_of(identifier, view, module, wood));
}
bdd GuardedExpression::value(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_and(guard(view, module, wood), value_of(identifier, view, module, wood));
}
void GuardedExpression::print_as(std::ostream& out, const char* name) const {
  out << '(' << name << '(';
  bool_expr->print(out);
  out << ", ";
  identifier->print(out);
  out << "))";
}

bdd ThenExpression::guard(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return is_true(bool_expr, view, module, wood);
}
Expression* ThenExpression::duplicate() {
  return make_kept<ThenExpression>(bool_expr->duplicate(), identifier->duplicate());
}

bdd ElseExpression::guard(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return is_not_true(bool_expr, view, module, wood);
}
Expression* ElseExpression::duplicate() {
  return make_kept<ElseExpression>(bool_expr->duplicate(), identifier->duplicate());
}

namespace {
/// The guard of a CondExpression: the status in the view asked for, the value always the current
/// one, also in the initial view.
bdd condition_holds(Signal* condition, Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_and(status_of(condition, view, module, wood),
                       wood->Bdd_not(condition->getBddValue(module, wood)));
}
}  // namespace

bdd CondExpression::status(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_and(status_of(expression, view, module, wood),
                       condition_holds(condition, view, module, wood));
}
bdd CondExpression::value(Occurrences view, Module* module, Bddexpressionwood* wood) {
  return wood->Bdd_and(value_of(expression, view, module, wood),
                       condition_holds(condition, view, module, wood));
}
Expression* CondExpression::duplicate() {
  return make_kept<CondExpression>(expression->duplicate(),
                                   static_cast<Signal*>(condition->duplicate()));
}
void CondExpression::print(std::ostream& out) const {
  out << "(Cond(";
  expression->print(out);
  out << ", ";
  condition->print(out);
  out << "))";
}

}  // namespace kiva
