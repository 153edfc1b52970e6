// The pass is run once over a graph, with a variable for each entry in the place of its value. Most
// entries come out as complements of others, or as others: rails, wires, inverters. What is left
// are ands, and those are made into code (emitter.h).
//
// The code works on bytes. Pair k (entries 2k and 2k + 1, the rails of a signal) has its status at
// place k; where the value is the complement, eight pairs at a time are spread over the context
// without code of their own. Entries that are not so are copied one by one.
//
// A pair that nothing writes (an input, a register) is taken as a variable and its complement.
// Whether it is, is looked at before each run.

#include "engine/code/compiled_pass.h"

#include <cstring>

#include "engine/code/emitter.h"
#include "engine/flat_equations.h"

#if defined(KIVA_MACHINE_CODE)
#include <emmintrin.h>
#endif

namespace kiva::code {

using aig::negated;
using aig::node_of;
using aig::one;

struct CompiledPass::Machine {
  std::unique_ptr<Emitter::Program> program;
};

CompiledPass::CompiledPass() = default;
CompiledPass::~CompiledPass() = default;

namespace {
constexpr std::uint32_t block_pairs = 8;
}

/// The entries before the pass, as variables.
struct CompiledPass::Sources {
  Aig aig;
  std::vector<bool> written;
  std::vector<bool> read;  ///< before it is written
  std::vector<Literal> entries;

  Sources(const FlatEquations& equations, size_t variables)
      : written(equations.written(variables)), read(equations.read_first(variables)) {
    for (std::uint32_t index = 0; index < variables; ++index) {
      if (index % 2 == 1 && !written[index] && !written[index - 1]) {
        entries.push_back(negated(entries.back()));
        continue;
      }
      entries.push_back(aig.variable());
    }
  }
  bool is_pair(std::uint32_t status) const {
    return status + 1 < written.size() && !written[status] && !written[status + 1];
  }
};

/// Where each entry's bit stands.
struct CompiledPass::Layout {
  const Sources& before;
  const std::vector<Literal>& after;
  CompiledPass& pass;
  std::vector<Emitter::Store> stores = {};
  std::vector<std::uint32_t> slot_of = {};  ///< by variable node
  std::vector<bool> regular = {};           ///< by pair

  std::uint32_t pairs() const { return static_cast<std::uint32_t>(after.size() / 2); }
  std::uint32_t new_slot() {
    pass.slots_.push_back(0);
    return static_cast<std::uint32_t>(pass.slots_.size() - 1);
  }
  void put(Literal literal, std::uint32_t slot) {
    if (node_of(literal) == 0)
      pass.slots_[slot] = literal == one ? 1 : 0;
    else
      stores.push_back({literal, slot});
  }

  void lay() {
    pass.slots_.assign(pairs(), 0);
    regular.assign(pairs(), false);
    for (std::uint32_t k = 0; k < pairs(); ++k)
      regular[k] = before.written[2 * k] && before.written[2 * k + 1] &&
                   after[2 * k + 1] == negated(after[2 * k]);
    read_sources();
    lay_blocks();
    for (std::uint32_t k = 0; k < pairs(); ++k)
      if (before.written[2 * k] && in_regular_block(k)) put(after[2 * k], k);
  }
  bool in_regular_block(std::uint32_t pair) const { return block_regular[pair / block_pairs]; }

  /// All that is read, also where the graph has lost it: what is unknown there shows in the tables.
  void read_sources() {
    slot_of.assign(before.aig.size(), 0);
    for (std::uint32_t index = 0; index < before.read.size(); ++index) {
      if (!before.read[index]) continue;
      const std::uint32_t status = index & ~1U;
      if (!before.is_pair(status)) {
        slot_of[node_of(before.entries[index])] = new_slot();
        pass.singles_.push_back({index, slot_of[node_of(before.entries[index])]});
      } else if (!regular[status / 2]) {
        regular[status / 2] = true;
        slot_of[node_of(before.entries[status])] = status / 2;
        pass.pairs_.push_back({status, status / 2});
      }
    }
  }

  std::vector<bool> block_regular = {};
  void lay_blocks() {
    const std::uint32_t blocks = (pairs() + block_pairs) / block_pairs;
    for (std::uint32_t block = 0; block < blocks; ++block) {
      const std::uint32_t first = block * block_pairs;
      bool all = first + block_pairs <= pairs();
      for (std::uint32_t k = first; all && k < first + block_pairs; ++k) all = regular[k];
      block_regular.push_back(all);
      if (all && !pass.regular_.empty() && pass.regular_.back().end == block)
        pass.regular_.back().end = block + 1;
      else if (all)
        pass.regular_.push_back({block, block + 1});
    }
    for (std::uint32_t index = 0; index < after.size(); ++index) {
      if (!before.written[index] || in_regular_block(index / 2)) continue;
      pass.irregular_.push_back({index, new_slot()});
      put(after[index], pass.irregular_.back().slot);
    }
  }
};

bool CompiledPass::possible() {
#if defined(KIVA_MACHINE_CODE)
  return true;
#else
  return false;
#endif
}

std::unique_ptr<CompiledPass> CompiledPass::make(const FlatEquations& equations, size_t variables) {
  Sources before(equations, variables);
  std::vector<Literal> after = before.entries;
  if (!equations.trace(before.aig, after)) return nullptr;
  std::unique_ptr<CompiledPass> pass(new CompiledPass);
  Layout layout{before, after, *pass};
  layout.lay();
  pass->machine_ = std::make_unique<Machine>();
  std::uint32_t slots = 0;
  pass->machine_->program = Emitter::emit(before.aig, layout.stores, layout.slot_of,
                                          static_cast<std::uint32_t>(pass->slots_.size()), slots);
  if (pass->machine_->program == nullptr) return nullptr;
  pass->slots_.resize(slots);
  return pass;
}

namespace {

/// Status bytes become entries, each with its complement behind it.
inline void spread(const std::uint8_t* statuses, int* entries) {
#if defined(KIVA_MACHINE_CODE)
  const __m128i none = _mm_setzero_si128();
  const __m128i status = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(statuses));
  const __m128i rails = _mm_unpacklo_epi8(status, _mm_xor_si128(status, _mm_set1_epi8(1)));
  const __m128i low = _mm_unpacklo_epi8(rails, none), high = _mm_unpackhi_epi8(rails, none);
  auto* out = reinterpret_cast<__m128i*>(entries);
  _mm_storeu_si128(out, _mm_unpacklo_epi16(low, none));
  _mm_storeu_si128(out + 1, _mm_unpackhi_epi16(low, none));
  _mm_storeu_si128(out + 2, _mm_unpacklo_epi16(high, none));
  _mm_storeu_si128(out + 3, _mm_unpackhi_epi16(high, none));
#else
  for (std::uint32_t k = 0; k < block_pairs; ++k) {
    entries[2 * k] = statuses[k];
    entries[2 * k + 1] = statuses[k] ^ 1;
  }
#endif
}

}  // namespace

bool CompiledPass::run(int* context) {
  std::uint8_t* slots = slots_.data();
  int wrong = 0;
  for (const Pair& pair : pairs_) {
    const int status = context[pair.status];
    slots[pair.slot] = static_cast<std::uint8_t>(status);
    wrong |= (status ^ context[pair.status + 1]) ^ 1;  // 2 is no complement of any
  }
  for (const Single& single : singles_) {
    slots[single.slot] = static_cast<std::uint8_t>(context[single.index]);
    wrong |= context[single.index] & ~1;
  }
  if (wrong != 0) return false;
  machine_->program->run(slots);
  for (const Stretch& stretch : regular_)
    for (std::uint32_t block = stretch.begin; block < stretch.end; ++block)
      spread(slots + block * block_pairs, context + 2 * block * block_pairs);
  for (const Single& entry : irregular_) context[entry.index] = slots[entry.slot];
  return true;
}

}  // namespace kiva::code
