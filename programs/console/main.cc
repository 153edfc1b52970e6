// The simulator without a window: a module and stimuli in, a trace out.

#include <csignal>
#include <filesystem>
#include <iostream>

#include "base/whole_file.h"
#include "programs/console/run.h"
#include "programs/report.h"
#include "tarn/session/session.h"

namespace {

using namespace kiva;

int run_to_file(const console::Options& options) {
  for (const std::string& read : {options.module, options.stimuli}) {
    std::error_code none;
    if (std::filesystem::equivalent(options.output, read, none))
      return console::refuse(options.output, 0, "is read here, and would be overwritten");
  }
  WholeFile file(options.output);
  if (!file.opened()) return console::refuse(options.output, 0, "cannot be written");
  const console::Ended ended = console::run(options, file.out());
  if (ended.whole && !file.finish()) return console::refuse(options.output, 0, "cannot be written");
  return ended.status;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a peer that goes away is an ordinary failure
  console::Options options;
  const int ended = console::read_options(argc, argv, options);
  if (ended >= 0) return ended;
  return programs::run_reported(console::program, [&] {
    const programs::ProgramSession session;
    // What the engine tells on the standard output must not meet the trace there.
    Session::current().set_told_text(std::cerr);
    return options.output.empty() ? console::run(options, std::cout).status : run_to_file(options);
  });
}
