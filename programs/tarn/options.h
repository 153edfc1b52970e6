#pragma once

#include <algorithm>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "forms/forms.h"
#include "proof/property.h"
#include "tarn/targets/targets.h"

namespace kiva::tarn_program {

constexpr int different = 1;     ///< exit status of a comparison
constexpr int incomparable = 2;  ///< exit status of a comparison or proof that could not be made
constexpr int undecided = 3;     ///< exit status of a proof that did not come to an end

/// What the command line asks for.
struct Options {
  std::list<std::string> files;
  std::vector<std::string> modules;
  std::string folder = ".";
  std::string output;
  std::string log;                ///< file of the readers' traces; empty for none
  std::string sarif;              ///< file for what was complained about; "" for none
  std::ostream* trace = nullptr;  ///< that file, once it is open
  bool in_place = false;          ///< what is read may be overwritten
  bool zuc = false;
  bool kiva = false;
  std::vector<const Target*> targets;
  bool dot = false;
  bool svg = false;
  bool states = false;            ///< of what is drawn: the reachable ones
  const Target* bench = nullptr;  ///< whose bench is wanted; null for none
  std::string bench_stimuli;      ///< file of its stimuli
  bool check_targets = false;
  bool equiv = false;
  bool print_names = false;  ///< of modules and signals, for completion
  std::string eval;          ///< an expression; empty for none
  std::vector<proof::Property> properties;
  bool prove = false;  ///< what the source's comments say
  bool cover = false;  ///< runs that reach all that can be reached
  bool language_server = false;
  bool layout = false;        ///< of source text, anew
  bool check_layout = false;  ///< and only whether it would change
  bool with_reset = false;
  double limit = 60;        ///< seconds for each proof
  std::string certificate;  ///< folder for what lets others check a proof; empty for none
  bool classic = false;
  std::pair<std::string, std::string> rules;  ///< of the sides of a comparison; "" as `classic`
  bool asynchronous_reset = false;            ///< of circuits
  bool no_comments = false;                   ///< in target texts
  std::string words;                          ///< options of the command line that a text names
  bool no_finalize = false;
  bool keep_wires = false;
  bool map = false;  ///< and what keeps the wires that it names
  bool keep_rtl = false;
  bool forget_locals = false;
  bool strip = false;
  bool check_over_knowledge = false;
  bool comments = false;
  bool windows = false;
  std::shared_ptr<message_presenter> presenter;  ///< those windows; null for none
  bool stats = false;
  bool quiet = false;
  bool verbose = false;               ///< show what the library tells its own callers
  std::vector<std::string> warnings;  ///< "no-NAME" or "error"

  /// Properties go into a text, for others to prove.
  bool writes_properties() const {
    return !prove && std::ranges::any_of(
                         targets, [](const Target* target) { return target->with_properties; });
  }
  bool wants_proofs() const { return prove || !properties.empty(); }
  /// Something else than the compiled module is wanted.
  bool writes_other_text() const {
    return kiva || !targets.empty() || bench != nullptr || dot || svg;
  }
};

bool is_source(const std::string& file);

/// False when the program ends here with `status`: help was asked for, or the usage is wrong.
bool read_options(int argc, char** argv, Options& options, int& status);

}  // namespace kiva::tarn_program
