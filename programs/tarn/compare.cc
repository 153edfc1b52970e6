#include "programs/tarn/compare.h"

#include <algorithm>
#include <iostream>

#include "base/translation.h"
#include "programs/tarn/proof_watch.h"
#include "programs/tarn/statement_difference.h"
#include "programs/tarn/translate.h"
#include "proof/module_machine.h"
#include "proof/product.h"

namespace kiva::tarn_program {

namespace {

using proof::Answer;
using proof::Verdict;

class Comparison {
 public:
  Comparison(Options& options, Messages& messages)
      : options_(options),
        files_{&options.files.front(), &options.files.back()},
        names_{*files_[0], *files_[1]},
        messages_(messages),
        of_side_{options, options} {
    if (options.rules.first.empty()) return;
    const std::string* rules[2] = {&options.rules.first, &options.rules.second};
    for (size_t side = 0; side < 2; ++side) {
      of_side_[side].classic = *rules[side] == "classic";
      of_side_[side].map = *files_[0] == *files_[1];
      names_[side] += " by the " + *rules[side] + " rules";
    }
  }

  int run() {
    for (size_t side = 0; side < 2; ++side)
      if (!read(side)) return incomparable;
    if (!same_interface()) return incomparable;
    const proof::Product both(sides_[0], sides_[1]);
    const ProofWatch watch;
    const Answer answer = proof::prove(both.machine, watch.options(options_));
    watch.clear();
    switch (answer.verdict) {
      case Verdict::holds:
        if (!certify(options_.certificate, both.machine, answer)) return incomparable;
        std::cout << translated(names_[0] + " and " + names_[1] +
                                " give the same outputs in every reachable instant")
                  << '\n';
        return 0;
      case Verdict::fails:
        print_stimuli(both, answer);
        if (of_side_[0].map)
          std::cout << translated_lines(
              first_difference(*files_[0], of_side_, {options_.rules.first, options_.rules.second},
                               messages_, answer.run));
        return different;
      case Verdict::unknown:
        break;
    }
    if (ProofWatch::interrupted()) return ProofWatch::stopped("no difference: " + answer.how);
    fail("not known within " + std::to_string(static_cast<long>(options_.limit)) +
         " seconds (--limit): no difference: " + answer.how);
    return undecided;
  }

 private:
  bool read(size_t side) {
    // The machine stands without the module.
    const std::string& file = *files_[side];
    try {
      const programs::ProgramSession session(&messages_);
      std::vector<Module*> modules = load_modules(file, of_side_[side], messages_);
      if (modules.size() > 1) modules = outer_modules(modules);
      if (modules.empty()) return false;
      if (modules.size() > 1)
        return fail({file, 0, 0, 0, 0}, "holds several modules; --module names one");
      Module* module = modules.front();
      proof::require_comparable(*module);
      const Simulation simulation(module);
      proof::ModuleMachine machine(simulation, false);
      sides_[side] = proof::side_of(simulation, machine);
      return true;
    } catch (const proof::MachineError& error) {
      return fail({file, 0, 0, 0, 0}, error.reason);
    } catch (...) {
      return fail(fault_under_way(file));
    }
  }

  /// Each name of one side must be the other's; their order does not matter.
  bool same_interface() const {
    for (size_t side = 0; side < 2; ++side)
      if (const std::string what = proof::missing_in(sides_[1 - side], sides_[side]); !what.empty())
        return fail(names_[side] + " has the " + what + ", " + names_[1 - side] + " has not");
    return true;
  }

  /// The run, headed by what differs at its end.
  void print_stimuli(const proof::Product& both, const Answer& answer) const {
    proof::Stepper stepper(both.machine);
    for (size_t instant = 0; instant < answer.run.size(); ++instant) {
      if (instant > 0) stepper.move();
      stepper.look(proof::words_of(answer.run[instant]));
    }
    std::string apart;
    for (const proof::Product::Output& output : both.outputs) {
      const auto present = [&](int side) { return (stepper.word(output.present[side]) & 1) != 0; };
      if (present(0) == present(1)) continue;
      apart += (apart.empty() ? "" : ", ") +
               translated(output.name + " in " + names_[present(0) ? 0 : 1] + " only");
    }
    std::cout << "# instant " << answer.run.size() << ": " << apart << '\n';
    if (!answer.shortest)
      std::cout << "# " << translated("whether they differ earlier, too, is not known") << '\n';
    for (const std::vector<bool>& inputs : answer.run) {
      const char* separator = "";
      for (size_t k = 0; k < inputs.size(); ++k) {
        if (!inputs[k]) continue;
        std::cout << separator << both.machine.inputs[k].name;
        separator = " ";
      }
      std::cout << '\n';
    }
  }

  Options& options_;
  const std::string* files_[2];
  std::string names_[2];  ///< of the sides, for a person
  Messages& messages_;
  Options of_side_[2];
  proof::Side sides_[2];
};

}  // namespace

int compare_modules(Options& options, Messages& messages) {
  try {
    return Comparison(options, messages).run();
  } catch (...) {
    fail(fault_under_way());
    return incomparable;
  }
}

}  // namespace kiva::tarn_program
