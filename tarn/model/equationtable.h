#pragma once

#include <array>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "pert_exp/Bddexpression.h"
#include "tarn/model/source_span.h"

namespace kiva {

class Expression;
class Module;
class Signal;

/// The equations that a module, or one of its statements, produces: a wood with the name of its
/// module. A module, or SignalManager::deleteWood, destroys the wood; one that the table has made,
/// or taken over, and that is still there at its end, goes with it.
class EquationTable {
 public:
  // Without a wood, each makes one with a manager of its own.
  EquationTable() : EquationTable(std::string()) {}
  explicit EquationTable(const std::string& name) : EquationTable(name, new Bddexpressionwood) {
    own_wood();
  }
  explicit EquationTable(Bddexpressionwood* wood) : EquationTable(std::string(), wood) {}
  EquationTable(const std::string& name, Bddexpressionwood* wood)
      : bdd_expression_wood(wood), module_name(name) {}
  ~EquationTable();
  EquationTable(const EquationTable&) = delete;
  EquationTable& operator=(const EquationTable&) = delete;

  /// Takes the wood over.
  void own_wood();
  /// Destroys a wood, and all woods of tables that share its manager if it is the manager's own.
  static void destroy_wood(Bddexpressionwood* wood);

  /// Null once another table has taken this one in. Equations may lack what `pre_later` and
  /// `unify_later` have to add to them, until `settle`.
  Bddexpressionwood* getBddexpressionWood() const { return bdd_expression_wood; }
  /// Gives every equation what it still lacks.
  void settle();
  const std::string& getModuleName() const { return module_name; }
  void setModuleName(const std::string& name) { module_name = name; }
  /// The wood's equation of that name, or of the variable of that index, complete; null for none.
  Bddexpression* getBddExpression(const std::string& name) {
    settle();
    return bdd_expression_wood->exp_by_name(name);
  }
  Bddexpression* getBddExpression(long index) {
    settle(index);
    return bdd_expression_wood->exp_by_index(index);
  }
  long getPertLevel() const { return bdd_expression_wood->Nb_level(); }

  // Equations of statements. A signal's equation is a pair, of its status and its value.
  /// Gives the signal's current occurrence the rails of `e`, over occurrence 0 of all signals when
  /// `initial`, else over their latest occurrences. A wire is True or False whatever `e`'s value.
  void createEquation(Signal* signal, Expression* e, Module* module, bool initial = false);
  /// Or-s the rails of `e` onto the signal's equations; a missing one is told on the error stream.
  void createUnifyEquation(Signal* signal, Expression* e, Module* module, bool initial);
  /// Gives the signal's current occurrence two functions; the value gets the user type behind
  /// `status_type`.
  void createRails(Signal* signal, const bdd& status, const bdd& value, int status_type,
                   Module* module);
  /// Or-s `f` onto the status of the signal's current occurrence; one without equation is zero.
  void raise(Signal* signal, const bdd& f, Module* module);
  /// The value of a register variable: not its status.
  void createRegisterEquation(Signal* signal, Module* module);
  /// Makes the current occurrence, or occurrence n, Bottom.
  void createBottomEquation(Signal* signal, Module* module);
  void createBottomEquation(Signal* signal, Module* module, int occurrence);
  /// Makes `signal` follow `other`.
  void replaceEquation(Signal* signal, Signal* other, Module* module);
  /// Copies an equation of another wood into this one; the signal that its variable stands for
  /// becomes known here. IllegalOperationException for a variable that stands for none.
  void add(Bddexpression* expression, Module* module);

  // Whole tables.
  /// Merges `other` into this table, and destroys its wood. Two equations of one variable become
  /// their or; by the rule `values`, their and for the value of a signal with occurrences.
  void unify(EquationTable* other, Module* module);
  /// Starts a new occurrence of each output and plain local that this table knows. What a run has
  /// brought in keeps the one that it has: nothing else writes it.
  void pre(Module* module);
  // What equations get is gathered: it is put in place when the table is asked for them, dated or
  // copied.
  /// As createUnifyEquation.
  void join_rails_later(Signal* signal, Expression* e, Module* module, bool initial);
  void unify_later(EquationTable* other, Module* module);
  void pre_later(Module* module);
  /// A table over a copy of the wood, with the same manager and occurrences.
  EquationTable* duplicate(Module* module);
  /// The same for one branch of a statement, which writes and reads no wires but its own: without
  /// the equations of wires, registers, data signals and what runs have brought in.
  EquationTable* branch(Module* module);
  /// Another table for a branch of the same statement, from one in which nothing is compiled yet.
  EquationTable* fellow(Module* module);
  /// The branch's own statements are compiled from here on: of the module's signals only those that
  /// the branch took over, and those that come from now on, can be known to it.
  void begin_branch(const Module* module);
  /// Destroys the table's wood with all that signals know of it; the table is of no use any more.
  void discard(Module* module);

  // Dates.
  /// Dates the equations, of all or of the given variable indices, and gives the number of levels.
  /// A dependence cycle ends the process with a report; ModulePertFailureException if dating fails.
  long callPert();
  long callPert(const std::list<long>& indices);
  /// How an instant is reached in which a cycle does not settle, for its report.
  void note_unsettled(const std::string& way) { unsettled_ = way; }
  /// A warning of a cycle through some of these variables, for as long as nobody knows whether it
  /// settles.
  Diagnostic open_cycle(const std::list<long>& members) const;
  /// The text of the cycle that begins at the first index, and of what else is in the list; takes
  /// what the cycle met out of the list.
  std::string computeDependence(std::list<long>& indices);
  /// The statement that makes the signal stands there: the report of a cycle names its line. Known
  /// to all tables duplicated from this one.
  void note_source(const Signal* signal, const SourceSpan& span);
  /// The statement makes what it writes hang on the signals that f reads, without wires between: a
  /// strong abort what its body writes, an automaton the signal.
  void note_cause(const bdd& f, const Signal* written, const SourceSpan& span);

  // Told, and called by no program (tarn/classic).
  /// Forgets the signal's equations.
  void removeSignal(Signal* signal);
  /// Makes the signal known to this table's wood.
  void learnSignal(Signal* signal, Module* module);
  /// Guards the equations of outputs and plain locals by the value of `condition`.
  void cond(Signal* condition, Module* module);
  /// Carries the dates of one equation to another.
  void updatePertDate(Bddexpression* from, Bddexpression* to);

 private:
  /// What all tables of a compilation share. What stands where: statements by the names of the
  /// signals that they made, and causes.
  struct Sources {
    struct Cause {
      std::vector<std::string> reads;  ///< signals, sorted
      const Signal* written;           ///< null for an abort
      SourceSpan span;
    };
    std::unordered_map<std::string, SourceSpan> makers;
    std::vector<Cause> causes;
    /// Empty woods of branches that have ended: their tables are as long as the manager has
    /// variables, so the next branch is given one of them.
    std::vector<std::unique_ptr<Bddexpressionwood>> left_woods;
    size_t woods_made = 0;
  };
  friend class CycleStory;

  /// What is still to be or-ed (and-ed, for a conjunction) onto an equation, in order of arrival:
  /// an or of n variables that grew by one each time would cost n * n nodes.
  struct PendingTerms {
    bool conjunction = false;
    std::vector<bdd> terms;
  };
  void lose_wood();
  void take_terms(EquationTable* other);
  void settle(long index);
  /// Has f or-ed, or and-ed, onto the equation of the variable, which has one.
  void join_later(long index, bool conjunction, const bdd& f);

  /// The equation of a variable; null when it has none.
  Bddexpression* equation_at(long index);
  /// The same; IllegalOperationException when there is no such variable.
  Bddexpression* equation_or_throw(long index);
  /// Gives a variable its equation; one that stood there is deleted.
  void define(const std::string& name, long index, const bdd& f, int usertype);
  EquationTable* over(Bddexpressionwood* copy);
  std::unique_ptr<Bddexpressionwood> wood_for_branch();
  template <class TakeOver>
  EquationTable* branch_with(Module* module, TakeOver take_over);
  void carry(Signal* signal, EquationTable& from, Module* module);
  void carry_equation(const Bddexpression& equation);
  /// An equation that an or, or an and, is still to be joined onto.
  void carry_nothing(const Bddexpression& equation, bool conjunction);
  template <class See>
  void for_each_known_signal(Module* module, See see);
  void learn_occurrence(Signal* signal, int occurrence);
  void move_equation(long index, Bddexpressionwood* from, Module* module);
  bool joins_by_and(long index, const EquationTable& other, Module* module) const;
  void unify_equation(Bddexpression* theirs, long their_index, EquationTable& other,
                      Module* module);
  void start_occurrence(Signal* signal, Module* module);
  /// The report of a cycle, at the first of its statements.
  Diagnostic cycle_fault(const std::list<long>& cycle, Manner manner);
  std::string cycle_report(std::list<long> cycle);
  std::vector<SourceSpan> source_spans(const std::list<long>& cycle) const;
  std::string source_lines(const std::list<long>& cycle) const;

  Bddexpressionwood* bdd_expression_wood;
  std::string module_name;
  std::string unsettled_;
  std::shared_ptr<Sources> sources_;
  /// Of a branch: the signals taken over, the first `only_read_` without equations, and the lengths
  /// of the module's lists when it began.
  std::vector<Signal*> carried_;
  size_t only_read_ = 0;
  bool additions_ = false;  ///< of what was taken over, only what is added to it
  std::array<size_t, 4> lists_at_begin_{};
  std::unordered_map<long, PendingTerms> pending_;  ///< by variable index
};

}  // namespace kiva
