// The simulator without a window: a module and stimuli in, a trace out.

#include <CLI/CLI.hpp>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "base/sock.h"
#include "base/whole_file.h"
#include "engine/simulation.h"
#include "engine/stimuli.h"
#include "engine/trace.h"
#include "programs/report.h"
#include "programs/reporter.h"
#include "programs/told_text.h"
#include "tarn/model/compilation.h"
#include "tarn/session/session.h"
#include "tarn/zuc/zuc_reader.h"

namespace {

using kiva::programs::complain;
using kiva::programs::unusable;

constexpr const char* program = "kiva-console";

int refuse(const std::string& file, int line, const std::string& reason) {
  complain(program, {file, line, 0, line, 0}, reason);
  return unusable;
}

struct Options {
  std::string module;
  std::string stimuli = "-";
  std::string format = "text";
  std::string output;
  std::pair<std::string, std::string> server;  ///< host and port; empty for none
  bool verbose = false;                        ///< show what the library tells its own callers
};

/// A connection to the evaluation server, closed with the run.
struct CloseConnection {
  void operator()(kiva::Sock socket) const { kiva::SOCK_shutdown(socket, 1); }
};
using Connection = std::unique_ptr<kiva::socket_type, CloseConnection>;

int run(const Options& options, std::ostream& out) {
  using namespace kiva;
  const ZucRead read =
      read_zuc_file(options.module, Compilation::EmptyString, Compilation::EmptyString);
  if (read.module == nullptr) return refuse(read.where.file, read.where.line, read.reason);
  std::ifstream file;
  if (options.stimuli != "-") {
    if (std::filesystem::is_directory(options.stimuli))
      return refuse(options.stimuli, 0, "is a folder, not a file of stimuli");
    file.open(options.stimuli);
    if (!file) return refuse(options.stimuli, 0, "cannot be read");
  }
  std::istream& in = options.stimuli == "-" ? std::cin : file;
  const std::string stimuli_name = options.stimuli == "-" ? "standard input" : options.stimuli;

  Connection server;
  if (!options.server.first.empty())
    server.reset(SOCK_make_client(options.server.first.c_str(),
                                  static_cast<unsigned short>(std::stoi(options.server.second))));

  Simulation simulation(read.module);
  std::unique_ptr<TraceWriter> trace;
  for (const TraceFormat& format : trace_formats())
    if (options.format == format.name) trace = format.make(simulation);
  trace->begin(out);
  StimuliReader stimuli(in, simulation);
  try {
    while (const auto stimulus = stimuli.next()) {
      apply(*stimulus, simulation);
      simulation.step(server.get());
      trace->write(out, simulation.state());
      if (!out) return refuse(options.output, 0, "the trace cannot be written");
    }
  } catch (const StimuliError& error) {
    return refuse(stimuli_name, error.line, error.reason);
  }
  if (in.bad()) return refuse(stimuli_name, 0, "cannot be read to its end");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a peer that goes away is an ordinary failure
  Options options;
  CLI::App app{"Runs a compiled module over stimuli and writes the trace.", "kiva-console"};
  app.add_option("MODULE", options.module, "module to run (.zuc)")->required();
  app.add_option("STIMULI", options.stimuli,
                 "one line an instant; standard input when missing or \"-\"");
  std::vector<std::string> formats;
  std::string told_formats;
  for (const kiva::TraceFormat& format : kiva::trace_formats()) {
    formats.push_back(format.name);
    told_formats += (told_formats.empty() ? "" : ", ") + formats.back() + " (" + format.tells + ")";
  }
  app.add_option("--format", options.format, told_formats)->check(CLI::IsMember(formats));
  app.add_option("-o", options.output, "file for the trace instead of the standard output");
  app.add_option("--server", options.server, "HOST PORT of the evaluation server")
      ->check(CLI::Range(1, 65535).application_index(1));
  app.add_flag("--verbose", options.verbose, "show all that the library has to tell");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kiva::programs::wrong_usage;
  }

  return kiva::programs::run_reported(program, [&] {
    const kiva::programs::ToldText told(options.verbose);
    kiva::programs::Reporter reporter(program);
    const kiva::programs::ProgramSession session(&reporter);
    if (options.output.empty()) return run(options, std::cout);
    for (const std::string& read : {options.module, options.stimuli}) {
      std::error_code none;
      if (std::filesystem::equivalent(options.output, read, none))
        return refuse(options.output, 0, "is read here, and would be overwritten");
    }
    kiva::WholeFile file(options.output);
    if (!file.opened()) return refuse(options.output, 0, "cannot be written");
    const int status = run(options, file.out());
    if (status == 0 && !file.finish()) return refuse(options.output, 0, "cannot be written");
    return status;
  });
}
