#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>

#include "engine/code/compiled_pass.h"

namespace kiva::code {

/// Machine code of equations that are run again and again. It is made beside the runs, in a thread
/// of its own, once enough has been run: what runs for a moment only, and the first instants of
/// all, never wait for it.
class LaterPass {
 public:
  LaterPass() = default;
  LaterPass(const LaterPass&) = delete;
  LaterPass& operator=(const LaterPass&) = delete;

  /// False where nothing has been done, and the tables shall.
  bool run(const FlatEquations& equations, size_t variables, int* context) {
    CompiledPass* pass = ready_.load(std::memory_order_acquire);
    if (pass != nullptr) return pass->run(context);
    count(equations, variables);
    return false;
  }
  /// Makes it now; false where there is none.
  bool make(const FlatEquations& equations, size_t variables);

 private:
  /// Equations run by tables, a few hundredths of a second.
  static constexpr std::uint64_t enough = 20'000'000;
  void count(const FlatEquations& equations, size_t variables);

  std::uint64_t run_ = 0;
  bool begun_ = false;
  std::unique_ptr<CompiledPass> pass_;
  std::atomic<CompiledPass*> ready_{nullptr};
  std::jthread maker_;  ///< ends before what it writes to
};

}  // namespace kiva::code
