#include "tarn/zu/data_types.h"

#include <algorithm>
#include <cctype>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"

namespace kiva {

namespace {

/// False where the declaration that names the type is a fault already.
bool is_declared(const std::string& type) {
  const DataTypeTable* types = Compilation::GDataTypeTable();
  return types != nullptr && types->isDefined(type);
}

/// A user's type whose values are true and false.
bool is_boolean(std::string type) {
  for (char& c : type) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return type == "bool" || type == "boolean";
}

bool is_condition(const DataKind& kind) {
  return !kind.known || kind.condition || is_boolean(kind.type);
}

bool is_logical(int op) {
  return op == DataExpr::And || op == DataExpr::Or || op == DataExpr::Not;
}

std::string operator_text(int op) {
  if (op == DataExpr::And) return "and";
  if (op == DataExpr::Or) return "or";
  if (op == DataExpr::Not) return "not";
  std::string text = DataExpr::C_opname(op);
  std::erase(text, ' ');
  return text;
}

}  // namespace

DataKind DataTypes::unknown(const DataExpr* part, const std::string& sentence) {
  tell_(part, sentence);
  return {"", false, false};
}

std::string DataTypes::described(const DataExpr* e, const DataKind& kind) const {
  return '"' + text_(e) + (kind.condition ? "\" is a condition" : "\" is of type " + kind.type);
}

DataKind DataTypes::kind(DataExpr* e) {
  if (const auto at = kinds_.find(e); at != kinds_.end()) return at->second;
  return kinds_[e] = compute(e);
}

DataKind DataTypes::compute(DataExpr* e) {
  if (e->isDataValue()) return {"", false, false};
  if (e->isDataConstant()) {
    const ConstantDecl* constant = Compilation::GDataConstantTable()->getConstantById(
        static_cast<const DataConstant*>(e)->getConstantIndex());
    return constant == nullptr ? DataKind{"", false, false} : DataKind{constant->getType()};
  }
  if (e->isDataSignalValue()) return of_signal(e);
  if (e->isDataMethod()) return of_call(e);
  if (e->isDataBinaryOp()) return of_binary(e);
  const auto* unary = static_cast<const DataUnaryOp*>(e);
  if (unary->getOp() == DataExpr::Not) {
    require_condition(unary->getOperand(), "\"not\"");
    return logical(e, unary->getOperand());
  }
  const DataKind operand = kind(unary->getOperand());
  if (operand.known && operand.condition)
    return unknown(e, "\"-\" takes a value, and " + described(unary->getOperand(), operand));
  return operand;
}

/// Its operands may be comparisons of values of other types.
DataKind DataTypes::logical(DataExpr* e, DataExpr* left) {
  std::string type;
  if (const DataTypeTable* types = Compilation::GDataTypeTable())
    for (const auto& [name, number] : types->entries())
      if (is_boolean(name)) type = name;
  if (type.empty() && kind(left).known) type = left->getType(module_);
  e->setType(type.empty() ? "?" : type);
  return {"", true};
}

DataKind DataTypes::of_signal(DataExpr* e) {
  const Signal* signal = static_cast<const DataSignalValue*>(e)->getSignal();
  if (signal->isValued(module_)) {
    const std::string type = signal->getValueType(module_);
    return is_declared(type) ? DataKind{type} : DataKind{"", false, false};
  }
  return unknown(
      e, '"' + signal->getOriginalName() + "\" carries no value: it is declared without a type");
}

DataKind DataTypes::of_binary(DataExpr* e) {
  const auto* operation = static_cast<const DataBinaryOp*>(e);
  const int op = operation->getOp();
  const std::string name = '"' + operator_text(op) + '"';
  if (is_logical(op)) {
    require_condition(operation->getLeft(), name);
    require_condition(operation->getRight(), name);
    return logical(e, operation->getLeft());
  }
  const DataKind left = kind(operation->getLeft());
  const DataKind right = kind(operation->getRight());
  const bool compares = op >= DataExpr::Eq;
  if (!left.known || !right.known) return {"", compares, compares};
  const bool of_conditions = left.condition || right.condition;
  if (left.type != right.type || left.condition != right.condition || of_conditions)
    return unknown(
        e, name + " takes two values of one type: " + described(operation->getLeft(), left) + ", " +
               described(operation->getRight(), right));
  return compares ? DataKind{"", true} : left;
}

DataKind DataTypes::of_call(DataExpr* e) {
  const auto* call = static_cast<const DataMethodCall*>(e);
  const MethodDecl* method = Compilation::GDataMethodTable()->getMethodById(call->getMethodIndex());
  if (method == nullptr) return {"", false, false};
  const std::string name = '"' + method->getName() + '"';
  const auto& types = method->getArgTypeList();
  const auto& arguments = call->getArguments();
  if (types.size() != arguments.size())
    tell_(e, name + " takes " + std::to_string(types.size()) +
                 (types.size() == 1 ? " argument, not " : " arguments, not ") +
                 std::to_string(arguments.size()));
  auto type = types.begin();
  int number = 0;
  for (DataExpr* argument : arguments) {
    if (type == types.end()) break;
    require(argument, *type++, "argument " + std::to_string(++number) + " of " + name);
  }
  return {method->getReturnType()};
}

void DataTypes::require(DataExpr* e, const std::string& type, const std::string& whose) {
  const DataKind given = kind(e);
  if (!given.known || !is_declared(type) || given.type == type ||
      (given.condition && is_boolean(type)))
    return;
  tell_(e, whose + " is of type " + type + ", and " + described(e, given));
}

void DataTypes::require_condition(DataExpr* e, const std::string& whose) {
  const DataKind given = kind(e);
  if (!is_condition(given)) tell_(e, whose + " takes a condition, and " + described(e, given));
}

}  // namespace kiva
