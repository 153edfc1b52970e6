#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/sock.h"
#include "engine/context.h"
#include "engine/signal_state.h"
#include "tarn/model/module.h"

namespace kiva {

class FlatEquations;
class ShownRows;
namespace code {
class ResidentRun;
template <class Made>
class Later;
}  // namespace code

/// All that an instant leaves behind, and all that the next one starts from. A copy of it, put back
/// with `Simulation::restore`, continues as if nothing had happened since.
struct SimulationState {
  std::vector<int> context;  ///< by variable index: 0, 1, or 2 for unknown

  // The choices for the next instant; inputs by row.
  std::vector<SignalState> inputs;
  std::vector<std::string> input_texts;
  bool set = true;
  bool reset = false;

  // What a person sees. Outputs and locals as they stood before the registers moved, registers
  // after it.
  std::vector<SignalState> shown_outputs;
  std::vector<SignalState> shown_locals;
  std::vector<SignalState> shown_registers;
  std::vector<std::string> output_values;  ///< by output row; "--" for none

  long instant = 0;  ///< number of instants run since the load or the last initialisation

  friend bool operator==(const SimulationState&, const SimulationState&) = default;
};

/// A module being run: the one implementation of a reaction, for the window and for the console.
/// Failures that end the process do so through `end_process`; exceptions of the library pass.
class Simulation {
 public:
  /// Lays the module's equations flat once and stands at the start (`load`). The module must not
  /// change afterwards, and must outlive the simulation.
  explicit Simulation(Module* module);
  ~Simulation();
  Simulation(const Simulation&) = delete;
  Simulation& operator=(const Simulation&) = delete;

  Module* module() const { return module_; }
  /// Rows: inputs and outputs without those whose value comes from a binding; all locals; all
  /// registers. Names as the panels show them.
  const std::vector<Signal*>& input_rows() const { return input_rows_; }
  const std::vector<Signal*>& output_rows() const { return output_rows_; }
  const std::vector<std::string>& input_names() const { return input_names_; }
  const std::vector<std::string>& output_names() const { return output_names_; }
  const std::vector<std::string>& local_names() const { return local_names_; }
  const std::vector<std::string>& register_names() const { return register_names_; }
  long equation_number() const;
  /// Whether an instant may ask a server: the module has bindings or abstract equations.
  bool asks_for_data() const { return !actions_.empty() || module_->getDataTable() != nullptr; }

  /// The reference holds until the next call that moves the simulation. What the last instant shows
  /// is found when it is asked for, so that a run that nobody looks at is faster by far.
  const SimulationState& state() const {
    looked_at_ = true;
    if (behind_) catch_up();
    return state_;
  }
  long instant() const { return state_.instant; }
  /// As `state` tells it, without the cost of all else.
  SignalState shown_output(size_t row) const;
  /// The state must come from a simulation of the same module.
  void restore(const SimulationState& state);

  // The choices, for all instants from now on.
  void choose_input(size_t row, SignalState state) { state_.inputs[row] = state; }
  void type_input(size_t row, const std::string& text) { state_.input_texts[row] = text; }
  void raise_set(bool raised) { state_.set = raised; }
  void raise_reset(bool raised) { state_.reset = raised; }

  /// The state right after a load: all entries unknown but the registers', which have their initial
  /// values; inputs Bottom; set raised.
  void load();
  /// Back to the start, as the button Init does it: inputs Bottom, texts "--", the equations run
  /// once over unknown inputs and registers, then the registers get their initial values.
  void initialise();
  /// One instant. `socket` is the connection to the evaluation server, null for none. An instant
  /// that an exception of the library ends has not taken place: the state is the one before.
  void step(Sock socket);

  /// Make machine code now, which a long run makes by itself: of the equations, and of instants
  /// that nobody looks at. False where there is none.
  bool compile() const;
  bool compile_instants() const;
  /// The pass over all boolean equations, once and without data: abstract equations leave their
  /// entries alone.
  void run_equations(int* context) const;

 private:
  struct Action;
  struct ValuedOutput;

  void plan();
  void plan_output_bindings();
  bool step_resident();
  std::function<std::unique_ptr<code::ResidentRun>()> resident_maker() const;
  void run_instant() const;
  void catch_up() const;
  void stand_in_context();
  void reset_choices();
  void step_with_data(Sock socket);
  void run_pass(ValueTexts* values, ConstantTexts* constants, Sock socket);
  void run_action(const Action& action, ValueTexts* values, ConstantTexts* constants, Sock socket);
  ValueTexts build_values() const;
  void show_outputs() const;
  void show_locals() const;
  void show_registers() const;
  void serve_output_bindings(ValueTexts* values, ConstantTexts* constants, Sock socket);
  bool is_present(long status_index, long value_index) const {
    return state_.context[status_index] == 1 && state_.context[value_index] == 0;
  }

  std::vector<SignalRails> rails_named(const std::vector<std::string>& names) const;

  Module* module_;
  std::vector<Signal*> input_rows_;
  std::vector<Signal*> output_rows_;
  std::vector<std::string> input_names_;
  std::vector<std::string> output_names_;
  std::vector<std::string> local_names_;
  std::vector<std::string> register_names_;
  std::unique_ptr<ShownRows> shown_outputs_, shown_locals_, shown_registers_;
  ChoiceRails choice_rails_;
  std::vector<RegisterRails> registers_;
  std::vector<SignalRails> output_rails_;
  std::vector<Action> actions_;
  std::vector<ValuedOutput> valued_outputs_;
  std::unique_ptr<FlatEquations> equations_;

  // Instants that nobody looks at run in machine code alone. Then what is told of the last one
  // stands there, and `state_` behind it, but for the choices and the number.
  std::unique_ptr<code::Later<code::ResidentRun>> resident_;
  code::ResidentRun* resident_at_ =
      nullptr;  ///< the run that has the registers; null where the context has them
  mutable SimulationState state_;
  mutable bool behind_ = false;
  mutable bool looked_at_ = true;  ///< since the last instant
};

}  // namespace kiva
