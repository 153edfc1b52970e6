#pragma once

#include <string>

#include "proof/engine.h"

namespace kiva::proof {

/// Writes into the folder what lets others check that nothing is ever bad: the machine, the
/// invariant
/// (`module.aag`, `invariant.aag`), the three conditions that must have no solution (`starts.cnf`,
/// `stays.cnf`, `implies.cnf`) and `check`, which asks a SAT solver for them. False with `reason`
/// where a file cannot be written.
[[nodiscard]] bool write_certificate(const Machine& machine, const Invariant& invariant,
                                     const std::string& folder, std::string& reason);

}  // namespace kiva::proof
