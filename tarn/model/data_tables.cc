#include <ostream>

#include "tarn/model/data.h"
#include "tarn/model/sexception.h"

namespace kiva {

namespace {

void print_prefix(std::ostream& out, bool numbered, int index) {
  if (numbered) out << "   " << index << ": ";
}

std::string text_or_empty(const std::string* text) {
  return text == nullptr ? "" : *text;
}

}  // namespace

MethodDecl::MethodDecl(const std::string* return_type, const std::string* name,
                       std::list<std::string> args)
    : MethodDecl(text_or_empty(return_type), text_or_empty(name), std::move(args)) {}

void MethodDecl::print(std::ostream& out) const {
  out << return_type << ' ' << name << '(';
  const char* separator = "";
  for (const std::string& arg : arg_type_list) {
    out << separator << arg;
    separator = ", ";
  }
  out << ')';
}

void ConstantDecl::print(std::ostream& out) const {
  out << type << ' ' << name;
  if (value == nullptr) return;
  out << " value: ";
  value->print_debug(out);
}

void DataTypeTable::addType(const std::string& name) {
  if (indices.emplace(name, size()).second) names.push_back(name);
}

int DataTypeTable::getIndex(const std::string& name) const {
  auto at = indices.find(name);
  return at == indices.end() ? -1 : at->second;
}

std::string DataTypeTable::getTypeById(int id) const {
  return id < 0 || id >= size() ? "undefined" : names[id];
}

void DataTypeTable::print(std::ostream& out, bool numbered) const {
  out << "type:\n";
  for (int id = 0; id < size(); ++id) {
    print_prefix(out, numbered, id);
    out << names[id] << ";\n";
  }
}

void DataMethodTable::addMethod(MethodDecl* method) {
  if (!by_name.emplace(method->getName(), method).second)
    throw AlreadyDefinedException(method->getName(), "overloading_of_method_not_yet_implemented");
  method->setIndex(method_list.empty() ? 0 : method_list.back()->getIndex() + 1);
  method_list.push_back(method);
}

MethodDecl* DataMethodTable::getMethod(const std::string& name) const {
  auto at = by_name.find(name);
  return at == by_name.end() ? nullptr : at->second;
}

int DataMethodTable::getMethodIndex(const std::string& name) const {
  const MethodDecl* method = getMethod(name);
  return method == nullptr ? -1 : method->getIndex();
}

MethodDecl* DataMethodTable::getMethodById(int id) const {
  // Indices count up from 0 as methods arrive.
  return id < 0 || static_cast<size_t>(id) >= method_list.size() ? nullptr : method_list[id];
}

void DataMethodTable::print(std::ostream& out, bool numbered) const {
  out << "method:\n";
  for (const MethodDecl* method : method_list) {
    print_prefix(out, numbered, method->getIndex());
    method->print(out);
    out << ";\n";
  }
}

void DataConstantTable::addConstant(ConstantDecl* constant) {
  if (!by_name.emplace(constant->getName(), constant).second)
    throw AlreadyDefinedException(constant->getName(), "constant");
  if (constant->getValue() == nullptr || constant->getValue()->isDataValue()) {
    constant->setIndex(next_index++);
    by_index.emplace(constant->getIndex(), constant);
  }
  constant_list.push_back(constant);
}

ConstantDecl* DataConstantTable::getConstant(const std::string& name) const {
  auto at = by_name.find(name);
  return at == by_name.end() ? nullptr : at->second;
}

int DataConstantTable::getConstantIndex(const std::string& name) const {
  const ConstantDecl* constant = getConstant(name);
  return constant == nullptr ? -1 : constant->getIndex();
}

ConstantDecl* DataConstantTable::getConstantById(int id) const {
  auto at = by_index.find(id);
  return at == by_index.end() ? nullptr : at->second;
}

void DataConstantTable::print(std::ostream& out, bool numbered) const {
  out << "constant:\n";
  // Constants without an index come first, as -1 sorts before all others.
  for (const ConstantDecl* constant : constant_list) {
    if (constant->getIndex() != -1) continue;
    print_prefix(out, numbered, -1);
    constant->print(out);
    out << ";\n";
  }
  for (const auto& [id, constant] : by_index) {
    print_prefix(out, numbered, id);
    constant->print(out);
    out << ";\n";
  }
}

}  // namespace kiva
