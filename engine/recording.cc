// The past, kept small and found fast.
//
// A branch is a row of blocks of `block_length` instants. A block holds the whole state before its
// first instant and then, for each instant, the choices by which it was run, as far as they differ
// from those before. An instant is shown by running its block again up to it: instants cost
// microseconds, so that even the last of a block is there within a millisecond. Where a module asks
// a server, what it answered must not be asked again: there the record holds what the instant
// changed in the whole state, and nothing is run.
//
// Numbers are written in groups of seven bits, low ones first. A row that changed is written as its
// distance from the row before, times the number of states, plus its state: one byte in most cases.
//
// Invariants:
//  1. A record is read only against the state that stood when it was written.
//  2. A branch departs from an instant that its parent holds itself, and holds an instant, unless
//  it
//     begins at a start.

#include "engine/recording.h"

#include <algorithm>

#include "base/check.h"

namespace kiva {

namespace {

constexpr long block_length = 256;

void put_number(std::string& out, size_t number) {
  for (; number >= 128; number >>= 7) out += static_cast<char>(number | 128u);
  out += static_cast<char>(number);
}

size_t get_number(const std::string& in, size_t& at) {
  size_t number = 0;
  for (unsigned shift = 0;; shift += 7) {
    const auto byte = static_cast<unsigned char>(in[at++]);
    number |= static_cast<size_t>(byte & 127u) << shift;
    if (byte < 128) return number;
  }
}

/// Entries that differ, each in 0 .. kinds - 1. Both rows have one length.
template <class Row>
void put_changes(std::string& out, const Row& before, const Row& after, size_t kinds) {
  size_t changes = 0;
  for (size_t i = 0; i < after.size(); ++i) changes += before[i] != after[i];
  put_number(out, changes);
  size_t last = 0;
  for (size_t i = 0; i < after.size(); ++i) {
    if (before[i] == after[i]) continue;
    put_number(out, (i - last) * kinds + static_cast<size_t>(after[i]));
    last = i;
  }
}

template <class Row>
void get_changes(const std::string& in, size_t& at, Row& row, size_t kinds) {
  size_t i = 0;
  for (size_t changes = get_number(in, at); changes > 0; --changes) {
    const size_t change = get_number(in, at);
    i += change / kinds;
    row[i] = static_cast<typename Row::value_type>(change % kinds);
  }
}

using Texts = std::vector<std::string>;

void put_texts(std::string& out, const Texts& before, const Texts& after) {
  size_t changes = 0;
  for (size_t i = 0; i < after.size(); ++i) changes += before[i] != after[i];
  put_number(out, changes);
  for (size_t i = 0; i < after.size(); ++i) {
    if (before[i] == after[i]) continue;
    put_number(out, i);
    put_number(out, after[i].size());
    out += after[i];
  }
}

void get_texts(const std::string& in, size_t& at, Texts& texts) {
  for (size_t changes = get_number(in, at); changes > 0; --changes) {
    const size_t i = get_number(in, at);
    const size_t length = get_number(in, at);
    texts[i].assign(in, at, length);
    at += length;
  }
}

constexpr size_t context_kinds = 3;
constexpr size_t state_kinds = 5;

void put_choices(std::string& out, const SimulationState& before, const Choices& choices) {
  put_number(out, (choices.set ? 1u : 0u) | (choices.reset ? 2u : 0u));
  put_changes(out, before.inputs, choices.inputs, state_kinds);
  put_texts(out, before.input_texts, choices.texts);
}

void get_choices(const std::string& in, size_t& at, SimulationState& state) {
  const size_t wires = get_number(in, at);
  state.set = (wires & 1u) != 0;
  state.reset = (wires & 2u) != 0;
  get_changes(in, at, state.inputs, state_kinds);
  get_texts(in, at, state.input_texts);
}

void put_results(std::string& out, const SimulationState& before, const SimulationState& after) {
  put_changes(out, before.context, after.context, context_kinds);
  put_changes(out, before.shown_outputs, after.shown_outputs, state_kinds);
  put_changes(out, before.shown_locals, after.shown_locals, state_kinds);
  put_changes(out, before.shown_registers, after.shown_registers, state_kinds);
  put_texts(out, before.output_values, after.output_values);
}

void get_results(const std::string& in, size_t& at, SimulationState& state) {
  get_changes(in, at, state.context, context_kinds);
  get_changes(in, at, state.shown_outputs, state_kinds);
  get_changes(in, at, state.shown_locals, state_kinds);
  get_changes(in, at, state.shown_registers, state_kinds);
  get_texts(in, at, state.output_values);
}

/// A state of the same sizes in which everything is at its first kind.
SimulationState blank_of(const SimulationState& state) {
  SimulationState blank;
  blank.context.resize(state.context.size());
  blank.inputs.resize(state.inputs.size());
  blank.input_texts.resize(state.input_texts.size());
  blank.shown_outputs.resize(state.shown_outputs.size());
  blank.shown_locals.resize(state.shown_locals.size());
  blank.shown_registers.resize(state.shown_registers.size());
  blank.output_values.resize(state.output_values.size());
  return blank;
}

std::string whole_state(const SimulationState& state) {
  const SimulationState blank = blank_of(state);
  std::string out;
  put_choices(out, blank, choices_of(state));
  put_results(out, blank, state);
  out.shrink_to_fit();
  return out;
}

}  // namespace

Choices choices_of(const SimulationState& state) {
  return {state.inputs, state.input_texts, state.set, state.reset};
}

void apply(const Choices& choices, Simulation& simulation) {
  for (size_t row = 0; row < choices.inputs.size(); ++row) {
    simulation.choose_input(row, choices.inputs[row]);
    simulation.type_input(row, choices.texts[row]);
  }
  simulation.raise_set(choices.set);
  simulation.raise_reset(choices.reset);
}

struct Recording::Branch {
  struct Block {
    std::string start;    ///< the whole state before its first instant
    std::string records;  ///< of its instants
  };
  BranchInfo info;
  std::vector<Block> blocks;
};

/// The instant decoded last, and where its successor's record begins.
struct Recording::Cursor {
  Position at;  ///< an owned position
  SimulationState state;
  size_t block = 0;
  size_t next = 0;
};

Recording::Recording(Simulation* simulation)
    : simulation_(simulation),
      replay_(simulation->module()),
      keeps_results_(simulation->asks_for_data()),
      position_{0, simulation->instant()},
      cursor_(std::make_unique<Cursor>()) {
  branches_.push_back({{no_parent, position_.instant, position_.instant, false}, {}});
  branches_[0].blocks.push_back({whole_state(simulation->state()), ""});
  seek(position_);
}

Recording::~Recording() = default;

size_t Recording::branches() const {
  return branches_.size();
}

Recording::BranchInfo Recording::branch(size_t branch) const {
  return branches_[branch].info;
}

long Recording::first_instant() const {
  size_t branch = position_.branch;
  while (branches_[branch].info.parent != no_parent) branch = branches_[branch].info.parent;
  return branches_[branch].info.from;
}

long Recording::since(SignalPlace signal, Position position, long most) {
  const SignalState state = shown_state(state_at(position), signal);
  const long start = first_instant();
  // Backwards in pieces, each read forwards.
  for (long end = position.instant; end > start && position.instant - end < most;) {
    const long begin = std::max(start, end - block_length);
    SignalState before = shown_state(state_at({position.branch, begin}), signal);
    long found = -1;
    for (long instant = begin + 1; instant <= end; ++instant) {
      const SignalState now = shown_state(state_at({position.branch, instant}), signal);
      if (now == state && before != state) found = instant;
      before = now;
    }
    if (found >= 0) return found;
    end = begin;
    if (end == start) return 0;
  }
  return position.instant == start ? 0 : -1;
}

size_t Recording::memory() const {
  size_t bytes = 0;
  for (const Branch& branch : branches_)
    for (const Branch::Block& block : branch.blocks)
      bytes += sizeof block + block.start.capacity() + block.records.capacity();
  return bytes;
}

/// The same instant, named by the branch that holds it.
Recording::Position Recording::owner(Position position) const {
  while (branches_[position.branch].info.parent != no_parent &&
         position.instant <= branches_[position.branch].info.from)
    position.branch = branches_[position.branch].info.parent;
  return position;
}

bool Recording::exists(Position position) const {
  if (position.branch >= branches_.size() ||
      position.instant > branches_[position.branch].info.last)
    return false;
  position = owner(position);
  return position.instant >= branches_[position.branch].info.from;
}

void Recording::seek(Position owned) {
  const Branch& branch = branches_[owned.branch];
  const long offset = owned.instant - branch.info.from;
  // At a boundary the state before a block is the one after the block before.
  const auto block = std::min(static_cast<size_t>(offset / block_length), branch.blocks.size() - 1);
  const long block_start = branch.info.from + static_cast<long>(block) * block_length;
  Cursor& cursor = *cursor_;
  const bool ahead = cursor.at.branch == owned.branch && cursor.at.instant >= block_start &&
                     cursor.at.instant <= owned.instant && !cursor.state.context.empty();
  if (!ahead) {
    cursor.state = blank_of(simulation_->state());
    size_t at = 0;
    get_choices(branch.blocks[block].start, at, cursor.state);
    get_results(branch.blocks[block].start, at, cursor.state);
    cursor.state.instant = block_start;
    cursor.at = {owned.branch, block_start};
    cursor.block = block;
    cursor.next = 0;
  }
  while (cursor.at.instant < owned.instant) read_next();
}

void Recording::read_next() {
  Cursor& cursor = *cursor_;
  const std::vector<Branch::Block>& blocks = branches_[cursor.at.branch].blocks;
  if (cursor.next == blocks[cursor.block].records.size()) {
    ++cursor.block;
    cursor.next = 0;
  }
  const std::string& records = blocks[cursor.block].records;
  get_choices(records, cursor.next, cursor.state);
  if (keeps_results_) {
    get_results(records, cursor.next, cursor.state);
    cursor.state.set = cursor.state.reset = false;
    ++cursor.state.instant;
  } else {
    replay_.restore(cursor.state);
    replay_.step(nullptr);
    cursor.state = replay_.state();
  }
  ++cursor.at.instant;
}

const SimulationState& Recording::state_at(Position position) {
  seek(owner(position));
  return cursor_->state;
}

Choices Recording::choices_at(Position position) {
  const Position owned = owner(position);
  seek({owned.branch, owned.instant - 1});
  SimulationState state = cursor_->state;
  const std::vector<Branch::Block>& blocks = branches_[owned.branch].blocks;
  size_t block = cursor_->block, at = cursor_->next;
  if (at == blocks[block].records.size()) ++block, at = 0;
  get_choices(blocks[block].records, at, state);
  return choices_of(state);
}

bool Recording::to(Position position) {
  if (!exists(position)) return false;
  simulation_->restore(state_at(position));
  position_ = position;
  return true;
}

bool Recording::back() {
  return to({position_.branch, position_.instant - 1});
}

bool Recording::forward() {
  return to({position_.branch, position_.instant + 1});
}

/// The branch to which the next instant is appended: this one at its end, else a new one.
size_t Recording::branch_here() {
  if (position_.instant == branches_[position_.branch].info.last) return position_.branch;
  const Position from = owner(position_);
  branches_.push_back(
      {{from.branch, from.instant, from.instant, branches_[from.branch].info.initialised}, {}});
  branches_.back().blocks.push_back({whole_state(state_at(from)), ""});
  return branches_.size() - 1;
}

void Recording::append(size_t number, const SimulationState& before, const Choices& choices) {
  Branch& branch = branches_[number];
  const long offset = branch.info.last - branch.info.from;
  if (offset > 0 && offset % block_length == 0) {
    branch.blocks.back().records.shrink_to_fit();
    branch.blocks.push_back({whole_state(before), ""});
  }
  std::string record;
  put_choices(record, before, choices);
  if (keeps_results_) put_results(record, before, simulation_->state());
  branch.blocks.back().records += record;
  ++branch.info.last;
}

void Recording::go(Sock socket) {
  const Choices chosen = choices_of(simulation_->state());
  const Position here = owner(position_);
  const auto goes_on_as = [&](size_t branch) {
    const BranchInfo& info = branches_[branch].info;
    const bool departs = info.parent == here.branch && info.from == here.instant;
    return ((branch == here.branch && here.instant < info.last) || departs) &&
           choices_at({branch, here.instant + 1}) == chosen;
  };
  if (position_.instant < branches_[position_.branch].info.last || branches_.size() > 1) {
    // The branch that one is on comes first, so that going on stays on it.
    if (position_.instant < branches_[position_.branch].info.last &&
        choices_at({position_.branch, position_.instant + 1}) == chosen) {
      to({position_.branch, position_.instant + 1});
      return;
    }
    for (size_t branch = 0; branch < branches_.size(); ++branch) {
      if (!goes_on_as(branch)) continue;
      to({branch, here.instant + 1});
      return;
    }
  }
  simulation_->step(socket);
  const size_t branch = branch_here();
  // What the record is read against is the recorded state: choices made since do not stand there.
  append(branch, state_at(position_), chosen);
  position_ = {branch, position_.instant + 1};
  KIVA_CHECK(2, owner(position_) == position_);
  Cursor& cursor = *cursor_;
  cursor.at = position_;
  cursor.state = simulation_->state();
  cursor.block = branches_[branch].blocks.size() - 1;
  cursor.next = branches_[branch].blocks.back().records.size();
}

void Recording::init() {
  simulation_->initialise();
  for (size_t branch = 0; branch < branches_.size(); ++branch) {
    const BranchInfo& info = branches_[branch].info;
    if (!info.initialised || info.parent != no_parent) continue;
    position_ = {branch, 0};
    return;
  }
  branches_.push_back({{no_parent, 0, 0, true}, {}});
  branches_.back().blocks.push_back({whole_state(simulation_->state()), ""});
  position_ = {branches_.size() - 1, 0};
}

Recording::Stopped Recording::run(long instants, Sock socket, const std::function<void()>& choose,
                                  const std::function<bool(const SimulationState&)>& until,
                                  const std::atomic<bool>* stop) {
  for (long i = 0; i < instants; ++i) {
    if (stop != nullptr && stop->load(std::memory_order_relaxed)) return Stopped::asked;
    if (choose) choose();
    go(socket);
    if (until && until(simulation_->state())) return Stopped::condition;
  }
  return Stopped::done;
}

}  // namespace kiva
