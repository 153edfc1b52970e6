#include "programs/console/options.h"

#include <CLI/CLI.hpp>

#include "engine/trace.h"
#include "programs/command_pages.h"
#include "programs/report.h"

namespace kiva::console {

namespace {

void add_runs(CLI::App& app, Options& options) {
  const auto group = "Runs";
  CLI::Option* random =
      app.add_option("--random", options.random, "N instants of random inputs in place of stimuli")
          ->type_name("N");
  random->check(CLI::PositiveNumber)->group(group);
  programs::add_random_options(app, random, group, options.drawn);
  app.add_option("--values", options.values, "NAME=A,B,...: the texts that a valued input carries")
      ->type_name("NAME=A,B")
      ->needs(random)
      ->group(group);
  app.add_option("--save-stimuli", options.save_stimuli, "file for the inputs of the run")
      ->type_name("FILE")
      ->group(group);
  app.add_option("--until", options.until,
                 "ends with the instant in which the condition holds, with status 1 if none does")
      ->type_name("EXPR")
      ->group(group);
}

void add_looks(CLI::App& app, Options& options) {
  const auto group = "What is looked at";
  app.add_flag("--update", options.update,
               "writes what is seen into the stimuli file, as expectations")
      ->group(group);
  app.add_option("--expect", options.expect, "a trace in JSON that the run must have")
      ->type_name("FILE")
      ->group(group);
  app.add_flag("--coverage", options.coverage,
               "tells on the error stream what signals and states the run has shown")
      ->group(group);
  app.add_option("--coverage-file", options.coverage_file,
                 "adds the run's coverage to that of earlier runs in this file")
      ->type_name("FILE")
      ->group(group);
  app.add_option("--why", options.why,
                 "NAME@INSTANT: in place of the trace, the inputs and registers that make the "
                 "signal what it is there")
      ->type_name("NAME@INSTANT")
      ->group(group);
  app.add_flag("--verbose", options.verbose,
               "shows what the library has to tell, and with --why the way down")
      ->group(group);
}

/// What the manual says beyond the options.
const programs::CommandNotes& notes() {
  static const programs::CommandNotes told = [] {
    programs::CommandNotes notes;
    notes.summary = "runs a compiled module over stimuli";
    notes.synopsis = "[OPTIONS] MODULE.zuc [STIMULI]";
    notes.examples = {
        {"kiva-console lift.zuc day.stimuli", "runs the module, an instant a line"},
        {"kiva-console --format vcd -o lift.vcd lift.zuc day.stimuli", "for a wave viewer"},
        {"kiva-console --random 1000 --coverage lift.zuc", "random inputs, and what they reached"},
        {"kiva-console --why door@7 lift.zuc day.stimuli", "why a signal is what it is"}};
    notes.statuses = programs::common_statuses();
    notes.statuses[1].second += " Or the run differs from what it must be.";
    notes.statuses.emplace_back("3", "The evaluation server is missing, or fails.");
    notes.see_also = {"kiva", "tarn"};
    return notes;
  }();
  return told;
}

}  // namespace

int read_options(int argc, char** argv, Options& options) {
  CLI::App app{"Runs a compiled module over stimuli and writes the trace.", "kiva-console"};
  CLI::Option* const module =
      app.add_option("MODULE", options.module, "module to run (.zuc)")->type_name("FILE");
  app.add_option("STIMULI", options.stimuli,
                 "one line an instant; standard input when missing or \"-\"")
      ->type_name("FILE");
  std::vector<std::string> formats;
  std::string told_formats;
  for (const TraceFormat& format : trace_formats()) {
    formats.push_back(format.name);
    told_formats += (told_formats.empty() ? "" : ", ") + formats.back() + " (" + format.tells + ")";
  }
  app.add_option("--format", options.format, told_formats)->check(CLI::IsMember(formats));
  app.add_option("-o", options.output, "file for the trace instead of the standard output")
      ->type_name("FILE");
  app.add_option("--log", options.log, "file for what the reader did with the module")
      ->type_name("FILE");
  app.add_option("--server", options.server, "HOST PORT of the evaluation server")
      ->type_name("HOST PORT")
      ->check(CLI::Range(1, 65535).application_index(1));
  app.add_option("--timeout", options.time_out, "seconds to wait for the server and each reply (5)")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.001, 86400.0));
  add_runs(app, options);
  add_looks(app, options);
  app.add_flag("--dap", options.debugger,
               "serve a debugger over standard input and output (Debug Adapter Protocol)");
  programs::add_pages(app, notes());
  app.footer(programs::example_lines(notes()));
  try {
    app.parse(argc, argv);
    if (options.module.empty() != options.debugger) {
      if (!options.debugger) throw CLI::RequiredError(module->get_name());
      throw CLI::ValidationError("--dap", "is told the module by the debugger");
    }
    if (options.random > 0 && options.stimuli != "-")
      throw CLI::ValidationError("--random", "takes the place of stimuli");
    if (options.update && options.stimuli == "-")
      throw CLI::ValidationError("--update", "needs a file of stimuli");
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : programs::wrong_usage;
  }
  return -1;
}

}  // namespace kiva::console
