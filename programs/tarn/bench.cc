#include "programs/tarn/bench.h"

#include <fstream>
#include <iostream>

#include "base/translation.h"
#include "engine/bench_stimuli.h"
#include "programs/tarn/messages.h"
#include "programs/told_text.h"

namespace kiva::tarn_program {

bool write_bench(Module* module, const Options& options) {
  const std::string& file = options.bench_stimuli;
  std::ifstream in(file);
  if (!in || in.peek() == std::ifstream::traits_type::eof())
    return fail({file, 0, 0, 0, 0}, in.is_open() ? "holds no instant" : "cannot be opened");
  BenchStimuli stimuli(module);
  try {
    stimuli.read(in);
  } catch (const StimuliError& error) {
    const int line = static_cast<int>(error.line);
    return fail({file, line, 0, line, 0}, error.reason);
  }
  if (stimuli.instants().empty()) return fail({file, 0, 0, 0, 0}, "holds no instant");
  for (const std::string& name : stimuli.unseen())
    programs::errors() << file << ": note: "
                       << translated('"' + name + "\" is no output; the bench does not look at it")
                       << '\n';
  const BenchFile bench = print_bench(*options.bench, module, stimuli.instants());
  if (!options.quiet) std::cout << bench.path << std::endl;  // before what is said of it
  const std::string folder = options.folder == "." ? "" : "cd '" + options.folder + "' && ";
  programs::errors() << translated("run it: " + folder + bench.run) << '\n';
  return true;
}

}  // namespace kiva::tarn_program
