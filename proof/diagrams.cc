#include "proof/diagrams.h"

#include <unordered_map>

#include "base/graph_walk.h"

namespace kiva::proof {

Literal image_of(const bdd& f, const std::vector<Literal>& entries, Aig& aig) {
  std::unordered_map<const bdd_node*, Literal> images;
  const auto known = [&](const bdd_node* node) {
    return node->var_index() < 0 || images.contains(node);
  };
  const auto of = [&](const bdd_node* node, int link) {
    return negated_if(node->var_index() < 0 ? one : images.at(node), link != 1);
  };
  const auto children = [](const bdd_node* node, auto ask) {
    ask(node->else_node());
    ask(node->then_node());
  };
  walk_from_below<const bdd_node*>(f.node(), known, children, [&](const bdd_node* node) {
    images[node] =
        aig.choice(entries[static_cast<size_t>(node->var_index())], of(node->then_node(), 1),
                   of(node->else_node(), node->else_link_type()));
  });
  return of(f.node(), f.link_type());
}

}  // namespace kiva::proof
