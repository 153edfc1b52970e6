#include "tests/zu_compile/meaning.h"

namespace kiva::test {

Meaning::Meaning(const Program& program) : program_(program) {
  if (program.kind != &mealy_kind) return;
  for (const MealyRegister& reg : mealy_registers)
    if (reg.initial) registers_.insert(reg.name);
}

bool Meaning::step(const std::set<std::string>& inputs, bool start_now, bool kill) {
  const State before = state_;
  std::set<std::string> given = inputs;
  given.insert(registers_.begin(), registers_.end());
  present_ = given;
  // What is emitted depends on what is present, and the other way round: go through the instant
  // until both are the same. Without circles that takes one round a signal at most.
  for (size_t round = 0; round <= 10; ++round) {
    emitted_ = given;
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
      registers_.clear();
      for (const MealyRegister& reg : mealy_registers)
        if (present_.contains(reg.next)) registers_.insert(reg.name);
      return !endless_;
    }
    present_ = emitted_;
  }
  return false;
}

}  // namespace kiva::test
