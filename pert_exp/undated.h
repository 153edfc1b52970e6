#pragma once

namespace kiva {

class Bddexpressionwood;

/// Takes all dates away, as if the wood had never been dated.
void forget_dates(Bddexpressionwood& wood);

}  // namespace kiva
