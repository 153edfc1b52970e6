// Nodes come depth first, so that most are read while they are still in the register that they were
// made in; a register is kept until others need it. A register may
// hold a node's complement: where both operands come complemented, the node is the complement of
// the or of what is held, and no instruction is spent on it. What is read again after its register
// was taken has a byte in memory: one that is stored anyway, or one of its own.
//
// Invariants:
//  1. A node that is used again is in a register or in memory.
//  2. A register stands for the node that says so (`in_register_`), and no other.

#include "engine/code/emitter.h"

#ifdef KIVA_MACHINE_CODE

#include <asmjit/x86.h>

#include "base/check.h"
#include "base/graph_walk.h"

namespace kiva::code {

using aig::is_negated;
using aig::node_of;

namespace {

namespace x86 = asmjit::x86;

class JitProgram : public Emitter::Program {
 public:
  ~JitProgram() override {
    if (call_ != nullptr) runtime.release(call_);
  }
  /// False where the memory may not be made executable.
  bool add(asmjit::CodeHolder& code) {
    return runtime.add(&call_, &code) == asmjit::kErrorOk && call_ != nullptr;
  }
  asmjit::JitRuntime runtime;
};

class Writer {
 public:
  Writer(asmjit::CodeHolder& code, const Aig& aig, const std::vector<Emitter::Store>& stores,
         const std::vector<std::uint32_t>& slot_of, std::uint32_t free_slot)
      : a_(&code), aig_(aig), free_slot_(free_slot), places_(aig.size()), first_(aig.size(), none) {
    std::vector<Literal> roots;
    next_.reserve(stores.size());
    for (const Emitter::Store& store : stores) {
      roots.push_back(store.literal);
      const std::uint32_t node = node_of(store.literal);
      next_.push_back(first_[node]);
      first_[node] = static_cast<std::uint32_t>(next_.size() - 1);
    }
    stores_ = &stores;
    put_in_order(roots);
    for (std::uint32_t node : cone_) {
      if (aig.is_and(node)) {
        ++places_[node_of(aig.left(node))].uses;
        ++places_[node_of(aig.right(node))].uses;
      } else if (node != 0) {
        places_[node].slot = slot_of[node];
      }
    }
  }

  void write() {
    for (const x86::Gp& saved : {x86::rbx, x86::rbp, x86::r12, x86::r13, x86::r14, x86::r15})
      a_.push(saved);
    for (std::uint32_t node : cone_) {
      if (node == 0) continue;
      if (aig_.is_and(node)) compute(node);
      if (first_[node] != none) store(node);
      if (places_[node].uses == 0) forget(node);
    }
    for (const x86::Gp& saved : {x86::r15, x86::r14, x86::r13, x86::r12, x86::rbp, x86::rbx})
      a_.pop(saved);
    a_.ret();
  }
  std::uint32_t slots_used() const { return free_slot_; }

 private:
  /// What the roots need, each behind what it needs itself.
  void put_in_order(const std::vector<Literal>& roots) {
    std::vector<bool> placed(aig_.size(), false);
    const auto is_placed = [&](std::uint32_t node) { return placed[node]; };
    const auto needs = [&](std::uint32_t node, auto ask) {
      if (!aig_.is_and(node)) return;
      ask(node_of(aig_.left(node)));
      ask(node_of(aig_.right(node)));
    };
    for (const Literal root : roots)
      walk_from_below<std::uint32_t>(node_of(root), is_placed, needs, [&](std::uint32_t node) {
        placed[node] = true;
        cone_.push_back(node);
      });
  }

  static constexpr std::uint32_t none = ~std::uint32_t{0};
  static constexpr int no_register = -1;
  static constexpr int registers = 13;
  struct Place {
    std::uint32_t uses = 0;
    std::uint32_t slot = none;  ///< in memory
    bool slot_negated = false;
    std::int8_t reg = no_register;
    bool reg_negated = false;
  };

  /// All but the stack's, the array's, and the scratch register.
  static x86::Gp wide(int reg) {
    static const x86::Gp all[registers] = {x86::eax,  x86::ecx,  x86::edx, x86::esi, x86::r8d,
                                           x86::r9d,  x86::r10d, x86::ebx, x86::ebp, x86::r12d,
                                           x86::r13d, x86::r14d, x86::r15d};
    return all[reg];
  }
  static x86::Gp scratch() { return x86::r11d; }
  static x86::Mem byte_of(std::uint32_t slot) {
    return x86::byte_ptr(x86::rdi, static_cast<std::int32_t>(slot));
  }

  void forget(std::uint32_t node) {
    Place& place = places_[node];
    if (place.reg != no_register) in_register_[place.reg] = 0;
    place.reg = no_register;
  }

  /// A register that nobody holds; not one of the two.
  int take(int kept, int also_kept) {
    int chosen = no_register;
    for (int reg = 0; reg < registers; ++reg) {
      if (reg == kept || reg == also_kept) continue;
      if (in_register_[reg] == 0) {
        chosen = reg;
        break;
      }
      if (chosen == no_register || touched_[reg] < touched_[chosen]) chosen = reg;
    }
    if (const std::uint32_t node = in_register_[chosen]; node != 0) {
      Place& place = places_[node];
      if (place.uses > 0 && place.slot == none) {
        place.slot = free_slot_++;
        place.slot_negated = place.reg_negated;
        a_.mov(byte_of(place.slot), wide(chosen).r8());
      }
      forget(node);
    }
    return chosen;
  }
  void hold(std::uint32_t node, int reg, bool negated) {
    in_register_[reg] = node;
    places_[node].reg = static_cast<std::int8_t>(reg);
    places_[node].reg_negated = negated;
    touched_[reg] = ++clock_;
  }

  void load(std::uint32_t node, int kept) {
    Place& place = places_[node];
    if (place.reg != no_register) return;
    KIVA_CHECK(1, place.slot != none);
    const int reg = take(kept, no_register);
    a_.movzx(wide(reg), byte_of(place.slot));
    hold(node, reg, place.slot_negated);
  }
  /// Whether the literal comes complemented as its node is held.
  bool comes_negated(Literal literal) const {
    const Place& place = places_[node_of(literal)];
    return is_negated(literal) !=
           (place.reg != no_register ? place.reg_negated : place.slot_negated);
  }

  void compute(std::uint32_t node) {
    Literal first = aig_.left(node), second = aig_.right(node);
    if (places_[node_of(first)].reg == no_register) std::swap(first, second);
    load(node_of(first), places_[node_of(second)].reg);
    if (comes_negated(second) && !comes_negated(first)) {
      std::swap(first, second);
      load(node_of(first), places_[node_of(second)].reg);
    }
    const bool invert = comes_negated(first) && !comes_negated(second);
    const bool either = comes_negated(first) && comes_negated(second);
    Place& from = places_[node_of(first)];
    Place& with = places_[node_of(second)];
    KIVA_CHECK(2, in_register_[from.reg] == node_of(first));
    touched_[from.reg] = ++clock_;
    --from.uses;
    --with.uses;
    int reg = from.reg;
    if (from.uses > 0) {
      reg = take(from.reg, with.reg);
      a_.mov(wide(reg), wide(from.reg));
    } else {
      forget(node_of(first));
    }
    if (invert) a_.xor_(wide(reg), 1);
    if (with.reg != no_register)
      either ? a_.or_(wide(reg), wide(with.reg)) : a_.and_(wide(reg), wide(with.reg));
    else
      either ? a_.or_(wide(reg).r8(), byte_of(with.slot))
             : a_.and_(wide(reg).r8(), byte_of(with.slot));
    if (with.uses == 0) forget(node_of(second));
    hold(node, reg, either);
  }

  void store(std::uint32_t node) {
    load(node, no_register);
    Place& place = places_[node];
    bool scratch_is_ready = false;
    for (std::uint32_t at = first_[node]; at != none; at = next_[at]) {
      const auto& [literal, slot] = (*stores_)[at];
      const bool negated = is_negated(literal) != place.reg_negated;
      if (negated && !scratch_is_ready) {
        a_.mov(scratch(), wide(place.reg));
        a_.xor_(scratch(), 1);
        scratch_is_ready = true;
      }
      a_.mov(byte_of(slot), negated ? scratch().r8() : wide(place.reg).r8());
      if (place.slot == none) {
        place.slot = slot;
        place.slot_negated = is_negated(literal);
      }
    }
  }

  x86::Assembler a_;
  const Aig& aig_;
  const std::vector<Emitter::Store>* stores_ = nullptr;
  std::uint32_t free_slot_;
  std::vector<Place> places_;
  std::vector<std::uint32_t> first_, next_;  ///< stores of a node, chained
  std::vector<std::uint32_t> cone_;
  std::uint32_t in_register_[registers] = {};
  std::uint64_t touched_[registers] = {}, clock_ = 0;
};

}  // namespace

std::unique_ptr<Emitter::Program> Emitter::emit(const Aig& aig, const std::vector<Store>& stores,
                                                const std::vector<std::uint32_t>& slot_of,
                                                std::uint32_t free_slot,
                                                std::uint32_t& slots_used) {
  auto program = std::make_unique<JitProgram>();
  asmjit::CodeHolder code;
  if (code.init(program->runtime.environment()) != asmjit::kErrorOk) return nullptr;
  Writer writer(code, aig, stores, slot_of, free_slot);
  writer.write();
  slots_used = writer.slots_used();
  if (!program->add(code)) return nullptr;
  return program;
}

}  // namespace kiva::code

#else

namespace kiva::code {

std::unique_ptr<Emitter::Program> Emitter::emit(const Aig&, const std::vector<Store>&,
                                                const std::vector<std::uint32_t>&, std::uint32_t,
                                                std::uint32_t&) {
  return nullptr;
}

}  // namespace kiva::code

#endif
