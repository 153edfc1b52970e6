#pragma once

#include <functional>
#include <utility>

#include "bdd/bddpp.h"

namespace kiva {

/// While one lives, long operators over diagrams call `check` now and then in this thread; what it
/// throws leaves the operator, whose manager stays good. An inner one is called beside those around
/// it.
class WorkGuard {
 public:
  explicit WorkGuard(std::function<void()> check) : check_(std::move(check)), outer_(current_) {
    current_ = this;
  }
  ~WorkGuard() { current_ = outer_; }
  WorkGuard(const WorkGuard&) = delete;
  WorkGuard& operator=(const WorkGuard&) = delete;

  /// For loops around operators, too.
  static void call() {
    for (const WorkGuard* guard = current_; guard != nullptr; guard = guard->outer_)
      guard->check_();
  }

 private:
  std::function<void()> check_;
  WorkGuard* outer_;
  static inline thread_local WorkGuard* current_ = nullptr;
};

/// More nodes or steps than were allowed.
struct BoundPassed {};

/// While one lives, BoundPassed is thrown soon after the manager has made so many more nodes.
class NodeLimit {
 public:
  NodeLimit(const bddpp_manager& manager, long most_nodes)
      : guard_([&manager, last = manager.Bdd_total_size() + most_nodes] {
          if (manager.Bdd_total_size() > last) throw BoundPassed{};
        }) {}

 private:
  WorkGuard guard_;
};

}  // namespace kiva
