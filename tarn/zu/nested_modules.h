#pragma once

#include <algorithm>
#include <vector>

namespace kiva {

class Module;

/// One module of a chain in which each runs the next, while something is done to all of them by
/// recursion. A module that comes back in its own chain throws IllegalOperationException with the
/// names; so does a chain too long for the stack.
class NestedModule {
 public:
  using Chain = std::vector<const Module*>;

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
  explicit CompilingModule(const Module* module) : NestedModule(chain_, module) {}
  static bool under_way(const Module* module) {
    return std::find(chain_.begin(), chain_.end(), module) != chain_.end();
  }

 private:
  static inline Chain chain_;
};

/// A module that has been asked whether it could end and start again in one instant.
class AskedModule : public NestedModule {
 public:
  explicit AskedModule(const Module* module) : NestedModule(chain_, module) {}

 private:
  static inline Chain chain_;
};

}  // namespace kiva
