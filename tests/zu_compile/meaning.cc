#include "tests/zu_compile/meaning.h"

namespace kiva::test {

bool Meaning::step(const std::set<std::string>& inputs, bool start_now, bool kill) {
  const State before = state_;
  present_ = inputs;
  // What is emitted depends on what is present, and the other way round: go through the instant
  // until both are the same. Without circles that takes one round a signal at most.
  for (size_t round = 0; round <= 10; ++round) {
    emitted_ = inputs;
    events_.clear();
    looked_.clear();
    refused_ = false;
    endless_ = false;
    ended_ = false;
    state_.reset();
    if (before) {
      state_ = resume(program_, *before);
      ended_ = !state_;
    } else if (start_now) {
      state_ = start(program_);
      ended_ = !state_ && !refused_;
    }
    if (emitted_ == present_) {
      if (kill) state_.reset();
      return !endless_;
    }
    present_ = emitted_;
  }
  return false;
}

}  // namespace kiva::test
