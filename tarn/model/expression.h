#pragma once

#include <iosfwd>

#include "bdd/bddpp.h"
#include "pert_exp/Bddexpression.h"

namespace kiva {

class EquationTable;
class Module;
class Signal;

/// A four-valued signal state as two functions, status and value: True (1, 0), False (0, 1),
/// Bottom (0, 0: no information) and Error (1, 1: contradiction).
class Expression {
 public:
  Expression() = default;
  /// Of a wire or not, which makes no difference to it.
  explicit Expression(bool) {}
  virtual ~Expression() = default;

  // The two rails over the current occurrences of the signals, and over occurrence 0 of each. The
  // functions belong to the wood's manager. An expression without meaning throws
  // AbstractMethodCallException.
  virtual bdd getBddStatus(Module* module, Bddexpressionwood* wood);
  virtual bdd getBddValue(Module* module, Bddexpressionwood* wood);
  virtual bdd getInitialBddStatus(Module* module, Bddexpressionwood* wood);
  virtual bdd getInitialBddValue(Module* module, Bddexpressionwood* wood);

  virtual bool isBottomExpr() const { return false; }
  virtual bool isErrorExpr() const { return false; }
  virtual bool isTrueExpr() const { return false; }
  virtual bool isFalseExpr() const { return false; }

  /// Joins, and meets, the information of two expressions; constants fold.
  virtual Expression* plus(Expression* e, Module* module);
  virtual Expression* mult(Expression* e, Module* module);
  /// A copy of the tree; null in the base.
  virtual Expression* duplicate() { return nullptr; }
  /// The expression with the current view of its operands.
  virtual Expression* buildCurrentExpression(EquationTable* table, Module* module);
  virtual void print(std::ostream& out) const;
  /// The rails over the current occurrences, as sums of products in the operators of print().
  virtual void printBddStatus(std::ostream& out, Module* module, Bddexpressionwood* wood);
  virtual void printBddValue(std::ostream& out, Module* module, Bddexpressionwood* wood);
};

class TrueExpression : public Expression {
 public:
  bdd getBddStatus(Module*, Bddexpressionwood*) override;
  bdd getBddValue(Module*, Bddexpressionwood*) override;
  bdd getInitialBddStatus(Module*, Bddexpressionwood*) override;
  bdd getInitialBddValue(Module*, Bddexpressionwood*) override;
  bool isTrueExpr() const override { return true; }
  Expression* plus(Expression* e, Module* module) override;
  Expression* mult(Expression* e, Module* module) override;
  Expression* duplicate() override;
  void print(std::ostream& out) const override;
};

class FalseExpression : public Expression {
 public:
  bdd getBddStatus(Module*, Bddexpressionwood*) override;
  bdd getBddValue(Module*, Bddexpressionwood*) override;
  bdd getInitialBddStatus(Module*, Bddexpressionwood*) override;
  bdd getInitialBddValue(Module*, Bddexpressionwood*) override;
  bool isFalseExpr() const override { return true; }
  Expression* plus(Expression* e, Module* module) override;
  Expression* mult(Expression* e, Module* module) override;
  Expression* duplicate() override;
  void print(std::ostream& out) const override;
};

class BottomExpression : public Expression {
 public:
  bdd getBddStatus(Module*, Bddexpressionwood*) override;
  bdd getBddValue(Module*, Bddexpressionwood*) override;
  bdd getInitialBddStatus(Module*, Bddexpressionwood*) override;
  bdd getInitialBddValue(Module*, Bddexpressionwood*) override;
  bool isBottomExpr() const override { return true; }
  Expression* plus(Expression* e, Module* module) override;
  Expression* mult(Expression* e, Module* module) override;
  Expression* duplicate() override;
  void print(std::ostream& out) const override;
};

class ErrorExpression : public Expression {
 public:
  bdd getBddStatus(Module*, Bddexpressionwood*) override;
  bdd getBddValue(Module*, Bddexpressionwood*) override;
  bdd getInitialBddStatus(Module*, Bddexpressionwood*) override;
  bdd getInitialBddValue(Module*, Bddexpressionwood*) override;
  bool isErrorExpr() const override { return true; }
  Expression* plus(Expression* e, Module* module) override;
  Expression* mult(Expression* e, Module* module) override;
  Expression* duplicate() override;
  void print(std::ostream& out) const override;
};

/// Which of the two views of a signal an expression is translated over.
enum class Occurrences { current, initial };

/// An operator: its rails come from those of its operands by one formula, whatever the view. A
/// translation costs nodes of the expression, however often they are shared.
class OperatorExpression : public Expression {
 public:
  bdd getBddStatus(Module* module, Bddexpressionwood* wood) override;
  bdd getBddValue(Module* module, Bddexpressionwood* wood) override;
  bdd getInitialBddStatus(Module* module, Bddexpressionwood* wood) override;
  bdd getInitialBddValue(Module* module, Bddexpressionwood* wood) override;

 protected:
  virtual bdd status(Occurrences view, Module* module, Bddexpressionwood* wood) = 0;
  virtual bdd value(Occurrences view, Module* module, Bddexpressionwood* wood) = 0;

 private:
  template <class Formula>
  bdd translated(Occurrences view, bool of_status, Formula formula);
};

class BinaryExpression : public OperatorExpression {
 public:
  BinaryExpression(Expression* left, Expression* right) : left(left), right(right) {}
  Expression* getLeft() const { return left; }
  Expression* getRight() const { return right; }

 protected:
  Expression* left;
  Expression* right;
};

/// Meet in the truth order.
class AndExpression : public BinaryExpression {
 public:
  AndExpression(Expression* left, Expression* right) : BinaryExpression(left, right) {}
  AndExpression(Expression* left, Expression* right, Module*) : AndExpression(left, right) {}
  Expression* duplicate() override;
  Expression* buildCurrentExpression(EquationTable* table, Module* module) override;
  void print(std::ostream& out) const override;

 protected:
  bdd status(Occurrences view, Module* module, Bddexpressionwood* wood) override;
  bdd value(Occurrences view, Module* module, Bddexpressionwood* wood) override;
};

/// Join in the truth order.
class OrExpression : public BinaryExpression {
 public:
  OrExpression(Expression* left, Expression* right) : BinaryExpression(left, right) {}
  OrExpression(Expression* left, Expression* right, Module*) : OrExpression(left, right) {}
  Expression* duplicate() override;
  Expression* buildCurrentExpression(EquationTable* table, Module* module) override;
  void print(std::ostream& out) const override;

 protected:
  bdd status(Occurrences view, Module* module, Bddexpressionwood* wood) override;
  bdd value(Occurrences view, Module* module, Bddexpressionwood* wood) override;
};

/// Swaps the rails.
class NotExpression : public OperatorExpression {
 public:
  explicit NotExpression(Expression* expr) : expr(expr) {}
  NotExpression(Expression* expr, Module*) : NotExpression(expr) {}
  Expression* getExpression() const { return expr; }
  Expression* duplicate() override;
  Expression* buildCurrentExpression(EquationTable* table, Module* module) override;
  void print(std::ostream& out) const override;

 protected:
  bdd status(Occurrences view, Module* module, Bddexpressionwood* wood) override;
  bdd value(Occurrences view, Module* module, Bddexpressionwood* wood) override;

 private:
  Expression* expr;
};

/// "Not present": True to False, False and Bottom to True, Error stays.
class NpExpression : public OperatorExpression {
 public:
  explicit NpExpression(Expression* expr) : expr(expr) {}
  NpExpression(Expression* expr, Module*) : NpExpression(expr) {}
  Expression* getExpression() const { return expr; }
  Expression* duplicate() override;
  Expression* buildCurrentExpression(EquationTable* table, Module* module) override;
  void print(std::ostream& out) const override;

 protected:
  bdd status(Occurrences view, Module* module, Bddexpressionwood* wood) override;
  bdd value(Occurrences view, Module* module, Bddexpressionwood* wood) override;

 private:
  Expression* expr;
};

/// `identifier` where a guard on `bool_expr` holds, else Bottom.
class GuardedExpression : public OperatorExpression {
 public:
  GuardedExpression(Expression* bool_expr, Expression* identifier)
      : bool_expr(bool_expr), identifier(identifier) {}
  Expression* getBoolExpr() const { return bool_expr; }
  Expression* getIdentifier() const { return identifier; }

 protected:
  bdd status(Occurrences view, Module* module, Bddexpressionwood* wood) override;
  bdd value(Occurrences view, Module* module, Bddexpressionwood* wood) override;
  virtual bdd guard(Occurrences view, Module* module, Bddexpressionwood* wood) = 0;
  void print_as(std::ostream& out, const char* name) const;

  Expression* bool_expr;
  Expression* identifier;
};

/// The guard: `bool_expr` is True.
class ThenExpression : public GuardedExpression {
 public:
  ThenExpression(Expression* bool_expr, Expression* identifier)
      : GuardedExpression(bool_expr, identifier) {}
  ThenExpression(Expression* bool_expr, Expression* identifier, Module*)
      : ThenExpression(bool_expr, identifier) {}
  Expression* duplicate() override;
  void print(std::ostream& out) const override { print_as(out, "SET_then"); }

 protected:
  bdd guard(Occurrences view, Module* module, Bddexpressionwood* wood) override;
};

/// The guard: `bool_expr` is not True.
class ElseExpression : public GuardedExpression {
 public:
  ElseExpression(Expression* bool_expr, Expression* identifier)
      : GuardedExpression(bool_expr, identifier) {}
  ElseExpression(Expression* bool_expr, Expression* identifier, Module*)
      : ElseExpression(bool_expr, identifier) {}
  Expression* duplicate() override;
  void print(std::ostream& out) const override { print_as(out, "SET_else"); }

 protected:
  bdd guard(Occurrences view, Module* module, Bddexpressionwood* wood) override;
};

/// `expression` where the signal `condition` is True, else Bottom.
class CondExpression : public OperatorExpression {
 public:
  CondExpression(Expression* expression, Signal* condition)
      : expression(expression), condition(condition) {}
  CondExpression(Expression* expression, Signal* condition, Module*)
      : CondExpression(expression, condition) {}
  Expression* getExpression() const { return expression; }
  Signal* getCond() const { return condition; }
  Expression* duplicate() override;
  void print(std::ostream& out) const override;

 protected:
  bdd status(Occurrences view, Module* module, Bddexpressionwood* wood) override;
  bdd value(Occurrences view, Module* module, Bddexpressionwood* wood) override;

 private:
  Expression* expression;
  Signal* condition;
};

}  // namespace kiva
