#include "programs/campaign/stimuli_folder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tarn/zu/source_map.h"

namespace kiva::campaign {

namespace fs = std::filesystem;

StimuliFolder::StimuliFolder(const std::string& folder, const Simulation& simulation,
                             proof::CampaignMachine& question)
    : inputs_(question.inputs()) {
  std::error_code error;
  std::vector<std::string> paths;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
    if (at->path().extension() == ".stimuli") paths.push_back(at->path().string());
  if (error) throw FolderError{folder, 0, "cannot be read as a folder"};
  if (paths.empty()) throw FolderError{folder, 0, "holds no file *.stimuli"};
  std::ranges::sort(paths);
  std::string hashes;
  for (const std::string& path : paths) {
    runs_.push_back(read(path, simulation, question));
    hashes += runs_.back().file + ' ' + text_hash(runs_.back().text) + '\n';
  }
  hash_ = text_hash(hashes);
}

StimuliFolder::FileRun StimuliFolder::read(const std::string& path, const Simulation& simulation,
                                           proof::CampaignMachine& question) const {
  FileRun run;
  run.file = fs::path(path).filename().string();
  std::ifstream file(path, std::ios::binary);
  if (!file) throw FolderError{path, 0, "cannot be read"};
  run.text.assign(std::istreambuf_iterator<char>(file), {});
  std::istringstream in(run.text);
  StimuliReader reader(in, simulation);
  const auto refuse = [&](const std::string& reason) {
    throw FolderError{path, reader.line(), reason};
  };
  try {
    while (const std::optional<Stimulus> stimulus = reader.next()) {
      Instant& instant = run.instants.emplace_back();
      const auto end = in.tellg();
      instant.end = end < 0 ? run.text.size() : static_cast<size_t>(end);
      for (const Stimulus::Choice& choice : stimulus->choices) {
        if (choice.state == SignalState::one)
          instant.ones.push_back(static_cast<std::uint32_t>(choice.row));
        else if (choice.state != SignalState::zero)
          refuse("in a campaign, inputs are one or zero");
      }
      if (stimulus->set && run.instants.size() > 1)
        refuse("in a campaign, !set is raised in the first instant alone");
      if (stimulus->reset)
        instant.ones.push_back(static_cast<std::uint32_t>(question.inputs() - 1));
      for (const Expectation& expectation : stimulus->expectations) {
        if (expectation.value) refuse("in a campaign, no value is awaited: " + expectation.written);
        instant.awaited.push_back(question.await(expectation));
      }
    }
  } catch (const StimuliError& error) {
    throw FolderError{path, error.line, error.reason};
  } catch (const proof::MachineError& error) {
    refuse(error.reason);
  }
  return run;
}

class StimuliFolder::Walk : public RunSource::Block {
 public:
  Walk(const StimuliFolder& of, std::uint64_t block, size_t inputs)
      : first_(of.runs_.data() + block * 64),
        count_(static_cast<unsigned>(std::min<std::uint64_t>(64, of.runs_.size() - block * 64))),
        inputs_(inputs) {}

  std::uint64_t next(std::uint64_t* words) override {
    std::fill(words, words + inputs_, 0);
    awaited_.clear();
    std::uint64_t going = 0;
    for (unsigned bit = 0; bit < count_; ++bit) {
      if (instant_ >= first_[bit].instants.size()) continue;
      const Instant& instant = first_[bit].instants[instant_];
      going |= std::uint64_t{1} << bit;
      for (std::uint32_t input : instant.ones) words[input] |= std::uint64_t{1} << bit;
      for (size_t what : instant.awaited) awaited_.push_back({bit, what});
    }
    ++instant_;
    return going;
  }
  std::span<const Awaited> awaited() const override { return awaited_; }

 private:
  const FileRun* first_;
  unsigned count_;
  size_t inputs_;
  size_t instant_ = 0;
  std::vector<Awaited> awaited_;
};

std::unique_ptr<proof::RunSource::Block> StimuliFolder::block(std::uint64_t number) const {
  return std::make_unique<Walk>(*this, number, inputs_);
}

std::string StimuliFolder::text(std::uint64_t run, size_t instant) const {
  const FileRun& of = runs_[run];
  std::string text = of.text.substr(0, of.instants[instant - 1].end);
  if (text.empty() || text.back() != '\n') text += '\n';
  return text;
}

}  // namespace kiva::campaign
