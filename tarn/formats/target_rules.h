#pragma once

namespace kiva {

/// How target texts are written. Each rule has a told form (false), the text as it was given once,
/// and a working form (true), which the target's tools take and which runs as the simulator does.
struct TargetRules {
  // All targets.
  /// Names are legal in the target, differ from its keywords and from each other.
  bool names = false;
  /// Nodes are numbered from 0 as a text writes them, and tables have that size; else by global id.
  bool used_nodes = false;
  /// Equations that no output, register or value needs are left out.
  bool needed_only = false;
  /// A rail that is read and that nothing computes is made from its signal's other rail, or is a
  /// further input; else it is declared and never assigned.
  bool complete = false;
  /// A module that is not finalised has its wires first in its interface, and registers move both
  /// rails; else only the status rails move.
  bool both_rails = false;
  /// Files go to Module::OutputDir(), the suffix is added unless the name ends with it, and what
  /// cannot be opened is reported.
  bool files = false;
  /// A test on data is false, on both rails, unless all signals that it reads are present, and its
  /// value rail is the complement; else both rails are the bare expression.
  bool data_tests = false;
  /// The value of a local is given where its trigger is present; else also where the local is,
  /// which may not be known yet.
  bool data_triggers = false;
  /// Operands that are operations stand in brackets, and so do both halves of a node.
  bool brackets = false;
  /// An equation with more products than a list may hold is an error of its file alone; else it
  /// ends the process.
  bool refuse_large_sums = false;

  // The C family.
  /// Outputs are read through their pointers.
  bool pointer_reads = false;
  /// Registers and constants are static, so that two modules link into one program.
  bool static_state = false;
  /// The operator Or is "||"; else the bitwise "|".
  bool logical_or = false;
  /// The body includes the header by the name of its file; else by the module's.
  bool real_header = false;
  /// "true" and "false" are defined only where they are not.
  bool guarded_truth = false;
  /// Parameters that no equation reads are used up, and constants that no expression reads left
  /// out: compilers warn of them.
  bool no_leftovers = false;

  // VHDL.
  /// An output that is read, or is itself a register, has an inner signal, which the process copies
  /// to the port; else the port is read, which VHDL does not allow.
  bool inner_outputs = false;
  /// Equations read what the process sampled of an input; else the port, so that a change between
  /// the edges of the clock shows.
  bool sampled_inputs = false;
  /// No ";" stands before the ")" of ports without outputs.
  bool closed_ports = false;

  // SystemC.
  /// Registers bear the module's name, are extern in the header and defined once in the body; else
  /// each file that includes the header defines them.
  bool extern_state = false;
  /// A value is the status name with "_val" wherever it stands; else an output's is assigned under
  /// the name of its value rail.
  bool status_values = false;
  /// Only tests stand in the data section, those that inputs alone decide; other data stands where
  /// it is known. Else all bindings stand there, those with a clock as if they were tests.
  bool data_order = false;
  // SMV.
  /// A module's parameters are its inputs, and its outputs definitions that are read from outside;
  /// else outputs are parameters too, which the module defines a second time.
  bool input_parameters = false;

  // Lustre.
  /// The node of a diagram is a variable, as it is declared; else an element of an array that
  /// nothing declares.
  bool node_variables = false;
  /// A signal's further bindings are tested as the first is; else their values stand without test.
  bool tested_bindings = false;
  /// A constant without value has its type.
  bool typed_constants = false;
  /// The operator Not keeps a blank to its operand.
  bool spaced_not = false;

  // Lustre, Esterel and SMV.
  /// Lists are as the language has them: commas between names only, "||" between statements, a type
  /// behind each parameter, no heading without what it heads.
  bool proper_lists = false;

  // Documents.
  /// The document of a module bears the status names of its registers, and its nodes are entries of
  /// a table, which no signal's name can meet; else the value names, and names.
  bool doc_names = false;
  /// LaTeX is a document with its names escaped; else lines for one, which "_" stops.
  bool latex_document = false;
  /// Neither the debugging trace nor the search for states says on the error stream how far it is.
  bool quiet_debug = false;

  // C#.
  /// Outputs and values are plain variables; else they are read as if they were pointers.
  bool plain_outputs = false;
  /// Registers are fields alone; else locals of the same names hide them, and nothing is kept.
  bool kept_fields = false;
  /// The registers can be put back from outside, and the class is partial, so that the user's part
  /// supplies data; else neither.
  bool open_class = false;
  /// An event makes its own input present and says nothing of the others; else it clears them.
  bool events_add = false;
  /// Values of int and byte are converted to what these are; else to uint and sbyte, which need a
  /// cast.
  bool signed_values = false;

  // The explicit automaton.
  /// What it needs is looked for first, and refused with the reason; else it is written as far as
  /// it goes. An element of the context that no state sets is false, and the result has a value.
  bool whole_automaton = false;

  // Source text of boolean automata.
  /// Locals stand in the section Local; else in a block, which the language does not have.
  bool local_section = false;

  static constexpr TargetRules told() { return {}; }
  static constexpr TargetRules working() {
    TargetRules rules;
    rules.names = rules.used_nodes = rules.needed_only = rules.complete = rules.both_rails = true;
    rules.files = rules.data_tests = rules.data_triggers = rules.brackets = true;
    rules.refuse_large_sums = true;
    rules.pointer_reads = rules.static_state = rules.logical_or = rules.real_header = true;
    rules.guarded_truth = rules.no_leftovers = true;
    rules.inner_outputs = rules.sampled_inputs = rules.closed_ports = true;
    rules.extern_state = rules.status_values = rules.data_order = true;
    rules.input_parameters = rules.node_variables = rules.tested_bindings = true;
    rules.typed_constants = rules.spaced_not = rules.proper_lists = true;
    rules.doc_names = rules.latex_document = rules.quiet_debug = true;
    rules.plain_outputs = rules.kept_fields = rules.open_class = true;
    rules.events_add = rules.signed_values = rules.whole_automaton = true;
    rules.local_section = true;
    return rules;
  }
};

}  // namespace kiva
