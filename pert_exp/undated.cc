#include "pert_exp/undated.h"

#include "pert_exp/wood.h"

namespace kiva {

void forget_dates(Bddexpressionwood& wood) {
  for (long index = 0; index < wood.Nb_bdd_vars(); ++index) {
    wood.setLateDate(wood.Bdd_var_by_index(index), 0);
    if (wood.Set_of_exp().contains(index)) wood.exp_by_index(index)->setEarlyDate(0);
  }
  wood.update_nb_level(0);
}

}  // namespace kiva
