// The equations are run once over a graph, as compiled_pass.cc does, but with variables only where
// choices and registers stand. If the pass reads anything else before it has written it, a run over
// its outcome alone would miss that, and there is none.

#include "engine/code/resident_run.h"

#include <algorithm>
#include <cstring>

#include "engine/flat_equations.h"

namespace kiva::code {

using aig::negated;
using aig::node_of;
using aig::one;

class ResidentRun::Maker {
 public:
  Maker(const FlatEquations& equations, size_t variables, ResidentRun& run)
      : run_(run),
        written_(equations.written(variables)),
        known_(variables, false),
        entries_(variables, aig::zero),
        read_(equations.read_first(variables)) {}

  /// False where the frame's rails are not such as `ResidentRun` keeps.
  bool lay(const FlatEquations& equations, const Frame& frame) {
    if (!frame.choices.rowless.empty()) return false;
    for (const RegisterRails& rails : frame.registers)
      if (!source(rails.actual, run_.registers_)) return false;
    std::vector<std::uint32_t> wires;
    for (const SignalRails& rails : frame.choices.inputs)
      if (!source(rails, run_.input_rails_)) return false;
    if (!source(frame.choices.set, wires) || !source(frame.choices.reset, wires)) return false;
    run_.set_rail_ = wires[0];
    run_.reset_rail_ = wires[1];
    for (size_t index = 0; index < read_.size(); ++index)
      if (read_[index] && !known_[index]) return false;
    return equations.trace(aig_, entries_) && lay_slots(frame);
  }

  bool emit() {
    std::uint32_t used = 0;
    run_.program_ = Emitter::emit(aig_, stores_, slot_of_,
                                  static_cast<std::uint32_t>(run_.slots_.size()), used);
    run_.slots_.resize(used);
    return run_.program_ != nullptr;
  }

 private:
  /// A pair that is given before the pass, as a variable and its complement. What the pass makes of
  /// it, the value of an input most often, is a function like any other.
  bool source(SignalRails rails, std::vector<std::uint32_t>& list) {
    const auto status = static_cast<size_t>(rails.status_index);
    if (rails.value_index != rails.status_index + 1 || known_[status]) return false;
    known_[status] = known_[status + 1] = true;
    entries_[status] = aig_.variable();
    entries_[status + 1] = negated(entries_[status]);
    sources_.push_back(node_of(entries_[status]));
    list.push_back(static_cast<std::uint32_t>(status));
    return true;
  }
  bool is_written(SignalRails rails) const {
    return written_[static_cast<size_t>(rails.status_index)] &&
           written_[static_cast<size_t>(rails.value_index)];
  }
  aig::Literal after(long index) const { return entries_[static_cast<size_t>(index)]; }

  bool lay_slots(const Frame& frame) {
    run_.slots_.assign(run_.outputs() + 2 * frame.outputs.size(), 0);
    slot_of_.assign(aig_.size(), 0);
    for (std::uint32_t k = 0; k < sources_.size(); ++k)
      slot_of_[sources_[k]] = k < run_.becomes() ? k : k + run_.becomes();
    std::uint32_t slot = run_.becomes();
    for (const RegisterRails& rails : frame.registers) {
      if (!is_written(rails.next) ||
          after(rails.next.value_index) != negated(after(rails.next.status_index)))
        return false;
      put(after(rails.next.status_index), slot++);
    }
    slot = run_.outputs();
    for (const SignalRails& rails : frame.outputs) {
      if (!is_written(rails)) return false;
      put(after(rails.status_index), slot++);
      put(after(rails.value_index), slot++);
    }
    return true;
  }
  void put(aig::Literal literal, std::uint32_t slot) {
    if (node_of(literal) == 0)
      run_.slots_[slot] = literal == one ? 1 : 0;
    else
      stores_.push_back({literal, slot});
  }

  ResidentRun& run_;
  aig::Aig aig_;
  std::vector<bool> written_, known_;
  std::vector<aig::Literal> entries_;
  std::vector<bool> read_;
  std::vector<std::uint32_t> sources_;  ///< nodes: registers, inputs, set, reset
  std::vector<std::uint32_t> slot_of_;  ///< by node
  std::vector<Emitter::Store> stores_;
};

std::unique_ptr<ResidentRun> ResidentRun::make(const FlatEquations& equations, size_t variables,
                                               const Frame& frame) {
  if (!CompiledPass::possible()) return nullptr;
  std::unique_ptr<ResidentRun> run(new ResidentRun);
  Maker maker(equations, variables, *run);
  if (!maker.lay(equations, frame) || !maker.emit()) return nullptr;
  return run;
}

bool ResidentRun::enter(const int* context) {
  for (const std::uint32_t status : registers_)
    if ((context[status] ^ context[status + 1]) != 1) return false;  // 2 is no complement of any
  for (std::uint32_t k = 0; k < registers_.size(); ++k)
    slots_[k] = static_cast<std::uint8_t>(context[registers_[k]]);
  moved_ = true;
  return true;
}

bool ResidentRun::step(bool set_raised, bool reset_raised, std::span<const SignalState> states) {
  static_assert(static_cast<int>(SignalState::one) == 0 &&
                static_cast<int>(SignalState::zero) == 1);
  std::uint8_t all = 0;
  for (const SignalState state : states) all |= static_cast<std::uint8_t>(state);
  if (all > 1) return false;
  if (!moved_) std::memcpy(slots_.data(), slots_.data() + becomes(), becomes());
  moved_ = false;
  std::uint8_t* out = slots_.data() + inputs();
  for (size_t row = 0; row < states.size(); ++row)
    out[row] = static_cast<std::uint8_t>(states[row]) ^ 1U;
  slots_[set()] = set_raised ? 1 : 0;
  slots_[reset()] = reset_raised ? 1 : 0;
  program_->run(slots_.data());
  return true;
}

SignalState ResidentRun::output(size_t row) const {
  const std::uint8_t* pair = slots_.data() + outputs() + 2 * row;
  return state_of(pair[0], pair[1]);
}

void ResidentRun::leave(int* context) const {
  const auto put = [&](std::uint32_t status, std::uint32_t slot) {
    context[status] = slots_[slot];
    context[status + 1] = slots_[slot] ^ 1;
  };
  for (std::uint32_t k = 0; k < registers_.size(); ++k) put(registers_[k], k);
  for (std::uint32_t k = 0; k < input_rails_.size(); ++k) put(input_rails_[k], inputs() + k);
  put(set_rail_, set());
  put(reset_rail_, reset());
}

bool ResidentRun::agrees(const int* context) const {
  for (std::uint32_t k = 0; k < registers_.size(); ++k)
    if (context[registers_[k]] != slots_[becomes() + k]) return false;
  return true;
}

}  // namespace kiva::code
