// The compiler from the command line: source text to compiled modules, and compiled modules to
// other text.

#include <algorithm>

#include "forms/fltk/fltk_messages.h"
#include "programs/tarn/compare.h"
#include "programs/tarn/evaluate.h"
#include "programs/tarn/messages.h"
#include "programs/tarn/options.h"
#include "programs/tarn/translate.h"
#include "tarn/model/module.h"

int main(int argc, char** argv) {
  using namespace kiva;
  using namespace kiva::tarn_program;
  Options options;
  int status = 0;
  if (!read_options(argc, argv, options, status)) return status;
  choose(options);
  fltk_presenter windows;
  Messages messages(options.windows ? &windows : nullptr);

  if (options.equiv) return compare_modules(options.files.front(), options.files.back(), messages);
  if (!options.eval.empty())
    return evaluate_expression(options.eval, options.files.front(), messages) ? 0 : unusable;

  bool good = true;
  std::set<std::string> met;
  // Compiled modules beside source text are there for its runs.
  const bool compiles = std::any_of(options.files.begin(), options.files.end(), is_source);
  Module::CompilationFileList() = &options.files;
  for (const std::string& file : options.files)
    if (!compiles || is_source(file)) good = translate(file, options, messages, met) && good;
  // A broken file may hide a module: its own message is enough.
  if (good && compiles)
    for (const std::string& name : options.modules)
      if (!met.contains(name)) good = fail("no file holds a module \"" + name + "\"");
  return good ? 0 : unusable;
}
