#pragma once

#include <span>
#include <string>
#include <vector>

#include "engine/signal_state.h"
#include "tarn/model/module.h"

// The context of a simulation: one int for each variable of the module's manager, by variable
// index: 0, 1, or 2 for unknown. A signal's state is the pair of its status and value entry.

namespace kiva {

/// The two ids of the signal occurrence of that name in the main wood; IllegalOperationException
/// when the module has no such name.
void get_id_signals(Module* module, const std::string& name, long& status_id, long& value_id);

/// Variable ids of a signal's status and value.
struct SignalIds {
  long status_id;
  long value_id;
};
/// Those of the signal's current occurrence in the main wood.
SignalIds ids_of(Module* module, const Signal* signal);

struct RegisterIds {
  SignalIds actual;
  SignalIds next;
};
std::vector<RegisterIds> register_ids(Module* module);

/// What the user's choices are written to, found once for many instants.
struct ChoiceIds {
  SignalIds set;
  SignalIds reset;
  std::vector<SignalIds> inputs;   ///< of inputs that show in a row, in list order
  std::vector<SignalIds> rowless;  ///< of the other inputs
};
/// Sets the wire mark of the set wire.
ChoiceIds choice_ids(Module* module);

/// Each register's actual pair takes its next pair, which becomes (0, 0). Gives `context`.
int* update_context_register(Module* module, int* context);
void move_registers(std::span<const RegisterIds> registers, int* context);

/// Each register's actual pair takes the register's initial value. Gives `context`.
int* initialise_register_context(Module* module, int* context);

/// Writes the set and reset wires and all inputs. `choices` has one state for each input that
/// shows in a row, in list order; an input without row gets (0, 0).
void write_choices(const ChoiceIds& ids, bool set, bool reset, std::span<const SignalState> choices,
                   int* context);

/// The signals of a list that show in a row: all but those whose value comes from a binding.
std::vector<Signal*> signals_with_row(const signal_list& list);

}  // namespace kiva
