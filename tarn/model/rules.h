#pragma once

namespace kiva {

/// How statements, automata and runs write their equations. Each rule has a classic form (false)
/// and a sound one (true), in which no program shows a trace that its reader would not expect.
struct Rules {
  /// Where branches meet, the value of a signal's occurrence 0 is the and of both branches, if one
  /// of them has further occurrences of it; else, as everything that meets, their or.
  bool values = false;
  /// A sustain adds One while it sustains and nothing otherwise; else its value rail is one while
  /// it does not sustain.
  bool sustain = false;
  /// An abort whose body ends in the first instant ends, whatever its condition; else only if the
  /// condition is not present.
  bool abort_start = false;
  /// A strong abort masks what its body wrote; else every equation of an output or plain local.
  bool abort_mask = false;
  /// A strong abort's mask looks at the whole signals; else at their latest occurrences.
  bool abort_signal = false;
  /// A `present` without else, and a sustain, can end in the instant in which they start; else the
  /// former only if its then branch can, the latter never.
  bool skip = false;
  /// A name of a wire or register that is taken already gets "_bis" behind it until it is free, and
  /// copies keep the renamings of runs and the values of emissions; else a copy in `repeat` loses
  /// the former, and each copy the latter.
  bool copies = false;
  /// An output of a run is or-ed onto the caller's occurrence, and left alone if the called module
  /// never emits it; else it replaces the occurrence.
  bool run_join = false;
  /// An automaton ends where a transition into a final state fires by its type, rank and source;
  /// else wherever its trigger is present in its source.
  bool final_state = false;
  /// A state's run is masked by its strong triggers in that state only; else by them anywhere.
  bool state_mask = false;
  /// A reset of the automaton reaches the runs of its states.
  bool state_reset = false;
  /// An automaton set and reset in one instant is killed, as statements are; else it starts.
  bool kill = false;
  /// A Mealy machine that does not run leaves its signals Bottom; else Zero.
  bool mealy = false;
  /// The registers of a Mealy machine hold their initial values until the instant in which it
  /// starts, each time that it starts; else they move from the first instant of the program on.
  bool mealy_start = false;
  /// A transition from a state to itself restarts the state's run; else it kills it.
  bool self_restart = false;
  /// Of several emissions of a valued signal in one instant the last in the text gives the value;
  /// else the first in the order of names.
  bool last_value = false;
  /// Finalisation keeps the equations of the locals that the user declared, and lists no signal
  /// without any.
  bool locals = false;
  /// Equations that depend on each other in one instant are solved, and refused only where that
  /// leaves a signal open in a state that can be reached; else they are refused.
  bool causality = false;
  /// Functions over the states of an automaton that grow large go by way of wires, or-ed piece by
  /// piece; else each is one diagram, whatever its size.
  bool automaton_wires = false;

  static constexpr Rules classic() { return {}; }
  static constexpr Rules sound() {
    return {true, true, true, true, true, true, true, true, true, true,
            true, true, true, true, true, true, true, true, true};
  }
};

}  // namespace kiva
