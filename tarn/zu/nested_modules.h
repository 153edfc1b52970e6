#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace kiva {

class Module;

/// One module of a chain in which each runs the next, while something is done to all of them by
/// recursion. A module that comes back in its own chain throws IllegalOperationException with the
/// names; so does a chain too long for the stack.
class NestedModule {
 public:
  using Chain = std::vector<const Module*>;

  /// All that is open in a session.
  struct Chains {
    Chain compiling;
    Chain asked;
    std::uintptr_t outermost_frame = 0;
    long alive = 0;  ///< in both chains, which call each other
  };
  static Chains& chains();

  NestedModule(Chain& chain, const Module* module);
  ~NestedModule();
  NestedModule(const NestedModule&) = delete;
  NestedModule& operator=(const NestedModule&) = delete;

 private:
  Chain& chain_;
};

/// A module whose compilation is under way.
class CompilingModule : public NestedModule {
 public:
  explicit CompilingModule(const Module* module) : NestedModule(chains().compiling, module) {}
  static bool under_way(const Module* module) {
    const Chain& chain = chains().compiling;
    return std::find(chain.begin(), chain.end(), module) != chain.end();
  }
};

/// A module that has been asked whether it could end and start again in one instant.
class AskedModule : public NestedModule {
 public:
  explicit AskedModule(const Module* module) : NestedModule(chains().asked, module) {}
};

}  // namespace kiva
