#pragma once

#include <iosfwd>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "engine/coverage.h"
#include "proof/campaign/campaign.h"

namespace kiva::campaign {

/// What a campaign, or a shard of one, has shown. As text it is JSON without times or names of
/// folders: equal campaigns give equal texts.
struct Result {
  /// What must be, and whether it was.
  struct Check {
    std::string name;  ///< "never-1"
    std::string text;  ///< the expression, or the other module
    proof::CampaignCounts::Failed failed;
    std::string stimuli;  ///< of the first run that failed, shortened
    std::string file;     ///< that it came from; empty for a random run
  };
  nlohmann::ordered_json asked;  ///< the campaign: module, options
  proof::Shard shard;
  bool has_map = false;
  std::vector<Check> checks;
  SeenSignals signals;   ///< how many runs have shown each
  ReachedGoals reached;  ///< in how many runs

  std::string text() const;
  /// Nothing where the text is no result.
  static std::optional<Result> read(const std::string& text);

  bool failed() const;
  /// For a person: what failed, and with `coverage` what was reached.
  void print(std::ostream& out, bool coverage) const;
};

/// Results that cannot be added up: of different campaigns, or not all of one.
struct MergeError {
  size_t file;  ///< place among them; how many there are for all of them
  std::string reason;
};
/// What one machine would have given. Throws MergeError.
Result merged(const std::vector<Result>& shards);

}  // namespace kiva::campaign
