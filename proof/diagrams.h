#pragma once

#include <vector>

#include "bdd/bddpp.h"
#include "proof/aig.h"

namespace kiva::proof {

/// f as part of a graph; `entries` are the literals of its variables, by index.
Literal image_of(const bdd& f, const std::vector<Literal>& entries, Aig& aig);

}  // namespace kiva::proof
