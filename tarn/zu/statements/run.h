#pragma once

#include <memory>
#include <optional>

#include "bdd/bddpp.h"
#include "tarn/model/sexception.h"
#include "tarn/zu/statement.h"

namespace kiva {

class Interface;
class RunFiles;
class class_zu_parser;

/// An instance of another module inside the current one.
class Run : public Statement {
 public:
  /// Formal names of the called module to signals of the calling one.
  using Renaming = std::map<std::string, Signal*>;

  Run(const std::string& name, const std::string& module_name)
      : Statement(name), module_name_(module_name) {}
  /// `renamings` as for setRenamingTable.
  static Statement* read(class_zu_parser& reader, const std::string& module,
                         const std::list<std::pair<std::string, Signal*>>* renamings);
  const std::string& getModuleName() const { return module_name_; }
  /// The called module; null until it has been looked up.
  Module* getCalled() const { return called_; }
  /// Set by compile: "@", the called module's name, "_i" and the instance number.
  const std::string& getSuffix() const { return suffix_; }

  /// Enters pairs of formal name and actual signal; null leaves the table empty.
  /// HashTableAddException for a formal name met twice.
  void setRenamingTable(const std::list<std::pair<std::string, Signal*>>* renamings);
  const Renaming& getRenamingTable() const { return *renaming_; }
  /// The actual signal of a formal name, or null.
  Signal* getRenamingSignal(const std::string& formal) const;

  /// The names that the compiled module is expected to present.
  void computeAwaitedNameList(std::list<std::string>& inputs, std::list<std::string>& outputs,
                              Module* module) const;
  void createEquations(Module* module, EquationTable* table) override;
  /// Looks the called module up, compiles it if nobody has, takes its equations in and ties them to
  /// the caller's. Exceptions know where the statement stands; a valued output without a binding
  /// ends the process.
  void compile(Module* module, EquationTable* table) override;
  /// The same, with the called module's outputs masked where `preemption` holds.
  void compile_with_preemption(Module* module, EquationTable* table, const bdd& preemption);
  /// The called module's answer. It may read the called module's source text.
  bool reincarnate() override;
  /// In a loop's body: with a name of its own, and the renaming table shared. Numbered: with the
  /// table shared by the rule `copies`, else with an empty one.
  Statement* copy(const Copying& copying) const override;

 private:
  /// Sets called_; IllegalOperationException when no module of the name is found.
  void find_called(Module* module);
  Module* read_source(const RunFiles& files) const;
  [[nodiscard]] bool ask_called();
  Interface include(Module* module, EquationTable* table);
  void keep_vain_outputs(const Interface& interface, Module* module, EquationTable* table);
  void connect_input(const std::string& formal, Signal* copy, Module* module, EquationTable* table);
  void connect_output(const std::string& formal, Signal* copy, Module* module,
                      EquationTable* table);
  /// Calls `act`; its exceptions come out with this statement's place, unless they have one.
  template <class Act>
  auto located(Act act) {
    try {
      return act();
    } catch (LibraryException& exception) {
      if (!exception.where().known()) exception.set_where(getSpan());
      throw;
    }
  }

  std::string module_name_;
  Module* called_ = nullptr;
  std::shared_ptr<Renaming> renaming_ = std::make_shared<Renaming>();
  std::string suffix_;
  std::optional<bool> answer_;  ///< of reincarnate, once it has been asked
};

}  // namespace kiva
