// Evaluation of data: literals, constants and signals' values stand here or in the tables of the
// instant; each operator, method call and external constant is one request to the evaluation
// server. Nested requests go out before the request that needs them, left before right.

#include <algorithm>
#include <iostream>
#include <unordered_map>

#include "base/printable_text.h"
#include "tarn/model/compilation.h"
#include "tarn/model/data.h"
#include "tarn/model/depth_guard.h"
#include "tarn/model/evaluation_service.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/diagnostic.h"

namespace kiva {

namespace {

const char* const no_value = "--";

/// Holds the signals whose values are being looked for, one inside the other. A signal met again
/// would be asked for without end.
class ReadGuard {
 public:
  explicit ReadGuard(const Signal* signal) : depth_("DataExpr::Simul_put") {
    if (std::find(open_.begin(), open_.end(), signal) != open_.end()) {
      std::string names;
      for (const Signal* reader : open_) names += reader->getInternalName() + " ";
      throw IllegalOperationException(
          "DataSignalValue::Simul_put: a value reads itself through its bindings:",
          names + signal->getInternalName());
    }
    open_.push_back(signal);
  }
  ~ReadGuard() { open_.pop_back(); }
  ReadGuard(const ReadGuard&) = delete;
  ReadGuard& operator=(const ReadGuard&) = delete;

 private:
  DepthGuard depth_;
  struct Signals {
    std::vector<const Signal*> open;
  };
  std::vector<const Signal*>& open_ = Session::current().part<Signals>().open;
};

std::string reply_to(const std::string& request, Sock socket) {
  const auto& ask = Session::current().part<EvaluationService>().ask;
  return ask ? ask(request) : Compilation::Socket_call(request, socket);
}

/// The results of one evaluation, from its outermost expression on, so that an expression that many
/// use is evaluated once. Where no service is chosen, requests are repeated as told, unless the
/// evaluation proves large.
struct Results {
  static constexpr long large = 64;
  int depth = 0;
  long evaluated = 0;
  std::unordered_map<const DataExpr*, std::string> known;
};

template <class Evaluate>
std::string once(const DataExpr* expression, Evaluate evaluate) {
  struct Level {
    Results& results;
    explicit Level(Results& all) : results(all) { ++results.depth; }
    ~Level() {
      if (--results.depth > 0) return;
      results.known.clear();
      results.evaluated = 0;
    }
  };
  const DepthGuard guard("DataExpr::Simul_put");
  Results& results = Session::current().part<Results>();
  const Level level(results);
  const auto known = results.known.find(expression);
  if (known != results.known.end()) return known->second;
  ++results.evaluated;
  std::string text = evaluate();
  if (results.evaluated > Results::large || Session::current().part<EvaluationService>().ask)
    results.known.emplace(expression, text);
  return text;
}

}  // namespace

std::string DataValue::Simul_put(Module*, ConstantTexts*, ValueTexts*, int*, Sock) {
  return value;
}

std::string DataConstant::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                    int* context, Sock socket) {
  const ConstantDecl* declared =
      Compilation::GDataConstantTable() == nullptr
          ? nullptr
          : Compilation::GDataConstantTable()->getConstantById(constant_index);
  const std::string name =
      declared == nullptr ? std::to_string(constant_index) : declared->getName();
  auto at = constants->find(name);
  if (declared == nullptr || at == constants->end()) {
    end_with("***error: DataConstant::Simul_put: undefined constant:" + name);
  }
  auto& [expression, text] = at->second;
  if (!text.empty()) return text;
  text = expression != nullptr ? expression->Simul_put(module, constants, values, context, socket)
                               : reply_to("CONST," + name, socket);
  return text;
}

std::string DataSignalValue::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                       int* context, Sock socket) {
  const ReadGuard guard(signal);
  Bddexpressionwood* wood = module->getBddWood();
  const long status_index = signal->getBddStatusId(module, wood);
  const long value_index = signal->getBddValueId(module, wood);
  auto at = values->find(status_index);
  if (at == values->end()) {
    end_with("***error: DataSignalValue:Simul_put: signal: " + signal->getInternalName() +
             "  undefined in  data signal value table");
  }
  std::string result = at->second;
  if (result != no_value) return result;

  if (context[status_index] == 1 && context[value_index] == 0) {
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
    std::cerr << "Value:" << printable(result) << '\n';
  }
  if (result == no_value)
    remark(Severity::warning, "\"" + signal->getInternalName() + "\" is read and has no value",
           "***error:DataSignalValue:Simul_put: signal: " + signal->getInternalName() +
               "  has no value");
  return result;
}

namespace {

/// Sends a request made of value texts. A comma in one of them shifts the server's fields: the
/// protocol has no escape, so the user is told.
std::string ask(const std::string& request, bool comma_in_value, Sock socket) {
  if (comma_in_value)
    remark(Severity::warning, "a value with a comma goes to the server: " + request,
           "Warning: a value text holds a comma in request: " + printable(request));
  return reply_to(request, socket);
}

bool has_comma(const std::string& text) {
  return text.find(',') != std::string::npos;
}

}  // namespace

std::string DataMethodCall::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                      int* context, Sock socket) {
  return once(this, [&] {
    const MethodDecl* method = Compilation::GDataMethodTable() == nullptr
                                   ? nullptr
                                   : Compilation::GDataMethodTable()->getMethodById(method_index);
    if (method == nullptr) throw UndefinedMethodException("method", std::to_string(method_index));
    std::string request = "MC," + method->getName() + ",";
    const char* separator = "";
    bool comma = false;
    for (DataExpr* argument : arguments) {
      const std::string text = argument->Simul_put(module, constants, values, context, socket);
      comma = comma || has_comma(text);
      request += separator + text;
      separator = ",";
    }
    return ask(request, comma, socket);
  });
}

std::string DataBinaryOp::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                    int* context, Sock socket) {
  return once(this, [&] {
    left->computeType(module);
    right->computeType(module);
    const std::string left_text = left->Simul_put(module, constants, values, context, socket);
    const std::string name = C_opname(op);
    const std::string right_text = right->Simul_put(module, constants, values, context, socket);
    return ask("BOP," + left_text + "," + left->getType() + "," + name + "," + right_text + "," +
                   right->getType(),
               has_comma(left_text) || has_comma(right_text), socket);
  });
}

std::string DataUnaryOp::Simul_put(Module* module, ConstantTexts* constants, ValueTexts* values,
                                   int* context, Sock socket) {
  return once(this, [&] {
    operand->computeType(module);
    const std::string name = C_opname(op);
    const std::string text = operand->Simul_put(module, constants, values, context, socket);
    return ask("UOP," + name + "," + text + "," + operand->getType(), has_comma(text), socket);
  });
}

}  // namespace kiva
