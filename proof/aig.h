#pragma once

// Graphs as the engines of proofs call them.

#include "engine/code/aig.h"

namespace kiva::proof {

using code::Aig;
using code::copy_nodes;
using code::image_of;
using code::is_negated;
using code::Literal;
using code::negated;
using code::negated_if;
using code::node_of;
using code::one;
using code::zero;

}  // namespace kiva::proof
