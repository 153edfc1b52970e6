#include <iostream>
#include <string>

#include "SIMULATOR_ZUC/application.h"
#include "programs/report.h"
#include "tarn/session/session.h"

namespace {

constexpr const char* usage =
    "The simulator: a module, an instant at a time.\n"
    "Usage: kiva [OPTIONS]\n"
    "       kiva [OPTIONS] --open FILE.zuc\n"
    "       kiva [OPTIONS] FILE.zuc HOST PORT\n\n"
    "  HOST PORT   the module's evaluation server; localhost 0 for none\n"
    "  --open      opens a module without a server\n"
    "  --scope     opens the second window, too: waves, branches, why\n"
    "  --beside    opens it beside the window, where the screen has room\n"
    "  --first     runs the first instant\n"
    "  --help, --version\n";

/// What needs no window; false where there is nothing of it.
bool answered(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument != "--help" && argument != "-h" && argument != "--version") continue;
    std::cout << (argument == "--version" ? "kiva " KIVA_VERSION "\n" : usage) << std::flush;
    return true;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (answered(argc, argv)) return 0;
  return kiva::programs::run_reported("kiva", [&] {
    kiva::Session session;
    const kiva::Session::Use use(session);
    return kiva::run_window(argc, argv);
  });
}
