#pragma once

#include <functional>

#include "pert_exp/wood.h"

namespace kiva {

/// f with each variable that the wood computes replaced by its function, down to those that it does
/// not compute: without equation, with an abstract one, or where `stops` says so. Follows the early
/// dates, so that each equation in the cone is expanded once.
bdd unfolded(const Bddexpressionwood& wood, const bdd& f, const std::function<bool(long)>& stops);

}  // namespace kiva
