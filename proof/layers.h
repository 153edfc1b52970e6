#pragma once

#include <functional>
#include <memory>

#include "proof/engine.h"
#include "proof/image.h"

namespace kiva::proof {

/// The reachable states of a machine in layers, by their distance from the start.
class Layers {
 public:
  /// As many states are told apart as `roots` and `allowed` depend on: only instants count in which
  /// `allowed` holds. The machine must outlive it.
  Layers(const Machine& machine, std::vector<Literal> roots, Literal allowed = one);

  /// Does work with these diagrams until it ends, or is stopped, or they grow too large: then
  /// false, and what was being made is lost.
  bool until(const Stop& stop, const std::function<void()>& work);
  bool too_large() const { return too_large_; }

  // Within `until`
  /// Makes the diagrams; goes on where it paused. The first layer is the start.
  void make(const Stop& stop);
  bool made() const { return image_ != nullptr; }
  /// Finds the next layer, which may be empty.
  void go_on();

  TransitionSystem& system() { return system_; }
  const TransitionSystem& system() const { return system_; }
  bddpp_manager& manager() { return system_.manager; }
  /// The newest one, over `now` variables.
  const bdd& layer() const { return layer_; }
  bool complete() const { return layer_ == system_.manager.Bdd_zero(); }
  /// What all layers before the newest hold.
  const bdd& reached() const { return reached_; }
  /// How many stand before the newest.
  size_t done() const { return layers_.size(); }
  const bdd& layer(size_t number) const { return layers_[number]; }
  /// A root by its number; what is allowed stands behind them.
  const bdd& root(size_t number) const { return system_.roots[number]; }
  const bdd& allowed() const { return system_.roots.back(); }
  /// The latch of each register of the system.
  const std::vector<size_t>& latches() const { return order_; }
  /// A run to an instant that begins in a state of the numbered layer, with inputs as well, that
  /// are in `found`, which is not empty.
  Run run_to(bdd found, size_t number);

 private:
  long nodes() const { return system_.manager.Bdd_kept_size(); }
  void order_variables();
  bdd function(Literal a) const;
  long new_variable();
  std::vector<bool> point(bdd f);

  const Machine& machine_;
  std::vector<Literal> roots_;
  mutable TransitionSystem system_;
  std::vector<size_t> order_;
  std::vector<std::uint32_t> nodes_;  ///< ands, ascending
  std::vector<bdd> functions_;        ///< by node, until the system is made
  std::unique_ptr<Image> image_;
  bdd reached_, layer_;
  std::vector<bdd> layers_;
  bool too_large_ = false;
};

}  // namespace kiva::proof
