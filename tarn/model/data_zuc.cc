// The evaluation table of a written module. At the top of its line an expression writes its
// definition; as an argument it writes the number of its line, which it gets when first met and
// whose definition follows later.

#include <ostream>

#include "tarn/model/compilation.h"
#include "tarn/model/data.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"

namespace kiva {

namespace {

/// True where the expression stands as an argument: its line's number has been written.
bool put_line_number(DataExpr* e, std::ostream& os, std::list<DataExpr*>& pending, int& next,
                     bool top) {
  if (top) return false;
  if (!e->hasIndex()) {
    e->setIndex(next++);
    pending.push_back(e);
  }
  os << e->getIndex();
  return true;
}

/// A type that no declaration names is entered: without a number the reader could not tell the
/// operator.
int operation_number(const std::string& type, int op) {
  Compilation::typeTable().addType(type);
  return Compilation::typeTable().getIndex(type) * DataExpr::NbPredefOp + op;
}

}  // namespace

void DataValue::ZUC_put(std::ostream& os, long*, Module*, std::list<DataExpr*>&, int&, bool) {
  os << '$' << (constant == nullptr ? -1 : constant->getIndex());
}

void DataConstant::ZUC_put(std::ostream& os, long* map, Module* module,
                           std::list<DataExpr*>& pending, int& next, bool top) {
  ConstantDecl* declared = Compilation::constantTable().getConstantById(constant_index);
  if (declared == nullptr)
    throw ModuleUndefinedConstantException("constant", std::to_string(constant_index));
  DataExpr* value = declared->getValue();
  if (top) {
    if (value != nullptr) {
      value->ZUC_put(os, map, module, pending, next, true);
    } else {
      os << '$' << declared->getIndex();
    }
    return;
  }
  // One line for the constant, however often it is used.
  if (declared->getEvalIndex() == -1) {
    declared->setEvalIndex(next);
    DataExpr* line = value != nullptr ? value : this;
    line->setIndex(next++);
    pending.push_back(line);
  }
  os << declared->getEvalIndex();
}

void DataSignalValue::ZUC_put(std::ostream& os, long* map, Module* module,
                              std::list<DataExpr*>& pending, int& next, bool top) {
  if (put_line_number(this, os, pending, next, top)) return;
  Bddexpressionwood* wood = module->getBddWood();
  os << "%%" << operation_number(getType(module), SignalVal) << '('
     << map[signal->getInitialBddStatusId(module, wood)] << ", "
     << map[signal->getInitialBddValueId(module, wood)] << ')';
}

void DataUnaryOp::ZUC_put(std::ostream& os, long* map, Module* module,
                          std::list<DataExpr*>& pending, int& next, bool top) {
  if (put_line_number(this, os, pending, next, top)) return;
  os << "%%" << operation_number(getType(module), op) << '(';
  operand->ZUC_put(os, map, module, pending, next, false);
  os << ')';
}

void DataBinaryOp::ZUC_put(std::ostream& os, long* map, Module* module,
                           std::list<DataExpr*>& pending, int& next, bool top) {
  if (put_line_number(this, os, pending, next, top)) return;
  os << "%%" << operation_number(getType(module), op) << '(';
  left->ZUC_put(os, map, module, pending, next, false);
  os << ", ";
  right->ZUC_put(os, map, module, pending, next, false);
  os << ')';
}

void DataMethodCall::ZUC_put(std::ostream& os, long* map, Module* module,
                             std::list<DataExpr*>& pending, int& next, bool top) {
  if (put_line_number(this, os, pending, next, top)) return;
  os << '%' << method_index << '(';
  const char* separator = "";
  for (DataExpr* argument : arguments) {
    os << separator;
    argument->ZUC_put(os, map, module, pending, next, false);
    separator = ", ";
  }
  os << ')';
}

}  // namespace kiva
