#include "tests/zu_compile/meaning.h"

#include <algorithm>

namespace kiva::test {

char Meaning::said(const std::string& signal) const {
  const bool emitted = emitted_.contains(signal);
  return denied_.contains(signal) ? (emitted ? 'T' : '0') : (emitted ? '1' : '_');
}

bool Meaning::holds(const Condition& condition) {
  const std::vector<std::string> read = condition.signals();
  contradicted_ =
      contradicted_ || std::any_of(read.begin(), read.end(), [this](const std::string& signal) {
        return both_.contains(signal);
      });
  return condition.holds(present_);
}

bool Meaning::step(const std::set<std::string>& inputs, bool start_now, bool kill) {
  const State before = state_;
  present_ = inputs;
  both_.clear();
  // What is emitted depends on what is present, and the other way round: go through the instant
  // until both are the same. Without circles that takes one round a signal at most.
  for (size_t round = 0; round <= 10; ++round) {
    emitted_ = inputs;
    events_.clear();
    looked_.clear();
    denied_.clear();
    contradicted_ = false;
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
    std::set<std::string> now = emitted_, both;
    for (const std::string& signal : denied_)
      if (now.erase(signal) != 0) both.insert(signal);
    const bool same = now == present_ && both == both_;
    both_ = both;
    if (same) {
      if (kill) state_.reset();
      return !endless_;
    }
    present_ = now;
  }
  return false;
}

}  // namespace kiva::test
