#pragma once

#include <functional>
#include <utility>

namespace kiva {

/// While one lives, long operators over diagrams call `check` now and then in this thread; what it
/// throws leaves the operator, whose manager stays good. One at a time in a thread.
class WorkGuard {
 public:
  explicit WorkGuard(std::function<void()> check) : check_(std::move(check)) { current_ = this; }
  ~WorkGuard() { current_ = nullptr; }
  WorkGuard(const WorkGuard&) = delete;
  WorkGuard& operator=(const WorkGuard&) = delete;

  static void call() {
    if (current_ != nullptr) current_->check_();
  }

 private:
  std::function<void()> check_;
  static inline thread_local WorkGuard* current_ = nullptr;
};

}  // namespace kiva
