#include "programs/tarn/proof_watch.h"

#include <unistd.h>

#include <csignal>
#include <iostream>

#include "base/translation.h"
#include "programs/tarn/messages.h"
#include "programs/told_text.h"
#include "proof/certificate.h"

namespace kiva::tarn_program {

namespace {
std::atomic<bool> asked{false};

void ask_to_stop(int) {
  // A second one ends the process at once.
  if (asked.exchange(true)) _exit(128 + SIGINT);
}
}  // namespace

ProofWatch::ProofWatch() : terminal_(isatty(STDERR_FILENO) != 0) {
  std::signal(SIGINT, ask_to_stop);
}

ProofWatch::~ProofWatch() {
  clear();
  std::signal(SIGINT, SIG_DFL);
}

proof::ProverOptions ProofWatch::options(const Options& asked_for) const {
  proof::ProverOptions options;
  options.seconds = asked_for.limit;
  options.invariant = !asked_for.certificate.empty();
  options.asked = &asked;
  if (terminal_)
    options.progress = [](const std::string& so_far) {
      programs::errors() << '\r' << translated(so_far).substr(0, 110) << "\033[K" << std::flush;
    };
  return options;
}

proof::Stop ProofWatch::stop(double seconds) {
  return proof::Stop::about(seconds, &asked);
}

bool ProofWatch::interrupted() {
  return asked;
}

void ProofWatch::clear() const {
  if (terminal_) programs::errors() << "\r\033[K" << std::flush;
}

int ProofWatch::stopped(const std::string& so_far) {
  programs::errors() << "\ntarn: " << translated("stopped: " + so_far) << '\n';
  return 128 + SIGINT;
}

bool certify(const std::string& folder, const proof::Machine& machine,
             const proof::Answer& answer) {
  if (folder.empty() || !answer.invariant) return true;
  std::string reason;
  return proof::write_certificate(machine, *answer.invariant, folder, reason) || fail(reason);
}

}  // namespace kiva::tarn_program
