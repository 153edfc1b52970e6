#include "programs/tarn/names.h"

#include <set>

#include "engine/simulation.h"
#include "programs/report.h"
#include "programs/tarn/options.h"
#include "tarn/model/compilation.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva::tarn_program {

namespace {

std::set<std::string> names_of(const std::string& file) {
  const programs::ProgramSession session;
  std::set<std::string> names;
  if (is_source(file)) {
    Session::current().options.FaultsGathered = true;
    Compilation::zu_parse(file.c_str());
    for (const Module* module : Compilation::ModTable()->in_order())
      names.insert(module->getName());
    return names;
  }
  const ZucRead read = read_zuc_file(file, "", "");
  if (read.module == nullptr) return names;
  const Simulation simulation(read.module);
  for (const auto* list : {&simulation.input_names(), &simulation.output_names(),
                           &simulation.local_names(), &simulation.register_names()})
    names.insert(list->begin(), list->end());
  return names;
}

}  // namespace

void put_names(const std::list<std::string>& files, std::ostream& out) {
  for (const std::string& file : files) try {
      for (const std::string& name : names_of(file)) out << name << '\n';
    } catch (...) {
      // A shell has no use for what is wrong with a file.
    }
}

}  // namespace kiva::tarn_program
