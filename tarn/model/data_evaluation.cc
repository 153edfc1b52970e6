// Evaluation of data: literals, constants and signals' values stand here or in the tables of the
// instant; each operator, method call and external constant is one request to the evaluation
// server. Nested requests go out before the request that needs them, left before right.

#include <iostream>

#include "base/process_end.h"
#include "tarn/model/compilation.h"
#include "tarn/model/data.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"

namespace kiva {

namespace {
const char* const no_value = "--";
}  // namespace

std::string DataValue::Simul_put(Module*, ConstantTexts*, ValueTexts*, int*, Sock) {
  return value;
}

std::string DataConstant::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                    int* context, Sock socket) {
  const ConstantDecl* declared =
      Compilation::GDataConstantTable == nullptr
          ? nullptr
          : Compilation::GDataConstantTable->getConstantById(constant_index);
  const std::string name =
      declared == nullptr ? std::to_string(constant_index) : declared->getName();
  auto at = constants->find(name);
  if (declared == nullptr || at == constants->end()) {
    std::cerr << "***error: DataConstant::Simul_put: undefined constant:" << name << '\n';
    end_process();
  }
  auto& [expression, text] = at->second;
  if (!text.empty()) return text;
  text = expression != nullptr ? expression->Simul_put(module, constants, values, context, socket)
                               : Compilation::Socket_call("CONST," + name, socket);
  return text;
}

std::string DataSignalValue::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                       int* context, Sock socket) {
  Bddexpressionwood* wood = module->getBddWood();
  const long status_id = signal->getBddStatusId(module, wood);
  const long value_id = signal->getBddValueId(module, wood);
  auto at = values->find(status_id);
  if (at == values->end()) {
    std::cerr << "***error: DataSignalValue:Simul_put: signal: " << signal->getInternalName()
              << "  undefined in  data signal value table\n";
    end_process();
  }
  std::string result = at->second;
  if (result != no_value) return result;

  if (context[status_id] == 1 && context[value_id] == 0) {
    if (const auto bound = module->getSignalBindingByClock(signal)) {
      for (const Signal* writer : *bound) {
        DataBinding* binding = module->getBinding(writer->getName(module, wood));
        if (binding == nullptr) continue;
        const Signal* trigger = binding->getSignal();
        if (context[trigger->getInitialBddStatusId(module, wood)] != 1 ||
            context[trigger->getInitialBddValueId(module, wood)] != 0)
          continue;
        result = binding->getValue()->Simul_put(module, constants, values, context, socket);
        break;
      }
    }
    std::cerr << "Value:" << result << '\n';
  }
  if (result == no_value)
    std::cerr << "***error:DataSignalValue:Simul_put: signal: " << signal->getInternalName()
              << "  has no value\n";
  return result;
}

std::string DataMethodCall::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                      int* context, Sock socket) {
  const MethodDecl* method = Compilation::GDataMethodTable == nullptr
                                 ? nullptr
                                 : Compilation::GDataMethodTable->getMethodById(method_index);
  if (method == nullptr) throw UndefinedMethodException("method", std::to_string(method_index));
  std::string request = "MC," + method->getName() + ",";
  const char* separator = "";
  for (DataExpr* argument : arguments) {
    request += separator + argument->Simul_put(module, constants, values, context, socket);
    separator = ",";
  }
  return Compilation::Socket_call(request, socket);
}

std::string DataBinaryOp::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                    int* context, Sock socket) {
  left->computeType(module);
  right->computeType(module);
  std::string request = "BOP,";
  request += left->Simul_put(module, constants, values, context, socket);
  request += "," + left->getType() + "," + C_opname(op) + ",";
  request += right->Simul_put(module, constants, values, context, socket);
  request += "," + right->getType();
  return Compilation::Socket_call(request, socket);
}

std::string DataUnaryOp::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                   int* context, Sock socket) {
  operand->computeType(module);
  std::string request = "UOP," + C_opname(op) + ",";
  request += operand->Simul_put(module, constants, values, context, socket);
  request += "," + operand->getType();
  return Compilation::Socket_call(request, socket);
}

}  // namespace kiva
