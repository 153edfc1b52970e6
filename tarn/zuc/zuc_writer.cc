// Writes a compiled module as the text that the reader takes back.
//
// Each name of the file brings two numbers, status and value, in the order in which names stand in
// it: the reader makes its variables in that order, so a number of the file is an index there. A
// variable that no name brings has no number, and its equations are not written.

#include "tarn/zuc/zuc_writer.h"

#include <cctype>
#include <filesystem>
#include <iostream>
#include <set>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/diagnostic.h"
#include "tarn/session/session_files.h"

namespace kiva {

namespace {

/// Number in the file of each variable, by variable index; -1 for none.
class FileNumbers {
 public:
  explicit FileNumbers(long variables) : numbers_(static_cast<size_t>(variables), -1) {}
  /// Gives the pair the next two numbers.
  void enter(long status_index, long value_index) {
    numbers_[static_cast<size_t>(status_index)] = next_++;
    numbers_[static_cast<size_t>(value_index)] = next_++;
  }
  /// "V" and the number of the pair, with "_bis" behind it until no name of the interface is so.
  std::string name(long status_index) const {
    std::string name = "V" + std::to_string((*this)[status_index]);
    while (taken_.contains(name)) name += "_bis";
    return name;
  }
  /// The names that are written as they are.
  void take(const std::string& name) { taken_.insert(name); }
  long operator[](long index) const { return numbers_[static_cast<size_t>(index)]; }
  long* data() { return numbers_.data(); }

 private:
  std::vector<long> numbers_;
  std::set<std::string> taken_;
  long next_ = 0;
};

const SignalRef& reference_of(const Module* module, const Signal* signal) {
  const SignalRef* ref = module->getSignalManager()->getSignalRefByName(signal->getInternalName());
  if (ref == nullptr)
    end_with(signal->getInternalName() + " has no signal reference!", Manner::message);
  return *ref;
}

void put_type(std::ostream& os, const SignalRef& ref) {
  if (ref.isValued()) os << " : " << ref.getType();
}

/// A literal is a constant that bears its text behind "C__": what is no part of a name goes.
std::string name_of_constant(const std::string& name, std::set<std::string>& taken) {
  std::string text = name;
  for (char& c : text)
    if (std::isalnum(static_cast<unsigned char>(c)) == 0 && c != '_' && c != '@' && c != '.')
      c = '_';
  if (text != name)
    while (!taken.insert(text).second) text += "_bis";
  return text;
}

void put_constants(std::ostream& os, const DataConstantTable& table) {
  os << "constant:\n";
  std::set<std::string> taken;
  for (const ConstantDecl* constant : table.getConstantList()) taken.insert(constant->getName());
  for (const ConstantDecl* constant : table.getConstantList()) {
    if (constant->getIndex() == -1) continue;
    os << constant->getType() << ' ' << name_of_constant(constant->getName(), taken);
    if (constant->getValue() != nullptr) {
      const auto* literal = dynamic_cast<const DataValue*>(constant->getValue());
      if (literal == nullptr)
        throw IllegalOperationException("Print_of_constant table", constant->getName());
      os << "   \"" << literal->getValue() << '"';
    }
    os << ";\n";
  }
}

void put_data_tables(std::ostream& os) {
  const DataTypeTable* types = Compilation::GDataTypeTable();
  const DataMethodTable* methods = Compilation::GDataMethodTable();
  const DataConstantTable* constants = Compilation::GDataConstantTable();
  if (types == nullptr && methods == nullptr && constants == nullptr) return;
  os << "data:\n";
  if (types != nullptr) {
    types->print(os, false);
  } else {
    os << "type:\n";
  }
  if (methods != nullptr) {
    methods->print(os, false);
  } else {
    os << "method:\n";
  }
  if (constants != nullptr) put_constants(os, *constants);
  os << "end:\n\n";
}

/// Nothing can be said of the pair in any instant, and nobody asks.
bool is_silent(Bddexpressionwood* wood, long status_index, long value_index) {
  return wood->exp_by_index(status_index) == nullptr &&
         wood->exp_by_index(value_index) == nullptr &&
         wood->set_of_amont_dependances(status_index).empty() &&
         wood->set_of_amont_dependances(value_index).empty();
}

/// Nobody finds the signal by its name.
bool may_be_nameless(const Signal* signal, Module* module) {
  return !signal->isRegister() && !signal->isClock() && !signal->isValued(module);
}

/// Locals with all their occurrences, then the further occurrences of outputs.
void put_locals(Module* module, std::ostream& os, FileNumbers& numbers, bool forget_locals) {
  Bddexpressionwood* wood = module->getBddWood();
  const bool lists_no_silent = module->getFinalised() != 0 && Compilation::rules().locals;
  bool any_local = false;
  const auto put_occurrences = [&](const Signal* signal, bool skip_first) {
    const std::list<long> indices = signal->getAllBddId(module, wood);
    for (auto at = indices.begin(); at != indices.end();) {
      const long status_index = *at++;
      const long value_index = *at++;
      if (std::exchange(skip_first, false)) continue;
      if (lists_no_silent && is_silent(wood, status_index, value_index) &&
          (status_index != indices.front() || may_be_nameless(signal, module)))
        continue;
      if (!std::exchange(any_local, true)) os << "local:";
      numbers.enter(status_index, value_index);
      const SignalRef* ref = module->getSignalManager()->getSignalRefById(status_index, wood);
      if (ref == nullptr)
        end_with(signal->getInternalName() + " no signal reference ", Manner::message);
      if (forget_locals) {
        os << "  " << numbers.name(status_index);
      } else {
        os << ' ' << ref->getCurrentName();
        put_type(os, *ref);
      }
    }
  };
  for (const Signal* local : module->getLocalSignalList()) put_occurrences(local, false);
  for (const Signal* output : module->getOutputSignalList()) put_occurrences(output, true);
  if (any_local) os << ";\n";
}

void put_registers(Module* module, std::ostream& os, const FileNumbers& numbers,
                   bool forget_locals) {
  Bddexpressionwood* wood = module->getBddWood();
  os << "register:\n";
  for (const regclass* reg : module->getRegisterList()) {
    const int initial = reg->is_initialy_true();
    if (forget_locals) {
      os << ' ' << numbers.name(reg->next_var()->getBddStatusId(module, wood)) << ' '
         << numbers.name(reg->actual_var()->getBddStatusId(module, wood)) << ' ' << initial;
    } else {
      os << *reg;
    }
    os << ";\n";
  }
  os << '\n';
}

}  // namespace

void write_zuc(Module* module, std::ostream& os, bool forget_locals) {
  Bddexpressionwood* wood = module->getBddWood();
  if (wood == nullptr) return;
  wood->update_bdd_vars();
  FileNumbers numbers(wood->Nb_bdd_vars());

  os << "module: " << module->getName() << "  " << (module->getReincarnate() ? 1 : 0) << ' '
     << (module->getFinalised() != 0 ? 1 : 0) << '\n';
  const auto put_interface = [&](const char* keyword, const signal_list& list, bool typed) {
    if (list.empty()) return;
    os << keyword;
    for (const Signal* signal : list) {
      const SignalRef& ref = reference_of(module, signal);
      const std::string& name = typed ? signal->getOriginalName() : signal->getInternalName();
      os << ' ' << name;
      numbers.take(name);
      if (typed) put_type(os, ref);
      numbers.enter(ref.getBddStatusId(wood), ref.getBddValueId(wood));
    }
    os << " ;\n";
  };
  put_interface("input:", module->getInputSignalList(), true);
  put_interface("output:", module->getOutputSignalList(), true);
  put_interface("data_signal:", module->getDataSignalList(), false);

  for (const Signal* wire : {module->getSet(), module->getReset(), module->getRtl()})
    numbers.take(wire->getName(module, wood));
  put_locals(module, os, numbers, forget_locals);
  if (!module->getRegisterList().empty()) put_registers(module, os, numbers, forget_locals);

  os << "connexion: " << module->getSet()->getName(module, wood) << ' '
     << module->getReset()->getName(module, wood) << ' ' << module->getRtl()->getName(module, wood)
     << ";\n\n";
  for (const Signal* wire : {module->getSet(), module->getReset(), module->getRtl()})
    numbers.enter(wire->getBddStatusId(module, wood), wire->getBddValueId(module, wood));

  os << "equation_def:\n";
  wood->Put_zuc(os, numbers.data(), Compilation::DebugFlag() ? 1 : 0);
  os << "end:\n\n";
  write_zuc_bindings(module, os, numbers.data());
  put_data_tables(os);
}

void write_zuc_bindings(Module* module, std::ostream& os,
                        long* map) {  // house: one text, line after line
  if (module->getDataTable() == nullptr) return;
  Bddexpressionwood* wood = module->getBddWood();
  // The constants are the process's, their lines module text's.
  if (Compilation::GDataConstantTable() != nullptr)
    for (ConstantDecl* constant : Compilation::GDataConstantTable()->getConstantList())
      constant->setEvalIndex(-1);
  os << "binding:\n";
  int next = 0;
  std::list<DataExpr*> pending;
  const auto put_line = [&](long status_index, long value_index, DataExpr* value,
                            long clock_status_index, long clock_value_index) {
    os << "   (" << map[status_index] << ", " << map[value_index] << "): value: " << next;
    value->setIndex(next++);
    pending.push_back(value);
    if (clock_status_index >= 0)
      os << " clock: (" << map[clock_status_index] << ", " << map[clock_value_index] << ")";
    os << ";\n";
  };
  for (const auto& [bound_name, binding] : *module->getDataTable()) {
    const Signal* signal = binding->getSignal();
    const Signal* clock = binding->getClock();
    if (signal->isLocal() || signal->isWire() || signal->isOutput()) {
      const std::list<long> indices = signal->getAllBddId(module, wood);
      for (auto at = indices.begin(); at != indices.end();) {
        const long status_index = *at++;
        const long value_index = *at++;
        if (map[status_index] < 0) continue;  // a silent occurrence
        put_line(status_index, value_index, binding->getValue()->duplicate(),
                 clock == nullptr ? -1 : clock->getInitialBddStatusId(module, wood),
                 clock == nullptr ? -1 : clock->getInitialBddValueId(module, wood));
      }
    } else {
      // The lines of a file that has been read may be shared: each binding has its own.
      DataExpr* value = binding->getValue();
      if (value->hasIndex()) value = value->duplicate();
      put_line(signal->getBddStatusId(module, wood), signal->getBddValueId(module, wood), value,
               clock == nullptr ? -1 : clock->getBddStatusId(module, wood),
               clock == nullptr ? -1 : clock->getBddValueId(module, wood));
    }
  }
  os << "end:\n\nevaltable:\n";
  for (DataExpr* e : pending) {
    os << "   " << e->getIndex() << ": ";
    e->ZUC_put(os, map, module, pending, next, true);
    os << ";\n";
  }
  os << "end:\n\n";
}

void save_zuc(Module* module) {
  if (module->getCompilation() == nullptr)
    throw IllegalOperationException("Save code requires compilation");
  std::string file = Module::OutputFile();
  if (file.empty()) {
    file = module->getName() + ".zuc";
  } else if (file.find(".zuc") == std::string::npos) {
    file += ".zuc";
  }
  const std::string path = Module::OutputDir() + "/" + file;
  SessionOutput out(path);
  if (std::filesystem::exists(path))
    std::cerr << "File: " << path << " already exists. File rewrited.\n";
  if (!out.opened()) {
    report_file(path, "cannot be written", "Cannot open output file: " + path);
    return;
  }
  write_zuc(module, out.out(), Compilation::ForgetLocalsNameFlag());
  if (!out.finish()) report_file(path, "cannot be written", "Cannot write output file: " + path);
}

}  // namespace kiva
