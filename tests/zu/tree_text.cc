#include "tests/zu/tree_text.h"

#include <sstream>

#include "tarn/model/compilation.h"
#include "tarn/model/data.h"
#include "tarn/model/expression.h"
#include "tarn/model/signal.h"
#include "tarn/zu/statements/abort.h"
#include "tarn/zu/statements/emit.h"
#include "tarn/zu/statements/halt.h"
#include "tarn/zu/statements/loop.h"
#include "tarn/zu/statements/nothing.h"
#include "tarn/zu/statements/parallel.h"
#include "tarn/zu/statements/pause.h"
#include "tarn/zu/statements/present.h"
#include "tarn/zu/statements/run.h"
#include "tarn/zu/statements/sequence.h"
#include "tarn/zu/statements/sustain.h"
#include "tarn/zu/statements/wait.h"

namespace kiva::test {

namespace {

std::string members(const Statement& statement) {
  std::string text;
  for (const Statement* child : statement.children())
    text += (text.empty() ? "" : ", ") + tree_text(child);
  return "(" + text + ")";
}

std::string bound(const Signal* data) {
  return data == nullptr ? "" : "(" + data->getInternalName() + ")";
}

}  // namespace

std::string tree_text(const Expression* expression) {
  std::ostringstream out;
  expression->print(out);
  std::string text = out.str();
  // Constants print with blanks around them.
  std::erase(text, ' ');
  for (size_t at = 0; (at = text.find("np", at)) != std::string::npos; at += 3)
    text.insert(at + 2, " ");
  return text;
}

std::string tree_text(const Statement* statement) {  // house: a line for each kind
  if (statement == nullptr) return "null";
  if (dynamic_cast<const Nothing*>(statement)) return "nothing";
  if (dynamic_cast<const Halt*>(statement)) return "halt";
  if (dynamic_cast<const Pause*>(statement)) return "pause";
  if (dynamic_cast<const Sn*>(statement)) return "Sn" + members(*statement);
  if (dynamic_cast<const Pn*>(statement)) return "Pn" + members(*statement);
  if (dynamic_cast<const Loop*>(statement)) return "loop" + members(*statement);
  if (auto* s = dynamic_cast<const Emit*>(statement))
    return "emit " + s->getSignalName() + bound(s->getDataSignal());
  if (auto* s = dynamic_cast<const NoEmit*>(statement)) return "noemit " + s->getSignalName();
  if (auto* s = dynamic_cast<const SustainUntil*>(statement))
    return "sustain " + s->getSignalName() + bound(s->getDataSignal()) + " until " +
           tree_text(s->getExpression());
  if (auto* s = dynamic_cast<const Wait*>(statement))
    return "wait " + tree_text(s->getExpression());
  if (auto* s = dynamic_cast<const Present*>(statement))
    return "present " + tree_text(s->getExpression()) + members(*s);
  if (auto* s = dynamic_cast<const Abort*>(statement))
    return "weak" + members(*s) + " when " + tree_text(s->getExpression());
  if (auto* s = dynamic_cast<const StrongAbort*>(statement))
    return "strong" + members(*s) + " when " + tree_text(s->getExpression());
  if (auto* s = dynamic_cast<const Run*>(statement)) {
    std::string text = "run " + s->getModuleName();
    for (const auto& [formal, actual] : s->getRenamingTable())
      text += " " + formal + "=" + actual->getInternalName();
    return text;
  }
  return statement->getName();
}

std::string tree_text(const DataExpr* data) {
  if (data->isDataConstant()) {
    const int id = static_cast<const DataConstant*>(data)->getConstantIndex();
    return Compilation::GDataConstantTable()->getConstantById(id)->getName();
  }
  if (data->isDataSignalValue())
    return "#" + static_cast<const DataSignalValue*>(data)->getSignal()->getInternalName();
  if (data->isDataUnaryOp()) {
    const auto* e = static_cast<const DataUnaryOp*>(data);
    std::string op = DataExpr::C_opname(e->getOp());
    std::erase(op, ' ');
    return op + "(" + tree_text(e->getOperand()) + ")";
  }
  if (data->isDataBinaryOp()) {
    const auto* e = static_cast<const DataBinaryOp*>(data);
    return "(" + tree_text(e->getLeft()) + DataExpr::C_opname(e->getOp()) +
           tree_text(e->getRight()) + ")";
  }
  if (data->isDataMethod()) {
    const auto* e = static_cast<const DataMethodCall*>(data);
    std::string text;
    for (const DataExpr* argument : e->getArguments())
      text += (text.empty() ? "" : ", ") + tree_text(argument);
    return Compilation::GDataMethodTable()->getMethodById(e->getMethodIndex())->getName() + "(" +
           text + ")";
  }
  return static_cast<const DataValue*>(data)->getValue();
}

}  // namespace kiva::test
