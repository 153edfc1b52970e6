#include <ostream>

#include "base/list.h"
#include "pert_exp/wood.h"

namespace kiva {

std::ostream& operator<<(std::ostream& out, const Bddexpressionwood& wood) {
  out << "wood of " << wood.exp_number() << " equations over " << wood.Nb_bdd_vars()
      << " variables:\n";
  for (long index : wood.Set_of_exp()) {
    const Bddexpression& e = *wood.exp_by_index(index);
    std::list<std::string> names;
    for (long dep : e.set_of_var_dependances()) {
      const bool known = dep >= 0 && dep < wood.Nb_bdd_vars();
      names.push_back(known ? wood.Name_var_by_index(dep) : std::to_string(dep));
    }
    out << "  " << index << ": " << e.my_bddname() << " reads " << names;
    if (e.getAbstraction() != 0) out << ", abstract: \"" << e.my_exp_def() << '"';
    out << ", early " << e.getEarlyDate() << ", late " << e.getLateDate() << '\n';
  }
  return out;
}

}  // namespace kiva
