// One short product that implies a function: the way down to one that ends soonest at each node,
// or else goes to the child with the smaller support.

#include <iostream>

#include "base/process_end.h"
#include "bdd/internals.h"
#include "bdd/literal_list.h"

namespace kiva {

bdd bddpp_manager::Bdd_one_implicant(const bdd& f) {
  if (f.manager_ref() != this || f.node() == nullptr) {
    std::cerr << "ERROR in bddpp_manager::Bdd_one_implicant():\n   bdd : " << f
              << ", is not allocated or associated with a bad BDD manager...\n";
    end_process();
  }
  if (Bdd_is_tautology(f)) return f;
  literal_list literals;
  for (bdd rest = f; !Bdd_is_tautology(rest);) {
    const bdd then_side = Bdd_then(rest), else_side = Bdd_else(rest);
    bool to_then;
    if (Bdd_is_tautology(then_side)) {
      to_then = Bdd_is_one_tautologic(then_side) != 0;
    } else if (Bdd_is_tautology(else_side)) {
      to_then = Bdd_is_zero_tautologic(else_side) != 0;
    } else {
      to_then = set_of_id_depend_on(then_side).size() <= set_of_id_depend_on(else_side).size();
    }
    literals.push_back(literal_code(Bdd_if_index(rest), to_then ? 1 : 0));
    rest = to_then ? then_side : else_side;
  }
  return product_of(*this, literals);
}

}  // namespace kiva
