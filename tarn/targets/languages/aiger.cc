// AIGER: a module as a graph of ands and inverters, in the ASCII form and, beside it, in the binary
// one. There is no told form.

#include "base/aiger_text.h"
#include "base/graph_walk.h"
#include "tarn/targets/benches/benches.h"
#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

namespace {

using aig::Circuit;
using aig::Literal;

const TargetText::Language language{.shape = {.target = "AIGER", .more_characters = ".@"},
                                    .names_module = false};

/// A text as a circuit.
class CircuitOfText {
 public:
  explicit CircuitOfText(const TargetText& text) : text_(text) {
    circuit_.name = text.module()->getName();
    for (long index : text.input_rails())
      circuit_.inputs.push_back({literals_[index] = graph().variable(), text.name(index)});
    for (const StateRail& rail : text.state()) literals_[rail.index] = graph().variable();
    for (const TargetEquation& equation : text.equations())
      literals_[equation.index] = literal(equation.f);
    for (const StateRail& rail : text.state())
      circuit_.latches.push_back({literals_.at(rail.index), literals_.at(rail.next), rail.initial,
                                  text.state_name(rail.index)});
    for (long index : text.output_rails())
      circuit_.outputs.push_back({literals_.at(index), text.name(index)});
  }

  const Circuit& circuit() const { return circuit_; }

 private:
  aig::Aig& graph() { return circuit_.graph; }

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
          nodes_[node] = graph().choice(
              literals_.at(node->var_index()), nodes_.at(node->then_node()),
              aig::negated_if(nodes_.at(node->else_node()), node->else_link_type() == -1));
        });
    return aig::negated_if(nodes_.at(f.node()), f.link_type() == -1);
  }

  const TargetText& text_;
  Circuit circuit_;
  std::unordered_map<long, Literal> literals_;  ///< by index of a variable
  std::unordered_map<const bdd_node*, Literal> nodes_;
};

void put_module(const TargetJob& job) {
  const TargetText text(job.module, language, job.rules.without_told());
  const CircuitOfText of_text(text);
  Circuit circuit = of_text.circuit();
  if (job.rules.notes != nullptr && job.rules.notes->with_properties)
    job.rules.notes->with_properties(circuit);
  aig::put_aiger_ascii(circuit, job.out);
  aig::put_aiger_binary(circuit, job.beside);
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
                                 .with_properties = true,
                                 .bench = &bench};

}  // namespace kiva
