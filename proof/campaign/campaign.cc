// Blocks of 64 runs are taken four or eight at a time, each a word of the lanes. Which of them
// stand together does not show: a run depends on nothing but its own inputs.

#include "proof/campaign/campaign.h"

#include <algorithm>
#include <bit>
#include <mutex>

namespace kiva::proof {

bool CampaignCounts::Failed::add(const Failed& other) {
  const bool earlier = other.runs > 0 && (runs == 0 || other.first < first);
  if (earlier) {
    first = other.first;
    instant = other.instant;
  }
  runs += other.runs;
  return earlier;
}

void CampaignCounts::add(const CampaignCounts& other) {
  for (size_t goal = 0; goal < reached.size(); ++goal) reached[goal] += other.reached[goal];
  for (size_t check = 0; check < failed.size(); ++check) failed[check].add(other.failed[check]);
}

std::vector<Literal> Campaign::roots() const {
  std::vector<Literal> roots;
  for (const CampaignMachine::Goal& goal : question_.goals()) roots.push_back(goal.reached);
  for (const CampaignMachine::Check& check : question_.checks()) roots.push_back(check.wrong);
  roots.push_back(question_.differs());
  for (Literal literal : question_.awaited()) roots.push_back(literal);
  roots.push_back(question_.assumed());
  return roots;
}

Campaign::Campaign(const CampaignMachine& question, const RunSource& source)
    : question_(question),
      source_(source),
      reduction_(question.machine(), roots()),
      program_(reduction_.machine()),
      input_slots_(question.inputs(), 0) {
  const Machine& machine = reduction_.machine();
  for (size_t input = 0; input < machine.inputs.size(); ++input)
    input_slots_[reduction_.input_of(input)] =
        static_cast<std::uint32_t>(program_.input_slot(input));
  std::vector<LaneProgram::Place> places;
  for (Literal root : reduction_.roots()) places.push_back(program_.place(root));
  const auto goals = static_cast<std::ptrdiff_t>(question.goals().size());
  const auto checks = static_cast<std::ptrdiff_t>(question.checks().size()) + 1;
  goals_.assign(places.begin(), places.begin() + goals);
  checks_.assign(places.begin() + goals, places.begin() + goals + checks);
  awaited_.assign(places.begin() + goals + checks, places.end() - 1);
  assumed_ = places.back();
}

/// Up to a block for each word of the lanes.
template <class L>
class Campaign::Group {
 public:
  Group(const Campaign& campaign, const std::vector<std::uint64_t>& blocks)
      : c_(campaign),
        blocks_(blocks),
        slots_(campaign.program_.template start<L>()),
        words_(campaign.input_slots_.size()),
        seen_(campaign.goals_.size()),
        failed_(campaign.checks_.size() + 1) {
    for (size_t goal = 0; goal < seen_.size(); ++goal) open_goals_.push_back(goal);
    places_ = campaign.goals_;
    counts_.reached.resize(seen_.size());
    counts_.failed.resize(failed_.size());
    for (std::uint64_t block : blocks) walks_.push_back(campaign.source_.block(block));
  }

  CampaignCounts run() {
    for (size_t instant = 1; next_inputs(); ++instant) {
      c_.program_.look(slots_);
      open_ = open_.and_with(LaneProgram::read(slots_, c_.assumed_));
      LaneProgram::see(places_, slots_, open_, seen_);
      if (instant % 16 == 0) drop_full_goals();
      for (size_t check = 0; check < c_.checks_.size(); ++check)
        fail(check, LaneProgram::read(slots_, c_.checks_[check]), instant);
      hold_awaited(instant);
      c_.program_.move(slots_);
    }
    for (size_t at = 0; at < seen_.size(); ++at)
      counts_.reached[open_goals_[at]] = seen_[at].count();
    return counts_;
  }

 private:
  /// Writes the inputs of the instant; false where no run goes on.
  bool next_inputs() {
    for (size_t word = 0; word < walks_.size(); ++word) {
      if (open_.word[word] == 0) continue;
      open_.word[word] &= walks_[word]->next(words_.data());
      for (size_t input = 0; input < words_.size(); ++input)
        if (c_.input_slots_[input] != 0) slots_[c_.input_slots_[input]].word[word] = words_[input];
    }
    for (size_t word = walks_.size(); word < L::words; ++word) open_.word[word] = 0;
    return open_.any();
  }

  void fail(size_t check, const L& wrong, size_t instant) {
    const L now = wrong.and_with(open_).and_not(failed_[check]);
    if (!now.any()) return;
    for (size_t word = 0; word < walks_.size(); ++word) {
      if (now.word[word] == 0) continue;
      counts_.failed[check].add(
          {static_cast<std::uint64_t>(std::popcount(now.word[word])),
           blocks_[word] * 64 + static_cast<std::uint64_t>(std::countr_zero(now.word[word])),
           instant});
      failed_[check].word[word] |= now.word[word];
    }
  }

  void hold_awaited(size_t instant) {
    L unmet;
    for (size_t word = 0; word < walks_.size(); ++word) {
      if (open_.word[word] == 0) continue;
      for (const RunSource::Awaited& awaited : walks_[word]->awaited()) {
        const L met = LaneProgram::read(slots_, c_.awaited_[awaited.what]);
        if (!met.has(word * 64 + awaited.bit)) unmet.set(word * 64 + awaited.bit);
      }
    }
    fail(c_.checks_.size(), unmet, instant);
  }

  /// A goal that all runs have reached is not looked at any more.
  void drop_full_goals() {
    size_t kept = 0;
    for (size_t at = 0; at < seen_.size(); ++at) {
      if (seen_[at] == L::all()) {
        counts_.reached[open_goals_[at]] = L::runs;
        continue;
      }
      seen_[kept] = seen_[at];
      places_[kept] = places_[at];
      open_goals_[kept++] = open_goals_[at];
    }
    seen_.resize(kept);
    places_.resize(kept);
    open_goals_.resize(kept);
  }

  const Campaign& c_;
  const std::vector<std::uint64_t>& blocks_;
  std::vector<std::unique_ptr<RunSource::Block>> walks_;
  LaneProgram::SlotsOf<L> slots_;
  std::vector<std::uint64_t> words_;
  L open_ = L::all();
  std::vector<L> seen_;
  std::vector<LaneProgram::Place> places_;  ///< of the goals that are looked at
  std::vector<size_t> open_goals_;
  std::vector<L> failed_;
  CampaignCounts counts_;
};

CampaignCounts Campaign::run(Shard shard, const ForAll& for_all, Width width) const {
  const std::uint64_t all = source_.blocks();
  const std::uint64_t mine = all <= shard.number ? 0 : (all - shard.number - 1) / shard.of + 1;
  constexpr std::uint64_t enough = 64;  // that all threads have some
  const bool wide = width == Width::wide || (width == Width::fitting && mine >= enough &&
                                             LaneProgram::has_wide_registers());
  return wide ? run_groups<WideLanes>(shard, mine, for_all)
              : run_groups<Lanes>(shard, mine, for_all);
}

template <class L>
CampaignCounts Campaign::run_groups(Shard shard, std::uint64_t blocks,
                                    const ForAll& for_all) const {
  CampaignCounts sum;
  sum.reached.resize(goals_.size());
  sum.failed.resize(checks_.size() + 1);
  std::mutex adding;
  for_all((blocks + L::words - 1) / L::words, [&](size_t group) {
    std::vector<std::uint64_t> own;
    for (std::uint64_t k = group * L::words; k < std::min(blocks, (group + 1) * L::words); ++k)
      own.push_back(shard.number + k * shard.of);
    const CampaignCounts counts = Group<L>(*this, own).run();
    const std::lock_guard lock(adding);
    sum.add(counts);
  });
  return sum;
}

}  // namespace kiva::proof
