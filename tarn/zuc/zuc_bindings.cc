// Turns the evaluation table of a file into expressions. Each line is built once and shared by all
// that refer to it; the walk keeps its path on a stack of its own, and a line met again while it is
// under way reaches itself.

#include "tarn/zuc/zuc_bindings.h"

#include "tarn/model/sexception.h"
#include "tarn/session/session.h"

namespace kiva {

binding_declaration_parse::binding_declaration_parse(std::vector<bindingparse> bindings,
                                                     std::vector<evalnodeparse> lines,
                                                     const std::vector<int>& corres_method,
                                                     const std::vector<int>& corres_constant)
    : bindings_(std::move(bindings)),
      lines_(std::move(lines)),
      corres_method_(corres_method),
      corres_constant_(corres_constant) {
  for (size_t i = 0; i < lines_.size(); ++i) by_number_.emplace(lines_[i].nodeident, i);
}

const evalnodeparse& binding_declaration_parse::get_evalnode(long id) const {
  auto at = by_number_.find(id);
  if (at == by_number_.end())
    throw IllegalOperationException("binding_declaration_parse::get_evalnode", "node_not_found");
  return lines_[at->second];
}

namespace {

bool reads_signal(const evalnodeparse& node) {
  return node.nodetype == evalnodeparse::operation &&
         node.methodident % DataExpr::NbPredefOp == DataExpr::SignalVal;
}

}  // namespace

std::vector<long> binding_declaration_parse::needed_lines(const evalnodeparse& node) {
  if (node.nodetype == evalnodeparse::reference) return {node.tableident};
  if (node.nodetype == evalnodeparse::constant || reads_signal(node)) return {};
  return node.arguments;
}

DataExpr* binding_declaration_parse::dataexpr(long id, Module* module) {
  auto known = built_.find(id);
  if (known != built_.end() && known->second != nullptr) return known->second;

  struct Open {
    const evalnodeparse* node;
    std::vector<long> needed;
    size_t next = 0;
  };
  std::vector<Open> path;
  const auto open = [&](long line_id) {
    const evalnodeparse& node = get_evalnode(line_id);
    path.push_back({&node, needed_lines(node)});
    built_[line_id] = nullptr;
  };
  open(id);
  while (!path.empty()) {
    Open& top = path.back();
    if (top.next < top.needed.size()) {
      const long needed = top.needed[top.next++];
      auto at = built_.find(needed);
      if (at == built_.end()) {
        open(needed);
      } else if (at->second == nullptr) {
        throw ZucProblem{top.node->line, "evaluation line " + std::to_string(top.node->nodeident) +
                                             " reaches itself through line " +
                                             std::to_string(needed)};
      }
      continue;
    }
    built_[top.node->nodeident] = make(*top.node, module);
    path.pop_back();
  }
  return built_[id];
}

DataExpr* binding_declaration_parse::make(const evalnodeparse& node, Module* module) {
  const auto global_index = [&node](const std::vector<int>& table, long number, const char* kind) {
    if (number < 0 || static_cast<size_t>(number) >= table.size())
      throw ZucProblem{node.line, "evaluation line " + std::to_string(node.nodeident) + ": " +
                                      kind + " number " + std::to_string(number) +
                                      " is not declared in the file"};
    return table[number];
  };
  switch (node.nodetype) {
    case evalnodeparse::constant:
      return make_kept<DataConstant>(global_index(corres_constant_, node.tableident, "constant"));
    case evalnodeparse::reference:
      return built_.at(node.tableident);
    case evalnodeparse::operation: {
      const int op = static_cast<int>(node.methodident % DataExpr::NbPredefOp);
      if (op == DataExpr::SignalVal) {
        Signal* signal = nullptr;
        if (!node.arguments.empty()) {
          const SignalRef* ref = module->getSignalManager()->getSignalRefById(
              node.arguments.front(), module->getBddWood());
          if (ref != nullptr) signal = module->getSignal(ref->getOriginalName());
        }
        if (signal == nullptr) {
          end_with("binding_declaration_parse::dataexpr: signal not found");
        }
        return make_kept<DataSignalValue>(signal);
      }
      if (node.arguments.size() == 2)
        return make_kept<DataBinaryOp>(op, built_.at(node.arguments[0]),
                                       built_.at(node.arguments[1]));
      if (node.arguments.size() == 1)
        return make_kept<DataUnaryOp>(op, built_.at(node.arguments[0]));
      throw IllegalOperationException("binding_declaration_parse::dataexpr", "invalid_operator");
    }
    case evalnodeparse::method: {
      std::list<DataExpr*> arguments;
      for (long argument : node.arguments) arguments.push_back(built_.at(argument));
      return make_kept<DataMethodCall>(global_index(corres_method_, node.methodident, "method"),
                                       std::move(arguments));
    }
    default:
      throw IllegalOperationException("binding_declaration_parse::dataexpr", "unknown_eval_type");
  }
}

void binding_declaration_parse::createbinding(Module* module) {
  Bddexpressionwood* wood = module->getBddWood();
  for (const bindingparse& binding : bindings_) {
    const SignalRef* ref =
        module->getSignalManager()->getSignalRefById(binding.instance_status_ident, wood);
    if (ref == nullptr) {
      end_with("unknown data signal:" + std::to_string(binding.instance_status_ident));
    }
    Signal* signal = module->getSignal(ref->getOriginalName());
    if (signal == nullptr) {
      end_with("unknown data signal:" + ref->getOriginalName());
    }
    DataExpr* value = dataexpr(binding.eval_ident, module);
    Signal* clock = binding.signal_status_ident == -1
                        ? nullptr
                        : module->getSignalById(binding.signal_status_ident, wood);
    if (clock != nullptr) {
      clock->setClock();
      module->addSignalBinding(value, signal, clock);
    } else {
      module->addSignalBinding(value, signal);
    }
  }
}

}  // namespace kiva
