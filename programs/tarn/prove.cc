#include "programs/tarn/prove.h"

#include <algorithm>
#include <iostream>

#include "base/translation.h"
#include "programs/tarn/never.h"
#include "programs/tarn/proof_watch.h"
#include "programs/tarn/translate.h"
#include "programs/told_text.h"
#include "proof/question.h"
#include "tarn/zu/source_properties.h"

namespace kiva::tarn_program {

namespace {

using proof::Answer;
using proof::Property;
using proof::Verdict;

/// A property with where it stands: unknown for one of the command line.
struct Asked {
  Property property;
  Place where;
};

class Proofs {
 public:
  Proofs(Options& options, Messages& messages) : options_(options), messages_(messages) {}

  int run() {
    if (options_.files.size() != 1 && !is_source(options_.files.front()))
      return told("proofs are made of one module, and there are several files");
    const std::string& file = options_.files.front();
    const programs::ProgramSession session(&messages_);
    std::vector<Module*> modules = load_modules(file, options_, messages_);
    if (modules.empty()) return incomparable;
    if (!options_.prove) {
      modules = outer_modules(modules);
      if (modules.size() != 1) return told(file + " holds several modules; --module names one");
    }
    const std::vector<Module*> surveyed =
        options_.prove ? outer_modules(modules) : std::vector<Module*>();
    for (Module* module : modules) {
      std::vector<Asked> asked;
      for (const Property& property : options_.properties) asked.push_back({property, {}});
      if (options_.prove) add_written(*module, asked);
      if (const int status = prove_all(*module, asked); status > different && status != undecided)
        return status;
      if (std::ranges::find(surveyed, module) == surveyed.end()) continue;
      if (const int status = survey(module, asked); status != 0) return status;
    }
    if (messages_.errors() > 0) raise(different);  // warnings that are errors
    return status_;
  }

 private:
  static int told(const std::string& reason) {
    fail(reason);
    return incomparable;
  }
  static int told(const Asked& asked, const proof::MachineError& error) {
    fail(asked.where, error.reason);
    return incomparable;
  }
  static int told(const Asked& asked, const ConditionError& error) {
    const std::string place = "character " + std::to_string(error.character) + ": " + error.reason;
    if (!asked.where.known())
      return told(std::string("--") + proof::word(asked.property.kind) + ": " + place);
    Place where = asked.where;
    where.column += static_cast<int>(error.character) - 1;
    fail(where, error.reason);
    return incomparable;
  }

  static void add_written(const Module& module, std::vector<Asked>& asked) {
    Property::Kind kind{};
    for (const SourceProperty& written : source_properties(module))
      if (proof::find_kind(written.word, kind))
        asked.push_back({{kind, written.text}, written.where});
  }

  int prove_all(Module& module, const std::vector<Asked>& all) {
    if (all.empty()) return 0;
    Simulation simulation(&module);
    std::unique_ptr<proof::Question> question;
    std::vector<std::pair<const Asked*, proof::Machine>> goals;
    // What is wrong with one is told before the first is tried.
    const Asked* current = &all.front();
    try {
      question = std::make_unique<proof::Question>(simulation, options_.with_reset);
      for (const Asked& asked : all)
        if (asked.property.kind == Property::assume)
          current = &asked, question->assume(asked.property.text);
      for (const Asked& asked : all)
        if (asked.property.kind != Property::assume)
          current = &asked, goals.emplace_back(&asked, question->machine(asked.property));
      const ProofWatch watch;
      for (const auto& [asked, machine] : goals) {
        current = asked;
        const Answer answer = proof::prove(machine, watch.options(options_));
        watch.clear();
        if (ProofWatch::interrupted() && answer.verdict == Verdict::unknown)
          return ProofWatch::stopped(answer.how);
        print(*asked, answer, *question);
        ++proof_;
        const std::string folder = options_.certificate.empty() || goals.size() == 1
                                       ? options_.certificate
                                       : options_.certificate + '/' + std::to_string(proof_);
        if (!certify(folder, machine, answer)) return incomparable;
      }
    } catch (const ConditionError& error) {
      return told(*current, error);
    } catch (const proof::MachineError& error) {
      return told(*current, error);
    }
    return 0;
  }

  int survey(Module* module, const std::vector<Asked>& asked) {
    std::vector<std::string> assumed;
    for (const Asked& one : asked)
      if (one.property.kind == Property::assume) assumed.push_back(one.property.text);
    try {
      const ProofWatch watch;
      tell_what_never_happens(module, options_.files.front(), options_, assumed, watch, messages_);
      return ProofWatch::interrupted() ? ProofWatch::stopped("not all was looked at") : 0;
    } catch (const proof::MachineError& error) {
      fail(place_of(module->getSpan()), error.reason);
      return incomparable;
    }
  }

  void print(const Asked& asked, const Answer& answer, proof::Question& question) {
    const Property& property = asked.property;
    const bool reach = property.kind == Property::reach;
    const std::string what =
        (asked.where.known() ? asked.where.file + ':' + std::to_string(asked.where.line) + ": "
                             : "") +
        proof::word(property.kind) + ' ' + property.text;
    if (answer.verdict == Verdict::unknown) {
      raise(undecided);
      std::cout << "# " << translated(what + ": not known: " + answer.how) << std::endl;
    } else if (answer.verdict == Verdict::holds) {
      if (reach) raise(different);
      std::cout << "# "
                << translated(what + (reach ? ": never reached: " : ": holds: ") + answer.how)
                << std::endl;
    } else {
      if (!reach) raise(different);
      const std::string instant = std::to_string(answer.run.size());
      std::cout << "# "
                << translated(what + (reach ? ": reached" : ": fails") + " in instant " + instant +
                              (answer.shortest ? "" : "; whether earlier, too, is not known"))
                << '\n'
                << question.shown(property, answer.run) << std::flush;
    }
  }

  void raise(int status) {
    // A property that fails counts for more than one that is not known.
    if (status_ != different) status_ = status;
  }

  Options& options_;
  Messages& messages_;
  int status_ = 0;
  int proof_ = 0;  ///< number of the one under way
};

}  // namespace

int prove_properties(Options& options, Messages& messages) {
  try {
    return Proofs(options, messages).run();
  } catch (...) {
    fail(fault_under_way(options.files.front()));
    return incomparable;
  }
}

}  // namespace kiva::tarn_program
