// Statements. Each gets a name of its own from the module and a counter.

#include <algorithm>

#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/abort.h"
#include "tarn/zu/emit.h"
#include "tarn/zu/halt.h"
#include "tarn/zu/loop.h"
#include "tarn/zu/parallel.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/present.h"
#include "tarn/zu/run.h"
#include "tarn/zu/sequence.h"
#include "tarn/zu/sustain.h"
#include "tarn/zu/wait.h"

namespace kiva {

template <class T, class... Args>
T* class_zu_parser::build(const std::string& name, Args&&... args) {
  T* statement = make_kept<T>(name, std::forward<Args>(args)...);
  statement->setModule(TheModule());
  statement->setSpan(span_);
  measure(statement);
  return statement;
}

namespace {

std::string next_name(const char* prefix, int& counter) {
  return TheModule()->generateName(prefix, counter);
}

using Members = std::vector<Statement*>;

}  // namespace

Statement* class_zu_parser::nothing() {
  return build<Nothing>(next_name("N", Module::NothingNumber()));
}

Statement* class_zu_parser::halt() {
  return build<Halt>(next_name("H", Module::HaltNumber()));
}

Statement* class_zu_parser::pause() {
  return build<Pause>(next_name("PS", Module::PauseNumber()));
}

template <class T>
Statement* class_zu_parser::appended(T* list, Statement* right) {
  const Extent left_extent = extent_of(list);
  const Extent right_extent = extent_of(right);
  list->addMember(right);
  list->setSpan(span_);
  enter_extent(list, {std::max(left_extent.depth, 1 + right_extent.depth),
                      left_extent.statements + right_extent.statements});
  return list;
}

Statement* class_zu_parser::parallel(Statement* left, Statement* right) {
  if (left->isParallel()) return appended(static_cast<Pn*>(left), right);
  return build<Pn>(next_name("Pn", Module::ParallelNumber()), Members{left, right});
}

Statement* class_zu_parser::sequence(Statement* left, Statement* right) {
  if (left->isSequence()) return appended(static_cast<Sn*>(left), right);
  return build<Sn>(next_name("Sn", Module::SequenceNumber()), Members{left, right});
}

Statement* class_zu_parser::present(Expression* expression, Statement* then_branch,
                                    Statement* else_branch) {
  return build<Present>(next_name("PR", Module::PresentNumber()), expression, then_branch,
                        else_branch);
}

Statement* class_zu_parser::present_if(DataExpr* condition, Statement* then_branch,
                                       Statement* else_branch) {
  const std::string name = next_name("IF", Module::PresentNumber());
  Signal* signal = bind_condition(condition, name);
  return build<Present>(name, signal, then_branch, else_branch);
}

Statement* class_zu_parser::loop(Statement* body) {
  return build<Loop>(next_name("L", Module::LoopNumber()), body);
}

Statement* class_zu_parser::repeat(int count, Statement* body) {
  if (count < 1)
    throw IllegalOperationException("is a bad number for repeat", std::to_string(count));
  count_copies(count, extent_of(body).statements);
  Members members;
  members.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) {
    members.push_back(body->duplicate(i));
    extents_[members.back()] = extent_of(body);
  }
  return build<Sn>(next_name("Sn", Module::SequenceNumber()), std::move(members));
}

Statement* class_zu_parser::wait(Expression* expression) {
  return build<Wait>(next_name("W", Module::WaitNumber()), expression);
}

Statement* class_zu_parser::wait(int count, Expression* expression) {
  if (count < 1) throw BadValueNumberWaitException(count);
  if (count == 1) return wait(expression);
  count_copies(count, 1);
  Members members;
  members.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) members.push_back(wait(expression));
  return build<Sn>(next_name("Sn", Module::SequenceNumber()), std::move(members));
}

void class_zu_parser::count_copies(long count, long statements) {
  if (count > copies_left_ / statements)
    throw IllegalOperationException("too many copies of one statement:", std::to_string(count));
  copies_left_ -= count * statements;
}

Statement* class_zu_parser::abort(Statement* body, Expression* expression) {
  return build<Abort>(next_name("A", Module::AbortNumber()), expression, body);
}

Statement* class_zu_parser::strong_abort(Statement* body, Expression* expression) {
  return build<StrongAbort>(next_name("SA", Module::AbortNumber()), expression, body);
}

Signal* class_zu_parser::statement_signal(const std::string& name) const {
  Signal* signal = emitted(name);
  if (signal == nullptr) throw StatementSignalException(name);
  return signal;
}

Statement* class_zu_parser::emit(const std::string& signal_name, DataExpr* data) {
  Signal* signal = statement_signal(signal_name);
  const std::string name = next_name("E", Module::EmitNumber());
  Signal* bound = nullptr;
  if (data != nullptr) {
    bound = bind(data, name, signal);
    place_local(bound);
  }
  return build<Emit>(name, signal, signal_name, bound);
}

Statement* class_zu_parser::noemit(const std::string& signal_name) {
  Signal* signal = statement_signal(signal_name);
  return build<NoEmit>(next_name("NE", Module::NoEmitNumber()), signal, signal_name, nullptr);
}

Statement* class_zu_parser::sustain(const std::string& signal_name, DataExpr* data,
                                    Expression* until) {
  Signal* signal = statement_signal(signal_name);
  const std::string name = next_name("SU", Module::SustainUntilNumber());
  Signal* bound = nullptr;
  if (data != nullptr) {
    bound = bind(data, name, signal);
    place_like(bound, signal);
  }
  return build<SustainUntil>(name, signal, signal_name, bound, until);
}

Statement* class_zu_parser::run(const std::string& module, const RenamingList* renamings) {
  Run* statement = build<Run>(next_name(("R_" + module).c_str(), Module::RunNumber()), module);
  statement->setRenamingTable(renamings);
  return statement;
}

RenamingEntry* class_zu_parser::renaming(const std::string& actual, const std::string& formal) {
  Signal* signal = TheModule()->getSignal(actual);
  if (signal == nullptr) throw RunUnknownSignalException("undeclared", actual);
  return made<RenamingEntry>(formal, signal);
}

}  // namespace kiva
