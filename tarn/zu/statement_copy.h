#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tarn/session/session.h"
#include "tarn/zu/statement.h"

namespace kiva {

/// One copy of a tree, which names what it copies in one way all the way down. A copy shares
/// expressions and signals with its original; its wires and registers are its own, made when it
/// compiles.
class Copying {
 public:
  /// Of a loop's body: "_bis" behind each name.
  explicit Copying(const Module* module) : module_(module), behind_("_bis") {}
  /// Of `repeat`: the number behind each name.
  explicit Copying(int number) : behind_(std::to_string(number)) {}

  /// The module that a loop's body is copied for; null for `repeat`.
  const Module* module() const { return module_; }
  std::string name(const Statement& original) const { return original.getName() + behind_; }
  /// The copy itself: of the same class and place, made of its name and the arguments.
  template <class T, class... Args>
  T* make(const T& original, Args&&... args) const {
    return make_named(original, name(original), std::forward<Args>(args)...);
  }
  template <class T, class... Args>
  T* make_named(const T& original, const std::string& name, Args&&... args) const {
    T* copy = make_kept<T>(name, std::forward<Args>(args)...);
    copy->setModule(original.getModule());
    copy->stand_like(original);
    return copy;
  }
  /// The copy of a part; null for null.
  Statement* part(const Statement* original) const {
    return original == nullptr ? nullptr : original->copy(*this);
  }
  std::vector<Statement*> parts(const std::vector<Statement*>& originals) const {
    std::vector<Statement*> copies;
    copies.reserve(originals.size());
    for (const Statement* original : originals) copies.push_back(part(original));
    return copies;
  }

 private:
  const Module* module_ = nullptr;
  std::string behind_;
};

}  // namespace kiva
