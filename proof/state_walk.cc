// Layers of states by their distance from the start, until one holds a state and inputs that are
// bad, or nothing new is reached. A run to that state is found backwards through the layers.
//
// The order of variables is that of a descent from `bad` through the graph, a latch's next value
// behind what reads the latch, with the next value's variable behind the latch's own.

#include <algorithm>
#include <new>

#include "bdd/work_guard.h"
#include "proof/diagrams.h"
#include "proof/engine.h"
#include "proof/image.h"

namespace kiva::proof {

namespace {

class StateWalk : public Engine {
 public:
  explicit StateWalk(const Machine& machine) : machine_(machine) {}

  std::string name() const override { return "states"; }
  bool exhausted() const override { return exhausted_; }
  size_t good_instants() const override { return done_; }
  std::string so_far() const override {
    if (image_ == nullptr) return exhausted_ ? "diagrams too large" : "making diagrams";
    return states_ + " states in " + std::to_string(done_) + " instants" +
           (exhausted_ ? ", then diagrams too large" : "");
  }

  Answer work(const Stop& stop) override {
    try {
      const WorkGuard guard([&] {
        if (system_.manager.Bdd_total_size() > most_nodes) throw std::bad_alloc();
        if (stop()) throw Paused();
      });
      if (image_ == nullptr) make_system(stop);
      return walk(stop);
    } catch (const Paused&) {
      return {};
    } catch (const std::bad_alloc&) {
      exhausted_ = true;
      return {};
    }
  }

 private:
  struct Paused {};
  static constexpr long most_nodes = 100'000'000;

  // The machine as diagrams
  // ------------------------------------------------------------------------

  void make_system(const Stop& stop) {
    if (functions_.empty()) order_variables();
    for (std::uint32_t node : nodes_) {
      bdd& f = functions_[node];
      if (f.node() != nullptr) continue;
      if (stop()) throw Paused();
      f = system_.manager.Bdd_and(function(machine_.aig.left(node)),
                                  function(machine_.aig.right(node)));
    }
    system_.bad = function(machine_.bad);
    for (size_t k = 0; k < order_.size(); ++k)
      system_.registers[k].f = function(machine_.latches[order_[k]].next);
    image_ = std::make_unique<Image>(system_);
    functions_.clear();
    reached_ = system_.manager.Bdd_zero();
    layer_ = system_.manager.Bdd_one();
    for (auto reg = system_.registers.rbegin(); reg != system_.registers.rend(); ++reg) {
      const bdd variable = system_.manager.Bdd_var_by_index(reg->now);
      layer_ = system_.manager.Bdd_and(reg->initial ? variable : system_.manager.Bdd_not(variable),
                                       layer_);
    }
  }

  bdd function(Literal a) const {
    const bdd& f = functions_[node_of(a)];
    return is_negated(a) ? system_.manager.Bdd_not(f) : f;
  }

  /// Makes the variables; `nodes_` becomes all ands that are needed, ascending.
  void order_variables() {
    const Aig& aig = machine_.aig;
    functions_.resize(aig.size());
    functions_[0] = system_.manager.Bdd_zero();
    std::vector<long> latch_at(aig.size(), -1), input_at(aig.size(), -1);
    for (size_t k = 0; k < machine_.latches.size(); ++k)
      latch_at[node_of(machine_.latches[k].now)] = static_cast<long>(k);
    for (size_t k = 0; k < machine_.inputs.size(); ++k)
      input_at[node_of(machine_.inputs[k].literal)] = static_cast<long>(k);
    std::vector<bool> seen(aig.size(), false);
    std::vector<Literal> roots{machine_.bad};
    for (size_t root = 0; root < roots.size(); ++root) {
      std::vector<std::uint32_t> open{node_of(roots[root])};
      while (!open.empty()) {
        const std::uint32_t node = open.back();
        open.pop_back();
        if (seen[node]) continue;
        seen[node] = true;
        if (aig.is_and(node)) {
          nodes_.push_back(node);
          // What was made later lies deeper, and is seen first.
          open.push_back(node_of(aig.left(node)));
          open.push_back(node_of(aig.right(node)));
        } else if (latch_at[node] >= 0) {
          const size_t latch = static_cast<size_t>(latch_at[node]);
          const long now = new_variable(), next = new_variable();
          order_.push_back(latch);
          system_.registers.push_back({now, next, machine_.latches[latch].initial, bdd()});
          functions_[node] = system_.manager.Bdd_var_by_index(now);
          roots.push_back(machine_.latches[latch].next);
        } else if (input_at[node] >= 0) {
          const long index = new_variable();
          system_.inputs.push_back({static_cast<size_t>(input_at[node]), index});
          functions_[node] = system_.manager.Bdd_var_by_index(index);
        }
      }
    }
    std::sort(nodes_.begin(), nodes_.end());
  }

  long new_variable() {
    const std::string name = "v" + std::to_string(system_.manager.Nb_bdd_vars());
    return system_.manager.Index_var_by_bdd(system_.manager.New_var_last(name));
  }

  // The walk
  // ---------------------------------------------------------------------------------------

  Answer walk(const Stop& stop) {
    bddpp_manager& manager = system_.manager;
    while (layer_ != manager.Bdd_zero()) {
      if (stop()) throw Paused();
      const bdd found = manager.Bdd_and(layer_, system_.bad);
      if (found != manager.Bdd_zero()) return failing(found);
      const bdd reached = manager.Bdd_or(reached_, layer_);
      const bdd next = manager.Bdd_and((*image_)(layer_), manager.Bdd_not(reached));
      layers_.push_back(layer_);
      reached_ = reached;
      layer_ = next;
      ++done_;
      states_ = count_states(system_, reached_);
    }
    return holding();
  }

  Answer failing(bdd found) {
    bddpp_manager& manager = system_.manager;
    Answer answer{.verdict = Verdict::fails, .engine = name()};
    answer.run.assign(layers_.size() + 1, std::vector<bool>(machine_.inputs.size(), false));
    for (size_t instant = layers_.size() + 1; instant-- > 0;) {
      const std::vector<bool> values = point(found);
      for (const TransitionSystem::Input& input : system_.inputs)
        answer.run[instant][input.position] = values[static_cast<size_t>(input.index)];
      if (instant == 0) break;
      found = layers_[instant - 1];
      for (const TransitionSystem::Register& reg : system_.registers)
        found = manager.Bdd_and(
            found, values[static_cast<size_t>(reg.now)] ? reg.f : manager.Bdd_not(reg.f));
    }
    return answer;
  }

  /// An assignment under which f, not zero, holds; a variable is 0 wherever that will do.
  std::vector<bool> point(bdd f) {
    bddpp_manager& manager = system_.manager;
    std::vector<bool> values(static_cast<size_t>(manager.Nb_bdd_vars()), false);
    while (!manager.Bdd_is_tautology(f)) {
      const bdd without = manager.Bdd_else(f);
      const bool needed = without == manager.Bdd_zero();
      values[static_cast<size_t>(manager.Bdd_if_index(f))] = needed;
      f = needed ? manager.Bdd_then(f) : without;
    }
    return values;
  }

  Answer holding() const {
    Answer answer{.verdict = Verdict::holds, .engine = name()};
    Invariant& invariant = answer.invariant.emplace();
    for (size_t k = 0; k < machine_.latches.size(); ++k)
      invariant.latches.push_back(invariant.aig.variable());
    std::vector<Literal> entries(static_cast<size_t>(system_.manager.Nb_bdd_vars()), zero);
    for (size_t k = 0; k < order_.size(); ++k)
      entries[static_cast<size_t>(system_.registers[k].now)] = invariant.latches[order_[k]];
    invariant.holds = image_of(reached_, entries, invariant.aig);
    answer.how = "all " + states_ + " states seen, the last in instant " + std::to_string(done_);
    return answer;
  }

  const Machine& machine_;
  mutable TransitionSystem system_;
  std::vector<size_t> order_;         ///< the latch of each register of the system
  std::vector<std::uint32_t> nodes_;  ///< ands, ascending
  std::vector<bdd> functions_;        ///< by node, until the system is made
  std::unique_ptr<Image> image_;
  bdd reached_, layer_;
  std::vector<bdd> layers_;
  size_t done_ = 0;
  std::string states_ = "no";
  bool exhausted_ = false;
};

}  // namespace

std::unique_ptr<Engine> state_walk(const Machine& machine) {
  return std::make_unique<StateWalk>(machine);
}

}  // namespace kiva::proof
