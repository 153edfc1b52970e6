#include "engine/code/later_pass.h"

#include <exception>

#include "engine/flat_equations.h"

namespace kiva::code {

bool LaterPass::make(const FlatEquations& equations, size_t variables) {
  begun_ = true;
  if (maker_.joinable()) maker_.join();
  if (pass_ == nullptr) pass_ = CompiledPass::make(equations, variables);
  ready_.store(pass_.get(), std::memory_order_release);
  return pass_ != nullptr;
}

void LaterPass::count(const FlatEquations& equations, size_t variables) {
  run_ += static_cast<std::uint64_t>(equations.equations());
  if (begun_ || run_ < enough) return;
  begun_ = true;
  try {
    maker_ = std::jthread([this, &equations, variables] {
      try {
        pass_ = CompiledPass::make(equations, variables);
        ready_.store(pass_.get(), std::memory_order_release);
      } catch (const std::exception&) {
        // The tables do.
      }
    });
  } catch (const std::exception&) {
    // No thread: the tables do.
  }
}

}  // namespace kiva::code
