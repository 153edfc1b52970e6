// The simulator without a window: a module and stimuli in, a trace out.

#include <CLI/CLI.hpp>
#include <csignal>
#include <fstream>
#include <iostream>

#include "base/sock.h"
#include "engine/simulation.h"
#include "engine/stimuli.h"
#include "engine/trace.h"
#include "programs/report.h"
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
    file.open(options.stimuli);
    if (!file || file.peek() == std::ifstream::traits_type::eof()) file.clear();
    if (!file.is_open()) return refuse(options.stimuli, 0, "cannot be read");
  }
  std::istream& in = options.stimuli == "-" ? std::cin : file;
  const std::string stimuli_name = options.stimuli == "-" ? "standard input" : options.stimuli;

  Connection server;
  if (!options.server.first.empty())
    server.reset(SOCK_make_client(options.server.first.c_str(),
                                  static_cast<unsigned short>(std::stoi(options.server.second))));

  Simulation simulation(read.module);
  std::unique_ptr<TraceWriter> trace;
  if (options.format == "json") {
    trace = std::make_unique<JsonTrace>(simulation);
  } else {
    trace = std::make_unique<TextTrace>(simulation, options.format == "outputs");
  }
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
  app.add_option("--format", options.format,
                 "text, outputs (text without registers and locals) or json")
      ->check(CLI::IsMember({"text", "outputs", "json"}));
  app.add_option("-o", options.output, "file for the trace instead of the standard output");
  app.add_option("--server", options.server, "HOST PORT of the evaluation server")
      ->check(CLI::Range(1, 65535).application_index(1));
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kiva::programs::wrong_usage;
  }

  return kiva::programs::run_reported(program, [&] {
    const kiva::programs::ProgramSession session;
    // What the engine tells on the standard output must not meet the trace there.
    kiva::Session::current().set_told_text(std::cerr);
    std::ofstream output_file;
    if (!options.output.empty()) {
      output_file.open(options.output);
      if (!output_file) return refuse(options.output, 0, "cannot be written");
    }
    return run(options, options.output.empty() ? std::cout : output_file);
  });
}
