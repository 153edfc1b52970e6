#pragma once

// Invariants are numbered in prose at the head of the file that keeps them, and checked where they
// could break. Builds with KIVA_CHECKS (debug, asan, tsan) test them; others leave no trace.

namespace kiva {

/// Says "FILE: invariant N broken: CONDITION" on the error stream and aborts.
[[noreturn]] void invariant_broken(const char* file, int number, const char* condition);

}  // namespace kiva

#ifdef KIVA_CHECKS
#define KIVA_CHECK(number, ...) \
  ((__VA_ARGS__) ? void() : ::kiva::invariant_broken(__FILE__, number, #__VA_ARGS__))
#else
#define KIVA_CHECK(number, ...) void()
#endif
