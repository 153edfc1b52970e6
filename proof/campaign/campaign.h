#pragma once

#include <functional>

#include "proof/campaign/campaign_machine.h"
#include "proof/campaign/run_source.h"
#include "proof/lane_program.h"
#include "proof/reduction.h"

namespace kiva::proof {

/// Part `number` of `of`, from 0: every `of`th block of runs.
struct Shard {
  std::uint64_t number = 0, of = 1;
};

/// What runs have shown. Sums and least numbers: the order in which runs are made does not matter.
struct CampaignCounts {
  struct Failed {
    std::uint64_t runs = 0;  ///< in which it is wrong
    std::uint64_t first = 0;
    size_t instant = 0;  ///< of the first, from 1

    /// Whether the other's first run stands before this one's, and is the first now.
    bool add(const Failed& other);
  };
  std::vector<std::uint64_t> reached;  ///< runs, by goal
  std::vector<Failed> failed;          ///< by check; then the other module, then what is awaited

  void add(const CampaignCounts& other);
};

/// Makes runs of a machine, 256 or 512 at a time.
class Campaign {
 public:
  /// Calls the function for 0 to count - 1, in any order and thread.
  using ForAll = std::function<void(size_t count, const std::function<void(size_t)>&)>;

  /// Both must outlive it.
  Campaign(const CampaignMachine& question, const RunSource& source);
  enum class Width { fitting, narrow, wide };
  /// The runs of a shard. How many are made at a time does not show; `fitting` the machine and
  /// their number is fastest.
  CampaignCounts run(Shard shard, const ForAll& for_all, Width width = Width::fitting) const;

 private:
  template <class L>
  class Group;
  template <class L>
  CampaignCounts run_groups(Shard shard, std::uint64_t blocks, const ForAll& for_all) const;
  std::vector<Literal> roots() const;

  const CampaignMachine& question_;
  const RunSource& source_;
  Reduction reduction_;
  LaneProgram program_;
  std::vector<std::uint32_t>
      input_slots_;  ///< by input of the question; 0 where it does not matter
  std::vector<LaneProgram::Place> goals_, checks_, awaited_;
  LaneProgram::Place assumed_{};
};

}  // namespace kiva::proof
