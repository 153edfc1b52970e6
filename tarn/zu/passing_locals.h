#pragma once

#include <set>
#include <vector>

namespace kiva {

class Bddexpressionwood;
class Module;
class Signal;

// What nobody watches in a finalised module: further occurrences, locals of instances, and with
// Compilation::StripFlag() those that the user declared. Each has both its equations, or none and
// no name.

/// Is there someone to watch a local?
bool is_watched(const Signal* local);
std::set<const Signal*> register_variables(const Module* module);

/// The pairs of rails that nobody watches, while constants spread: a rail that turns constant keeps
/// its equation.
class PassingLocals {
 public:
  PassingLocals(Module* module, Bddexpressionwood* wood);
  /// To be called once constants have spread.
  void may_be_inlined();
  /// Puts each rail into its readers where they do not grow by it. A pair that is still read stays
  /// whole: gives the indices to keep. All others go.
  std::vector<long> pass_on();

 private:
  struct Rail {
    long index;
    int type;  ///< of its equation, as it was
  };
  struct Pair {
    Rail status, value;
  };
  template <class See>
  void for_each_rail(See see);

  Bddexpressionwood* wood_;
  std::vector<Pair> pairs_;
};

/// Takes what has neither equations nor readers from the list of locals; the wires that stay have
/// both rails.
void forget_silent_locals(Module* module, Bddexpressionwood* wood);

}  // namespace kiva
