// Copies of data expressions. Trees share nodes (a table of 60 lines can stand for 2^60 paths), and
// come from files: so each node is copied once, and no recursion follows their depth.

#include <algorithm>
#include <climits>
#include <functional>
#include <unordered_map>

#include "base/graph_walk.h"
#include "tarn/model/data.h"
#include "tarn/model/interface.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/model/signal.h"
#include "tarn/session/session.h"

namespace kiva {

namespace {

/// Visits each node of a tree once, after its operands; gives the result of the root.
/// `result(node, results of the operands)` makes that of a node.
template <class Result, class Make>
Result folded(const DataExpr* root, Make make) {
  std::unordered_map<const DataExpr*, Result> done;
  const auto is_done = [&](const DataExpr* e) { return done.contains(e); };
  const auto needs = [](const DataExpr* e, auto ask) {
    const std::vector<DataExpr*> operands = e->operands();
    for (auto operand = operands.rbegin(); operand != operands.rend(); ++operand) ask(*operand);
  };
  walk_from_below(root, is_done, needs, [&](const DataExpr* e) {
    std::vector<Result> results;
    for (const DataExpr* operand : e->operands()) results.push_back(done.at(operand));
    done.emplace(e, make(e, results));
  });
  return done.at(root);
}

/// A copy whose signals are those that `found` gives for the signals read.
DataExpr* copied(const DataExpr* root, const std::function<Signal*(const Signal*)>& found) {
  return folded<DataExpr*>(
      root, [&](const DataExpr* e, const std::vector<DataExpr*>& operands) -> DataExpr* {
        if (!e->isDataSignalValue()) return e->over(operands);
        return make_kept<DataSignalValue>(
            found(static_cast<const DataSignalValue*>(e)->getSignal()));
      });
}

Signal* signal_of_instance(Interface* interface, const Signal* signal) {
  const std::string& name = signal->getOriginalName();
  const char* failure = "DataSignalValue::instanciate";
  Signal* found = nullptr;
  if (signal->isInput()) {
    failure = "Interface::getInputSignal";
    found = interface->getInputSignal(name);
    if (found == nullptr) found = interface->getDataSignal(signal->getInternalName());
  } else if (signal->isOutput()) {
    failure = "Interface::getOutputSignal";
    found = interface->getOutputSignal(name);
  } else if (signal->isLocal()) {
    failure = "Interface::getLocalSignal";
    found = interface->getLocalSignal(signal->getInternalName());
  }
  if (found == nullptr) throw IllegalOperationException(failure, name);
  return found;
}

}  // namespace

DataExpr* DataExpr::instanciate(Interface* interface) const {
  return copied(this, [&](const Signal* signal) { return signal_of_instance(interface, signal); });
}

DataExpr* DataExpr::duplicate() const {
  return copied(this, [](const Signal* signal) { return const_cast<Signal*>(signal); });
}

DataExpr* DataExpr::changeModule(Module* to, Module*) const {
  return copied(this, [&](const Signal* signal) {
    Signal* found = to->getSignal(signal->getInternalName());
    if (found == nullptr)
      throw IllegalOperationException("DataSignalValue::changeModule: no signal in new module for:",
                                      signal->getInternalName());
    return found;
  });
}

long DataExpr::written_size() const {
  return folded<long>(this, [](const DataExpr*, const std::vector<long>& operands) {
    long size = 1;
    for (long operand : operands) size = operand > LONG_MAX - size ? LONG_MAX : size + operand;
    return size;
  });
}

DataExpr* DataValue::over(const std::vector<DataExpr*>&) const {
  return make_kept<DataValue>(value, constant);
}
DataExpr* DataConstant::over(const std::vector<DataExpr*>&) const {
  return make_kept<DataConstant>(constant_index);
}
DataExpr* DataSignalValue::over(const std::vector<DataExpr*>&) const {
  return make_kept<DataSignalValue>(signal);
}
DataExpr* DataUnaryOp::over(const std::vector<DataExpr*>& operands) const {
  return make_kept<DataUnaryOp>(op, operands[0]);
}
DataExpr* DataBinaryOp::over(const std::vector<DataExpr*>& operands) const {
  return make_kept<DataBinaryOp>(op, operands[0], operands[1]);
}
DataExpr* DataMethodCall::over(const std::vector<DataExpr*>& operands) const {
  return make_kept<DataMethodCall>(method_index,
                                   std::list<DataExpr*>(operands.begin(), operands.end()));
}

}  // namespace kiva
