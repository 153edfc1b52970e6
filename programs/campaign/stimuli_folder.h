#pragma once

#include <string>
#include <vector>

#include "proof/campaign/campaign_machine.h"
#include "proof/campaign/run_source.h"

namespace kiva::campaign {

/// A file that cannot be used as runs of a campaign.
struct FolderError {
  std::string file;
  long line;  ///< 0 for none
  std::string reason;
};

/// The runs of the files DIR/*.stimuli, by name. Inputs are One or Zero; the machine's last input
/// is the reset wire.
class StimuliFolder : public proof::RunSource {
 public:
  /// Takes what the files await into the question. Throws FolderError.
  StimuliFolder(const std::string& folder, const Simulation& simulation,
                proof::CampaignMachine& question);

  std::uint64_t runs() const override { return runs_.size(); }
  std::unique_ptr<Block> block(std::uint64_t number) const override;

  /// Of a run, without the folder.
  const std::string& file(std::uint64_t run) const { return runs_[run].file; }
  /// Changes with any file.
  const std::string& hash() const { return hash_; }
  /// The text of a run up to that instant, from 1.
  std::string text(std::uint64_t run, size_t instant) const;

 private:
  class Walk;
  struct Instant {
    std::vector<std::uint32_t> ones;  ///< inputs
    std::vector<size_t> awaited;
    size_t end;  ///< of its line in the text
  };
  struct FileRun {
    std::string file, text;
    std::vector<Instant> instants;
  };
  FileRun read(const std::string& path, const Simulation& simulation,
               proof::CampaignMachine& question) const;

  std::vector<FileRun> runs_;
  std::string hash_;
  size_t inputs_;
};

}  // namespace kiva::campaign
