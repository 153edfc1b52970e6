// A variable is settled once its definition has been seen, and definitions stand behind what they
// read: so one table of folded nodes serves all of them.

#include "tarn/targets/frame/folding.h"

#include "base/graph_walk.h"

namespace kiva {

bdd Folding::folded(const bdd& f) {
  bddpp_manager& m = manager_;
  const auto positive = [&m](bdd_node* node) { return bdd(&m, 1, node); };
  const auto is_done = [&](bdd_node* node) {
    return node == m.Bdd_node_one() || done_.contains(node);
  };
  const auto image = [&](bdd_node* node, int link) {
    const bdd g = node == m.Bdd_node_one() ? positive(node) : done_.at(node);
    return link == 1 ? g : m.Bdd_not(g);
  };
  walk_from_below(
      f.node(), is_done,
      [&](bdd_node* node, auto ask) {
        ask(node->then_node());
        ask(node->else_node());
      },
      [&](bdd_node* node) {
        const bdd test = variable(node->var_index());
        done_.emplace(node, m.Bdd_ite(test, image(node->then_node(), 1),
                                      image(node->else_node(), node->else_link_type())));
      });
  return image(f.node(), f.link_type());
}

bdd Folding::variable(long index) const {
  const auto known = known_.find(index);
  return known == known_.end() ? manager_.Bdd_var_by_index(index) : known->second;
}

bdd Folding::define(long index, const bdd& f) {
  const bdd g = folded(f);
  if (manager_.Bdd_is_tautology(g) || g.node()->is_var(manager_.Bdd_node_one())) {
    known_.emplace(index, g);
    return g;
  }
  const auto [at, is_new] =
      first_.try_emplace(g.node(), g.link_type(), manager_.Bdd_var_by_index(index));
  if (is_new) return g;
  const bdd same =
      at->second.first == g.link_type() ? at->second.second : manager_.Bdd_not(at->second.second);
  known_.emplace(index, same);
  return same;
}

}  // namespace kiva
