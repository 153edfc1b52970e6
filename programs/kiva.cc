#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <string>

#include "SIMULATOR_ZUC/application.h"
#include "programs/command_pages.h"
#include "programs/report.h"
#include "programs/told_text.h"
#include "tarn/session/session.h"

namespace kiva {
namespace {

/// What needs no window: help, version, and what is made of the table of options. The window reads
/// the rest itself. -1 to go on, else the status with which the program ends.
int answer(int argc, char** argv) {
  CLI::App app{"The simulator: shows a module, an instant at a time.", "kiva"};
  programs::CommandNotes notes;
  notes.summary = "simulator of synchronous reactive modules";
  notes.synopsis = "[OPTIONS] [--open FILE | FILE HOST PORT]";
  notes.examples = {{"kiva --open lift.zuc", "opens a module without data"},
                    {"kiva --open lift.zu", "compiles it, and again when it is saved"},
                    {"kiva --scope --open lift.zuc", "with waves, branches, source text and why"},
                    {"kiva lift.zuc localhost 4000", "with the module's evaluation server"}};
  notes.statuses = programs::common_statuses();
  notes.see_also = {"tarn", "kiva-console"};
  std::string file, host, port;
  bool scope = false, verbose = false;
  app.add_option("FILE", file, "a compiled module (.zuc)");
  app.add_option("HOST", host, "where the module's evaluation server runs");
  app.add_option("PORT", port, "its port; 0 for none");
  app.add_option("--open", file, "opens a module without a server")->type_name("FILE");
  app.add_flag("--scope", scope, "opens the second window, too: waves, branches, why");
  app.add_flag("--beside", scope, "opens it beside the window, where the screen has room");
  app.add_flag("--first", scope, "runs the first instant");
  app.add_flag("--verbose", verbose, "shows what the library has to tell");
  programs::add_pages(app, notes);
  app.footer(programs::example_lines(notes));
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument != "-h" && argument != "--help" && argument != "--version" &&
        !argument.starts_with("--print-"))
      continue;
    try {
      app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
      return app.exit(error) == 0 ? 0 : programs::wrong_usage;
    }
  }
  return -1;
}

/// Takes the word out of the arguments; false where it does not stand there.
bool taken(const std::string& word, int& argc, char** argv) {
  char** const end = std::remove(argv + 1, argv + argc, word);
  const bool found = end != argv + argc;
  argc = static_cast<int>(end - argv);
  return found;
}

}  // namespace
}  // namespace kiva

int main(int argc, char** argv) {
  return kiva::programs::run_reported("kiva", [&] {
    if (const int status = kiva::answer(argc, argv); status >= 0) return status;
    const kiva::programs::ToldText told(kiva::taken("--verbose", argc, argv));
    kiva::Session session;
    session.set_told_text(std::cerr);
    const kiva::Session::Use use(session);
    return kiva::run_window(argc, argv, kiva::programs::errors());
  });
}
