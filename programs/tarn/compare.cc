#include "programs/tarn/compare.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <iostream>
#include <new>

#include "base/text_stream.h"
#include "programs/tarn/read_module.h"
#include "programs/tarn/translate.h"
#include "programs/told_text.h"
#include "tarn/b_automaton/equivalence.h"
#include "tarn/b_automaton/module_automaton.h"

namespace kiva::tarn_program {

namespace {

/// What an interrupt says. A single step over diagrams may take long, so the handler itself writes
/// the text and ends the process; it always finds a whole one.
class Interrupt {
 public:
  Interrupt() {
    say("stopped: no instant seen yet");
    std::signal(SIGINT, handle);
  }
  ~Interrupt() { std::signal(SIGINT, SIG_DFL); }
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  static void say(const std::string& text) {
    const sig_atomic_t other = 1 - current_;
    std::snprintf(texts_[other], sizeof texts_[other], "\ntarn: %s\n", text.c_str());
    current_ = other;
  }

 private:
  static void handle(int) {
    const char* text = texts_[current_];
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, std::strlen(text));
    _exit(128 + SIGINT);
  }

  static char texts_[2][200];
  static volatile sig_atomic_t current_;
};

char Interrupt::texts_[2][200];
volatile sig_atomic_t Interrupt::current_ = 0;

/// Keeps the process within three quarters of the machine's memory while it lives: diagrams that
/// outgrow it end in a std::bad_alloc, and not in the end of other programs.
class MemoryLimit {
 public:
  MemoryLimit() {
    getrlimit(RLIMIT_AS, &before_);
    rlimit limit = before_;
    const rlim_t memory = static_cast<rlim_t>(sysconf(_SC_PHYS_PAGES)) *
                          static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) / 4 * 3;
    limit.rlim_cur = std::min(limit.rlim_cur, memory);
#ifndef __SANITIZE_ADDRESS__  // whose shadow alone is larger
    setrlimit(RLIMIT_AS, &limit);
#endif
  }
  ~MemoryLimit() {
    setrlimit(RLIMIT_AS, &before_);
  }
  MemoryLimit(const MemoryLimit&) = delete;
  MemoryLimit& operator=(const MemoryLimit&) = delete;

 private:
  rlimit before_ = {};
};

/// 12, or 1.5e+20.
std::string number(double value) {
  TextStream out;
  out.precision(value < 1e9 ? 9 : 3);
  out << value;
  return out.str();
}

std::string so_far(const OutputWalk& walk) {
  return walk.instants == 0
             ? "walking over " + std::to_string(walk.registers) + " registers"
             : "no difference in the first " + std::to_string(walk.instants) +
                   (walk.instants == 1 ? " instant, " : " instants, ") + number(walk.states) +
                   " states of " + std::to_string(walk.registers) + " registers seen";
}

/// The name without what tells its kind.
std::string bare(const std::string& name) {
  return name.substr(2);
}

class Comparison {
 public:
  Comparison(Options& options, Messages& messages)
      : options_(options),
        files_{&options.files.front(), &options.files.back()},
        messages_(messages) {}

  int run() {
    for (const std::string* file : files_) {
      if (!read(*file)) return incomparable;
    }
    if (!same_interface()) return incomparable;
    both_ = observateur_equivalence(automata_[0].get(), automata_[1].get());
    if (const std::list<long> loop = both_->sort(); !loop.empty()) {
      const std::string name = both_->nom_associe(loop.front());
      fail({*files_[name.starts_with("autom2_") ? 1 : 0], 0, 0, 0, 0},
           "has a cycle through " + name.substr(name.find("_l_") + 3));
      return incomparable;
    }
    const bool terminal = isatty(STDERR_FILENO) != 0;
    OutputWalk walk;
    std::string known = "no instant seen yet";
    try {
      const Interrupt interrupt;
      const MemoryLimit limit;
      walk = walk_output(*both_, 0, [&](const OutputWalk& now) {
        known = so_far(now);
        Interrupt::say("stopped: " + known);
        if (terminal) programs::errors() << '\r' << known << "\033[K" << std::flush;
      });
    } catch (const std::bad_alloc&) {
      if (terminal) programs::errors() << '\n';
      fail("out of memory: " + known);
      return incomparable;
    }
    if (terminal) programs::errors() << "\r\033[K" << std::flush;
    if (walk.holds) {
      std::cout << *files_[0] << " and " << *files_[1]
                << " give the same outputs in every reachable instant\n";
      return 0;
    }
    print_stimuli(walk);
    return different;
  }

 private:
  bool read(const std::string& file) {
    // The automaton stands without the module.
    try {
      const programs::ProgramSession session(&messages_);
      choose(options_);
      Module* module = read_module(file);
      if (module == nullptr) return false;
      automata_.push_back(automaton_of(module));
      return true;
    } catch (...) {
      return fail(programs::fault_under_way(file));
    }
  }

  /// Each name of one side must be the other's; their order does not matter.
  bool same_interface() const {
    const auto covers = [&](int side, const std::list<std::string>& mine,
                            const std::list<std::string>& others, const char* kind) {
      for (const std::string& name : mine)
        if (std::find(others.begin(), others.end(), name) == others.end())
          return fail(*files_[side] + " has the " + kind + " \"" + bare(name) + "\", " +
                      *files_[1 - side] + " has not");
      return true;
    };
    for (int side = 0; side < 2; ++side) {
      const b_automaton& mine = *automata_[static_cast<size_t>(side)];
      const b_automaton& other = *automata_[static_cast<size_t>(1 - side)];
      if (!covers(side, mine.inputs_list(), other.inputs_list(), "input") ||
          !covers(side, mine.outputs_list(), other.outputs_list(), "output"))
        return false;
    }
    return true;
  }

  /// Runs the composed automaton over the stimuli, and names what differs at their end.
  void print_stimuli(const OutputWalk& walk) const {
    const b_automaton& both = *both_;
    const size_t count = static_cast<size_t>(both.manager_associe()->Nb_bdd_vars());
    std::vector<int> literals(count), result(count);
    both.etat_init(literals.data());
    for (const std::vector<int>& inputs : walk.stimuli) {
      std::copy(inputs.begin(), inputs.end(), literals.begin() + both.input_index(0));
      both.evaluation_etat_suivant(literals.data(), 0, result.data());
      std::copy_n(result.begin() + both.nb_state_vars(), both.nb_state_vars(), literals.begin());
    }
    std::string apart;
    for (const std::string& name : automata_[0]->outputs_list()) {
      const auto side = [&](const char* instance) {
        return result[static_cast<size_t>(both.ident_associe(instance + name))];
      };
      if (side("autom1_") == side("autom2_")) continue;
      apart += (apart.empty() ? "" : ", ") + bare(name) + " in " +
               *files_[side("autom1_") == 1 ? 0 : 1] + " only";
    }
    std::cout << "# instant " << walk.stimuli.size() << ": " << apart << '\n';
    for (const std::vector<int>& inputs : walk.stimuli) {
      const char* separator = "";
      for (int k = 0; k < both.nb_inputs(); ++k) {
        if (inputs[static_cast<size_t>(k)] != 1) continue;
        std::cout << separator << bare(both.nom_input(k));
        separator = " ";
      }
      std::cout << '\n';
    }
  }

  Options& options_;
  const std::string* files_[2];
  Messages& messages_;
  std::vector<std::unique_ptr<b_automaton>> automata_;
  std::unique_ptr<b_automaton> both_;
};

}  // namespace

int compare_modules(Options& options, Messages& messages) {
  return Comparison(options, messages).run();
}

}  // namespace kiva::tarn_program
