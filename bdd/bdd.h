#pragma once

#include <string>

namespace kiva {

class bddpp_manager;
class bdd_node;

/// A boolean function: a node and the polarity with which it is taken. Passed by value. A handle
/// counts a reference on its node while it lives; it never frees a node. All handles into a manager
/// must be gone before the manager is destroyed.
class bdd {
 public:
  /// A handle without meaning: no manager, link 0, no node.
  bdd() = default;
  inline bdd(bddpp_manager* manager, int link_type, bdd_node* node);
  inline bdd(const bdd& other);
  inline bdd(bdd&& other) noexcept;
  inline bdd& operator=(const bdd& other);
  inline bdd& operator=(bdd&& other) noexcept;
  inline ~bdd();

  bddpp_manager* manager_ref() const { return internal_manager_ref; }
  /// +1 the function of the node, -1 its complement, 0 in a default-built handle.
  int link_type() const { return internal_link_type; }
  bdd_node* node() const { return internal_bdd_node; }
  /// False for a default-built handle.
  bool initialised() const { return internal_bdd_node != nullptr; }

  /// Classic: array(global id), behind "not " for a complement (tarn/targets/languages/vhdl.cc).
  std::string vhdl_node_name(const std::string& array) const;

  /// Same manager, link and node; inside one manager this is equality of functions.
  friend bool operator==(const bdd& f, const bdd& g) {
    return f.internal_manager_ref == g.internal_manager_ref &&
           f.internal_link_type == g.internal_link_type &&
           f.internal_bdd_node == g.internal_bdd_node;
  }

 private:
  bddpp_manager* internal_manager_ref = nullptr;
  int internal_link_type = 0;
  bdd_node* internal_bdd_node = nullptr;
};

}  // namespace kiva
