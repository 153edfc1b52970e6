#pragma once

#include <iosfwd>
#include <list>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/name_numbers.h"
#include "base/parse_values.h"
#include "tarn/model/module.h"
#include "tarn/zuc/zuc_bindings.h"
#include "tarn/zuc/zuc_nodes.h"

class zucFlexLexer;

namespace kiva {

/// The reader of one compiled module: what the grammar's actions call, and what they leave.
///
/// Only one reader of a session can parse at a time: the constructor enters the object in
/// `pzuc_parser`, through which the generated scanner reaches it.
class class_zuc_parser {
 public:
  using Names = std::list<std::string>;

  class_zuc_parser();
  ~class_zuc_parser();
  class_zuc_parser(const class_zuc_parser&) = delete;
  class_zuc_parser& operator=(const class_zuc_parser&) = delete;

  /// Reads from `plexer`, which the caller has set. 0 for success, and then `pmodule_parse` is the
  /// module; otherwise that is half built and must not be used, and `problem()` tells why.
  /// `explain` 1 writes a line for each reduction to `log`. `instance` is appended to signal names.
  int parse(std::ostream& log, int explain, const std::string& instance);
  int parse(std::ostream& log, int explain, const std::string& instance,
            const std::string& run_instance);
  /// Restricts the names of inputs and outputs; null or empty lists accept all.
  void add_awaited_io(const Names* inputs, const Names* outputs);

  /// Why the read failed: line in the file and reason.
  const ZucProblem& problem() const { return problem_; }

  // What the grammar's actions call. Where a bool comes back, false stops the read.
  int line() const;
  std::string token_text() const;
  long token_number() const;
  void syntax_error(const char* message);
  void trace(int step, int alternative, std::string_view text);
  void trace_token(int step, int alternative);
  void flush_trace();
  void begin_module();
  Signal* declare(const std::string& name, const std::string* type);
  void mark_inputs(const signal_list& list);
  void mark_outputs(const signal_list& list);
  void mark_data(const signal_list& list);
  void mark_locals(const signal_list& list);
  /// False where a name stands twice in the list, or in two of inputs, outputs and locals.
  [[nodiscard]] bool stand_once(const signal_list& list, bool data = false);
  long initial_value();
  /// Null, with a message, when one of the variables is not declared.
  regclass* declare_register(const std::string& next, const std::string& actual, long initial);
  void declare_wires(const std::string& set, const std::string& reset, const std::string& rtl);
  void node_line(long id, long var, long then_id, long else_id, long link);
  [[nodiscard]] bool expression_line(long early, long late, long var, long root, long link,
                                     const std::vector<long>& deps);
  [[nodiscard]] bool add_type(const std::string& name);
  [[nodiscard]] bool add_method(const std::string& type, const std::string& name,
                                const Names& arguments);
  [[nodiscard]] bool add_constant(const std::string& type, const std::string& name,
                                  const std::string* literal);
  [[nodiscard]] bool finish(bool reincarnate, bool finalised);

  // What a read holds while it goes.
  ParseValues values;
  long premier_bdd_id = 0;
  int explain_param = 0;
  std::ostream* parse_os = nullptr;
  zucFlexLexer* plexer = nullptr;
  std::string module_name;
  Module* pmodule_parse = nullptr;
  std::string instance;
  std::string run_instance;
  Bddexpressionwood* pw = nullptr;
  long parsed_nodes_number = 0;
  signal_list inputs, outputs, data, locals;
  RegisterList registers;
  bool has_bindings = false;
  std::vector<bindingparse> binding_list;
  std::vector<evalnodeparse> evalnode_list;

 private:
  bool stop(int line, const std::string& reason);
  void mark_awaited(const signal_list& list, const Names* awaited, const char* kind,
                    void (*mark)(Signal*));
  [[nodiscard]] bool bddexpression_convert(long early, long late, long var, long root, long link,
                                           const std::vector<long>& deps);
  [[nodiscard]] bool room_for(const std::vector<int>& table, const char* kind);
  static constexpr size_t most_declarations = 32767;

  /// All signals declared so far, wires included.
  std::vector<Signal*> global_signal_list;
  /// Of each internal name the last signal that bears it, and of each signal (by its place) the one
  /// before it of the same name, `none` for the first. Built when the first register asks.
  name_numbers names_;
  std::vector<size_t> last_of_name_;  // by number of the name
  std::vector<size_t> before_of_name_;
  static constexpr size_t none = static_cast<size_t>(-1);
  std::unordered_set<std::string> met_;  ///< names of inputs, outputs and locals
  const Names* awaited_input_list = nullptr;
  const Names* awaited_output_list = nullptr;
  parsed_nodes_table nodes_;
  std::vector<int> corres_methodid;
  std::vector<int> corres_typeid;
  std::vector<int> corres_constantesid;
  ZucProblem problem_{0, ""};
  std::string pending_trace_;
};

/// The session's reader under way; null when there is none.
class_zuc_parser*& pzuc_parser();

}  // namespace kiva

/// The generated parser: 0 for success, 1 for an error, 2 when memory is exhausted.
int zucparse(kiva::class_zuc_parser& reader);
