// Equations over a graph: a table becomes the choices that its known inputs make, a diagram one
// choice a node.

#include <algorithm>

#include "base/graph_walk.h"
#include "engine/flat_equations.h"

namespace kiva {

/// A pass under way.
class FlatEquations::Tracing {
 public:
  Tracing(const FlatEquations& of, aig::Aig& graph, std::vector<aig::Literal>& entries)
      : of_(of),
        aig_(graph),
        entries_(entries),
        read_(entries.size(), false),
        image_(of.nodes_.size(), none),
        left_(most_nodes_an_equation * static_cast<size_t>(of.equations_) + 4096) {}

  bool run() {
    for (const Run& run : of_.runs_)
      for (std::uint32_t at = run.begin; at != run.end; ++at) {
        if (run.form == diagram_run) {
          const DiagramEquation& equation = of_.diagram_equations_[at];
          if (!lay(equation.root)) return false;
          write(equation.out, value(equation.root));
        } else {
          const TableEquation& equation = of_.table_equations_[at];
          for (std::uint32_t k = 0; k < run.form; ++k) read_[equation.in[k]] = true;
          write(equation.out, of_table(equation, run.form, 0));
        }
      }
    return true;
  }

 private:
  static constexpr aig::Literal none = ~aig::Literal{0};
  static constexpr size_t most_nodes_an_equation = 8;

  /// What the inputs from `count` on have chosen is in `entry`.
  aig::Literal of_table(const TableEquation& equation, std::uint32_t count, std::uint32_t entry) {
    if (count == 0) return of_.tables_[equation.table + entry] == 1 ? aig::one : aig::zero;
    const std::uint32_t input = count - 1;
    const aig::Literal otherwise = of_table(equation, input, entry);
    const aig::Literal chosen = of_table(equation, input, entry | 1U << (2 * input));
    return aig_.choice(entries_[equation.in[input]], chosen, otherwise);
  }

  void write(std::uint32_t index, aig::Literal literal) {
    // What was read from it before is another function now.
    if (read_[index]) std::fill(image_.begin(), image_.end(), none);
    entries_[index] = literal;
  }

  aig::Literal value(Edge edge) const {
    return aig::negated_if(edge <= 1 ? aig::one : image_[edge >> 1], (edge & 1) != 0);
  }
  /// False where there are too many nodes.
  bool lay(Edge root) {
    const auto known = [&](Edge edge) { return edge <= 1 || image_[edge >> 1] != none; };
    const auto children = [&](Edge edge, auto ask) {
      ask(of_.nodes_[edge >> 1].then_edge & ~1U);
      ask(of_.nodes_[edge >> 1].else_edge & ~1U);
    };
    walk_from_below<Edge>(root & ~1U, known, children, [&](Edge edge) {
      const Node& node = of_.nodes_[edge >> 1];
      read_[node.variable] = true;
      if (left_ > 0) --left_;
      image_[edge >> 1] = left_ == 0 ? aig::zero
                                     : aig_.choice(entries_[node.variable], value(node.then_edge),
                                                   value(node.else_edge));
    });
    return left_ > 0;
  }

  const FlatEquations& of_;
  aig::Aig& aig_;
  std::vector<aig::Literal>& entries_;
  std::vector<bool> read_;
  std::vector<aig::Literal> image_;  ///< by place of the node
  size_t left_;                      ///< nodes of diagrams that may come
};

std::vector<bool> FlatEquations::written(size_t variables) const {
  std::vector<bool> written(variables, false);
  for (const TableEquation& equation : table_equations_) written[equation.out] = true;
  for (const DiagramEquation& equation : diagram_equations_) written[equation.out] = true;
  return written;
}

std::vector<bool> FlatEquations::read_first(size_t variables) const {
  std::vector<bool> read(variables, false), written(variables, false), seen(nodes_.size(), false);
  const auto enters = [&](Edge edge) {
    if (edge <= 1 || seen[edge >> 1]) return false;
    seen[edge >> 1] = true;
    return true;
  };
  for (const Run& run : runs_)
    for (std::uint32_t at = run.begin; at != run.end; ++at) {
      if (run.form == diagram_run) {
        // A node met again reads nothing that was not there the first time.
        walk_from<Edge>({diagram_equations_[at].root}, enters, [&](Edge edge, const auto& more) {
          const Node& node = nodes_[edge >> 1];
          if (!written[node.variable]) read[node.variable] = true;
          more(node.then_edge);
          more(node.else_edge);
        });
        written[diagram_equations_[at].out] = true;
      } else {
        const TableEquation& equation = table_equations_[at];
        for (std::uint32_t k = 0; k < run.form; ++k)
          if (!written[equation.in[k]]) read[equation.in[k]] = true;
        written[equation.out] = true;
      }
    }
  return read;
}

bool FlatEquations::trace(aig::Aig& graph, std::vector<aig::Literal>& entries) const {
  return segments() == 1 && Tracing(*this, graph, entries).run();
}

}  // namespace kiva
