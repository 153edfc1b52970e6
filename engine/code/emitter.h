#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/aig.h"

namespace kiva::code {

using aig::Aig;
using aig::Literal;

/// Machine code of a graph: reads the bytes of its variables, writes those of some literals.
class Emitter {
 public:
  struct Store {
    Literal literal;
    std::uint32_t slot;
  };
  /// A program that works over an array of bytes; it lives as long as this.
  class Program {
   public:
    virtual ~Program() = default;
    void run(std::uint8_t* slots) const { call_(slots); }

   protected:
    void (*call_)(std::uint8_t*) = nullptr;
  };

  /// `slot_of` gives the slot of each variable node. No literal may be constant. Slots from
  /// `free_slot` on are taken for what has no register; `slots_used` gets the number of all. Null
  /// where no code can be made.
  static std::unique_ptr<Program> emit(const Aig& aig, const std::vector<Store>& stores,
                                       const std::vector<std::uint32_t>& slot_of,
                                       std::uint32_t free_slot, std::uint32_t& slots_used);
};

}  // namespace kiva::code
