#pragma once

#include <optional>
#include <set>
#include <vector>

#include "bdd/bddpp.h"

namespace kiva {

class Bddexpression;
class Bddexpressionwood;
class Module;
class Signal;

// What nobody watches in a finalised module: further occurrences, locals of instances, and with
// Compilation::StripFlag() those that the user declared. Each has both its equations, or none and
// no name.

/// Is there someone to watch a local?
bool is_watched(const Signal* local);
std::set<const Signal*> register_variables(const Module* module);

/// The pairs of rails that nobody watches. While they are protected, a rail that turns constant
/// keeps its equation.
class PassingLocals {
 public:
  /// They are protected from here on.
  PassingLocals(Module* module, Bddexpressionwood* wood);
  /// All but constants are not, until `protect`: wires among them may go.
  void may_be_inlined();
  void protect();
  /// Puts each rail into its readers where they do not grow by it, with Compilation::StripFlag()
  /// also where they stay small. A pair that is still read stays
  /// whole: gives the indices to keep. All others go.
  std::vector<long> pass_on();

 private:
  struct Rail {
    long index;
    int type, protected_type;  ///< of its equation: as it was, and one that is protected
  };
  struct Pair {
    Rail status, value;
  };
  template <class See>
  void for_each_rail(See see);
  std::optional<bdd> inline_rail(const Rail& rail);
  bool is_small(const Bddexpression& e, long index) const;

  Bddexpressionwood* wood_;
  std::vector<Pair> pairs_;
};

/// Takes what has neither equations nor readers from the list of locals; the wires that stay have
/// both rails.
void forget_silent_locals(Module* module, Bddexpressionwood* wood);

}  // namespace kiva
