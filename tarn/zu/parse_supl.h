#pragma once

#include <algorithm>
#include <array>
#include <deque>
#include <initializer_list>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "tarn/model/data.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/model/source_span.h"
#include "tarn/session/session.h"
#include "tarn/zu/data_types.h"
#include "tarn/zu/statement.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/mealy.h"
#include "tarn/zu/warnings.h"

union ZUSTYPE;

namespace kiva {

class zu_scanner;

/// What stands in the brackets of a transition.
struct trigger_class {
  int priority;  ///< -1 for "other"
  Expression* expression;
};

/// The module under way; null outside of modules.
Module*& TheModule();
/// The states of the automaton under way.
Automaton::StateTable*& TheCurrentStateTable();

// Lists of semantic values.
using DataExprList = std::list<DataExpr*>;
using NameList = std::list<std::string>;
using SignalActions = std::list<Signal*>;
using TransitionList = std::list<Transition*>;
using EquationList = std::list<Equation*>;
/// Formal name in the called module, signal of the calling one.
using RenamingEntry = std::pair<std::string, Signal*>;
using RenamingList = std::list<RenamingEntry>;
using GeometryTriple = std::array<double, 3>;

/// The reader of source text: what the grammar's actions call, and what they leave.
///
/// A session has one. What the actions build for the model lives as long as the session; texts
/// and lists that only pass between actions belong to the reader and go when it ends, however it
/// ends. Faults throw the library's exceptions, or end the process with a message.
class class_zu_parser {
 public:
  /// The scanner, which the caller has set.
  zu_scanner* plexer = nullptr;

  /// Reads the whole text; 0 for success. An exception carries the span of its cause.
  int parse();

  // Called by the generated parser.
  /// Reads the next token, and enters its value and place.
  int next_token(ZUSTYPE* value, SourceSpan* span);
  /// The text of that token. A number reduces before the next token is read.
  std::string* token_text();
  /// The span of a production that is about to be reduced.
  SourceSpan reduce(const SourceSpan* first, const SourceSpan* last);
  /// Narrows it to the part that a fault would be about.
  void look_at(const SourceSpan& part) { span_ = part; }
  /// Whether the generated parser is looking for a place behind a fault from which to go on.
  void recovering(bool yes) { recovery_.under_way = yes; }
  /// The last token is none of the symbols that can follow.
  void syntax_error(const std::vector<std::string>& expected);
  /// A list of a module's head has begun behind its place.
  void misplaced(const std::string& list);
  void leave_module() { recovery_.in_module = false; }
  /// The generated parser's stack is full.
  void too_deep();

  // Faults (parse_supl_faults.cc).
  /// Takes the fault in, at the production under way, where faults are gathered; else throws the
  /// exception.
  template <class Exception>
  void refuse(const Exception& exception, const std::string& sentence) {
    if (!gathers()) throw exception;
    fault(sentence);
  }
  /// Does what may throw an exception of the library, which is a fault where faults are gathered.
  template <class Act>
  void tolerate(Act act) {
    try {
      act();
    } catch (const LibraryException& exception) {
      if (!gathers()) throw;
      fault(exception.sentence());
    }
  }
  /// Enters an error at the production under way, or at a part of the text.
  void fault(const std::string& sentence) { fault(sentence, span_); }
  void fault(const std::string& sentence, const SourceSpan& span,
             std::vector<Diagnostic::Note> notes = {});
  /// '"NAME" is not declared', with the name that may be meant.
  std::string undeclared(const std::string& name, bool to_emit = false) const;
  /// Why no statement can write the signal.
  std::string not_emitted(const std::string& name) const;
  static bool gathers() { return Session::current().options.FaultsGathered; }
  static bool checks() { return gathers() && Session::current().options.SourceChecked; }
  /// A value that passes between actions.
  template <class T, class... Args>
  T* made(Args&&... args) {
    auto value = std::make_shared<T>(std::forward<Args>(args)...);
    passing_.push_back(value);
    return value.get();
  }
  /// The name of the source of an initial transition.
  static const std::string initial_name;

  // The data part and data expressions.
  void make_type_table();
  void make_method_table();
  void make_constant_table();
  void add_type(const std::string& name);
  void add_method(const std::string& type, const std::string& name, const NameList* arguments);
  /// `value` may be null.
  void add_constant(const std::string& type, const std::string& name, DataExpr* value);
  void add_literal(const std::string& type, const std::string& literal);
  DataExpr* literal_value(const std::string& literal);
  /// The constant that stands for a literal.
  DataExpr* literal(const std::string& literal);
  DataExpr* constant(const std::string& name);
  DataExpr* method_call(const std::string& name, const DataExprList* arguments);
  DataExpr* binary(int op, DataExpr* left, DataExpr* right);
  DataExpr* unary(int op, DataExpr* operand);
  DataExpr* signal_value(const std::string& name);

  // Modules and interfaces.
  void begin_module(const std::string& name);
  void finish_module(Statement* body);
  void declare_input(const std::string& name, const std::string& type);
  void declare_output(const std::string& name, const std::string& type);
  void declare_local(const std::string& name, const std::string& type);
  void declare_run(const std::string& path, const std::string& module);
  void declare_run(const std::string& directory, const std::string& file,
                   const std::string& module);

  /// An output or local; StatementSignalException for any other name.
  Signal* statement_signal(const std::string& name);

  // Statements: what their own `read` operations, in tarn/zu/statements, are made of.
  /// The name of the next statement: the module's, the prefix, "_" and the counter, which grows. A
  /// kind without a counter of its own is counted by its prefix.
  std::string next_name(const std::string& prefix, int& counter) const;
  std::string next_name(const std::string& prefix) { return next_name(prefix, counters_[prefix]); }
  /// A statement of the module that stands where the production does.
  template <class T, class... Args>
  T* build(const std::string& name, Args&&... args) {
    T* statement = make_kept<T>(name, std::forward<Args>(args)...);
    statement->setModule(TheModule());
    statement->setSpan(span_);
    measure(statement);
    return statement;
  }
  /// The statement, whose condition stands there.
  Statement* looking(Statement* statement, const SourceSpan& condition);
  /// The list with one member more, which stands where the production does.
  template <class T>
  Statement* appended(T* list, Statement* right) {
    Extent extent = extent_of(list);
    const Extent added = extent_of(right);
    extent = {std::max(extent.depth, 1 + added.depth), extent.statements + added.statements};
    list->addMember(right);
    list->setSpan(span_);
    enter_extent(list, extent);
    return list;
  }
  /// Copies of a statement, numbered from 0.
  std::vector<Statement*> copies(Statement* body, int count);
  /// Counts copies of so many statements against most_copies.
  void count_copies(long count, long statements);
  /// Binds a value to a signal of its own, which stands for it where `clock` is there. A
  /// type error in the data is shown first.
  Signal* bind(DataExpr* data, const std::string& prefix, Signal* clock);
  /// Where source is checked: whether an emission of the signal has the value that it needs.
  void check_emission(const Signal* signal, DataExpr* data);
  /// Binds a condition to a data signal of the module.
  Signal* bind_condition(DataExpr* data, const std::string& name);
  /// Makes a bound signal a local, or an output if its clock is one.
  void place_local(Signal* bound);
  void place_like(Signal* bound, const Signal* clock);
  RenamingEntry* renaming(const std::string& actual, const std::string& formal);

  // Signal expressions.
  Expression* signal(const std::string& name);
  template <class T, class... Operands>
  Expression* expression(Operands*... operands) {
    return nested(make_kept<T>(operands...), {operands...});
  }

  // Automata.
  void begin_automaton();
  /// The states since then.
  const Automaton::StateTable& states() const { return *TheCurrentStateTable(); }
  void state(const std::string& name, bool final_state, Statement* run,
             const SignalActions* actions, const GeometryTriple* geometry);
  Transition* transition(const std::string& from, const trigger_class& trigger,
                         const SignalActions* actions, int tpe, const std::string& to,
                         const GeometryPair* geometry);
  trigger_class* trigger(int priority, Expression* expression = nullptr);
  trigger_class* value_trigger(int priority, DataExpr* data);
  /// Appends the signal, and behind it the signal bound to its value.
  void add_action(SignalActions& actions, const std::string& name, DataExpr* data);

  // Mealy machines.
  void declare_register(const std::string& name, int initial, const std::string& next);
  Expression* equation_signal(const std::string& name);
  Expression* equation_constant(int number);
  Expression* equation_nor(Expression* left, Expression* right);
  Expression* equation_xor(Expression* left, Expression* right);
  Expression* equation_nand(Expression* left, Expression* right);
  /// One equation, and with a value (`data` not null) a second one of the signal bound to it.
  EquationList* equation(Signal* variable, DataExpr* data, Expression* right);

  /// The deepest nesting of statements, and of expressions, that a file may have: compilation walks
  /// both by recursion.
  static constexpr int most_nested = 2000;
  /// The most statements that all `repeat` and `wait` of one file may make together, over one for
  /// each byte of it.
  static constexpr long most_copies = 200'000;
  /// The most faults of one file that are told.
  static constexpr size_t most_faults = 20;

 private:
  /// What a statement is made of, itself included.
  struct Extent {
    int depth = 1;
    long statements = 1;
  };

  /// Where faults are gathered, a fault with that sentence.
  void fatal(const std::string& text, const std::string& sentence);
  [[noreturn]] void end_of_syntax(bool too_deep);
  /// Shows the source line on the error stream, with a mark under the span.
  void point_at(const SourceSpan& span, const std::string& reason) const;

  void require_type(const std::string& name);
  DataExpr* known_value(const std::string& name, const std::string& sentence);
  /// Notes where the part of a data expression stands.
  DataExpr* placed(DataExpr* e);
  DataTypes data_types();
  /// Whether faults have been found in the expression by what `check` does with it; then it has a
  /// type all the same.
  template <class Check>
  void check_data(DataExpr* data, Check check);
  static DataExpr* unknown_value();
  /// Adds a declaration to its table, unless an earlier file has made it in the same words. `known`
  /// has that name in the table and may be null.
  template <class Declaration, class Table>
  void enter(Declaration* made, const std::string& name, const Declaration* known,
             void (Table::*add)(Declaration*), Table& table);
  /// Tells of a name that stands at the production under way, and stood at a first place.
  void doubled(const std::string& name, const SourceSpan& first);
  Signal* any_signal(const std::string& name);
  /// A signal for a name that a fault was about, so that the next one is about something else.
  Signal* stand_in(const std::string& name);
  /// Null unless the name is an output or a local.
  Signal* emitted(const std::string& name) const;
  /// Ends the work with both places where the module under way has declared the name before; the
  /// library takes it, unless its caller has chosen the rule `copies`.
  void refuse_doubled(const std::string& name);
  Signal* declare(const std::string& name, const std::string& type);
  /// Says where a data expression stands whose operands' types differ, before that ends the
  /// process.
  void locate_type_error(DataExpr* data) const;
  /// Enters the state if it does not exist yet.
  State* known_state(const std::string& name);
  State* new_state(const std::string& name);

  // Nesting, which is bounded. What has no entry is one level.
  int depth_of(const void* node) const;
  void set_depth(const void* node, int depth);
  Expression* nested(Expression* node, std::initializer_list<const Expression*> operands);
  Extent extent_of(const Statement* statement) const;
  void measure(const Statement* statement);
  void enter_extent(const Statement* statement, const Extent& extent);
  SourceSpan span_;  ///< of the production under way
  std::vector<std::shared_ptr<void>> passing_;
  std::unordered_map<const void*, int> depths_;
  std::unordered_map<std::string, SourceSpan> signal_places_;  ///< of the module under way
  std::unordered_map<std::string, SourceSpan> run_places_;     ///< of the module under way
  std::unordered_map<std::string, SourceSpan> types_here_;     ///< of this file
  std::unordered_set<const void*> declared_;                 ///< methods and constants of this file
  std::unordered_map<const void*, SourceSpan> declared_at_;  ///< of all files
  std::unordered_map<const Statement*, Extent> extents_;
  std::unordered_map<std::string, int> counters_;
  long copies_left_ = 0;

  /// What is gathered, and what has to be closed, while a text is read.
  struct Recovery {
    std::vector<Diagnostic> faults;
    std::vector<ReadModule> modules;
    std::unordered_map<const DataExpr*, SourceSpan> data;
    std::unordered_set<std::string> stand_ins;  ///< signals that nobody has declared
    std::deque<int> tokens;                     ///< to be given before the scanner's next
    std::vector<SourceSpan> braces;             ///< open in the module
    struct Token {
      int token = 0;
      SourceSpan span;
    };
    std::array<Token, 2> before;  ///< the tokens before the last, the latest first
    Token last;
    bool under_way = false;
    bool in_module = false, in_data = false;
    bool begins = false;  ///< the next token is the first of a module's body
    bool braced = false;  ///< the module's body stands in braces
    bool in_interface = false;
    std::vector<std::string> skipped;  ///< names of the interface that stand behind a fault in it
  };
  struct EnoughFaults {};
  void follow(int token);
  void follow_interface(int token);
  [[nodiscard]] bool close_before(int token);
  void close_open(int token);
  std::string syntax_sentence(const std::vector<std::string>& expected) const;
  std::string token_fault(const std::vector<std::string>& expected) const;
  std::string source_text(const SourceSpan& span) const;
  std::string text_before() const;
  void hand_over();
  Recovery recovery_;
};

}  // namespace kiva
