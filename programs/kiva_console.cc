// The simulator without a window: a module and stimuli in, a trace out.

#include <CLI/CLI.hpp>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>

#include "base/sock.h"
#include "base/whole_file.h"
#include "engine/simulation.h"
#include "engine/stimuli.h"
#include "engine/trace.h"
#include "programs/report.h"
#include "tarn/model/compilation.h"
#include "tarn/session/session.h"
#include "tarn/session/session_files.h"
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
  std::string log;                             ///< file of the reader's trace; empty for none
  std::pair<std::string, std::string> server;  ///< host and port; empty for none
};

/// A connection to the evaluation server, closed with the run.
struct CloseConnection {
  void operator()(kiva::Sock socket) const { kiva::SOCK_shutdown(socket, 1); }
};
using Connection = std::unique_ptr<kiva::socket_type, CloseConnection>;

/// Where the trace goes: the standard output, or a file that takes its name at the end.
class TraceOutput {
 public:
  explicit TraceOutput(const std::string& path) {
    if (!path.empty()) file_.emplace(path);
  }
  bool opened() const { return !file_ || file_->opened(); }
  std::ostream& out() { return file_ ? file_->out() : std::cout; }
  bool finish() { return !file_ || file_->finish(); }

 private:
  std::optional<kiva::WholeFile> file_;
};

bool open_stimuli(const std::string& name, std::ifstream& file) {
  if (name == "-") return true;
  if (std::filesystem::is_directory(name))
    return complain(program, {name, 0, 0, 0, 0}, "is a folder, not a file of stimuli");
  file.open(name);
  return file.is_open() || complain(program, {name, 0, 0, 0, 0}, "cannot be read");
}

int run(const Options& options) {
  using namespace kiva;
  const ZucRead read =
      read_zuc_file(options.module, Compilation::EmptyString, Compilation::EmptyString);
  if (read.module == nullptr) return refuse(read.where.file, read.where.line, read.reason);
  std::ifstream file;
  if (!open_stimuli(options.stimuli, file)) return unusable;
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
  TraceOutput output(options.output);
  if (!output.opened()) return refuse(options.output, 0, "cannot be written");
  trace->begin(output.out());
  StimuliReader stimuli(in, simulation);
  try {
    while (const auto stimulus = stimuli.next()) {
      apply(*stimulus, simulation);
      simulation.step(server.get());
      trace->write(output.out(), simulation.state());
      if (!output.out()) break;
    }
  } catch (const StimuliError& error) {
    return refuse(stimuli_name, error.line, error.reason);
  }
  if (in.bad()) return refuse(stimuli_name, 0, "cannot be read to its end");
  trace->end(output.out());
  if (!output.finish()) return refuse(options.output, 0, "cannot be written");
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
  app.add_option("--log", options.log, "file for what the reader did with the module");
  app.add_option("--server", options.server, "HOST PORT of the evaluation server")
      ->check(CLI::Range(1, 65535).application_index(1));
  return kiva::programs::run_reported(program, [&] {
    try {
      app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
      return app.exit(error) == 0 ? 0 : kiva::programs::wrong_usage;
    }
    const std::vector<std::string> read{options.module, options.stimuli};
    if (!options.output.empty() && kiva::programs::overwrites(program, options.output, read))
      return unusable;
    kiva::programs::TraceFile log(program, options.log, read);
    if (!log.good()) return unusable;
    const kiva::programs::ProgramSession session;
    // What the engine tells on the standard output must not meet the trace there.
    kiva::Session::current().set_told_text(std::cerr);
    kiva::SessionFiles::current().trace = log.stream();
    const int status = run(options);
    return log.finish() ? status : std::max(status, unusable);
  });
}
