// Modules, their interfaces, and signals in expressions.

#include <algorithm>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/parse_supl.h"

namespace kiva {

void class_zu_parser::begin_module(const std::string& name) {
  TheModule() = make_kept<Module>(name);
  TheModule()->setSpan(span_);
  recovery_.in_module = recovery_.begins = recovery_.in_interface = true;
  recovery_.braced = false;
  recovery_.braces.clear();
  signal_places_.clear();
  run_places_.clear();
}

void class_zu_parser::refuse_doubled(const std::string& name) {
  // The library takes what it is given.
  if (!Compilation::rules().copies && !checks()) return;
  const auto [first, is_new] = signal_places_.emplace(name, span_);
  if (is_new) return;
  doubled(name, first->second);
}

void class_zu_parser::doubled(const std::string& name, const SourceSpan& first) {
  Diagnostic twice;
  twice.where = place_of(span_);
  twice.sentence = '"' + name + "\" is declared twice";
  twice.notes.push_back({place_of(first), "first declared here"});
  twice.manner = Manner::untold;
  if (!gathers()) end_with(std::move(twice));
  fault(twice.sentence, span_, twice.notes);
}

void class_zu_parser::finish_module(Statement* body) {
  recovery_.in_module = false;
  TheModule()->addBodyStatement(body);
  if (checks()) recovery_.modules.push_back({TheModule(), signal_places_});
  const std::string& name = TheModule()->getName();
  const Module* const known = Compilation::ModTable()->get(name);
  if (known == nullptr || !gathers()) return Compilation::ModTable()->add(TheModule());
  fault("two modules have the name \"" + name + '"', TheModule()->getSpan(),
        {{place_of(known->getSpan()), "the other one stands here"}});
}

Signal* class_zu_parser::declare(const std::string& name, const std::string& type) {
  refuse_doubled(name);
  Signal* signal = make_kept<Signal>(name, TheModule(), TheModule()->getBddWood());
  if (checks() && !type.empty()) require_type(type);
  if (!type.empty()) signal->setValueType(type, TheModule());
  return signal;
}

void class_zu_parser::declare_input(const std::string& name, const std::string& type) {
  Signal* signal = declare(name, type);
  signal->setInput();
  TheModule()->addInputSignal(signal);
}

void class_zu_parser::declare_output(const std::string& name, const std::string& type) {
  Signal* signal = declare(name, type);
  signal->setOutput();
  TheModule()->addOutputSignal(signal);
}

void class_zu_parser::declare_local(const std::string& name, const std::string& type) {
  Signal* local = declare(name, type);
  local->setDeclared();
  place_local(local);
}

void class_zu_parser::declare_run(const std::string& path, const std::string& module) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return declare_run(path, "", module);
  declare_run(path.substr(0, slash), path.substr(slash + 1), module);
}

void class_zu_parser::declare_run(const std::string& directory, const std::string& file,
                                  const std::string& module) {
  std::string slashed = directory;
  std::replace(slashed.begin(), slashed.end(), '\\', '/');
  const auto [first, is_new] = run_places_.emplace(module, span_);
  if (!is_new && gathers()) {
    fault("the place of module \"" + module + "\" is declared twice", span_,
          {{place_of(first->second), "first declared here"}});
  } else {
    TheModule()->addRunDecl(module, file, slashed);
  }
}

Signal* class_zu_parser::any_signal(const std::string& name) {
  // A constant of the data part may try to read one, where no module is.
  Signal* signal = TheModule() == nullptr ? nullptr : TheModule()->getSignal(name);
  if (signal != nullptr) return signal;
  refuse(ModuleUnknownSignalException(name), undeclared(name));
  return stand_in(name);
}

Signal* class_zu_parser::emitted(const std::string& name) const {
  return TheModule()->getOutputLocalSignal(name);
}

Signal* class_zu_parser::statement_signal(const std::string& name) {
  if (Signal* signal = emitted(name)) return signal;
  refuse(StatementSignalException(name), not_emitted(name));
  return stand_in(name);
}

RenamingEntry* class_zu_parser::renaming(const std::string& actual, const std::string& formal) {
  Signal* signal = TheModule()->getSignal(actual);
  if (signal == nullptr) {
    refuse(RunUnknownSignalException("undeclared", actual), undeclared(actual));
    signal = stand_in(actual);
  }
  return made<RenamingEntry>(formal, signal);
}

Expression* class_zu_parser::signal(const std::string& name) {
  return any_signal(name);
}

}  // namespace kiva
