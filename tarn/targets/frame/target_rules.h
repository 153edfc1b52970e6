#pragma once

namespace kiva {

struct SourceNotes;

/// How target texts are written. Each rule has a told form (false), the text as it was given once,
/// and a working form (true), which the target's tools take and which runs as the simulator does.
/// Here stand the rules of several languages; what one alone has stands in its file and follows
/// `own`.
struct TargetRules {
  /// The languages' own rules have their working forms.
  bool own = false;

  /// Names are legal in the target, differ from its keywords and from each other.
  bool names = false;
  /// Nodes are numbered from 0 as a text writes them, and tables have that size; else by global id.
  bool used_nodes = false;
  /// Equations that no output, register or value needs are left out.
  bool needed_only = false;
  /// Of a finalised module rails that are constant, or the same as or the complement of another,
  /// are not read.
  bool folded = false;
  /// A rail that is read and that nothing computes is made from its signal's other rail, or is a
  /// further input; else it is declared and never assigned.
  bool complete = false;
  /// A module that is not finalised has its wires first in its interface, and registers move both
  /// rails; else only the status rails move.
  bool both_rails = false;
  /// Files go to Module::OutputDir(), the suffix is added unless the name ends with it, and what
  /// cannot be opened is reported.
  bool files = false;
  /// A text that includes the file beside it does so by the name of that file; else by the
  /// module's.
  bool real_header = false;
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
  /// Lists are as the language has them: commas between names only, a separator between statements
  /// only, a type behind each parameter, no heading without what it heads.
  bool proper_lists = false;
  /// Nothing says on the error stream how far a long search or listing is.
  bool quiet = false;
  /// What is renamed or added is not told: a text beside this one has told it.
  bool untold = false;
  /// Texts tell in comments what they are and where in the source it stands.
  bool comments = false;
  /// What is known of the module's source; null for nothing.
  const SourceNotes* notes = nullptr;
  /// Circuits take their reset without the clock; else at its edge.
  bool asynchronous_reset = false;

  static constexpr TargetRules told() { return {}; }
  static constexpr TargetRules working() {
    TargetRules rules;
    rules.own = rules.names = rules.used_nodes = rules.needed_only = rules.complete = true;
    rules.folded = true;
    rules.both_rails = rules.files = rules.real_header = true;
    rules.data_tests = rules.data_triggers = rules.brackets = true;
    rules.refuse_large_sums = rules.proper_lists = rules.quiet = rules.comments = true;
    return rules;
  }
  /// Of a language that has no told form, beside others in these rules.
  TargetRules without_told() const {
    TargetRules rules = working();
    rules.untold = untold;
    rules.asynchronous_reset = asynchronous_reset;
    rules.comments = comments;
    rules.notes = notes;
    return rules;
  }
};

}  // namespace kiva
