#pragma once

#include <span>
#include <string>
#include <vector>

#include "engine/signal_state.h"
#include "tarn/model/module.h"

// The context of a simulation: one int for each variable of the module's manager, by variable
// index: 0, 1, or 2 for unknown. A signal's state is the pair of its status and value entry.

namespace kiva {

/// The two indices of the signal occurrence of that name in the main wood;
/// IllegalOperationException when the module has no such name.
void get_id_signals(Module* module, const std::string& name, long& status_index, long& value_index);

/// Variable indices of a signal's status and value.
struct SignalRails {
  long status_index;
  long value_index;
};
/// Those of the signal's current occurrence in the main wood.
SignalRails rails_of(Module* module, const Signal* signal);

struct RegisterRails {
  SignalRails actual;
  SignalRails next;
};
std::vector<RegisterRails> register_rails(Module* module);

/// What the user's choices are written to, found once for many instants.
struct ChoiceRails {
  SignalRails set;
  SignalRails reset;
  std::vector<SignalRails> inputs;   ///< of inputs that show in a row, in list order
  std::vector<SignalRails> rowless;  ///< of the other inputs
};
/// Sets the wire mark of the set wire.
ChoiceRails choice_rails(Module* module);

/// Each register's actual pair takes its next pair, which becomes (0, 0). Gives `context`.
int* update_context_register(Module* module, int* context);
void move_registers(std::span<const RegisterRails> registers, int* context);

/// Each register's actual pair takes the register's initial value. Gives `context`.
int* initialise_register_context(Module* module, int* context);

/// Writes the set and reset wires and all inputs. `choices` has one state for each input that
/// shows in a row, in list order; an input without row gets (0, 0).
void write_choices(const ChoiceRails& rails, bool set, bool reset,
                   std::span<const SignalState> choices, int* context);

/// The signals of a list that show in a row: all but those whose value comes from a binding.
std::vector<Signal*> signals_with_row(const signal_list& list);

}  // namespace kiva
