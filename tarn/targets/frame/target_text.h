#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "pert_exp/equation_code.h"
#include "tarn/model/module.h"
#include "tarn/targets/frame/source_notes.h"
#include "tarn/targets/frame/target_names.h"
#include "tarn/targets/frame/target_rules.h"

namespace kiva {

/// One bit of state: the variables of this instant and of the next, and the first value.
struct StateRail {
  long index;
  long next;
  bool initial;
};

/// What a text computes into one variable: a function, or a test on data.
struct TargetEquation {
  enum Kind { function, data, data_complement };
  long index;
  bdd f;  ///< of a function
  Kind kind = function;
  DataBinding* binding = nullptr;  ///< of a test on data
  Signal* signal = nullptr;        ///< that a test on data belongs to
};

/// What a writer sees of a module: its interface, state and equations by the rules on `finalised`,
/// in the order in which a text has them, and the names that they bear there. Variables are indices
/// of the module's manager throughout.
class TargetText {
 public:
  struct Language {
    NameShape shape;
    bool has_data = false;  ///< values and tests on data can be written
    /// The told text has the status rails of the wires in its interface.
    bool told_wires = false;
    /// The module's name stands alone in the text; else it is only a part of other names.
    bool names_module = true;
    /// Registers have the module's name in front: they are seen outside the text.
    bool module_in_state = false;
    /// Made of the module's name: what stands before the number in the name of a node; none for a
    /// table.
    std::function<std::string(const std::string& module)> node_prefix = {};
    /// Names that the text makes of the module's (already legal) name: those of its functions and
    /// tables.
    std::function<std::vector<std::string>(const std::string& module)> own_names = {};
  };

  /// Reads the module, and tells on the error stream what is renamed or added. A target without
  /// data takes each test on data as a further input. Ends the process with a report where a test
  /// on data has no expression. The module must stay as it is while the text is written.
  TargetText(Module* module, const Language& language, const TargetRules& rules);

  const TargetRules& rules() const { return rules_; }
  Module* module() const { return module_; }
  Bddexpressionwood* wood() const { return wood_; }
  bddpp_manager* manager() const { return wood_->my_bdd_manager(); }
  bool finalised() const { return module_->getFinalised() != 0; }
  /// The module's name in the text.
  const std::string& module_name() const { return module_name_; }

  // The interface.
  /// The rails of set and reset, and of rtl; empty for a finalised module.
  const std::vector<long>& set_reset_rails() const { return set_reset_rails_; }
  const std::vector<long>& rtl_rails() const { return rtl_rails_; }
  /// Inputs and outputs of the module, without those that a data expression computes.
  const std::vector<Signal*>& inputs() const { return inputs_; }
  const std::vector<Signal*>& outputs() const { return outputs_; }
  /// What is read and nothing computes: inputs of the text alone.
  const std::vector<long>& further_inputs() const { return further_inputs_; }
  /// All of it in order: wires, then for each signal its status, and its value unless the module is
  /// finalised, then the further inputs.
  std::vector<long> input_rails() const;
  std::vector<long> output_rails() const;
  /// The rails of a signal; of occurrence 0 for an output.
  long status(const Signal* signal) const;
  long value(const Signal* signal) const;
  bool is_output(long index) const { return output_rails_.contains(index); }

  // The state, and what is computed from it and the inputs.
  const std::vector<StateRail>& state() const { return state_; }
  const std::vector<TargetEquation>& equations() const { return equations_; }
  /// Assigned or read, and neither in the interface nor state; ascending.
  const std::vector<long>& locals() const { return locals_; }
  /// The locals that carry a value.
  const std::vector<Signal*>& valued_locals() const { return valued_locals_; }
  bool is_read(long index) const { return read_.contains(index); }
  bool is_value_read(const Signal* signal) const {
    return read_values_.contains(const_cast<Signal*>(signal));
  }
  bool is_valued(const Signal* signal) const { return signal->isValued(module_, wood_); }
  std::string type(const Signal* signal) const { return signal->getValueType(module_); }
  /// The bindings that give the signal its value, in table order.
  std::vector<DataBinding*> value_bindings(const Signal* signal) const;
  /// Of an equation with a function: the binding that its signal triggers, if that gives a value to
  /// a signal that is no output; else null.
  DataBinding* triggered(const TargetEquation& equation) const;

  // Names.
  std::string name(long index) const;
  std::string name(const Signal* signal) const { return name(status(signal)); }
  /// Where the variable stands in the source, if that is known and may be told; else "".
  std::string place(long index) const;
  /// A line behind `start` that tells where the variable stands in the source, if that is known and
  /// was not told last.
  void put_note(std::ostream& out, const std::string& start, long index) const;
  /// The variable of a register, another than `name` where the register is an output.
  std::string state_name(long index) const;
  /// A name of the text's own beside those of the variables.
  std::string own_name(const std::string& wanted) { return names_.give(wanted); }
  /// The variable of a signal's value.
  std::string value_name(const Signal* signal) const;

  // Nodes.
  /// Number of a node's entry in the text's table.
  long node_number(const bdd_node* node) const;
  /// Entries of the table: runs the writing of all equations once, to nowhere.
  long count_nodes(const std::function<void(std::ostream&)>& put_equations) const;
  /// Gives the texts this text's node numbers, brackets by the rule, and names where `read` and
  /// `left` leave them open.
  equation_code_texts numbered(equation_code_texts texts) const;

 private:
  void take_interface();
  void take_state();
  void take_equations();
  void take_needed();
  void complete();
  void fold();
  void take_reads();
  void take_locals();
  void take_names();
  void take_own_names();
  void take_name(long index, const std::string& prefix = "");
  void take_value_name(const Signal* signal);
  std::string wanted_name(long index) const;
  const SourceNote* note_of(long index) const;
  /// Calls see(index) for all variables that the equation reads.
  template <class See>
  void for_each_read(const TargetEquation& equation, See see) const;

  Module* module_;
  Language language_;
  TargetRules rules_;
  Bddexpressionwood* wood_;
  TargetNames names_;
  std::string module_name_;
  std::vector<long> set_reset_rails_, rtl_rails_, further_inputs_, locals_;
  std::vector<Signal*> inputs_, outputs_, valued_locals_;
  std::unordered_set<long> output_rails_, interface_, read_;
  std::unordered_set<Signal*> read_values_;
  std::unordered_map<long, std::string> original_names_;  ///< original names of the interface
  std::vector<StateRail> state_;
  std::vector<TargetEquation> equations_;
  std::unordered_map<long, std::string> name_of_;
  std::string inner_names_;  ///< that are not those wanted; there may be hundreds
  std::unordered_map<long, std::string> state_name_of_;  ///< of registers that are outputs
  std::unordered_map<const Signal*, std::string> value_name_of_;
  mutable std::unordered_map<const bdd_node*, long> number_of_;
  mutable std::string last_note_;
};

}  // namespace kiva
