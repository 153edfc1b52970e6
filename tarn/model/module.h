#pragma once

#include <array>
#include <iosfwd>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "pert_exp/Bddexpression.h"
#include "tarn/model/data.h"
#include "tarn/model/equationtable.h"
#include "tarn/model/signal_list.h"
#include "tarn/model/signal_manager.h"
#include "tarn/model/source_span.h"
#include "tarn/session/session.h"

namespace kiva {

class Interface;
class Statement;

/// One register: the variable of the present instant, that of the next, and the initial value.
class regclass {
 public:
  regclass(Signal* actual, Signal* next, int initial)
      : internal_actual_var(actual), internal_next_var(next), internal_is_initialy_true(initial) {}
  friend bool operator==(const regclass&, const regclass&) = default;
  Signal* actual_var() const { return internal_actual_var; }
  Signal* next_var() const { return internal_next_var; }
  int is_initialy_true() const { return internal_is_initialy_true; }
  void actual_var(Signal* signal) { internal_actual_var = signal; }
  void next_var(Signal* signal) { internal_next_var = signal; }
  void is_initialy_true(int value) { internal_is_initialy_true = value; }

 private:
  Signal* internal_actual_var;
  Signal* internal_next_var;
  int internal_is_initialy_true;
};

/// Next variable, blank, actual variable, blank, "1" or "0"; "? " for an absent variable.
std::ostream& operator<<(std::ostream& out, const regclass& reg);

using RegisterList = std::vector<regclass*>;
using DataTable = std::map<std::string, DataBinding*>;

/// One synchronous module, compiled or under compilation: its interface, registers, wires,
/// equations and data bindings. It owns its wood; its signals, references and bindings live as long
/// as the session.
class Module {
 public:
  /// One that a session keeps may be deleted before the session's end.
  static constexpr bool may_end_early = true;

  /// Empty, over a new wood.
  explicit Module(const std::string& name);
  /// Takes over the lists. `wires` holds set, reset and rtl. IllegalOperationException for a
  /// register without actual or next variable.
  Module(const std::string& name, signal_list inputs, signal_list outputs, signal_list locals,
         signal_list data, RegisterList registers, const std::array<Signal*, 3>& wires,
         Bddexpressionwood* wood);
  /// A deep copy over a new wood; statement and run declarations are not shared.
  Module(Module& other);
  Module& operator=(const Module&) = delete;
  ~Module();

  // What the current session holds: directories and files (see SessionOptions), and the counters of
  // statement names.
  static std::string& SimulationDir() { return Session::current().options.SimulationDir; }
  static std::string& SimulationZucDir() { return Session::current().options.SimulationZucDir; }
  static std::string& OutputDir() { return Session::current().options.OutputDir; }
  static std::string& OutputFile() { return Session::current().options.OutputFile; }
  static std::list<std::string>*& CompilationFileList() {
    return Session::current().options.CompilationFileList;
  }
  static int& PauseNumber() { return counters().PauseNumber; }
  static int& NothingNumber() { return counters().NothingNumber; }
  static int& HaltNumber() { return counters().HaltNumber; }
  static int& ParallelNumber() { return counters().ParallelNumber; }
  static int& SequenceNumber() { return counters().SequenceNumber; }
  static int& PresentNumber() { return counters().PresentNumber; }
  static int& LoopNumber() { return counters().LoopNumber; }
  static int& LocalNumber() { return counters().LocalNumber; }
  static int& WaitNumber() { return counters().WaitNumber; }
  static int& AbortNumber() { return counters().AbortNumber; }
  static int& EmitNumber() { return counters().EmitNumber; }
  static int& NoEmitNumber() { return counters().NoEmitNumber; }
  static int& SustainUntilNumber() { return counters().SustainUntilNumber; }
  static int& RunNumber() { return counters().RunNumber; }
  static int& SustainNumber() { return counters().SustainNumber; }
  static int& AutomatonNumber() { return counters().AutomatonNumber; }
  static int& MealyMachineNumber() { return counters().MealyMachineNumber; }
  static int& TransitionNumber() { return counters().TransitionNumber; }

  // Look-ups of signals; null when nothing is found. Inputs and outputs go by original name, locals
  // and data signals by internal name.
  Signal* getInputSignal(const std::string& name) const;
  Signal* getOutputSignal(const std::string& name) const;
  Signal* getLocalSignal(const std::string& name) const;
  Signal* getDataSignal(const std::string& name) const;
  Signal* getOutputLocalSignal(const std::string& name) const;
  /// Inputs, outputs, data signals, locals, in this order.
  Signal* getSignal(const std::string& name) const;
  /// The same order, by internal name throughout.
  Signal* getSignalFromInternalName(const std::string& name) const;

  /// Null when no reference has that variable index in the wood.
  Signal* getSignalById(long index, Bddexpressionwood* wood) const;
  /// IllegalOperationException without a reference.
  const std::string& getSignalNameById(long index, Bddexpressionwood* wood) const;

  const std::string& getName() const { return name; }
  void setName(const std::string& text) { name = text; }
  /// Where its head stands in its source; unknown for a compiled module.
  const SourceSpan& getSpan() const { return span; }
  void setSpan(const SourceSpan& head) { span = head; }
  Statement* getStatement() const { return statement; }
  void addBodyStatement(Statement* body) { statement = body; }
  EquationTable* getCompilation() const { return compilation; }
  EquationTable* getEquationTable() const { return compilation; }
  void setCompilation(EquationTable* table) { compilation = table; }
  signal_list& getInputSignalList() { return input_signal_list; }
  signal_list& getOutputSignalList() { return output_signal_list; }
  signal_list& getLocalSignalList() { return local_signal_list; }
  signal_list& getDataSignalList() { return data_signal_list; }
  const signal_list& getInputSignalList() const { return input_signal_list; }
  const signal_list& getOutputSignalList() const { return output_signal_list; }
  const signal_list& getLocalSignalList() const { return local_signal_list; }
  const signal_list& getDataSignalList() const { return data_signal_list; }
  void setInputSignalList(signal_list list) { input_signal_list = std::move(list); }
  void setOutputSignalList(signal_list list) { output_signal_list = std::move(list); }
  void setLocalSignalList(signal_list list) { local_signal_list = std::move(list); }
  void setDataSignalList(signal_list list) { data_signal_list = std::move(list); }
  RegisterList& getRegisterList() { return register_list; }
  const RegisterList& getRegisterList() const { return register_list; }
  void setRegisterList(RegisterList list) { register_list = std::move(list); }
  /// Null until the first declaration.
  const std::map<std::string, std::string>* getRunDeclTable() const { return run_decl_table.get(); }
  int getCurrentInstance() const { return current_instance; }
  void setCurrentInstance(int instance) { current_instance = instance; }
  void incrCurrentInstance() { ++current_instance; }
  Bddexpressionwood* getBddWood() const { return compilation->getBddexpressionWood(); }
  SignalManager* getSignalManager() const { return signal_manager; }
  /// Null until the first binding; by internal name of the bound signal.
  DataTable* getDataTable() const { return data_table.get(); }
  bool getReincarnate() const { return reincarnate; }
  void setReincarnate(bool value) { reincarnate = value; }
  int getFinalised() const { return finalised; }
  void setFinalised(int value) { finalised = value; }
  Signal* getSet() const { return set_wire; }
  Signal* getReset() const { return reset_wire; }
  Signal* getRtl() const { return rtl_wire; }
  void setSet(Signal* wire) { set_wire = wire; }
  void setReset(Signal* wire) { reset_wire = wire; }
  void setRtl(Signal* wire) { rtl_wire = wire; }
  long getPertLevel() const { return compilation->getPertLevel(); }

  void addInputSignal(Signal* signal) { input_signal_list.push_back(signal); }
  void addOutputSignal(Signal* signal) { output_signal_list.push_back(signal); }
  void addLocalSignal(Signal* signal) { local_signal_list.push_back(signal); }
  void addDataSignal(Signal* signal) { data_signal_list.push_back(signal); }
  void addRegisterSignal(Signal* actual, Signal* next, int initial = 0);
  void addRegisterSignal(regclass* reg) { register_list.push_back(reg); }
  /// Makes both signals, local and marked as register and wire, actual first.
  void addRegisterDecl(const char* actual, int initial, const char* next);
  /// IllegalOperationException for a run declared twice. The location is dir, "/", file.
  void addRunDecl(const std::string& run, const std::string& file, const std::string& dir);
  /// Null when unknown.
  const std::string* getModuleLocation(const std::string& run) const;

  // Bindings.
  /// Files the binding under the bound signal's current name in the wood; replaces an earlier one.
  void addBinding(DataBinding* binding, Bddexpressionwood* wood);
  void addBinding(DataBinding* binding) { addBinding(binding, getBddWood()); }
  /// Null when there is none.
  DataBinding* getBinding(const std::string& signal_name) const;
  /// Binds without clock and makes the two abstract equations of `signal`.
  Signal* addSignalBinding(DataExpr* e, Signal* signal);
  /// Binds with a clock (may be null); makes no equations.
  Signal* addSignalBinding(DataExpr* e, Signal* signal, Signal* clock);
  /// Each makes a new valued signal for an intermediate value, binds it and makes its equations.
  Signal* addSignalBinding(DataExpr* e, const std::string& prefix);
  Signal* addSignalBinding(DataExpr* e, Signal* clock, Bddexpressionwood* wood);
  Signal* addSignalBinding(DataExpr* e, const std::string& prefix, Signal* clock);
  /// The signals bound with that clock, in table order; null for a module without bindings.
  std::unique_ptr<std::vector<Signal*>> getSignalBindingByClock(const Signal* clock) const;
  /// The bindings with that clock, in table order; null when there are none.
  std::unique_ptr<std::vector<DataBinding*>> getDataBindingByClock(const Signal* clock) const;

  /// Gives the equations of outputs, registers and clocks their user types.
  void update_user_type();
  void replace_at_in_name_variables();
  void loose_first_underscore_in_name_variables();

  // What the floors above do with a module: each is one call of theirs (tarn/classic), where it is
  // told.
  // tarn/zu/finalize.h
  void finalize(int keep_rtl);
  void clean();
  void clean_locals();
  void suppress_useless_registers();
  void constants_propagation();
  void check_over_knowledge();
  // tarn/zu/compilation.h, tarn/zu/module_inclusion.h
  bool compile();
  void createCompileEnv();
  void sortCode();
  void includeCompiledModule(Module* called, Interface* interface, const std::string& suffix,
                             Bddexpressionwood* wood);
  // tarn/zuc/zuc_writer.h; the first two numbers are not read
  void ZUC_put(std::ostream& os, int, int, int forget_locals);
  void printBinding(std::ostream& os, long* map);
  void save();

  // Told, and called by no program (tarn/classic).
  /// Simplifies all equations under the assertion that the module's wires are present.
  void learnStatusWireAssertion();
  /// The other index of the same reference: status for value, value for status.
  /// IllegalOperationException without a reference.
  long getOtherBddId(long index, Bddexpressionwood* wood) const;
  void removeBinding(const std::string& signal_name);
  void setRunDeclTable(std::unique_ptr<std::map<std::string, std::string>> table) {
    run_decl_table = std::move(table);
  }
  /// A wire goes to the locals.
  void addWireSignal(Signal* signal) { local_signal_list.push_back(signal); }

  // The evaluation server's source text (tarn/targets): a program that knows the user's data types,
  // starts the simulator and answers its requests. What it holds comes from the three process-wide
  // tables of data and the module's name.
  /// Writes SimulationZucDir, "/kiva_", the name, ".cc"; a message when the file cannot be written.
  /// IllegalOperationException, before anything is written, for a name that C++ cannot bear.
  void save_kiva_code() const;
  void SIMUL_ZUC_put(std::ostream& out) const;
  void SIMUL_ZUC_put_predef_func(std::ostream& out) const;
  void SIMUL_ZUC_put_method(std::ostream& out) const;
  void SIMUL_ZUC_put_binary_op(std::ostream& out) const;
  void SIMUL_ZUC_put_unary_op(std::ostream& out) const;
  void SIMUL_ZUC_put_const(std::ostream& out) const;

  // Classic: a print operation and its text for each target language, whose bodies stand with the
  // language (tarn/targets/languages); programs use the rows of tarn/targets/targets.h. A print
  // operation names its file as OutputFile or the module, and writes what the `_put` operation
  // gives, by Compilation::target_rules.
  /// Body and header.
  void printC();
  void C_put(std::ostream& body, std::ostream& header);
  /// The told text of all equations, in order; names in `outputs` are pointers.
  void C_put_equation(std::ostream& out, const std::string& array,
                      const std::list<std::string>& outputs);
  void printBLIF();
  /// The number is not read.
  void BLIF_put(std::ostream& out, int keep);
  /// Elements are std_logic under Compilation::VHDLALTERAFlag.
  void printVHDL();
  /// Elements are bit, or std_logic if `altera` is not 0.
  void VHDL_put(std::ostream& out, int altera);
  void SYSTEMC_put(std::ostream& body, std::ostream& header);

  /// Writes SimulationDir, the name, ".blif", of the module finalised, and runs gate_runner on it.
  /// A message where the file cannot be written or the tool does not run; IllegalOperationException
  /// for a module without equations.
  void simulate();

  /// A module that is not finalised is finalised first. The numbers are not read.
  void printSMV();
  void NUSMV_put(std::ostream& out, int, int);
  /// The number is not read.
  void LUSTRE_put(std::ostream& out, int);
  /// The told text of all equations, in order.
  void LUSTRE_put_equation(std::ostream& out, const std::string& array);
  /// The number is not read.
  void ESTEREL_put(std::ostream& out, int);

  /// The module as a transition system for people. The number is not read.
  void DOC_put(std::ostream& out, int);
  /// The equations as formulas, or as a document of its own.
  void LATEX_put(std::ostream& out);
  /// Writes the file and shows it.
  void printDebug();
  void DEBUG_put(std::ostream& out);
  void printCSHARP();
  void CSharp_put(std::ostream& out);
  /// The told text of all equations, in order. The number is not read.
  void CSharp_put_equation(std::ostream& out, const std::string& array, int);
  void printENCAPSULATEDGAL();
  void ENCAPSULATEDGAL_put(std::ostream& out);

  // The explicit automaton (tarn/targets/languages/wren.cc). States are cubes of the registers'
  // statuses, inputs functions of everything else that nothing computes.
  /// The number is not read.
  void WRENCC_put(std::ostream& out, int);
  /// The distinct next states under `care`: writes condition and next state by turns, gives their
  /// number. At most 256, for which `out` has room.
  int real_possible_transitions(const bdd& state, const bdd& care, bdd* out);
  /// The next state under an input condition, without the registers that it leaves open.
  bdd next_state(const bdd& state, const bdd& input);
  /// The number of a state; a new one is entered. -1 for the 256th.
  int state_corres(const bdd& state);
  void forget_states() { explicit_states.clear(); }

  /// The module's name, the prefix, "_" and the counter, which grows by one.
  std::string generateName(const char* prefix, int& counter) const;

 private:
  static Counters& counters() { return Session::current().counters; }
  DataTable& bindings();
  void make_value_equations(Signal* signal, Bddexpressionwood* wood, const index_set& indices);
  index_set dependence_ids(DataExpr* e, Bddexpressionwood* wood, bool& any);
  Signal* bind_intermediate(DataExpr* e, const std::string& signal_name, Signal* clock,
                            Bddexpressionwood* wood);

  std::string name;
  SourceSpan span;
  Statement* statement = nullptr;
  signal_list input_signal_list;
  signal_list output_signal_list;
  signal_list local_signal_list;
  signal_list data_signal_list;
  std::unique_ptr<std::map<std::string, std::string>> run_decl_table;
  RegisterList register_list;
  EquationTable* compilation;
  Signal* set_wire = nullptr;
  Signal* reset_wire = nullptr;
  Signal* rtl_wire = nullptr;
  bool reincarnate = false;
  int finalised = 0;
  int current_instance = -1;
  SignalManager* signal_manager;
  std::unique_ptr<DataTable> data_table;
  std::vector<bdd> explicit_states;  ///< of the explicit automaton, by number
};

/// Whether b can need the signal to be True, or False: not 0 if it depends on the signal and is not
/// constantly zero under that state.
int quadrival_var_true_awaited(Module* module, const bdd& b, const Signal* signal);
int quadrival_var_false_awaited(Module* module, const bdd& b, const Signal* signal);

/// Writes ": " and the names.
void wren_setput(std::ostream& out, const std::vector<std::string>& names);

/// The known modules by name.
class ModuleTable {
 public:
  explicit ModuleTable(std::ostream* out) : out_(out) {}
  /// HashTableAddException for a name already there.
  void add(Module* module);
  /// Null when there is none.
  Module* get(const std::string& name) const;
  const std::map<std::string, Module*>& modules() const { return modules_; }
  /// In the order in which they were added.
  const std::vector<Module*>& in_order() const { return in_order_; }
  void remove(const std::string& name);
  std::ostream& out() const { return *out_; }

 private:
  std::map<std::string, Module*> modules_;
  std::vector<Module*> in_order_;
  std::ostream* out_;
};

}  // namespace kiva
