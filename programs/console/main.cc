// The simulator without a window: a module and stimuli in, a trace out.

#include <algorithm>
#include <csignal>
#include <iostream>

#include "base/whole_file.h"
#include "programs/console/debug_adapter.h"
#include "programs/console/run.h"
#include "programs/report.h"
#include "programs/reporter.h"
#include "programs/told_text.h"
#include "tarn/session/session.h"
#include "tarn/session/session_files.h"

namespace {

using namespace kiva;

int run_to_file(const console::Options& options) {
  WholeFile file(options.output);
  if (!file.opened()) return console::refuse(options.output, 0, "cannot be written");
  const console::Ended ended = console::run(options, file.out());
  if (ended.whole && !file.finish()) return console::refuse(options.output, 0, "cannot be written");
  return ended.status;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a peer that goes away is an ordinary failure
  return programs::run_reported(console::program, [&] {
    console::Options options;
    const int ended = console::read_options(argc, argv, options);
    if (ended >= 0) return ended;
    // --update and --coverage-file say themselves that they write onto what they read.
    const std::vector<std::string> read{options.module, options.stimuli, options.expect};
    for (const std::string& written : {options.output, options.save_stimuli})
      if (programs::overwrites(console::program, written, read)) return programs::unusable;
    programs::TraceFile log(console::program, options.log, read);
    if (!log.good()) return programs::unusable;
    const programs::ToldText told(options.verbose);
    programs::Reporter reporter(console::program);
    const programs::ProgramSession session(&reporter);
    SessionFiles::current().trace = log.stream();
    if (options.debugger) return console::serve_debugger();
    const int status =
        options.output.empty() ? console::run(options, std::cout).status : run_to_file(options);
    return log.finish() ? status : std::max(status, programs::unusable);
  });
}
