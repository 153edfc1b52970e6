// The data part of a source file, and data expressions.

#include <algorithm>

#include "base/nearest_name.h"
#include "base/text_stream.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/parse_supl.h"

namespace kiva {

namespace {

const std::string literal_prefix = "C__";

std::string literal_name(const std::string& literal) {
  return literal_prefix + literal;
}

const ConstantDecl* known_constant(const std::string& name) {
  return Compilation::GDataConstantTable() == nullptr
             ? nullptr
             : Compilation::GDataConstantTable()->getConstant(name);
}

std::string module_name() {
  return TheModule() == nullptr ? "" : TheModule()->getName();
}

}  // namespace

// What an earlier file has declared stays: its expressions refer to the tables by index. A file may
// declare it again in the same words, as files do whose modules run each other; once.

template <class Declaration, class Table>
void class_zu_parser::enter(Declaration* made, const std::string& name, const Declaration* known,
                            void (Table::*add)(Declaration*), Table& table) {
  const bool first_here = declared_.insert(known == nullptr ? made : known).second;
  if (known != nullptr && first_here) {
    TextStream ours, theirs;
    made->print(ours);
    known->print(theirs);
    if (ours.str() == theirs.str()) return;
  }
  if (known != nullptr && gathers()) return doubled(name, declared_at_[known]);
  (table.*add)(made);
  declared_at_[made] = span_;
}

void class_zu_parser::make_type_table() {
  Compilation::typeTable();
}
void class_zu_parser::make_method_table() {
  Compilation::methodTable();
}
void class_zu_parser::make_constant_table() {
  Compilation::constantTable();
}

void class_zu_parser::add_type(const std::string& name) {
  DataTypeTable& table = Compilation::typeTable();
  table.addType(name);
  // The production is the list up to the name.
  span_.first_line = span_.last_line;
  span_.first_column = span_.last_column + 1 - static_cast<int>(name.size());
  const auto [first, is_new] = types_here_.emplace(name, span_);
  if (!is_new && checks()) doubled(name, first->second);
}

void class_zu_parser::require_type(const std::string& name) {
  const DataTypeTable* types = Compilation::GDataTypeTable();
  if (types != nullptr && types->isDefined(name)) return;
  std::vector<std::string> known;
  if (types != nullptr)
    for (const auto& [type, number] : types->entries()) known.push_back(type);
  const std::string meant = nearest_name(name, known);
  refuse(UndefinedTypeException(name),
         "type \"" + name + "\" is not declared" +
             (meant.empty() ? "" : "; did you mean \"" + meant + "\"?"));
}

void class_zu_parser::add_method(const std::string& type, const std::string& name,
                                 const NameList* arguments) {
  require_type(type);
  if (checks() && arguments != nullptr)
    for (const std::string& argument : *arguments) require_type(argument);
  DataMethodTable& table = Compilation::methodTable();
  MethodDecl* method =
      make_kept<MethodDecl>(type, name, arguments == nullptr ? NameList() : *arguments);
  enter(method, name, table.getMethod(name), &DataMethodTable::addMethod, table);
}

void class_zu_parser::add_constant(const std::string& type, const std::string& name,
                                   DataExpr* value) {
  require_type(type);
  ConstantDecl* constant = make_kept<ConstantDecl>(type, name, value);
  if (value != nullptr) {
    if (checks()) data_types().require(value, type, '"' + name + '"');
    value->setType(type);
    if (value->isDataValue()) static_cast<DataValue*>(value)->setConstant(constant);
  }
  DataConstantTable& table = Compilation::constantTable();
  const bool is_literal = name.starts_with(literal_prefix);
  enter(constant, is_literal ? name.substr(literal_prefix.size()) : name, table.getConstant(name),
        &DataConstantTable::addConstant, table);
}

void class_zu_parser::add_literal(const std::string& type, const std::string& literal) {
  add_constant(type, literal_name(literal), literal_value(literal));
}

DataExpr* class_zu_parser::literal_value(const std::string& literal) {
  return make_kept<DataValue>(literal);
}

DataExpr* class_zu_parser::literal(const std::string& literal) {
  const std::string name = literal_name(literal);
  const std::string sentence = "the literal " + literal + " is not declared under Constant:";
  if (Compilation::GDataConstantTable() == nullptr)
    fatal("PARSE ERROR: empty constant table detected: " + name + "\n\nAbortion ...", sentence);
  return known_value(name, sentence);
}

DataExpr* class_zu_parser::constant(const std::string& name) {
  std::string sentence = "constant \"" + name + "\" is not declared";
  if (TheModule() != nullptr && TheModule()->getSignal(name) != nullptr)
    sentence += "; the value of the signal is #" + name;
  return known_value(name, sentence);
}

DataExpr* class_zu_parser::known_value(const std::string& name, const std::string& sentence) {
  if (const ConstantDecl* known = known_constant(name))
    return placed(make_kept<DataConstant>(known->getIndex()));
  refuse(ModuleUndefinedConstantException(name, module_name()), sentence);
  return unknown_value();
}

/// Stands for data that a fault was about: it fits everywhere.
DataExpr* class_zu_parser::unknown_value() {
  DataExpr* unknown = make_kept<DataValue>("?");
  unknown->setType("?");
  return unknown;
}

DataExpr* class_zu_parser::method_call(const std::string& name, const DataExprList* arguments) {
  const MethodDecl* method = Compilation::GDataMethodTable() == nullptr
                                 ? nullptr
                                 : Compilation::GDataMethodTable()->getMethod(name);
  if (method == nullptr) {
    refuse(UndefinedMethodException(name), "method \"" + name + "\" is not declared");
    return unknown_value();
  }
  if (arguments == nullptr) return placed(make_kept<DataMethodCall>(method->getIndex()));
  DataExpr* call = make_kept<DataMethodCall>(method->getIndex(), *arguments);
  int depth = 0;
  for (const DataExpr* argument : *arguments) depth = std::max(depth, depth_of(argument));
  set_depth(call, depth + 1);
  return placed(call);
}

DataExpr* class_zu_parser::binary(int op, DataExpr* left, DataExpr* right) {
  DataExpr* e = make_kept<DataBinaryOp>(op, left, right);
  set_depth(e, 1 + std::max(depth_of(left), depth_of(right)));
  return placed(e);
}

DataExpr* class_zu_parser::unary(int op, DataExpr* operand) {
  DataExpr* e = make_kept<DataUnaryOp>(op, operand);
  set_depth(e, 1 + depth_of(operand));
  return placed(e);
}

DataExpr* class_zu_parser::signal_value(const std::string& name) {
  return placed(make_kept<DataSignalValue>(any_signal(name)));
}

// Types.

DataExpr* class_zu_parser::placed(DataExpr* e) {
  if (checks()) recovery_.data[e] = span_;
  return e;
}

DataTypes class_zu_parser::data_types() {
  const auto place = [this](const DataExpr* part) {
    const auto at = recovery_.data.find(part);
    return at == recovery_.data.end() ? span_ : at->second;
  };
  return {TheModule(), [=, this](const DataExpr* part) { return source_text(place(part)); },
          [=, this](const DataExpr* part, const std::string& sentence) {
            fault(sentence, place(part));
          }};
}

template <class Check>
void class_zu_parser::check_data(DataExpr* data, Check check) {
  const size_t before = recovery_.faults.size();
  DataTypes types = data_types();
  check(types);
  if (recovery_.faults.size() > before) data->setType("?");
}

void class_zu_parser::check_emission(const Signal* signal, DataExpr* data) {
  const std::string& name = signal->getOriginalName();
  if (!checks() || recovery_.stand_ins.contains(name)) return;
  const bool valued = signal->isValued(TheModule());
  const std::string type = valued ? signal->getValueType(TheModule()) : "";
  if (data == nullptr) {
    if (valued)
      fault('"' + name + "\" is of type " + type + " and needs a value: " + name + "(...)");
    return;
  }
  check_data(data, [&](DataTypes& types) {
    if (!valued) fault('"' + name + "\" carries no value: it is declared without a type");
    types.kind(data);
    if (valued) types.require(data, type, '"' + name + '"');
    const auto reads = data->computeDependencySet();
    if (valued && reads != nullptr && reads->contains(const_cast<Signal*>(signal)))
      fault("the value of \"" + name + "\" cannot be made of #" + name + " in the same instant");
  });
}

// Bindings.

namespace {

/// The first operation whose operands' types differ, in the order in which types are computed.
bool types_differ(DataExpr* e) {
  if (e->isDataUnaryOp()) return types_differ(static_cast<DataUnaryOp*>(e)->getOperand());
  if (!e->isDataBinaryOp()) return false;
  const auto* operation = static_cast<DataBinaryOp*>(e);
  return types_differ(operation->getLeft()) || types_differ(operation->getRight()) ||
         operation->getLeft()->getType(TheModule()) != operation->getRight()->getType(TheModule());
}

}  // namespace

void class_zu_parser::locate_type_error(DataExpr* data) const {
  if (!checks() && types_differ(data)) point_at(span_, "a data expression of two types");
}

Signal* class_zu_parser::bind(DataExpr* data, const std::string& prefix, Signal* clock) {
  locate_type_error(data);
  Signal* bound = TheModule()->addSignalBinding(data, prefix, clock);
  TheModule()->getBinding(bound->getInternalName())->setPlace(span_);
  return bound;
}

Signal* class_zu_parser::bind_condition(DataExpr* data, const std::string& name) {
  if (checks())
    check_data(data, [&](DataTypes& types) {
      types.require_condition(data,
                              name.find("IF_") != std::string::npos ? "\"if\"" : "\"value:\"");
    });
  locate_type_error(data);
  Signal* bound = TheModule()->addSignalBinding(data, name);
  bound->setInput();
  TheModule()->addDataSignal(bound);
  return bound;
}

void class_zu_parser::place_local(Signal* bound) {
  bound->setLocal();
  bound->setInput(false);
  bound->setOutput(false);
  TheModule()->addLocalSignal(bound);
}

void class_zu_parser::place_like(Signal* bound, const Signal* clock) {
  if (!clock->isOutput()) return place_local(bound);
  bound->setOutput();
  TheModule()->addOutputSignal(bound);
}

}  // namespace kiva
