#pragma once

#include <iosfwd>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/sock.h"
#include "tarn/model/source_span.h"
#include "tarn/session/session.h"

namespace kiva {

class ConstantDecl;
class DataExpr;
class Interface;
class Module;
class Signal;

/// What an evaluation of data knows in one instant.
/// Constants: name to the constant's expression (may be null) and its text, empty until known.
using ConstantTexts = std::map<std::string, std::pair<DataExpr*, std::string>>;
/// Values: status id of a signal to its value text, "--" for none.
using ValueTexts = std::map<long, std::string>;

/// An expression over data: what value a valued signal carries.
class DataExpr {
 public:
  // Operator codes. In ZUC text and in the evaluation protocol an operator on a type is one number:
  // type index times NbPredefOp plus the code.
  static constexpr int Plus = 0;
  static constexpr int Minus = 1;
  static constexpr int Mult = 2;
  static constexpr int Div = 3;
  static constexpr int Uminus = 4;
  static constexpr int And = 5;
  static constexpr int Or = 6;
  static constexpr int Not = 7;
  static constexpr int Eq = 8;
  static constexpr int Neq = 9;
  static constexpr int Inf = 10;
  static constexpr int Infe = 11;
  static constexpr int Sup = 12;
  static constexpr int Supe = 13;
  static constexpr int SignalVal = 14;
  static constexpr int NbPredefOp = 15;

  /// Numbers new intermediate signals.
  static int& Indexation() { return Session::current().counters.Indexation; }

  /// The greatest depth of a tree that is typed or evaluated: far beyond what people write, and
  /// within any stack.
  static constexpr int deepest = 2000;

  virtual ~DataExpr() = default;

  const std::string& getType() const { return type; }
  /// Computes the type when it is still empty.
  const std::string& getType(Module* module);
  void setType(const std::string& text) { type = text; }
  /// Sets the type from the operands; what each class throws stands at its body. Like an
  /// evaluation, it refuses a tree deeper than `deepest` with IllegalOperationException.
  virtual void computeType(Module* module) = 0;
  virtual void setIndex(int number) { index = number; }
  int getIndex() const { return index; }
  bool hasIndex() const { return index != -1; }

  virtual bool isDataValue() const { return false; }
  virtual bool isDataConstant() const { return false; }
  virtual bool isDataMethod() const { return false; }
  virtual bool isDataSignalValue() const { return false; }
  virtual bool isDataBinaryOp() const { return false; }
  virtual bool isDataUnaryOp() const { return false; }

  // Copies without types and indices (data_copy.cc). What a tree shares, its copy shares.
  /// For an included module: the signals are found in the interface.
  DataExpr* instanciate(Interface* interface) const;
  DataExpr* duplicate() const;
  /// For a copied module: the signals are found there by internal name.
  DataExpr* changeModule(Module* to, Module* from) const;
  /// A node of the same kind over other operands, as many as it has.
  virtual DataExpr* over(const std::vector<DataExpr*>& operands) const = 0;
  /// Nodes of the tree as it is written out, where what is shared stands once for each that reads
  /// it; at most LONG_MAX.
  long written_size() const;
  /// The operands, left to right; none for a leaf.
  virtual std::vector<DataExpr*> operands() const { return {}; }
  /// The signals read; null when there are none. The caller owns the set. One visit a node, however
  /// often the tree shares it.
  std::unique_ptr<std::set<Signal*>> computeDependencySet() const;
  virtual void print_debug(std::ostream& out) const = 0;
  /// The value in the instant of `context` (one entry per variable index), asked from the
  /// evaluation server where it takes an operator, a method or an external constant.
  virtual std::string Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                int* context, Sock socket) = 0;

  /// Writes the item of a compiled module's evaluation table: at the `top` of its line the
  /// definition, else the number of its line, given by `next` where it has none yet; new lines join
  /// `pending`. `map` gives the file's number of each variable.
  virtual void ZUC_put(std::ostream& os, long* map, Module* module, std::list<DataExpr*>& pending,
                       int& next, bool top) = 0;

  /// The told text of the expression in C (tarn/targets/languages/c.cc).
  void C_put(std::ostream& out, Module* module) const;
  /// The told text of the expression in Lustre (tarn/targets/languages/lustre.cc).
  void LUSTRE_put(std::ostream& out, Module* module) const;
  /// Spelling of an operator in Lustre, with its blanks.
  static std::string LUSTRE_opname(int op);

  /// The told text of the expression in C# (tarn/targets/languages/csharp.cc).
  void CSharp_put(std::ostream& out, Module* module) const;
  /// Spelling of an operator in C#, with its blanks.
  static std::string CSharp_opname(int op);

  /// Spelling of an operator in the protocol and in C, with its blanks.
  static std::string C_opname(int op);

 protected:
  std::string type;
  int index = -1;
};

/// A literal.
class DataValue : public DataExpr {
 public:
  explicit DataValue(const std::string& text, ConstantDecl* constant = nullptr)
      : value(text), constant(constant) {}
  const std::string& getValue() const { return value; }
  ConstantDecl* getConstant() const { return constant; }
  void setConstant(ConstantDecl* owner) { constant = owner; }
  bool isDataValue() const override { return true; }
  void computeType(Module* module) override;
  DataExpr* over(const std::vector<DataExpr*>& operands) const override;
  void print_debug(std::ostream& out) const override;
  std::string Simul_put(Module*, ConstantTexts*, ValueTexts*, int*, Sock) override;
  void ZUC_put(std::ostream&, long*, Module*, std::list<DataExpr*>&, int&, bool) override;

 private:
  std::string value;
  ConstantDecl* constant;
};

/// A named constant, by its index in the table of constants.
class DataConstant : public DataExpr {
 public:
  explicit DataConstant(int constant_index) : constant_index(constant_index) {}
  int getConstantIndex() const { return constant_index; }
  bool isDataConstant() const override { return true; }
  void computeType(Module* module) override;
  /// Gives the number to the constant's evaluation line too, if that has none.
  void setIndex(int number) override;
  DataExpr* over(const std::vector<DataExpr*>& operands) const override;
  void print_debug(std::ostream& out) const override;
  std::string Simul_put(Module*, ConstantTexts*, ValueTexts*, int*, Sock) override;
  void ZUC_put(std::ostream&, long*, Module*, std::list<DataExpr*>&, int&, bool) override;

 private:
  int constant_index;
};

/// The value of a signal.
class DataSignalValue : public DataExpr {
 public:
  explicit DataSignalValue(Signal* signal) : signal(signal) {}
  Signal* getSignal() const { return signal; }
  bool isDataSignalValue() const override { return true; }
  void computeType(Module* module) override;
  DataExpr* over(const std::vector<DataExpr*>& operands) const override;
  void print_debug(std::ostream& out) const override;
  std::string Simul_put(Module*, ConstantTexts*, ValueTexts*, int*, Sock) override;
  void ZUC_put(std::ostream&, long*, Module*, std::list<DataExpr*>&, int&, bool) override;

 private:
  Signal* signal;
};

class DataUnaryOp : public DataExpr {
 public:
  DataUnaryOp(int op, DataExpr* operand) : op(op), operand(operand) {}
  int getOp() const { return op; }
  DataExpr* getOperand() const { return operand; }
  bool isDataUnaryOp() const override { return true; }
  void computeType(Module* module) override;
  DataExpr* over(const std::vector<DataExpr*>& operands) const override;
  std::vector<DataExpr*> operands() const override { return {operand}; }
  void print_debug(std::ostream& out) const override;
  std::string Simul_put(Module*, ConstantTexts*, ValueTexts*, int*, Sock) override;
  void ZUC_put(std::ostream&, long*, Module*, std::list<DataExpr*>&, int&, bool) override;

 private:
  int op;
  DataExpr* operand;
};

class DataBinaryOp : public DataExpr {
 public:
  DataBinaryOp(int op, DataExpr* left, DataExpr* right) : op(op), left(left), right(right) {}
  int getOp() const { return op; }
  DataExpr* getLeft() const { return left; }
  DataExpr* getRight() const { return right; }
  bool isDataBinaryOp() const override { return true; }
  /// Operands of different types end the process.
  void computeType(Module* module) override;
  DataExpr* over(const std::vector<DataExpr*>& operands) const override;
  std::vector<DataExpr*> operands() const override { return {left, right}; }
  void print_debug(std::ostream& out) const override;
  std::string Simul_put(Module*, ConstantTexts*, ValueTexts*, int*, Sock) override;
  void ZUC_put(std::ostream&, long*, Module*, std::list<DataExpr*>&, int&, bool) override;

 private:
  int op;
  DataExpr* left;
  DataExpr* right;
};

/// A call of a user's method, by its index in the table of methods.
class DataMethodCall : public DataExpr {
 public:
  explicit DataMethodCall(int method_index, std::list<DataExpr*> arguments = {})
      : method_index(method_index), arguments(std::move(arguments)) {}
  int getMethodIndex() const { return method_index; }
  const std::list<DataExpr*>& getArguments() const { return arguments; }
  bool isDataMethod() const override { return true; }
  void computeType(Module* module) override;
  DataExpr* over(const std::vector<DataExpr*>& operands) const override;
  std::vector<DataExpr*> operands() const override { return {arguments.begin(), arguments.end()}; }
  void print_debug(std::ostream& out) const override;
  std::string Simul_put(Module*, ConstantTexts*, ValueTexts*, int*, Sock) override;
  void ZUC_put(std::ostream&, long*, Module*, std::list<DataExpr*>&, int&, bool) override;

 private:
  int method_index;
  std::list<DataExpr*> arguments;
};

/// Ties a data expression to a signal. `signal` triggers the binding and files it; `clock`, where
/// there is one, is the valued signal that receives the value.
class DataBinding {
 public:
  DataBinding(Signal* signal, DataExpr* value, Signal* clock = nullptr)
      : clock(clock), signal(signal), value(value) {}
  /// For a copied module: the signals are found there by internal name.
  DataBinding(const DataBinding& other, Module* to, Module* from);
  /// For an included module; a signal that the interface lacks ends the process.
  DataBinding* instanciate(Interface* interface) const;
  Signal* getClock() const { return clock; }
  Signal* getSignal() const { return signal; }
  DataExpr* getValue() const { return value; }
  void setClock(Signal* receiver) { clock = receiver; }
  /// Where the emission stands in its source; unknown for what no statement has bound.
  const SourceSpan& getPlace() const { return place_; }
  void setPlace(const SourceSpan& place) { place_ = place; }
  void print_debug(std::ostream& out) const;

 private:
  Signal* clock;
  Signal* signal;
  DataExpr* value;
  SourceSpan place_;
};

class MethodDecl {
 public:
  MethodDecl(const std::string& return_type, const std::string& name, std::list<std::string> args)
      : return_type(return_type), name(name), arg_type_list(std::move(args)) {}
  /// A null pointer counts as "".
  MethodDecl(const std::string* return_type, const std::string* name, std::list<std::string> args);
  friend bool operator==(const MethodDecl&, const MethodDecl&) = default;
  const std::string& getReturnType() const { return return_type; }
  const std::string& getName() const { return name; }
  const std::list<std::string>& getArgTypeList() const { return arg_type_list; }
  /// -1 until entered in a table.
  int getIndex() const { return index; }
  void setReturnType(const std::string& text) { return_type = text; }
  void setName(const std::string& text) { name = text; }
  void setArgTypeList(std::list<std::string> types) { arg_type_list = std::move(types); }
  void setIndex(int number) { index = number; }
  void print(std::ostream& out) const;
  void C_put(std::ostream& out) const;
  void CSharp_put(std::ostream& out) const;

 private:
  std::string return_type;
  std::string name;
  std::list<std::string> arg_type_list;
  int index = -1;
};

class ConstantDecl {
 public:
  ConstantDecl(const std::string& type, const std::string& name, DataExpr* value)
      : type(type), name(name), value(value) {}
  friend bool operator==(const ConstantDecl&, const ConstantDecl&) = default;
  const std::string& getType() const { return type; }
  const std::string& getName() const { return name; }
  /// Null for a constant whose value the user supplies.
  DataExpr* getValue() const { return value; }
  /// -1 until entered, and for a constant whose value is no literal.
  int getIndex() const { return index; }
  /// -1 until the constant has an evaluation line in the text being written.
  int getEvalIndex() const { return eval_index; }
  void setValue(DataExpr* expression) { value = expression; }
  void setIndex(int number) { index = number; }
  void setEvalIndex(int number) { eval_index = number; }
  void print(std::ostream& out) const;
  /// To the body with its value, to the header without.
  void C_put(std::ostream& body, std::ostream& header) const;
  void LUSTRE_put(std::ostream& out) const;
  /// Private with its value, public without.
  void CSharp_put(std::ostream& out) const;

 private:
  std::string type;
  std::string name;
  DataExpr* value;
  int index = -1;
  int eval_index = -1;
};

/// The zero of a type in Lustre: of the language's own, or "zero_" and the type.
std::string zero_lustre(const std::string& type);

// The process-wide vocabulary of data. The print operations write a keyword line, then the entries
// in index order, each closed by ";"; `numbered` puts "   ", the index and ": " in front.

class DataTypeTable {
 public:
  /// Nothing for a known name.
  void addType(const std::string& name);
  /// -1 for an unknown name.
  int getIndex(const std::string& name) const;
  bool isDefined(const std::string& name) const { return getIndex(name) != -1; }
  /// "undefined" when no type has that index.
  std::string getTypeById(int id) const;
  int size() const { return static_cast<int>(names.size()); }
  /// By name.
  const std::map<std::string, int>& entries() const { return indices; }
  void print(std::ostream& out, bool numbered) const;
  /// The declaration of each type's zero in C.
  void C_put(std::ostream& out) const;
  void LUSTRE_put(std::ostream& out) const;
  void CSharp_put(std::ostream& out) const;

 private:
  std::vector<std::string> names;
  std::map<std::string, int> indices;
};

class DataMethodTable {
 public:
  /// AlreadyDefinedException for a known name.
  void addMethod(MethodDecl* method);
  MethodDecl* getMethod(const std::string& name) const;
  int getMethodIndex(const std::string& name) const;
  MethodDecl* getMethodById(int id) const;
  const std::vector<MethodDecl*>& getMethodList() const { return method_list; }
  void print(std::ostream& out, bool numbered) const;
  void C_put(std::ostream& out) const;
  void CSharp_put(std::ostream& out) const;

 private:
  std::vector<MethodDecl*> method_list;
  std::map<std::string, MethodDecl*> by_name;
};

class DataConstantTable {
 public:
  /// AlreadyDefinedException for a known name.
  void addConstant(ConstantDecl* constant);
  ConstantDecl* getConstant(const std::string& name) const;
  int getConstantIndex(const std::string& name) const;
  ConstantDecl* getConstantById(int id) const;
  const std::vector<ConstantDecl*>& getConstantList() const { return constant_list; }
  void print(std::ostream& out, bool numbered) const;
  /// The constants that have a value.
  void CSharp_put(std::ostream& out) const;

 private:
  std::vector<ConstantDecl*> constant_list;
  std::map<std::string, ConstantDecl*> by_name;
  std::map<int, ConstantDecl*> by_index;
  int next_index = 0;
};

}  // namespace kiva
