#pragma once

#include <unordered_set>
#include <vector>

#include "tarn/targets/frame/folding.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

/// What folds away the registers that never change, and those that always hold what another holds
/// or its complement. Only registers outside `kept` are folded. The registers that stay are left in
/// `state`. Definitions stand behind what they read.
Folding fold_registers(bddpp_manager& manager, const std::vector<TargetEquation>& equations,
                       const std::unordered_set<long>& kept, std::vector<StateRail>& state);

}  // namespace kiva
