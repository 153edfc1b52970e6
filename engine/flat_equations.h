#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/aig.h"
#include "engine/code/compiled_pass.h"
#include "engine/code/later.h"
#include "pert_exp/Bddexpression.h"

namespace kiva {

/// Boolean equations laid flat in memory, once, for passes over a context. Every entry becomes
/// exactly what `Bdd_eval_for_literal` gives for its equation in the order of the additions.
class FlatEquations {
 public:
  explicit FlatEquations(bddpp_manager* manager) : manager_(manager) {}

  /// Adds an equation behind all others: `index` of its variable, and its right member.
  void add(long index, const bdd& exp);
  /// Ends a segment: what follows starts only when the caller runs the next segment.
  void cut();
  size_t segments() const { return segment_ends_.size(); }
  long equations() const { return equations_; }

  /// Runs one segment over the context, by variable index. Entries must be 0, 1 or 2.
  void run(size_t segment, int* context) const;

  /// By variable index: whether an equation writes the entry.
  std::vector<bool> written(size_t variables) const;
  /// By variable index: whether an equation reads the entry before one has written it.
  std::vector<bool> read_first(size_t variables) const;
  /// The pass of the only segment over a graph: `entries` are those before it, known ones, and
  /// become those behind it. False where there are several segments, or the graph would be much
  /// larger than the equations.
  bool trace(aig::Aig& graph, std::vector<aig::Literal>& entries) const;
  /// Makes machine code of the only segment now, instead of once it has run for long; false where
  /// there is none. With it and without, runs leave the same.
  bool compile() const;

 private:
  /// Equations of up to this many variables become a table of all their ternary inputs.
  static constexpr size_t most_table_inputs = 4;

  /// An equation read from a table: entry number = the inputs' values, two bits each.
  struct TableEquation {
    std::uint32_t out;
    std::uint32_t table;  ///< place of its first entry in `tables_`
    std::uint32_t in[most_table_inputs];
  };
  /// An edge into `nodes_`: twice the node's place, plus 1 when complemented. Place 0 is the
  /// constant.
  using Edge = std::uint32_t;
  struct Node {
    std::uint32_t variable;
    Edge then_edge;
    Edge else_edge;
  };
  struct DiagramEquation {
    std::uint32_t out;
    Edge root;
  };
  /// A run of equations of one form: the number of variables each reads from a table, or
  /// `diagram_run`.
  struct Run {
    std::uint8_t form;
    std::uint32_t begin;
    std::uint32_t end;
  };
  static constexpr std::uint8_t diagram_run = 255;

  struct Pending {
    long index;
    bdd exp;
    std::vector<long> reads;
  };

  class Tracing;
  std::unique_ptr<code::CompiledPass> compiled() const;
  void run_tables(size_t segment, int* context) const;
  void close_window();
  void emit(const std::vector<Pending>& window);
  std::uint32_t table_of(const bdd& exp, const std::vector<long>& reads);
  Edge edge_of(const bdd& exp);
  int evaluate(Edge root, const int* context) const;
  int evaluate_with_unknowns(Edge root, const int* context) const;

  bddpp_manager* manager_;
  long equations_ = 0;
  std::vector<Pending> window_;
  std::vector<std::uint32_t> written_in_, read_in_;  ///< by index: the window that last did so
  std::uint32_t window_number_ = 1;

  std::vector<Run> runs_;
  std::vector<size_t> segment_ends_;  ///< number of runs at the end of each segment
  std::vector<TableEquation> table_equations_;
  std::vector<DiagramEquation> diagram_equations_;
  std::vector<std::uint8_t> tables_;
  std::map<std::string, std::uint32_t> known_tables_;
  std::vector<int> literals_;  ///< scratch of `table_of`
  std::vector<Node> nodes_{{0, 0, 0}};
  std::vector<Edge> place_of_node_;  ///< by global id; 0 for a node not laid yet

  /// Scratch of an evaluation with unknowns: results of this evaluation, by node place.
  mutable std::vector<std::uint32_t> stamp_;
  mutable std::vector<std::uint8_t> result_;
  mutable std::uint32_t current_stamp_ = 0;
  mutable code::Later<code::CompiledPass> code_;  ///< reads all of the above
};

}  // namespace kiva
