// AIGER: a module as a graph of ands and inverters, in the ASCII form and, beside it, in the binary
// one. There is no told form.

#include <algorithm>
#include <ostream>

#include "base/aig.h"
#include "base/graph_walk.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

using aig::Aig;
using aig::Literal;

const TargetText::Language language{.shape = {.target = "AIGER", .more_characters = ".@"},
                                    .names_module = false};

/// A text's graph. Inputs come first, then registers, then the ands: so the format numbers them.
class Graph {
 public:
  explicit Graph(const TargetText& text) : text_(text) {
    for (long index : text.input_rails()) literals_[index] = graph_.variable();
    for (const StateRail& rail : text.state()) literals_[rail.index] = graph_.variable();
    for (const TargetEquation& equation : text.equations())
      literals_[equation.index] = literal(equation.f);
    for (const StateRail& rail : text.state()) roots_.push_back(literals_.at(rail.next));
    for (long index : text.output_rails()) roots_.push_back(literals_.at(index));
    for (std::uint32_t node : graph_.cone(roots_))
      if (graph_.is_and(node)) {
        number_[node] = first_and() + static_cast<std::uint32_t>(ands_.size());
        ands_.push_back(node);
      }
  }

  void put_ascii(std::ostream& out) const {
    put_head("aag", out);
    for (std::uint32_t k = 1; k < first_and(); ++k) {
      out << 2 * k;
      if (k > inputs()) put_next(k, out << ' ');
      out << '\n';
    }
    put_outputs(out);
    for (std::uint32_t node : ands_)
      out << 2 * number_.at(node) << ' ' << of(graph_.right(node)) << ' ' << of(graph_.left(node))
          << '\n';
    put_symbols(out);
  }

  void put_binary(std::ostream& out) const {
    put_head("aig", out);
    for (std::uint32_t k = inputs() + 1; k < first_and(); ++k) {
      put_next(k, out);
      out << '\n';
    }
    put_outputs(out);
    for (std::uint32_t node : ands_) {
      const std::uint32_t left = of(graph_.left(node)), right = of(graph_.right(node));
      put_difference(2 * number_.at(node) - std::max(left, right), out);
      put_difference(std::max(left, right) - std::min(left, right), out);
    }
    put_symbols(out);
  }

 private:
  std::uint32_t inputs() const { return static_cast<std::uint32_t>(text_.input_rails().size()); }
  std::uint32_t first_and() const {
    return 1 + inputs() + static_cast<std::uint32_t>(text_.state().size());
  }

  /// The literal of f, whose variables have theirs.
  Literal literal(const bdd& f) {
    const bdd_node* const one = text_.manager()->Bdd_node_one();
    nodes_[one] = aig::one;
    walk_from_below(
        static_cast<const bdd_node*>(f.node()),
        [&](const bdd_node* node) { return nodes_.contains(node); },
        [&](const bdd_node* node, auto ask) {
          ask(node->then_node());
          ask(node->else_node());
        },
        [&](const bdd_node* node) {
          nodes_[node] = graph_.choice(
              literals_.at(node->var_index()), nodes_.at(node->then_node()),
              aig::negated_if(nodes_.at(node->else_node()), node->else_link_type() == -1));
        });
    return aig::negated_if(nodes_.at(f.node()), f.link_type() == -1);
  }

  /// As the files number it.
  std::uint32_t of(Literal literal) const {
    const std::uint32_t node = aig::node_of(literal);
    const auto at = number_.find(node);
    return 2 * (at == number_.end() ? node : at->second) + (aig::is_negated(literal) ? 1 : 0);
  }

  void put_head(const char* form, std::ostream& out) const {
    out << form << ' ' << first_and() - 1 + ands_.size() << ' ' << inputs() << ' '
        << text_.state().size() << ' ' << text_.output_rails().size() << ' ' << ands_.size()
        << '\n';
  }
  void put_next(std::uint32_t number, std::ostream& out) const {
    const size_t k = number - inputs() - 1;
    out << of(roots_[k]) << (text_.state()[k].initial ? " 1" : "");
  }
  void put_outputs(std::ostream& out) const {
    for (size_t k = text_.state().size(); k < roots_.size(); ++k) out << of(roots_[k]) << '\n';
  }
  static void put_difference(std::uint32_t value, std::ostream& out) {
    for (; value >= 0x80; value >>= 7) out << static_cast<char>((value & 0x7f) | 0x80);
    out << static_cast<char>(value);
  }
  void put_symbols(std::ostream& out) const {
    size_t k = 0;
    for (long index : text_.input_rails()) out << 'i' << k++ << ' ' << text_.name(index) << '\n';
    k = 0;
    for (const StateRail& rail : text_.state())
      out << 'l' << k++ << ' ' << text_.state_name(rail.index) << '\n';
    k = 0;
    for (long index : text_.output_rails()) out << 'o' << k++ << ' ' << text_.name(index) << '\n';
    out << "c\n" << text_.module()->getName() << '\n';
  }

  const TargetText& text_;
  Aig graph_;
  std::unordered_map<long, Literal> literals_;  ///< by index of a variable
  std::unordered_map<const bdd_node*, Literal> nodes_;
  std::vector<Literal> roots_;  ///< what the registers become, then the outputs
  std::vector<std::uint32_t> ands_;
  std::unordered_map<std::uint32_t, std::uint32_t> number_;  ///< of the ands, in the files
};

void put_module(const TargetJob& job) {
  const TargetText text(job.module, language, job.rules.without_told());
  const Graph graph(text);
  graph.put_ascii(job.out);
  graph.put_binary(job.beside);
}

const Bench bench{.language = &language,
                  .extension = ".v",
                  .run = aiger_bench_run,
                  .put = put_blif_bench,
                  .tool = "berkeley-abc -h | head -n 1"};

}  // namespace

extern const Target aiger_target{.option = "aiger",
                                 .help = "and-inverters, .aag, .aig",
                                 .file = {.extension = ".aag"},
                                 .put = put_module,
                                 .beside = ".aig",
                                 .bench = &bench};

}  // namespace kiva
