// The compiler from the command line: source text to compiled modules, and compiled modules to
// other text.

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <optional>
#include <set>

#include "language/server.h"
#include "programs/sarif.h"
#include "programs/tarn/check_targets.h"
#include "programs/tarn/compare.h"
#include "programs/tarn/cover.h"
#include "programs/tarn/evaluate.h"
#include "programs/tarn/lay_out_files.h"
#include "programs/tarn/messages.h"
#include "programs/tarn/names.h"
#include "programs/tarn/options.h"
#include "programs/tarn/prove.h"
#include "programs/tarn/translate.h"
#include "programs/told_text.h"

namespace kiva::tarn_program {
namespace {

/// What is asked for in place of files, and its exit status; empty for nothing of the kind.
std::optional<int> answer(Options& options, Messages& messages) {
  if (options.layout) return lay_out_files(options);
  if (options.check_targets) return check_targets(options, messages);
  if (options.equiv) return compare_modules(options, messages);
  if (options.cover) return cover_module(options, messages);
  if (options.wants_proofs() && !options.writes_properties())
    return prove_properties(options, messages);
  if (!options.eval.empty()) return evaluate_expression(options, messages) ? 0 : unusable;
  return {};
}

/// Does what the command line asks for; gives the exit status.
int work(Options& options, Messages& messages) {
  const programs::ProgramSession session(&messages);
  if (const std::optional<int> status = answer(options, messages)) return *status;

  bool good = true;
  std::set<std::string> met;
  // Compiled modules beside source text are there for its runs.
  const bool compiles = std::any_of(options.files.begin(), options.files.end(), is_source);
  for (const std::string& file : options.files)
    if (!compiles || is_source(file)) good = translate(file, options, messages, met) && good;
  // A broken file may hide a module: its own message is enough.
  if (good && compiles)
    for (const std::string& name : options.modules)
      if (!met.contains(name)) good = fail("no file holds a module \"" + name + "\"");
  return good ? 0 : unusable;
}

}  // namespace
}  // namespace kiva::tarn_program

int main(int argc, char** argv) {
  using namespace kiva;
  using namespace kiva::tarn_program;
  return programs::run_reported("tarn", [&] {
    Options options;
    int status = 0;
    if (!read_options(argc, argv, options, status)) return status;
    programs::TraceFile log("tarn", options.log, {options.files.begin(), options.files.end()});
    if (!log.good()) return unusable;
    options.trace = log.stream();
    const programs::ToldText told(options.verbose);
    programs::Sarif sarif("tarn", options.sarif);
    Messages messages(options.presenter.get());
    if (options.language_server) return language::Server(STDIN_FILENO, STDOUT_FILENO).run();
    if (options.print_names) return put_names(options.files, std::cout), 0;
    for (const std::string& word : options.warnings) messages.choose(word);
    status = work(options, messages);
    const bool written = sarif.finish();
    return log.finish() && written ? status : std::max(status, unusable);
  });
}
