#include "pert_exp/table_capacity.h"

#include <iostream>

#include "base/process_end.h"

namespace kiva {

long doubled_capacity(long capacity, long count, const std::string& who) {
  constexpr long largest_that_doubles = 536870911;
  while (capacity < count) {
    if (capacity > largest_that_doubles) {
      std::cerr << "in " << who << ": Nb bdd vars reached!\nprogram aborted ...\n";
      end_process(1);
    }
    capacity *= 2;
  }
  return capacity;
}

}  // namespace kiva
