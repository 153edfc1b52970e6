#include "programs/tarn/check_targets.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>

#include "base/read_all.h"
#include "base/translation.h"
#include "engine/bench_stimuli.h"
#include "engine/random_choices.h"
#include "programs/tarn/translate.h"
#include "programs/told_text.h"
#include "tarn/model/compilation.h"
#include "tarn/model/fault_under_way.h"

namespace kiva::tarn_program {

namespace {

namespace fs = std::filesystem;

constexpr int instants = 100;
constexpr std::uint64_t seed = 1;

/// A folder of its own, which goes with it.
class Folder {
 public:
  Folder() : path_((fs::temp_directory_path() / "tarn_check_XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) path_.clear();
  }
  ~Folder() {
    std::error_code error;
    if (!path_.empty()) fs::remove_all(path_, error);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

struct Answer {
  int status;
  std::string out;
};

/// What a command of the shell prints, and its exit status.
Answer run(const std::string& command, const std::string& folder) {
  const std::string file = folder + "/.out";
  const int status =
      std::system(("cd '" + folder + "' && { " + command + "; } >.out 2>.err </dev/null").c_str());
  std::ifstream in(file);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : different, read_all(in)};
}

std::string first_line(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

/// One row of the table.
struct Row {
  std::string tool, agreed;
  bool good = true;
};

class TargetsCheck {
 public:
  explicit TargetsCheck(Module* module) : module_(module), stimuli_(module) {
    RandomChoices random(stimuli_.simulation(), seed);
    for (int instant = 0; instant < instants; ++instant) {
      random.choose(stimuli_.simulation());
      stimuli_.add();
    }
  }

  /// Prints the rows; whether all that ran agree.
  bool run_all() {
    std::cout << std::left << std::setw(width) << translated("target") << std::setw(tool_width)
              << translated("tool and version") << translated("instants  agreed") << '\n';
    bool good = true;
    for (const Target& target : targets()) {
      if (target.bench == nullptr) continue;
      const Row row = check(target);
      good = good && row.good;
      std::cout << std::left << std::setw(width) << target.option << std::setw(tool_width)
                << row.tool.substr(0, tool_width - 2) << std::right << std::setw(8)
                << (row.agreed == "yes" ? instants : 0) << "  " << translated(row.agreed)
                << std::endl;
    }
    return good;
  }

 private:
  static constexpr int width = 14, tool_width = 48;

  Row check(const Target& target) {
    const Folder folder;
    if (folder.path().empty()) return {"", "no: no folder can be made", false};
    const Answer tool = run(target.bench->tool, folder.path());
    if (tool.status != 0 || tool.out.empty()) return {"", "not installed"};
    Row row{first_line(tool.out), "yes"};
    if (target.finalised_only && module_->getFinalised() == 0) {
      row.agreed = "the module is not finalised";
      return row;
    }
    Module::OutputDir() = folder.path();
    try {
      print_target(target, module_);
      const BenchFile bench = print_bench(target, module_, stimuli_.instants());
      const Answer answer = run(bench.run, folder.path());
      row.good = answer.status == 0 &&
                 answer.out.ends_with(std::to_string(instants) + " instants agree\n");
      if (!row.good)
        row.agreed = "no: " + (answer.out.empty() ? "the tool refuses it" : first_line(answer.out));
    } catch (...) {
      row = {row.tool, "refused: " + fault_under_way().sentence};
    }
    return row;
  }

  Module* module_;
  BenchStimuli stimuli_;
};

}  // namespace

int check_targets(Options& options, Messages& messages) {
  const std::string& file = options.files.front();
  const programs::ProgramSession session(&messages);
  const std::vector<Module*> modules = load_modules(file, options, messages);
  if (modules.empty()) return unusable;
  Compilation::target_rules().untold = true;
  Module::OutputFile().clear();
  int status = 0;
  for (Module* module : modules) {
    if (module->getDataTable() != nullptr && !module->getDataTable()->empty())
      return fail({file, 0, 0, 0, 0}, "has values, which your own functions give; use --bench"),
             incomparable;
    if (modules.size() > 1) std::cout << module->getName() << ":\n";
    if (!TargetsCheck(module).run_all()) status = different;
  }
  return status;
}

}  // namespace kiva::tarn_program
