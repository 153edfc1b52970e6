// Many runs of a module: what must be, what is reached.

#include <csignal>

#include "programs/campaign/run.h"
#include "programs/report.h"
#include "programs/reporter.h"
#include "programs/told_text.h"

int main(int argc, char** argv) {
  using namespace kiva;
  std::signal(SIGPIPE, SIG_IGN);  // a reader that goes away is an ordinary failure
  return programs::run_reported(campaign::program, [&] {
    campaign::Options options;
    const int ended = campaign::read_options(argc, argv, options);
    if (ended >= 0) return ended;
    std::vector<std::string> read = options.merged;
    for (const std::string* file : {&options.module, &options.against}) read.push_back(*file);
    if (programs::overwrites(campaign::program, options.output, read)) return programs::unusable;
    const programs::ToldText told(options.verbose);
    programs::Reporter reporter(campaign::program);
    const programs::ProgramSession session(&reporter);
    return campaign::run(options);
  });
}
