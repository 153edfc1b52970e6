#pragma once

#include <string>
#include <vector>

#include "programs/run_options.h"
#include "proof/campaign/campaign.h"

namespace kiva::campaign {

inline constexpr const char* program = "kiva-campaign";

struct Options {
  std::string module;
  std::uint64_t runs = 0;
  long instants = 100;
  programs::RandomOptions drawn;
  std::string stimuli;  ///< folder, in place of random runs

  std::vector<proof::Property> properties;
  std::string against;

  proof::Shard shard;
  std::vector<std::string> merged;  ///< results to be added up, in place of runs
  int threads = 0;                  ///< 0 for one a core

  std::string output;        ///< of the results; empty for the standard output
  std::string folder = ".";  ///< for failing runs
  bool coverage = false;
  bool verbose = false;
};

/// Reads the command line; -1 to go on, else the status with which the program ends.
int read_options(int argc, char** argv, Options& options);

/// K/N, "auto" or "auto/N". Throws std::invalid_argument.
proof::Shard read_shard(const std::string& text);

}  // namespace kiva::campaign
