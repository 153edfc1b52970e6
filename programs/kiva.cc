#include <algorithm>
#include <iostream>
#include <string>

#include "SIMULATOR_ZUC/application.h"
#include "programs/report.h"
#include "programs/told_text.h"
#include "tarn/session/session.h"

namespace {

constexpr const char* usage =
    "The simulator: a module, an instant at a time.\n"
    "Usage: kiva [--scope]\n"
    "       kiva [--scope] --open FILE.zuc\n"
    "       kiva [--scope] FILE.zuc HOST PORT\n\n"
    "  HOST PORT   the module's evaluation server; localhost 0 for none\n"
    "  --open      opens a module without a server\n"
    "  --scope     opens the second window, too: waves, branches, why\n"
    "  --verbose   shows what the library has to tell\n"
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

/// Takes the word out of the arguments; false where it does not stand there.
bool taken(const std::string& word, int& argc, char** argv) {
  char** const end = std::remove(argv + 1, argv + argc, word);
  const bool found = end != argv + argc;
  argc = static_cast<int>(end - argv);
  return found;
}

}  // namespace

int main(int argc, char** argv) {
  if (answered(argc, argv)) return 0;
  return kiva::programs::run_reported("kiva", [&] {
    const kiva::programs::ToldText told(taken("--verbose", argc, argv));
    kiva::Session session;
    session.set_told_text(std::cerr);
    const kiva::Session::Use use(session);
    return kiva::run_window(argc, argv, kiva::programs::errors());
  });
}
