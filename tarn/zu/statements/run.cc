// Which module a run calls: a compiled module that has been read, the compiled file that its
// caller's declaration means, or a module of source text.

#include "tarn/zu/statements/run.h"

#include <iostream>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/nested_modules.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zu/statement_copy.h"
#include "tarn/zu/statements/run_files.h"
#include "tarn/zu/zu_file.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva {

namespace {

Module* known(const ModuleTable* table, const std::string& name) {
  return table == nullptr ? nullptr : table->get(name);
}

Module* enter_compiled(Module* module) {
  if (module == nullptr) return nullptr;
  if (Compilation::ZucModTable() == nullptr)
    Compilation::ZucModTable() = make_kept<ModuleTable>(&told_text());
  if (known(Compilation::ZucModTable(), module->getName()) == nullptr)
    Compilation::ZucModTable()->add(module);
  return module;
}

}  // namespace

Statement* Run::read(class_zu_parser& reader, const std::string& module,
                     const RenamingList* renamings) {
  Run* run = reader.build<Run>(reader.next_name("R_" + module, Module::RunNumber()), module);
  reader.tolerate([&] { run->setRenamingTable(renamings); });
  return run;
}

Statement* Run::copy(const Copying& copying) const {
  const Module* caller = copying.module();
  Run* copy = copying.make_named(
      *this,
      caller == nullptr ? copying.name(*this)
                        : "R_" + caller->getName() + "_" + std::to_string(Module::RunNumber()++),
      module_name_);
  if (caller != nullptr || Compilation::rules().copies) copy->renaming_ = renaming_;
  return copy;
}

void Run::setRenamingTable(const std::list<std::pair<std::string, Signal*>>* renamings) {
  renaming_ = std::make_shared<Renaming>();
  if (renamings == nullptr) return;
  for (const auto& [formal, actual] : *renamings)
    if (!renaming_->emplace(formal, actual).second)
      throw explained(HashTableAddException(formal), "\"" + formal + "\" is renamed twice");
}

Signal* Run::getRenamingSignal(const std::string& formal) const {
  auto at = renaming_->find(formal);
  return at == renaming_->end() ? nullptr : at->second;
}

void Run::computeAwaitedNameList(std::list<std::string>& inputs, std::list<std::string>& outputs,
                                 Module* module) const {
  for (const Signal* input : module->getInputSignalList())
    inputs.push_back(input->getOriginalName());
  for (const Signal* output : module->getOutputSignalList())
    outputs.push_back(output->getOriginalName());
  for (const Signal* local : module->getLocalSignalList()) {
    inputs.push_back(local->getOriginalName());
    outputs.push_back(local->getOriginalName());
  }
  for (const auto& [formal, actual] : *renaming_) {
    if (!actual->isOutput()) inputs.push_back(formal);
    if (!actual->isInput()) outputs.push_back(formal);
  }
}

void Run::find_called(Module* module) {
  called_ = known(Compilation::ZucModTable(), module_name_);
  if (called_ != nullptr) return;
  const std::string* location = module->getModuleLocation(module_name_);
  if (location == nullptr) called_ = known(Compilation::ModTable(), module_name_);
  if (called_ != nullptr) return;
  std::list<std::string> inputs;
  std::list<std::string> outputs;
  computeAwaitedNameList(inputs, outputs, module);
  called_ = enter_compiled(read_listed_zuc(module_name_, &inputs, &outputs));
  if (called_ != nullptr) return;

  const RunFiles files(module_name_, location, getSpan());
  if (!files.compiled().empty()) {
    Module* declared = read_zuc(files.compiled(), "", "", &inputs, &outputs);
    if (declared != nullptr && declared->getName() != module_name_) {
      std::cerr << files.compiled() << " holds module " << declared->getName() << '\n';
    } else {
      called_ = enter_compiled(declared);
    }
  }
  if (called_ == nullptr) called_ = known(Compilation::ModTable(), module_name_);
  if (called_ == nullptr) called_ = read_source(files);
  if (called_ != nullptr) return;
  files.tell_missing();
  throw explained(
      IllegalOperationException(location == nullptr
                                    ? "Run: called module  not defined in file"
                                    : "Run: compiled called module declared but not provided: ",
                                module_name_),
      files.missing());
}

Module* Run::read_source(const RunFiles& files) const {
  if (files.source().empty()) return nullptr;
  read_zu_file(files.source().c_str());
  return known(Compilation::ModTable(), module_name_);
}

bool Run::reincarnate() {
  if (!answer_.has_value()) answer_ = located([this] { return ask_called(); });
  return *answer_;
}

bool Run::ask_called() {
  const auto answer_of = [](Module* called) {
    if (called->getSet() != nullptr && !CompilingModule::under_way(called))
      return called->getReincarnate();
    const AskedModule asked(called);
    return called->getStatement()->reincarnate();
  };
  if (called_ != nullptr) return answer_of(called_);
  if (Module* read = known(Compilation::ZucModTable(), module_name_)) return read->getReincarnate();
  if (Module* source = known(Compilation::ModTable(), module_name_)) {
    called_ = source;
    return answer_of(source);
  }
  const int flag = listed_zuc_reincarnate(module_name_);
  if (flag != -1) return flag != 0;

  const Module* caller = getModule();
  const std::string* location = caller->getModuleLocation(module_name_);
  const RunFiles files(module_name_, location, getSpan());
  if (!files.compiled().empty()) {
    const int declared = zuc_reincarnate(module_name_, files.compiled());
    if (declared != -1) return declared != 0;
  }
  called_ = read_source(files);
  if (called_ != nullptr) return answer_of(called_);
  files.tell_missing();
  throw explained(
      IllegalOperationException(caller->getRunDeclTable() == nullptr ? "ex1:Run module undefined: "
                                                                     : "ex2:Run module undefined: ",
                                module_name_),
      files.missing());
}

}  // namespace kiva
