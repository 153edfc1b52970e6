// Data expressions: what they depend on, how they are copied, and how their value is asked for.

#include "tarn/model/data.h"

#include <unordered_set>

#include "base/graph_walk.h"
#include "tarn/model/compilation.h"
#include "tarn/model/depth_guard.h"
#include "tarn/model/interface.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/model/signal.h"
#include "tarn/session/session.h"

namespace kiva {

namespace {

ConstantDecl* constant_by_id(int id) {
  return Compilation::GDataConstantTable() == nullptr
             ? nullptr
             : Compilation::GDataConstantTable()->getConstantById(id);
}

}  // namespace

std::unique_ptr<std::set<Signal*>> DataExpr::computeDependencySet() const {
  auto signals = std::make_unique<std::set<Signal*>>();
  std::unordered_set<const DataExpr*> seen;
  const auto enters = [&](const DataExpr* e) { return seen.insert(e).second; };
  walk_from(std::vector<const DataExpr*>{this}, enters, [&](const DataExpr* e, auto more) {
    if (e->isDataSignalValue())
      signals->insert(static_cast<const DataSignalValue*>(e)->getSignal());
    for (const DataExpr* operand : e->operands()) more(operand);
  });
  if (signals->empty()) return nullptr;
  return signals;
}

const std::string& DataExpr::getType(Module* module) {
  if (type.empty()) computeType(module);
  return type;
}

std::string DataExpr::C_opname(int op) {
  static const char* const names[] = {" + ", " - ",  " * ",  " / ", " -",   " && ", " | ",
                                      " !",  " == ", " != ", " < ", " <= ", " > ",  " >= "};
  if (op < 0 || op > Supe)
    throw IllegalOperationException("DataExpr::C_opname", "invalid_operator");
  return names[op];
}

// Literals.

void DataValue::computeType(Module*) {
  throw UndefinedTypeException(value);
}
void DataValue::print_debug(std::ostream& out) const {
  out << value;
}

// Constants.

void DataConstant::computeType(Module*) {
  const ConstantDecl* constant = constant_by_id(constant_index);
  if (constant == nullptr) throw ModuleUndefinedConstantException("constant", type);
  type = constant->getType();
}
void DataConstant::setIndex(int number) {
  ConstantDecl* constant = constant_by_id(constant_index);
  if (constant == nullptr) throw ModuleUndefinedConstantException(type, "constant_table");
  index = number;
  if (constant->getEvalIndex() == -1) constant->setEvalIndex(number);
}
void DataConstant::print_debug(std::ostream& out) const {
  out << "C: " << constant_index;
}

// Values of signals.

void DataSignalValue::computeType(Module* module) {
  const SignalManager* manager = module->getSignalManager();
  const SignalRef* ref = manager->firstSignalRef(signal, module->getBddWood());
  // A signal of a branch that is not merged yet stands in no main wood.
  if (ref == nullptr) ref = manager->getSignalRefByName(signal->getInternalName());
  if (ref == nullptr || !ref->isValued()) throw UndefinedTypeException(signal->getInternalName());
  type = ref->getType();
}
void DataSignalValue::print_debug(std::ostream& out) const {
  out << signal->getInternalName();
}

// Operators.

void DataUnaryOp::computeType(Module* module) {
  const DepthGuard guard("DataExpr::computeType");
  type = operand->getType(module);
}
void DataUnaryOp::print_debug(std::ostream& out) const {
  out << op << '(';
  operand->print_debug(out);
  out << ')';
}

void DataBinaryOp::computeType(Module* module) {
  const DepthGuard guard("DataExpr::computeType");
  const std::string left_type = left->getType(module);
  const std::string right_type = right->getType(module);
  if (left_type != right_type) {
    Diagnostic fault =
        Diagnostic::of_told("*** Type check error in binary operator: type: " + left_type +
                            " differs from type: " + right_type);
    fault.sentence = "an operator has operands of two types, " + left_type + " and " + right_type;
    end_with(std::move(fault));
  }
  type = left_type;
}
void DataBinaryOp::print_debug(std::ostream& out) const {
  out << ' ' << op << '(';
  left->print_debug(out);
  out << ", ";
  right->print_debug(out);
  out << ')';
}

// Method calls.

void DataMethodCall::computeType(Module*) {
  const MethodDecl* method = Compilation::GDataMethodTable() == nullptr
                                 ? nullptr
                                 : Compilation::GDataMethodTable()->getMethodById(method_index);
  if (method == nullptr) throw UndefinedMethodException("method", std::to_string(method_index));
  type = method->getReturnType();
}
void DataMethodCall::print_debug(std::ostream& out) const {
  out << method_index << '(';
  const char* separator = "";
  for (const DataExpr* e : arguments) {
    out << separator;
    e->print_debug(out);
    separator = ", ";
  }
  out << ')';
}

// Bindings.

DataBinding::DataBinding(const DataBinding& other, Module* to, Module* from)
    : clock(nullptr), signal(nullptr), value(nullptr) {
  const std::string& signal_name = other.signal->getInternalName();
  signal = to->getSignal(signal_name);
  if (signal == nullptr)
    throw IllegalOperationException("DataDinding::DataBinding: no signal in new module for:",
                                    signal_name);
  if (other.clock != nullptr) {
    const std::string& clock_name = other.clock->getInternalName();
    clock = to->getSignal(clock_name);
    if (clock == nullptr)
      throw IllegalOperationException("DataDinding::DataBinding: no clock in new module for:",
                                      clock_name);
  }
  value = other.value->changeModule(to, from);
}

DataBinding* DataBinding::instanciate(Interface* interface) const {
  const auto found = [interface](const Signal* wanted) {
    const std::string& name = wanted->getInternalName();
    Signal* result = interface->getSignal(name);
    if (result == nullptr) {
      end_with(" not in interface:" + wanted->getOriginalName());
    }
    return result;
  };
  Signal* new_signal = found(signal);
  Signal* new_clock = clock == nullptr ? nullptr : found(clock);
  return make_kept<DataBinding>(new_signal, value->instanciate(interface), new_clock);
}

void DataBinding::print_debug(std::ostream& out) const {
  out << "signal:" << signal->getInternalName();
  if (clock != nullptr) out << "     clock:" << clock->getInternalName();
  out << "     value: ";
  value->print_debug(out);
}

}  // namespace kiva
