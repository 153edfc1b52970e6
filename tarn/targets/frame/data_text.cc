#include "tarn/targets/frame/data_text.h"

#include <regex>

#include "base/graph_walk.h"
#include "base/text_stream.h"
#include "tarn/model/compilation.h"
#include "tarn/model/depth_guard.h"
#include "tarn/model/sexception.h"

namespace kiva {

namespace {

bool is_operation(const DataExpr& e) {
  return e.isDataBinaryOp() || e.isDataUnaryOp();
}

const char* operator_text(const DataTexts& texts, int op) {
  if (op < 0 || op > DataExpr::Supe)
    throw IllegalOperationException(texts.operation, "invalid_operator");
  return texts.operators[op];
}

const ConstantDecl* constant_of(const DataExpr& e) {
  const int index = static_cast<const DataConstant&>(e).getConstantIndex();
  return Compilation::GDataConstantTable() == nullptr
             ? nullptr
             : Compilation::GDataConstantTable()->getConstantById(index);
}

void put_node(std::ostream& out, const DataTexts& texts, const DataExpr& e) {
  const DepthGuard guard(texts.operation);
  const auto put_operand = [&](const DataExpr& operand) {
    const bool bracket = texts.brackets && is_operation(operand);
    if (bracket) out << '(';
    put_node(out, texts, operand);
    if (bracket) out << ')';
  };
  if (e.isDataValue()) {
    out << static_cast<const DataValue&>(e).getValue();
  } else if (e.isDataConstant()) {
    const ConstantDecl* constant = constant_of(e);
    if (constant == nullptr) throw IllegalOperationException(texts.operation, "unknown constant");
    out << (constant->getValue() == nullptr ? texts.users : "") << constant->getName();
  } else if (e.isDataSignalValue()) {
    out << texts.value(static_cast<const DataSignalValue&>(e).getSignal());
  } else if (e.isDataMethod()) {
    const auto& call = static_cast<const DataMethodCall&>(e);
    const MethodDecl* method =
        Compilation::GDataMethodTable() == nullptr
            ? nullptr
            : Compilation::GDataMethodTable()->getMethodById(call.getMethodIndex());
    if (method == nullptr) throw IllegalOperationException(texts.operation, "unknown method");
    out << texts.users << method->getName() << '(';
    const char* separator = "";
    for (const DataExpr* argument : call.getArguments()) {
      out << separator;
      put_node(out, texts, *argument);
      separator = ", ";
    }
    out << ')';
  } else if (e.isDataBinaryOp()) {
    const auto& operation = static_cast<const DataBinaryOp&>(e);
    put_operand(*operation.getLeft());
    out << operator_text(texts, operation.getOp());
    put_operand(*operation.getRight());
  } else {
    const auto& operation = static_cast<const DataUnaryOp&>(e);
    out << operator_text(texts, operation.getOp());
    put_operand(*operation.getOperand());
  }
}

bool is_number(const std::string& text) {
  static const std::regex number(R"([+-]?(0[xX][0-9a-fA-F]+|([0-9]+\.?[0-9]*|\.[0-9]+))"
                                 R"(([eE][+-]?[0-9]+)?)[a-zA-Z]{0,3})");
  constexpr size_t longest = 1000;  // the library's matcher goes as deep as the text is long
  return text.size() <= longest && std::regex_match(text, number);
}

/// Whether the text is one quoted string, or one character.
bool is_quoted(const std::string& text) {
  if (text.size() < 2 || (text[0] != '"' && text[0] != '\'')) return false;
  for (size_t i = 1; i < text.size() && text[i] != '\n'; ++i) {
    if (text[i] == '\\') {
      ++i;
    } else if (text[i] == text[0]) {
      return i + 1 == text.size();
    }
  }
  return false;
}

/// A value stands in the target's text as it is, so it may be one word there and no more.
void check_value(const TargetNames& names, const ConstantDecl& constant) {
  if (constant.getValue() == nullptr || !constant.getValue()->isDataValue()) return;
  const std::string& text = static_cast<const DataValue&>(*constant.getValue()).getValue();
  if (names.legal(text) == text || is_number(text) || is_quoted(text)) return;
  throw explained(
      IllegalOperationException("no value for data in the target's text:", constant.getName()),
      "the constant \"" + constant.getName() + "\" has a value that the target does not take: " +
          "not a number, a quoted string or a name");
}

}  // namespace

void put_data(std::ostream& out, const DataTexts& texts, const DataExpr& e) {
  // A text cannot share what a tree shares.
  constexpr long most = 1000000;
  if (e.written_size() > most)
    throw IllegalOperationException(texts.operation, "data expression of over a million nodes");
  put_node(out, texts, e);
}

std::string data_text(const DataTexts& texts, const DataExpr& e) {
  TextStream out;
  put_data(out, texts, e);
  return out.str();
}

std::vector<std::string> data_types() {
  std::vector<std::string> names;
  if (Compilation::GDataTypeTable() != nullptr)
    for (const auto& [name, index] : Compilation::GDataTypeTable()->entries())
      names.push_back(name);
  return names;
}

std::vector<MethodDecl*> data_methods() {
  return Compilation::GDataMethodTable() == nullptr
             ? std::vector<MethodDecl*>()
             : Compilation::GDataMethodTable()->getMethodList();
}

std::vector<ConstantDecl*> data_constants() {
  return Compilation::GDataConstantTable() == nullptr
             ? std::vector<ConstantDecl*>()
             : Compilation::GDataConstantTable()->getConstantList();
}

std::set<const ConstantDecl*> constants_read(const Module& module) {
  std::set<const ConstantDecl*> constants;
  std::set<const DataExpr*> seen;
  std::vector<const DataExpr*> open;
  if (module.getDataTable() != nullptr)
    for (const auto& [bound, binding] : *module.getDataTable()) open.push_back(binding->getValue());
  const auto enters = [&](const DataExpr* e) { return seen.insert(e).second; };
  walk_from(std::move(open), enters, [&](const DataExpr* e, auto more) {
    if (e->isDataConstant())
      if (const ConstantDecl* constant = constant_of(*e)) {
        constants.insert(constant);
        if (constant->getValue() != nullptr) more(constant->getValue());
      }
    for (const DataExpr* operand : e->operands()) more(operand);
  });
  return constants;
}

void reserve_data_names(TargetNames& names) {
  const auto reserve = [&](const std::string& name) {
    if (names.legal(name) != name)
      throw IllegalOperationException("no name for data in the target's text:", name);
    names.reserve(name);
  };
  for (const std::string& type : data_types()) {
    reserve(type);
    names.reserve("zero_" + type);
  }
  // Types may be the target's own words, as "int".
  const auto reserve_own = [&](const std::string& name) {
    if (names.is_keyword(name))
      throw IllegalOperationException("a keyword of the target's, used as a name for data:", name);
    reserve(name);
  };
  for (const MethodDecl* method : data_methods()) reserve_own(method->getName());
  for (const ConstantDecl* constant : data_constants()) {
    reserve_own(constant->getName());
    check_value(names, *constant);
  }
}

}  // namespace kiva
