// Builds the diagrams of a file. Lines may refer forward, so nothing is built before the first
// equation asks; and they may refer to themselves or nowhere, so the walk keeps its path on a stack
// of its own and marks each line open while its children are under way: meeting an open line again
// is a cycle.

#include "tarn/zuc/zuc_nodes.h"
#include "tarn/session/diagnostic.h"

namespace kiva {

void parsed_nodes_table::enter(long node_id, const parsed_nodes_class& node) {
  if (parsed_nodes_class* known = find(node_id)) {
    *known = node;
    return;
  }
  const size_t position = nodes_.size();
  nodes_.push_back(node);
  if (node_id == static_cast<long>(position)) return;
  sparse_[node_id] = position;
  sparse_.emplace(static_cast<long>(position), SIZE_MAX);  // the position itself is no number yet
}

parsed_nodes_class* parsed_nodes_table::find(long node_id) {
  if (!sparse_.empty()) {
    auto at = sparse_.find(node_id);
    if (at != sparse_.end()) return at->second == SIZE_MAX ? nullptr : &nodes_[at->second];
  }
  if (node_id < 0 || node_id >= static_cast<long>(nodes_.size())) return nullptr;
  return &nodes_[node_id];
}

bool parsed_nodes_table::check(bddpp_manager* manager, long node_id, const parsed_nodes_class& node,
                               std::string& problem) {
  const std::string which = "node " + std::to_string(node_id) + ": ";
  if (node.var_id() < -1 || node.var_id() >= manager->Nb_bdd_vars()) {
    problem = which + "variable number " + std::to_string(node.var_id()) +
              " is outside the names of the file";
    return false;
  }
  if (node.var_id() >= 0 && node.else_link_type() != 1 && node.else_link_type() != -1) {
    problem = which + "else link " + std::to_string(node.else_link_type()) + " is neither 1 nor -1";
    return false;
  }
  return true;
}

bdd parsed_nodes_table::choice_of(bddpp_manager* manager, const parsed_nodes_class& node) {
  const bdd then_bdd(manager, 1, find(node.then_id())->internal_bdd_node);
  const bdd else_bdd(manager, static_cast<int>(node.else_link_type()),
                     find(node.else_id())->internal_bdd_node);
  return manager->Bdd_ite(manager->Bdd_var_by_index(node.var_id()), then_bdd, else_bdd);
}

bdd_node* parsed_nodes_table::build(bddpp_manager* manager, long node_id, std::string& problem,
                                    int& line) {
  using Progress = parsed_nodes_class::Progress;
  line = 0;
  parsed_nodes_class* root = find(node_id);
  if (root == nullptr) {
    problem = "node number " + std::to_string(node_id) + " has no line";
    return nullptr;
  }
  if (root->progress_ == Progress::done) return root->internal_bdd_node;

  std::vector<long> path{node_id};
  while (!path.empty()) {
    const long id = path.back();
    parsed_nodes_class& node = *find(id);
    if (node.progress_ == Progress::untouched) {
      line = node.line();
      if (!check(manager, id, node, problem)) return nullptr;
      if (node.var_id() == -1) {
        node.internal_bdd_node = manager->Bdd_node_one();
        node.progress_ = Progress::done;
        path.pop_back();
        continue;
      }
      node.progress_ = Progress::open;
    }
    bool waits = false;
    for (long child_id : {node.then_id(), node.else_id()}) {
      parsed_nodes_class* child = find(child_id);
      line = node.line();
      if (child == nullptr) {
        problem = "node " + std::to_string(id) + ": child number " + std::to_string(child_id) +
                  " has no line";
        return nullptr;
      }
      if (child->progress_ == Progress::done) continue;
      if (child->progress_ == Progress::open) {
        problem = "node " + std::to_string(id) + " reaches itself through node " +
                  std::to_string(child_id);
        return nullptr;
      }
      path.push_back(child_id);
      waits = true;
      break;
    }
    if (waits) continue;

    const bdd built = choice_of(manager, node);
    if (built.link_type() != 1) {
      end_with("internal error in parsed_nodes_class::build()");
    }
    built.node()->inc_nbrefs();
    node.internal_bdd_node = built.node();
    node.progress_ = Progress::done;
    path.pop_back();
  }
  line = 0;
  return root->internal_bdd_node;
}

}  // namespace kiva
