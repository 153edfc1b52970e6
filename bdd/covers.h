#pragma once

// What the levels of Bdd_sop share. Products are ordinary bdds of the manager.

#include <vector>

#include "bdd/bddpp.h"

namespace kiva {

/// The disjoint products of f, the then side first; ends the process at the limit of products.
std::vector<bdd> disjoint_cover(bddpp_manager& manager, const bdd& f);
/// Products of f that are prime, none of them redundant. The list has one place for each disjoint
/// product of f; the places behind the cover hold zero. `count` is the size of the cover.
std::vector<bdd> expanded_cover(bddpp_manager& manager, const bdd& f, int& count);
/// The essential primes and those others that complete them.
std::vector<bdd> prime_cover(bddpp_manager& manager, const bdd& f);

/// At i the or of products[i] and all behind it; at the end, one place further, zero.
std::vector<bdd> ors_from_behind(bddpp_manager& manager, const std::vector<bdd>& products);

}  // namespace kiva
